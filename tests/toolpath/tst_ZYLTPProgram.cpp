// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Programs: counted references with a weak guard, resources and their ids, procedure kinds,
// estimates, and the builder's validation.
#include "ZYLTPTestProgram.h"

#include "ZYLToolPath.h"
#include "ZYLTPInspectionProcedure.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPProcedureLink.h"

#include "ZYLSysException.h"
#include "ZYLSysOutOfBoundsException.h"

#include <QPointer>
#include <QTest>

class tst_ZYLTPProgram : public QObject {
    Q_OBJECT
private slots:
    void countedReferenceAndWeakGuard();
    void resourcesAndKinds();
    void procedureEstimates();
    void builderRefuses_data();
    void builderRefuses();
    void breakRanges();
};

void tst_ZYLTPProgram::countedReferenceAndWeakGuard()
{
    QPointer<ZYLTPProgram> guard;
    QPointer<ZYLTPCourse> course;
    {
        ZYLTPProgramBuilder builder;
        auto *roller = builder.AddRoller(QStringLiteral("R"), 10, 10);
        auto *procedure = builder.AddRollLayupProcedure(QStringLiteral("P"), QString());
        course = builder.AddTowCourse(procedure, builder.AddMachineConfiguration(procedure, nullptr, roller),
                                      ZYLTPStraightCourse(0, 10, {{3, 1}}));
        guard = builder.TakeProgram();
    }
    QVERIFY(guard);
    guard->AddReference();
    const ZYLTPProgram *shared = guard;
    shared->AddReference();
    QCOMPARE(guard->GetReferenceCount(), 2);
    shared->RemoveReference();
    QVERIFY(guard);
    QVERIFY(course);
    guard->RemoveReference();
    QVERIFY(!guard);
    QVERIFY(!course);
}

void tst_ZYLTPProgram::resourcesAndKinds()
{
    ZYLTPTestProgram t(1);
    auto *second = t.builder.AddRoller(QStringLiteral("Roller 2"), 25, 40);
    auto *head = t.builder.AddMachineHead(QStringLiteral("Head"));
    t.builder.SetCollisionPoints(head, {{ZYLMathPoint(0, 0, 100), 30.0}});
    auto *scan = t.builder.AddInspectionProcedure(QStringLiteral("Scan"), QString(), second,
                                                  {ZYLMathPoint(0, 0, 0), ZYLMathPoint(30, 40, 0)}, 100.0);
    QCOMPARE(t.roller->GetId(), 0);
    QCOMPARE(second->GetId(), 1);
    QCOMPARE(t.program->GetTool(1), second);
    QCOMPARE(head->GetId(), 0);
    QCOMPARE(head->GetCollisionPoints().size(), 1);
    QCOMPARE(t.program->GetNumProcedures(), 2);
    QVERIFY(qobject_cast<ZYLTPRollLayupProcedure *>(t.program->GetProcedure(0)));
    QVERIFY(!qobject_cast<ZYLTPRollLayupProcedure *>(t.program->GetProcedure(1)));
    QCOMPARE(t.program->GetProcedure(1), scan);
    // 50 mm at 100 mm/min.
    QVERIFY(qAbs(scan->GetTotalTimeEstimate() - 30.0) < 1e-9);
    QCOMPARE(t.courses[0]->GetMachineConfiguration().GetTool(), t.roller);
    QCOMPARE(t.procedure->GetTools(), (QList<const ZYLTPResource *>{t.roller}));
    QCOMPARE(t.courses[0]->GetProcedure()->GetProgram(), t.program);
    QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, t.builder.SetCollisionPoints(head, {{ZYLMathPoint(), -1.0}}));
    QCOMPARE(head->GetCollisionPoints().size(), 1);
}

