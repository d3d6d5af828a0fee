// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Collision avoidance over a range of a course: colliding points cleared with a small
// change, tilts ramped inside the range and untouched outside it, errors for what cannot be
// cleared, exact undo, refused input; and the demo program's collisions all cleared.
#include "ZYLTPCollisionTestUtil.h"

#include "ZYLTPDemoGenerator.h"
#include "ZYLTPProgramFile.h"

#include "ZYLSysException.h"
#include "ZYLSysMessageQueue.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Largest tilt change per mm of course length the avoidance allows itself.
constexpr double Rate = 0.005;
constexpr double Distance = 10.0;

// A sphere beside the roller, 15 mm clear of the plate with the tool upright; a side tilt of
// -0.3 rad brings it into the plate, one of about -0.226 rad leaves it 10 mm clear.
const ZYLTPSpheres Fork{{ZYLMathPoint(0.0, 20.0, 20.0), 5.0}};

// A test program on the plate whose course 0 has points 5..7 tilted into the plate.
struct Tilted {
    Tilted()
    {
        t.builder.SetPlySurface(plate.get());
        ZYLTPCourse *c = course();
        t.Open();
        c->SetRangeTilt(c->GetPoint(5), c->GetPoint(8), 0.0, -0.3);
        t.Commit();
        t.container.ClearHistory();
    }
    ZYLTPCourse *course() const { return t.courses[0]; }
    const ZYLTPOnPartPoint *point(int i) const { return i < 0 ? nullptr : course()->GetPoint(i); }

    ZYLGeoRef<ZYLGeoPlane> plate = ZYLTPTestPlate();
    ZYLTPTestProgram t{2};
};

double Length(const ZYLTPCourse *course, int i)
{
    return course->ComputePointLength(course->GetPoint(i));
}

} // namespace

class tst_ZYLTPCollisionAvoidance : public QObject {
    Q_OBJECT
private slots:
    void clearsRangeOnly_data();
    void clearsRangeOnly();
    void impossibleCaseIsReported();
    void undoRestoresTheProgram();
    void refusals_data();
    void refusals();
    void outsideTransactionRefused();
    void demoCollisionsCleared();
};

void tst_ZYLTPCollisionAvoidance::clearsRangeOnly_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to"); // -1: null, to the end of the course
    QTest::newRow("whole course") << 0 << -1;
    QTest::newRow("around the colliding points") << 3 << 10;
    QTest::newRow("colliding points only") << 5 << 8;
    QTest::newRow("part of the colliding points") << 6 << 8;
}

void tst_ZYLTPCollisionAvoidance::clearsRangeOnly()
{
    QFETCH(int, from);
    QFETCH(int, to);
    Tilted s;
    ZYLTPCourse *course = s.course();
    const int end = to < 0 ? course->GetNumPoints() : to;
    QCOMPARE(ZYLTPCollidingPoints(course, s.plate.get(), true, Distance, Fork), (QList<int>{5, 6, 7}));
    const QList<QPair<double, double>> before = ZYLTPTilts(course);

    ZYLSysMessageQueue queue;
    s.t.Open();
    course->AvoidCollisions(s.plate.get(), true, Distance, Fork, s.point(from), s.point(to));
    s.t.Commit();
    QVERIFY(queue.GetMessages().isEmpty());

    const QList<QPair<double, double>> after = ZYLTPTilts(course);
    for (int i = 0; i < course->GetNumPoints(); ++i) {
        const bool inside = i >= from && i < end;
        const bool colliding = course->GetPoint(i)->DetectCollision(s.plate.get(), true, Distance, Fork);
        if (!inside) {
            QCOMPARE(after[i], before[i]);
            continue;
        }
        QVERIFY2(!colliding, qPrintable(QStringLiteral("point %1").arg(i)));
        // Lifting the sphere takes a side tilt only.
        QCOMPARE(after[i].first, 0.0);
        if (i >= 5 && i <= 7) {
            // The smallest change: tilted back towards upright, but not so far that the
            // sphere were half a millimetre farther away than asked.
            QVERIFY(after[i].second > -0.3 && after[i].second < 0.0);
            QVERIFY(course->GetPoint(i)->DetectCollision(s.plate.get(), true, Distance + 0.5, Fork));
        }
        if (i > from && i - 1 < end) {
            const double step = std::fabs(after[i].second - after[i - 1].second);
            QVERIFY2(step <= Rate * (Length(course, i) - Length(course, i - 1)) + 1e-9,
                     qPrintable(QStringLiteral("points %1, %2: %3").arg(i - 1).arg(i).arg(step)));
        }
    }
    // The ramp reaches the neighbours inside the range: point 4 moved towards the corrected
    // tilt when it is in the range.
    if (from <= 4 && end > 4)
        QVERIFY(after[4].second < 0.0);
    // The other course is untouched.
    for (const QPair<double, double> &tilt : ZYLTPTilts(s.t.courses[1]))
        QCOMPARE(tilt, (QPair<double, double>(0.0, 0.0)));
}

