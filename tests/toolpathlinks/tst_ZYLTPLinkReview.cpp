// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The procedure's link operations as the link editors use them: chains, point details with
// their point objects, rapid distances.
#include "ZYLTPLinkTestUtil.h"

#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPProcedureLink.h"

#include "ZYLSysOutOfBoundsException.h"

#include <QTest>

#include <limits>

class tst_ZYLTPLinkReview : public QObject {
    Q_OBJECT
private slots:
    void linkedInChain_data();
    void linkedInChain();
    void pointsDetail_data();
    void pointsDetail();
    void rapidDistance_data();
    void rapidDistance();
};

void tst_ZYLTPLinkReview::linkedInChain_data()
{
    QTest::addColumn<int>("a"); // -1 null, 9 a course of another program
    QTest::addColumn<int>("b");
    QTest::addColumn<bool>("linked");
    // approach -> 0 -> 1 -> 2, 3 free.
    QTest::newRow("downstream") << 0 << 2 << true;
    QTest::newRow("upstream") << 2 << 0 << true;
    QTest::newRow("itself") << 1 << 1 << true;
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
    // Segments + 3 points: 1, 4 or 16 segments.
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
    QTest::newRow("positive") << 75.0 << true;
    QTest::newRow("zero") << 0.0 << true;
    QTest::newRow("negative") << -5.0 << false;
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

QTEST_GUILESS_MAIN(tst_ZYLTPLinkReview)
#include "tst_ZYLTPLinkReview.moc"
