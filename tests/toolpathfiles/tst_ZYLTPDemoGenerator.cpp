// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPDemoGenerator.h"
#include "ZYLTPProgramFile.h"

#include "ZYLTPCourse.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPRoller.h"
#include "ZYLTPTool.h"
#include "ZYLTPTowTrajectory.h"

#include "ZYLGeoAssembledCurveOnSurface.h"
#include "ZYLGeoCurveOnSurface.h"
#include "ZYLGeoPolyline.h"
#include "ZYLGeoSurface.h"
#include "ZYLSysException.h"

#include <QTest>

#include <cmath>

class tst_ZYLTPDemoGenerator : public QObject {
    Q_OBJECT
private slots:
    void invariants_data();
    void invariants();
    void deterministicForASeed();
    void someCollisionPointsReachIntoTheSurface();
    void refusesBadParameters_data();
    void refusesBadParameters();
};

namespace {

const ZYLTPRollLayupProcedure &Layup(const ZYLTPProgram &program)
{
    return *qobject_cast<const ZYLTPRollLayupProcedure *>(program.GetProcedure(0));
}

// Signed distance of a (u, v) point to the boundary polygon: negative inside.
double SignedDistanceToPolygon(const std::vector<ZYLMathPoint> &polygon, double u, double v)
{
    bool inside = false;
    double best = std::numeric_limits<double>::infinity();
    for (size_t i = 0; i + 1 < polygon.size(); ++i) {
        const double au = polygon[i].X(), av = polygon[i].Y(), bu = polygon[i + 1].X(), bv = polygon[i + 1].Y();
        if ((av > v) != (bv > v) && u < au + (v - av) * (bu - au) / (bv - av))
            inside = !inside;
        const double eu = bu - au, ev = bv - av;
        const double t = std::clamp(((u - au) * eu + (v - av) * ev) / (eu * eu + ev * ev), 0.0, 1.0);
        best = std::min(best, std::hypot(u - au - t * eu, v - av - t * ev));
    }
    return inside ? -best : best;
}

} // namespace

void tst_ZYLTPDemoGenerator::invariants_data()
{
    QTest::addColumn<int>("courses");
    QTest::addColumn<int>("pointsPerCourse");
    QTest::addColumn<int>("tows");
    QTest::addColumn<quint64>("seed");
    QTest::newRow("8 tows by spacing") << 30 << 0 << 8 << quint64(1);
    QTest::newRow("16 tows, fixed count") << 12 << 150 << 16 << quint64(99);
    QTest::newRow("several plies") << 70 << 60 << 12 << quint64(5);
}

