// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The studio's process checks on the million-point demo (with its deliberate faults): after
// an edit (the minimum steering radius, which recolours every course, or the feed rate of
// one course), the time until the dock has the new outcome and the view has drawn the frame
// that shows it, and the longest time the GUI thread was busy meanwhile (a timer ticking
// every 5 ms measures it: what input would have waited, the view's repaint included). Worst
// of three edits each. Last, the time of one repaint of the view, which every stall that
// redraws includes.
// Run under Xvfb:
//   xvfb-run -a -s "-screen 0 1600x1000x24" bench_process_studio [courses points-per-course]
#include "ZYLBenchSupport.h"

#include "ZYLStudioMainWindow.h"
#include "ZYLStudioProcessChecks.h"
#include "ZYLStudioSession.h"
#include "ZYLStudioViewer.h"

#include "ZYLTPCourse.h"
#include "ZYLTPProgramFile.h"
#include "ZYLTPRollLayupProcedure.h"

#include "ZYLFeatContainer.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

// Makes `edit` in one committed transaction and waits for the check's outcome and for the
// view's frame that shows it, if any; returns {milliseconds until both, longest GUI thread
// stall in ms}.
std::pair<double, double> EditAndWait(ZYLStudioSession &session, ZYLStudioProcessChecks &checks,
                                      ZYLStudioViewer &viewer, const std::function<void()> &edit)
{
    double longest = 0.0;
    QElapsedTimer sinceTick;
    QTimer ticker;
    ticker.setInterval(5);
    QObject::connect(&ticker, &QTimer::timeout, &ticker, [&] {
        longest = std::max(longest, sinceTick.nsecsElapsed() / 1e6);
        sinceTick.restart();
    });
    // Anything still to be drawn from before is drawn first.
    QElapsedTimer settle;
    settle.start();
    while (settle.elapsed() < 1500)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    QElapsedTimer timer;
    double outcome = -1.0, lastFrame = 0.0;
    const auto checked = QObject::connect(&checks, &ZYLStudioProcessChecks::CheckChanged, &ticker,
                                          [&] { outcome = timer.nsecsElapsed() / 1e6; });
    const auto drawn = QObject::connect(&viewer, &QOpenGLWidget::frameSwapped, &ticker,
                                        [&] { lastFrame = timer.nsecsElapsed() / 1e6; });
    timer.start();
    sinceTick.start();
    ticker.start();
    session.GetContainer()->OpenTransaction(QStringLiteral("Edit"));
    edit();
    session.GetContainer()->CommitTransaction();
    while (outcome < 0.0 && timer.elapsed() < 60000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    // A frame that shows the outcome comes after it, asked for by the recolouring; the stall
    // counts it.
    while (timer.nsecsElapsed() / 1e6 < outcome + 1500)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    QObject::disconnect(checked);
    QObject::disconnect(drawn);
    return {std::max(outcome, lastFrame), std::max(longest, sinceTick.nsecsElapsed() / 1e6)};
}

// Milliseconds the view takes to draw the unchanged scene again (median of five): what any
// stall that redraws the view costs at least in this renderer.
double RepaintTime(ZYLStudioViewer &viewer)
{
    std::vector<double> times;
    for (int i = 0; i < 5; ++i) {
        QTest::qWait(300);
        bool swapped = false;
        const auto connection = QObject::connect(&viewer, &QOpenGLWidget::frameSwapped, &viewer, [&] { swapped = true; });
        QElapsedTimer timer;
        timer.start();
        viewer.update();
        while (!swapped && timer.elapsed() < 10000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        times.push_back(timer.nsecsElapsed() / 1e6);
        QObject::disconnect(connection);
    }
    std::nth_element(times.begin(), times.begin() + 2, times.end());
    return times[2];
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    ZYLTPDemoGenerator::Parameters parameters = ZYLBenchDemoParameters(argc, argv);
    parameters.processFaults = true;
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("demo.zyltp.json"));
    if (!ZYLTPProgramFile::Save(*ZYLTPDemoGenerator::Create(parameters), file).isEmpty())
        return 1;
    qputenv("ZYL_SETTINGS_DIR", dir.filePath(QStringLiteral("settings")).toLocal8Bit());

    ZYLStudioSession session;
    if (!session.Start())
        return 1;
    ZYLStudioMainWindow window(&session);
    window.SetMessageBoxesEnabled(false);
    window.show();
    if (!QTest::qWaitForWindowExposed(&window) || !window.OpenProgramFile(file))
        return 1;
    ZYLStudioProcessChecks &checks = *window.GetProcessChecks();
    checks.WaitForIdle(60000);

    ZYLTPProgram *program = session.GetProgram();
    ZYLTPCourse *course = qobject_cast<ZYLTPRollLayupProcedure *>(program->GetProcedure(0))->GetCourseByIndex(0);
    const struct {
        const char *name;
        std::function<void(int run)> edit;
    } edits[] = {{"minimum steering radius",
                  [&](int run) {
                      ZYLTPProcessRules rules = program->GetProcessRules();
                      rules.minSteeringRadius = run % 2 ? 1350.0 : 1000.0;
                      program->SetProcessRules(rules);
                  }},
                 {"feed rate of a course", [&](int run) { course->SetLayingFeedRate(run % 2 ? 6000.0 : 5000.0); }}};
    for (const bool coloured : {false, true}) {
        checks.SetColoringEnabled(coloured);
        checks.WaitForIdle(60000);
        for (const auto &e : edits) {
            double worstLatency = 0.0, worstStall = 0.0;
            for (int run = 0; run < 3; ++run) {
                const auto [latency, stall] = EditAndWait(session, checks, *window.GetViewer(), [&] { e.edit(run); });
                worstLatency = std::max(worstLatency, latency);
                worstStall = std::max(worstStall, stall);
            }
            std::printf("%-12s %-24s edit to outcome shown %5.0f ms (target <= 500 ms), longest GUI stall %5.0f ms\n",
                        coloured ? "coloured," : "plain bands,", e.name, worstLatency, worstStall);
        }
    }
    checks.SetColoringEnabled(false);
    std::printf("a repaint of the unchanged view takes %.0f ms\n", RepaintTime(*window.GetViewer()));
    return 0;
}
