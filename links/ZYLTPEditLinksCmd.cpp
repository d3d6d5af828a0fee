// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPEditLinksCmd.h"

#include "ZYLTPUnavailableWidget.h"

ZYLTPEditLinksCmd::ZYLTPEditLinksCmd(QObject *parent)
    : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {}

ZYLTPEditLinksCmd::~ZYLTPEditLinksCmd() = default;

QWidget *ZYLTPEditLinksCmd::CreateContentWidget(QWidget *parent) {
    // The base makes no panel; it is called all the same, as every override calls its base.
    ZYLCmdDialogCommand::CreateContentWidget(parent);
    return new ZYLTPUnavailableWidget(this, parent);
}
