// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Picking in a ply-sized scene: 500 course-like objects of 2000 points each, drawn as dots and
// as a polyline through them (one million points and one million segments). Times the first
// pick (which builds the indices the ray needs), a sweep that builds all the others, and
// 1000 picks along random rays. A second scene with the dots only gives the points figure.

#include "ZYLBenchArguments.h"

#include "ZYLVisEnvironment.h"
#include "ZYLVisPickRay.h"
#include "ZYLVisPointPrimitive.h"
#include "ZYLVisPolylinePrimitive.h"
#include "ZYLVisRepGraphics.h"
#include "ZYLVisVirtualObject.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>

#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

namespace {
constexpr int courses = 500;
constexpr int pointsPerCourse = 2000;
constexpr double spacing = 1.0;   // mm between points along a course
constexpr double pitch = 4.0;     // mm between courses

// A doubly curved panel, like a mould.
double height(double x, double y)
{
    return 40.0 * std::sin(x / 700.0) * std::cos(y / 900.0);
}

struct Scene {
    ZYLVisEnvironment env;
    std::vector<std::unique_ptr<ZYLVisVirtualObject>> objects;

    explicit Scene(bool withPolylines)
    {
        for (int c = 0; c < courses; ++c) {
            std::vector<ZYLMathPoint> points;
            points.reserve(pointsPerCourse);
            const double y = c * pitch;
            for (int i = 0; i < pointsPerCourse; ++i) {
                // Courses run at a slight angle so that their boxes overlap, as on a real ply.
                const double x = i * spacing;
                const double yy = y + 0.2 * x;
                points.emplace_back(x, yy, height(x, yy));
            }
            QList<ZYLVisPrimitive *> primitives{new ZYLVisPointPrimitive(points)};
            if (withPolylines)
                primitives.append(new ZYLVisPolylinePrimitive(std::move(points)));
            auto *rep = new ZYLVisRepGraphics(primitives, ZYLVisOptions());
            objects.push_back(std::make_unique<ZYLVisVirtualObject>(&env));
            objects.back()->SetRep(rep);
            env.AddVirtualObject(objects.back().get());
        }
    }
};

// A perspective ray from an eye 3 m above the panel towards a random point on it, with a
// pick radius of about 3 pixels (0.5 mrad per pixel).
ZYLVisPickRay randomRay(QRandomGenerator &random)
{
    const double x = random.bounded(double(pointsPerCourse) * spacing);
    const double y = random.bounded(courses * pitch) + 0.2 * x;
    const ZYLMathPoint target(x, y, height(x, y));
    const ZYLMathPoint eye(1000.0, 1200.0, 3000.0);
    return ZYLVisPickRay(eye, target - eye, 0.0, 0.0015);
}

void run(const char *title, bool withPolylines)
{
    QElapsedTimer timer;
    timer.start();
    Scene scene(withPolylines);
    const double buildScene = double(timer.nsecsElapsed()) / 1e6;
    QRandomGenerator random(7);

    timer.restart();
    const ZYLVisPickResult first = scene.env.Pick(randomRay(random));
    const double firstPick = double(timer.nsecsElapsed()) / 1e6;

    // Rays over the whole panel make every object's index exist.
    timer.restart();
    for (int c = 0; c < courses; ++c) {
        const double x = 0.5 * pointsPerCourse * spacing;
        const double y = c * pitch + 0.2 * x;
        scene.env.Pick(ZYLVisPickRay(ZYLMathPoint(x, y, 500.0), ZYLMathVector(0, 0, -1), 1.0));
    }
    const double sweep = double(timer.nsecsElapsed()) / 1e6;

    constexpr int picks = 1000;
    int hits = 0;
    timer.restart();
    for (int i = 0; i < picks; ++i)
        hits += scene.env.Pick(randomRay(random)).IsHit();
    const double total = double(timer.nsecsElapsed()) / 1e6;

    std::printf("%s\n", title);
    std::printf("  scene: %d objects x %d points%s, built in %.0f ms\n", courses, pointsPerCourse,
                withPolylines ? " + polylines" : "", buildScene);
    std::printf("  first pick (builds the indices it needs): %.1f ms, %s\n", firstPick, first.IsHit() ? "hit" : "miss");
    std::printf("  index build for the rest (sweep of %d picks): %.0f ms\n", courses, sweep);
    std::printf("  %d picks: %.1f ms, %.3f ms per pick, %d hits\n", picks, total, total / picks, hits);
}
}

int main(int argc, char **argv)
{
    ZYLBenchReadArguments(argc, argv);
    QCoreApplication app(argc, argv);
    run("Points only (1M points)", false);
    run("Points and polylines (1M points, 1M segments)", true);
    return 0;
}
