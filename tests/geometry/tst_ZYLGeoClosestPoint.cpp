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
    QTest::newRow("creased bilinear") << ZYLGeoSurfaceFactory(Creased);
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

};

QTEST_GUILESS_MAIN(tst_ZYLGeoClosestPoint)
#include "tst_ZYLGeoClosestPoint.moc"
