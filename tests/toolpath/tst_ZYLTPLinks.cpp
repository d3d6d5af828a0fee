// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Links and laying order: links by index and by position, unlinked courses, chains kept
// contiguous, refused links, course removal, undo.
#include "ZYLTPTestProgram.h"

#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPOffPartPoint.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPSafetyPlaneCourseLink.h"

#include "ZYLSysException.h"
#include "ZYLSysOutOfBoundsException.h"

#include <QTest>

using LinkList = QList<QPair<int, int>>;

class tst_ZYLTPLinks : public QObject {
    Q_OBJECT
private slots:
    void fullChain();
    void linkMovesChains_data();
    void linkMovesChains();
    void refusedLinks_data();
    void refusedLinks();
    void layingOrderBreaksLinks();
    void reverseLayingOrder();
    void removeCourseRejoins();
    void removeLinksAndUndo();
    void linearLinkGeometry();
    void strategies();
};

namespace {
QList<int> Indexes(const ZYLTPRollLayupProcedure *procedure, const QList<const ZYLTPCourse *> &courses)
{
    QList<int> indexes;
    for (const ZYLTPCourse *c : courses)
        indexes << procedure->GetCourseIndex(c);
    return indexes;
}
} // namespace

void tst_ZYLTPLinks::fullChain()
{
    ZYLTPTestProgram t(3);
    ZYLTPRollLayupProcedure *p = t.procedure;
    QCOMPARE(Indexes(p, p->GetCoursesUnlinkedAtApproach()), (QList<int>{0, 1, 2}));
    t.Open();
    // Created out of laying order: retract first, then the middle, then the approach.
    ZYLTPCourseLink *retract = p->LinkCourses(t.courses[2], nullptr, nullptr);
    ZYLTPCourseLink *second = p->LinkCourses(t.courses[1], t.courses[2], nullptr);
    ZYLTPCourseLink *approach = p->LinkCourses(nullptr, t.courses[0], nullptr);
    ZYLTPCourseLink *first = p->LinkCourses(t.courses[0], t.courses[1], nullptr);
    t.Commit();
    QCOMPARE(p->GetNumLinks(), 4);
    QCOMPARE(p->GetLinkByIndex(0), retract);
    QCOMPARE(p->GetLinkByIndex(3), first);
    QVERIFY(!p->GetLinkByIndex(4));
    const QList<ZYLTPCourseLink *> byPosition{approach, first, second, retract};
    for (int i = 0; i < 4; ++i)
        QCOMPARE(p->GetLinkByPosition(i), byPosition[i]);
    QVERIFY(!p->GetLinkByPosition(4));
    QVERIFY(qobject_cast<ZYLTPProcedureLink *>(approach));
    QCOMPARE(p->GetApproachLink(), approach);
    QCOMPARE(p->GetRetractLink(), retract);
    QCOMPARE(t.courses[0]->GetApproachLink(), approach);
    QCOMPARE(t.courses[2]->GetRetractLink(), retract);
    QCOMPARE(t.courses[1]->GetApproachLink(), first);
    QCOMPARE(first->GetFromCourse(), t.courses[0]);
    QCOMPARE(first->GetToCourse(), t.courses[1]);
    QVERIFY(p->GetCoursesUnlinkedAtApproach().isEmpty());
    QVERIFY(p->GetCoursesUnlinkedAtRetract().isEmpty());
    QVERIFY(p->IsLinkedInChain(t.courses[2], t.courses[0]));
    QCOMPARE(p->GetLayingOrder(), (QList<int>{0, 1, 2}));
}

void tst_ZYLTPLinks::linkMovesChains_data()
{
    QTest::addColumn<LinkList>("links"); // -1 = procedure side
    QTest::addColumn<QList<int>>("order");
    QTest::newRow("later course after earlier") << LinkList{{3, 1}} << QList<int>{0, 2, 3, 1};
    QTest::newRow("earlier course after later") << LinkList{{2, 0}} << QList<int>{1, 2, 0, 3};
    QTest::newRow("chains move whole") << LinkList{{0, 1}, {3, 2}, {1, 3}} << QList<int>{0, 1, 3, 2};
    QTest::newRow("approach chain goes first") << LinkList{{2, 3}, {-1, 2}} << QList<int>{2, 3, 0, 1};
    QTest::newRow("retract chain goes last") << LinkList{{0, 1}, {1, -1}} << QList<int>{2, 3, 0, 1};
    QTest::newRow("joining onto the retract chain")
        << LinkList{{1, -1}, {3, 1}} << QList<int>{0, 2, 3, 1};
}

