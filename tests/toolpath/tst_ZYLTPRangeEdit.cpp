// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Range operations: splitting and merging of on-part trajectories, identity across undo and
// redo, refused ranges.
#include "ZYLTPTestProgram.h"

#include "ZYLTPOnPartPoint.h"
#include "ZYLTPTowPoint.h"
#include "ZYLTPTowTrajectory.h"

#include "ZYLSysException.h"
#include "ZYLSysOutOfBoundsException.h"

#include <QTest>

namespace {
// The on-part trajectories of a course as (first point, number of points, forward tilt).
struct Piece {
    int first;
    int count;
    double forward;
    bool operator==(const Piece &) const = default;
};
QList<Piece> Pieces(const ZYLTPCourse *course)
{
    QList<Piece> pieces;
    for (int k = 1; k < course->GetNumTrajectories() - 1; ++k) {
        auto *t = qobject_cast<const ZYLTPOnPartTrajectory *>(course->GetTrajectory(k));
        pieces.append({t->GetFirstPointIndex(), t->GetNumPoints(), t->GetForwardTilt()});
    }
    return pieces;
}
QList<const ZYLTPTrajectory *> Trajectories(const ZYLTPCourse *course)
{
    QList<const ZYLTPTrajectory *> list;
    for (int k = 0; k < course->GetNumTrajectories(); ++k)
        list << course->GetTrajectory(k);
    return list;
}
} // namespace

Q_DECLARE_METATYPE(QList<Piece>)

class tst_ZYLTPRangeEdit : public QObject {
    Q_OBJECT
private slots:
    void splitAndMerge_data();
    void splitAndMerge();
    void editThenRevertMergesBack();
    void pieceOutsideKeepsIdentity();
    void feedRateOverRange();
    void pinchState();
    void badRanges_data();
    void badRanges();
    void pointViewsSurviveUndo();
};

void tst_ZYLTPRangeEdit::splitAndMerge_data()
{
    // Points: 0 roll-in, 1..11 tow points (one tow trajectory), 12 roll-out.
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end"); // -1: null end
    QTest::addColumn<QList<Piece>>("pieces");
    const double a = 0.2;
    QTest::newRow("middle") << 4 << 7
                            << QList<Piece>{{0, 1, 0}, {1, 3, 0}, {4, 3, a}, {7, 5, 0}, {12, 1, 0}};
    QTest::newRow("from first tow point") << 1 << 5 << QList<Piece>{{0, 1, 0}, {1, 4, a}, {5, 7, 0}, {12, 1, 0}};
    QTest::newRow("to roll-out point") << 6 << 12 << QList<Piece>{{0, 1, 0}, {1, 5, 0}, {6, 6, a}, {12, 1, 0}};
    QTest::newRow("null end") << 6 << -1 << QList<Piece>{{0, 1, 0}, {1, 5, 0}, {6, 6, a}, {12, 1, a}};
    QTest::newRow("whole course") << 0 << -1 << QList<Piece>{{0, 1, a}, {1, 11, a}, {12, 1, a}};
    QTest::newRow("every tow point") << 1 << 12 << QList<Piece>{{0, 1, 0}, {1, 11, a}, {12, 1, 0}};
    QTest::newRow("empty range") << 5 << 5 << QList<Piece>{{0, 1, 0}, {1, 11, 0}, {12, 1, 0}};
}

