// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The collision inspector on the demo ply, driven through the module loaded by the session:
// its rows against the model's own detection, the tolerance, picking in the view, avoidance.
#include "ZYLTPPanelTestHost.h"

#include "ZYLEditTPGraphicsMgr.h"

#include "ZYLCmnUISettings.h"
#include "ZYLFeatContainer.h"
#include "ZYLTPCourse.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPOnPartTrajectory.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"

#include <QDoubleSpinBox>
#include <QIcon>
#include <QPointer>
#include <QPushButton>
#include <QTableView>
#include <QTest>

// A colliding laying point: its course and its index there.
struct Hit { const ZYLTPCourse *course; int index; };

class tst_ZYLTPCollisionInspectorWidget : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void rowsFollowTheModelsDetection_data();
    void rowsFollowTheModelsDetection();
    void updateComputesOncePerTolerance_data();
    void updateComputesOncePerTolerance();
    void storedTolerance_data();
    void storedTolerance();
    void clickInTheViewTogglesTheNearestRow();
    void avoidanceRunsSplitByGapsAndCourses_data();
    void avoidanceRunsSplitByGapsAndCourses();
    void avoidanceIsOneUndoStep_data();
    void avoidanceIsOneUndoStep();

private:
    QList<Hit> Detect(double tolerance) const;
    void Search(double tolerance) {
        m_host.Find<QDoubleSpinBox>("doubleSpinBoxCollisionDetectionTol")->setValue(tolerance);
        m_host.Find<QPushButton>("pushButtonShowPointCollsionDetction")->click();
    }
    QTableView *Table() const { return m_host.Find<QTableView>("tableWidget"); }
    QString Cell(int row, int column) const { return Table()->model()->index(row, column).data().toString(); }
    QString Icon(int row) const {
        return Table()->model()->headerData(row, Qt::Vertical, Qt::DecorationRole).value<QIcon>().name();
    }
    static ZYLTPOnPartTrajectory::Values Tilts(const Hit &hit) {
        return hit.course->GetPoint(hit.index)->GetOnPartTrajectory()->GetValues();
    }
    // Clicks "Avoid collisions"; returns the text of the error box it raised, if any.
    QString Avoid() {
        return ZYLTPPanelTestHost::AnswerMessageBoxes(
                   [this] { m_host.Find<QPushButton>("pushButtonUpdateCollisionAvoidance")->click(); })
            .value(0);
    }

    ZYLTPPanelTestHost m_host;
};

QList<Hit> tst_ZYLTPCollisionInspectorWidget::Detect(double tolerance) const {
    ZYLEditTPGraphicsMgr *manager = m_host.GetManager();
    QList<Hit> hits;
    const auto *layup = qobject_cast<const ZYLTPRollLayupProcedure *>(m_host.GetProgram()->GetProcedure(0));
    for (int position = 0; position < layup->GetNumCourses(); ++position) {
        const ZYLTPCourse *course = layup->GetCourseByPosition(position);
        QList<ZYLEditTPGraphicsMgr::CollisionPoint> points;
        manager->GetCollisionPoints(course->GetMachineConfiguration(), points);
        const bool direction = !manager->GetLayupDirection();
        for (int i = 0; i < course->GetNumPoints(); ++i)
            if (course->GetPoint(i)->DetectCollision(manager->GetUpdatedSurface(), direction, tolerance, points))
                hits.append({course, i});
    }
    return hits;
}

void tst_ZYLTPCollisionInspectorWidget::initTestCase() {
    QVERIFY2(m_host.Start(this), qPrintable(m_host.GetError()));
}

void tst_ZYLTPCollisionInspectorWidget::init() {
    QVERIFY2(m_host.OpenDemo(), qPrintable(m_host.GetError()));
    QVERIFY(m_host.Trigger("ZYLTPCollisionInspectorCmd.View"));
    QVERIFY(m_host.GetPanel());
}

