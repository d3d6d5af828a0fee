// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The linking points panel on the demo ply: picking a link, the point list, offsets, the
// gizmo, insert, delete and interpolate, with Cancel and Undo.
#include "ZYLTPLinkPanelTest.h"

#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPOffPartPoint.h"

#include "ZYLFeatContainer.h"
#include "ZYLMathVector.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisGizmo.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QListView>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

namespace {
bool Near(const ZYLMathPoint &a, const ZYLMathPoint &b) {
    return (a - b).GetLength() < 1e-6;
}
} // namespace

class tst_ZYLTPEditLinkingPoints : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void pickConvertsAndLists_data();
    void pickConvertsAndLists();
    void offsetsMovePoints_data();
    void offsetsMovePoints();
    void gizmoMovesAndTurnsPoint();
    void insertAfterOnTwoPoints();
    void interpolatesInLinkOrder();
    void deleteAllLeavesTheEnds();

private:
    template<class T> T *Find(const char *name) const {
        return m_host->GetPanel()->findChild<T *>(QLatin1String(name));
    }
    QListView *List() const { return Find<QListView>("listView_Sel"); }
    const ZYLTPOffPartPoint *RowPoint(int row) const {
        return List()->model()->index(row, 0).data(Qt::UserRole).value<const ZYLTPOffPartPoint *>();
    }
    void Select(const QList<int> &rows) {
        List()->clearSelection();
        for (int row : rows)
            List()->selectionModel()->select(List()->model()->index(row, 0), QItemSelectionModel::Select);
    }
    // Picks `link` in the 3-D view and returns the link the panel edits.
    const ZYLTPCustomCourseLink *Pick(const ZYLTPCourseLink *link);
    const ZYLTPCourseLink *FirstOf(bool custom) const {
        return CourseLinks(*m_host, [custom](ZYLTPCourseLink *link) {
                   return (qobject_cast<ZYLTPCustomCourseLink *>(link) != nullptr) == custom;
               }).first().second;
    }

    std::unique_ptr<ZYLTPPanelTestHost> m_host;
    QByteArray m_saved;
};

const ZYLTPCustomCourseLink *tst_ZYLTPEditLinkingPoints::Pick(const ZYLTPCourseLink *link) {
    const ZYLTPCourse *from = link->GetFromCourse();
    m_host->ClickAt(link->GetPoint(link->GetNumPoints() / 2)->GetTipPoint(), 0.5);
    // The panel shows once the pick has been handed over.
    if (!QTest::qWaitFor([this] { return m_host->GetButton(QDialogButtonBox::Ok) != nullptr; }))
        return nullptr;
    const auto links = CourseLinks(*m_host, [from](ZYLTPCourseLink *l) { return l->GetFromCourse() == from; });
    return links.isEmpty() ? nullptr : qobject_cast<const ZYLTPCustomCourseLink *>(links.first().second);
}

void tst_ZYLTPEditLinkingPoints::initTestCase() {
    m_host = std::make_unique<ZYLTPPanelTestHost>();
    QVERIFY2(m_host->Start(this), qPrintable(m_host->GetError()));
}

void tst_ZYLTPEditLinkingPoints::init() {
    QVERIFY2(m_host->OpenDemo(), qPrintable(m_host->GetError()));
    m_saved = m_host->Serialize();
    QVERIFY(m_host->Trigger("ZYLTPEditLinkingPointsCmd.Edit"));
    // Nothing shows until a link is picked.
    QVERIFY(!m_host->GetButton(QDialogButtonBox::Ok));
}

void tst_ZYLTPEditLinkingPoints::cleanup() {
    m_host->Press(QDialogButtonBox::Cancel);
    QCOMPARE(m_host->Serialize(), m_saved);
}

void tst_ZYLTPEditLinkingPoints::pickConvertsAndLists_data() {
    QTest::addColumn<bool>("custom");
    QTest::newRow("straight link") << false;
    QTest::newRow("custom link") << true;
}

void tst_ZYLTPEditLinkingPoints::pickConvertsAndLists() {
    QFETCH(bool, custom);
    const ZYLTPCourseLink *picked = FirstOf(custom);
    const QList<const ZYLTPOffPartPoint *> before = [picked] {
        QList<const ZYLTPOffPartPoint *> points;
        for (int i = 0; i < picked->GetNumPoints(); ++i)
            points.append(picked->GetPoint(i));
        return points;
    }();
    const ZYLTPCustomCourseLink *edited = Pick(picked);
    QVERIFY(edited);
    QCOMPARE(edited == picked, custom);
    QCOMPARE(edited->GetNumPoints(), before.size());
    QCOMPARE(List()->model()->rowCount(), before.size() - 2);
    for (int row = 0; row < before.size() - 2; ++row) {
        QCOMPARE(List()->model()->index(row, 0).data().toString(), QStringLiteral("Point.%1").arg(row + 1));
        QCOMPARE(RowPoint(row), edited->GetPoint(row + 1));
        QVERIFY(Near(RowPoint(row)->GetTipPoint(), before[row + 1]->GetTipPoint()));
    }
}

void tst_ZYLTPEditLinkingPoints::offsetsMovePoints_data() {
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<bool>("relative");
    QTest::addColumn<double>("x");
    QTest::addColumn<bool>("moves");
    QTest::newRow("one point, relative") << QList<int>{1} << true << 5.0 << true;
    QTest::newRow("one point, absolute") << QList<int>{1} << false << 300.0 << true;
    QTest::newRow("two points, relative") << QList<int>{0, 2} << true << -7.5 << true;
    QTest::newRow("two points, absolute refused") << QList<int>{0, 2} << false << 300.0 << false;
}