void tst_ZYLTPRangeEdit::splitAndMerge()
{
    QFETCH(int, start);
    QFETCH(int, end);
    QFETCH(QList<Piece>, pieces);
    ZYLTPTestProgram t(1);
    ZYLTPTowCourse *course = t.courses[0];
    const QList<const ZYLTPTrajectory *> before = Trajectories(course);
    const QList<Piece> piecesBefore = Pieces(course);
    t.Open();
    course->SetRangeTilt(course->GetPoint(start), end < 0 ? nullptr : course->GetPoint(end), 0.2, -0.1);
    t.Commit();
    QCOMPARE(Pieces(course), pieces);
    // Every point maps to the trajectory that covers it.
    for (int i = 0; i < course->GetNumPoints(); ++i) {
        auto *trajectory = qobject_cast<const ZYLTPOnPartTrajectory *>(course->GetPoint(i)->GetTrajectory());
        QVERIFY(i >= trajectory->GetFirstPointIndex());
        QVERIFY(i < trajectory->GetFirstPointIndex() + trajectory->GetNumPoints());
    }
    const QList<const ZYLTPTrajectory *> after = Trajectories(course);
    if (start == end) {
        // An empty range changes nothing and records nothing.
        QCOMPARE(after, before);
        QCOMPARE(t.container.GetUndoCount(), 0);
        return;
    }
    t.container.Undo();
    QCOMPARE(Trajectories(course), before);
    QCOMPARE(Pieces(course), piecesBefore);
    t.container.Redo();
    QCOMPARE(Trajectories(course), after);
    QCOMPARE(Pieces(course), pieces);
}

void tst_ZYLTPRangeEdit::editThenRevertMergesBack()
{
    ZYLTPTestProgram t(1);
    ZYLTPTowCourse *course = t.courses[0];
    const QList<const ZYLTPTrajectory *> before = Trajectories(course);
    t.Open();
    course->SetRangeTilt(course->GetPoint(3), course->GetPoint(8), 0.4, 0.0);
    QCOMPARE(course->GetNumTrajectories(), 7);
    course->SetRangeTilt(course->GetPoint(3), course->GetPoint(8), 0.0, 0.0);
    t.Commit();
    // Back to one tow trajectory, and the original object.
    QCOMPARE(Trajectories(course), before);
}

void tst_ZYLTPRangeEdit::pieceOutsideKeepsIdentity()
{
    ZYLTPTestProgram t(1);
    ZYLTPTowCourse *course = t.courses[0];
    const ZYLTPTrajectory *tow = course->GetTrajectory(2);
    t.Open();
    // The range starts at the trajectory's first point: the piece after it keeps its values,
    // so it keeps the object.
    course->SetRangeTilt(course->GetPoint(1), course->GetPoint(4), 0.1, 0.0);
    t.Commit();
    QCOMPARE(course->GetPoint(4)->GetTrajectory(), tow);
    QVERIFY(course->GetPoint(1)->GetTrajectory() != tow);
}

void tst_ZYLTPRangeEdit::feedRateOverRange()
{
    ZYLTPTestProgram t(1);
    ZYLTPTowCourse *course = t.courses[0];
    const double before = course->GetOnPartTimeEstimate();
    t.Open();
    // Points 6..10 cover 50 mm of plain laying (no add or cut): 600 -> 300 mm/min doubles them.
    course->SetRangeFeedRate(course->GetPoint(6), course->GetPoint(11), 300.0);
    t.Commit();
    QCOMPARE(course->GetPoint(6)->GetTrajectory()->GetFeedRate(), 300.0);
    QCOMPARE(course->GetPoint(11)->GetTrajectory()->GetFeedRate(), 600.0);
    // Points 6..11 are the last 50 mm; their last 10 mm stay at the cut feed rate, the other
    // 40 mm now take twice as long.
    QVERIFY(qAbs(course->GetOnPartTimeEstimate() - before - 40.0 / 600 * 60) < 1e-6);
    QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, course->SetRangeFeedRate(course->GetPoint(1), nullptr, 0.0));
}

