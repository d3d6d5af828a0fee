// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLMathPoint.h"

class ZYLVisOptions;
class ZYLVisRep;

/// Builds representations of tool path elements that have no model object of their own.
class ZYLTOOLPATH_EXPORT ZYLTPVisRepFactory {
public:
    /// Returns a new representation, owned by the caller, of a collision point: a sphere of
    /// `radius` mm about `centre`, as one triangle primitive drawn with
    /// `GetCollisionPointAttributes()`.
    ///
    /// `segments` is the number of segments of a half circle of longitude (pole to pole); the
    /// circles of latitude have twice as many. So 8 gives a sphere of 8 bands of 16 facets
    /// (17 × 7 + 2 vertices, 224 triangles), round enough for a marker. Values are clamped
    /// to [2, 128]. A radius that is not positive (or not finite) gives a single dot at the
    /// centre instead, so that such a point stays visible.
    static ZYLVisRep *CreateCollisionPointRep(const ZYLMathPoint &centre, double radius, int segments);

    /// Returns the display options of collision point spheres: translucent red.
    static ZYLVisOptions GetCollisionPointAttributes();
};
