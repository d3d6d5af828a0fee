// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The laying points panel as a user drives it: pick a course in the 3-D view, select points
// in the list or by clicks, edit tilts and tow feed, then OK, Cancel or Undo.
#include "ZYLTPPanelTestHost.h"

#include "ZYLEditTPGraphicsMgr.h"

#include "ZYLTPCourse.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPOnPartTrajectory.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPTowTrajectory.h"

#include "ZYLCmdDialogCommand.h"
#include "ZYLFeatContainer.h"
#include "ZYLMathVector.h"

#include <QApplication>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QPaintEngine>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

namespace {

// A paint device that records what a graph draws: texts, rectangles and ellipses.
class Recording : public QPaintDevice, public QPaintEngine {
public:
    Recording(QSize size) : QPaintEngine(AllFeatures), m_size(size) {}
    QStringList texts;
    int rects = 0;
    int ellipses = 0;

    QPaintEngine *paintEngine() const override { return const_cast<Recording *>(this); }
    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState &) override {}
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override {}
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override {}
    void drawTextItem(const QPointF &, const QTextItem &item) override { texts << item.text(); }
    void drawRects(const QRect *, int count) override { rects += count; }
    void drawRects(const QRectF *, int count) override { rects += count; }
    void drawEllipse(const QRectF &) override { ++ellipses; }
    Type type() const override { return User; }

protected:
    int metric(PaintDeviceMetric metric) const override {
        switch (metric) {
        case PdmWidth: return m_size.width();
        case PdmHeight: return m_size.height();
        case PdmDepth: return 32;
        case PdmDpiX: case PdmDpiY: case PdmPhysicalDpiX: case PdmPhysicalDpiY: return 96;
        default: return 1;
        }
    }

private:
    QSize m_size;
};

} // namespace

class tst_ZYLTPEditLayingPoints : public QObject {
    Q_OBJECT

    ZYLTPPanelTestHost m_host;
    const ZYLTPRollLayupProcedure *m_layup = nullptr;
    const ZYLTPCourse *m_course = nullptr;

    QTableWidget *Points() const { return m_host.Find<QTableWidget>("listWidget"); }
    QTableWidget *Tows() const { return m_host.Find<QTableWidget>("tableWidgetTows"); }

    static void Finish(QDoubleSpinBox *box, double value) {
        box->setValue(value);
        QMetaObject::invokeMethod(box, "editingFinished");
    }
    int Middle() const { return m_course->GetNumPoints() / 2; }
    const ZYLTPOnPartTrajectory *Trajectory(int point) const { return m_course->GetTrajectoryOfPoint(point); }

    QGraphicsView *Graph(bool forward) const { return m_host.Find<QGraphicsView>(forward ? "forwardTiltView" : "sideTiltView"); }
    // Opens the panel with its graph pane laid out.
    bool OpenGraphs() {
        if (!Open())
            return false;
        m_host.Find<QPushButton>("Button_Graph")->setChecked(true);
        QTest::qWait(20);
        return true;
    }
    double Length(int i) const { return m_course->ComputePointLength(m_course->GetPoint(i)); }
    // Returns the view position halfway between point i and the one before (beyond the first
    // or last point with `beyond`).
    QPoint AtPoint(QGraphicsView *view, int i, double beyond = 0.0) const {
        const double x = beyond != 0.0 ? Length(i) + beyond : 0.5 * (Length(i) + Length(std::max(i - 1, 0)));
        return view->mapFromScene(QPointF(x, 0.0)) + QPoint(0, -10);
    }
    // Sends a move straight to the view: a test cursor may not move where it already is.
    static void Move(QGraphicsView *view, const QPoint &position) {
        QMouseEvent move(QEvent::MouseMove, position, view->viewport()->mapToGlobal(position), Qt::NoButton,
                         QApplication::mouseButtons(), {});
        QApplication::sendEvent(view->viewport(), &move);
    }
    std::unique_ptr<Recording> Draw(QGraphicsView *view) const {
        // Drawn afresh, not from the items' cached pixmaps.
        for (QGraphicsItem *item : view->scene()->items())
            item->setCacheMode(QGraphicsItem::NoCache);
        auto recording = std::make_unique<Recording>(view->viewport()->size());
        QPainter painter(recording.get());
        view->render(&painter);
        return recording;
    }