void tst_ZYLTPDemoGenerator::invariants()
{
    QFETCH(int, courses);
    QFETCH(int, pointsPerCourse);
    QFETCH(int, tows);
    QFETCH(quint64, seed);
    ZYLTPDemoGenerator::Parameters p;
    p.courses = courses;
    p.pointsPerCourse = pointsPerCourse;
    p.pointSpacing = 20.0;
    p.tows = tows;
    p.seed = seed;
    const ZYLGeoRef<ZYLTPProgram> program = ZYLTPDemoGenerator::Create(p);
    const ZYLTPRollLayupProcedure &layup = Layup(*program);
    QCOMPARE(layup.GetNumCourses(), courses);
    const ZYLGeoSurface *surface = program->GetPlySurface();
    QVERIFY(surface);
    QCOMPARE(program->GetPlyBoundaries().size(), 1);
    const auto *curve = dynamic_cast<const ZYLGeoCurveOnSurface *>(program->GetPlyBoundaries()[0]->GetCurve(0));
    QVERIFY(curve);
    const auto *uv = dynamic_cast<const ZYLGeoPolyline *>(curve->GetUVCurve());
    QVERIFY(uv);
    QVERIFY(uv->GetPoints().front() == uv->GetPoints().back());

    int maskChanges = 0;
    for (int c = 0; c < courses; ++c) {
        const ZYLTPCourse *course = layup.GetCourseByIndex(c);
        if (pointsPerCourse > 0)
            QCOMPARE(course->GetNumPoints(), pointsPerCourse + 2);
        const ZYLCompTowMask *previous = nullptr;
        for (int t = 0; t < course->GetNumTrajectories(); ++t) {
            const auto *run = qobject_cast<const ZYLTPTowTrajectory *>(course->GetTrajectory(t));
            if (!run)
                continue;
            QVERIFY(run->GetTowMask().GetLastTow() < tows);
            if (previous && !(*previous == run->GetTowMask()))
                ++maskChanges;
            previous = &run->GetTowMask();
            for (int k = 0; k < run->GetNumPoints(); ++k) {
                const ZYLTPOnPartPoint *point = run->GetOnPartPoint(k);
                const ZYLMathAxis frame = point->GetAxis(false);
                // On the surface, with the normal as tool axis and an orthonormal frame.
                const ZYLGeoSurfaceFoot foot = surface->GetClosestPoint(point->GetTipPoint());
                QVERIFY2(std::fabs(foot.signedDistance) < 1e-5, qPrintable(QString::number(foot.signedDistance)));
                QVERIFY(frame.GetThirdDirection().Dot(foot.normal) > 1.0 - 1e-9);
                QVERIFY(std::fabs(frame.GetFirstDirection().GetLength() - 1.0) < 1e-12);
                QVERIFY(std::fabs(frame.GetFirstDirection().Dot(frame.GetThirdDirection())) < 1e-12);
                QVERIFY(std::fabs(frame.GetFirstDirection().Dot(frame.GetSecondDirection())) < 1e-12);
                // Each tow is laid where its centreline is inside the boundary, and only there
                // (to within a millimetre: the tow offset is measured on the curved surface).
                for (int tow = 0; tow < tows; ++tow) {
                    const double offset = (tow - (tows - 1) / 2.0) * p.towWidth;
                    const ZYLMathPoint centre = point->GetTipPoint() + frame.GetSecondDirection() * offset;
                    const ZYLGeoSurfaceFoot f = surface->GetClosestPoint(centre);
                    const double d = SignedDistanceToPolygon(uv->GetPoints(), f.u, f.v);
                    if (std::fabs(d) < 1.0)
                        continue;
                    QVERIFY2(run->GetTowMask().IsEnabled(tow) == (d < 0),
                             qPrintable(QStringLiteral("course %1 tow %2 at %3 mm from the boundary").arg(c).arg(tow).arg(d)));
                }
            }
        }
    }
    QVERIFY(maskChanges >= courses);

    // Links join consecutive courses, with approach and retract links at the ends.
    QVERIFY(qobject_cast<const ZYLTPProcedureLink *>(layup.GetApproachLink()));
    QCOMPARE(layup.GetApproachLink()->GetToCourse(), layup.GetCourseByPosition(0));
    QCOMPARE(layup.GetRetractLink()->GetFromCourse(), layup.GetCourseByPosition(courses - 1));
    QList<int> strategies;
    for (int pos = 0; pos + 1 < courses; ++pos) {
        const ZYLTPCourseLink *link = layup.GetCourseByPosition(pos)->GetRetractLink();
        QVERIFY(link);
        QCOMPARE(link->GetToCourse(), layup.GetCourseByPosition(pos + 1));
        if (!strategies.contains(link->GetStrategy()))
            strategies.append(link->GetStrategy());
    }
    if (courses >= 30)
        QCOMPARE(strategies.size(), 3);

    // A head and two rollers with collision points, and the scanner of the inspection.
    const ZYLTPMachineConfiguration &configuration = layup.GetCourseByIndex(0)->GetMachineConfiguration();
    QVERIFY(configuration.GetHead());
    QVERIFY(!configuration.GetHead()->GetCollisionPoints().isEmpty());
    QCOMPARE(program->GetNumTools(), 3);
    QVERIFY(!program->GetTool(1)->GetCollisionPoints().isEmpty());
    QVERIFY(qobject_cast<const ZYLTPRoller *>(program->GetTool(1)));
    QVERIFY(!qobject_cast<const ZYLTPRoller *>(program->GetTool(2)));
}

