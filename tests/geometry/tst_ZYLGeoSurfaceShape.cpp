// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Evaluation, derivatives, derivative bounds and tessellation of surfaces.
#include "ZYLGeoTestSurfaces.h"

#include <QTest>

#include <random>

namespace {

using namespace ZYLGeoTestSurfaces;

double DistanceToTriangle(const ZYLMathPoint &p, const ZYLMathPoint &a, const ZYLMathPoint &b, const ZYLMathPoint &c)
{
    // Inside the prism over the triangle: the plane distance; otherwise the nearest edge.
    const ZYLMathVector n = (b - a).Cross(c - a);
    const auto inside = [&](const ZYLMathPoint &x, const ZYLMathPoint &y) { return (y - x).Cross(p - x).Dot(n) >= 0; };
    if (n.GetSquaredLength() > 0 && inside(a, b) && inside(b, c) && inside(c, a))
        return std::abs((p - a).Dot(n)) / n.GetLength();
    const auto segment = [&](const ZYLMathPoint &x, const ZYLMathPoint &y) {
        const ZYLMathVector d = y - x;
        const double t = d.GetSquaredLength() > 0 ? std::clamp((p - x).Dot(d) / d.GetSquaredLength(), 0.0, 1.0) : 0.0;
        return p.GetDistanceTo(x + d * t);
    };
    return std::min({segment(a, b), segment(b, c), segment(c, a)});
}

void AddSurfaces()
{
    QTest::addColumn<ZYLGeoSurfaceFactory>("factory");
    QTest::newRow("bowl") << ZYLGeoSurfaceFactory(Bowl);
    QTest::newRow("saddle") << ZYLGeoSurfaceFactory(Saddle);
    QTest::newRow("creased bilinear") << ZYLGeoSurfaceFactory(Creased);
    QTest::newRow("wavy non-uniform") << ZYLGeoSurfaceFactory(Wavy);
    QTest::newRow("cylinder, numeric defaults") << ZYLGeoSurfaceFactory(Cylinder);
}

ZYLGeoRef<ZYLGeoBSplineSurface> Grid(int degreeU, int degreeV, int countU, int countV, std::vector<double> knotsU = {},
                                     std::vector<double> knotsV = {}, QString *error = nullptr)
{
    std::vector<ZYLMathPoint> points;
    for (int i = 0; i < countU; ++i) {
        for (int j = 0; j < countV; ++j)
            points.emplace_back(10.0 * i, 10.0 * j, (i * 7 + j * 3) % 5);
    }
    return ZYLGeoBSplineSurface::Create(degreeU, degreeV, countU, countV, points, knotsU, knotsV, error);
}

} // namespace

class tst_ZYLGeoSurfaceShape : public QObject {
    Q_OBJECT

private slots:
    void derivativesMatchDifferences_data() { AddSurfaces(); }
    void secondDerivativeBoundsHold_data() { AddSurfaces(); }

    void derivativesMatchDifferences()
    {
        QFETCH(ZYLGeoSurfaceFactory, factory);
        const ZYLGeoRef<ZYLGeoSurface> surface = factory();
        const ZYLGeoSurface::Domain d = surface->GetDomain();
        std::mt19937 random(3);
        std::uniform_real_distribution<double> unit(0.02, 0.98);
        const double hu = 1e-5 * (d.uMax - d.uMin), hv = 1e-5 * (d.vMax - d.vMin);
        for (int k = 0; k < 200; ++k) {
            const double u = d.uMin + unit(random) * (d.uMax - d.uMin), v = d.vMin + unit(random) * (d.vMax - d.vMin);
            const ZYLGeoSurface::SecondDerivatives s = surface->EvaluateSecondDerivatives(u, v);
            QVERIFY(s.point.GetDistanceTo(surface->Evaluate(u, v)) < 1e-9);
            ZYLMathPoint p;
            ZYLMathVector du, dv, du1, dv1, du2, dv2;
            surface->EvaluateDerivatives(u, v, &p, &du, &dv);
            QVERIFY((du - s.du).GetLength() < 1e-9 * (1 + du.GetLength()));
            const ZYLMathVector numericDu = (surface->Evaluate(u + hu, v) - surface->Evaluate(u - hu, v)) / (2 * hu);
            const ZYLMathVector numericDv = (surface->Evaluate(u, v + hv) - surface->Evaluate(u, v - hv)) / (2 * hv);
            QVERIFY((numericDu - du).GetLength() <= 1e-5 * (1 + du.GetLength()));
            QVERIFY((numericDv - dv).GetLength() <= 1e-5 * (1 + dv.GetLength()));
            // Second derivatives against differences of the first ones (skip knot lines of the
            // creased surface, where they jump).
            surface->EvaluateDerivatives(u + hu, v, &p, &du1, &dv1);
            surface->EvaluateDerivatives(u - hu, v, &p, &du2, &dv2);
            const ZYLMathVector numericDuu = (du1 - du2) / (2 * hu);
            const ZYLMathVector numericDuv = (dv1 - dv2) / (2 * hu);
            const double scale = 1 + s.duu.GetLength() + s.duv.GetLength() + numericDuu.GetLength();
            QVERIFY((numericDuu - s.duu).GetLength() <= 1e-3 * scale);
            QVERIFY((numericDuv - s.duv).GetLength() <= 1e-3 * scale);
        }
    }