    // Starts the command and picks `m_course` in the 3-D view; true once its points are listed.
    bool Open() {
        if (!m_host.Trigger("ZYLTPEditCourseLayingPointsCmd.Edit"))
            return false;
        m_host.ClickAt(m_course->GetPoint(m_course->GetNumPoints() / 2)->GetTipPoint());
        return QTest::qWaitFor([this] { return m_host.GetButton(QDialogButtonBox::Ok) != nullptr; }, 2000) &&
               Points()->rowCount() == m_course->GetNumPoints();
    }

private slots:
    void initTestCase() {
        QVERIFY2(m_host.Start() && m_host.OpenDemo(), qPrintable(m_host.GetError()));
        for (int i = 0; !m_course && i < m_host.GetProgram()->GetNumProcedures(); ++i)
            if ((m_layup = qobject_cast<const ZYLTPRollLayupProcedure *>(m_host.GetProgram()->GetProcedure(i))))
                m_course = m_layup->GetCourseByIndex(m_layup->GetNumCourses() / 2);
        QVERIFY(m_course && m_course->GetNumPoints() > 12);
    }

    void cleanup() {
        m_host.Press(QDialogButtonBox::Cancel);
        m_host.GetManager()->SetFeedTowsIndividually(true);
        m_host.GetManager()->SetFeedTowsAtSeparateRates(false);
        m_course = m_layup->GetCourseByIndex(m_layup->GetNumCourses() / 2);
    }

    void pickAwayFromCoursesKeepsPanelHidden() {
        QVERIFY(m_host.Trigger("ZYLTPEditCourseLayingPointsCmd.Edit"));
        m_host.ClickAt(ZYLMathPoint(-5000.0, -5000.0, 0.0));
        QTest::qWait(20);
        QVERIFY(!m_host.GetButton(QDialogButtonBox::Ok));
        m_host.ClickAt(m_course->GetPoint(3)->GetTipPoint());
        QTRY_VERIFY(m_host.GetButton(QDialogButtonBox::Ok));
        QCOMPARE(Points()->item(m_course->GetNumPoints() - 1, 0)->text(),
                 QStringLiteral("Point.%1").arg(m_course->GetNumPoints()));
    }

    void clicksToggleNearestPoint() {
        QVERIFY(Open());
        const ZYLMathPoint tip = m_course->GetPoint(6)->GetTipPoint();
        for (const QList<int> &expected : {QList<int>{}, QList<int>{6}, QList<int>{}}) {
            m_host.ClickAt(tip + ZYLMathVector(0.3, 0.0, 0.0));
            QCOMPARE(m_host.SelectedRows(Points()), expected);
        }
    }

    void tiltOverSelectedRanges_data() {
        QTest::addColumn<QList<int>>("rows");
        QTest::addColumn<QList<int>>("changed");
        QTest::newRow("rows 3-5 and 8") << QList<int>{2, 3, 4, 7} << QList<int>{2, 3, 4, 7};
        QTest::newRow("run to the end") << QList<int>{-3, -2, -1} << QList<int>{-3, -2};
        QTest::newRow("last row alone") << QList<int>{-1} << QList<int>{};
    }
    void tiltOverSelectedRanges() {
        QFETCH(QList<int>, rows);
        QFETCH(QList<int>, changed);
        QVERIFY(Open());
        const int n = m_course->GetNumPoints();
        auto wrap = [n](QList<int> list) {
            for (int &row : list)
                row = row < 0 ? n + row : row;
            return list;
        };
        rows = wrap(rows);
        changed = wrap(changed);
        m_host.Select(Points(), rows);
        const double side = Trajectory(rows.first())->GetSideTilt();
        m_host.Find<QCheckBox>("checkBoxForwardTilt")->setChecked(true);
        Finish(m_host.Find<QDoubleSpinBox>("doubleSpinBoxForwardTilt"), 0.25);
        for (int point = 0; point < n; ++point) {
            QCOMPARE(Trajectory(point)->GetForwardTilt() == 0.25, changed.contains(point));
            if (changed.contains(point))
                QCOMPARE(Trajectory(point)->GetSideTilt(), side);
        }
        QCOMPARE(m_host.SelectedRows(Points()), rows);
        if (!changed.isEmpty())
            QVERIFY(Points()->item(changed.first(), 1)->text().startsWith(QStringLiteral("14.32")));
    }