void tst_ZYLTPLinks::linkMovesChains()
{
    QFETCH(LinkList, links);
    QFETCH(QList<int>, order);
    ZYLTPTestProgram t(4);
    ZYLTPRollLayupProcedure *p = t.procedure;
    t.Open();
    for (const auto &[from, to] : links)
        p->LinkCourses(from < 0 ? nullptr : t.courses[from], to < 0 ? nullptr : t.courses[to], nullptr);
    t.Commit();
    QCOMPARE(p->GetLayingOrder(), order);
    // Every link joins consecutive courses.
    for (int i = 0; i < p->GetNumLinks(); ++i) {
        const ZYLTPCourseLink *link = p->GetLinkByIndex(i);
        if (link->GetFromCourse() && link->GetToCourse())
            QCOMPARE(p->GetCoursePosition(link->GetToCourse()), p->GetCoursePosition(link->GetFromCourse()) + 1);
    }
    t.container.Undo();
    QCOMPARE(p->GetLayingOrder(), (QList<int>{0, 1, 2, 3}));
    QCOMPARE(p->GetNumLinks(), 0);
}

void tst_ZYLTPLinks::refusedLinks_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    // Existing: approach -> 0 -> 1, 2 -> retract; course 3 free. 9 = a course of another program.
    QTest::newRow("to itself") << 3 << 3;
    QTest::newRow("second outgoing") << 0 << 3;
    QTest::newRow("second incoming") << 3 << 1;
    QTest::newRow("second approach") << -1 << 3;
    QTest::newRow("second retract") << 3 << -1;
    QTest::newRow("cycle") << 1 << 0;
    QTest::newRow("both null") << -1 << -1;
    QTest::newRow("another procedure") << 9 << 3;
}

void tst_ZYLTPLinks::refusedLinks()
{
    QFETCH(int, from);
    QFETCH(int, to);
    ZYLTPTestProgram t(4);
    ZYLTPTestProgram other(1);
    ZYLTPRollLayupProcedure *p = t.procedure;
    const auto course = [&](int i) -> const ZYLTPCourse * {
        return i < 0 ? nullptr : (i == 9 ? other.courses[0] : t.courses[i]);
    };
    t.Open();
    p->LinkCourses(nullptr, t.courses[0], nullptr);
    p->LinkCourses(t.courses[0], t.courses[1], nullptr);
    p->LinkCourses(t.courses[2], nullptr, nullptr);
    const QList<int> order = p->GetLayingOrder();
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, p->LinkCourses(course(from), course(to), nullptr));
    QCOMPARE(p->GetNumLinks(), 3);
    QCOMPARE(p->GetLayingOrder(), order);
    t.Commit();
}

void tst_ZYLTPLinks::layingOrderBreaksLinks()
{
    ZYLTPTestProgram t(3);
    ZYLTPRollLayupProcedure *p = t.procedure;
    t.Open();
    p->LinkCourses(nullptr, t.courses[0], nullptr);
    ZYLTPCourseLink *kept = p->LinkCourses(t.courses[1], t.courses[2], nullptr);
    p->LinkCourses(t.courses[0], t.courses[1], nullptr);
    t.Commit();
    t.Open();
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, p->SetLayingOrder({0, 1}));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, p->SetLayingOrder({0, 1, 1}));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, p->SetLayingOrder({0, 1, 3}));
    QCOMPARE(p->GetNumLinks(), 3);
    p->SetLayingOrder({1, 2, 0});
    t.Commit();
    // 1 -> 2 stays consecutive; 0 -> 1 and the approach link onto 0 are broken.
    QCOMPARE(p->GetNumLinks(), 1);
    QCOMPARE(p->GetLinkByIndex(0), kept);
    QVERIFY(!p->GetApproachLink());
    QVERIFY(!t.courses[0]->GetRetractLink());
    QCOMPARE(Indexes(p, p->GetCoursesUnlinkedAtApproach()), (QList<int>{1, 0}));
    QCOMPARE(Indexes(p, p->GetCoursesUnlinkedAtRetract()), (QList<int>{2, 0}));
    t.container.Undo();
    QCOMPARE(p->GetNumLinks(), 3);
    QCOMPARE(t.courses[0]->GetApproachLink(), p->GetApproachLink());
    QCOMPARE(p->GetLayingOrder(), (QList<int>{0, 1, 2}));
}

