// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Edits of all courses of a procedure: reversing every other or every course, and placing
// break ranges so that breaking at all of them leaves no course longer than a length.
#include "ZYLTPEditTestSupport.h"

#include "ZYLTPDemoGenerator.h"

#include "ZYLSysOutOfBoundsException.h"

#include <QTest>

#include <limits>
#include <numeric>

class tst_ZYLTPProcedureEdit : public QObject {
    Q_OBJECT
private slots:
    void reverseCourses_data();
    void reverseCourses();
    void breakAllCourses_data();
    void breakAllCourses();
    void breakAllRefused_data();
    void breakAllRefused();
    void demoProgram();
};

namespace {
bool IsReversed(const ZYLTPCourse *course)
{
    // Test courses run along +x.
    return course->GetRollInPoint()->GetTipPoint().X() > course->GetRollOutPoint()->GetTipPoint().X();
}
} // namespace

void tst_ZYLTPProcedureEdit::reverseCourses_data()
{
    QTest::addColumn<bool>("all");
    QTest::addColumn<QList<bool>>("reversed"); // by index
    // Laying order 3, 1, 0, 2: positions 1 and 3 hold courses 1 and 2.
    QTest::newRow("odd positions") << false << QList<bool>{false, true, true, false};
    QTest::newRow("all") << true << QList<bool>{true, true, true, true};
}

void tst_ZYLTPProcedureEdit::reverseCourses()
{
    QFETCH(bool, all);
    QFETCH(QList<bool>, reversed);
    ZYLTPTestProgram t(4);
    t.builder.SetLayingOrder(t.procedure, {3, 1, 0, 2});
    t.builder.AddLink(t.procedure, nullptr, t.courses[3], ZYLTPCourseLink::Linear);
    t.builder.AddLink(t.procedure, t.courses[3], t.courses[1], ZYLTPCourseLink::Linear);
    t.builder.AddLink(t.procedure, t.courses[1], t.courses[0], ZYLTPCourseLink::SafetyPlane);
    t.builder.AddLink(t.procedure, t.courses[2], nullptr, ZYLTPCourseLink::Linear);
    QList<const ZYLTPCourseLink *> links;
    for (int l = 0; l < t.procedure->GetNumLinks(); ++l)
        links << t.procedure->GetLinkByIndex(l);
    t.Open();
    if (all)
        t.procedure->ReverseAllCourses();
    else
        t.procedure->ReverseOddCourses();
    for (int i = 0; i < 4; ++i)
        QCOMPARE(IsReversed(t.courses[i]), reversed[i]);
    QCOMPARE(t.procedure->GetLayingOrder(), (QList<int>{3, 1, 0, 2}));
    QCOMPARE(t.procedure->GetNumLinks(), links.size());
    for (int l = 0; l < links.size(); ++l)
        QCOMPARE(t.procedure->GetLinkByIndex(l), links[l]);
    QCOMPARE(t.courses[1]->GetRetractLink(), links[2]);
}

void tst_ZYLTPProcedureEdit::breakAllCourses_data()
{
    QTest::addColumn<double>("length");
    QTest::addColumn<int>("pieces"); // of each straight course: 10 + 100 + 10 mm, points 10 mm apart
    // A piece is 10 + 100 / n + 10 mm, up to 10 mm more where the cuts snap to tow points.
    QTest::newRow("just under the length") << 119.0 << 2;
    QTest::newRow("half") << 60.0 << 4;
    QTest::newRow("short pieces") << 45.0 << 7;
    QTest::newRow("shortest allowed") << 41.2 << 9;
}

void tst_ZYLTPProcedureEdit::breakAllCourses()
{
    QFETCH(double, length);
    QFETCH(int, pieces);
    ZYLTPTestProgram t(2);
    t.builder.AddTowCourse(t.procedure, t.configuration, ZYLTPCurvedCourse(100.0));
    ZYLTPTowCourse *shortCourse =
        t.builder.AddTowCourse(t.procedure, t.configuration, ZYLTPStraightCourse(150.0, 10.0, {{3, 0xF}}));
    const ZYLTPBreakRange *kept = t.builder.AddBreakRange(shortCourse, 15.0, 25.0);
    t.builder.AddBreakRange(t.courses[0], 5.0, 6.0);
    const QList<double> towLengths = t.procedure->GetTowLengths();
    const QByteArray before = ZYLTPBytes(t.program);

    t.Open();
    t.procedure->BreakAllCourses(length);
    t.Commit();
    QCOMPARE(t.courses[0]->GetNumBreakRanges(), pieces - 1);
    QCOMPARE(shortCourse->GetNumBreakRanges(), 1);
    QCOMPARE(shortCourse->GetBreakRange(0), kept);
    const double width = std::min(50.0, 10.0 / pieces);
    for (int r = 0; r < pieces - 1; ++r) {
        const ZYLTPBreakRange *range = t.courses[0]->GetBreakRange(r);
        QVERIFY(ZYLTPNear(0.5 * (range->GetStart() + range->GetEnd()), 10.0 + 100.0 * (r + 1) / pieces));
        QVERIFY(ZYLTPNear(range->GetLength(), width));
    }

    // Breaking at every range leaves no course longer than the length.
    t.Open();
    const int courses = t.procedure->GetNumCourses();
    for (int c = 0; c < t.procedure->GetNumCourses(); ++c) {
        ZYLTPCourse *course = t.procedure->GetCourseByIndex(c);
        if (course != shortCourse && course->GetNumBreakRanges() > 0)
            course->Break(course->GetBreakRange(0));
    }
    t.Commit();
    QVERIFY(t.procedure->GetNumCourses() >= courses + 2 * (pieces - 1));
    for (int c = 0; c < t.procedure->GetNumCourses(); ++c) {
        const ZYLTPCourse *course = t.procedure->GetCourseByIndex(c);
        QVERIFY2(course->GetLength() <= length, qPrintable(QStringLiteral("course %1").arg(c)));
    }
    QVERIFY(ZYLTPNear(t.procedure->GetTowLengths(), towLengths, 1e-9));

    t.container.Undo();
    t.container.Undo();
    QCOMPARE(ZYLTPBytes(t.program), before);
}

