// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The course panel on the demo program of 500 courses x 2,000 laying points (1M points): the
// time to open it and to run its steps, each with the rebuild of the scene's nodes it causes.
// Under an X server the studio's window shows the program and each time also waits for the
// 3-D view's next frame (software OpenGL):
//   QT_QPA_PLATFORM=offscreen bench_edit_course [courses points-per-course]
//   xvfb-run -a -s "-screen 0 1600x1000x24" bench_edit_course [courses points-per-course]
#include "ZYLBenchSupport.h"

#include "ZYLTPPanelTestHost.h"

#include "ZYLStudioMainWindow.h"
#include "ZYLStudioViewer.h"

#include "ZYLTPCourse.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QListView>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>

namespace {

// The studio's 3-D view when the benchmark runs with a window.
ZYLStudioViewer *viewer = nullptr;

// Runs the step and, with a window, draws the next frame; returns seconds (-1 without frame).
double Seconds(const std::function<void()> &step) {
    QElapsedTimer timer;
    timer.start();
    step();
    if (viewer) {
        const quint64 frames = viewer->GetFrameCount();
        viewer->update();
        if (!QTest::qWaitFor([frames] { return viewer->GetFrameCount() > frames; }, 60000))
            return -1.0; // no frame came

    }
    return timer.nsecsElapsed() / 1e9;
}

void Report(const char *what, double seconds, double goal) {
    std::printf("%-44s %7.3f s  (goal <= %.1f s)%s\n", what, seconds, goal, seconds <= goal ? "" : "  OVER");
}

} // namespace

int main(int argc, char **argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const ZYLTPDemoGenerator::Parameters parameters = ZYLBenchDemoParameters(argc, argv);
    ZYLTPPanelTestHost host;
    std::unique_ptr<ZYLStudioMainWindow> window;
    {
        ZYLGeoRef<ZYLTPProgram> program = ZYLTPDemoGenerator::Create(parameters);
        if (!host.Start()) {
            std::printf("the host could not start: %s\n", qPrintable(host.GetError()));
            return 1;
        }
        if (QGuiApplication::platformName() != QLatin1String("offscreen")) {
            window = std::make_unique<ZYLStudioMainWindow>(host.GetSession());
            window->SetMessageBoxesEnabled(false);
            window->show();
            if (!QTest::qWaitForWindowExposed(window.get()) || !window->GetOpenGLError().isEmpty())
                return 1;
            viewer = window->GetViewer();
        }
        if (!host.Open(*program)) {
            std::printf("the host could not open the program: %s\n", qPrintable(host.GetError()));
            return 1;
        }
    }
    auto *procedure = qobject_cast<ZYLTPRollLayupProcedure *>(host.GetProgram()->GetProcedure(0));
    std::printf("program: %d courses x %d points; %s\n", procedure->GetNumCourses(), parameters.pointsPerCourse,
                viewer ? "times include the next frame of the studio's 3-D view" : "no window: scene data only");
    Seconds([] {});

    QWidget *panel = nullptr;
    Report("open the panel", Seconds([&] {
               host.Trigger("ZYLTPEditCourseCmd.Edit");
               panel = host.GetPanel();
           }), 0.5);
    if (!panel)
        return 1;
    const auto action = [panel](const char *name) { return panel->findChild<QAction *>(QLatin1String(name)); };
    const auto button = [panel](const char *name) { return panel->findChild<QAbstractButton *>(QLatin1String(name)); };
    auto *list = panel->findChild<QListView *>(QStringLiteral("listViewCourses"));
    const auto select = [list](int first, int count) {
        list->clearSelection();
        list->selectionModel()->select(QItemSelection(list->model()->index(first, 0), list->model()->index(first + count - 1, 0)),
                                       QItemSelectionModel::Select);
    };
    const auto pick = [&host](const ZYLTPCourse *course) {
        host.ClickAt(course->GetPoint(course->GetNumPoints() / 2)->GetTipPoint());
    };

    if (viewer)
        std::printf("%-44s %7.3f s\n", "a frame of the panel's view, nothing changed", Seconds([] {}));
    Report("select all rows in the list", Seconds([&] { list->selectAll(); }), 0.5);
    select(10, 3);
    Report("Up, three rows", Seconds([&] { button("buttonUp")->click(); }), 0.5);
    Report("Down, three rows", Seconds([&] { button("buttonDown")->click(); }), 0.5);
    select(100, 100);
    Report("laying feed rate on 100 selected courses", Seconds([&] {
               panel->findChild<QDoubleSpinBox *>(QStringLiteral("doubleSpinBoxLayingFeedRate"))->setValue(4321.0);
           }), 0.5);
    Report("Reverse all (laying order)", Seconds([&] { button("buttonReverseAllCoursesOrder")->click(); }), 0.5);
    action("actionReverse")->setChecked(true);
    // The first pick after the mode's rebuild also indexes the new nodes for picking.
    Report("a pick in Reverse mode (first after rebuild)", Seconds([&] { pick(procedure->GetCourseByPosition(250)); }), 0.5);
    action("actionReverse")->setChecked(false);

    const QList<int> order = procedure->GetLayingOrder();
    action("actionEdit_mode")->setChecked(true);
    Report("Unlink All", Seconds([&] { action("actionUnlinkAll")->trigger(); }), 1.0);
    action("actionChainLink")->setChecked(true);
    Report("ChainLink first pick (first after rebuild)", Seconds([&] { pick(procedure->GetCourseByIndex(order[0])); }), 0.3);
    std::vector<double> picks;
    for (int p = 1; p <= 20; ++p)
        picks.push_back(Seconds([&] { pick(procedure->GetCourseByIndex(order[p])); }));
    std::sort(picks.begin(), picks.end());
    Report("ChainLink pick that links (median of 20)", picks[picks.size() / 2], 0.3);
    Report("ChainLink pick that links (slowest of 20)", picks.back(), 0.3);
    std::printf("links made by the picks: %d of 20\n", procedure->GetNumLinks());
    Report("Cancel (rollback and rebuild)", Seconds([&] { host.Press(QDialogButtonBox::Cancel); }), 10.0);
    const ZYLBenchMemory memory = ZYLBenchReadMemory();
    std::printf("memory: %.0f MB resident, %.0f MB peak\n", memory.resident, memory.peak);
    return 0;
}
