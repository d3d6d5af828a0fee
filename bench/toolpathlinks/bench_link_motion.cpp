// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Cost of link motion on the demo program (500 courses on a doubly curved panel): the first
// computation of every link (straight links search the lift that clears the ply surface),
// the recomputation after an edit that leaves the links' ends where they were, after an
// edit that moves every course end, and large custom link edits with their undo.

#include "ZYLBenchArguments.h"

#include "ZYLTPCourse.h"
#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPDemoGenerator.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPOffPartPoint.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"

#include "ZYLTPProgramBuilder.h"
#include "ZYLTPRoller.h"
#include "ZYLTPTowCourse.h"

#include "ZYLFeatContainer.h"
#include "ZYLGeoBSplineSurface.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>

namespace {
// Reads every point of every link; returns the number of points read.
long ReadAllLinks(const ZYLTPRollLayupProcedure *procedure)
{
    long points = 0;
    for (int i = 0; i < procedure->GetNumLinks(); ++i) {
        const ZYLTPCourseLink *link = procedure->GetLinkByIndex(i);
        for (int k = 0; k < link->GetNumPoints(); ++k)
            points += link->GetPoint(k)->GetTipPoint().Z() > -1e300;
    }
    return points;
}

// 400 short courses on a dome (z = -x^2 / 500 over 1000 x 1000 mm), alternately on either
// side of its crest, each linked straight to the next across the crest.
ZYLTPProgram *DomeProgram(ZYLTPProgramBuilder &builder)
{
    const ZYLGeoRef<ZYLGeoBSplineSurface> dome =
        ZYLGeoBSplineSurface::CreateDoublyCurvedPanel(ZYLMathAxis(), 1000, 1000, -1.0 / 250, 0);
    builder.SetPlySurface(dome.get());
    ZYLTPRoller *roller = builder.AddRoller(QStringLiteral("Roller"), 50, 60);
    ZYLTPRollLayupProcedure *procedure = builder.AddRollLayupProcedure(QStringLiteral("Dome"), QString());
    const ZYLTPMachineConfiguration *configuration = builder.AddMachineConfiguration(procedure, nullptr, roller);
    const ZYLTPCourse *previous = nullptr;
    for (int c = 0; c < 400; ++c) {
        ZYLTPProgramBuilder::CourseData data;
        const double x0 = c % 2 ? 300.0 : -400.0;
        const double v = 50.0 + 2.0 * c;
        ZYLTPProgramBuilder::TowRun run;
        run.numPoints = 11;
        run.towMask = ZYLCompTowMask(0xF);
        data.runs.push_back(run);
        for (int i = 0; i < 11; ++i) {
            data.tips.push_back(dome->Evaluate(x0 + 10.0 * i + 500, v));
            data.normals.push_back(dome->GetNormal(x0 + 10.0 * i + 500, v));
        }
        const ZYLTPCourse *course = builder.AddTowCourse(procedure, configuration, data);
        if (previous)
            builder.AddLink(procedure, previous, course, ZYLTPCourseLink::Linear);
        previous = course;
    }
    return builder.GetProgram();
}

template<class F>
double Seconds(F f)
{
    QElapsedTimer timer;
    timer.start();
    f();
    return timer.nsecsElapsed() * 1e-9;
}
} // namespace

