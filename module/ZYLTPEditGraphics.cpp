// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPEditGraphics.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPVisualizationOptions.h"

#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"
#include "ZYLVisFunctionFilter.h"

ZYLVisEnvironment *ZYLTPEditGraphics::GetEditEnvironment() {
    ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager();
    return manager ? manager->GetEditToolPathVisEnvironment() : nullptr;
}

void ZYLTPEditGraphics::Rebuild(const std::function<void(ZYLEditTPGraphicsMgr &, ZYLVisEnvironment &)> &prepare) {
    ZYLVisEnvironment *environment = GetEditEnvironment();
    if (!environment)
        return;
    ZYLEditTPGraphicsMgr *manager = ZYLEditTPGraphicsMgr::GetManager();
    ZYLVisEnvironmentBatchContext batch(environment);
    prepare(*manager, *environment);
    manager->UpdateAllGraphics(manager->GetCurrentOptions());
}

void ZYLTPEditGraphics::SelectAnyObject(ZYLVisEnvironment &environment, bool multiple) {
    // The environment owns the filter.
    environment.SetSelectionFilter(new ZYLVisFunctionFilter(multiple, [](const ZYLVisObject *) { return true; }));
}

ZYLTPVisualizationOptions ZYLTPEditGraphics::CourseEditOptions(const ZYLEditTPGraphicsMgr &manager, bool tipPoints) {
    ZYLTPVisualizationOptions options = manager.GetCurrentOptions();
    options.SetApproachRetractEnabled(true);
    options.SetRollInOutEnabled(true);
    options.SetTowEdgeDisplay(ZYLTPVisualizationOptions::AllTowEdges);
    options.SetTowHeadProfileDisplay(ZYLTPVisualizationOptions::HeadProfilesAtAddsAndCuts);
    options.SetShortTowDisplay(ZYLTPVisualizationOptions::AllTowsShortHighlighted);
    options.SetLayingTrajectoryEnabled(true);
    options.SetTipPointEnabled(tipPoints);
    options.SetLayingVectorsToDisplay(ZYLTPVisualizationOptions::NoVectors);
    return options;
}
