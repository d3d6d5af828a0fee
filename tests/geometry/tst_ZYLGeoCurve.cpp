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

ZYLGeoRef<ZYLGeoCurve> Helix()
{
    // Radius 30, rise 5 per radian: speed √(30² + 5²) everywhere.
    return ZYLGeoParametricCurve::Create(
        [](double t) { return ZYLMathPoint(30 * std::cos(t), 30 * std::sin(t), 5 * t); }, 0.0, 4 * std::numbers::pi);
}

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

ZYLGeoRef<ZYLGeoCurve> PolylineOnPanel()
{
    const ZYLGeoRef<ZYLGeoBSplineSurface> panel =
        ZYLGeoBSplineSurface::CreateDoublyCurvedPanel(ZYLMathAxis(), 400, 300, 1.0 / 150, -1.0 / 200);
    return ZYLGeoCurveOnSurface::CreateFromPolyline(panel.get(), {{10, 10}, {390, 40}, {200, 290}, {10, 10}});
}

ZYLGeoRef<ZYLGeoCurve> CircleOnPlane()
{
    const ZYLGeoRef<ZYLGeoPlane> plane = ZYLGeoPlane::Create(
        ZYLMathAxis(ZYLMathPoint(5, 5, 5), ZYLMathVector(1, 1, 0), ZYLMathVector(0, 0, 1)), {-100, 100, -100, 100});
    return ZYLGeoCurveOnSurface::CreateFromFunction(
        plane.get(), [](double t) { return QPointF(40 * std::cos(t), 40 * std::sin(t)); }, 0.0, 2 * std::numbers::pi);
}

double ParabolaLength(double a, double b)
{
    const auto primitive = [](double t) { return 0.5 * t * std::sqrt(1 + 4 * t * t) + 0.25 * std::asinh(2 * t); };
    return primitive(b) - primitive(a);
}

// The curve sampled finely, corners included: a polyline whose length converges to the arc
// length from below.
std::vector<ZYLMathPoint> Samples(const ZYLGeoCurve &curve, double a, double b, int count)
{
    std::vector<double> ts;
    for (int i = 0; i <= count; ++i)
        ts.push_back(a + (b - a) * i / count);
    for (double k : curve.GetKinks()) {
        if (k > a && k < b)
            ts.push_back(k);
    }
    std::sort(ts.begin(), ts.end());
    std::vector<ZYLMathPoint> points;
    for (double t : ts)
        points.push_back(curve.Evaluate(t));
    return points;
}

double PolylineLength(const std::vector<ZYLMathPoint> &points)
{
    double length = 0.0;
    for (size_t i = 1; i < points.size(); ++i)
        length += points[i].GetDistanceTo(points[i - 1]);
    return length;
}

double DistanceToSegment(const ZYLMathPoint &p, const ZYLMathPoint &a, const ZYLMathPoint &b)
{
    const ZYLMathVector ab = b - a;
    const double ll = ab.GetSquaredLength();
    const double t = ll > 0 ? std::clamp((p - a).Dot(ab) / ll, 0.0, 1.0) : 0.0;
    return p.GetDistanceTo(a + ab * t);
}

double DistanceToPolyline(const ZYLMathPoint &p, const std::vector<ZYLMathPoint> &polyline)
{
    double best = std::numeric_limits<double>::infinity();
    for (size_t i = 1; i < polyline.size(); ++i)
        best = std::min(best, DistanceToSegment(p, polyline[i - 1], polyline[i]));
    return best;
}

void AddKinds()
{
    QTest::addColumn<CurveFactory>("factory");
    QTest::newRow("polyline") << CurveFactory(Zigzag);
    QTest::newRow("helix") << CurveFactory(Helix);
    QTest::newRow("parabola") << CurveFactory(Parabola);
    QTest::newRow("polyline on panel") << CurveFactory(PolylineOnPanel);
    QTest::newRow("circle on plane") << CurveFactory(CircleOnPlane);
}

} // namespace

Q_DECLARE_METATYPE(CurveFactory)

class tst_ZYLGeoCurve : public QObject {
    Q_OBJECT

private slots:
    void lengthMatchesSampling_data() { AddKinds(); }
    void parameterAtLength_data() { AddKinds(); }
    void boundingBoxHoldsCurve_data() { AddKinds(); }

    void lengthMatchesSampling()
    {
        QFETCH(CurveFactory, factory);
        const ZYLGeoRef<ZYLGeoCurve> curve = factory();
        QVERIFY(curve);
        const double a = curve->GetStartParameter(), b = curve->GetEndParameter();
        // A polyline of 200,000 chords is shorter than the curve by O(h²); both sides of a
        // sub-range must add up.
        const double sampled = PolylineLength(Samples(*curve, a, b, 200000));
        const double length = curve->GetLength();
        QVERIFY2(std::abs(length - sampled) <= 1e-6 * length, qPrintable(QString::number(length - sampled)));
        const double mid = a + 0.37 * (b - a);
        const double parts = curve->GetLength({a, mid}) + curve->GetLength({mid, b});
        QVERIFY(std::abs(parts - length) <= 1e-9 * length);
    }