    void tiltBeyondTheLimitCannotBeEntered() {
        QVERIFY(Open());
        m_host.Select(Points(), {2});
        auto *box = m_host.Find<QDoubleSpinBox>("doubleSpinBoxForwardTilt");
        m_host.Find<QCheckBox>("checkBoxForwardTilt")->setChecked(true);
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("100")); // degrees, beyond 1.55 rad
        // Were the value taken, the model's refusal would be shown.
        QCOMPARE(ZYLTPPanelTestHost::AnswerMessageBoxes([box] { QTest::keyClick(box, Qt::Key_Return); }),
                 QStringList());
        QVERIFY(box->value() <= 1.55);
        QVERIFY(qAbs(Trajectory(2)->GetForwardTilt()) <= 1.55);
    }

    void towSelectionButtons_data() {
        QTest::addColumn<QStringList>("buttons");
        QTest::addColumn<QList<int>>("rows");
        QTest::newRow("odd") << QStringList{"pushButtonSelectOddTows"} << QList<int>{0, 2, 4, 6};
        QTest::newRow("even") << QStringList{"pushButtonSelectEvenTows"} << QList<int>{1, 3, 5, 7};
        QTest::newRow("odd inverted") << QStringList{"pushButtonSelectOddTows", "pushButtonSelectInvertTows"}
                                      << QList<int>{1, 3, 5, 7};
        QTest::newRow("all then none") << QStringList{"pushButtonSelectAllTows", "pushButtonSelectNoneTows"}
                                       << QList<int>{};
        QTest::newRow("feed off") << QStringList{"pushButtonSelectFeedOffTows"} << QList<int>{0, 1, 2, 3, 4, 5, 6, 7};
        QTest::newRow("feed on") << QStringList{"pushButtonSelectFeedOnTows"} << QList<int>{};
    }
    void towSelectionButtons() {
        QFETCH(QStringList, buttons);
        QFETCH(QList<int>, rows);
        QVERIFY(Open());
        m_host.Select(Points(), {Middle()});
        QCOMPARE(Tows()->rowCount(), 8);
        QCOMPARE(Tows()->item(7, 0)->text(), QStringLiteral("8"));
        for (const QString &button : buttons)
            m_host.Find<QPushButton>(qPrintable(button))->click();
        QCOMPARE(m_host.SelectedRows(Tows()), rows);
    }

    void feedOnAndRatio_data() {
        QTest::addColumn<bool>("individually");
        QTest::addColumn<bool>("separateRates");
        QTest::addColumn<QList<int>>("forced");
        QTest::addColumn<QList<int>>("slowed");
        const QList<int> all{0, 1, 2, 3, 4, 5, 6, 7};
        QTest::newRow("feed by tow") << true << false << QList<int>{2} << all;
        QTest::newRow("feed and rate by tow") << true << true << QList<int>{2} << QList<int>{2};
        QTest::newRow("all tows together") << false << true << all << all;
    }
    void feedOnAndRatio() {
        QFETCH(bool, individually);
        QFETCH(bool, separateRates);
        QFETCH(QList<int>, forced);
        QFETCH(QList<int>, slowed);
        m_host.GetManager()->SetFeedTowsIndividually(individually);
        m_host.GetManager()->SetFeedTowsAtSeparateRates(separateRates);
        QVERIFY(Open());
        const int m = Middle();
        m_host.Select(Points(), {m - 1, m, m + 1});
        m_host.Select(Tows(), {2});
        m_host.Find<QCheckBox>("checkBoxTowForceFeed")->setChecked(true);
        Finish(m_host.Find<QDoubleSpinBox>("doubleSpinBoxTowForceFeedRate"), 75.0);
        const auto *tows = qobject_cast<const ZYLTPTowTrajectory *>(Trajectory(m));
        QVERIFY(tows);
        for (int tow = 0; tow < 8; ++tow) {
            QCOMPARE(tows->GetForcedMask().IsEnabled(tow), forced.contains(tow));
            QCOMPARE(tows->GetForcedRates().at(tow), slowed.contains(tow) ? 0.75 : 1.0);
        }
        QVERIFY(!qobject_cast<const ZYLTPTowTrajectory *>(Trajectory(m + 3))->GetForcedMask().IsEnabled(2));
        QCOMPARE(Tows()->item(2, 1)->text(), QStringLiteral("ON"));
        QCOMPARE(m_host.SelectedRows(Tows()), QList<int>{2});
    }

    void cancelAndUndoRestoreTheFile_data() {
        QTest::addColumn<bool>("accept");
        QTest::newRow("cancel") << false;
        QTest::newRow("ok then undo") << true;
    }
    void cancelAndUndoRestoreTheFile() {
        QFETCH(bool, accept);
        const QByteArray before = m_host.Serialize();
        QVERIFY(Open());
        m_host.Select(Points(), {3, 4, 9});
        m_host.Find<QCheckBox>("checkBoxSideTilt")->setChecked(true);
        Finish(m_host.Find<QDoubleSpinBox>("doubleSpinBoxSideTilt"), -0.3);
        m_host.Select(Tows(), {0});
        m_host.Find<QCheckBox>("checkBoxTowForceFeed")->setChecked(true);
        QVERIFY(m_host.Serialize() != before);
        QVERIFY(m_host.Press(accept ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel));
        if (accept) {
            QVERIFY(m_host.Serialize() != before);
            m_host.GetContainer()->Undo();
        }
        QCOMPARE(m_host.Serialize(), before);
    }
    void tickLabelsFollowTheYScale_data() {
        QTest::addColumn<int>("yScale");
        QTest::addColumn<int>("step");
        for (const auto &[scale, step] : {std::pair{1, 20}, {2, 10}, {3, 5}, {4, 5}, {5, 3}})
            QTest::addRow("y scale %d", scale) << scale << step;
    }
    void tickLabelsFollowTheYScale() {
        QFETCH(int, yScale);
        QFETCH(int, step);
        QVERIFY(OpenGraphs());
        m_host.Find<QSpinBox>("spinBoxYScale")->setValue(yScale);
        QStringList expected;
        for (int k = 1; k <= 3; ++k)
            expected << QStringLiteral("%1°").arg(k * step) << QStringLiteral("-%1°").arg(k * step);
        QStringList labels = Draw(Graph(true))->texts.filter(QStringLiteral("°"));
        labels.sort();
        expected.sort();
        QCOMPARE(labels, expected);
    }

    void dragSelectsRowsOnce() {
        QVERIFY(OpenGraphs());
        QGraphicsView *view = Graph(false);
        Move(view, AtPoint(view, 7));
        QTest::mousePress(view->viewport(), Qt::LeftButton, {}, AtPoint(view, 7));
        Move(view, AtPoint(view, 3));
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, AtPoint(view, 3));
        QCOMPARE(m_host.SelectedRows(Points()), (QList<int>{3, 4, 5, 6, 7}));
        // A value typed but not entered yet survives only if the repeat changes nothing.
        m_host.Find<QDoubleSpinBox>("doubleSpinBoxForwardTilt")->setValue(0.3);
        QTest::mousePress(view->viewport(), Qt::LeftButton, {}, AtPoint(view, 3));
        Move(view, AtPoint(view, 7));
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, AtPoint(view, 7));
        QCOMPARE(m_host.SelectedRows(Points()), (QList<int>{3, 4, 5, 6, 7}));
        QCOMPARE(m_host.Find<QDoubleSpinBox>("doubleSpinBoxForwardTilt")->value(), 0.3);
    }

    void doubleClickBeyondTheEndsSetsTheHead_data() {
        QTest::addColumn<bool>("right");
        QTest::newRow("left of the first point") << false;
        QTest::newRow("right of the last point") << true;
    }
    void doubleClickBeyondTheEndsSetsTheHead() {
        QFETCH(bool, right);
        QVERIFY(OpenGraphs());
        QGraphicsView *view = Graph(true);
        const int n = m_course->GetNumPoints();
        m_host.Find<QSpinBox>("doubleSpinBoxHeadPosition")->setValue(5);
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, AtPoint(view, right ? n - 1 : 0, right ? 5.0 : -5.0));
        QCOMPARE(m_host.Find<QSpinBox>("doubleSpinBoxHeadPosition")->value(), right ? n : 1);
    }

    void rangeBands_data() {
        QTest::addColumn<QList<int>>("rows");
        QTest::addColumn<int>("bands");
        QTest::newRow("three points") << QList<int>{3, 4, 5} << 1;
        QTest::newRow("one point") << QList<int>{3} << 0;
        QTest::newRow("two ranges") << QList<int>{2, 3, 8, 9} << 2;
    }
    void rangeBands() {
        QFETCH(QList<int>, rows);
        QFETCH(int, bands);
        QVERIFY(OpenGraphs());
        QGraphicsView *view = Graph(true);
        Move(view, AtPoint(view, 1));
        const int before = Draw(view)->rects;
        m_host.Select(Points(), rows);
        QCOMPARE(Draw(view)->rects - before, bands);
    }

    void zoomAndHeadCentring() {
        QVERIFY(OpenGraphs());
        const int n = m_course->GetNumPoints();
        QGraphicsView *view = Graph(true);
        const QRectF all = view->sceneRect();
        m_host.Find<QPushButton>("pushButtonZoomIn")->click();
        m_host.Find<QPushButton>("pushButtonZoomOut")->click();
        QCOMPARE(view->sceneRect().center(), all.center());
        QVERIFY(qAbs(view->sceneRect().width() - 0.99 * all.width()) < 1e-9 * all.width());
        m_host.Find<QCheckBox>("checkBoxCenterOnHeadPosition")->setChecked(true);
        m_host.Find<QSpinBox>("doubleSpinBoxHeadPosition")->setValue(n);
        const double last = Length(n - 1);
        for (bool forward : {true, false})
            QVERIFY(qAbs(Graph(forward)->sceneRect().center().x() - last) < 1e-6);
        QVERIFY(!m_host.Find<QPushButton>("pushButtonShiftLeft")->isEnabled());
    }

    void collisionCorrection_data() {
        QTest::addColumn<double>("distance");
        QTest::addColumn<bool>("corrected");
        QTest::newRow("clears") << 10.0 << true;
        QTest::newRow("cannot clear") << 2000.0 << false;
    }
    void collisionCorrection() {
        QFETCH(double, distance);
        QFETCH(bool, corrected);
        m_course = m_layup->GetCourseByIndex(3);
        const QByteArray before = m_host.Serialize();
        QVERIFY(OpenGraphs());
        const int c = m_course->GetNumPoints() / 2;
        QCOMPARE(Trajectory(c)->GetSideTilt(), 0.45);
        m_host.Find<QCheckBox>("checkBoxShowPointCollsionDetction")->setChecked(true);
        QVERIFY(Draw(Graph(true))->ellipses >= 3);
        m_host.Select(Points(), {c, c + 2});
        Finish(m_host.Find<QDoubleSpinBox>("doubleSpinBoxCollisionAvoidance"), distance);
        const QStringList messages = ZYLTPPanelTestHost::AnswerMessageBoxes(
            [this] { m_host.Find<QPushButton>("pushButtonUpdateCollisionAvoidance")->click(); });
        QCOMPARE(messages, corrected ? QStringList() : QStringList{"Update collision failed."});
        for (int point : {c, c + 2})
            QCOMPARE(Trajectory(point)->GetSideTilt() != 0.45, corrected);
        QCOMPARE(Trajectory(c + 1)->GetSideTilt(), 0.45);
        QVERIFY(m_host.Press(QDialogButtonBox::Ok));
        if (corrected)
            m_host.GetContainer()->Undo();
        QCOMPARE(m_host.Serialize(), before);
    }
};

QTEST_MAIN(tst_ZYLTPEditLayingPoints)
#include "tst_ZYLTPEditLayingPoints.moc"
