// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Course read operations: points, lengths, frames, trajectories and estimates on hand-built
// straight courses whose answers are worked out by hand.
#include "ZYLTPTestProgram.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPTowPoint.h"
#include "ZYLTPTowTrajectory.h"

#include "ZYLSysException.h"
#include "ZYLSysOutOfBoundsException.h"

#include <QTest>

class tst_ZYLTPCourse : public QObject {
    Q_OBJECT
private slots:
    void pointLengths_data();
    void pointLengths();
    void pointsAndIndexes();
    void trajectoryList();
    void toolFrame_data();
    void toolFrame();
    void onPartTime_data();
    void onPartTime();
    void towLengths();
    void rollInOutMoveOnePoint();
    void approachRetractGeometry();
    void pointOfAnotherCourseRefused();
};

void tst_ZYLTPCourse::pointLengths_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<double>("length");
    // Roll-in 10, tow points 10 apart from x = 0, roll-out 10: 120 mm in all.
    QTest::newRow("roll-in point") << 0 << 0.0;
    QTest::newRow("first tow point") << 1 << 10.0;
    QTest::newRow("middle") << 6 << 60.0;
    QTest::newRow("last tow point") << 11 << 110.0;
    QTest::newRow("roll-out point") << 12 << 120.0;
}

void tst_ZYLTPCourse::pointLengths()
{
    QFETCH(int, index);
    QFETCH(double, length);
    ZYLTPTestProgram t(1);
    const ZYLTPTowCourse *course = t.courses[0];
    QCOMPARE(course->GetNumPoints(), 13);
    QVERIFY(qAbs(course->GetLength() - 120.0) < 1e-9);
    QVERIFY(qAbs(course->ComputePointLength(course->GetPoint(index)) - length) < 1e-9);
}

void tst_ZYLTPCourse::pointsAndIndexes()
{
    ZYLTPTestProgram t(2);
    const ZYLTPTowCourse *course = t.courses[1];
    QVERIFY(!course->GetPoint(-1));
    QVERIFY(!course->GetPoint(13));
    for (int i = 0; i < course->GetNumPoints(); ++i) {
        const ZYLTPOnPartPoint *point = course->GetPoint(i);
        QVERIFY(qobject_cast<const ZYLTPTowPoint *>(point));
        QCOMPARE(course->GetPointIndex(point), i);
        QCOMPARE(point->GetCourse(), course);
        QCOMPARE(course->GetPoint(i), point); // the same view every time
        const ZYLTPTrajectory *trajectory = point->GetTrajectory();
        QCOMPARE(trajectory->GetCourse(), course);
        QCOMPARE(trajectory->GetPoint(trajectory->GetPointIndex(point)), point);
    }
    QCOMPARE(course->GetRollOutPoint(), course->GetPoint(12));
    QCOMPARE(course->GetPoint(0)->GetTipPoint(), ZYLMathPoint(-10.0, 50.0, 0.0));
    QCOMPARE(course->GetRollOutPoint()->GetTipPoint(), ZYLMathPoint(110.0, 50.0, 0.0));
    QCOMPARE(course->GetPointIndex(t.courses[0]->GetPoint(3)), -1);
    QCOMPARE(course->GetPointIndex(nullptr), -1);
}