void tst_ZYLTPCollisionAvoidance::impossibleCaseIsReported()
{
    Tilted s;
    ZYLTPCourse *course = s.course();
    // A sphere under the tip stays under the part whatever the tilt.
    const ZYLTPSpheres under{{ZYLMathPoint(0.0, 0.0, -5.0), 1.0}};
    const QList<QPair<double, double>> before = ZYLTPTilts(course);
    ZYLSysMessageQueue queue;
    s.t.Open();
    course->AvoidCollisions(s.plate.get(), true, Distance, under, s.point(2), s.point(5));
    s.t.Commit();
    const QList<ZYLSysMessageQueue::Message> messages = queue.GetMessages();
    QCOMPARE(messages.size(), 3);
    for (int k = 0; k < 3; ++k) {
        QCOMPARE(messages[k].second, int(ZYLSysMessageQueue::Error));
        // Course position and point index as the tables show them, from 1.
        QVERIFY2(messages[k].first.startsWith(QStringLiteral("Course 1, point %1:").arg(k + 3)),
                 qPrintable(messages[k].first));
    }
    QCOMPARE(ZYLTPTilts(course), before);
}

void tst_ZYLTPCollisionAvoidance::undoRestoresTheProgram()
{
    Tilted s;
    ZYLTPCourse *course = s.course();
    const QByteArray before = ZYLTPProgramFile::Serialize(*s.t.program);
    QVERIFY(!before.isEmpty());
    s.t.Open();
    course->AvoidCollisions(s.plate.get(), true, Distance, Fork, s.point(0), nullptr);
    s.t.Commit();
    const QByteArray after = ZYLTPProgramFile::Serialize(*s.t.program);
    QVERIFY(after != before);
    s.t.container.Undo();
    QCOMPARE(ZYLTPProgramFile::Serialize(*s.t.program), before);
    QCOMPARE(ZYLTPCollidingPoints(course, s.plate.get(), true, Distance, Fork), (QList<int>{5, 6, 7}));
    s.t.container.Redo();
    QCOMPARE(ZYLTPProgramFile::Serialize(*s.t.program), after);
}

void tst_ZYLTPCollisionAvoidance::refusals_data()
{
    QTest::addColumn<int>("fromCourse");
    QTest::addColumn<int>("from"); // -1: null
    QTest::addColumn<int>("toCourse");
    QTest::addColumn<int>("to"); // -1: null
    QTest::addColumn<bool>("withSurface");
    QTest::addColumn<double>("distance");
    QTest::addColumn<double>("radius");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("null from") << 0 << -1 << 0 << 8 << true << Distance << 5.0;
    QTest::newRow("from of another course") << 1 << 2 << 0 << 8 << true << Distance << 5.0;
    QTest::newRow("to of another course") << 0 << 2 << 1 << 8 << true << Distance << 5.0;
    QTest::newRow("from after to") << 0 << 9 << 0 << 3 << true << Distance << 5.0;
    QTest::newRow("no surface") << 0 << 0 << 0 << -1 << false << Distance << 5.0;
    QTest::newRow("negative distance") << 0 << 0 << 0 << -1 << true << -1.0 << 5.0;
    QTest::newRow("distance not a number") << 0 << 0 << 0 << -1 << true << nan << 5.0;
    QTest::newRow("negative radius") << 0 << 0 << 0 << -1 << true << Distance << -5.0;
}