    void exactLengths()
    {
        QVERIFY(std::abs(Helix()->GetLength() - 4 * std::numbers::pi * std::sqrt(925.0)) < 1e-8);
        QVERIFY(std::abs(Parabola()->GetLength() - ParabolaLength(-1, 2)) < 1e-9);
        QVERIFY(std::abs(Parabola()->GetLength({0.5, 1.5}) - ParabolaLength(0.5, 1.5)) < 1e-10);
        QVERIFY(std::abs(CircleOnPlane()->GetLength() - 80 * std::numbers::pi) < 1e-8);
        QCOMPARE(Zigzag()->GetLength(), 10 + 5 + std::sqrt(100.0 + 144.0) + std::sqrt(9.0 + 36.0 + 100.0));
        // Part of a segment.
        QVERIFY(std::abs(Zigzag()->GetLength({0.25, 3.5}) - (7.5 + 5 + 0.5 * std::sqrt(244.0))) < 1e-12);
    }

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

    void tessellationWithinTolerance_data()
    {
        QTest::addColumn<CurveFactory>("factory");
        QTest::addColumn<double>("tolerance");
        QTest::newRow("helix coarse") << CurveFactory(Helix) << 0.5;
        QTest::newRow("helix fine") << CurveFactory(Helix) << 0.001;
        QTest::newRow("parabola") << CurveFactory(Parabola) << 0.002;
        QTest::newRow("polyline on panel") << CurveFactory(PolylineOnPanel) << 0.05;
        QTest::newRow("circle on plane") << CurveFactory(CircleOnPlane) << 0.01;
    }

    void tessellationWithinTolerance()
    {
        QFETCH(CurveFactory, factory);
        QFETCH(double, tolerance);
        const ZYLGeoRef<ZYLGeoCurve> curve = factory();
        const double a = curve->GetStartParameter(), b = curve->GetEndParameter();
        const std::vector<ZYLMathPoint> chords = curve->Tessellate(tolerance);
        QVERIFY(chords.size() >= 2);
        QVERIFY(chords.front().GetDistanceTo(curve->Evaluate(a)) < 1e-12);
        QVERIFY(chords.back().GetDistanceTo(curve->Evaluate(b)) < 1e-12);
        // Both ways: every curve sample lies near the chords, every chord point near the curve
        // (measured against a sampling much finer than the tolerance).
        const std::vector<ZYLMathPoint> samples = Samples(*curve, a, b, 20000);
        const double slack = 1e-3 * tolerance;
        for (const ZYLMathPoint &p : samples)
            QVERIFY2(DistanceToPolyline(p, chords) <= tolerance + slack, "curve point too far from the chords");
        for (size_t i = 1; i < chords.size(); ++i) {
            for (double f : {0.25, 0.5, 0.75}) {
                const ZYLMathPoint p = ZYLMathPoint::Interpolate(chords[i - 1], chords[i], f);
                QVERIFY2(DistanceToPolyline(p, samples) <= tolerance + slack, "chord too far from the curve");
            }
        }
        // A coarser tolerance never needs more points.
        QVERIFY(curve->Tessellate(tolerance * 4).size() <= chords.size());
        QVERIFY(curve->Tessellate(0.0).empty());
        QVERIFY(curve->Tessellate(-1.0).empty());
        QVERIFY(curve->Tessellate(std::nan("")).empty());
    }

    void boundingBoxHoldsCurve()
    {
        QFETCH(CurveFactory, factory);
        const ZYLGeoRef<ZYLGeoCurve> curve = factory();
        const ZYLMathBoundingBox box = curve->GetBoundingBox();
        ZYLMathBoundingBox sampled;
        for (const ZYLMathPoint &p : Samples(*curve, curve->GetStartParameter(), curve->GetEndParameter(), 20000)) {
            QVERIFY(box.Contains(p));
            sampled.Add(p);
        }
        // Tight within the documented margin.
        const double size = sampled.GetDiagonal().GetLength();
        QVERIFY((box.GetMin() - sampled.GetMin()).GetLength() <= 1e-3 * size);
        QVERIFY((box.GetMax() - sampled.GetMax()).GetLength() <= 1e-3 * size);
    }

    void rangeResolution()
    {
        const ZYLGeoRef<ZYLGeoCurve> zigzag = Zigzag(); // interval [0, 5]
        QCOMPARE(ZYLGeoRangeOfCurve().GetStart(*zigzag), 0.0);
        QCOMPARE(ZYLGeoRangeOfCurve().GetEnd(*zigzag), 5.0);
        const ZYLGeoRangeOfCurve reversed(4.0, 1.5);
        QCOMPARE(reversed.GetStart(*zigzag), 1.5);
        QCOMPARE(reversed.GetEnd(*zigzag), 4.0);
        const ZYLGeoRangeOfCurve beyond(-3.0, 9.0);
        QCOMPARE(beyond.GetStart(*zigzag), 0.0);
        QCOMPARE(beyond.GetEnd(*zigzag), 5.0);
        const ZYLGeoRangeOfCurve halfMade(std::nan(""), 2.0);
        QCOMPARE(halfMade.GetStart(*zigzag), 0.0);
        QCOMPARE(halfMade.GetEnd(*zigzag), 2.0);
        // A range's tessellation starts and ends inside segments.
        const std::vector<ZYLMathPoint> part = zigzag->Tessellate(1.0, {0.5, 3.5});
        QCOMPARE(int(part.size()), 5);
        QCOMPARE(part.front(), ZYLMathPoint(5, 0, 0));
        QCOMPARE(part.back(), ZYLMathPoint(5, 5, 6));
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