void tst_ZYLTPLinks::reverseLayingOrder()
{
    ZYLTPTestProgram t(3);
    ZYLTPRollLayupProcedure *p = t.procedure;
    t.Open();
    ZYLTPCourseLink *approach = p->LinkCourses(nullptr, t.courses[0], nullptr);
    ZYLTPCourseLink *middle = p->LinkCourses(t.courses[0], t.courses[1], nullptr);
    p->ReverseLayingOrder();
    t.Commit();
    QCOMPARE(p->GetLayingOrder(), (QList<int>{2, 1, 0}));
    QCOMPARE(p->GetRetractLink(), approach);
    QVERIFY(!p->GetApproachLink());
    QCOMPARE(approach->GetFromCourse(), t.courses[0]);
    QVERIFY(!approach->GetToCourse());
    QCOMPARE(middle->GetFromCourse(), t.courses[1]);
    QCOMPARE(t.courses[1]->GetRetractLink(), middle);
    QCOMPARE(p->GetLinkByPosition(0), middle);
    QCOMPARE(p->GetLinkByPosition(1), approach);
}

void tst_ZYLTPLinks::removeCourseRejoins()
{
    ZYLTPTestProgram t(3);
    ZYLTPRollLayupProcedure *p = t.procedure;
    const ZYLTPCourseLink::OffPartMotionStrategy safety = ZYLTPCourseLink::SafetyPlane;
    t.Open();
    p->LinkCourses(nullptr, t.courses[0], nullptr);
    p->LinkCourses(t.courses[0], t.courses[1], &safety);
    p->LinkCourses(t.courses[1], t.courses[2], nullptr);
    p->LinkCourses(t.courses[2], nullptr, nullptr);
    t.Commit();
    t.Open();
    p->RemoveCourse(t.courses[1]);
    t.Commit();
    QCOMPARE(p->GetNumCourses(), 2);
    QCOMPARE(p->GetLayingOrder(), (QList<int>{0, 1}));
    QCOMPARE(p->GetCourseByIndex(1), t.courses[2]);
    QCOMPARE(p->GetNumLinks(), 3);
    const ZYLTPCourseLink *joined = t.courses[0]->GetRetractLink();
    QVERIFY(qobject_cast<const ZYLTPSafetyPlaneCourseLink *>(joined));
    QCOMPARE(joined->GetToCourse(), t.courses[2]);
    t.Open();
    p->RemoveCourse(t.courses[0]);
    t.Commit();
    // The first course's links were approach and out: the next course gets the approach link.
    QVERIFY(qobject_cast<const ZYLTPProcedureLink *>(t.courses[2]->GetApproachLink()));
    QCOMPARE(p->GetApproachLink(), t.courses[2]->GetApproachLink());
    t.container.Undo();
    t.container.Undo();
    QCOMPARE(p->GetNumCourses(), 3);
    QCOMPARE(p->GetCourseByIndex(1), t.courses[1]);
    QCOMPARE(p->GetNumLinks(), 4);
    QCOMPARE(t.courses[1]->GetApproachLink()->GetFromCourse(), t.courses[0]);
    QCOMPARE(p->GetCourseIndex(t.courses[2]), 2);
}

void tst_ZYLTPLinks::removeLinksAndUndo()
{
    ZYLTPTestProgram t(2);
    ZYLTPRollLayupProcedure *p = t.procedure;
    t.Open();
    ZYLTPCourseLink *a = p->LinkCourses(nullptr, t.courses[0], nullptr);
    ZYLTPCourseLink *b = p->LinkCourses(t.courses[0], t.courses[1], nullptr);
    t.Commit();
    t.Open();
    p->RemoveLink(b);
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, p->RemoveLink(b));
    p->RemoveAllLinks();
    t.Commit();
    QCOMPARE(p->GetNumLinks(), 0);
    QVERIFY(!p->GetApproachLink());
    QCOMPARE(p->GetCoursesUnlinkedAtApproach().size(), 2);
    t.container.Undo();
    QCOMPARE(p->GetNumLinks(), 2);
    QCOMPARE(p->GetLinkByIndex(0), a);
    QCOMPARE(p->GetLinkByIndex(1), b);
    QCOMPARE(t.courses[1]->GetApproachLink(), b);
}

