// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisSegmentPrimitive.h"

#include "ZYLSysException.h"

#include <algorithm>
#include <cmath>

namespace {
std::vector<ZYLMathPoint> checkedPairs(std::vector<ZYLMathPoint> endPoints)
{
    if (endPoints.size() % 2 != 0)
        throw ZYLSysException(
            QStringLiteral("A segment primitive needs two points per segment; got %1 points.").arg(endPoints.size()));
    return endPoints;
}

// Any unit vector orthogonal to u: cross with the world axis least aligned with u.
ZYLMathVector orthogonalTo(const ZYLMathVector &u)
{
    const double ax = std::abs(u.X()), ay = std::abs(u.Y()), az = std::abs(u.Z());
    const ZYLMathVector other = (ax <= ay && ax <= az) ? ZYLMathVector(1, 0, 0)
                                : (ay <= az)           ? ZYLMathVector(0, 1, 0)
                                                       : ZYLMathVector(0, 0, 1);
    return *u.Cross(other).Normalized();
}
}

ZYLVisSegmentPrimitive::ZYLVisSegmentPrimitive(std::vector<ZYLMathPoint> endPoints)
    : ZYLVisPrimitive(Kind::Segments, checkedPairs(std::move(endPoints)))
{
}

ZYLVisSegmentPrimitive::~ZYLVisSegmentPrimitive() = default;

void ZYLVisSegmentPrimitive::AppendArrow(std::vector<ZYLMathPoint> &endPoints, const ZYLMathPoint &from,
                                         const ZYLMathPoint &to, double headLength)
{
    const ZYLMathVector shaft = to - from;
    const std::optional<ZYLMathVector> u = shaft.Normalized();
    if (!u)
        return;
    endPoints.push_back(from);
    endPoints.push_back(to);
    const double head = std::clamp(headLength, 0.0, shaft.GetLength());
    if (head <= 0.0)
        return;
    // Strokes at about 20 degrees to the shaft, in two orthogonal planes, so the head reads
    // as an arrow from every side.
    const ZYLMathVector side1 = orthogonalTo(*u);
    const ZYLMathVector side2 = u->Cross(side1);
    const ZYLMathPoint base = to - *u * head;
    const double spread = head * 0.36;
    for (const ZYLMathVector &side : {side1, -side1, side2, -side2}) {
        endPoints.push_back(to);
        endPoints.push_back(base + side * spread);
    }
}