void tst_ZYLTPCourse::trajectoryList()
{
    ZYLTPProgramBuilder builder;
    auto *roller = builder.AddRoller(QStringLiteral("R"), 10, 10);
    auto *procedure = builder.AddRollLayupProcedure(QStringLiteral("P"), QString());
    auto *configuration = builder.AddMachineConfiguration(procedure, nullptr, roller);
    const ZYLTPTowCourse *course =
        builder.AddTowCourse(procedure, configuration, ZYLTPStraightCourse(0, 10, {{4, 0x3}, {3, 0x1}}));
    QCOMPARE(course->GetNumTrajectories(), 6);
    QVERIFY(qobject_cast<const ZYLTPApproachTrajectory *>(course->GetTrajectory(0)));
    QCOMPARE(course->GetTrajectory(0), course->GetApproachTrajectory());
    QCOMPARE(course->GetTrajectory(1), course->GetRollInTrajectory());
    QVERIFY(!qobject_cast<const ZYLTPTowTrajectory *>(course->GetTrajectory(1)));
    QVERIFY(qobject_cast<const ZYLTPTowTrajectory *>(course->GetTrajectory(2)));
    QVERIFY(qobject_cast<const ZYLTPTowTrajectory *>(course->GetTrajectory(3)));
    QCOMPARE(course->GetTrajectory(4), course->GetRollOutTrajectory());
    QVERIFY(qobject_cast<const ZYLTPRetractTrajectory *>(course->GetTrajectory(5)));
    QVERIFY(!course->GetTrajectory(6));
    for (int k = 0; k < 6; ++k)
        QCOMPARE(course->GetTrajectoryIndex(course->GetTrajectory(k)), k);
    // The second run starts at tow point 5 (index 5 of the point list).
    QCOMPARE(course->GetPoint(4)->GetTrajectory(), course->GetTrajectory(2));
    QCOMPARE(course->GetPoint(5)->GetTrajectory(), course->GetTrajectory(3));
    QCOMPARE(course->GetPoint(8)->GetTrajectory(), course->GetRollOutTrajectory());
    // Lengths of the on-part trajectories: 10, 40, 20, 10, adding up to the course's.
    const double lengths[] = {10.0, 40.0, 20.0, 10.0};
    double sum = 0.0;
    for (int k = 1; k <= 4; ++k) {
        QVERIFY(qAbs(course->GetTrajectory(k)->GetLength() - lengths[k - 1]) < 1e-9);
        sum += course->GetTrajectory(k)->GetLength();
    }
    QVERIFY(qAbs(sum - course->GetLength()) < 1e-9);
}

void tst_ZYLTPCourse::toolFrame_data()
{
    QTest::addColumn<double>("forward");
    QTest::addColumn<double>("side");
    QTest::addColumn<ZYLMathVector>("axis");
    QTest::newRow("untilted") << 0.0 << 0.0 << ZYLMathVector(0, 0, 1);
    QTest::newRow("forward") << 0.3 << 0.0 << ZYLMathVector(std::sin(0.3), 0, std::cos(0.3));
    QTest::newRow("side") << 0.0 << 0.2 << ZYLMathVector(0, -std::sin(0.2), std::cos(0.2));
}

void tst_ZYLTPCourse::toolFrame()
{
    QFETCH(double, forward);
    QFETCH(double, side);
    QFETCH(ZYLMathVector, axis);
    ZYLTPTestProgram t(1);
    ZYLTPTowCourse *course = t.courses[0];
    t.Open();
    course->SetRangeTilt(course->GetPoint(3), course->GetPoint(5), forward, side);
    t.Commit();
    const ZYLMathAxis tilted = course->GetPoint(4)->GetAxis(true);
    QVERIFY((tilted.GetThirdDirection() - axis).GetLength() < 1e-12);
    QCOMPARE(tilted.GetOrigin(), ZYLMathPoint(30.0, 0.0, 0.0));
    const ZYLMathAxis untilted = course->GetPoint(4)->GetAxis(false);
    QVERIFY((untilted.GetThirdDirection() - ZYLMathVector(0, 0, 1)).GetLength() < 1e-12);
    QVERIFY((untilted.GetFirstDirection() - ZYLMathVector(1, 0, 0)).GetLength() < 1e-12);
    QVERIFY((untilted.GetSecondDirection() - ZYLMathVector(0, 1, 0)).GetLength() < 1e-12);
    // Outside the range the frame stays untilted (tilts change in steps at trajectory ends).
    QVERIFY((course->GetPoint(5)->GetAxis().GetThirdDirection() - ZYLMathVector(0, 0, 1)).GetLength() < 1e-12);
}

