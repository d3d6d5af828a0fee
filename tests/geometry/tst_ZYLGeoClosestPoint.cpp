// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoTestSurfaces.h"

#include <QTest>

#include <random>

namespace {

using namespace ZYLGeoTestSurfaces;

struct BruteFoot {
    double u = 0.0, v = 0.0, distance = 0.0;
};

// The nearest of a dense grid of samples, refined twice on finer grids around the winner: an
// answer that cannot be trapped in a local minimum.
BruteFoot BruteForce(const ZYLGeoSurface &surface, const ZYLMathPoint &q)
{
    ZYLGeoSurface::Domain box = surface.GetDomain();
    BruteFoot best{0, 0, std::numeric_limits<double>::infinity()};
    int steps = 160;
    for (int level = 0; level < 3; ++level) {
        const double du = (box.uMax - box.uMin) / steps, dv = (box.vMax - box.vMin) / steps;
        for (int i = 0; i <= steps; ++i) {
            for (int j = 0; j <= steps; ++j) {
                const double u = box.uMin + i * du, v = box.vMin + j * dv;
                const double d = surface.Evaluate(u, v).GetDistanceTo(q);
                if (d < best.distance)
                    best = {u, v, d};
            }
        }
        const ZYLGeoSurface::Domain domain = surface.GetDomain();
        box = {std::max(domain.uMin, best.u - 1.5 * du), std::min(domain.uMax, best.u + 1.5 * du),
               std::max(domain.vMin, best.v - 1.5 * dv), std::min(domain.vMax, best.v + 1.5 * dv)};
        steps = 40;
    }
    return best;
}

// Queries all around the surface: inside a box twice its size (so beyond every border), on
// both sides, plus a few far away.
std::vector<ZYLMathPoint> Queries(const ZYLGeoSurface &surface, int count, unsigned seed)
{
    const ZYLMathBoundingBox box = surface.GetBoundingBox();
    const ZYLMathVector size = box.GetDiagonal();
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    std::vector<ZYLMathPoint> queries;
    for (int k = 0; k < count; ++k) {
        const ZYLMathVector offset(unit(random) * size.X(), unit(random) * size.Y(),
                                   unit(random) * std::max(size.Z(), 0.3 * size.GetLength()));
        queries.push_back(box.GetCenter() + offset);
    }
    queries.push_back(box.GetCenter() + ZYLMathVector(0, 0, 1e5));
    queries.push_back(box.GetCenter() + ZYLMathVector(3e4, -2e4, -1e5));
    return queries;
}

void AddSurfaces()
{
    QTest::addColumn<ZYLGeoSurfaceFactory>("factory");
    QTest::newRow("tilted plane") << ZYLGeoSurfaceFactory(TiltedPlane);
    QTest::newRow("bowl") << ZYLGeoSurfaceFactory(Bowl);
    QTest::newRow("dome") << ZYLGeoSurfaceFactory(Dome);
    QTest::newRow("saddle") << ZYLGeoSurfaceFactory(Saddle);
    QTest::newRow("creased bilinear") << ZYLGeoSurfaceFactory(Creased);
    QTest::newRow("wavy non-uniform") << ZYLGeoSurfaceFactory(Wavy);
    QTest::newRow("cylinder, numeric defaults") << ZYLGeoSurfaceFactory(Cylinder);
}

void VerifyFoot(const ZYLGeoSurface &surface, const ZYLMathPoint &q, const ZYLGeoSurfaceFoot &foot)
{
    const ZYLGeoSurface::Domain domain = surface.GetDomain();
    QVERIFY(foot.u >= domain.uMin && foot.u <= domain.uMax && foot.v >= domain.vMin && foot.v <= domain.vMax);
    QVERIFY(foot.point.GetDistanceTo(surface.Evaluate(foot.u, foot.v)) <= 1e-7);
    QVERIFY(std::abs(std::abs(foot.signedDistance) - q.GetDistanceTo(foot.point)) <= 1e-9 * (1 + std::abs(foot.signedDistance)));
    QVERIFY(std::abs(foot.normal.GetLength() - 1.0) < 1e-9);
    // Positive exactly on the normal side of the foot.
    const double side = (q - foot.point).Dot(foot.normal);
    if (std::abs(side) > 1e-9)
        QCOMPARE(foot.signedDistance > 0.0, side > 0.0);
}

} // namespace

