// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Time to build the representations of every course of a program of 500 courses x 2000 tow
// points (one million laying points), as the edit environment does on entry and after each
// undo: with the options of the default view modes (tow band with short tows, outer tow
// edges, tow ends), and, for comparison, with the polyline views that add every laying point
// and its vectors, and with everything drawn.
//
// The program is the demo generator's: courses of 16 tows over a doubly curved panel, tows
// added and cut along a ply boundary.

#include "ZYLBenchArguments.h"

#include "ZYLTPCourse.h"
#include "ZYLTPCourseVisRep.h"
#include "ZYLTPDemoGenerator.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPVisualizationOptions.h"

#include "ZYLVisPrimitive.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <memory>
#include <vector>

namespace {

constexpr int NumCourses = 500;
constexpr int NumPoints = 2000;

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
    ZYLBenchReadArguments(argc, argv);
    QCoreApplication app(argc, argv);
    QElapsedTimer timer;
    timer.start();
    ZYLTPDemoGenerator::Parameters parameters;
    parameters.courses = NumCourses;
    parameters.pointsPerCourse = NumPoints;
    parameters.tows = 16;
    parameters.inspection = false;
    const ZYLGeoRef<ZYLTPProgram> program = ZYLTPDemoGenerator::Create(parameters);
    QList<ZYLTPCourse *> courses;
    for (int p = 0; p < program->GetNumProcedures(); ++p) {
        if (const auto *procedure = qobject_cast<const ZYLTPRollLayupProcedure *>(program->GetProcedure(p))) {
            for (int c = 0; c < procedure->GetNumCourses(); ++c)
                courses.append(procedure->GetCourseByIndex(c));
        }
    }
    long long points = 0;
    for (const ZYLTPCourse *course : courses)
        points += course->GetNumPoints();
    std::printf("program: %lld courses, %lld laying points, made in %.2f s\n", (long long)courses.size(), points,
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
