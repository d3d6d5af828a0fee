// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Breaking a course at one of its break ranges: the split point, the two pieces with their
// runs, ends and values, break ranges, indexes, laying order and links, refusals, undo.
#include "ZYLTPEditTestSupport.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPSafetyPlaneCourseLink.h"

#include "ZYLSysException.h"

#include <QTest>

class tst_ZYLTPCourseBreak : public QObject {
    Q_OBJECT
private slots:
    void splitPoint_data();
    void splitPoint();
    void runsSplit_data();
    void runsSplit();
    void piecesOfCurvedCourse();
    void breakRangesShared();
    void orderIndexesAndLinks_data();
    void orderIndexesAndLinks();
    void refused_data();
    void refused();
    void undoRedoKeepObjects();
};

namespace {
// Straight test course: tow point i (1 to 11) lies at arc length 10 i from the roll-in point.
ZYLTPCourse *BreakAt(ZYLTPTestProgram &t, ZYLTPTowCourse *course, double start, double end)
{
    const ZYLTPBreakRange *range = t.builder.AddBreakRange(course, start, end);
    t.Open();
    return course->Break(range);
}
} // namespace

void tst_ZYLTPCourseBreak::splitPoint_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("end");
    QTest::addColumn<int>("split");
    QTest::newRow("nearest point") << 48.0 << 56.0 << 5;
    QTest::newRow("tie takes the earlier point") << 54.0 << 56.0 << 5;
    QTest::newRow("two tow points left at the end") << 100.0 << 110.0 << 10;
    QTest::newRow("two tow points left at the start") << 15.0 << 28.0 << 2;
}

void tst_ZYLTPCourseBreak::splitPoint()
{
    QFETCH(double, start);
    QFETCH(double, end);
    QFETCH(int, split);
    ZYLTPTestProgram t(1);
    ZYLTPTowCourse *course = t.courses[0];
    const ZYLMathPoint splitTip = course->GetPoint(split)->GetTipPoint();
    const ZYLMathPoint lastTip = course->GetRollOutPoint()->GetTipPoint();
    ZYLTPCourse *piece = BreakAt(t, course, start, end);
    QVERIFY(qobject_cast<ZYLTPTowCourse *>(piece));
    QCOMPARE(course->GetNumPoints(), split + 2);
    QCOMPARE(piece->GetNumPoints(), 13 - split + 1);
    QCOMPARE(course->GetPoint(split)->GetTipPoint(), splitTip);
    QCOMPARE(piece->GetPoint(1)->GetTipPoint(), splitTip);
    // Each piece gets the course's roll-in and roll-out distances.
    QCOMPARE(course->GetRollOutPoint()->GetTipPoint(), splitTip + ZYLMathVector(10.0, 0.0, 0.0));
    QCOMPARE(piece->GetRollInPoint()->GetTipPoint(), splitTip - ZYLMathVector(10.0, 0.0, 0.0));
    QCOMPARE(piece->GetRollOutPoint()->GetTipPoint(), lastTip);
    QVERIFY(ZYLTPNear(course->GetLength() + piece->GetLength(), 120.0 + 20.0));
    QCOMPARE(course->GetNumBreakRanges(), 0);
}

void tst_ZYLTPCourseBreak::runsSplit_data()
{
    QTest::addColumn<double>("middle");
    QTest::addColumn<QList<ZYLTPRun>>("front");
    QTest::addColumn<QList<ZYLTPRun>>("back");
    // Runs: points 1-4 tows 0-3, 5-8 tows 0-7, 9-11 tows 2-5.
    QTest::newRow("inside a run") << 60.0 << QList<ZYLTPRun>{{1, 4, 0x0F}, {5, 2, 0xFF}}
                                  << QList<ZYLTPRun>{{1, 3, 0xFF}, {4, 3, 0x3C}};
    QTest::newRow("where a run starts") << 50.0 << QList<ZYLTPRun>{{1, 5, 0x0F}}
                                        << QList<ZYLTPRun>{{1, 4, 0xFF}, {5, 3, 0x3C}};
}