void tst_ZYLTPCourse::onPartTime_data()
{
    QTest::addColumn<QList<int>>("points");
    QTest::addColumn<QList<quint64>>("masks");
    QTest::addColumn<double>("seconds");
    // One run (100 mm): roll-in 10 mm at 600, add 10 mm at 300, cut 10 mm at 200, 80 mm at 600,
    // roll-out 10 mm at 600 mm/min: 0.25 min.
    QTest::newRow("one run") << QList<int>{11} << QList<quint64>{0xF} << 15.0;
    // Tows {1,2} for 50 mm then {1} for 50 mm: the first run adds and cuts tow 2, the second
    // only cuts: 10/600 + (10/300 + 10/200 + 30/600) + (10/200 + 40/600) + 10/600 min.
    QTest::newRow("tow cut in the middle")
        << QList<int>{5, 6} << QList<quint64>{0x3, 0x1}
        << (10 / 600.0 + 10 / 300.0 + 10 / 200.0 + 30 / 600.0 + 10 / 200.0 + 40 / 600.0 + 10 / 600.0) * 60;
    // Tows {1} then {1,2}: the second run adds tow 2.
    QTest::newRow("tow added in the middle")
        << QList<int>{5, 6} << QList<quint64>{0x1, 0x3}
        << (10 / 600.0 + 10 / 300.0 + 40 / 600.0 + 10 / 300.0 + 10 / 200.0 + 30 / 600.0 + 10 / 600.0) * 60;
}

void tst_ZYLTPCourse::onPartTime()
{
    QFETCH(QList<int>, points);
    QFETCH(QList<quint64>, masks);
    QFETCH(double, seconds);
    ZYLTPTestProgram t(0);
    ZYLTPProgramBuilder::CourseData data = ZYLTPStraightCourse(0, 10, {});
    for (int i = 0; i < points.size(); ++i) {
        ZYLTPProgramBuilder::TowRun run;
        run.numPoints = points[i];
        run.towMask = ZYLCompTowMask(masks[i]);
        run.values.feedRate = 600;
        data.runs.push_back(run);
        for (int j = 0; j < points[i]; ++j) {
            data.tips.emplace_back(data.tips.size() * 10.0, 0, 0);
            data.normals.emplace_back(0, 0, 1);
        }
    }
    const ZYLTPTowCourse *course = t.builder.AddTowCourse(t.procedure, t.configuration, data);
    QVERIFY2(qAbs(course->GetOnPartTimeEstimate() - seconds) < 1e-9, qPrintable(QString::number(course->GetOnPartTimeEstimate())));
    QVERIFY(qAbs(t.procedure->GetLayingTimeEstimate() - seconds) < 1e-9);
}

void tst_ZYLTPCourse::towLengths()
{
    ZYLTPTestProgram t(0);
    const ZYLTPTowCourse *course =
        t.builder.AddTowCourse(t.procedure, t.configuration, ZYLTPStraightCourse(0, 10, {{5, 0x3}, {6, 0x9}}));
    QCOMPARE(course->GetUsedMask().GetString(), QStringLiteral("1,2,4"));
    const QList<double> lengths = course->GetTowLengths();
    QCOMPARE(lengths.size(), 4);
    const double expected[] = {100.0, 50.0, 0.0, 50.0};
    for (int tow = 0; tow < 4; ++tow)
        QVERIFY(qAbs(lengths[tow] - expected[tow]) < 1e-9);
    QVERIFY(qAbs(course->GetMaterialUsage() - 200.0) < 1e-9);
    t.builder.AddTowCourse(t.procedure, t.configuration, ZYLTPStraightCourse(50, 10, {{11, 0x1}}));
    QVERIFY(qAbs(t.procedure->GetTotalMaterialLength() - 300.0) < 1e-9);
    QCOMPARE(t.procedure->GetTowLengths().size(), 4);
    QVERIFY(qAbs(t.procedure->GetTowLengths()[0] - 200.0) < 1e-9);
    QVERIFY(qAbs(t.procedure->GetOverallCourseLength() - 240.0) < 1e-9);
}

