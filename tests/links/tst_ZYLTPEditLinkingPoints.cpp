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
#include <QPushButton>
#include <QSpinBox>

using Point = const ZYLTPOffPartPoint *;

class tst_ZYLTPEditLinkingPoints : public ZYLTPLinkPanelTest {
    Q_OBJECT
    static bool Near(const ZYLMathPoint &a, const ZYLMathPoint &b) { return (a - b).GetLength() < 1e-6; }
    ZYLMathPoint Tip(int row) const { return Row<Point>(row)->GetTipPoint(); }
    // Picks the first link of the kind in the 3-D view and returns the link the panel edits.
    template<class Kind> const ZYLTPCustomCourseLink *Pick() {
        const ZYLTPCourseLink *link = LinksOf<Kind>().first().second;
        const int row = LinksOf<Kind>().first().first;
        m_host->ClickAt(link->GetPoint(link->GetNumPoints() / 2)->GetTipPoint(), 0.5);
        // The panel shows once the pick has been handed over.
        if (!QTest::qWaitFor([this] { return m_host->GetButton(QDialogButtonBox::Ok) != nullptr; }))
            return nullptr;
        return qobject_cast<const ZYLTPCustomCourseLink *>(Links([](ZYLTPCourseLink *) { return true; })[row].second);
    }

private slots:
    void initTestCase() { QVERIFY2(Start(), qPrintable(m_host->GetError())); }
    void init() {
        QVERIFY(Run("ZYLTPEditLinkingPointsCmd.Edit"));
        QVERIFY(!m_host->GetButton(QDialogButtonBox::Ok)); // hidden until a link is picked
    }
    void cleanup() { QVERIFY(CancelGivesProgramBack()); }

    void pickConvertsAndLists_data() {
        QTest::addColumn<bool>("custom");
        QTest::newRow("straight link") << false;
        QTest::newRow("custom link") << true;
    }
    void pickConvertsAndLists() {
        QFETCH(bool, custom);
        const ZYLTPCourseLink *picked =
            (custom ? LinksOf<ZYLTPCustomCourseLink>() : LinksOf<ZYLTPLinearCourseLink>())[0].second;
        QList<ZYLMathPoint> tips;
        for (int i = 0; i < picked->GetNumPoints(); ++i)
            tips.append(picked->GetPoint(i)->GetTipPoint());
        const ZYLTPCustomCourseLink *edited = custom ? Pick<ZYLTPCustomCourseLink>() : Pick<ZYLTPLinearCourseLink>();
        QVERIFY(edited);
        QCOMPARE(edited == picked, custom);
        QCOMPARE(List()->model()->rowCount(), tips.size() - 2);
        for (int row = 0; row < tips.size() - 2; ++row) {
            QCOMPARE(List()->model()->index(row, 0).data().toString(), QStringLiteral("Point.%1").arg(row + 1));
            QCOMPARE(Row<Point>(row), edited->GetPoint(row + 1));
            QVERIFY(Near(Tip(row), tips[row + 1]));
        }
    }

    void offsetsMovePoints_data() {
        QTest::addColumn<QList<int>>("rows");
        QTest::addColumn<bool>("relative");
        QTest::addColumn<double>("x");
        QTest::addColumn<bool>("moves");
        QTest::newRow("one point, relative") << QList<int>{1} << true << 5.0 << true;
        QTest::newRow("one point, absolute") << QList<int>{1} << false << 300.0 << true;
        QTest::newRow("two points, relative") << QList<int>{0, 2} << true << -7.5 << true;
        QTest::newRow("two points, absolute refused") << QList<int>{0, 2} << false << 300.0 << false;
    }
    void offsetsMovePoints() {
        QFETCH(QList<int>, rows);
        QFETCH(bool, relative);
        QFETCH(double, x);
        QFETCH(bool, moves);
        QVERIFY(Pick<ZYLTPLinearCourseLink>());
        Select(rows);
        auto *relativeBox = m_host->Find<QCheckBox>("checkBox_Relative");
        auto *xBox = m_host->Find<QDoubleSpinBox>("doubleSpinBox_Xoffset");
        // Several points take only a common displacement, and the box says so.
        QCOMPARE(relativeBox->isEnabled(), rows.size() == 1);
        QVERIFY(relativeBox->isChecked());
        QCOMPARE(xBox->value(), 0.0);
        QList<ZYLMathPoint> tips;
        for (int row : rows)
            tips.append(Tip(row));
        relativeBox->setChecked(relative);
        QCOMPARE(xBox->value(), relative || rows.size() > 1 ? 0.0 : tips[0].X());
        xBox->setValue(x);
        for (int i = 0; i < rows.size(); ++i) {
            ZYLMathPoint expected = tips[i];
            if (moves)
                expected.SetX(relative ? tips[i].X() + x : x);
            QVERIFY(Near(Tip(rows[i]), expected));
        }
    }

