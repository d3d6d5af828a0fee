// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The laying points panel on one course of 20,000 laying points in a demo program of 50 such
// courses (1M points): the fill after the pick, a mouse move (pick and preview), a click and a
// list selection change (point graphics rebuilt), and tilt and tow feed edits over 10 ranges
// (list reloaded); then both tilt graphs drawn whole, a hover move, the collision check and a
// head move. Headless:
//   bench_layingpoints [courses points-per-course]
#include "ZYLBenchSupport.h"

#include "ZYLTPPanelTestHost.h"

#include "ZYLTPCourse.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"

#include "ZYLMathVector.h"

#include <QApplication>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>

#include <cstdio>

namespace {

double Milliseconds(const QElapsedTimer &timer) {
    return timer.nsecsElapsed() / 1e6;
}

void Report(const char *what, double ms, double limit) {
    std::printf("%-52s %9.2f ms  (limit %.0f ms) %s\n", what, ms, limit, ms <= limit ? "ok" : "OVER");
}

template<class T>
T *Control(ZYLTPPanelTestHost &host, const char *name) {
    return host.GetPanel()->findChild<T *>(QLatin1String(name));
}

// Selects ten runs of five rows spread over the list, away from the course ends where tows
// are still being added.
void SelectTenRanges(QTableWidget *table) {
    QItemSelection selection;
    const int step = table->rowCount() / 10;
    for (int k = 0; k < 10; ++k)
        selection.select(table->model()->index(k * step + step / 2, 0), table->model()->index(k * step + step / 2 + 4, 2));
    table->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

} // namespace

int main(int argc, char **argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // 50 courses of 20,000 points: a long course in a million-point program.
    const ZYLTPDemoGenerator::Parameters parameters = ZYLBenchDemoParameters(argc, argv, 50, 20000);
    ZYLTPPanelTestHost host;
    if (!host.Start() || !host.Open(*ZYLTPDemoGenerator::Create(parameters))) {
        std::printf("cannot start: %s\n", qPrintable(host.GetError()));
        return 1;
    }
    const auto *layup = qobject_cast<const ZYLTPRollLayupProcedure *>(host.GetProgram()->GetProcedure(0));
    for (int i = 1; !layup && i < host.GetProgram()->GetNumProcedures(); ++i)
        layup = qobject_cast<const ZYLTPRollLayupProcedure *>(host.GetProgram()->GetProcedure(i));
    const ZYLTPCourse *course = layup->GetCourseByIndex(layup->GetNumCourses() / 2);
    const int n = course->GetNumPoints();
    std::printf("program: %d courses x %d points; course picked: %d laying points\n", parameters.courses,
                parameters.pointsPerCourse, n);

    host.Trigger("ZYLTPEditCourseLayingPointsCmd.Edit");
    QElapsedTimer timer;
    timer.start();
    host.ClickAt(course->GetPoint(n / 2)->GetTipPoint());
    QTableWidget *table = nullptr;
    while (!(table = host.GetPanel()->findChild<QTableWidget *>(QStringLiteral("listWidget"))) || table->rowCount() != n)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    Report("panel filled after the pick", Milliseconds(timer), 500);

    const int moves = 200;
    timer.restart();
    for (int i = 0; i < moves; ++i)
        host.MoveTo(course->GetPoint((i * 97) % n)->GetTipPoint() + ZYLMathVector(0.2, 0.0, 0.0));
    Report("mouse move (pick and preview), mean", Milliseconds(timer) / moves, 10);

    host.ClickAt(course->GetPoint(0)->GetTipPoint()); // the panel's first click is only recorded
    const int clicks = 20;
    timer.restart();
    for (int i = 0; i < clicks; ++i)
        host.ClickAt(course->GetPoint(100 + i * 500)->GetTipPoint());
    Report("click in the 3-D view, mean", Milliseconds(timer) / clicks, 50);

    timer.restart();
    for (int i = 0; i < clicks; ++i)
        table->selectRow(200 + i * 700);
    Report("list selection change, mean", Milliseconds(timer) / clicks, 50);

    SelectTenRanges(table);
    auto *forward = Control<QDoubleSpinBox>(host, "doubleSpinBoxForwardTilt");
    Control<QCheckBox>(host, "checkBoxForwardTilt")->setChecked(true);
    forward->setValue(0.2);
    timer.restart();
    QMetaObject::invokeMethod(forward, "editingFinished");
    Report("tilt edit over 10 ranges, list reloaded", Milliseconds(timer), 300);

    auto *tows = Control<QTableWidget>(host, "tableWidgetTows");
    tows->selectRow(0);
    timer.restart();
    Control<QCheckBox>(host, "checkBoxTowForceFeed")->setChecked(true);
    Report("tow feed edit over 10 ranges, list reloaded", Milliseconds(timer), 300);

    // The graph pane: both graphs drawn whole, a hover move with its repaint, the collision
    // check over the course and a move of the head.
    Control<QPushButton>(host, "Button_Graph")->setChecked(true);
    QCoreApplication::processEvents();
    QList<QGraphicsView *> views{Control<QGraphicsView>(host, "forwardTiltView"), Control<QGraphicsView>(host, "sideTiltView")};
    const int repaints = 10;
    // Drawn from scratch: the item cache the panel keeps for the curves is off here.
    QList<std::pair<QGraphicsItem *, QGraphicsItem::CacheMode>> cached;
    for (QGraphicsView *view : views)
        for (QGraphicsItem *item : view->scene()->items())
            cached.append({item, item->cacheMode()});
    for (const auto &[item, mode] : cached)
        item->setCacheMode(QGraphicsItem::NoCache);
    timer.restart();
    for (int i = 0; i < repaints; ++i) {
        for (QGraphicsView *view : views) {
            QImage image(view->viewport()->size(), QImage::Format_ARGB32_Premultiplied);
            QPainter painter(&image);
            view->render(&painter);
        }
    }
    Report("full repaint of both graphs, mean", Milliseconds(timer) / repaints, 30);

    for (const auto &[item, mode] : cached)
        item->setCacheMode(mode);
    QWidget *viewport = views.first()->viewport();
    timer.restart();
    for (int i = 0; i < repaints; ++i) {
        const QPoint position(10 + i * viewport->width() / repaints, viewport->height() / 3);
        QMouseEvent move(QEvent::MouseMove, position, viewport->mapToGlobal(position), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(viewport, &move);
        for (QGraphicsView *view : views)
            view->viewport()->repaint();
    }
    Report("hover move over the graphs, repaint included, mean", Milliseconds(timer) / repaints, 10);

    timer.restart();
    Control<QCheckBox>(host, "checkBoxShowPointCollsionDetction")->setChecked(true);
    Report("collision check over the course", Milliseconds(timer), 100);

    auto *head = Control<QSpinBox>(host, "doubleSpinBoxHeadPosition");
    Control<QCheckBox>(host, "checkBoxShowHead")->setChecked(true);
    timer.restart();
    for (int i = 0; i < repaints; ++i)
        head->setValue(1 + (i * 1999) % n);
    Report("head position change, mean", Milliseconds(timer) / repaints, 20);

    host.Press(QDialogButtonBox::Cancel);
    const ZYLBenchMemory memory = ZYLBenchReadMemory();
    std::printf("resident %.0f MB, peak %.0f MB\n", memory.resident, memory.peak);
    return 0;
}
