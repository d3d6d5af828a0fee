// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoBSplineSurface.h"
#include "ZYLGeoCurveOnSurface.h"
#include "ZYLGeoParametricCurve.h"
#include "ZYLGeoPlane.h"
#include "ZYLGeoPolyline.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

namespace {

using CurveFactory = std::function<ZYLGeoRef<ZYLGeoCurve>()>;

ZYLGeoRef<ZYLGeoCurve> Parabola()
{
    // Speed √(1 + 4t²): strongly varying, with a closed-form length.
    return ZYLGeoParametricCurve::Create([](double t) { return ZYLMathPoint(t, t * t, 0.0); }, -1.0, 2.0,
                                         [](double t) { return ZYLMathVector(1.0, 2 * t, 0.0); });
}

ZYLGeoRef<ZYLGeoCurve> Zigzag()
{
    return ZYLGeoPolyline::Create({{0, 0, 0}, {10, 0, 0}, {10, 0, 0}, {10, 5, 0}, {0, 5, 12}, {3, -1, 2}});
}

ZYLGeoRef<ZYLGeoCurve> CircleOnPlane()
{
    const ZYLGeoRef<ZYLGeoPlane> plane = ZYLGeoPlane::Create(
        ZYLMathAxis(ZYLMathPoint(5, 5, 5), ZYLMathVector(1, 1, 0), ZYLMathVector(0, 0, 1)), {-100, 100, -100, 100});
    return ZYLGeoCurveOnSurface::CreateFromFunction(
        plane.get(), [](double t) { return QPointF(40 * std::cos(t), 40 * std::sin(t)); }, 0.0, 2 * std::numbers::pi);
}

void AddKinds()
{
    QTest::addColumn<CurveFactory>("factory");
    QTest::newRow("polyline") << CurveFactory(Zigzag);
    QTest::newRow("parabola") << CurveFactory(Parabola);
    QTest::newRow("circle on plane") << CurveFactory(CircleOnPlane);
}

} // namespace

Q_DECLARE_METATYPE(CurveFactory)

class tst_ZYLGeoCurve : public QObject {
    Q_OBJECT

private slots:
    void parameterAtLength_data() { AddKinds(); }
    void parameterAtLength()
    {
        QFETCH(CurveFactory, factory);
        const ZYLGeoRef<ZYLGeoCurve> curve = factory();
        const double a = curve->GetStartParameter(), b = curve->GetEndParameter();
        const ZYLGeoRangeOfCurve range(a + 0.1 * (b - a), b - 0.05 * (b - a));
        const double total = curve->GetLength(range);
        for (double fraction : {0.0, 0.01, 0.3, 0.5, 0.77, 0.999}) {
            const double s = fraction * total;
            const double t = curve->GetParameterAtLength(s, range);
            QVERIFY(t >= range.GetStart(*curve) && t <= range.GetEnd(*curve));
            const double back = curve->GetLength({range.GetStart(*curve), t});
            QVERIFY2(std::abs(back - s) <= 1e-8 * total, qPrintable(QStringLiteral("s %1 gives %2").arg(s).arg(back)));
        }
        QCOMPARE(curve->GetParameterAtLength(-5.0, range), range.GetStart(*curve));
        QCOMPARE(curve->GetParameterAtLength(std::nan(""), range), range.GetStart(*curve));
        QCOMPARE(curve->GetParameterAtLength(total * 2, range), range.GetEnd(*curve));
    }

    void polylineParameterSkipsStandstill()
    {
        // Vertices 1 and 2 coincide: length 10 is reached first at vertex 1.
        const ZYLGeoRef<ZYLGeoCurve> zigzag = Zigzag();
        QCOMPARE(zigzag->GetParameterAtLength(10.0), 1.0);
        QVERIFY(std::abs(zigzag->GetParameterAtLength(12.5) - 2.5) < 1e-12);
        QVERIFY(!zigzag->GetTangent(1.5).has_value());
        QVERIFY(zigzag->GetTangent(0.5).has_value());
    }

    void badInputIsRefused()
    {
        QString error;
        QVERIFY(!ZYLGeoPolyline::Create({{1, 2, 3}}, &error));
        QVERIFY(error.contains("two points"));
        QVERIFY(!ZYLGeoPolyline::Create({{0, 0, 0}, {std::nan(""), 0, 0}}, &error));
        QVERIFY(error.contains("Point 1"));
        QVERIFY(!ZYLGeoParametricCurve::Create({}, 0.0, 1.0, {}, &error));
        QVERIFY(!ZYLGeoParametricCurve::Create([](double t) { return ZYLMathPoint(t, 0, 0); }, 1.0, 1.0, {}, &error));
        QVERIFY(error.contains("increasing"));
        QVERIFY(!ZYLGeoParametricCurve::Create([](double t) { return ZYLMathPoint(1 / t, 0, 0); }, 0.0, 1.0, {}, &error));
        QVERIFY(error.contains("not finite"));
        const ZYLGeoRef<ZYLGeoPlane> plane = ZYLGeoPlane::Create(ZYLMathAxis(), {0, 10, 0, 10});
        QVERIFY(!ZYLGeoCurveOnSurface::CreateFromPolyline(nullptr, {{0, 0}, {1, 1}}, &error));
        QVERIFY(!ZYLGeoCurveOnSurface::CreateFromPolyline(plane.get(), {{0, 0}, {11, 1}}, &error));
        QVERIFY(error.contains("outside"));
        // Nothing was kept by the refused curves.
        QCOMPARE(plane->GetReferenceCount(), 1);
    }
};

QTEST_GUILESS_MAIN(tst_ZYLGeoCurve)
#include "tst_ZYLGeoCurve.moc"
