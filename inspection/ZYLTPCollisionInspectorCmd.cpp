// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCollisionInspectorCmd.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPCollisionInspectorWidget.h"

#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"

namespace {

ZYLVisEnvironment *EditEnvironment() {
    ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager();
    return manager ? manager->GetEditToolPathVisEnvironment() : nullptr;
}

} // namespace

ZYLTPCollisionInspectorCmd::ZYLTPCollisionInspectorCmd(QObject *parent)
    : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {
    if (ZYLVisEnvironment *environment = EditEnvironment())
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
    if (ZYLVisEnvironment *environment = EditEnvironment())
        environment->SetMouseInteraction(ZYLVisEnvironment::DeliverClicks | ZYLVisEnvironment::DeliverMoves);
    ZYLCmdDialogCommand::GainFocus();
}

bool ZYLTPCollisionInspectorCmd::Cleanup() {
    if (auto *inspector = qobject_cast<ZYLTPCollisionInspectorWidget *>(GetContentWidget()))
        inspector->Release();
    if (ZYLVisEnvironment *environment = EditEnvironment()) {
        environment->SetMouseInteraction(ZYLVisEnvironment::NoMouseInteraction);
        disconnect(environment, nullptr, this, nullptr);
    }
    RestoreGraphics();
    return ZYLCmdDialogCommand::Cleanup();
}

void ZYLTPCollisionInspectorCmd::PrepareGraphics() {
    ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager();
    if (!EditEnvironment())
        return;
    ZYLVisEnvironmentBatchContext batch(EditEnvironment());
    manager->SetVirtualNodesVisibility(false, manager->GetToolPathVirtualNodes(ZYLEditTPGraphicsMgr::CourseNodes));
    manager->SetVirtualNodesVisibility(false,
                                       manager->GetToolPathVirtualNodes(ZYLEditTPGraphicsMgr::CourseLinkNodes));
}

void ZYLTPCollisionInspectorCmd::RestoreGraphics() {
    ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager();
    if (!EditEnvironment())
        return;
    ZYLVisEnvironmentBatchContext batch(EditEnvironment());
    manager->UpdateUISettingGraphics();
    manager->UpdateAllGraphics(manager->GetCurrentOptions());
}

void ZYLTPCollisionInspectorCmd::OnMouseEvent(const ZYLVisMouseEvent &event) {
    if (auto *inspector = qobject_cast<ZYLTPCollisionInspectorWidget *>(GetContentWidget()))
        inspector->HandleMouseEvent(event);
}
