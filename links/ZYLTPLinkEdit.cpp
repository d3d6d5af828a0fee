// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPLinkEdit.h"

#include "ZYLEditTPGraphicsMgr.h"

#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLFeatTransactionContext.h"
#include "ZYLVisEnvironmentBatchContext.h"

#include "ZYLSysResourceManager.h"

#include <QIcon>
#include <QStandardItem>
#include <QString>

void ZYLTPLinkEdit::Run(const QString &name, const std::function<void()> &edits) {
    ZYLFeatEnvironmentManager *manager = ZYLFeatEnvironmentManager::GetManager();
    ZYLFeatEnvironment *environment = manager ? manager->GetCurrentEnvironment() : nullptr;
    ZYLFeatContainer *container = environment ? environment->GetContainer() : nullptr;
    if (!container) {
        edits();
        return;
    }
    // The panels redraw what they changed themselves, so the context leaves the display alone.
    ZYLFeatTransactionContext context(container, name, false, ZYLFeatTransactionContext::NoAutoUpdate);
    edits();
    context.FlagComplete();
}

void ZYLTPLinkEdit::ShowLinks(ZYLTPVisualizationOptions::VectorsToDisplay endPointVectors) {
    ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager();
    if (!manager)
        return;
    const ZYLVisEnvironmentBatchContext batch(manager->GetEditToolPathVisEnvironment());
    manager->UpdateAllGraphics(GetLinksOptions(endPointVectors));
    manager->SetVirtualNodesSelectable(true, manager->GetToolPathVirtualNodes(ZYLEditTPGraphicsMgr::CourseLinkNodes));
}

ZYLTPVisualizationOptions ZYLTPLinkEdit::GetLinksOptions(ZYLTPVisualizationOptions::VectorsToDisplay endPointVectors) {
    ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager();
    ZYLTPVisualizationOptions options = manager ? manager->GetCurrentOptions() : ZYLTPVisualizationOptions();
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
    options.SetLinkEndPointsVectorsToDisplay(endPointVectors);
    return options;
}

void ZYLTPLinkEdit::RestoreGraphics() {
    if (ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager())
        manager->UpdateAllGraphics(manager->GetCurrentOptions());
}

QIcon ZYLTPLinkEdit::GetRowIcon() {
    QIcon icon;
    icon.addPixmap(ZYLSysResourceManager::GetImage(QStringLiteral("selection-non-empty")), QIcon::Selected, QIcon::Off);
    icon.addPixmap(ZYLSysResourceManager::GetImage(QStringLiteral("select")), QIcon::Normal, QIcon::Off);
    return icon;
}

QStandardItem *ZYLTPLinkEdit::NewRow(const QIcon &icon, const QString &text, const QVariant &value) {
    auto *item = new QStandardItem(icon, text);
    item->setToolTip(text);
    item->setData(value, Qt::UserRole);
    item->setEditable(false);
    return item;
}
