// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPEditLinksCmd.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPEditLinksWidget.h"

#include "ZYLVisEnvironmentBatchContext.h"

ZYLTPEditLinksCmd::ZYLTPEditLinksCmd(QObject *parent)
    : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {}

ZYLTPEditLinksCmd::~ZYLTPEditLinksCmd() = default;

void ZYLTPEditLinksCmd::GainFocus() {
    ShowLinksGraphics();
    ZYLCmdDialogCommand::GainFocus();
}

void ZYLTPEditLinksCmd::Commit() {
    if (auto *widget = qobject_cast<ZYLTPEditLinksWidget *>(GetContentWidget()))
        widget->ApplyPointsDetail();
    ZYLCmdDialogCommand::Commit();
}

bool ZYLTPEditLinksCmd::Cleanup() {
    // After a cancel the rows may hold links that the rollback has deleted; the rebuild below
    // changes the 3-D selection, which the panel must no longer mirror.
    if (auto *widget = qobject_cast<ZYLTPEditLinksWidget *>(GetContentWidget()))
        widget->Detach();
    RestoreGraphics();
    return ZYLCmdDialogCommand::Cleanup();
}

QWidget *ZYLTPEditLinksCmd::CreateContentWidget(QWidget *parent) {
    // The base makes no panel; it is called all the same, as every override calls its base.
    ZYLCmdDialogCommand::CreateContentWidget(parent);
    return new ZYLTPEditLinksWidget(parent);
}

void ZYLTPEditLinksCmd::ShowLinksGraphics() {
    ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager();
    if (!manager)
        return;
    const ZYLVisEnvironmentBatchContext batch(manager->GetEditToolPathVisEnvironment());
    ZYLTPVisualizationOptions options = manager->GetCurrentOptions();
    options.SetApproachRetractEnabled(false);
    options.SetRollInOutEnabled(false);
    options.SetTowEdgeDisplay(ZYLTPVisualizationOptions::NoTowEdges);
    options.SetTowHeadProfileDisplay(ZYLTPVisualizationOptions::NoHeadProfiles);
    options.SetShortTowDisplay(ZYLTPVisualizationOptions::NoTowFill);
    options.SetLayingTrajectoryEnabled(false);
    options.SetTipPointEnabled(false);
    options.SetLayingVectorsToDisplay(ZYLTPVisualizationOptions::NoVectors);
    options.SetLinkingPointsEnabled(false);
    options.SetLinkingTrajectoriesEnabled(true);
    options.SetLinkEndPointsVectorsToDisplay(ZYLTPVisualizationOptions::NoVectors);
    manager->UpdateAllGraphics(options);
    manager->SetVirtualNodesSelectable(true, manager->GetToolPathVirtualNodes(ZYLEditTPGraphicsMgr::CourseLinkNodes));
}

void ZYLTPEditLinksCmd::RestoreGraphics() {
    if (ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager())
        manager->UpdateAllGraphics(manager->GetCurrentOptions());
}
