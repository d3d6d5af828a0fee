// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatContainerProvider.h"

#include "ZYLFeatContainer.h"
#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLFeatGeometry.h"
#include "ZYLFeatVisualizationConfig.h"

#include "ZYLSysException.h"
#include "ZYLVisRepFactory.h"
#include "ZYLVisRepSet.h"

ZYLFeatContainerProvider::~ZYLFeatContainerProvider() = default;

ZYLVisRep *ZYLFeatContainerProvider::CreateRep(ZYLFeatContainer *container) const
{
    if (!container)
        throw ZYLSysException(tr("Cannot draw the content of a null container."));
    const ZYLFeatEnvironmentManager *manager = ZYLFeatEnvironmentManager::GetManager();
    const ZYLFeatEnvironment *environment = manager ? manager->GetCurrentEnvironment() : nullptr;
    const ZYLFeatVisualizationConfig config =
        environment ? environment->GetSurfaceConfig() : ZYLFeatVisualizationConfig();

    QList<ZYLVisRep *> reps;
    try {
        for (ZYLFeatObject *feature : container->GetFeatures()) {
            const auto *geometry = qobject_cast<const ZYLFeatGeometry *>(feature);
            if (!geometry || !geometry->GetBody())
                continue;
            reps << ZYLVisRepFactory::CreateRep(geometry->GetBody(), config.GetPointOptions(),
                                                config.GetCurveOptions(), config.GetSurfaceOptions(),
                                                config.GetVisibleGeometry());
        }
        return new ZYLVisRepSet(reps);
    } catch (...) {
        // Nothing owns the parts built so far yet.
        qDeleteAll(reps);
        throw;
    }
}
