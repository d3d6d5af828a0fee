// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLMathBoundingBox.h"

#include <array>
#include <vector>

/// A triangle mesh made by tessellating a surface: vertices with unit normals, and
/// counter-clockwise triangles (seen from the normal side) indexing them.
struct ZYLGeoMesh {
    std::vector<ZYLMathPoint> vertices;
    std::vector<ZYLMathVector> normals;
    std::vector<std::array<int, 3>> triangles;

    ZYLMathBoundingBox GetBoundingBox() const
    {
        ZYLMathBoundingBox box;
        for (const ZYLMathPoint &p : vertices)
            box.Add(p);
        return box;
    }
};