void tst_ZYLTPCourseBreak::runsSplit()
{
    QFETCH(double, middle);
    QFETCH(QList<ZYLTPRun>, front);
    QFETCH(QList<ZYLTPRun>, back);
    ZYLTPTestProgram t(0);
    ZYLTPTowCourse *course =
        t.builder.AddTowCourse(t.procedure, t.configuration, ZYLTPStraightCourse(0.0, 10.0, {{4, 0x0F}, {4, 0xFF}, {3, 0x3C}}));
    const QList<double> lengths = course->GetTowLengths();
    auto *piece = qobject_cast<ZYLTPTowCourse *>(BreakAt(t, course, middle - 1.0, middle + 1.0));
    QCOMPARE(ZYLTPRunsOf(course), front);
    QCOMPARE(ZYLTPRunsOf(piece), back);
    // The tows lay the same stretches in all: only roll-in and roll-out were added.
    QList<double> sum = course->GetTowLengths();
    const QList<double> more = piece->GetTowLengths();
    sum.resize(std::max(sum.size(), more.size()), 0.0);
    for (qsizetype i = 0; i < more.size(); ++i)
        sum[i] += more[i];
    QVERIFY(ZYLTPNear(sum, lengths));
    // Both pieces keep the width of the course, whatever tows they still use.
    QCOMPARE(course->GetNumTows(), 8);
    QCOMPARE(piece->GetNumTows(), 8);
}

void tst_ZYLTPCourseBreak::piecesOfCurvedCourse()
{
    ZYLTPTestProgram t(0);
    ZYLTPTowCourse *course = t.builder.AddTowCourse(t.procedure, t.configuration, ZYLTPCurvedCourse(0.0));
    const int n = course->GetNumPoints();
    QList<ZYLMathAxis> frames;
    for (int i = 0; i < n; ++i)
        frames << course->GetPointFrame(i, true);
    const double stretch = course->GetLength() - 20.0;
    const double material = course->GetMaterialUsage();
    const double middle = course->ComputePointLength(course->GetPoint(8));
    const ZYLTPApproachTrajectory *approach = course->GetApproachTrajectory();
    const ZYLTPRetractTrajectory *retract = course->GetRetractTrajectory();
    const ZYLTPOnPartTrajectory *rollOut = course->GetRollOutTrajectory();
    ZYLTPCourse *piece = BreakAt(t, course, middle - 0.1, middle + 0.1);
    // Both pieces keep the tool frames of their points, the split point in both.
    for (int i = 1; i <= 8; ++i)
        QVERIFY(course->GetPointFrame(i, true).IsEqual(frames[i], 1e-12, 1e-12));
    for (int i = 1; i < piece->GetNumPoints(); ++i)
        QVERIFY(piece->GetPointFrame(i, true).IsEqual(frames[i + 7], 1e-12, 1e-12));
    QVERIFY(ZYLTPNear(course->GetLength() - 20.0 + piece->GetLength() - 20.0, stretch));
    QVERIFY(ZYLTPNear(static_cast<ZYLTPTowCourse *>(piece)->GetMaterialUsage() + course->GetMaterialUsage(), material));
    // The new course takes over the old end, this course gets one like it.
    QCOMPARE(piece->GetRetractTrajectory(), retract);
    QCOMPARE(piece->GetRollOutTrajectory(), rollOut);
    QCOMPARE(course->GetApproachTrajectory(), approach);
    QVERIFY(course->GetRetractTrajectory() != retract);
    QCOMPARE(course->GetRetractTrajectory()->GetAngle(), 0.7);
    QCOMPARE(piece->GetApproachTrajectory()->GetAngle(), 0.3);
    QCOMPARE(piece->GetRollIn(), 7.0);
    QCOMPARE(piece->GetRollOut(), 13.0);
    QCOMPARE(course->GetRollOut(), 13.0);
    QCOMPARE(&piece->GetMachineConfiguration(), &course->GetMachineConfiguration());
    QCOMPARE(piece->GetSuffixInstructions(), QStringList({QStringLiteral("M102"), QStringLiteral("M103")}));
    QCOMPARE(piece->GetCutFeedRate(), course->GetCutFeedRate());
    for (int k = 0; k < piece->GetNumTrajectories(); ++k)
        QCOMPARE(piece->GetTrajectory(k)->GetCourse(), piece);
}

