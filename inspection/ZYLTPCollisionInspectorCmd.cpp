// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCollisionInspectorCmd.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPCollisionInspectorWidget.h"
#include "ZYLTPEditGraphics.h"

#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"

ZYLTPCollisionInspectorCmd::ZYLTPCollisionInspectorCmd(QObject *parent)
    : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {
    if (ZYLVisEnvironment *environment = ZYLTPEditGraphics::GetEditEnvironment())
        connect(environment, &ZYLVisEnvironment::MouseEvent, this, &ZYLTPCollisionInspectorCmd::OnMouseEvent);
}

ZYLTPCollisionInspectorCmd::~ZYLTPCollisionInspectorCmd() = default;

QWidget *ZYLTPCollisionInspectorCmd::CreateContentWidget(QWidget *parent) {
    // The base makes no panel; it is called all the same, as every override calls its base.
    ZYLCmdDialogCommand::CreateContentWidget(parent);
    return new ZYLTPCollisionInspectorWidget(parent);
}

void ZYLTPCollisionInspectorCmd::GainFocus() {
    PrepareGraphics();
    if (ZYLVisEnvironment *environment = ZYLTPEditGraphics::GetEditEnvironment())
        environment->SetMouseInteraction(ZYLVisEnvironment::DeliverClicks | ZYLVisEnvironment::DeliverMoves);
    ZYLCmdDialogCommand::GainFocus();
}

bool ZYLTPCollisionInspectorCmd::Cleanup() {
    if (auto *inspector = qobject_cast<ZYLTPCollisionInspectorWidget *>(GetContentWidget()))
        inspector->Release();
    if (ZYLVisEnvironment *environment = ZYLTPEditGraphics::GetEditEnvironment()) {
        environment->SetMouseInteraction(ZYLVisEnvironment::NoMouseInteraction);
        disconnect(environment, nullptr, this, nullptr);
    }
    RestoreGraphics();
    return ZYLCmdDialogCommand::Cleanup();
}

void ZYLTPCollisionInspectorCmd::PrepareGraphics() {
    ZYLVisEnvironment *environment = ZYLTPEditGraphics::GetEditEnvironment();
    if (!environment)
        return;
    ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager();
    ZYLVisEnvironmentBatchContext batch(environment);
    manager->SetVirtualNodesVisibility(false, manager->GetToolPathVirtualNodes(ZYLEditTPGraphicsMgr::CourseNodes));
    manager->SetVirtualNodesVisibility(false,
                                       manager->GetToolPathVirtualNodes(ZYLEditTPGraphicsMgr::CourseLinkNodes));
}

void ZYLTPCollisionInspectorCmd::RestoreGraphics() {
    ZYLTPEditGraphics::Rebuild(
        [](ZYLEditTPGraphicsMgr &manager, ZYLVisEnvironment &) { manager.UpdateUISettingGraphics(); });
}

void ZYLTPCollisionInspectorCmd::OnMouseEvent(const ZYLVisMouseEvent &event) {
    if (auto *inspector = qobject_cast<ZYLTPCollisionInspectorWidget *>(GetContentWidget()))
        inspector->HandleMouseEvent(event);
}
