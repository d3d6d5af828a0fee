// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPRayPicker.h"

#include "ZYLMathVector.h"
#include "ZYLVisMouseEvent.h"

#include <limits>
#include <utility>

void ZYLTPRayPicker::SetPoints(std::vector<ZYLMathPoint> points) {
    m_points = std::move(points);
}

int ZYLTPRayPicker::Pick(const ZYLVisMouseEvent &event) const {
    const ZYLMathPoint origin = event.GetContext().GetMousePoint();
    const ZYLMathVector direction = event.GetContext().GetViewDirection();
    const double length = direction.GetLength();
    // |w|^2 - (w.u)^2 with u the unit direction: the squared distance of the line, without a
    // division per point, so that a million points take one pass of a few milliseconds. A
    // null direction leaves the distance to the mouse point.
    const double scale = length > 0.0 ? 1.0 / length : 0.0;
    const double ux = direction.X() * scale, uy = direction.Y() * scale, uz = direction.Z() * scale;
    const double ox = origin.X(), oy = origin.Y(), oz = origin.Z();
    int nearest = -1;
    double nearestDistance = std::numeric_limits<double>::infinity();
    const int count = int(m_points.size());
    for (int i = 0; i < count; ++i) {
        const double wx = m_points[i].X() - ox, wy = m_points[i].Y() - oy, wz = m_points[i].Z() - oz;
        const double along = wx * ux + wy * uy + wz * uz;
        const double distance = wx * wx + wy * wy + wz * wz - along * along;
        // Strictly smaller: on a tie the earlier point stays.
        if (distance < nearestDistance) {
            nearest = i;
            nearestDistance = distance;
        }
    }
    return nearest;
}
