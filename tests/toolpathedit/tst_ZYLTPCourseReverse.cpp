// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Turning a course round: points and frames, stretches with their tows and tilts, distances,
// break ranges, links, reversing twice, undo and redo, refusals.
#include "ZYLTPEditTestSupport.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPRetractTrajectory.h"

#include "ZYLSysException.h"

#include <QTest>

class tst_ZYLTPCourseReverse : public QObject {
    Q_OBJECT
private slots:
    void curvedCourse();
    void poseKeptOverEachStretch();
    void runsAndMasks_data();
    void runsAndMasks();
    void breakRangesMapped();
    void links_data();
    void links();
    void twiceGivesSameBytes_data();
    void twiceGivesSameBytes();
    void undoRedoKeepObjects();
    void refusedOutsideTransaction();
};

void tst_ZYLTPCourseReverse::curvedCourse()
{
    ZYLTPTestProgram t(0);
    ZYLTPTowCourse *course = t.builder.AddTowCourse(t.procedure, t.configuration, ZYLTPCurvedCourse(0.0));
    const int n = course->GetNumPoints();
    QList<ZYLMathAxis> before;
    for (int i = 0; i < n; ++i)
        before << course->GetPoint(i)->GetAxis(false);
    const ZYLTPApproachTrajectory *approach = course->GetApproachTrajectory();
    const double length = course->GetLength();
    const double material = course->GetMaterialUsage();
    t.Open();
    course->Reverse(true);
    QCOMPARE(course->GetNumPoints(), n);
    for (int i = 0; i < n; ++i) {
        // Same place, laying and side directions turned, normal kept, still right-handed.
        const ZYLMathAxis now = course->GetPoint(i)->GetAxis(false);
        const ZYLMathAxis &old = before[n - 1 - i];
        QCOMPARE(now.GetOrigin(), old.GetOrigin());
        QVERIFY(ZYLTPNear(now.GetFirstDirection().Dot(old.GetFirstDirection()), -1.0));
        QVERIFY(ZYLTPNear(now.GetThirdDirection().Dot(old.GetThirdDirection()), 1.0));
        QVERIFY(ZYLTPNear(now.GetFirstDirection().Cross(now.GetSecondDirection()).Dot(now.GetThirdDirection()), 1.0));
    }
    QCOMPARE(course->GetRollIn(), 13.0);
    QCOMPARE(course->GetRollOut(), 7.0);
    QVERIFY(ZYLTPNear(course->ComputePointLength(course->GetPoint(n - 2)), course->GetLength() - 7.0));
    QVERIFY(ZYLTPNear(course->GetLength(), length));
    QVERIFY(ZYLTPNear(course->GetMaterialUsage(), material));
    QCOMPARE(course->GetApproachTrajectory(), approach);
    QCOMPARE(approach->GetAngle(), 0.7);
    QCOMPARE(approach->GetLength(), 40.0);
    QCOMPARE(course->GetRetractTrajectory()->GetAngle(), 0.3);
    QCOMPARE(approach->GetPoint(1)->GetTipPoint(), course->GetPoint(0)->GetTipPoint());
    // The middle run (tows 0-7, forced tows 0 and 7 at 0.5 and 0.25) is still in the middle.
    const auto *middle = qobject_cast<const ZYLTPTowTrajectory *>(course->GetTrajectory(3));
    QCOMPARE(middle->GetForcedMask().GetRawValue(), quint64(0x81));
    QCOMPARE(middle->GetForcedRates()[0], 0.25);
    QCOMPARE(middle->GetForcedRates()[7], 0.5);
    QCOMPARE(middle->GetSideTilt(), 0.2);
    const auto *first = qobject_cast<const ZYLTPTowTrajectory *>(course->GetTrajectory(2));
    QCOMPARE(first->GetForwardTilt(), 0.05);
    QCOMPARE(first->GetCompactionForce(), 120.0);
}

