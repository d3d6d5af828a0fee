// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisPolylinePrimitive.h"

#include "ZYLGeoCurve.h"
#include "ZYLSysException.h"

#include <algorithm>

namespace {
std::vector<ZYLMathPoint> tessellate(const ZYLGeoCurve *curve, const ZYLGeoRangeOfCurve &range, double tolerance)
{
    if (!curve)
        throw ZYLSysException(QStringLiteral("A polyline primitive needs a curve."));
    if (!(tolerance > 0.0))
        tolerance = ZYLVisPolylinePrimitive::GetAutomaticTolerance(curve->GetBoundingBox().GetDiagonal().GetLength());
    return curve->Tessellate(tolerance, range);
}
}

ZYLVisPolylinePrimitive::ZYLVisPolylinePrimitive(const ZYLGeoCurve *curve, const ZYLGeoRangeOfCurve &range,
                                                 double chordTolerance)
    : ZYLVisPrimitive(Kind::Polyline, tessellate(curve, range, chordTolerance))
{
}

ZYLVisPolylinePrimitive::ZYLVisPolylinePrimitive(std::vector<ZYLMathPoint> points)
    : ZYLVisPrimitive(Kind::Polyline, std::move(points))
{
}

ZYLVisPolylinePrimitive::~ZYLVisPolylinePrimitive() = default;

double ZYLVisPolylinePrimitive::GetAutomaticTolerance(double diagonal)
{
    // A thousandth of the size is below a pixel for a curve filling the view; the floor keeps
    // degenerate (point-like) curves from asking for an endless tessellation.
    return std::max(diagonal * 1e-3, 1e-6);
}
