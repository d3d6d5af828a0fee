// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Time to build the representations of every course of a program of 500 courses x 2000 tow
// points (one million laying points), as the edit environment does on entry and after each
// undo: with the options of the default view modes (tow band with short tows, outer tow
// edges, tow ends), and, for comparison, with the polyline views that add every laying point
// and its vectors.
//
// Courses lie side by side on a doubly curved panel. Their sixteen tows are added one after
// the other over the first 80 points and cut one after the other over the last 75, as where
// a course crosses a slanted ply boundary, so each course has 32 tow trajectories.

#include "ZYLTPCourse.h"
#include "ZYLTPCourseVisRep.h"
#include "ZYLTPProgram.h"
#include "ZYLTPProgramBuilder.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPRoller.h"
#include "ZYLTPTowCourse.h"
#include "ZYLTPVisualizationOptions.h"

#include "ZYLVisPrimitive.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

constexpr int NumCourses = 500;
constexpr int NumPoints = 2000;
constexpr int NumTows = 16;
constexpr int StaggerPoints = 5;

ZYLTPProgramBuilder::CourseData MakeCourse(int c)
{
    ZYLTPProgramBuilder::CourseData data;
    data.tips.reserve(NumPoints);
    data.normals.reserve(NumPoints);
    const double y0 = c * NumTows * 6.35;
    for (int i = 0; i < NumPoints; ++i) {
        // A shallow bowl, curved along and across the courses.
        const double x = i * 2.5;
        const double y = y0;
        const double dzdx = 2e-5 * (x - 2500.0);
        const double dzdy = 1e-6 * (y - 25000.0);
        data.tips.emplace_back(x, y, 1e-5 * (x - 2500.0) * (x - 2500.0) + 5e-7 * (y - 25000.0) * (y - 25000.0));
        const ZYLMathVector normal = ZYLMathVector(-dzdx, -dzdy, 1.0).Normalized().value();
        data.normals.push_back(normal);
    }
    const auto run = [](int points, quint64 mask) {
        ZYLTPProgramBuilder::TowRun r;
        r.numPoints = points;
        r.towMask = ZYLCompTowMask(mask);
        return r;
    };
    const quint64 all = (quint64(1) << NumTows) - 1;
    for (int t = 1; t <= NumTows; ++t)
        data.runs.push_back(run(StaggerPoints, (quint64(1) << t) - 1));
    data.runs.push_back(run(NumPoints - (2 * NumTows - 1) * StaggerPoints, all));
    for (int t = 1; t < NumTows; ++t)
        data.runs.push_back(run(StaggerPoints, all & ~((quint64(1) << t) - 1)));
    return data;
}

struct Totals {
    long long primitives = 0;
    long long vertices = 0;
};

double BuildAll(const QList<ZYLTPCourse *> &courses, const ZYLTPVisualizationOptions &options, Totals *totals)
{
    std::vector<std::unique_ptr<ZYLTPCourseVisRep>> reps;
    reps.reserve(size_t(courses.size()));
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < courses.size(); ++i) {
        QList<ZYLVisOptions> out;
        reps.push_back(std::make_unique<ZYLTPCourseVisRep>(courses[i], i, options, out));
    }
    const double seconds = timer.nsecsElapsed() * 1e-9;
    for (const auto &rep : reps) {
        totals->primitives += rep->GetNumPrimitives();
        for (int p = 0; p < rep->GetNumPrimitives(); ++p)
            totals->vertices += rep->GetPrimitive(p)->GetNumVertices();
    }
    return seconds;
}

// The options the edit environment shows with the default view modes: courses as tow bands,
// no polyline, laying points hidden with the polyline.
ZYLTPVisualizationOptions CourseViewOptions()
{
    ZYLTPVisualizationOptions options;
    options.SetApproachRetractEnabled(false);
    options.SetRollInOutEnabled(false);
    options.SetShortTowDisplay(ZYLTPVisualizationOptions::AllTowsShortHighlighted);
    options.SetTipPointEnabled(false);
    options.SetLinkingTrajectoriesEnabled(false);
    options.SetLayingTrajectoryEnabled(false);
    options.SetLinkingPointsEnabled(true);
    options.SetLayingVectorsToDisplay(ZYLTPVisualizationOptions::ToolAxis);
    return options;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QElapsedTimer timer;
    timer.start();
    ZYLTPProgramBuilder builder;
    auto *roller = builder.AddRoller(QStringLiteral("Roller"), 120.0, 60.0);
    auto *procedure = builder.AddRollLayupProcedure(QStringLiteral("Ply"), QString());
    auto *configuration = builder.AddMachineConfiguration(procedure, nullptr, roller);
    QList<ZYLTPCourse *> courses;
    for (int c = 0; c < NumCourses; ++c)
        courses.append(builder.AddTowCourse(procedure, configuration, MakeCourse(c)));
    std::printf("program: %d courses x %d tow points built in %.2f s\n", NumCourses, NumPoints,
                timer.nsecsElapsed() * 1e-9);

    using O = ZYLTPVisualizationOptions;
    const O courseView = CourseViewOptions();
    O polylineView = courseView;  // course and polyline view: adds centre lines and laying points
    polylineView.SetApproachRetractEnabled(true);
    polylineView.SetRollInOutEnabled(true);
    polylineView.SetLayingTrajectoryEnabled(true);
    polylineView.SetTipPointEnabled(true);
    O everything = polylineView;
    everything.SetTowEdgeDisplay(O::AllTowEdges);
    everything.SetLayingVectorsToDisplay(O::AllAxes);

    const struct {
        const char *name;
        O options;
    } cases[] = {
        {"course view (default modes)", courseView},
        {"course and polyline view", polylineView},
        {"everything, all tow edges, all axes", everything},
    };
    for (const auto &c : cases) {
        Totals totals;
        const double seconds = BuildAll(courses, c.options, &totals);
        std::printf("%-40s %7.3f s  %8lld primitives  %10lld vertices\n", c.name, seconds, totals.primitives,
                    totals.vertices);
    }
    return 0;
}
