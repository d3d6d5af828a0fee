// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPContextualViewCmd.h"

#include "ZYLTPUnavailableWidget.h"

ZYLTPContextualViewCmd::ZYLTPContextualViewCmd(QObject *parent)
    : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {}

ZYLTPContextualViewCmd::~ZYLTPContextualViewCmd() = default;

QWidget *ZYLTPContextualViewCmd::CreateContentWidget(QWidget *parent) {
    // The base makes no panel; it is called all the same, as every override calls its base.
    ZYLCmdDialogCommand::CreateContentWidget(parent);
    return new ZYLTPUnavailableWidget(this, parent);
}