    void gizmoMovesAndTurnsPoint() {
        const ZYLTPCustomCourseLink *link = Pick<ZYLTPCustomCourseLink>();
        QVERIFY(link);
        // Picking a point's marker selects its row and puts the gizmo there.
        m_host->ClickAt(Tip(2), 0.5);
        QCOMPARE(List()->selectionModel()->selectedRows(), QModelIndexList{List()->model()->index(2, 0)});
        ZYLVisGizmo *gizmo = m_host->GetScene()->GetGizmos().value(0);
        QVERIFY(gizmo && gizmo->IsShown());
        QVERIFY(Near(gizmo->GetPosition().GetOrigin(), Tip(2)));
        const ZYLMathAxis turned(Tip(2) + ZYLMathVector(10.0, -4.0, 25.0), {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0});
        emit gizmo->PositionChanged(turned);
        const ZYLMathAxis now = link->GetPoint(3)->GetAxis();
        QVERIFY(Near(now.GetOrigin(), turned.GetOrigin()));
        for (int axis = 0; axis < 3; ++axis)
            QVERIFY((now.GetDirection(axis) - turned.GetDirection(axis)).GetLength() < 1e-9);
        // Relative offsets show the displacement.
        QCOMPARE(m_host->Find<QDoubleSpinBox>("doubleSpinBox_Zoffset")->value(), 25.0);
        QVERIFY(m_host->Press(QDialogButtonBox::Ok));
        m_host->GetContainer()->Undo();
    }

    void insertAfterOnTwoPoints() {
        const ZYLTPCustomCourseLink *link = Pick<ZYLTPLinearCourseLink>();
        QVERIFY(link);
        const int points = link->GetNumPoints();
        const ZYLMathPoint first = Tip(0), second = Tip(1);
        Select({0, 2});
        m_host->Find<QSpinBox>("spinBox_NumOfPts")->setValue(3);
        m_host->Find<QPushButton>("pushButton_InsertAfter")->click();
        QCOMPARE(link->GetNumPoints(), points + 6);
        QCOMPARE(List()->model()->rowCount(), points + 4);
        QVERIFY(List()->selectionModel()->selectedRows().isEmpty());
        for (int k = 1; k <= 3; ++k)
            QVERIFY(Near(Tip(k), first + (second - first) * (k / 4.0)));
    }

    void interpolatesInLinkOrder() {
        QVERIFY(Pick<ZYLTPCustomCourseLink>());
        QCOMPARE(List()->model()->rowCount(), 5);
        // Picked last to first: each pair goes to the model in the link's order.
        Select({4, 0, 2});
        const auto interpolate = [this] { m_host->Find<QPushButton>("pushButton_Interpolate")->click(); };
        QCOMPARE(ZYLTPPanelTestHost::AnswerMessageBoxes(interpolate), QStringList());
        for (int row = 1; row < 4; ++row)
            QVERIFY(Near(Tip(row), Tip(0) + (Tip(4) - Tip(0)) * (row / 4.0)));
    }

    void deleteAllLeavesTheEnds() {
        const ZYLTPCustomCourseLink *link = Pick<ZYLTPLinearCourseLink>();
        QVERIFY(link);
        Select({1});
        m_host->Find<QPushButton>("pushButton_SelAll")->click();
        m_host->Find<QPushButton>("pushButton_Delete")->click();
        QCOMPARE(link->GetNumPoints(), 2);
        QCOMPARE(List()->model()->rowCount(), 0);
        QVERIFY(!m_host->GetScene()->GetGizmos().value(0)->IsShown());
        QVERIFY(!m_host->Find<QCheckBox>("checkBox_Relative")->isEnabled());
    }
};

QTEST_MAIN(tst_ZYLTPEditLinkingPoints)
#include "tst_ZYLTPEditLinkingPoints.moc"