void tst_ZYLTPCollisionAvoidance::refusals()
{
    QFETCH(int, fromCourse);
    QFETCH(int, from);
    QFETCH(int, toCourse);
    QFETCH(int, to);
    QFETCH(bool, withSurface);
    QFETCH(double, distance);
    QFETCH(double, radius);
    Tilted s;
    const QByteArray before = ZYLTPProgramFile::Serialize(*s.t.program);
    const ZYLTPOnPartPoint *fromPoint = from < 0 ? nullptr : s.t.courses[fromCourse]->GetPoint(from);
    const ZYLTPOnPartPoint *toPoint = to < 0 ? nullptr : s.t.courses[toCourse]->GetPoint(to);
    const ZYLTPSpheres spheres{{ZYLMathPoint(0.0, 20.0, 20.0), radius}};
    ZYLSysMessageQueue queue;
    s.t.Open();
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, s.course()->AvoidCollisions(withSurface ? s.plate.get() : nullptr, true,
                                                                          distance, spheres, fromPoint, toPoint));
    s.t.Commit();
    QCOMPARE(ZYLTPProgramFile::Serialize(*s.t.program), before);
    QVERIFY(queue.GetMessages().isEmpty());
}

void tst_ZYLTPCollisionAvoidance::outsideTransactionRefused()
{
    Tilted s;
    const QByteArray before = ZYLTPProgramFile::Serialize(*s.t.program);
    QVERIFY_THROWS_EXCEPTION(ZYLSysException,
                             s.course()->AvoidCollisions(s.plate.get(), true, Distance, Fork, s.point(0), nullptr));
    QCOMPARE(ZYLTPProgramFile::Serialize(*s.t.program), before);
}

void tst_ZYLTPCollisionAvoidance::demoCollisionsCleared()
{
    const ZYLGeoRef<ZYLTPProgram> program = ZYLTPDemoGenerator::CreateDefaultProgram();
    const ZYLGeoSurface *surface = program->GetPlySurface();
    auto *layup = qobject_cast<ZYLTPRollLayupProcedure *>(program->GetProcedure(0));
    QVERIFY(layup);
    const QByteArray before = ZYLTPProgramFile::Serialize(*program);
    ZYLFeatContainer container;
    ZYLSysMessageQueue queue;
    container.OpenTransaction(QStringLiteral("Avoid"));
    int points = 0, colliding = 0;
    for (int c = 0; c < layup->GetNumCourses(); ++c) {
        ZYLTPCourse *course = layup->GetCourseByPosition(c);
        const ZYLTPSpheres spheres = ZYLTPCourseSpheres(course);
        points += course->GetNumPoints();
        const QList<int> found = ZYLTPCollidingPoints(course, surface, true, Distance, spheres);
        colliding += int(found.size());
        const QList<QPair<double, double>> tilts = ZYLTPTilts(course);
        // Only the colliding stretch and its ramps: the range runs from the first to past
        // the last colliding point, widened by the ramps' reach.
        if (found.isEmpty())
            continue;
        const int from = std::max(0, int(found.front()) - 20);
        const int to = int(found.back()) + 21;
        course->AvoidCollisions(surface, true, Distance, spheres, course->GetPoint(from), course->GetPoint(to));
        QVERIFY2(ZYLTPCollidingPoints(course, surface, true, Distance, spheres).isEmpty(),
                 qPrintable(QStringLiteral("course %1").arg(c + 1)));
        const QList<QPair<double, double>> corrected = ZYLTPTilts(course);
        for (int i = 0; i < course->GetNumPoints(); ++i) {
            if (i < from || i >= to)
                QCOMPARE(corrected[i], tilts[i]);
        }
    }
    container.CommitTransaction();
    // A few places to correct, where the demo tilts the tool too far, and all cleared.
    QVERIFY(colliding > 0);
    QVERIFY2(colliding * 50 < points, qPrintable(QStringLiteral("%1 of %2").arg(colliding).arg(points)));
    QVERIFY(queue.GetMessages().isEmpty());
    container.Undo();
    QCOMPARE(ZYLTPProgramFile::Serialize(*program), before);
    container.ClearHistory();
}

QTEST_GUILESS_MAIN(tst_ZYLTPCollisionAvoidance)
#include "tst_ZYLTPCollisionAvoidance.moc"
