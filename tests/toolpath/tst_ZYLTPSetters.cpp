// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Every model setter: a value outside its range is refused with nothing changed; a value
// inside is recorded, and undo and redo give the values back exactly.
#include "ZYLTPTestProgram.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPInspectionProcedure.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPOffPartTrajectory.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPTrajectory.h"
#include "ZYLTPRetractTrajectory.h"

#include "ZYLSysException.h"
#include "ZYLSysOutOfBoundsException.h"

#include <QTest>

#include <functional>

namespace {
// One setter under test: how to read the value and how to set it, on a test program.
struct Setter {
    std::function<double(ZYLTPTestProgram &)> get;
    std::function<void(ZYLTPTestProgram &, double)> set;
};

// The objects whose setters are under test: the first course, its trajectories, the first link.
ZYLTPTowCourse *Course(ZYLTPTestProgram &t) { return t.courses[0]; }
ZYLTPRollLayupProcedure *Procedure(ZYLTPTestProgram &t) { return t.procedure; }
ZYLTPOffPartTrajectory *Approach(ZYLTPTestProgram &t)
{
    return const_cast<ZYLTPApproachTrajectory *>(t.courses[0]->GetApproachTrajectory());
}
ZYLTPOffPartTrajectory *Retract(ZYLTPTestProgram &t)
{
    return const_cast<ZYLTPRetractTrajectory *>(t.courses[0]->GetRetractTrajectory());
}
ZYLTPLinearCourseLink *Link(ZYLTPTestProgram &t)
{
    return qobject_cast<ZYLTPLinearCourseLink *>(t.procedure->GetLinkByIndex(0));
}

// The setter `set` and getter `get` of the object `of` finds in a test program.
template<class Object, class G, class S>
Setter Of(Object *(*of)(ZYLTPTestProgram &), double (G::*get)() const, void (S::*set)(double))
{
    return {[=](ZYLTPTestProgram &t) { return (of(t)->*get)(); },
            [=](ZYLTPTestProgram &t, double v) { (of(t)->*set)(v); }};
}

QHash<QString, Setter> Setters()
{
    using C = ZYLTPTowCourse;
    using P = ZYLTPRollLayupProcedure;
    using L = ZYLTPLinearCourseLink;
    using T = ZYLTPOffPartTrajectory;
    return {{"roll-in", Of(Course, &C::GetRollIn, &C::SetRollIn)},
            {"roll-out", Of(Course, &C::GetRollOut, &C::SetRollOut)},
            {"laying feed rate", Of(Course, &C::GetLayingFeedRate, &C::SetLayingFeedRate)},
            {"add feed rate", Of(Course, &C::GetAddFeedRate, &C::SetAddFeedRate)},
            {"cut feed rate", Of(Course, &C::GetCutFeedRate, &C::SetCutFeedRate)},
            {"approach angle", Of(Approach, &T::GetAngle, &T::SetAngle)},
            {"approach length", Of(Approach, &T::GetLength, &T::SetLength)},
            {"retract angle", Of(Retract, &T::GetAngle, &T::SetAngle)},
            {"retract length", Of(Retract, &T::GetLength, &T::SetLength)},
            {"rapid approach", Of(Link, &L::GetRapidApproach, &L::SetRapidApproach)},
            {"rapid retract", Of(Link, &L::GetRapidRetract, &L::SetRapidRetract)},
            {"procedure laying", Of(Procedure, &P::GetLayingFeedrate, &P::SetLayingFeedrate)},
            {"procedure adding", Of(Procedure, &P::GetAddingFeedrate, &P::SetAddingFeedrate)},
            {"procedure cutting", Of(Procedure, &P::GetCuttingFeedrate, &P::SetCuttingFeedrate)},
            {"procedure rapid", Of(Procedure, &P::GetRapidFeedRate, &P::SetRapidFeedRate)},
            {"procedure rapid approach", Of(Procedure, &P::GetRapidApproach, &P::SetRapidApproach)},
            {"procedure rapid retract", Of(Procedure, &P::GetRapidRetract, &P::SetRapidRetract)},
            {"safety clearance", Of(Procedure, &P::GetSafetyClearance, &P::SetSafetyClearance)},
            {"add/cut distance", Of(Procedure, &P::GetAddCutDistance, &P::SetAddCutDistance)}};
}
} // namespace

class tst_ZYLTPSetters : public QObject {
    Q_OBJECT
private slots:
    void ranges_data();
    void ranges();
    void outsideTransactionRefused();
    void layingFeedRateSetsTrajectories();
    void instructionsUndo();
};

