// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The process checks (steering radius, tow runs, course lengths) over a demo program with
// its deliberate faults (500 courses x 2000 points by default: a million laying points), on
// one thread: the copy of the model the checks read, the checks themselves, and both, best
// of five runs.
// Usage: bench_process [courses] [points-per-course]
#include "ZYLBenchSupport.h"

#include "ZYLTPDemoGenerator.h"
#include "ZYLTPProcessCheck.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    ZYLTPDemoGenerator::Parameters parameters = ZYLBenchDemoParameters(QCoreApplication::arguments());
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
    return 0;
}