void tst_ZYLTPCollisionInspectorWidget::cleanup() {
    if (m_host.GetPanel())
        m_host.Press(QDialogButtonBox::Cancel);
}

void tst_ZYLTPCollisionInspectorWidget::rowsFollowTheModelsDetection_data() {
    QTest::addColumn<double>("tolerance");
    QTest::newRow("default") << 10.0;
    QTest::newRow("wide") << 40.0;
}

void tst_ZYLTPCollisionInspectorWidget::rowsFollowTheModelsDetection() {
    QFETCH(double, tolerance);
    Search(tolerance);
    const QList<Hit> hits = Detect(tolerance);
    QCOMPARE(Table()->model()->rowCount(), hits.size());
    for (int row = 0; row < hits.size(); ++row) {
        const ZYLTPCourse *course = hits[row].course;
        QCOMPARE(Cell(row, 0), QString::number(course->GetProcedure()->GetCoursePosition(course) + 1));
        QCOMPARE(Cell(row, 1), QString::number(hits[row].index + 1));
        QVERIFY(Cell(row, 2).endsWith(QStringLiteral("°")));
        QCOMPARE(Icon(row), QStringLiteral("remove-all"));
    }
}

void tst_ZYLTPCollisionInspectorWidget::updateComputesOncePerTolerance_data() {
    QTest::addColumn<double>("change");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("same") << 0.0 << false;
    QTest::newRow("below the step") << 0.0009 << false;
    QTest::newRow("above the step") << 0.002 << true;
}

void tst_ZYLTPCollisionInspectorWidget::updateComputesOncePerTolerance() {
    QFETCH(double, change);
    QFETCH(bool, enabled);
    auto *update = m_host.Find<QPushButton>("pushButtonShowPointCollsionDetction");
    QVERIFY(update->isEnabled());
    Search(10.0);
    QVERIFY(!update->isEnabled());
    m_host.Select(Table(), {0});
    m_host.Find<QDoubleSpinBox>("doubleSpinBoxCollisionDetectionTol")->setValue(10.0 + change);
    QCOMPARE(update->isEnabled(), enabled);
    // A click that computes nothing keeps the list and its selection.
    update->setEnabled(true);
    update->click();
    QCOMPARE(Table()->selectionModel()->selectedRows().size(), enabled ? 0 : 1);
}

void tst_ZYLTPCollisionInspectorWidget::storedTolerance_data() {
    QTest::addColumn<double>("stored");
    QTest::addColumn<double>("shown");
    QTest::newRow("kept") << 3.5 << 3.5;
    QTest::newRow("negative") << -4.0 << 10.0;
}

void tst_ZYLTPCollisionInspectorWidget::storedTolerance() {
    QFETCH(double, stored);
    QFETCH(double, shown);
    QPointer<QWidget> panel = m_host.GetPanel();
    m_host.Find<QDoubleSpinBox>("doubleSpinBoxCollisionDetectionTol")->setValue(7.0);
    QVERIFY(m_host.Press(QDialogButtonBox::Cancel));
    // The closed panel stored its value; overwrite it where the next panel will look.
    QVERIFY(panel);
    QCOMPARE(ZYLCmnUISettings::GetInstance()->GetValue(panel, "LastUsedCollisionTolSettingKey", 0.0).toDouble(), 7.0);
    ZYLCmnUISettings::GetInstance()->SetValue(panel, "LastUsedCollisionTolSettingKey", stored);
    QVERIFY(m_host.Trigger("ZYLTPCollisionInspectorCmd.View"));
    QCOMPARE(m_host.Find<QDoubleSpinBox>("doubleSpinBoxCollisionDetectionTol")->value(), shown);
}

