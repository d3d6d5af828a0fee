// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The procedure's link operations and link parameters as the link editors use them:
// strategies by default and by choice, refusals that change nothing, chains, point details
// with their point objects, rapid distances, pinch states up to the roll-out point.
#include "ZYLTPLinkTestUtil.h"

#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPTowPoint.h"
#include "ZYLTPTowTrajectory.h"

#include "ZYLSysException.h"
#include "ZYLSysOutOfBoundsException.h"

#include <QTest>

#include <limits>

class tst_ZYLTPLinkReview : public QObject {
    Q_OBJECT
private slots:
    void strategyOfNewLink_data();
    void strategyOfNewLink();
    void refusedLinkEdits_data();
    void refusedLinkEdits();
    void linkedInChain_data();
    void linkedInChain();
    void pointsDetail_data();
    void pointsDetail();
    void rapidDistance_data();
    void rapidDistance();
    void pinchStateToRollOut();
};

void tst_ZYLTPLinkReview::strategyOfNewLink_data()
{
    QTest::addColumn<int>("defaultStrategy");
    QTest::addColumn<int>("chosen"); // -1: null strategy
    QTest::addColumn<int>("expected");
    QTest::newRow("default linear") << 0 << -1 << 0;
    QTest::newRow("default safety plane") << 1 << -1 << 1;
    QTest::newRow("default custom") << 2 << -1 << 2;
    QTest::newRow("chosen over default") << 1 << 0 << 0;
    QTest::newRow("custom chosen") << 0 << 2 << 2;
}

void tst_ZYLTPLinkReview::strategyOfNewLink()
{
    QFETCH(int, defaultStrategy);
    QFETCH(int, chosen);
    QFETCH(int, expected);
    ZYLTPTestProgram t(2);
    const auto strategy = ZYLTPCourseLink::OffPartMotionStrategy(chosen);
    t.Open();
    t.procedure->SetDefaultStrategy(ZYLTPCourseLink::OffPartMotionStrategy(defaultStrategy));
    ZYLTPCourseLink *link = t.procedure->LinkCourses(t.courses[0], t.courses[1], chosen < 0 ? nullptr : &strategy);
    // The procedure's own links are of their own kind whatever the strategy.
    ZYLTPCourseLink *approach = t.procedure->LinkCourses(nullptr, t.courses[0], chosen < 0 ? nullptr : &strategy);
    t.Commit();
    QCOMPARE(int(link->GetStrategy()), expected);
    QVERIFY(qobject_cast<ZYLTPProcedureLink *>(approach));
    // Every kind starts at the retract end of course 0 and ends at the approach end of course 1.
    QVERIFY(ZYLTPNear(link->GetPoint(0)->GetTipPoint(), {110, 0, 20}));
    QVERIFY(ZYLTPNear(link->GetPoint(link->GetNumPoints() - 1)->GetTipPoint(), {-10, 50, 20}));
}

void tst_ZYLTPLinkReview::refusedLinkEdits_data()
{
    QTest::addColumn<int>("edit");
    QTest::newRow("strategy out of range") << 0;
    QTest::newRow("remove null") << 1;
    QTest::newRow("remove link of another program") << 2;
    QTest::newRow("remove outside a transaction") << 3;
    QTest::newRow("link courses of two programs") << 4;
    QTest::newRow("detail out of range") << 5;
}

void tst_ZYLTPLinkReview::refusedLinkEdits()
{
    QFETCH(int, edit);
    ZYLTPLinkedTestProgram t(3);
    ZYLTPLinkedTestProgram other(2);
    ZYLTPTestProgram loose(2);
    const QByteArray bytes = t.Bytes();
    ZYLTPRollLayupProcedure *p = t.procedure;
    const auto seven = ZYLTPCourseLink::OffPartMotionStrategy(7);
    if (edit != 3)
        t.Open();
    switch (edit) {
    case 0: QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, loose.procedure->LinkCourses(loose.courses[0], loose.courses[1], &seven)); break;
    case 1: QVERIFY_THROWS_EXCEPTION(ZYLSysException, p->RemoveLink(nullptr)); break;
    case 2: QVERIFY_THROWS_EXCEPTION(ZYLSysException, p->RemoveLink(other.links[0])); break;
    case 3: QVERIFY_THROWS_EXCEPTION(ZYLSysException, p->RemoveLink(t.links[0])); break;
    case 4: QVERIFY_THROWS_EXCEPTION(ZYLSysException, loose.procedure->LinkCourses(loose.courses[0], other.courses[1], nullptr)); break;
    default: QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, t.links[0]->SetPointsDetail(ZYLTPCourseLink::OffPartMotionDetail(3))); break;
    }
    QCOMPARE(t.Bytes(), bytes);
    QCOMPARE(loose.procedure->GetNumLinks(), 0);
    QCOMPARE(other.procedure->GetNumLinks(), 3);
}

void tst_ZYLTPLinkReview::linkedInChain_data()
{
    QTest::addColumn<int>("a"); // -1 null, 9 a course of another program
    QTest::addColumn<int>("b");
    QTest::addColumn<bool>("linked");
    // approach -> 0 -> 1 -> 2, 3 free.
    QTest::newRow("downstream") << 0 << 2 << true;
    QTest::newRow("upstream") << 2 << 0 << true;
    QTest::newRow("itself") << 1 << 1 << true;
    QTest::newRow("free course") << 0 << 3 << false;
    QTest::newRow("null") << 0 << -1 << false;
    QTest::newRow("another program") << 0 << 9 << false;
}