void tst_ZYLTPDemoGenerator::deterministicForASeed()
{
    ZYLTPDemoGenerator::Parameters p;
    p.courses = 20;
    p.pointSpacing = 30.0;
    p.seed = 7;
    const QByteArray a = ZYLTPProgramFile::Serialize(*ZYLTPDemoGenerator::Create(p));
    const QByteArray b = ZYLTPProgramFile::Serialize(*ZYLTPDemoGenerator::Create(p));
    QVERIFY(!a.isEmpty());
    QVERIFY(a == b);
    p.seed = 8;
    QVERIFY(ZYLTPProgramFile::Serialize(*ZYLTPDemoGenerator::Create(p)) != a);
}

void tst_ZYLTPDemoGenerator::someCollisionPointsReachIntoTheSurface()
{
    const ZYLGeoRef<ZYLTPProgram> program = ZYLTPDemoGenerator::CreateDefaultProgram();
    const ZYLTPRollLayupProcedure &layup = Layup(*program);
    const ZYLGeoSurface *surface = program->GetPlySurface();
    int points = 0, close = 0, inside = 0;
    for (int c = 0; c < layup.GetNumCourses(); ++c) {
        const ZYLTPCourse *course = layup.GetCourseByIndex(c);
        const ZYLTPMachineConfiguration &m = course->GetMachineConfiguration();
        QList<std::pair<ZYLMathPoint, double>> spheres = m.GetHead()->GetCollisionPoints();
        spheres += m.GetTool()->GetCollisionPoints();
        for (int i = 0; i < course->GetNumPoints(); ++i, ++points) {
            // At the usual tolerance of 10 mm, and touching or inside the part.
            close += course->GetPoint(i)->DetectCollision(surface, true, 10.0, spheres) ? 1 : 0;
            inside += course->GetPoint(i)->DetectCollision(surface, true, 0.0, spheres) ? 1 : 0;
        }
    }
    // Something to find, but only where it was put on purpose.
    QVERIFY(inside > 0);
    QVERIFY(close >= inside);
    QVERIFY2(close * 50 < points, qPrintable(QStringLiteral("%1 of %2").arg(close).arg(points)));
}

void tst_ZYLTPDemoGenerator::refusesBadParameters_data()
{
    QTest::addColumn<int>("courses");
    QTest::addColumn<int>("pointsPerCourse");
    QTest::addColumn<double>("spacing");
    QTest::addColumn<int>("tows");
    QTest::newRow("no course") << 0 << 0 << 5.0 << 8;
    QTest::newRow("one point per course") << 3 << 1 << 5.0 << 8;
    QTest::newRow("zero spacing") << 3 << 0 << 0.0 << 8;
    QTest::newRow("NaN spacing") << 3 << 0 << std::nan("") << 8;
    QTest::newRow("7 tows") << 3 << 0 << 5.0 << 7;
    QTest::newRow("17 tows") << 3 << 0 << 5.0 << 17;
}

void tst_ZYLTPDemoGenerator::refusesBadParameters()
{
    QFETCH(int, courses);
    QFETCH(int, pointsPerCourse);
    QFETCH(double, spacing);
    QFETCH(int, tows);
    ZYLTPDemoGenerator::Parameters p;
    p.courses = courses;
    p.pointsPerCourse = pointsPerCourse;
    p.pointSpacing = spacing;
    p.tows = tows;
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, ZYLTPDemoGenerator::Create(p));
}

QTEST_GUILESS_MAIN(tst_ZYLTPDemoGenerator)
#include "tst_ZYLTPDemoGenerator.moc"
