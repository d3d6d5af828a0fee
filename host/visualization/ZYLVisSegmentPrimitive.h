// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisPrimitive.h"

/// Loose straight segments, given as pairs of end points: axis vectors, arrows, ticks.
class ZYLVISUALIZATION_EXPORT ZYLVisSegmentPrimitive final : public ZYLVisPrimitive {
public:
    /// Takes the end points, two per segment (2i and 2i+1). Throws ZYLSysException for an odd
    /// number of points.
    explicit ZYLVisSegmentPrimitive(std::vector<ZYLMathPoint> endPoints);
    ~ZYLVisSegmentPrimitive() override;

    int GetNumElements() const override { return GetNumVertices() / 2; }

    /// Appends the segments of an arrow from `from` to `to` to `endPoints`: the shaft and four
    /// head strokes of length `headLength` (clamped to the shaft length) spread about the shaft.
    /// A zero-length arrow adds nothing.
    static void AppendArrow(std::vector<ZYLMathPoint> &endPoints, const ZYLMathPoint &from, const ZYLMathPoint &to,
                            double headLength);
};
