// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Representations of geometry: which parts of a body are drawn for the visible-geometry
// flags, with which options, and how finely curves and surfaces are tessellated.

#include "ZYLVisRepFactory.h"

#include "ZYLVisTestScene.h"

#include "ZYLGeoBody.h"
#include "ZYLGeoCurve.h"
#include "ZYLGeoSurface.h"

#include <QTest>

#include <cmath>
#include <numbers>

namespace {
// A circular arc of radius r about the origin in the xy plane, parameter = angle.
class TestArc final : public ZYLGeoCurve {
public:
    TestArc(double radius, double start, double end) : m_radius(radius), m_start(start), m_end(end) {}
    double GetStartParameter() const override { return m_start; }
    double GetEndParameter() const override { return m_end; }
    ZYLMathPoint Evaluate(double t) const override
    {
        t = std::clamp(t, m_start, m_end);
        return {m_radius * std::cos(t), m_radius * std::sin(t), 0.0};
    }
    double m_radius, m_start, m_end;
};

// Half a cylinder of radius r about the x axis, x in [0, length], angle in [0, pi].
class TestHalfCylinder final : public ZYLGeoSurface {
public:
    TestHalfCylinder(double radius, double length) : m_radius(radius), m_length(length) {}
    Domain GetDomain() const override { return {0.0, m_length, 0.0, std::numbers::pi}; }
    ZYLMathPoint Evaluate(double u, double v) const override
    {
        return {u, m_radius * std::cos(v), m_radius * std::sin(v)};
    }
    void EvaluateDerivatives(double u, double v, ZYLMathPoint *point, ZYLMathVector *du,
                             ZYLMathVector *dv) const override
    {
        if (point)
            *point = Evaluate(u, v);
        if (du)
            *du = {1, 0, 0};
        if (dv)
            *dv = {0, -m_radius * std::sin(v), m_radius * std::cos(v)};
    }
    double m_radius, m_length;
};

ZYLVisOptions coloured(const QColor &color)
{
    ZYLVisOptions options;
    options.SetColor(color);
    return options;
}

// Body: a half cylinder (radius 10, length 40), a quarter arc (radius 10) and two points.
// The body holds the only references, so it deletes its curve and surface.
std::unique_ptr<ZYLGeoBody> testBody()
{
    auto body = std::make_unique<ZYLGeoBody>();
    body->AddSurface(new TestHalfCylinder(10.0, 40.0));
    body->AddCurve(new TestArc(10.0, 0.0, std::numbers::pi / 2));
    body->AddPoint({0, 0, 20});
    body->AddPoint({40, 0, 20});
    return body;
}
}

class tst_ZYLVisRepFactory : public QObject {
    Q_OBJECT

private slots:
    void drawsSelectedParts_data();
    void drawsSelectedParts();
    void tessellationFollowsBodySize();
    void refusesBadInput();
};

void tst_ZYLVisRepFactory::drawsSelectedParts_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("nothing") << 0 << QStringList();
    QTest::newRow("points") << 1 << QStringList{"points:blue"};
    QTest::newRow("curves") << 2 << QStringList{"polyline:green"};
    QTest::newRow("surfaces") << 4 << QStringList{"triangles:red"};
    QTest::newRow("points and surfaces") << 5 << QStringList{"triangles:red", "points:blue"};
    QTest::newRow("all") << 7 << QStringList{"triangles:red", "polyline:green", "points:blue"};
}

void tst_ZYLVisRepFactory::drawsSelectedParts()
{
    QFETCH(int, flags);
    QFETCH(QStringList, expected);
    const std::unique_ptr<ZYLGeoBody> body = testBody();
    std::unique_ptr<ZYLVisRep> rep(ZYLVisRepFactory::CreateRep(body.get(), coloured(Qt::blue), coloured(Qt::green),
                                                               coloured(Qt::red), flags));
    QVERIFY(rep);
    QStringList parts;
    for (const ZYLVisRep::Item &item : rep->GetAllPrimitives()) {
        const ZYLVisPrimitive::Kind kind = item.primitive->GetKind();
        const QString name = kind == ZYLVisPrimitive::Kind::Points     ? "points"
                             : kind == ZYLVisPrimitive::Kind::Polyline ? "polyline"
                             : kind == ZYLVisPrimitive::Kind::Triangles ? "triangles"
                                                                        : "segments";
        const QColor color = item.options->GetColor();
        parts << name + ":" + (color == QColor(Qt::blue) ? "blue" : color == QColor(Qt::green) ? "green" : "red");
    }
    QCOMPARE(parts, expected);
}

