// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPContextualViewCmd.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPContextualViewWidget.h"
#include "ZYLTPEditGraphics.h"

#include "ZYLVisEnvironment.h"

ZYLTPContextualViewCmd::ZYLTPContextualViewCmd(QObject *parent)
    : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {}

ZYLTPContextualViewCmd::~ZYLTPContextualViewCmd() = default;

QWidget *ZYLTPContextualViewCmd::CreateContentWidget(QWidget *parent) {
    // The base makes no panel; it is called all the same, as every override calls its base.
    ZYLCmdDialogCommand::CreateContentWidget(parent);
    return new ZYLTPContextualViewWidget(parent);
}

QDialogButtonBox::StandardButtons ZYLTPContextualViewCmd::GetStandardButtons() const {
    return QDialogButtonBox::Close | QDialogButtonBox::Help;
}

bool ZYLTPContextualViewCmd::Cleanup() {
    RestoreGraphics();
    return ZYLCmdDialogCommand::Cleanup();
}

void ZYLTPContextualViewCmd::RestoreGraphics() {
    ZYLTPEditGraphics::Rebuild([](ZYLEditTPGraphicsMgr &manager, ZYLVisEnvironment &environment) {
        manager.SetAllVirtualNodesSelectable(false);
        environment.SetSelectionFilter(nullptr);
        environment.SetMouseInteraction(ZYLVisEnvironment::NoMouseInteraction);
    });
}