void tst_ZYLTPRangeEdit::pinchState()
{
    ZYLTPTestProgram t(1);
    ZYLTPTowCourse *course = t.courses[0];
    auto *start = qobject_cast<const ZYLTPTowPoint *>(course->GetPoint(2));
    auto *end = qobject_cast<const ZYLTPTowPoint *>(course->GetRollOutPoint());
    QList<double> rates(4, 1.0);
    rates[2] = 0.5;
    t.Open();
    course->SetPinchState(start, end, ZYLCompTowMask(0x5), rates);
    t.Commit();
    auto *pinched = qobject_cast<const ZYLTPTowTrajectory *>(course->GetPoint(5)->GetTrajectory());
    QCOMPARE(pinched->GetForcedMask().GetString(), QStringLiteral("1,3"));
    QCOMPARE(pinched->GetForcedRates().size(), 64);
    QCOMPARE(pinched->GetForcedRates()[2], 0.5);
    QCOMPARE(pinched->GetForcedRates()[3], 1.0);
    auto *plain = qobject_cast<const ZYLTPTowTrajectory *>(course->GetPoint(1)->GetTrajectory());
    QVERIFY(plain->GetForcedMask().IsAllDisabled());
    // The roll-out point is the end: the roll-out trajectory is not a tow trajectory anyway.
    QVERIFY(!qobject_cast<const ZYLTPTowTrajectory *>(course->GetRollOutPoint()->GetTrajectory()));
    t.Open();
    QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException,
                             course->SetPinchState(start, end, ZYLCompTowMask(1), QList<double>{1.5}));
    QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException,
                             course->SetPinchState(start, end, ZYLCompTowMask(1), QList<double>(65, 1.0)));
    // The course is four tows wide: a fifth tow does not exist.
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, course->SetPinchState(start, end, ZYLCompTowMask(0x10), {}));
    t.Commit();
    QCOMPARE(qobject_cast<const ZYLTPTowTrajectory *>(course->GetPoint(5)->GetTrajectory())->GetForcedRates()[2], 0.5);
    t.container.Undo();
    QCOMPARE(course->GetNumTrajectories(), 5);
    QVERIFY(qobject_cast<const ZYLTPTowTrajectory *>(course->GetPoint(5)->GetTrajectory())->GetForcedMask().IsAllDisabled());
}

void tst_ZYLTPRangeEdit::badRanges_data()
{
    QTest::addColumn<int>("startCourse");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("endCourse");
    QTest::addColumn<int>("end");
    QTest::newRow("start after end") << 0 << 8 << 0 << 3;
    QTest::newRow("null start") << 0 << -1 << 0 << 3;
    QTest::newRow("start of another course") << 1 << 2 << 0 << 6;
    QTest::newRow("end of another course") << 0 << 2 << 1 << 6;
}

void tst_ZYLTPRangeEdit::badRanges()
{
    QFETCH(int, startCourse);
    QFETCH(int, start);
    QFETCH(int, endCourse);
    QFETCH(int, end);
    ZYLTPTestProgram t(2);
    ZYLTPTowCourse *course = t.courses[0];
    const QList<Piece> before = Pieces(course);
    t.Open();
    QVERIFY_THROWS_EXCEPTION(ZYLSysException,
                             course->SetRangeTilt(start < 0 ? nullptr : t.courses[startCourse]->GetPoint(start),
                                                  t.courses[endCourse]->GetPoint(end), 0.1, 0.1));
    QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException,
                             course->SetRangeTilt(course->GetPoint(1), nullptr, 1.56, 0.0));
    t.Commit();
    QCOMPARE(Pieces(course), before);
    QCOMPARE(t.container.GetUndoCount(), 0);
}

void tst_ZYLTPRangeEdit::pointViewsSurviveUndo()
{
    ZYLTPTestProgram t(1);
    ZYLTPTowCourse *course = t.courses[0];
    QList<const ZYLTPOnPartPoint *> points;
    for (int i = 0; i < course->GetNumPoints(); ++i)
        points << course->GetPoint(i);
    t.Open();
    course->SetRangeTilt(points[2], points[9], 0.3, 0.3);
    course->SetRollOut(30.0);
    t.Commit();
    t.container.Undo();
    t.container.Redo();
    t.container.Undo();
    for (int i = 0; i < course->GetNumPoints(); ++i)
        QCOMPARE(course->GetPoint(i), points[i]);
    QCOMPARE(points[12]->GetTipPoint(), ZYLMathPoint(110, 0, 0));
}

QTEST_GUILESS_MAIN(tst_ZYLTPRangeEdit)
#include "tst_ZYLTPRangeEdit.moc"