void tst_ZYLTPLinks::linearLinkGeometry()
{
    ZYLTPTestProgram t(2);
    ZYLTPRollLayupProcedure *p = t.procedure;
    t.Open();
    auto *link = qobject_cast<ZYLTPLinearCourseLink *>(p->LinkCourses(t.courses[0], t.courses[1], nullptr));
    t.Commit();
    QVERIFY(link);
    // Retract end (110, 0, 20), up 50, across to (-10, 50, 70), down to (-10, 50, 20):
    // 50 + 130 + 50 mm, at 20000 mm/min.
    QCOMPARE(link->GetNumPoints(), 7);
    QVERIFY(qAbs(link->GetLength() - 230.0) < 1e-9);
    QVERIFY(qAbs(link->GetTimeEstimate() - 230.0 / 20000 * 60) < 1e-9);
    QVERIFY((link->GetPoint(0)->GetTipPoint() - ZYLMathPoint(110, 0, 20)).GetLength() < 1e-9);
    QVERIFY((link->GetPoint(6)->GetTipPoint() - ZYLMathPoint(-10, 50, 20)).GetLength() < 1e-9);
    const ZYLTPOffPartPoint *last = link->GetPoint(6);
    QCOMPARE(link->GetPointIndex(last), 6);
    t.Open();
    link->SetRapidRetract(0.0);
    QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, link->SetRapidApproach(-1.0));
    t.courses[1]->SetRollIn(40.0);
    t.Commit();
    // Same point object, moved with the next course's start.
    QCOMPARE(link->GetPoint(6), last);
    QVERIFY((last->GetTipPoint() - ZYLMathPoint(-40, 50, 20)).GetLength() < 1e-9);
    t.Open();
    link->SetPointsDetail(ZYLTPCourseLink::Coarse);
    t.Commit();
    QCOMPARE(link->GetNumPoints(), 4);
    QVERIFY(qAbs(link->GetLength() - (std::hypot(150.0, 50.0, 50.0) + 50.0)) < 1e-9);
    QVERIFY(qAbs(p->GetLinkingTimeEstimate() - link->GetTimeEstimate()) < 1e-12);
}

void tst_ZYLTPLinks::strategies()
{
    QCOMPARE(ZYLTPCourseLink::GetAllOffPartMotionStrategies().size(), 3);
    QCOMPARE(ZYLTPCourseLink::GetOffPartMotionStrategyLabel(ZYLTPCourseLink::Linear), QStringLiteral("Linear"));
    QCOMPARE(ZYLTPCourseLink::GetOffPartMotionStrategyLabel(ZYLTPCourseLink::SafetyPlane), QStringLiteral("Safety plane"));
    QCOMPARE(ZYLTPCourseLink::GetOffPartMotionDetailLabel(ZYLTPCourseLink::Fine), QStringLiteral("Fine"));
    QCOMPARE(ZYLTPCustomCourseLink::GetAllVectorInterpolation().size(), 3);
    QCOMPARE(ZYLTPCustomCourseLink::GetVectorInterpolationString(ZYLTPCustomCourseLink::SphericalInterpolation),
             QStringLiteral("Spherical"));
    ZYLTPTestProgram t(3);
    ZYLTPRollLayupProcedure *p = t.procedure;
    const ZYLTPCourseLink::OffPartMotionStrategy custom = ZYLTPCourseLink::Custom;
    t.Open();
    p->SetDefaultStrategy(ZYLTPCourseLink::SafetyPlane);
    auto *safety = qobject_cast<ZYLTPSafetyPlaneCourseLink *>(p->LinkCourses(t.courses[0], t.courses[1], nullptr));
    auto *own = qobject_cast<ZYLTPCustomCourseLink *>(p->LinkCourses(t.courses[1], t.courses[2], &custom));
    t.Commit();
    QVERIFY(safety);
    QVERIFY(own);
    // Without a surface the part's box is that of the laying points (z = 0): the plane lies at
    // the clearance of 100 mm, above both ends at z = 20.
    QVERIFY((safety->GetPoint(1)->GetTipPoint() - ZYLMathPoint(110, 0, 100)).GetLength() < 1e-9);
    QVERIFY(qAbs(safety->GetLength() - (80 + 130 + 80)) < 1e-9);
    // A new custom link starts from the straight motion.
    QCOMPARE(own->GetNumPoints(), 7);
    QVERIFY(qAbs(own->GetLength() - 230.0) < 1e-9);
}

QTEST_GUILESS_MAIN(tst_ZYLTPLinks)
#include "tst_ZYLTPLinks.moc"
