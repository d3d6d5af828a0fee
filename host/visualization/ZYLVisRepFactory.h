// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisualizationExport.h"

class ZYLGeoBody;
class ZYLVisOptions;
class ZYLVisRep;

/// Builds representations of geometry.
class ZYLVISUALIZATION_EXPORT ZYLVisRepFactory {
public:
    /// Which parts of a body CreateRep draws; combine with |.
    enum VisibleGeometry : int {
        VisiblePoints = 1,
        VisibleCurves = 2,
        VisibleSurfaces = 4,
        VisibleAll = VisiblePoints | VisibleCurves | VisibleSurfaces,
    };

    /// Returns a new representation of a body, owned by the caller: its loose points as one
    /// point primitive, each curve as a polyline and each surface as triangles, each group
    /// with its options and only for the groups selected by `visibleGeometryFlags`. Curves and
    /// surfaces are tessellated with a chord tolerance of a thousandth of the diagonal of the
    /// body's bounding box. Returns null for a null body; throws ZYLSysException for flags
    /// outside VisibleAll.
    static ZYLVisRep *CreateRep(const ZYLGeoBody *body, const ZYLVisOptions &pointOptions,
                                const ZYLVisOptions &curveOptions, const ZYLVisOptions &surfaceOptions,
                                int visibleGeometryFlags);
};