void tst_ZYLTPCourseBreak::breakRangesShared()
{
    ZYLTPTestProgram t(1);
    ZYLTPTowCourse *course = t.courses[0];
    const ZYLTPBreakRange *early = t.builder.AddBreakRange(course, 15.0, 25.0);
    const ZYLTPBreakRange *late = t.builder.AddBreakRange(course, 85.0, 95.0);
    const ZYLTPBreakRange *across = t.builder.AddBreakRange(course, 48.0, 70.0); // middle after 50
    const ZYLMathPoint tip = course->GetPoint(9)->GetTipPoint();
    ZYLTPCourse *piece = BreakAt(t, course, 45.0, 55.0);
    QCOMPARE(course->GetNumBreakRanges(), 1);
    QCOMPARE(course->GetBreakRange(0), early);
    QCOMPARE(piece->GetNumBreakRanges(), 2);
    QCOMPARE(piece->GetBreakRange(0), late);
    QCOMPARE(piece->GetBreakRange(1), across);
    QCOMPARE(late->GetCourse(), piece);
    // The split point (50 here) lies at the roll-in distance (10) in the new course; a range
    // reaching before it reaches into the new roll-in.
    QCOMPARE(late->GetStart(), 45.0);
    QCOMPARE(late->GetEnd(), 55.0);
    QCOMPARE(across->GetStart(), 8.0);
    QCOMPARE(across->GetEnd(), 30.0);
    // Breaking on at the moved range cuts at the same place of the part.
    QCOMPARE(piece->Break(late)->GetPoint(1)->GetTipPoint(), tip);
}

void tst_ZYLTPCourseBreak::orderIndexesAndLinks_data()
{
    QTest::addColumn<bool>("linked");
    QTest::addColumn<int>("strategy");
    QTest::newRow("unlinked") << false << 0;
    QTest::newRow("chain, linear joint") << true << int(ZYLTPCourseLink::Linear);
    QTest::newRow("chain, safety plane joint") << true << int(ZYLTPCourseLink::SafetyPlane);
    QTest::newRow("chain, custom joint") << true << int(ZYLTPCourseLink::Custom);
}

void tst_ZYLTPCourseBreak::orderIndexesAndLinks()
{
    QFETCH(bool, linked);
    QFETCH(int, strategy);
    ZYLTPTestProgram t(3);
    t.builder.SetLayingOrder(t.procedure, {2, 0, 1});
    const ZYLTPCourseLink *out = nullptr;
    if (linked) {
        t.builder.AddLink(t.procedure, nullptr, t.courses[2], ZYLTPCourseLink::Linear);
        t.builder.AddLink(t.procedure, t.courses[2], t.courses[0], ZYLTPCourseLink::Linear);
        out = t.builder.AddLink(t.procedure, t.courses[0], t.courses[1], ZYLTPCourseLink::Linear);
        t.builder.AddLink(t.procedure, t.courses[1], nullptr, ZYLTPCourseLink::Linear);
    }
    const int links = t.procedure->GetNumLinks();
    const ZYLTPBreakRange *range = t.builder.AddBreakRange(t.courses[0], 50.0, 60.0);
    t.Open();
    t.procedure->SetDefaultStrategy(ZYLTPCourseLink::OffPartMotionStrategy(strategy));
    ZYLTPCourse *piece = t.courses[0]->Break(range);
    QCOMPARE(t.procedure->GetNumCourses(), 4);
    QCOMPARE(t.procedure->GetCourseIndex(piece), 1);
    QCOMPARE(t.procedure->GetCourseIndex(t.courses[1]), 2);
    QCOMPARE(t.procedure->GetCourseIndex(t.courses[2]), 3);
    QCOMPARE(t.procedure->GetLayingOrder(), (QList<int>{3, 0, 1, 2}));
    QCOMPARE(t.procedure->GetCourseByPosition(2), piece);
    if (!linked) {
        QCOMPARE(t.procedure->GetNumLinks(), 0);
        return;
    }
    QCOMPARE(t.procedure->GetNumLinks(), links + 1);
    QCOMPARE(piece->GetRetractLink(), out);
    QCOMPARE(out->GetFromCourse(), piece);
    QCOMPARE(out->GetToCourse(), t.courses[1]);
    const ZYLTPCourseLink *joint = t.courses[0]->GetRetractLink();
    QCOMPARE(joint->GetToCourse(), piece);
    QCOMPARE(piece->GetApproachLink(), joint);
    QCOMPARE(joint->GetStrategy(), ZYLTPCourseLink::OffPartMotionStrategy(strategy));
    QVERIFY(t.procedure->GetCoursesUnlinkedAtApproach().isEmpty());
    QVERIFY(t.procedure->GetCoursesUnlinkedAtRetract().isEmpty());
    QVERIFY(t.procedure->IsLinkedInChain(t.courses[2], t.courses[1]));
    QCOMPARE(t.procedure->GetLinkByPosition(3), out);
    // The joint runs from this course's new end to the new course's start.
    QCOMPARE(joint->GetPoint(0)->GetTipPoint(), t.courses[0]->GetRetractTrajectory()->GetFarFrame().GetOrigin());
    QCOMPARE(joint->GetPoint(joint->GetNumPoints() - 1)->GetTipPoint(),
             piece->GetApproachTrajectory()->GetFarFrame().GetOrigin());
}