void tst_ZYLTPCourseReverse::poseKeptOverEachStretch()
{
    // The tool stands in the same physical pose over every tow segment: segment s (point s
    // to s + 1) is segment n - 2 - s of the reversed course. On a straight course the
    // untilted frame is the same all along, so the poses compare at either end of a segment.
    ZYLTPTestProgram t(0);
    ZYLTPProgramBuilder::CourseData data = ZYLTPStraightCourse(0.0, 10.0, {{3, 0xF}, {4, 0xF}, {4, 0xF}});
    data.runs[0].values.forwardTilt = 0.1;
    data.runs[1].values.sideTilt = -0.2;
    data.runs[2].values = {0.3, 0.25, 600.0, 0.0};
    const ZYLTPCourse *course = t.builder.AddTowCourse(t.procedure, t.configuration, data);
    const int n = course->GetNumPoints();
    QList<ZYLMathVector> axes;
    for (int s = 0; s < n; ++s)
        axes << course->GetPointFrame(s, true).GetThirdDirection();
    t.Open();
    const_cast<ZYLTPCourse *>(course)->Reverse(true);
    for (int s = 1; s < n - 2; ++s) {
        const ZYLMathVector axis = course->GetPointFrame(n - 2 - s, true).GetThirdDirection();
        QVERIFY2(ZYLTPNear(axis.Dot(axes[s]), 1.0, 1e-12), qPrintable(QStringLiteral("segment %1").arg(s)));
    }
}

void tst_ZYLTPCourseReverse::runsAndMasks_data()
{
    QTest::addColumn<QList<int>>("points");
    QTest::addColumn<QList<quint64>>("masks");
    QTest::addColumn<QList<ZYLTPRun>>("reversed");
    QTest::addColumn<int>("headTows"); // 0: a head without a tow count
    // 11 tow points (1..11); runs own the segments up to the next run's first point.
    QTest::newRow("one run") << QList<int>{11} << QList<quint64>{0xF} << QList<ZYLTPRun>{{1, 11, 0xF}} << 0;
    QTest::newRow("three runs, eight tows")
        << QList<int>{3, 4, 4} << QList<quint64>{0x0F, 0xFF, 0x3C}
        << QList<ZYLTPRun>{{1, 3, 0x3C}, {4, 4, 0xFF}, {8, 4, 0xF0}} << 0;
    // Tows 0 and 1 unused: the band is six tows wide, tows 2-3 map onto 2-3, 2-5 onto 0-3.
    QTest::newRow("lowest tows unused")
        << QList<int>{5, 6} << QList<quint64>{0x0C, 0x3C} << QList<ZYLTPRun>{{1, 5, 0x0F}, {6, 6, 0x0C}} << 0;
    // A run over the last tow point alone lays nothing; it stays last.
    QTest::newRow("point-only last run")
        << QList<int>{1, 9, 1} << QList<quint64>{0x3, 0xF, 0x3} << QList<ZYLTPRun>{{1, 9, 0xF}, {10, 1, 0xC}, {11, 1, 0xC}}
        << 0;
    // The head's count is the width from the start: tows 1-4 of 16 turn into tows 13-16.
    QTest::newRow("16-tow head, tows 1-4")
        << QList<int>{11} << QList<quint64>{0xF} << QList<ZYLTPRun>{{1, 11, 0xF000}} << 16;
    QTest::newRow("16-tow head, two runs")
        << QList<int>{5, 6} << QList<quint64>{0x0C, 0x3C} << QList<ZYLTPRun>{{1, 5, 0x3C00}, {6, 6, 0x3000}} << 16;
}