class tst_ZYLGeoClosestPoint : public QObject {
    Q_OBJECT

private slots:
    void globalNearestAgainstBruteForce_data() { AddSurfaces(); }
    void hintsDoNotChangeTheAnswer_data() { AddSurfaces(); }
    void boundingBoxHoldsSurface_data() { AddSurfaces(); }

    void globalNearestAgainstBruteForce()
    {
        QFETCH(ZYLGeoSurfaceFactory, factory);
        const ZYLGeoRef<ZYLGeoSurface> surface = factory();
        QVERIFY(surface);
        const double size = surface->GetBoundingBox().GetDiagonal().GetLength();
        for (const ZYLMathPoint &q : Queries(*surface, 60, 1)) {
            const ZYLGeoSurfaceFoot foot = surface->GetClosestPoint(q);
            VerifyFoot(*surface, q, foot);
            const BruteFoot brute = BruteForce(*surface, q);
            const double distance = std::abs(foot.signedDistance);
            // Never farther than the sampled answer (a local minimum would be), and not nearer
            // than the refined sampling can miss.
            QVERIFY2(distance <= brute.distance + 1e-7 * size,
                     qPrintable(QStringLiteral("%1 vs brute force %2").arg(distance, 0, 'g', 12).arg(brute.distance, 0, 'g', 12)));
            QVERIFY(distance >= brute.distance - 1e-4 * size);
        }
    }

    void hintsDoNotChangeTheAnswer()
    {
        QFETCH(ZYLGeoSurfaceFactory, factory);
        const ZYLGeoRef<ZYLGeoSurface> surface = factory();
        const ZYLGeoSurface::Domain domain = surface->GetDomain();
        const double size = surface->GetBoundingBox().GetDiagonal().GetLength();
        std::mt19937 random(5);
        std::uniform_real_distribution<double> unit(0.0, 1.0);
        ZYLGeoSurfaceFoot previous;
        for (const ZYLMathPoint &q : Queries(*surface, 200, 2)) {
            const ZYLGeoSurfaceFoot cold = surface->GetClosestPoint(q);
            // A misleading hint (anywhere, even outside the domain) and the previous query's foot.
            ZYLGeoSurfaceFoot wild;
            wild.u = domain.uMin + (unit(random) * 1.4 - 0.2) * (domain.uMax - domain.uMin);
            wild.v = domain.vMin + (unit(random) * 1.4 - 0.2) * (domain.vMax - domain.vMin);
            for (const ZYLGeoSurfaceFoot *hint : {&wild, &previous}) {
                const ZYLGeoSurfaceFoot hinted = surface->GetClosestPoint(q, hint);
                VerifyFoot(*surface, q, hinted);
                QVERIFY(std::abs(hinted.signedDistance - cold.signedDistance) <= 1e-8 * size);
            }
            previous = cold;
        }
    }

    void concaveSideBeyondCentreOfCurvature()
    {
        // The bowl's centre of curvature lies 100 above its centre; above it the centre is a
        // local maximum of the distance, and the nearest points run away to the rim.
        const ZYLGeoRef<ZYLGeoSurface> bowl = Bowl();
        for (double height : {50.0, 99.0, 100.0, 101.0, 150.0, 400.0}) {
            const ZYLMathPoint q(3.0, -2.0, height);
            const ZYLGeoSurfaceFoot foot = bowl->GetClosestPoint(q);
            VerifyFoot(*bowl, q, foot);
            QVERIFY(std::abs(foot.signedDistance) <= BruteForce(*bowl, q).distance + 1e-6);
            QVERIFY(foot.signedDistance > 0.0);
        }
        // On the cylinder's axis every point of the patch is at the radius.
        const ZYLGeoRef<ZYLGeoSurface> cylinder = Cylinder();
        const ZYLGeoSurfaceFoot axis = cylinder->GetClosestPoint(ZYLMathPoint(0, 80, 0));
        QVERIFY(std::abs(axis.signedDistance + ZYLGeoTestCylinder::radius) < 1e-6);
    }