void tst_ZYLTPEditLinkingPoints::offsetsMovePoints() {
    QFETCH(QList<int>, rows);
    QFETCH(bool, relative);
    QFETCH(double, x);
    QFETCH(bool, moves);
    QVERIFY(Pick(FirstOf(false)));
    Select(rows);
    auto *relativeBox = Find<QCheckBox>("checkBox_Relative");
    auto *xBox = Find<QDoubleSpinBox>("doubleSpinBox_Xoffset");
    // Several points: relative only, and the box says so.
    QCOMPARE(relativeBox->isEnabled(), rows.size() == 1);
    QVERIFY(relativeBox->isChecked());
    QCOMPARE(xBox->value(), 0.0);
    QList<ZYLMathPoint> tips;
    for (int row : rows)
        tips.append(RowPoint(row)->GetTipPoint());
    if (!relative) {
        relativeBox->setChecked(false);
        if (rows.size() == 1)
            QCOMPARE(xBox->value(), tips.first().X());
    }
    xBox->setValue(x);
    for (int i = 0; i < rows.size(); ++i) {
        ZYLMathPoint expected = tips[i];
        if (moves)
            expected.SetX(relative ? tips[i].X() + x : x);
        QVERIFY(Near(RowPoint(rows[i])->GetTipPoint(), expected));
    }
}

void tst_ZYLTPEditLinkingPoints::gizmoMovesAndTurnsPoint() {
    const ZYLTPCustomCourseLink *link = Pick(FirstOf(true));
    QVERIFY(link);
    // Picking a point's marker selects its row and puts the gizmo there.
    const ZYLTPOffPartPoint *point = RowPoint(2);
    m_host->ClickAt(point->GetTipPoint(), 0.5);
    QCOMPARE(List()->selectionModel()->selectedRows().size(), 1);
    QCOMPARE(List()->selectionModel()->selectedRows().first().row(), 2);
    QCOMPARE(m_host->GetScene()->GetGizmos().size(), 1);
    ZYLVisGizmo *gizmo = m_host->GetScene()->GetGizmos().first();
    QVERIFY(gizmo->IsShown());
    QVERIFY(Near(gizmo->GetPosition().GetOrigin(), point->GetTipPoint()));

    const ZYLMathPoint target = point->GetTipPoint() + ZYLMathVector(10.0, -4.0, 25.0);
    const ZYLMathAxis turned(target, ZYLMathVector(0.0, 1.0, 0.0), ZYLMathVector(0.0, 0.0, 1.0));
    emit gizmo->PositionChanged(turned);
    const ZYLMathAxis now = link->GetPoint(3)->GetAxis();
    QVERIFY(Near(now.GetOrigin(), target));
    for (int axis = 0; axis < 3; ++axis)
        QVERIFY((now.GetDirection(axis) - turned.GetDirection(axis)).GetLength() < 1e-9);
    // Relative offsets show the displacement from the point as it was.
    QCOMPARE(Find<QDoubleSpinBox>("doubleSpinBox_Zoffset")->value(), 25.0);
    QVERIFY(m_host->Press(QDialogButtonBox::Ok));
    m_host->GetContainer()->Undo();
    QCOMPARE(m_host->Serialize(), m_saved);
}

void tst_ZYLTPEditLinkingPoints::insertAfterOnTwoPoints() {
    const ZYLTPCustomCourseLink *link = Pick(FirstOf(false));
    QVERIFY(link);
    const int points = link->GetNumPoints();
    const ZYLMathPoint first = RowPoint(0)->GetTipPoint();
    const ZYLMathPoint second = RowPoint(1)->GetTipPoint();
    Select({0, 2});
    Find<QSpinBox>("spinBox_NumOfPts")->setValue(3);
    Find<QPushButton>("pushButton_InsertAfter")->click();
    QCOMPARE(link->GetNumPoints(), points + 6);
    QCOMPARE(List()->model()->rowCount(), points + 4);
    QVERIFY(List()->selectionModel()->selectedRows().isEmpty());
    // Three points evenly between the first interior point and its old successor.
    for (int k = 1; k <= 3; ++k)
        QVERIFY(Near(RowPoint(k)->GetTipPoint(), first + (second - first) * (k / 4.0)));
}

void tst_ZYLTPEditLinkingPoints::interpolatesInLinkOrder() {
    const ZYLTPCustomCourseLink *link = Pick(FirstOf(true));
    QVERIFY(link);
    QCOMPARE(List()->model()->rowCount(), 5);
    // Picked last to first: each pair is taken in the link's order.
    Select({4, 0, 2});
    QString error;
    CloseNextMessageBox(&error);
    Find<QPushButton>("pushButton_Interpolate")->click();
    QCOMPARE(error, QString());
    const ZYLMathPoint a = RowPoint(0)->GetTipPoint();
    const ZYLMathPoint b = RowPoint(4)->GetTipPoint();
    for (int row = 1; row < 4; ++row)
        QVERIFY(Near(RowPoint(row)->GetTipPoint(), a + (b - a) * (row / 4.0)));
}

void tst_ZYLTPEditLinkingPoints::deleteAllLeavesTheEnds() {
    const ZYLTPCustomCourseLink *link = Pick(FirstOf(false));
    QVERIFY(link);
    Select({1});
    Find<QPushButton>("pushButton_SelAll")->click();
    Find<QPushButton>("pushButton_Delete")->click();
    QCOMPARE(link->GetNumPoints(), 2);
    QCOMPARE(List()->model()->rowCount(), 0);
    QVERIFY(!m_host->GetScene()->GetGizmos().first()->IsShown());
    QVERIFY(!Find<QCheckBox>("checkBox_Relative")->isEnabled());
}

QTEST_MAIN(tst_ZYLTPEditLinkingPoints)
#include "tst_ZYLTPEditLinkingPoints.moc"
