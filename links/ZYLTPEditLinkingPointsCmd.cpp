// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPEditLinkingPointsCmd.h"

#include "ZYLTPUnavailableWidget.h"

ZYLTPEditLinkingPointsCmd::ZYLTPEditLinkingPointsCmd(QObject *parent)
    : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {}

ZYLTPEditLinkingPointsCmd::~ZYLTPEditLinkingPointsCmd() = default;

QWidget *ZYLTPEditLinkingPointsCmd::CreateContentWidget(QWidget *parent) {
    // The base makes no panel; it is called all the same, as every override calls its base.
    ZYLCmdDialogCommand::CreateContentWidget(parent);
    return new ZYLTPUnavailableWidget(this, parent);
}