    void secondDerivativeBoundsHold()
    {
        QFETCH(ZYLGeoSurfaceFactory, factory);
        const ZYLGeoRef<ZYLGeoSurface> surface = factory();
        const ZYLGeoSurface::Domain d = surface->GetDomain();
        std::mt19937 random(4);
        std::uniform_real_distribution<double> unit(0.0, 1.0);
        for (int k = 0; k < 30; ++k) {
            double u0 = unit(random), u1 = unit(random), v0 = unit(random), v1 = unit(random);
            const ZYLGeoSurface::Domain region{d.uMin + std::min(u0, u1) * (d.uMax - d.uMin), d.uMin + std::max(u0, u1) * (d.uMax - d.uMin),
                                               d.vMin + std::min(v0, v1) * (d.vMax - d.vMin), d.vMin + std::max(v0, v1) * (d.vMax - d.vMin)};
            const ZYLGeoSurface::SecondDerivativeBounds bounds = surface->GetSecondDerivativeBounds(region);
            for (int i = 0; i <= 12; ++i) {
                for (int j = 0; j <= 12; ++j) {
                    const ZYLGeoSurface::SecondDerivatives s = surface->EvaluateSecondDerivatives(
                        region.uMin + (region.uMax - region.uMin) * i / 12, region.vMin + (region.vMax - region.vMin) * j / 12);
                    QVERIFY(s.duu.GetLength() <= bounds.uu * (1 + 1e-9) + 1e-9);
                    QVERIFY(s.duv.GetLength() <= bounds.uv * (1 + 1e-9) + 1e-9);
                    QVERIFY(s.dvv.GetLength() <= bounds.vv * (1 + 1e-9) + 1e-9);
                }
            }
        }
    }

    void panelIsTheParaboloid()
    {
        const ZYLMathAxis frame(ZYLMathPoint(100, 200, -50), ZYLMathVector(0, 1, 0), ZYLMathVector(-1, 0, 0));
        const double kl = 1.0 / 700, kw = -1.0 / 400;
        const ZYLGeoRef<ZYLGeoBSplineSurface> panel = ZYLGeoBSplineSurface::CreateDoublyCurvedPanel(frame, 1200, 800, kl, kw);
        QVERIFY(panel);
        const ZYLGeoSurface::Domain d = panel->GetDomain();
        QCOMPARE(d.uMax - d.uMin, 1200.0);
        QCOMPARE(d.vMax - d.vMin, 800.0);
        for (int i = 0; i <= 24; ++i) {
            for (int j = 0; j <= 16; ++j) {
                const double u = d.uMin + 50.0 * i, v = d.vMin + 50.0 * j;
                const double x = u - 600.0, y = v - 400.0;
                const ZYLMathPoint local = frame.ToLocal(panel->Evaluate(u, v));
                QVERIFY(std::abs(local.X() - x) < 1e-9);
                QVERIFY(std::abs(local.Y() - y) < 1e-9);
                QVERIFY(std::abs(local.Z() - 0.5 * (kl * x * x + kw * y * y)) < 1e-9);
            }
        }
        // The normal at the centre is the frame's third direction.
        QVERIFY((panel->GetNormal(600, 400) - frame.GetThirdDirection()).GetLength() < 1e-12);
        QString error;
        QVERIFY(!ZYLGeoBSplineSurface::CreateDoublyCurvedPanel(frame, 0, 800, kl, kw, &error));
        QVERIFY(!ZYLGeoBSplineSurface::CreateDoublyCurvedPanel(frame, 100, 800, std::nan(""), kw, &error));
        QVERIFY(error.contains("curvature"));
    }

