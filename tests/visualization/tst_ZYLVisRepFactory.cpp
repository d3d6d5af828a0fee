// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Representations of geometry refuse unusable input.

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
    void refusesBadInput();
};

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
