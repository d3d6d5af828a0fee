// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPEditCourseCmd.h"

#include "ZYLTPUnavailableWidget.h"

ZYLTPEditCourseCmd::ZYLTPEditCourseCmd(QObject *parent)
    : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {}

ZYLTPEditCourseCmd::~ZYLTPEditCourseCmd() = default;

QWidget *ZYLTPEditCourseCmd::CreateContentWidget(QWidget *parent) {
    // The base makes no panel; it is called all the same, as every override calls its base.
    ZYLCmdDialogCommand::CreateContentWidget(parent);
    return new ZYLTPUnavailableWidget(this, parent);
}