    void splineTouchesCornersAndReportsCreases()
    {
        const ZYLGeoRef<ZYLGeoBSplineSurface> spline = Grid(3, 2, 6, 5, {0, 0, 0, 0, 1, 1, 3, 3, 3, 3}, {});
        QVERIFY(spline);
        const ZYLGeoSurface::Domain d = spline->GetDomain();
        QCOMPARE(d.uMax, 3.0);
        QCOMPARE(spline->Evaluate(d.uMin, d.vMin), spline->GetControlPoint(0, 0));
        QVERIFY(spline->Evaluate(d.uMax, d.vMax).GetDistanceTo(spline->GetControlPoint(5, 4)) < 1e-12);
        // A double knot in a cubic keeps the tangent plane; a triple one (or any knot of a
        // bilinear surface) makes a crease.
        QVERIFY(spline->GetUKinks().empty());
        const ZYLGeoRef<ZYLGeoBSplineSurface> creased = Grid(3, 1, 7, 4, {0, 0, 0, 0, 2, 2, 2, 5, 5, 5, 5}, {0, 0, 1, 2, 3, 3});
        QVERIFY(creased);
        QCOMPARE(creased->GetUKinks(), std::vector<double>{2.0});
        QCOMPARE(creased->GetVKinks(), (std::vector<double>{1.0, 2.0}));
    }

    void badSplinesAreRefused_data()
    {
        QTest::addColumn<int>("degreeU");
        QTest::addColumn<int>("countU");
        QTest::addColumn<QList<double>>("knotsU");
        QTest::addColumn<QString>("reason");
        QTest::newRow("degree 4") << 4 << 6 << QList<double>{} << "degrees";
        QTest::newRow("degree 0") << 0 << 6 << QList<double>{} << "degrees";
        QTest::newRow("too few points") << 3 << 3 << QList<double>{} << "at least";
        QTest::newRow("knot count") << 2 << 4 << QList<double>{0, 0, 0, 1, 1, 1} << "knots";
        QTest::newRow("decreasing") << 2 << 4 << QList<double>{0, 0, 0, 0.6, 0.4, 1, 1} << "decreases";
        QTest::newRow("unclamped") << 2 << 4 << QList<double>{0, 0.1, 0.2, 0.5, 1, 1, 1} << "clamped";
        QTest::newRow("repeated end") << 2 << 4 << QList<double>{0, 0, 0, 0, 1, 1, 1} << "repeats";
        QTest::newRow("interior too often") << 1 << 5 << QList<double>{0, 0, 0.3, 0.5, 0.5, 1, 1} << "repeated";
        QTest::newRow("not finite") << 2 << 4 << QList<double>{0, 0, 0, qQNaN(), 1, 1, 1} << "finite";
    }