void tst_ZYLTPLinkReview::linkedInChain()
{
    QFETCH(int, a);
    QFETCH(int, b);
    QFETCH(bool, linked);
    ZYLTPTestProgram t(4);
    ZYLTPTestProgram other(1);
    t.builder.AddLink(t.procedure, nullptr, t.courses[0], ZYLTPCourseLink::Linear);
    t.builder.AddLink(t.procedure, t.courses[0], t.courses[1], ZYLTPCourseLink::Linear);
    t.builder.AddLink(t.procedure, t.courses[1], t.courses[2], ZYLTPCourseLink::Linear);
    const auto course = [&](int i) -> const ZYLTPCourse * {
        return i < 0 ? nullptr : (i == 9 ? other.courses[0] : t.courses[i]);
    };
    QCOMPARE(t.procedure->IsLinkedInChain(course(a), course(b)), linked);
    // Starts: no incoming link and no approach link; ends: no outgoing link, in laying order.
    QCOMPARE(t.procedure->GetCoursesUnlinkedAtApproach(), (QList<const ZYLTPCourse *>{t.courses[3]}));
    QCOMPARE(t.procedure->GetCoursesUnlinkedAtRetract(), (QList<const ZYLTPCourse *>{t.courses[2], t.courses[3]}));
}

void tst_ZYLTPLinkReview::pointsDetail_data()
{
    QTest::addColumn<int>("which"); // 0 approach link, 1 linear, 2 safety plane
    QTest::addColumn<int>("detail");
    QTest::addColumn<int>("points");
    QTest::newRow("approach, coarse") << 0 << 0 << 4;
    QTest::newRow("linear, fine") << 1 << 2 << 19;
    QTest::newRow("safety plane, coarse") << 2 << 0 << 4;
}

void tst_ZYLTPLinkReview::pointsDetail()
{
    QFETCH(int, which);
    QFETCH(int, detail);
    QFETCH(int, points);
    ZYLTPLinkedTestProgram t(3);
    const auto safety = ZYLTPCourseLink::SafetyPlane;
    t.Open();
    t.procedure->RemoveLink(t.links[1]);
    t.links[1] = t.procedure->LinkCourses(t.courses[1], t.courses[2], &safety);
    t.Commit();
    ZYLTPCourseLink *link = which == 0 ? t.procedure->GetApproachLink() : t.links[which - 1];
    const QList<const ZYLTPOffPartPoint *> before = ZYLTPPointsOf(link);
    QCOMPARE(before.size(), 7);
    const ZYLMathPoint end = before.back()->GetTipPoint();
    t.Open();
    link->SetPointsDetail(ZYLTPCourseLink::OffPartMotionDetail(detail));
    t.Commit();
    QCOMPARE(link->GetNumPoints(), points);
    QVERIFY(ZYLTPNear(link->GetPoint(points - 1)->GetTipPoint(), end));
    // Undo brings back the count and the very point objects.
    t.container.Undo();
    QCOMPARE(ZYLTPPointsOf(link), before);
}

void tst_ZYLTPLinkReview::rapidDistance_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("zero") << 0.0 << true;
    QTest::newRow("positive") << 75.0 << true;
    QTest::newRow("negative") << -1.0 << false;
    QTest::newRow("not a number") << qQNaN() << false;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << false;
}

void tst_ZYLTPLinkReview::rapidDistance()
{
    QFETCH(double, value);
    QFETCH(bool, accepted);
    ZYLTPLinkedTestProgram t(2);
    auto *link = qobject_cast<ZYLTPLinearCourseLink *>(t.links[0]);
    const QByteArray bytes = t.Bytes();
    t.Open();
    if (!accepted) {
        QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, link->SetRapidRetract(value));
        QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, link->SetRapidApproach(value));
        QCOMPARE(t.Bytes(), bytes);
        return;
    }
    link->SetRapidRetract(value);
    link->SetRapidApproach(value + 5);
    link->Update();
    t.Commit();
    QVERIFY(ZYLTPNear(link->GetPoint(1)->GetTipPoint(), {110, 0, 20 + value}));
    QVERIFY(ZYLTPNear(link->GetPoint(5)->GetTipPoint(), {-10, 50, 25 + value}));
    t.container.Undo();
    QCOMPARE(t.Bytes(), bytes);
}

void tst_ZYLTPLinkReview::pinchStateToRollOut()
{
    ZYLTPTestProgram t(2);
    ZYLTPTowCourse *course = t.courses[0];
    auto *first = qobject_cast<const ZYLTPTowPoint *>(course->GetPoint(1));
    auto *rollOut = qobject_cast<const ZYLTPTowPoint *>(course->GetRollOutPoint());
    QVERIFY(first && rollOut);
    QCOMPARE(course->GetPointIndex(rollOut), course->GetNumPoints() - 1);
    t.Open();
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, course->SetPinchState(rollOut, first, ZYLCompTowMask(1), {}));
    auto *foreign = qobject_cast<const ZYLTPTowPoint *>(t.courses[1]->GetPoint(1));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, course->SetPinchState(foreign, rollOut, ZYLCompTowMask(1), {}));
    QCOMPARE(t.container.GetOpenTransaction()->GetNumChanges(), 0);
    // A range up to the roll-out point covers every tow point.
    course->SetPinchState(first, rollOut, ZYLCompTowMask(0x3), {0.5, 1.0});
    t.Commit();
    for (int i = 1; i < course->GetNumPoints() - 1; ++i) {
        auto *run = qobject_cast<const ZYLTPTowTrajectory *>(course->GetPoint(i)->GetTrajectory());
        QVERIFY(run);
        QCOMPARE(run->GetForcedMask(), ZYLCompTowMask(0x3));
        QCOMPARE(run->GetForcedRates().front(), 0.5);
    }
}

QTEST_GUILESS_MAIN(tst_ZYLTPLinkReview)
#include "tst_ZYLTPLinkReview.moc"
