// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Pinch states over a range of a course, their limits and undo.
#include "ZYLTPTestProgram.h"

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
} // namespace

Q_DECLARE_METATYPE(QList<Piece>)

class tst_ZYLTPRangeEdit : public QObject {
    Q_OBJECT
private slots:
    void pinchState();
};

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

QTEST_GUILESS_MAIN(tst_ZYLTPRangeEdit)
#include "tst_ZYLTPRangeEdit.moc"
