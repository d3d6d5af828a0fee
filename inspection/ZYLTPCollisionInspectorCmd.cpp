// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCollisionInspectorCmd.h"

#include "ZYLTPUnavailableWidget.h"

ZYLTPCollisionInspectorCmd::ZYLTPCollisionInspectorCmd(QObject *parent)
    : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {}

ZYLTPCollisionInspectorCmd::~ZYLTPCollisionInspectorCmd() = default;

QWidget *ZYLTPCollisionInspectorCmd::CreateContentWidget(QWidget *parent) {
    // The base makes no panel; it is called all the same, as every override calls its base.
    ZYLCmdDialogCommand::CreateContentWidget(parent);
    return new ZYLTPUnavailableWidget(this, parent);
}
