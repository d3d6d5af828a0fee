// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLTPVisualizationOptions.h"

#include <QList>

class ZYLTPPoint;
class ZYLVisPrimitive;

/// Helpers that build display primitives of tool path points.
class ZYLTOOLPATH_EXPORT ZYLTPVisualizationUtil {
public:
    /// Appends primitives showing `points` to `primitives` and, for each, its display options
    /// to `primitiveOptions`: the tip points as one dot primitive (tip point attributes), then
    /// one segment primitive per vector bit of `vectors`, in the order laying direction, side
    /// direction, tool axis, each segment starting at a tip point and running
    /// `options.GetVectorLength()` mm along that direction of the point's tool frame (with the
    /// attributes of that vector's element). Null points are skipped; with no point left
    /// nothing is appended. The caller owns the new primitives.
    static void CreateVectorPrimitives(const QList<const ZYLTPPoint *> &points,
                                       ZYLTPVisualizationOptions::VectorsToDisplay vectors,
                                       const ZYLTPVisualizationOptions &options, QList<ZYLVisPrimitive *> &primitives,
                                       QList<ZYLVisOptions> &primitiveOptions);
};