void tst_ZYLTPCollisionInspectorWidget::clickInTheViewTogglesTheNearestRow() {
    Search(10.0);
    const QList<Hit> hits = Detect(10.0);
    QVERIFY(hits.size() > 2);
    const int row = hits.size() / 2;
    const ZYLMathPoint tip = hits[row].course->GetPoint(hits[row].index)->GetTipPoint();
    auto *avoid = m_host.Find<QPushButton>("pushButtonUpdateCollisionAvoidance");
    QVERIFY(!avoid->isEnabled());
    m_host.ClickAt(tip);
    QCOMPARE(Table()->selectionModel()->selectedRows(), QModelIndexList{Table()->model()->index(row, 0)});
    QVERIFY(avoid->isEnabled());
    m_host.ClickAt(tip);
    QVERIFY(Table()->selectionModel()->selectedRows().isEmpty());
    QVERIFY(!avoid->isEnabled());
}

void tst_ZYLTPCollisionInspectorWidget::avoidanceRunsSplitByGapsAndCourses_data() {
    QTest::addColumn<QString>("pattern");
    QTest::newRow("gap in one course") << QStringLiteral("gap");
    QTest::newRow("run across two courses") << QStringLiteral("courses");
}

void tst_ZYLTPCollisionInspectorWidget::avoidanceRunsSplitByGapsAndCourses() {
    QFETCH(QString, pattern);
    Search(10.0);
    const QList<Hit> hits = Detect(10.0);
    // Rows to select, and a row whose point must keep its tilts.
    QList<int> rows;
    int untouched = -1;
    for (int r = 0; r + 4 < hits.size() && rows.isEmpty(); ++r) {
        // Five consecutive points of one course: pick all but the middle one.
        if (pattern == QLatin1String("gap") && hits[r].course == hits[r + 4].course
            && hits[r + 4].index - hits[r].index == 4) {
            rows = {r, r + 1, r + 3, r + 4};
            untouched = r + 2;
        } else if (pattern == QLatin1String("courses") && hits[r].course != hits[r + 1].course) {
            rows = {r, r + 1};
        }
    }
    QVERIFY2(!rows.isEmpty(), "the demo has no rows of that shape");
    const auto tilts = Tilts(hits[std::max(untouched, 0)]);
    m_host.Select(Table(), rows);
    QCOMPARE(Avoid(), QString());
    for (int row : rows)
        QCOMPARE(Icon(row), QStringLiteral("status-ok"));
    if (untouched >= 0)
        QCOMPARE(Tilts(hits[untouched]), tilts);
    // The selection survives the refill and the list is stale until the tolerance changes.
    QCOMPARE(Table()->selectionModel()->selectedRows().size(), rows.size());
}

void tst_ZYLTPCollisionInspectorWidget::avoidanceIsOneUndoStep_data() {
    QTest::addColumn<bool>("accept");
    QTest::addColumn<double>("tolerance");
    QTest::addColumn<QString>("error");
    QTest::newRow("ok, then undo") << true << 10.0 << QString();
    QTest::newRow("cancel") << false << 10.0 << QString();
    QTest::newRow("points the model cannot clear") << true << 1000.0 << QStringLiteral("Avoid collision failed.");
}

void tst_ZYLTPCollisionInspectorWidget::avoidanceIsOneUndoStep() {
    QFETCH(bool, accept);
    QFETCH(double, tolerance);
    QFETCH(QString, error);
    const QByteArray before = m_host.Serialize();
    const int undoSteps = m_host.GetContainer()->GetUndoCount();
    Search(tolerance);
    m_host.Select(Table(), {0, 1, 2, 5});
    QCOMPARE(Avoid(), error);
    // A failure rolls every run back at once.
    QCOMPARE(m_host.Serialize() == before, !error.isEmpty());
    if (!error.isEmpty())
        return;
    QVERIFY(m_host.Press(accept ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel));
    QCOMPARE(m_host.GetContainer()->GetUndoCount(), undoSteps + (accept ? 1 : 0));
    if (accept)
        m_host.GetContainer()->Undo();
    QCOMPARE(m_host.Serialize(), before);
}

QTEST_MAIN(tst_ZYLTPCollisionInspectorWidget)
#include "tst_ZYLTPCollisionInspectorWidget.moc"
