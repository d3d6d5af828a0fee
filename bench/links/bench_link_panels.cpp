// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The link panels on a ply of 500 courses × 2,000 laying points (1M points, about 500 links)
// made by the demo generator, with the module loaded by the session as the studio loads it:
// - the links panel opening (the action triggered until its panel is in place);
// - the motion model of every listed link changed to safety plane (and the selection of all
//   rows that comes before it);
// - one gizmo drag step on a link of about 1,000 linking points: the point moved and turned
//   and the markers refreshed.
// Run headless:
//   QT_QPA_PLATFORM=offscreen bench_link_panels [courses points-per-course]
#include "ZYLBenchSupport.h"

#include "ZYLTPPanelTestHost.h"

#include "ZYLTPCourseLink.h"
#include "ZYLTPOffPartPoint.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"

#include "ZYLMathVector.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisGizmo.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

template<class T> T *Find(const ZYLTPPanelTestHost &host, const char *name) {
    return host.GetPanel() ? host.GetPanel()->findChild<T *>(QLatin1String(name)) : nullptr;
}

// Milliseconds that `work` takes.
template<class Work> double Time(Work &&work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return timer.nsecsElapsed() / 1e6;
}

// The warning a model change over custom links shows is closed as soon as it is up.
void AcceptNextMessageBox() {
    QTimer::singleShot(0, qApp, [] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
            box->accept();
    });
}

const ZYLTPCourseLink *MiddleCourseLink(const ZYLTPProgram *program) {
    for (int p = 0; p < program->GetNumProcedures(); ++p)
        if (const auto *procedure = qobject_cast<const ZYLTPRollLayupProcedure *>(program->GetProcedure(p)))
            return procedure->GetLinkByPosition(procedure->GetNumLinks() / 2);
    return nullptr;
}

int Fail(const char *what) {
    std::fprintf(stderr, "bench_link_panels: %s\n", what);
    return 1;
}

} // namespace

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    ZYLTPPanelTestHost host;
    if (!host.Start(&application))
        return Fail("the host did not start");
    const ZYLTPDemoGenerator::Parameters parameters = ZYLBenchDemoParameters(argc, argv);
    std::printf("program: %d courses x %d points\n", parameters.courses, parameters.pointsPerCourse);
    {
        const ZYLGeoRef<ZYLTPProgram> program = ZYLTPDemoGenerator::Create(parameters);
        if (!host.Open(*program))
            return Fail(qPrintable(host.GetError()));
    }

    // Links panel.
    const double open = Time([&] { host.Trigger("ZYLTPEditLinksCmd.Edit"); });
    auto *list = Find<QListView>(host, "listView_Sel");
    auto *model = Find<QComboBox>(host, "comboBox_OffPartMotionModel");
    if (!list || !model)
        return Fail("no links panel");
    const int links = list->model()->rowCount();
    const double selectAll = Time([&] { Find<QPushButton>(host, "pushButton_SelAll")->click(); });
    AcceptNextMessageBox();
    const double change = Time([&] { model->setCurrentIndex(model->findData(int(ZYLTPCourseLink::SafetyPlane))); });
    int safetyPlane = 0;
    for (int row = 0; row < links; ++row)
        safetyPlane += list->model()->index(row, 0).data(Qt::UserRole).value<const ZYLTPCourseLink *>()->GetStrategy()
                       == ZYLTPCourseLink::SafetyPlane;
    host.Press(QDialogButtonBox::Cancel);
    std::printf("links panel: %d links, opens in %.1f ms (target <= 300), select all %.1f ms\n", links, open,
                selectAll);
    std::printf("motion model of all links to safety plane: %.1f ms (target <= 1000), %d safety plane links after\n",
                change, safetyPlane);

    // Linking points panel: a link of about 1,000 points, then gizmo drag steps on it.
    host.Trigger("ZYLTPEditLinkingPointsCmd.Edit");
    const ZYLTPCourseLink *picked = MiddleCourseLink(host.GetProgram());
    if (!picked)
        return Fail("no link to pick");
    host.ClickAt(picked->GetPoint(picked->GetNumPoints() / 2)->GetTipPoint(), 0.5);
    if (!QTest::qWaitFor([&] { return host.GetButton(QDialogButtonBox::Ok) != nullptr; }))
        return Fail("the pick was not handed over");
    list = Find<QListView>(host, "listView_Sel");
    list->selectionModel()->select(list->model()->index(0, 0), QItemSelectionModel::ClearAndSelect);
    Find<QSpinBox>(host, "spinBox_NumOfPts")->setValue(1000 - 2 - list->model()->rowCount());
    const double insert = Time([&] { Find<QPushButton>(host, "pushButton_InsertAfter")->click(); });
    const int points = list->model()->rowCount() + 2;
    const double select = Time([&] {
        list->selectionModel()->select(list->model()->index(points / 2, 0), QItemSelectionModel::ClearAndSelect);
    });
    ZYLVisGizmo *gizmo = host.GetScene()->GetGizmos().value(0);
    if (!gizmo || !gizmo->IsShown())
        return Fail("no gizmo on the selected point");
    std::vector<double> steps;
    ZYLMathAxis position = gizmo->GetPosition();
    for (int step = 0; step < 100; ++step) {
        position.SetOrigin(position.GetOrigin() + ZYLMathVector(0.2, 0.1, 0.3));
        gizmo->SetPosition(position);
        steps.push_back(Time([&] { emit gizmo->PositionChanged(position); }));
    }
    std::sort(steps.begin(), steps.end());
    double sum = 0.0;
    for (double step : steps)
        sum += step;
    host.Press(QDialogButtonBox::Cancel);
    std::printf("link of %d points: insert %.1f ms, select one point %.1f ms\n", points, insert, select);
    std::printf("gizmo drag step: mean %.2f ms, median %.2f ms, max %.2f ms (target <= 30)\n", sum / steps.size(),
                steps[steps.size() / 2], steps.back());
    const ZYLBenchMemory memory = ZYLBenchReadMemory();
    std::printf("memory: resident %.0f MB, peak %.0f MB\n", memory.resident, memory.peak);
    return 0;
}
