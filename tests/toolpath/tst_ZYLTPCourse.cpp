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

#include <QTest>

class tst_ZYLTPCourse : public QObject {
    Q_OBJECT
private slots:
    void pointsAndIndexes();
    void trajectoryList();
    void towLengths();
    void pointOfAnotherCourseRefused();
};

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

void tst_ZYLTPCourse::pointOfAnotherCourseRefused()
{
    ZYLTPTestProgram t(2);
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, t.courses[0]->ComputePointLength(t.courses[1]->GetPoint(2)));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, t.courses[0]->ComputePointLength(nullptr));
}

QTEST_GUILESS_MAIN(tst_ZYLTPCourse)
#include "tst_ZYLTPCourse.moc"