void tst_ZYLTPCourseReverse::runsAndMasks()
{
    QFETCH(QList<int>, points);
    QFETCH(QList<quint64>, masks);
    QFETCH(QList<ZYLTPRun>, reversed);
    QFETCH(int, headTows);
    ZYLTPTestProgram t(0);
    const ZYLTPMachineConfiguration *configuration = t.configuration;
    if (headTows > 0)
        configuration = t.builder.AddMachineConfiguration(
            t.procedure, t.builder.AddMachineHead(QStringLiteral("Head"), headTows), t.roller);
    ZYLTPProgramBuilder::CourseData data = ZYLTPStraightCourse(0.0, 10.0, {});
    for (qsizetype r = 0; r < points.size(); ++r) {
        ZYLTPProgramBuilder::TowRun run;
        run.numPoints = points[r];
        run.towMask = ZYLCompTowMask(masks[r]);
        data.runs.push_back(run);
        for (int i = 0; i < points[r]; ++i) {
            data.tips.emplace_back(10.0 * double(data.tips.size()), 0.0, 0.0);
            data.normals.emplace_back(0.0, 0.0, 1.0);
        }
    }
    ZYLTPTowCourse *course = t.builder.AddTowCourse(t.procedure, configuration, data);
    const QList<double> lengths = course->GetTowLengths();
    const int width = course->GetNumTows();
    if (headTows > 0)
        QCOMPARE(width, headTows);
    const QByteArray before = ZYLTPBytes(t.program);
    t.Open();
    course->Reverse(true);
    QCOMPARE(ZYLTPRunsOf(course), reversed);
    QCOMPARE(course->GetNumTows(), width);
    // The same physical tows lay the same lengths: tow t is now tow width - 1 - t.
    const QList<double> now = course->GetTowLengths();
    for (int tow = 0; tow < width; ++tow)
        QVERIFY(ZYLTPNear(tow < now.size() ? now[tow] : 0.0, lengths.value(width - 1 - tow, 0.0)));
    course->Reverse(true);
    QCOMPARE(ZYLTPBytes(t.program), before);
}

void tst_ZYLTPCourseReverse::breakRangesMapped()
{
    ZYLTPTestProgram t(0);
    ZYLTPProgramBuilder::CourseData data = ZYLTPStraightCourse(0.0, 10.0, {{11, 0xF}});
    data.rollIn = 5.0;
    data.rollOut = 15.0; // 5 + 100 + 15 = 120 mm
    ZYLTPTowCourse *course = t.builder.AddTowCourse(t.procedure, t.configuration, data);
    const ZYLTPBreakRange *early = t.builder.AddBreakRange(course, 20.0, 30.0);
    const ZYLTPBreakRange *late = t.builder.AddBreakRange(course, 60.0, 75.0);
    const double tipArc = course->ComputePointLength(course->GetPoint(4));
    t.Open();
    course->Reverse(true);
    QCOMPARE(course->GetNumBreakRanges(), 2);
    QCOMPARE(course->GetBreakRange(0), late); // still in laying order
    QCOMPARE(late->GetStart(), 45.0);
    QCOMPARE(late->GetEnd(), 60.0);
    QCOMPARE(early->GetStart(), 90.0);
    QCOMPARE(early->GetEnd(), 100.0);
    // A place at arc length x now lies at L - x, the roll-in distance having changed.
    QVERIFY(ZYLTPNear(course->ComputePointLength(course->GetPoint(course->GetNumPoints() - 5)), 120.0 - tipArc));
}

void tst_ZYLTPCourseReverse::links_data()
{
    QTest::addColumn<bool>("keepLinks");
    QTest::newRow("kept") << true;
    QTest::newRow("removed") << false;
}

