// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatureExport.h"

#include <QCoreApplication>

class ZYLFeatContainer;
class ZYLVisRep;

/// Builds the representation of what a container holds, for whoever draws the container
/// (its feature environment, or a tool node such as a machine head drawn from a container
/// of its model). `ZYLFeatContainerManager` hands out the provider of a container.
///
/// This base class is the default: a `ZYLVisRepSet` with one representation per
/// `ZYLFeatGeometry` feature that has a body, in feature order, each built by
/// `ZYLVisRepFactory::CreateRep` with the surface configuration of the current feature
/// environment, or the default configuration when there is none. Subclasses draw other
/// content and are registered with `ZYLFeatContainerManager::SetProvider`.
class ZYLFEATURE_EXPORT ZYLFeatContainerProvider {
    Q_DECLARE_TR_FUNCTIONS(ZYLFeatContainerProvider)
public:
    ZYLFeatContainerProvider() = default;
    virtual ~ZYLFeatContainerProvider();
    ZYLFeatContainerProvider(const ZYLFeatContainerProvider &) = delete;
    ZYLFeatContainerProvider &operator=(const ZYLFeatContainerProvider &) = delete;

    /// Returns a new representation of the container's content, owned by the caller (never
    /// null: an empty container gives an empty set). Throws `ZYLSysException` for a null
    /// container.
    virtual ZYLVisRep *CreateRep(ZYLFeatContainer *container) const;
};
