// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPRayPicker.h"

#include "ZYLMathLine.h"
#include "ZYLVisMouseEvent.h"

#include <utility>

void ZYLTPRayPicker::SetPoints(std::vector<ZYLMathPoint> points) {
    m_points = std::move(points);
}

int ZYLTPRayPicker::Pick(const ZYLVisMouseEvent &event) const {
    ZYLMathLine line;
    line.SetOrigin(event.GetContext().GetMousePoint());
    line.SetVector(event.GetContext().GetViewDirection());
    int nearest = -1;
    double nearestDistance = 0.0;
    const int count = int(m_points.size());
    for (int i = 0; i < count; ++i) {
        const double distance = line.GetSquaredDistanceTo(m_points[i]);
        // Strictly smaller: on a tie the earlier point stays.
        if (nearest < 0 || distance < nearestDistance) {
            nearest = i;
            nearestDistance = distance;
        }
    }
    return nearest;
}
