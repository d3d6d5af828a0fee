// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The process checks (steering radius, tow runs, course lengths) over a demo program with
// its deliberate faults (500 courses x 2000 points by default: a million laying points), on
// one thread: the copy of the model the checks read, the checks themselves, and both, best
// of five runs. Then the build of every course representation with the band coloured by
// steering radius against the plain band, best of seven each.
// Usage: bench_process [courses] [points-per-course]
#include "ZYLBenchSupport.h"

#include "ZYLTPCourseVisRep.h"
#include "ZYLTPDemoGenerator.h"
#include "ZYLTPProcessCheck.h"
#include "ZYLTPProcessColoring.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPVisualizationOptions.h"

#include "ZYLVisPrimitive.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

// Seconds to build the representation of every course once; `vertices` gets the number
// of their vertices.
double BuildReps(const ZYLTPRollLayupProcedure &layup, long long *vertices)
{
    ZYLTPVisualizationOptions options;
    options.SetTipPointEnabled(false);
    options.SetShortTowDisplay(ZYLTPVisualizationOptions::AllTowsShortHighlighted);
    *vertices = 0;
    QElapsedTimer timer;
    timer.start();
    for (int c = 0; c < layup.GetNumCourses(); ++c) {
        QList<ZYLVisOptions> out;
        const auto rep = std::make_unique<ZYLTPCourseVisRep>(layup.GetCourseByIndex(c), c, options, out);
        for (int k = 0; k < rep->GetNumPrimitives(); ++k)
            *vertices += rep->GetPrimitive(k)->GetNumVertices();
    }
    return timer.nsecsElapsed() / 1e9;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    ZYLTPDemoGenerator::Parameters parameters = ZYLBenchDemoParameters(argc, argv);
    parameters.processFaults = true;
    const ZYLGeoRef<ZYLTPProgram> program = ZYLTPDemoGenerator::Create(parameters);

    double capture = 1e9, check = 1e9, total = 1e9;
    size_t violations = 0;
    qint64 points = 0;
    for (int run = 0; run < 5; ++run) {
        QElapsedTimer timer;
        timer.start();
        const ZYLTPProcessCheck::Input input = ZYLTPProcessCheck::Capture(*program, program->GetProcessRules());
        const double captured = timer.nsecsElapsed() / 1e9;
        const ZYLTPProcessCheck result = ZYLTPProcessCheck::Run(input);
        const double all = timer.nsecsElapsed() / 1e9;
        capture = std::min(capture, captured);
        check = std::min(check, all - captured);
        total = std::min(total, all);
        violations = result.GetViolations().size();
        points = result.GetNumPoints();
    }
    std::printf("%lld tow points, %zu violations\n", static_cast<long long>(points), violations);
    std::printf("capture %.3f s, checks %.3f s, total %.3f s (target <= 0.3 s)\n", capture, check, total);

    const auto *layup = qobject_cast<const ZYLTPRollLayupProcedure *>(program->GetProcedure(0));
    long long plainVertices = 0, colouredVertices = 0;
    double plain = 1e9, coloured = 1e9;
    const auto colouring = std::make_shared<const ZYLTPProcessCheck>(ZYLTPProcessCheck::Run(*program));
    // Alternating runs, best of seven each, so that a busy machine weighs on both alike.
    for (int run = 0; run < 7; ++run) {
        ZYLTPProcessColoring::SetCheck(nullptr);
        plain = std::min(plain, BuildReps(*layup, &plainVertices));
        ZYLTPProcessColoring::SetCheck(colouring);
        coloured = std::min(coloured, BuildReps(*layup, &colouredVertices));
    }
    ZYLTPProcessColoring::SetCheck(nullptr);
    std::printf("course reps: plain %.3f s (%lld vertices), coloured %.3f s (%lld vertices): %+.1f%% "
                "(target <= +10%%)\n",
                plain, plainVertices, coloured, colouredVertices, 100.0 * (coloured / plain - 1.0));
    return 0;
}
