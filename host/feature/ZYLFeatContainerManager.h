// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatureExport.h"

#include <QObject>

#include <memory>

class ZYLFeatContainer;
class ZYLFeatContainerProvider;

/// The process-wide registry of container providers: each container is drawn by the
/// provider registered for it, or by the default `ZYLFeatContainerProvider`. A registration
/// ends when its container is destroyed. GUI thread only.
class ZYLFEATURE_EXPORT ZYLFeatContainerManager : public QObject {
    Q_OBJECT
public:
    /// Returns the manager (created on first use).
    static ZYLFeatContainerManager *GetManager();

    ZYLFeatContainerManager();
    ~ZYLFeatContainerManager() override;

    /// Returns the provider of a container (owned by the manager, valid while the
    /// registration lasts). Throws `ZYLSysException` for a null container.
    ZYLFeatContainerProvider *GetProvider(ZYLFeatContainer *container) const;
    /// Registers `provider` (taken over) for `container`, replacing and deleting an earlier
    /// one; null returns the container to the default provider. Throws `ZYLSysException`
    /// for a null container.
    void SetProvider(ZYLFeatContainer *container, std::unique_ptr<ZYLFeatContainerProvider> provider);

private:
    struct Data;
    std::unique_ptr<Data> d;
};
