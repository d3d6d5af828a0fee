// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Collision detection of a laying point: spheres at known heights over a flat plate, from
// both sides, with the tool tilted; refused input; and agreement with plain closest-point
// queries on the curved demo panel, however the checks are ordered.
#include "ZYLTPCollisionTestUtil.h"

#include "ZYLTPDemoGenerator.h"

#include "ZYLSysException.h"

#include <QTest>

#include <cmath>
#include <limits>

class tst_ZYLTPCollisionDetection : public QObject {
    Q_OBJECT
private slots:
    void sphereOverPlate_data();
    void sphereOverPlate();
    void noSpheresNoCollision();
    void refusals_data();
    void refusals();
    void agreesWithPlainQueries();
};

void tst_ZYLTPCollisionDetection::sphereOverPlate_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<double>("z");
    QTest::addColumn<double>("radius");
    QTest::addColumn<bool>("direction");
    QTest::addColumn<double>("forward");
    QTest::addColumn<double>("side");
    QTest::addColumn<double>("tolerance");
    QTest::addColumn<bool>("collides");
    // Upright tool, sphere 30 mm up, radius 10: 20 mm of clearance.
    QTest::newRow("above, gap wider than tolerance") << 0.0 << 0.0 << 30.0 << 10.0 << true << 0.0 << 0.0 << 19.9 << false;
    QTest::newRow("above, gap narrower than tolerance") << 0.0 << 0.0 << 30.0 << 10.0 << true << 0.0 << 0.0 << 20.1 << true;
    QTest::newRow("above, working from below") << 0.0 << 0.0 << 30.0 << 10.0 << false << 0.0 << 0.0 << 0.0 << true;
    // Below the tip: through the part when working from above, 25 mm clear from below.
    QTest::newRow("below the tip") << 0.0 << 0.0 << -30.0 << 5.0 << true << 0.0 << 0.0 << 0.0 << true;
    QTest::newRow("below, working from below, clear") << 0.0 << 0.0 << -30.0 << 5.0 << false << 0.0 << 0.0 << 24.9 << false;
    QTest::newRow("below, working from below, close") << 0.0 << 0.0 << -30.0 << 5.0 << false << 0.0 << 0.0 << 25.1 << true;
    // Beyond the plate's edge (y = 60) and lower than it: beside the part, not behind it,
    // sqrt(140² + 30²) = 143.18 mm from the edge, so 138.18 mm clear.
    QTest::newRow("beside the edge, below its level") << 0.0 << 200.0 << -30.0 << 5.0 << true << 0.0 << 0.0 << 138.1 << false;
    QTest::newRow("beside the edge, within tolerance") << 0.0 << 200.0 << -30.0 << 5.0 << true << 0.0 << 0.0 << 138.3 << true;
    // Side tilt 0.5 turns (0, 40, 10) up to z = 40 sin 0.5 + 10 cos 0.5 = 27.953: 22.953 mm clear.
    QTest::newRow("side tilt lifts, clear") << 0.0 << 40.0 << 10.0 << 5.0 << true << 0.0 << 0.5 << 22.9 << false;
    QTest::newRow("side tilt lifts, close") << 0.0 << 40.0 << 10.0 << 5.0 << true << 0.0 << 0.5 << 23.0 << true;
    QTest::newRow("side tilt lowers into the part") << 0.0 << 40.0 << 10.0 << 5.0 << true << 0.0 << -0.5 << 0.0 << true;
    // Forward tilt -0.5 turns (30, 0, 10) up to z = 30 sin 0.5 + 10 cos 0.5 = 23.159.
    QTest::newRow("forward tilt lifts, clear") << 30.0 << 0.0 << 10.0 << 5.0 << true << -0.5 << 0.0 << 18.1 << false;
    QTest::newRow("forward tilt lifts, close") << 30.0 << 0.0 << 10.0 << 5.0 << true << -0.5 << 0.0 << 18.2 << true;
    QTest::newRow("forward tilt lowers into the part") << 30.0 << 0.0 << 10.0 << 5.0 << true << 0.5 << 0.0 << 0.0 << true;
}

void tst_ZYLTPCollisionDetection::sphereOverPlate()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(double, z);
    QFETCH(double, radius);
    QFETCH(bool, direction);
    QFETCH(double, forward);
    QFETCH(double, side);
    QFETCH(double, tolerance);
    QFETCH(bool, collides);
    ZYLTPTestProgram t(1);
    const ZYLGeoRef<ZYLGeoPlane> plate = ZYLTPTestPlate();
    ZYLTPTowCourse *course = t.courses[0];
    t.Open();
    course->SetRangeTilt(course->GetPoint(0), nullptr, forward, side);
    t.Commit();
    const ZYLTPSpheres spheres{{ZYLMathPoint(x, y, z), radius}};
    // Every point of the straight course sees the same geometry.
    for (int i = 0; i < course->GetNumPoints(); ++i)
        QCOMPARE(course->GetPoint(i)->DetectCollision(plate.get(), direction, tolerance, spheres), collides);
    // A sphere far clear on the working side does not hide one that collides, in either order.
    const std::pair<ZYLMathPoint, double> clear{ZYLMathPoint(0.0, 0.0, direction ? 500.0 : -500.0), 1.0};
    const ZYLTPSpheres withClear{clear, spheres.front()};
    QCOMPARE(course->GetPoint(4)->DetectCollision(plate.get(), direction, tolerance, withClear), collides);
    const ZYLTPSpheres clearLast{spheres.front(), clear};
    QCOMPARE(course->GetPoint(4)->DetectCollision(plate.get(), direction, tolerance, clearLast), collides);
}

