// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLMathPoint.h"

#include <vector>

class ZYLVisMouseEvent;

/// Finds, among a fixed set of points, the one nearest to the view ray of a mouse event.
///
/// The points are kept in one contiguous array, so that a pick over a million points is a
/// single pass over memory (a few milliseconds) and needs no spatial index. The distance is
/// that of a point to the line through the mouse point along the view direction; there is no
/// distance limit, and on equal distances the earlier point wins.
class ZYLTPRayPicker {
public:
    /// Replaces the points.
    void SetPoints(std::vector<ZYLMathPoint> points);
    /// Returns the index of the point nearest to the event's view ray, or -1 without points.
    int Pick(const ZYLVisMouseEvent &event) const;

private:
    std::vector<ZYLMathPoint> m_points;
};