    void signedDistanceSign_data()
    {
        QTest::addColumn<ZYLGeoSurfaceFactory>("factory");
        QTest::addColumn<ZYLMathPoint>("query");
        QTest::addColumn<double>("expected");
        QTest::newRow("bowl, inside") << ZYLGeoSurfaceFactory(Bowl) << ZYLMathPoint(0, 0, 30) << 30.0;
        QTest::newRow("bowl, underneath") << ZYLGeoSurfaceFactory(Bowl) << ZYLMathPoint(0, 0, -12) << -12.0;
        QTest::newRow("dome, above") << ZYLGeoSurfaceFactory(Dome) << ZYLMathPoint(0, 0, 40) << 40.0;
        QTest::newRow("dome, below") << ZYLGeoSurfaceFactory(Dome) << ZYLMathPoint(0, 0, -5) << -5.0;
        QTest::newRow("cylinder, outside") << ZYLGeoSurfaceFactory(Cylinder) << ZYLMathPoint(0, 10, 130) << 30.0;
        QTest::newRow("cylinder, inside") << ZYLGeoSurfaceFactory(Cylinder) << ZYLMathPoint(0, 10, 60) << -40.0;
        QTest::newRow("on the surface") << ZYLGeoSurfaceFactory(Dome) << ZYLMathPoint(0, 0, 0) << 0.0;
    }

    void signedDistanceSign()
    {
        QFETCH(ZYLGeoSurfaceFactory, factory);
        QFETCH(ZYLMathPoint, query);
        QFETCH(double, expected);
        const ZYLGeoRef<ZYLGeoSurface> surface = factory();
        QVERIFY(std::abs(surface->GetSignedDistance(query) - expected) < 1e-7);
    }

    void footsOnTheBorder()
    {
        // Beyond a border the foot lies on it and the sign follows the normal at the foot.
        const ZYLGeoRef<ZYLGeoPlane> plane = ZYLGeoPlane::Create(ZYLMathAxis(), {0, 10, 0, 20});
        const ZYLGeoSurfaceFoot corner = plane->GetClosestPoint(ZYLMathPoint(13, -4, -12));
        QCOMPARE(corner.u, 10.0);
        QCOMPARE(corner.v, 0.0);
        QVERIFY(std::abs(corner.signedDistance + 13.0) < 1e-12);
        const ZYLGeoRef<ZYLGeoSurface> dome = Dome(); // u in [0, 300], v in [0, 200]
        const ZYLGeoSurface::Domain domain = dome->GetDomain();
        const ZYLGeoSurfaceFoot beyond = dome->GetClosestPoint(ZYLMathPoint(400, 0, -100));
        QCOMPARE(beyond.u, domain.uMax);
        QVERIFY(std::abs(beyond.v - 100.0) < 1e-6);
    }

    void nonFiniteQuery()
    {
        for (const ZYLGeoSurfaceFactory &factory : {ZYLGeoSurfaceFactory(TiltedPlane), ZYLGeoSurfaceFactory(Saddle)}) {
            const ZYLGeoRef<ZYLGeoSurface> surface = factory();
            const ZYLGeoSurfaceFoot foot = surface->GetClosestPoint(ZYLMathPoint(std::nan(""), 0, 0));
            QVERIFY(std::isnan(foot.signedDistance));
            QVERIFY(foot.point.IsFinite());
            QVERIFY(std::isnan(surface->GetSignedDistance(ZYLMathPoint(0, std::numeric_limits<double>::infinity(), 0))));
        }
    }

    void boundingBoxHoldsSurface()
    {
        QFETCH(ZYLGeoSurfaceFactory, factory);
        const ZYLGeoRef<ZYLGeoSurface> surface = factory();
        const ZYLMathBoundingBox box = surface->GetBoundingBox();
        const ZYLGeoSurface::Domain d = surface->GetDomain();
        ZYLMathBoundingBox sampled;
        for (int i = 0; i <= 200; ++i) {
            for (int j = 0; j <= 200; ++j) {
                const ZYLMathPoint p = surface->Evaluate(d.uMin + (d.uMax - d.uMin) * i / 200, d.vMin + (d.vMax - d.vMin) * j / 200);
                QVERIFY(box.Contains(p));
                sampled.Add(p);
            }
        }
        QVERIFY((box.GetDiagonal() - sampled.GetDiagonal()).GetLength() <= 0.05 * sampled.GetDiagonal().GetLength());
    }
};

QTEST_GUILESS_MAIN(tst_ZYLGeoClosestPoint)
#include "tst_ZYLGeoClosestPoint.moc"
