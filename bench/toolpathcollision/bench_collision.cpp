// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Collision detection and avoidance on a demo program (500 courses x 2000 points by default:
// a million laying points). Detection runs point by point as the editing module calls it,
// against a plain loop of cold closest-point queries doing the same test; avoidance runs at
// 10 mm over every course that has a colliding point.
// Usage: bench_collision [courses] [points-per-course]
#include "ZYLBenchSupport.h"

#include "ZYLTPCourse.h"
#include "ZYLTPDemoGenerator.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPTool.h"

#include "ZYLFeatContainer.h"
#include "ZYLGeoSurface.h"
#include "ZYLSysMessageQueue.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <vector>

namespace {

using Spheres = QList<std::pair<ZYLMathPoint, double>>;
constexpr double Tolerance = 10.0;

// The spheres the host hands to the module for a course: the head's, then the tool's.
Spheres CollisionPoints(const ZYLTPCourse &course)
{
    const ZYLTPMachineConfiguration &configuration = course.GetMachineConfiguration();
    Spheres spheres;
    if (configuration.GetHead())
        spheres += configuration.GetHead()->GetCollisionPoints();
    spheres += configuration.GetTool()->GetCollisionPoints();
    return spheres;
}

// The same test without any query state: one cold closest-point query per sphere.
bool CollidesCold(const ZYLGeoSurface &surface, const ZYLMathAxis &frame, const Spheres &spheres)
{
    const ZYLGeoSurface::Domain domain = surface.GetDomain();
    for (const auto &[centre, radius] : spheres) {
        const ZYLGeoSurfaceFoot foot = surface.GetClosestPoint(frame.ToGlobal(centre));
        const bool onBorder = foot.u <= domain.uMin || foot.u >= domain.uMax || foot.v <= domain.vMin
                              || foot.v >= domain.vMax;
        const double distance = onBorder ? std::fabs(foot.signedDistance) : foot.signedDistance;
        if (distance - radius < Tolerance)
            return true;
    }
    return false;
}

void Report(const char *what, qint64 points, double seconds, qint64 collisions)
{
    std::printf("%-34s %8lld points: %7.3f s, %6.2f M/s, %lld colliding\n", what, static_cast<long long>(points),
                seconds, points / seconds / 1e6, static_cast<long long>(collisions));
}

} // namespace

int main(int argc, char *argv[])
{
    const ZYLTPDemoGenerator::Parameters parameters = ZYLBenchDemoParameters(argc, argv);
    QCoreApplication app(argc, argv);

    QElapsedTimer timer;
    timer.start();
    ZYLGeoRef<ZYLTPProgram> program = ZYLTPDemoGenerator::Create(parameters);
    const ZYLGeoSurface *surface = program->GetPlySurface();
    auto *layup = qobject_cast<ZYLTPRollLayupProcedure *>(program->GetProcedure(0));
    std::printf("build %.3f s: %d courses x %d points\n", timer.elapsed() / 1000.0, parameters.courses,
                parameters.pointsPerCourse);
    // The surface's search index is built on its first query; that is not part of the check.
    surface->GetClosestPoint(ZYLMathPoint(0.0, 0.0, 0.0));

    // The model makes a point's view on its first request; the module's first pass over the
    // points pays for that once, whatever it asks of them.
    timer.restart();
    qint64 viewed = 0;
    for (int c = 0; c < layup->GetNumCourses(); ++c) {
        const ZYLTPCourse *course = layup->GetCourseByPosition(c);
        for (int i = 0; i < course->GetNumPoints(); ++i, ++viewed)
            course->GetPoint(i);
    }
    Report("point views made on first request", viewed, timer.elapsed() / 1000.0, 0);

    qint64 points = 0, colliding = 0;
    std::vector<ZYLTPCourse *> collidingCourses;
    timer.restart();
    for (int c = 0; c < layup->GetNumCourses(); ++c) {
        ZYLTPCourse *course = layup->GetCourseByPosition(c);
        const Spheres spheres = CollisionPoints(*course);
        bool any = false;
        for (int i = 0; i < course->GetNumPoints(); ++i, ++points) {
            if (course->GetPoint(i)->DetectCollision(surface, true, Tolerance, spheres)) {
                ++colliding;
                any = true;
            }
        }
        if (any)
            collidingCourses.push_back(course);
    }
    Report("DetectCollision, point by point", points, timer.elapsed() / 1000.0, colliding);

    qint64 coldColliding = 0;
    timer.restart();
    for (int c = 0; c < layup->GetNumCourses(); ++c) {
        const ZYLTPCourse *course = layup->GetCourseByPosition(c);
        const Spheres spheres = CollisionPoints(*course);
        for (int i = 0; i < course->GetNumPoints(); ++i)
            coldColliding += CollidesCold(*surface, course->GetPointFrame(i, true), spheres) ? 1 : 0;
    }
    Report("cold queries, no bounds (baseline)", points, timer.elapsed() / 1000.0, coldColliding);

    ZYLFeatContainer container;
    qint64 coursePoints = 0;
    int errors = 0;
    timer.restart();
    {
        ZYLSysMessageQueue queue;
        container.OpenTransaction(QStringLiteral("Avoid collisions"));
        for (ZYLTPCourse *course : collidingCourses) {
            coursePoints += course->GetNumPoints();
            course->AvoidCollisions(surface, true, Tolerance, CollisionPoints(*course), course->GetPoint(0), nullptr);
        }
        container.CommitTransaction();
        for (const ZYLSysMessageQueue::Message &message : queue.GetMessages())
            errors += message.second == ZYLSysMessageQueue::Error ? 1 : 0;
    }
    const double avoidSeconds = timer.elapsed() / 1000.0;
    qint64 left = 0;
    for (ZYLTPCourse *course : collidingCourses) {
        const Spheres spheres = CollisionPoints(*course);
        for (int i = 0; i < course->GetNumPoints(); ++i)
            left += course->GetPoint(i)->DetectCollision(surface, true, Tolerance, spheres) ? 1 : 0;
    }
    std::printf("AvoidCollisions at %.0f mm, %zu courses, %lld points (%lld colliding): %.3f s, "
                "%lld still colliding, %d errors\n",
                Tolerance, collidingCourses.size(), static_cast<long long>(coursePoints),
                static_cast<long long>(colliding), avoidSeconds, static_cast<long long>(left), errors);
    // A small workload may have nothing to avoid, and then no step to take back.
    if (container.CanUndo())
        container.Undo();
    container.ClearHistory();
    return 0;
}
