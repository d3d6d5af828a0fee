// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPEditCourseLayingPointsCmd.h"

#include "ZYLTPUnavailableWidget.h"

ZYLTPEditCourseLayingPointsCmd::ZYLTPEditCourseLayingPointsCmd(QObject *parent)
    : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {}

ZYLTPEditCourseLayingPointsCmd::~ZYLTPEditCourseLayingPointsCmd() = default;

QWidget *ZYLTPEditCourseLayingPointsCmd::CreateContentWidget(QWidget *parent) {
    // The base makes no panel; it is called all the same, as every override calls its base.
    ZYLCmdDialogCommand::CreateContentWidget(parent);
    return new ZYLTPUnavailableWidget(this, parent);
}
