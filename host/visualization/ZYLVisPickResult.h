// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLMathPoint.h"

class ZYLVisObject;
class ZYLVisPrimitive;

/// What a pick found: the object, the primitive and element of its representation that were
/// hit, the hit point on the geometry (world coordinates), its distance along the ray and its
/// distance from the ray. A result without object means nothing was hit.
struct ZYLVisPickResult {
    ZYLVisObject *object = nullptr;
    const ZYLVisPrimitive *primitive = nullptr;
    /// The dot, segment or triangle index within the primitive.
    int element = -1;
    ZYLMathPoint point;
    double depth = 0.0;
    double distanceToRay = 0.0;

    bool IsHit() const { return object != nullptr; }
};