void tst_ZYLVisRepFactory::tessellationFollowsBodySize()
{
    const std::unique_ptr<ZYLGeoBody> body = testBody();
    std::unique_ptr<ZYLVisRep> rep(
        ZYLVisRepFactory::CreateRep(body.get(), ZYLVisOptions(), ZYLVisOptions(), ZYLVisOptions(), 6));
    const double tolerance = 1e-3 * body->GetBoundingBox().GetDiagonal().GetLength();
    const ZYLVisPrimitive *mesh = rep->GetPrimitive(0);
    const ZYLVisPrimitive *arc = rep->GetPrimitive(1);
    QCOMPARE(mesh->GetKind(), ZYLVisPrimitive::Kind::Triangles);
    QCOMPARE(arc->GetKind(), ZYLVisPrimitive::Kind::Polyline);

    // Arc: ends included, every vertex on the circle, every chord within the tolerance.
    QVERIFY((arc->GetVertex(0) - ZYLMathPoint(10, 0, 0)).GetLength() < 1e-9);
    QVERIFY((arc->GetVertices().back() - ZYLMathPoint(0, 10, 0)).GetLength() < 1e-9);
    QCOMPARE_GT(arc->GetNumVertices(), 8);
    for (int i = 0; i + 1 < arc->GetNumVertices(); ++i) {
        const ZYLMathPoint mid = ZYLMathPoint::Interpolate(arc->GetVertex(i), arc->GetVertex(i + 1), 0.5);
        QCOMPARE_LT(std::abs(arc->GetVertex(i).ToVector().GetLength() - 10.0), 1e-9);
        QCOMPARE_LE(10.0 - mid.ToVector().GetLength(), tolerance * 1.0001);
    }
    // Surface: vertices on the cylinder, triangle centres within the tolerance of it.
    const auto *triangles = static_cast<const ZYLVisTrianglePrimitive *>(mesh);
    const auto radial = [](const ZYLMathPoint &p) { return std::hypot(p.Y(), p.Z()); };
    QCOMPARE_GT(triangles->GetNumElements(), 16);
    for (int i = 0; i < triangles->GetNumElements(); ++i) {
        const ZYLMathPoint &a = triangles->GetTriangleVertex(i, 0);
        const ZYLMathPoint centre = a + ((triangles->GetTriangleVertex(i, 1) - a) + (triangles->GetTriangleVertex(i, 2) - a)) / 3.0;
        QCOMPARE_LT(std::abs(radial(a) - 10.0), 1e-9);
        QCOMPARE_LE(10.0 - radial(centre), tolerance * 1.0001);
    }
    QCOMPARE_LT(std::abs(rep->GetBoundingBox().GetMax().X() - 40.0), 1e-9);
}

void tst_ZYLVisRepFactory::refusesBadInput()
{
    const std::unique_ptr<ZYLGeoBody> body = testBody();
    QVERIFY(!ZYLVisRepFactory::CreateRep(nullptr, ZYLVisOptions(), ZYLVisOptions(), ZYLVisOptions(), 7));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, ZYLVisRepFactory::CreateRep(body.get(), ZYLVisOptions(), ZYLVisOptions(),
                                                                           ZYLVisOptions(), 8));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, ZYLVisRepFactory::CreateRep(body.get(), ZYLVisOptions(), ZYLVisOptions(),
                                                                           ZYLVisOptions(), -1));
}

QTEST_GUILESS_MAIN(tst_ZYLVisRepFactory)
#include "tst_ZYLVisRepFactory.moc"
