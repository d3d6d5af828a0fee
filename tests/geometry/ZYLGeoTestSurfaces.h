// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoBSplineSurface.h"
#include "ZYLGeoPlane.h"

#include <QMetaType>

#include <cmath>
#include <functional>
#include <random>

/// A cylinder patch known only by its point and first derivatives, so that everything else
/// runs on the numeric defaults: radius 100 about the y axis, u the angle in [−1, 1] and v
/// in [0, 200]; the normal points away from the axis.
class ZYLGeoTestCylinder final : public ZYLGeoSurface {
public:
    static constexpr double radius = 100.0;
    Domain GetDomain() const override { return {-1.0, 1.0, 0.0, 200.0}; }
    ZYLMathPoint Evaluate(double u, double v) const override
    {
        u = std::clamp(u, -1.0, 1.0);
        v = std::clamp(v, 0.0, 200.0);
        return {radius * std::sin(u), v, radius * std::cos(u)};
    }
    void EvaluateDerivatives(double u, double v, ZYLMathPoint *point, ZYLMathVector *du,
                             ZYLMathVector *dv) const override
    {
        *point = Evaluate(u, v);
        u = std::clamp(u, -1.0, 1.0);
        *du = {radius * std::cos(u), 0.0, -radius * std::sin(u)};
        *dv = {0.0, 1.0, 0.0};
    }
};

using ZYLGeoSurfaceFactory = std::function<ZYLGeoRef<ZYLGeoSurface>()>;
Q_DECLARE_METATYPE(ZYLGeoSurfaceFactory)

namespace ZYLGeoTestSurfaces {

inline ZYLGeoRef<ZYLGeoSurface> TiltedPlane()
{
    return ZYLGeoPlane::Create(ZYLMathAxis(ZYLMathPoint(10, -20, 30), ZYLMathVector(1, 0, 1), ZYLMathVector(0, 1, 0.3)),
                               {-50.0, 150.0, -40.0, 60.0});
}

/// Centre of curvature 100 above the centre, on the normal side.
inline ZYLGeoRef<ZYLGeoSurface> Bowl()
{
    return ZYLGeoBSplineSurface::CreateDoublyCurvedPanel(ZYLMathAxis(), 240, 160, 0.01, 0.01);
}

inline ZYLGeoRef<ZYLGeoSurface> Dome()
{
    return ZYLGeoBSplineSurface::CreateDoublyCurvedPanel(ZYLMathAxis(), 300, 200, -1.0 / 150, -1.0 / 250);
}

inline ZYLGeoRef<ZYLGeoSurface> Saddle()
{
    const ZYLMathAxis frame(ZYLMathPoint(5, 5, 5), ZYLMathVector(1, 1, 0), ZYLMathVector(-1, 1, 0.5));
    return ZYLGeoBSplineSurface::CreateDoublyCurvedPanel(frame, 250, 250, 1.0 / 120, -1.0 / 90);
}

/// A bilinear surface with random heights: creases along every interior knot line.
inline ZYLGeoRef<ZYLGeoSurface> Creased()
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> height(-25.0, 25.0);
    std::vector<ZYLMathPoint> points;
    for (int i = 0; i < 5; ++i) {
        for (int j = 0; j < 4; ++j)
            points.emplace_back(50.0 * i, 60.0 * j, height(random));
    }
    return ZYLGeoBSplineSurface::Create(1, 1, 5, 4, points, {0, 0, 1, 2, 3, 4, 4}, {0, 0, 1, 3, 4, 4});
}

/// A wavy bicubic by quadratic surface on non-uniform knots.
inline ZYLGeoRef<ZYLGeoSurface> Wavy()
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> height(-30.0, 30.0);
    std::vector<ZYLMathPoint> points;
    for (int i = 0; i < 7; ++i) {
        for (int j = 0; j < 5; ++j)
            points.emplace_back(40.0 * i, 45.0 * j, height(random));
    }
    return ZYLGeoBSplineSurface::Create(3, 2, 7, 5, points, {0, 0, 0, 0, 0.2, 0.3, 0.7, 1, 1, 1, 1},
                                        {0, 0, 0, 0.5, 0.6, 1, 1, 1});
}

inline ZYLGeoRef<ZYLGeoSurface> Cylinder()
{
    return ZYLGeoRef<ZYLGeoSurface>(new ZYLGeoTestCylinder);
}

} // namespace ZYLGeoTestSurfaces