int main(int argc, char **argv)
{
    ZYLBenchReadArguments(argc, argv);
    QCoreApplication app(argc, argv);
    ZYLTPDemoGenerator::Parameters parameters;
    parameters.courses = 500;
    parameters.pointsPerCourse = 200;
    parameters.inspection = false;
    const ZYLGeoRef<ZYLTPProgram> program = ZYLTPDemoGenerator::Create(parameters);
    auto *procedure = qobject_cast<ZYLTPRollLayupProcedure *>(program->GetProcedure(0));
    int linear = 0;
    double lifted = 0;
    for (int i = 0; i < procedure->GetNumLinks(); ++i) {
        if (auto *link = qobject_cast<const ZYLTPLinearCourseLink *>(procedure->GetLinkByIndex(i))) {
            ++linear;
            lifted += link->GetClearanceLift() > 0.0;
        }
    }
    ZYLFeatContainer container;
    long points = 0;
    // The demo generator has read the links once already: make the model move on first.
    container.OpenTransaction(QStringLiteral("Feed"));
    procedure->SetRapidFeedRate(procedure->GetRapidFeedRate() + 1);
    container.CommitTransaction();
    const double unchanged = Seconds([&] { points = ReadAllLinks(procedure); });
    std::printf("%d links (%d straight, %.0f lifted clear of the surface), %ld points\n", procedure->GetNumLinks(),
                linear, lifted, points);
    std::printf("recompute after an edit that keeps the ends: %.2f ms, %.2f us per link\n", unchanged * 1e3,
                unchanged * 1e6 / procedure->GetNumLinks());
    container.OpenTransaction(QStringLiteral("Rapid"));
    for (int i = 0; i < procedure->GetNumLinks(); ++i) {
        if (auto *link = qobject_cast<ZYLTPLinearCourseLink *>(procedure->GetLinkByIndex(i)))
            link->SetRapidRetract(link->GetRapidRetract() + 5);
    }
    container.CommitTransaction();
    const double moved = Seconds([&] { ReadAllLinks(procedure); });
    std::printf("recompute after every straight link changed (lift searched again): %.2f ms, %.2f us per link\n",
                moved * 1e3, moved * 1e6 / linear);

    // Custom link edits: insert many points, undo, redo.
    ZYLTPCourseLink *first = nullptr;
    for (int i = 0; i < procedure->GetNumLinks() && !first; ++i) {
        ZYLTPCourseLink *link = procedure->GetLinkByIndex(i);
        if (link->GetFromCourse() && link->GetToCourse())
            first = link;
    }
    container.OpenTransaction(QStringLiteral("Convert"));
    ZYLTPCustomCourseLink *custom = procedure->ConvertLinkToCustom(first);
    container.CommitTransaction();
    const int count = 200000;
    const double insert = Seconds([&] {
        container.OpenTransaction(QStringLiteral("Insert"));
        custom->InsertPointsAfter(custom->GetPoint(1), count, ZYLTPCustomCourseLink::SphericalInterpolation);
        container.CommitTransaction();
        custom->GetNumPoints();
    });
    const double interpolate = Seconds([&] {
        container.OpenTransaction(QStringLiteral("Interpolate"));
        custom->InterpolateRange(custom->GetPoint(0), custom->GetPoint(custom->GetNumPoints() - 1),
                                 ZYLTPCustomCourseLink::LinearInterpolation);
        container.CommitTransaction();
        custom->GetNumPoints();
    });
    const double undo = Seconds([&] {
        container.Undo();
        container.Undo();
        custom->GetNumPoints();
    });
    const double redo = Seconds([&] {
        container.Redo();
        custom->GetNumPoints();
    });
    // Straight links that all need lifting over a dome.
    ZYLTPProgramBuilder builder;
    auto *dome = qobject_cast<ZYLTPRollLayupProcedure *>(DomeProgram(builder)->GetProcedure(0));
    double meanLift = 0.0;
    const double search = Seconds([&] {
        for (int i = 0; i < dome->GetNumLinks(); ++i)
            meanLift += qobject_cast<const ZYLTPLinearCourseLink *>(dome->GetLinkByIndex(i))->GetClearanceLift();
    });
    std::printf("%d straight links over a dome, lifted %.1f mm on average: first computation %.2f ms, %.1f us per link\n",
                dome->GetNumLinks(), meanLift / dome->GetNumLinks(), search * 1e3, search * 1e6 / dome->GetNumLinks());
    std::printf("insert %d points into a custom link: %.3f s, %.2f M/s\n", count, insert, count / insert * 1e-6);
    std::printf("interpolate them: %.3f s; undo both: %.3f s; redo the insertion: %.3f s\n", interpolate, undo, redo);
    return 0;
}
