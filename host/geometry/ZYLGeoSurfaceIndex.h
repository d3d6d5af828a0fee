// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoSurface.h"

#include <memory>

/// The closest-point index of one surface (internal to the library).
///
/// The domain is cut into a grid of leaf rectangles (about 32 along the longer side, kinks
/// on leaf borders), each sampled on a 5 × 5 grid. With the surface's bounds on its second
/// derivatives every leaf gets an oriented box that provably holds its patch, a lower bound
/// of the smallest eigenvalue of JᵀJ (J = [du dv]) and a bound of the second-derivative
/// operator; a binary tree of leaf rectangles aggregates them. For each leaf and k = 1..3 a
/// block of (2k + 1)² leaves around it records the same bounds and a lower bound of the
/// distance from the leaf's patch to the surface outside the block.
///
/// A query runs a projected Newton iteration on ½|S(u, v) − q|² from the hint (or from a
/// seed found by descending the tree) to a stationary point F. F is the global answer when
/// the squared distance is convex on a block around F (JᵀJ outweighs |S − q| times the
/// second derivatives there) and |q − F| is at most half the block's separation from the
/// rest of the surface: every point outside the block is then at least as far. Otherwise a
/// branch-and-bound over the tree visits the leaves whose boxes come closer than the best
/// distance so far, solving each exactly (a convex leaf has one minimum; a leaf that is not
/// convex for q is solved from several starts).
class ZYLGeoSurfaceIndex {
public:
    explicit ZYLGeoSurfaceIndex(const ZYLGeoSurface &surface);
    ~ZYLGeoSurfaceIndex();
    ZYLGeoSurfaceIndex(const ZYLGeoSurfaceIndex &) = delete;
    ZYLGeoSurfaceIndex &operator=(const ZYLGeoSurfaceIndex &) = delete;

    ZYLGeoSurfaceFoot FindClosestPoint(const ZYLMathPoint &q, const ZYLGeoSurfaceFoot *hint) const;
    /// Returns a box holding the surface (the union of the leaves' boxes).
    const ZYLMathBoundingBox &GetBoundingBox() const;

private:
    struct Data;
    std::unique_ptr<Data> d;
};
