// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatureExport.h"

#include "ZYLVisEnvironment.h"

#include <memory>

class ZYLFeatContainer;
class ZYLFeatVisualizationConfig;
class ZYLVisVirtualObject;

/// The 3-D scene of a document: a visualization environment bound to a feature container,
/// with the surface configuration used to draw geometry bodies.
///
/// The environment shows the container's content as one scene object (not selectable),
/// whose representation comes from the container's provider (`ZYLFeatContainerManager`). It
/// rebuilds it when the container announces `FeaturesChanged` and when the surface
/// configuration changes, except while a `ZYLFeatTransactionContext` with
/// `UpdateDisplayAtEnd` is open on the container: then once, when the last one ends. Hosts
/// that draw the content otherwise hide that object (`GetContentObject`).
///
/// Destroying the environment clears it as the current one of `ZYLFeatEnvironmentManager`.
class ZYLFEATURE_EXPORT ZYLFeatEnvironment : public ZYLVisEnvironment {
    Q_OBJECT
public:
    /// Binds the environment to `container`, which it borrows (the container must outlive
    /// it, or `GetContainer` returns null afterwards). Throws `ZYLSysException` for null.
    explicit ZYLFeatEnvironment(ZYLFeatContainer *container, QObject *parent = nullptr);
    ~ZYLFeatEnvironment() override;

    ZYLFeatContainer *GetContainer() const;

    const ZYLFeatVisualizationConfig &GetSurfaceConfig() const;
    /// Sets how bodies are drawn; emits `SurfaceConfigChanged` and redraws the content when
    /// the configuration differs.
    void SetSurfaceConfig(const ZYLFeatVisualizationConfig &config);

    /// Returns the scene object that shows the container's content.
    ZYLVisVirtualObject *GetContentObject() const;
    /// Rebuilds the content object's representation now; throws what the provider throws.
    void UpdateContent();

signals:
    void SurfaceConfigChanged();

private:
    friend class ZYLFeatTransactionContext;
    // Held content updates wait until the last hold is released.
    void HoldContentUpdates();
    void ReleaseContentUpdates();
    void OnContentChanged();

    struct Data;
    std::unique_ptr<Data> d;
};