void tst_ZYLTPSetters::ranges_data()
{
    QTest::addColumn<QString>("setter");
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("valid");
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const char *length : {"roll-in", "roll-out", "approach length", "retract length", "rapid approach",
                               "rapid retract", "procedure rapid approach", "procedure rapid retract",
                               "safety clearance", "add/cut distance"}) {
        QTest::addRow("%s 0", length) << length << 0.0 << true;
        QTest::addRow("%s 12.5", length) << length << 12.5 << true;
        QTest::addRow("%s unchanged", length) << length << -2.0 << true;
        QTest::addRow("%s -0.001", length) << length << -0.001 << false;
        QTest::addRow("%s nan", length) << length << nan << false;
        QTest::addRow("%s inf", length) << length << inf << false;
    }
    for (const char *rate : {"laying feed rate", "add feed rate", "cut feed rate", "procedure laying",
                             "procedure adding", "procedure cutting", "procedure rapid"}) {
        QTest::addRow("%s 1500", rate) << rate << 1500.0 << true;
        QTest::addRow("%s 0.01", rate) << rate << 0.01 << true;
        QTest::addRow("%s 0", rate) << rate << 0.0 << false;
        QTest::addRow("%s -5", rate) << rate << -5.0 << false;
    }
    for (const char *angle : {"approach angle", "retract angle"}) {
        QTest::addRow("%s pi/2", angle) << angle << M_PI / 2 << true;
        QTest::addRow("%s 0.1", angle) << angle << 0.1 << true;
        QTest::addRow("%s 0", angle) << angle << 0.0 << false;
        QTest::addRow("%s 1.6", angle) << angle << 1.6 << false;
        QTest::addRow("%s -0.5", angle) << angle << -0.5 << false;
    }
}

void tst_ZYLTPSetters::ranges()
{
    QFETCH(QString, setter);
    QFETCH(double, value);
    QFETCH(bool, valid);
    ZYLTPTestProgram t(2);
    t.Open();
    t.procedure->LinkCourses(t.courses[0], t.courses[1], nullptr);
    t.Commit();
    const Setter s = Setters().value(setter);
    QVERIFY(s.get);
    const double before = s.get(t);
    // -2 in a row stands for "the value it already has".
    if (value == -2.0)
        value = before;
    const double lengthBefore = t.courses[0]->GetLength();
    const int undoCount = t.container.GetUndoCount();
    t.Open();
    if (!valid) {
        try {
            s.set(t, value);
            QFAIL("value accepted");
        } catch (const ZYLSysOutOfBoundsException &e) {
            QVERIFY(!e.GetMessage().isEmpty());
        }
        t.Commit();
        QCOMPARE(s.get(t), before);
        QCOMPARE(t.courses[0]->GetLength(), lengthBefore);
        QCOMPARE(t.container.GetUndoCount(), undoCount);
        return;
    }
    s.set(t, value);
    t.Commit();
    QCOMPARE(s.get(t), value);
    if (value == before) {
        // Setting the current value is no edit: no undo entry.
        QCOMPARE(t.container.GetUndoCount(), undoCount);
        return;
    }
    t.container.Undo();
    QCOMPARE(s.get(t), before);
    QCOMPARE(t.courses[0]->GetLength(), lengthBefore);
    t.container.Redo();
    QCOMPARE(s.get(t), value);
}

void tst_ZYLTPSetters::outsideTransactionRefused()
{
    ZYLTPTestProgram t(1);
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, t.courses[0]->SetRollIn(5.0));
    QCOMPARE(t.courses[0]->GetRollIn(), 10.0);
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, t.procedure->LinkCourses(nullptr, t.courses[0], nullptr));
    QCOMPARE(t.procedure->GetNumLinks(), 0);
    QVERIFY(!t.courses[0]->GetApproachLink());
    QVERIFY_THROWS_EXCEPTION(ZYLSysException,
                             t.courses[0]->SetRangeTilt(t.courses[0]->GetPoint(2), nullptr, 0.1, 0.1));
    QCOMPARE(t.courses[0]->GetNumTrajectories(), 5);
}

void tst_ZYLTPSetters::layingFeedRateSetsTrajectories()
{
    ZYLTPTestProgram t(1);
    ZYLTPTowCourse *course = t.courses[0];
    t.Open();
    course->SetRangeFeedRate(course->GetPoint(3), course->GetPoint(6), 100.0);
    t.Commit();
    QCOMPARE(course->GetNumTrajectories(), 7);
    t.Open();
    course->SetLayingFeedRate(900.0);
    t.Commit();
    // Every on-part trajectory runs at the new rate and the split pieces merged again.
    QCOMPARE(course->GetNumTrajectories(), 5);
    for (int i = 0; i < course->GetNumPoints(); ++i)
        QCOMPARE(course->GetPoint(i)->GetTrajectory()->GetFeedRate(), 900.0);
    t.container.Undo();
    QCOMPARE(course->GetNumTrajectories(), 7);
    QCOMPARE(course->GetPoint(4)->GetTrajectory()->GetFeedRate(), 100.0);
    QCOMPARE(course->GetPoint(6)->GetTrajectory()->GetFeedRate(), 600.0);
}

void tst_ZYLTPSetters::instructionsUndo()
{
    ZYLTPTestProgram t(1);
    t.Open();
    t.courses[0]->SetPrefixInstructions({"M101", "G04 P1"});
    t.courses[0]->SetSuffixInstructions({"M102"});
    t.procedure->SetName(QStringLiteral("Renamed"));
    t.Commit();
    QCOMPARE(t.courses[0]->GetPrefixInstructions(), (QStringList{"M101", "G04 P1"}));
    t.container.Undo();
    QVERIFY(t.courses[0]->GetPrefixInstructions().isEmpty());
    QVERIFY(t.courses[0]->GetSuffixInstructions().isEmpty());
    QCOMPARE(t.procedure->GetName(), QStringLiteral("Ply 1"));
}

QTEST_GUILESS_MAIN(tst_ZYLTPSetters)
#include "tst_ZYLTPSetters.moc"
