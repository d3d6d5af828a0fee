// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPVisRepFactory.h"

#include "ZYLVisOptions.h"
#include "ZYLVisPointPrimitive.h"
#include "ZYLVisRepGraphics.h"
#include "ZYLVisTrianglePrimitive.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

namespace {

constexpr int MinSegments = 2;
constexpr int MaxSegments = 128;

// A latitude-longitude sphere with one vertex at each pole, so that no degenerate triangle
// reaches the poles. Normals point outwards.
std::unique_ptr<ZYLVisPrimitive> Sphere(const ZYLMathPoint &centre, double radius, int bands)
{
    const int sectors = 2 * bands;
    std::vector<double> xyz;
    std::vector<double> normals;
    std::vector<int> indices;
    const auto addVertex = [&](double x, double y, double z) {
        xyz.insert(xyz.end(), {centre.X() + radius * x, centre.Y() + radius * y, centre.Z() + radius * z});
        normals.insert(normals.end(), {x, y, z});
    };
    const int vertices = 2 + (bands - 1) * (sectors + 1);
    xyz.reserve(3 * size_t(vertices));
    normals.reserve(3 * size_t(vertices));
    addVertex(0.0, 0.0, 1.0);
    // Rings of latitude from the north pole down; each ring repeats its first vertex at its
    // end so that the quads close without index arithmetic modulo the ring.
    for (int ring = 1; ring < bands; ++ring) {
        const double polar = std::numbers::pi * ring / bands;
        for (int s = 0; s <= sectors; ++s) {
            const double azimuth = 2.0 * std::numbers::pi * s / sectors;
            addVertex(std::sin(polar) * std::cos(azimuth), std::sin(polar) * std::sin(azimuth), std::cos(polar));
        }
    }
    addVertex(0.0, 0.0, -1.0);
    const int south = vertices - 1;
    const auto ringVertex = [&](int ring, int s) { return 1 + (ring - 1) * (sectors + 1) + s; };
    for (int s = 0; s < sectors; ++s) {
        indices.insert(indices.end(), {0, ringVertex(1, s), ringVertex(1, s + 1)});
        for (int ring = 1; ring + 1 < bands; ++ring) {
            const int a = ringVertex(ring, s);
            const int b = ringVertex(ring + 1, s);
            const int c = ringVertex(ring + 1, s + 1);
            const int d = ringVertex(ring, s + 1);
            indices.insert(indices.end(), {a, b, c, a, c, d});
        }
        indices.insert(indices.end(), {south, ringVertex(bands - 1, s + 1), ringVertex(bands - 1, s)});
    }
    return std::make_unique<ZYLVisTrianglePrimitive>(xyz, indices, normals);
}

} // namespace

ZYLVisRep *ZYLTPVisRepFactory::CreateCollisionPointRep(const ZYLMathPoint &centre, double radius, int segments)
{
    std::unique_ptr<ZYLVisPrimitive> primitive;
    if (std::isfinite(radius) && radius > 0.0)
        primitive = Sphere(centre, radius, std::clamp(segments, MinSegments, MaxSegments));
    else
        primitive = std::make_unique<ZYLVisPointPrimitive>(ZYLMathSetOfPoints(centre));
    auto *rep = new ZYLVisRepGraphics({primitive.get()}, GetCollisionPointAttributes());
    (void)primitive.release();
    return rep;
}

ZYLVisOptions ZYLTPVisRepFactory::GetCollisionPointAttributes()
{
    ZYLVisOptions options;
    options.SetColor(QColor(230, 40, 40));
    options.SetTransparency(0.5);
    options.SetPointSize(6.0);
    return options;
}
