// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Times closest-point queries on a mould surface the way collision detection makes them:
// a million points of a tool path (500 courses of 2,000 points) within 50 mm of a doubly
// curved panel, each course a run of neighbours, asked cold and with the previous foot as
// hint; then the same number of queries on a plane.

#include "ZYLBenchArguments.h"

#include "ZYLGeoBSplineSurface.h"
#include "ZYLGeoPlane.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

constexpr int courses = 500;
constexpr int pointsPerCourse = 2000;
constexpr double panelLength = 3000.0;
constexpr double panelWidth = 1500.0;

// Points above and below the surface along its normal, the height waving within ±50 mm
// along each course and the course drifting sideways a little.
std::vector<ZYLMathPoint> ToolPathPoints(const ZYLGeoSurface &surface)
{
    const ZYLGeoSurface::Domain domain = surface.GetDomain();
    std::vector<ZYLMathPoint> points;
    points.reserve(size_t(courses) * pointsPerCourse);
    for (int c = 0; c < courses; ++c) {
        const double v0 = domain.vMin + (domain.vMax - domain.vMin) * (c + 0.5) / courses;
        for (int i = 0; i < pointsPerCourse; ++i) {
            const double s = double(i) / (pointsPerCourse - 1);
            const double u = domain.uMin + (domain.uMax - domain.uMin) * s;
            const double v = std::clamp(v0 + 0.01 * (domain.vMax - domain.vMin) * std::sin(7.0 * s + c), domain.vMin,
                                        domain.vMax);
            const double height = 50.0 * std::sin(0.37 * c + 11.0 * s);
            points.push_back(surface.Evaluate(u, v) + surface.GetNormal(u, v) * height);
        }
    }
    return points;
}

struct Run {
    double seconds = 0.0;
    double checksum = 0.0;
    std::vector<double> distances;
};

Run Query(const ZYLGeoSurface &surface, const std::vector<ZYLMathPoint> &points, bool withHint)
{
    Run run;
    run.distances.resize(points.size());
    QElapsedTimer timer;
    timer.start();
    ZYLGeoSurfaceFoot foot;
    for (size_t k = 0; k < points.size(); ++k) {
        const bool courseStart = k % pointsPerCourse == 0;
        foot = surface.GetClosestPoint(points[k], withHint && !courseStart ? &foot : nullptr);
        run.distances[k] = foot.signedDistance;
    }
    run.seconds = double(timer.nsecsElapsed()) * 1e-9;
    for (double d : run.distances)
        run.checksum += d;
    return run;
}

void Print(const char *what, size_t count, double seconds)
{
    std::printf("%-34s %zu queries: %.3f s, %.2f M/s\n", what, count, seconds, double(count) / seconds * 1e-6);
}

} // namespace

int main(int argc, char **argv)
{
    ZYLBenchReadArguments(argc, argv);
    const ZYLMathAxis frame;
    const ZYLGeoRef<ZYLGeoBSplineSurface> panel =
        ZYLGeoBSplineSurface::CreateDoublyCurvedPanel(frame, panelLength, panelWidth, 1.0 / 2000.0, -1.0 / 3000.0);
    const std::vector<ZYLMathPoint> points = ToolPathPoints(*panel);

    QElapsedTimer timer;
    timer.start();
    panel->GetClosestPoint(points.front());
    std::printf("B-spline panel %.0f x %.0f mm, index built in %.1f ms\n", panelLength, panelWidth,
                double(timer.nsecsElapsed()) * 1e-6);

    const Run cold = Query(*panel, points, false);
    Print("B-spline panel, cold:", points.size(), cold.seconds);
    const Run hinted = Query(*panel, points, true);
    Print("B-spline panel, hint from neighbour:", points.size(), hinted.seconds);
    double disagreement = 0.0;
    for (size_t k = 0; k < points.size(); ++k)
        disagreement = std::max(disagreement, std::abs(cold.distances[k] - hinted.distances[k]));
    std::printf("largest cold/hint difference: %.3g mm\n", disagreement);

    const ZYLGeoRef<ZYLGeoPlane> plane = ZYLGeoPlane::Create(frame, {-1500.0, 1500.0, -750.0, 750.0});
    const Run flat = Query(*plane, ToolPathPoints(*plane), false);
    Print("plane:", points.size(), flat.seconds);
    return 0;
}
