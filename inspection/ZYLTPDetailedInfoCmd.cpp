// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPDetailedInfoCmd.h"

#include "ZYLTPDetailedInfoWidget.h"

ZYLTPDetailedInfoCmd::ZYLTPDetailedInfoCmd(QObject *parent)
    : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {}

ZYLTPDetailedInfoCmd::~ZYLTPDetailedInfoCmd() = default;

QWidget *ZYLTPDetailedInfoCmd::CreateContentWidget(QWidget *parent) {
    // The base makes no panel; it is called all the same, as every override calls its base.
    ZYLCmdDialogCommand::CreateContentWidget(parent);
    return new ZYLTPDetailedInfoWidget(parent);
}

QDialogButtonBox::StandardButtons ZYLTPDetailedInfoCmd::GetStandardButtons() const
{
    return QDialogButtonBox::Close | QDialogButtonBox::Help;
}