void tst_ZYLTPCourseBreak::refused_data()
{
    // 0 null, 1 range of another course, 2-3 piece too short, 4 no transaction, 5 removed course
    QTest::addColumn<int>("kind");
    QTest::newRow("null range") << 0;
    QTest::newRow("range of another course") << 1;
    QTest::newRow("one tow point before") << 2;
    QTest::newRow("one tow point after") << 3;
    QTest::newRow("outside a transaction") << 4;
    QTest::newRow("course removed") << 5;
}

void tst_ZYLTPCourseBreak::refused()
{
    QFETCH(int, kind);
    ZYLTPTestProgram t(2);
    t.builder.AddLink(t.procedure, t.courses[0], t.courses[1], ZYLTPCourseLink::Linear);
    const ZYLTPBreakRange *ranges[] = {nullptr, t.builder.AddBreakRange(t.courses[1], 40.0, 60.0),
                                       t.builder.AddBreakRange(t.courses[0], 0.0, 30.0),
                                       t.builder.AddBreakRange(t.courses[0], 104.0, 120.0),
                                       t.builder.AddBreakRange(t.courses[0], 40.0, 60.0),
                                       t.builder.AddBreakRange(t.courses[0], 40.0, 60.0)};
    if (kind != 4)
        t.Open();
    if (kind == 5)
        t.procedure->RemoveCourse(t.courses[0]);
    const QByteArray before = ZYLTPBytes(t.program);
    const int courses = t.procedure->GetNumCourses();
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, t.courses[0]->Break(ranges[kind]));
    QCOMPARE(ZYLTPBytes(t.program), before);
    QCOMPARE(t.procedure->GetNumCourses(), courses);
    if (kind == 5)
        QVERIFY_THROWS_EXCEPTION(ZYLSysException, t.courses[0]->Reverse(true));
}

void tst_ZYLTPCourseBreak::undoRedoKeepObjects()
{
    ZYLTPTestProgram t(2);
    t.builder.AddLink(t.procedure, nullptr, t.courses[0], ZYLTPCourseLink::Linear);
    t.builder.AddLink(t.procedure, t.courses[0], t.courses[1], ZYLTPCourseLink::SafetyPlane);
    t.builder.AddBreakRange(t.courses[0], 80.0, 90.0);
    const ZYLTPBreakRange *range = t.builder.AddBreakRange(t.courses[0], 30.0, 40.0);
    const QByteArray before = ZYLTPBytes(t.program);
    const QList<const QObject *> objects = ZYLTPModelObjects(t.procedure);
    t.Open();
    t.courses[0]->Break(range);
    t.Commit();
    const QByteArray after = ZYLTPBytes(t.program);
    const QList<const QObject *> objectsAfter = ZYLTPModelObjects(t.procedure);
    QVERIFY(after != before);
    t.container.Undo();
    QCOMPARE(ZYLTPBytes(t.program), before);
    QVERIFY(ZYLTPModelObjects(t.procedure) == objects);
    t.container.Redo();
    QCOMPARE(ZYLTPBytes(t.program), after);
    QVERIFY(ZYLTPModelObjects(t.procedure) == objectsAfter);
}

QTEST_GUILESS_MAIN(tst_ZYLTPCourseBreak)
#include "tst_ZYLTPCourseBreak.moc"