void tst_ZYLTPCollisionDetection::noSpheresNoCollision()
{
    ZYLTPTestProgram t(1);
    const ZYLGeoRef<ZYLGeoPlane> plate = ZYLTPTestPlate();
    QVERIFY(!t.courses[0]->GetPoint(3)->DetectCollision(plate.get(), true, 1000.0, {}));
}

void tst_ZYLTPCollisionDetection::refusals_data()
{
    QTest::addColumn<bool>("withSurface");
    QTest::addColumn<double>("tolerance");
    QTest::addColumn<double>("radius");
    QTest::addColumn<double>("height");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("no surface") << false << 10.0 << 5.0 << 30.0;
    QTest::newRow("negative tolerance") << true << -1.0 << 5.0 << 30.0;
    QTest::newRow("tolerance not a number") << true << nan << 5.0 << 30.0;
    QTest::newRow("infinite tolerance") << true << std::numeric_limits<double>::infinity() << 5.0 << 30.0;
    QTest::newRow("negative radius") << true << 10.0 << -5.0 << 30.0;
    QTest::newRow("radius not a number") << true << 10.0 << nan << 30.0;
    QTest::newRow("centre not a number") << true << 10.0 << 5.0 << nan;
}

void tst_ZYLTPCollisionDetection::refusals()
{
    QFETCH(bool, withSurface);
    QFETCH(double, tolerance);
    QFETCH(double, radius);
    QFETCH(double, height);
    ZYLTPTestProgram t(1);
    const ZYLGeoRef<ZYLGeoPlane> plate = ZYLTPTestPlate();
    const ZYLTPSpheres spheres{{ZYLMathPoint(0.0, 0.0, height), radius}};
    const ZYLTPOnPartPoint *point = t.courses[0]->GetPoint(2);
    try {
        point->DetectCollision(withSurface ? plate.get() : nullptr, true, tolerance, spheres);
        QFAIL("no exception");
    } catch (const ZYLSysException &e) {
        QVERIFY(!e.GetMessage().isEmpty());
    }
}

namespace {
// The test on its own terms: one plain query per sphere, no state kept.
bool CollidesByPlainQueries(const ZYLGeoSurface &surface, const ZYLMathAxis &frame, double tolerance,
                            const ZYLTPSpheres &spheres)
{
    const ZYLGeoSurface::Domain domain = surface.GetDomain();
    for (const auto &[centre, radius] : spheres) {
        const ZYLGeoSurfaceFoot foot = surface.GetClosestPoint(frame.ToGlobal(centre));
        const bool onBorder = foot.u <= domain.uMin || foot.u >= domain.uMax || foot.v <= domain.vMin
                              || foot.v >= domain.vMax;
        const double distance = onBorder ? std::fabs(foot.signedDistance) : foot.signedDistance;
        if (distance < 0.0 || distance - radius < tolerance)
            return true;
    }
    return false;
}
} // namespace

void tst_ZYLTPCollisionDetection::agreesWithPlainQueries()
{
    const ZYLGeoRef<ZYLTPProgram> program = ZYLTPDemoGenerator::CreateDefaultProgram();
    const ZYLGeoSurface *surface = program->GetPlySurface();
    auto *layup = qobject_cast<const ZYLTPRollLayupProcedure *>(program->GetProcedure(0));
    QVERIFY(layup);
    // Backwards through the courses and points, alternating between two sphere lists and
    // three tolerances, so that warm starts and skipped queries meet far jumps and changes.
    int checked = 0, found = 0;
    for (int c = layup->GetNumCourses() - 1; c >= 0; --c) {
        const ZYLTPCourse *course = layup->GetCourseByIndex(c);
        const ZYLTPSpheres all = ZYLTPCourseSpheres(course);
        const ZYLTPSpheres tool = course->GetMachineConfiguration().GetTool()->GetCollisionPoints();
        for (int i = course->GetNumPoints() - 1; i >= 0; --i, ++checked) {
            const double tolerance = (i % 3) * 15.0;
            const ZYLTPSpheres &spheres = i % 2 ? all : tool;
            const bool expected = CollidesByPlainQueries(*surface, course->GetPoint(i)->GetAxis(true), tolerance, spheres);
            QCOMPARE(course->GetPoint(i)->DetectCollision(surface, true, tolerance, spheres), expected);
            found += expected ? 1 : 0;
        }
    }
    // Both answers occur, so the comparison meant something.
    QVERIFY(found > 0);
    QVERIFY(found < checked);
}

QTEST_GUILESS_MAIN(tst_ZYLTPCollisionDetection)
#include "tst_ZYLTPCollisionDetection.moc"