void tst_ZYLTPProcedureEdit::breakAllRefused_data()
{
    QTest::addColumn<double>("length");
    QTest::addColumn<double>("minimum");
    QTest::newRow("zero") << 0.0 << 0.0;
    QTest::newRow("negative") << -5.0 << 0.0;
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << 0.0;
    // Nine pieces of 10 + 100 / 9 + 10 (+ 10 for snapping) mm at most.
    QTest::newRow("shorter than nine pieces") << 41.0 << 30.0 + 100.0 / 9.0;
}

void tst_ZYLTPProcedureEdit::breakAllRefused()
{
    QFETCH(double, length);
    QFETCH(double, minimum);
    ZYLTPTestProgram t(2);
    t.builder.AddBreakRange(t.courses[1], 40.0, 45.0);
    const QByteArray before = ZYLTPBytes(t.program);
    t.Open();
    try {
        t.procedure->BreakAllCourses(length);
        QFAIL("no exception");
    } catch (const ZYLSysOutOfBoundsException &e) {
        QVERIFY(ZYLTPNear(e.GetMinimum(), minimum));
    }
    QCOMPARE(ZYLTPBytes(t.program), before);
}

void tst_ZYLTPProcedureEdit::demoProgram()
{
    // A generated ply: curved panel, tows added and cut along the courses (one-point runs at
    // the ends), tilted stretches, break ranges, straight, safety plane and custom links.
    ZYLTPDemoGenerator::Parameters parameters;
    parameters.courses = 12;
    parameters.tows = 12;
    parameters.inspection = false;
    const ZYLGeoRef<ZYLTPProgram> program = ZYLTPDemoGenerator::Create(parameters);
    auto *procedure = qobject_cast<ZYLTPRollLayupProcedure *>(program->GetProcedure(0));
    QVERIFY(procedure);
    const QByteArray before = ZYLTPBytes(program.get());
    const QList<double> towLengths = procedure->GetTowLengths();
    const double courseLength = procedure->GetOverallCourseLength();
    double longest = 0.0;
    for (int c = 0; c < procedure->GetNumCourses(); ++c)
        longest = std::max(longest, procedure->GetCourseByIndex(c)->GetLength());
    ZYLFeatContainer container;

    container.OpenTransaction(QStringLiteral("Reverse"));
    procedure->ReverseAllCourses();
    QVERIFY(ZYLTPBytes(program.get()) != before);
    QVERIFY(ZYLTPNear(procedure->GetOverallCourseLength(), courseLength, 1e-6));
    QVERIFY(ZYLTPNear(procedure->GetTotalMaterialLength(), std::accumulate(towLengths.begin(), towLengths.end(), 0.0), 1e-6));
    procedure->ReverseAllCourses();
    QCOMPARE(ZYLTPBytes(program.get()), before);
    procedure->ReverseOddCourses();
    container.CommitTransaction();

    const double length = 0.4 * longest;
    container.OpenTransaction(QStringLiteral("Break"));
    procedure->BreakAllCourses(length);
    for (int c = 0; c < procedure->GetNumCourses(); ++c) {
        ZYLTPCourse *course = procedure->GetCourseByIndex(c);
        if (course->GetNumBreakRanges() > 0 && course->GetLength() > length)
            course->Break(course->GetBreakRange(0));
        QVERIFY(course->GetLength() <= length);
    }
    container.CommitTransaction();
    QCOMPARE(procedure->GetCoursesUnlinkedAtApproach().size(), 0);
    QVERIFY(std::isfinite(procedure->GetTotalTimeEstimate()));

    container.Undo();
    container.Undo();
    QCOMPARE(ZYLTPBytes(program.get()), before);
    QVERIFY(ZYLTPNear(procedure->GetTowLengths(), towLengths));
    container.ClearHistory();
}

QTEST_GUILESS_MAIN(tst_ZYLTPProcedureEdit)
#include "tst_ZYLTPProcedureEdit.moc"
