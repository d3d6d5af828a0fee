// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLToolPathViewCmd.h"

ZYLToolPathViewCmd::ZYLToolPathViewCmd(QObject *parent)
    : ZYLCmdCommand(parent, CancelWhenInterrupted, OwnTransaction) {}

ZYLToolPathViewCmd::~ZYLToolPathViewCmd() = default;

void ZYLToolPathViewCmd::GainFocus() {
    ZYLCmdCommand::GainFocus();
    // Nothing yet: storing the mode and redrawing go through the graphics manager, which
    // this build does not have, and a stored mode that nothing draws would only mislead.
}