void tst_ZYLTPCourseReverse::links()
{
    QFETCH(bool, keepLinks);
    ZYLTPTestProgram t(3);
    t.builder.AddLink(t.procedure, nullptr, t.courses[0], ZYLTPCourseLink::Linear);
    const ZYLTPCourseLink *in = t.builder.AddLink(t.procedure, t.courses[0], t.courses[1], ZYLTPCourseLink::Linear);
    const ZYLTPCourseLink *out = t.builder.AddLink(t.procedure, t.courses[1], t.courses[2], ZYLTPCourseLink::Linear);
    t.Open();
    t.courses[1]->Reverse(keepLinks);
    if (keepLinks) {
        QCOMPARE(t.procedure->GetNumLinks(), 3);
        QCOMPARE(t.courses[1]->GetApproachLink(), in);
        QCOMPARE(t.courses[1]->GetRetractLink(), out);
        // Derived motion follows the course's new ends.
        const ZYLMathAxis far = t.courses[1]->GetRetractTrajectory()->GetFarFrame();
        QCOMPARE(out->GetPoint(0)->GetTipPoint(), far.GetOrigin());
        QVERIFY(ZYLTPNear(far.GetOrigin().X(), -10.0)); // above the old roll-in point
    } else {
        QCOMPARE(t.procedure->GetNumLinks(), 1);
        QVERIFY(!t.courses[1]->GetApproachLink());
        QVERIFY(!t.courses[1]->GetRetractLink());
        QVERIFY(!t.courses[0]->GetRetractLink());
        QVERIFY(t.procedure->GetApproachLink());
    }
}

void tst_ZYLTPCourseReverse::twiceGivesSameBytes_data()
{
    QTest::addColumn<bool>("separateTransactions");
    QTest::newRow("one edit") << false;
    QTest::newRow("two edits") << true;
}

void tst_ZYLTPCourseReverse::twiceGivesSameBytes()
{
    QFETCH(bool, separateTransactions);
    ZYLTPTestProgram t(2);
    ZYLTPTowCourse *course = t.builder.AddTowCourse(t.procedure, t.configuration, ZYLTPCurvedCourse(100.0));
    // Values whose mirror images are not exact in floating point.
    t.builder.AddBreakRange(course, 0.1, 1.7);
    t.builder.AddBreakRange(course, 3.3, 4.1);
    const QByteArray before = ZYLTPBytes(t.program);
    t.Open();
    course->Reverse(true);
    const QByteArray reversed = ZYLTPBytes(t.program);
    QVERIFY(reversed != before);
    if (separateTransactions) {
        t.Commit();
        t.Open();
    }
    course->Reverse(true);
    QCOMPARE(ZYLTPBytes(t.program), before);
}

void tst_ZYLTPCourseReverse::undoRedoKeepObjects()
{
    ZYLTPTestProgram t(2);
    t.builder.AddTowCourse(t.procedure, t.configuration, ZYLTPCurvedCourse(100.0));
    t.builder.AddBreakRange(t.courses[0], 30.0, 40.0);
    t.builder.AddLink(t.procedure, t.courses[0], t.courses[1], ZYLTPCourseLink::SafetyPlane);
    const QByteArray before = ZYLTPBytes(t.program);
    const QList<const QObject *> objects = ZYLTPModelObjects(t.procedure);
    t.Open();
    t.procedure->ReverseAllCourses();
    t.Commit();
    const QByteArray after = ZYLTPBytes(t.program);
    const QList<const QObject *> objectsAfter = ZYLTPModelObjects(t.procedure);
    t.container.Undo();
    QCOMPARE(ZYLTPBytes(t.program), before);
    QVERIFY(ZYLTPModelObjects(t.procedure) == objects);
    t.container.Redo();
    QCOMPARE(ZYLTPBytes(t.program), after);
    QVERIFY(ZYLTPModelObjects(t.procedure) == objectsAfter);
}

void tst_ZYLTPCourseReverse::refusedOutsideTransaction()
{
    ZYLTPTestProgram t(2);
    const QByteArray before = ZYLTPBytes(t.program);
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, t.courses[0]->Reverse(true));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, t.procedure->ReverseOddCourses());
    QCOMPARE(ZYLTPBytes(t.program), before);
}

QTEST_GUILESS_MAIN(tst_ZYLTPCourseReverse)
#include "tst_ZYLTPCourseReverse.moc"