void tst_ZYLTPCourse::rollInOutMoveOnePoint()
{
    ZYLTPTestProgram t(1);
    ZYLTPTowCourse *course = t.courses[0];
    const ZYLTPOnPartPoint *rollOut = course->GetRollOutPoint();
    const ZYLTPOnPartPoint *middle = course->GetPoint(6);
    t.Open();
    course->SetRollIn(25.0);
    course->SetRollOut(4.0);
    t.Commit();
    QCOMPARE(course->GetNumPoints(), 13);
    QCOMPARE(course->GetPoint(0)->GetTipPoint(), ZYLMathPoint(-25.0, 0.0, 0.0));
    QCOMPARE(rollOut->GetTipPoint(), ZYLMathPoint(104.0, 0.0, 0.0));
    QVERIFY(qAbs(course->GetLength() - 129.0) < 1e-9);
    QVERIFY(qAbs(course->ComputePointLength(middle) - 75.0) < 1e-9);
    QVERIFY(qAbs(course->ComputePointLength(rollOut) - 129.0) < 1e-9);
    QVERIFY(qAbs(course->GetRollInTrajectory()->GetLength() - 25.0) < 1e-9);
    t.container.Undo();
    QCOMPARE(course->GetRollOutPoint(), rollOut);
    QCOMPARE(course->GetPoint(0)->GetTipPoint(), ZYLMathPoint(-10.0, 0.0, 0.0));
    QCOMPARE(rollOut->GetTipPoint(), ZYLMathPoint(110.0, 0.0, 0.0));
    QVERIFY(qAbs(course->GetLength() - 120.0) < 1e-9);
}

void tst_ZYLTPCourse::approachRetractGeometry()
{
    ZYLTPTestProgram t(1);
    ZYLTPTowCourse *course = t.courses[0];
    const ZYLTPPoint *start = course->GetApproachTrajectory()->GetPoint(0);
    QVERIFY((start->GetTipPoint() - ZYLMathPoint(-10, 0, 20)).GetLength() < 1e-9);
    QCOMPARE(course->GetApproachTrajectory()->GetPoint(1)->GetTipPoint(), course->GetPoint(0)->GetTipPoint());
    t.Open();
    const_cast<ZYLTPApproachTrajectory *>(course->GetApproachTrajectory())->SetAngle(M_PI / 6);
    const_cast<ZYLTPRetractTrajectory *>(course->GetRetractTrajectory())->SetLength(40.0);
    t.Commit();
    // Same point object, recomputed: 20 mm at 30 degrees behind the roll-in point.
    QCOMPARE(course->GetApproachTrajectory()->GetPoint(0), start);
    QVERIFY((start->GetTipPoint() - ZYLMathPoint(-10 - 20 * std::cos(M_PI / 6), 0, 10)).GetLength() < 1e-9);
    QVERIFY((course->GetRetractTrajectory()->GetPoint(1)->GetTipPoint() - ZYLMathPoint(110, 0, 40)).GetLength() < 1e-9);
    // 20 + 40 mm at the rapid feed rate of 20000 mm/min.
    QVERIFY(qAbs(t.procedure->GetApproachTimeEstimate() + t.procedure->GetRetractTimeEstimate() - 60.0 / 20000 * 60)
            < 1e-9);
    t.container.Undo();
    QVERIFY((start->GetTipPoint() - ZYLMathPoint(-10, 0, 20)).GetLength() < 1e-9);
}

void tst_ZYLTPCourse::pointOfAnotherCourseRefused()
{
    ZYLTPTestProgram t(2);
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, t.courses[0]->ComputePointLength(t.courses[1]->GetPoint(2)));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, t.courses[0]->ComputePointLength(nullptr));
}

QTEST_GUILESS_MAIN(tst_ZYLTPCourse)
#include "tst_ZYLTPCourse.moc"
