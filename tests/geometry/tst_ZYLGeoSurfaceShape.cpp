// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Evaluation, derivatives, derivative bounds and tessellation of surfaces.
#include "ZYLGeoTestSurfaces.h"

#include <QTest>

#include <random>

namespace {

using namespace ZYLGeoTestSurfaces;

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

    void badSplinesAreRefused_data()
    {
        QTest::addColumn<int>("degreeU");
        QTest::addColumn<int>("countU");
        QTest::addColumn<QList<double>>("knotsU");
        QTest::addColumn<QString>("reason");
        QTest::newRow("too few points") << 3 << 3 << QList<double>{} << "at least";
        QTest::newRow("knot count") << 2 << 4 << QList<double>{0, 0, 0, 1, 1, 1} << "knots";
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