    void badSplinesAreRefused()
    {
        QFETCH(int, degreeU);
        QFETCH(int, countU);
        QFETCH(QList<double>, knotsU);
        QFETCH(QString, reason);
        QString error;
        QVERIFY(!Grid(degreeU, 1, countU, 3, std::vector<double>(knotsU.begin(), knotsU.end()), {}, &error));
        QVERIFY2(error.contains(reason), qPrintable(error));
        // Points that do not fill the grid, or are not finite.
        QVERIFY(!ZYLGeoBSplineSurface::Create(1, 1, 2, 2, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {}, {}, &error));
        QVERIFY(!ZYLGeoBSplineSurface::Create(1, 1, 2, 2, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, qInf(), 0}}, {}, {}, &error));
        QVERIFY(error.contains("(1, 1)"));
    }

    void tessellationWithinTolerance_data()
    {
        QTest::addColumn<ZYLGeoSurfaceFactory>("factory");
        QTest::addColumn<double>("tolerance");
        QTest::newRow("bowl 1") << ZYLGeoSurfaceFactory(Bowl) << 1.0;
        QTest::newRow("bowl 0.05") << ZYLGeoSurfaceFactory(Bowl) << 0.05;
        QTest::newRow("saddle 0.2") << ZYLGeoSurfaceFactory(Saddle) << 0.2;
        QTest::newRow("creased bilinear 0.1") << ZYLGeoSurfaceFactory(Creased) << 0.1;
        QTest::newRow("wavy 0.1") << ZYLGeoSurfaceFactory(Wavy) << 0.1;
        QTest::newRow("cylinder 0.1") << ZYLGeoSurfaceFactory(Cylinder) << 0.1;
    }

    void tessellationWithinTolerance()
    {
        QFETCH(ZYLGeoSurfaceFactory, factory);
        QFETCH(double, tolerance);
        const ZYLGeoRef<ZYLGeoSurface> surface = factory();
        const ZYLGeoMesh mesh = surface->Tessellate(tolerance);
        QVERIFY(!mesh.triangles.empty());
        QCOMPARE(mesh.normals.size(), mesh.vertices.size());
        std::mt19937 random(9);
        std::uniform_real_distribution<double> unit(0.0, 1.0);
        for (const std::array<int, 3> &t : mesh.triangles) {
            const ZYLMathPoint &a = mesh.vertices[size_t(t[0])], &b = mesh.vertices[size_t(t[1])], &c = mesh.vertices[size_t(t[2])];
            // Counter-clockwise seen from the normal side.
            const ZYLMathVector facet = (b - a).Cross(c - a);
            for (int k : t)
                QVERIFY(facet.Dot(mesh.normals[size_t(k)]) > 0.0);
            // Mesh to surface: random points of the triangle lie near the surface.
            for (int k = 0; k < 2; ++k) {
                double x = unit(random), y = unit(random);
                if (x + y > 1) {
                    x = 1 - x;
                    y = 1 - y;
                }
                const ZYLMathPoint p = a + (b - a) * x + (c - a) * y;
                QVERIFY2(std::abs(surface->GetSignedDistance(p)) <= tolerance, "mesh strays from the surface");
            }
        }
        for (const ZYLMathVector &n : mesh.normals)
            QVERIFY(std::abs(n.GetLength() - 1.0) < 1e-9);
        // Surface to mesh: random surface points lie near some triangle.
        const ZYLGeoSurface::Domain d = surface->GetDomain();
        for (int k = 0; k < 150; ++k) {
            const ZYLMathPoint p = surface->Evaluate(d.uMin + unit(random) * (d.uMax - d.uMin), d.vMin + unit(random) * (d.vMax - d.vMin));
            double nearest = std::numeric_limits<double>::infinity();
            for (const std::array<int, 3> &t : mesh.triangles) {
                nearest = std::min(nearest, DistanceToTriangle(p, mesh.vertices[size_t(t[0])], mesh.vertices[size_t(t[1])],
                                                               mesh.vertices[size_t(t[2])]));
            }
            QVERIFY2(nearest <= tolerance, "surface strays from the mesh");
        }
        QVERIFY(surface->Tessellate(tolerance * 16).triangles.size() < mesh.triangles.size() || mesh.triangles.size() == 2);
        QVERIFY(surface->Tessellate(0).vertices.empty());
        QVERIFY(surface->Tessellate(-tolerance).triangles.empty());
    }

    void planeTessellationIsTwoTriangles()
    {
        const ZYLGeoRef<ZYLGeoSurface> plane = TiltedPlane();
        const ZYLGeoMesh mesh = plane->Tessellate(1e-6);
        QCOMPARE(mesh.triangles.size(), size_t(2));
        const ZYLGeoSurface::Domain d = plane->GetDomain();
        QVERIFY(mesh.vertices[2].GetDistanceTo(plane->Evaluate(d.uMax, d.vMax)) < 1e-12);
        QVERIFY((mesh.vertices[1] - mesh.vertices[0]).Cross(mesh.vertices[2] - mesh.vertices[0]).Dot(mesh.normals[0]) > 0);
        QVERIFY(plane->Tessellate(qQNaN()).triangles.empty());
        QString error;
        QVERIFY(!ZYLGeoPlane::Create(ZYLMathAxis(), {0, 0, 0, 1}, &error));
        QVERIFY(error.contains("increasing"));
    }
};

QTEST_GUILESS_MAIN(tst_ZYLGeoSurfaceShape)
#include "tst_ZYLGeoSurfaceShape.moc"