void tst_ZYLTPProgram::procedureEstimates()
{
    ZYLTPTestProgram t(2);
    ZYLTPRollLayupProcedure *p = t.procedure;
    t.Open();
    p->LinkCourses(nullptr, t.courses[0], nullptr);
    p->LinkCourses(t.courses[0], t.courses[1], nullptr);
    p->LinkCourses(t.courses[1], nullptr, nullptr);
    t.Commit();
    // Each course: 15 s on the part (see the course tests); 20 mm approach and retract at
    // 20000 mm/min; one 230 mm link.
    QVERIFY(qAbs(p->GetLayingTimeEstimate() - 30.0) < 1e-9);
    QVERIFY(qAbs(p->GetLinkingTimeEstimate() - 230.0 / 20000 * 60) < 1e-9);
    const double approach = p->GetApproachLink()->GetTimeEstimate() + 2 * 20.0 / 20000 * 60;
    QVERIFY(qAbs(p->GetApproachTimeEstimate() - approach) < 1e-9);
    QVERIFY(p->GetApproachLink()->GetTimeEstimate() > 0.0);
    const double total = p->GetLayingTimeEstimate() + p->GetLinkingTimeEstimate() + p->GetApproachTimeEstimate()
                         + p->GetRetractTimeEstimate();
    QVERIFY(qAbs(p->GetTotalTimeEstimate() - total) < 1e-9);
    const ZYLTPProcedure *base = p;
    QVERIFY(qAbs(base->GetTotalTimeEstimate() - total) < 1e-9);
    // Home (origin) to 50 mm above the first approach start (-10, 0, 20), then down.
    QVERIFY(qAbs(p->GetApproachLink()->GetLength() - (std::hypot(10.0, 70.0) + 50.0)) < 1e-9);
    t.Open();
    p->SetRapidFeedRate(10000.0);
    t.Commit();
    QVERIFY(qAbs(p->GetLinkingTimeEstimate() - 230.0 / 10000 * 60) < 1e-9);
}

void tst_ZYLTPProgram::builderRefuses_data()
{
    QTest::addColumn<int>("fault");
    QTest::newRow("one tow point") << 0;
    QTest::newRow("runs do not cover the points") << 1;
    QTest::newRow("normal missing") << 2;
    QTest::newRow("tilt out of range") << 3;
    QTest::newRow("zero feed rate") << 4;
    QTest::newRow("zero normal") << 5;
    QTest::newRow("forced rate above 1") << 6;
    QTest::newRow("coincident points") << 7;
}

void tst_ZYLTPProgram::builderRefuses()
{
    QFETCH(int, fault);
    ZYLTPTestProgram t(1);
    ZYLTPProgramBuilder::CourseData data = ZYLTPStraightCourse(100, 10, {{5, 1}});
    switch (fault) {
    case 0:
        data = ZYLTPStraightCourse(100, 10, {{1, 1}});
        break;
    case 1:
        data.runs[0].numPoints = 4;
        break;
    case 2:
        data.normals.pop_back();
        break;
    case 3:
        data.runs[0].values.sideTilt = 1.6;
        break;
    case 4:
        data.rollOutValues.feedRate = 0.0;
        break;
    case 5:
        data.normals[2] = ZYLMathVector();
        break;
    case 6:
        data.runs[0].forcedRates = {0.5, 1.01};
        break;
    case 7:
        data.tips.assign(5, ZYLMathPoint(1, 1, 1));
        break;
    }
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, t.builder.AddTowCourse(t.procedure, t.configuration, data));
    QCOMPARE(t.procedure->GetNumCourses(), 1);
    QCOMPARE(t.procedure->GetLayingOrder(), QList<int>{0});
}

void tst_ZYLTPProgram::breakRanges()
{
    ZYLTPTestProgram t(1);
    ZYLTPBreakRange *range = t.builder.AddBreakRange(t.courses[0], 40.0, 55.0);
    QCOMPARE(t.courses[0]->GetNumBreakRanges(), 1);
    QCOMPARE(t.courses[0]->GetBreakRange(0), range);
    QCOMPARE(range->GetCourse(), t.courses[0]);
    QCOMPARE(range->GetLength(), 15.0);
    QVERIFY(!t.courses[0]->GetBreakRange(1));
    QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, t.builder.AddBreakRange(t.courses[0], 50.0, 130.0));
    QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, t.builder.AddBreakRange(t.courses[0], 50.0, 40.0));
    QCOMPARE(t.courses[0]->GetNumBreakRanges(), 1);
}

QTEST_GUILESS_MAIN(tst_ZYLTPProgram)
#include "tst_ZYLTPProgram.moc"
