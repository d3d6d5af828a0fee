// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The collision inspector and the contextual view on the demo program of a million laying
// points (500 courses x 2000 points), run in the host as the studio runs them: the module
// loaded at run time, the panels driven through their controls and the scene's mouse entry
// points. Timed: the collision search and its table, a search cancelled from its progress
// dialog, hovering and clicking in the inspector with every point listed, the contextual
// switch to laying points and hovering there.
// Usage: bench_inspection [courses] [points-per-course]
#include "ZYLBenchSupport.h"
#include "ZYLTPPanelTestHost.h"

#include "ZYLEditTPGraphicsMgr.h"

#include "ZYLTPCourse.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisPickRay.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QProgressDialog>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

#include <cstdio>
#include <random>
#include <vector>

namespace {

double Seconds(const QElapsedTimer &timer) {
    return timer.nsecsElapsed() / 1e9;
}

// Tips of `count` laying points spread over the program, for the mouse to visit.
std::vector<ZYLMathPoint> SampleTips(const ZYLTPProgram &program, int count) {
    const auto *layup = qobject_cast<const ZYLTPRollLayupProcedure *>(program.GetProcedure(0));
    std::mt19937 random(7);
    std::vector<ZYLMathPoint> tips;
    for (int i = 0; i < count; ++i) {
        const ZYLTPCourse *course = layup->GetCourseByIndex(int(random() % layup->GetNumCourses()));
        tips.push_back(course->GetPoint(int(random() % course->GetNumPoints()))->GetTipPoint());
    }
    return tips;
}

// Mean milliseconds of a mouse move (or click) down onto each of the tips.
double MeanMouseMs(ZYLVisEnvironment *scene, const std::vector<ZYLMathPoint> &tips, bool click) {
    QElapsedTimer timer;
    timer.start();
    for (const ZYLMathPoint &tip : tips) {
        const ZYLVisPickRay ray(tip + ZYLMathVector(0.0, 0.0, 10000.0), ZYLMathVector(0.0, 0.0, -1.0), 1.0);
        if (click)
            scene->MouseClick(ray);
        else
            scene->MouseMove(ray);
    }
    return Seconds(timer) * 1000.0 / double(tips.size());
}

struct Inspector {
    QWidget *panel;
    QDoubleSpinBox *tolerance;
    QPushButton *update;
    QTableView *table;

    explicit Inspector(QWidget *widget)
        : panel(widget), tolerance(widget->findChild<QDoubleSpinBox *>("doubleSpinBoxCollisionDetectionTol")),
          update(widget->findChild<QPushButton *>("pushButtonShowPointCollsionDetction")),
          table(widget->findChild<QTableView *>("tableWidget")) {}

    // Seconds for "Update" at `value`: the search, the table and the drawing of the rows.
    double Search(double value) {
        tolerance->setValue(value);
        QElapsedTimer timer;
        timer.start();
        update->click();
        return Seconds(timer);
    }
};

} // namespace

int main(int argc, char *argv[]) {
    QApplication app(argc, argv);
    const ZYLTPDemoGenerator::Parameters parameters = ZYLBenchDemoParameters(argc, argv);
    ZYLTPPanelTestHost host;
    if (!host.Start()) {
        std::printf("cannot start the host: %s\n", qPrintable(host.GetError()));
        return 1;
    }
    ZYLGeoRef<ZYLTPProgram> demo = ZYLTPDemoGenerator::Create(parameters);
    if (!host.Open(*demo)) {
        std::printf("cannot open the program: %s\n", qPrintable(host.GetError()));
        return 1;
    }
    const ZYLTPProgram &program = *host.GetProgram();
    ZYLVisEnvironment *scene = host.GetScene();
    std::printf("%d courses x %d points\n", parameters.courses, parameters.pointsPerCourse);

    // The model's own detection over every point, as the inspector asks it (the first pass
    // also makes the point views, which the model creates on first request); the inspector's
    // own share of a search is its time less this.
    ZYLEditTPGraphicsMgr *manager = host.GetManager();
    for (const double tolerance : {10.0, 10.0, 1000.0}) {
        QElapsedTimer detection;
        detection.start();
        int colliding = 0;
        const auto *layup = qobject_cast<const ZYLTPRollLayupProcedure *>(program.GetProcedure(0));
        for (int c = 0; c < layup->GetNumCourses(); ++c) {
            const ZYLTPCourse *course = layup->GetCourseByPosition(c);
            QList<ZYLEditTPGraphicsMgr::CollisionPoint> points;
            manager->GetCollisionPoints(course->GetMachineConfiguration(), points);
            for (int i = 0; i < course->GetNumPoints(); ++i)
                colliding += course->GetPoint(i)->DetectCollision(manager->GetUpdatedSurface(),
                                                                  !manager->GetLayupDirection(), tolerance, points);
        }
        std::printf("model: DetectCollision over every point at %g mm %.3f s, %d colliding\n", tolerance,
                    Seconds(detection), colliding);
    }

    // Collision inspector.
    host.Trigger("ZYLTPCollisionInspectorCmd.View");
    Inspector inspector(host.GetPanel());
    for (const double tolerance : {10.0, 10.5}) {
        const double seconds = inspector.Search(tolerance);
        std::printf("inspector: search at %g mm %.3f s, %d rows\n", tolerance, seconds,
                    int(inspector.table->model()->rowCount()));
    }

    // A search cancelled from its progress dialog keeps the list it had.
    const int kept = inspector.table->model()->rowCount();
    QTimer canceller;
    QObject::connect(&canceller, &QTimer::timeout, &app, [] {
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (auto *progress = qobject_cast<QProgressDialog *>(widget); progress && progress->isVisible())
                progress->cancel();
    });
    canceller.start(50);
    const double cancelled = inspector.Search(999.0);
    canceller.stop();
    std::printf("inspector: search at 999 mm cancelled after %.3f s, %d rows kept (of %d)\n", cancelled,
                int(inspector.table->model()->rowCount()), kept);

    // Every point collides at 1 m: a million rows and a million candidates under the mouse.
    const double all = inspector.Search(1000.0);
    const int rows = inspector.table->model()->rowCount();
    QElapsedTimer timer;
    timer.start();
    inspector.table->viewport()->repaint();
    std::printf("inspector: search at 1000 mm %.3f s, %d rows; table repaint %.3f s\n", all, rows, Seconds(timer));
    const std::vector<ZYLMathPoint> tips = SampleTips(program, 200);
    std::printf("inspector: hover %.2f ms per move over %d candidates\n", MeanMouseMs(scene, tips, false), rows);
    const std::vector<ZYLMathPoint> clicks(tips.begin(), tips.begin() + 10);
    std::printf("inspector: click (toggle row, redraw %d points) %.1f ms\n", rows, MeanMouseMs(scene, clicks, true));
    host.Press(QDialogButtonBox::Cancel);

    // Contextual view.
    host.Trigger("ZYLTPContextualViewCmd.View");
    auto *type = host.GetPanel()->findChild<QComboBox *>("comboBox_ObjectType");
    timer.restart();
    type->setCurrentIndex(1);
    std::printf("contextual: switch to Laying Point %.3f s\n", Seconds(timer));
    std::printf("contextual: hover %.2f ms per move\n", MeanMouseMs(scene, tips, false));
    timer.restart();
    type->setCurrentIndex(0);
    std::printf("contextual: switch back to Course %.3f s\n", Seconds(timer));
    host.Press(QDialogButtonBox::Close);
    std::printf("memory: resident %.0f MB, peak %.0f MB\n", ZYLBenchReadMemory().resident, ZYLBenchReadMemory().peak);
    return 0;
}
