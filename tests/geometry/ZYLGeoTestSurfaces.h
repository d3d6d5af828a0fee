// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoBSplineSurface.h"
#include "ZYLGeoPlane.h"

#include <QMetaType>

#include <cmath>
#include <functional>
#include <random>

using ZYLGeoSurfaceFactory = std::function<ZYLGeoRef<ZYLGeoSurface>()>;
Q_DECLARE_METATYPE(ZYLGeoSurfaceFactory)

namespace ZYLGeoTestSurfaces {

inline ZYLGeoRef<ZYLGeoSurface> TiltedPlane()
{
    return ZYLGeoPlane::Create(ZYLMathAxis(ZYLMathPoint(10, -20, 30), ZYLMathVector(1, 0, 1), ZYLMathVector(0, 1, 0.3)),
                               {-50.0, 150.0, -40.0, 60.0});
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

} // namespace ZYLGeoTestSurfaces
