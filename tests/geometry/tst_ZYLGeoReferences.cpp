// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoAssembledCurveOnSurface.h"
#include "ZYLGeoBody.h"
#include "ZYLGeoPolyline.h"
#include "ZYLGeoRef.h"
#include "ZYLGeoSurface.h"

#include <QTest>

namespace {

// Geometry that counts its destructions, so that a leak (0) and a double delete (2, or a
// crash) both show.
int g_curvesDestroyed = 0;
int g_surfacesDestroyed = 0;

class CountedCurve final : public ZYLGeoCurve {
public:
    ~CountedCurve() override { ++g_curvesDestroyed; }
    double GetStartParameter() const override { return 0.0; }
    double GetEndParameter() const override { return 1.0; }
    ZYLMathPoint Evaluate(double t) const override { return {t, 2 * t, 0.0}; }
};

class CountedSurface final : public ZYLGeoSurface {
public:
    ~CountedSurface() override { ++g_surfacesDestroyed; }
    Domain GetDomain() const override { return {}; }
    ZYLMathPoint Evaluate(double u, double v) const override { return {u, v, 0.0}; }
    void EvaluateDerivatives(double u, double v, ZYLMathPoint *p, ZYLMathVector *du, ZYLMathVector *dv) const override
    {
        *p = Evaluate(u, v);
        *du = {1, 0, 0};
        *dv = {0, 1, 0};
    }
};

} // namespace

class tst_ZYLGeoReferences : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        g_curvesDestroyed = 0;
        g_surfacesDestroyed = 0;
    }

    void releaseWithoutReferenceIsIgnored()
    {
        CountedCurve curve;
        QTest::ignoreMessage(QtWarningMsg, "ZYLGeoGeometry::RemoveReference: no reference to release");
        curve.RemoveReference();
        QCOMPARE(g_curvesDestroyed, 0);
        QCOMPARE(curve.GetReferenceCount(), 0);
    }

    void bodyHoldsWhatItShows()
    {
        ZYLGeoRef<CountedSurface> surface(new CountedSurface);
        auto *body = new ZYLGeoBody;
        body->AddSurface(surface.get());
        body->AddCurve(new CountedCurve); // the body is its only holder
        body->AddPoint(ZYLMathPoint(5, 5, 5));
        QTest::ignoreMessage(QtWarningMsg, "ZYLGeoBody::AddCurve: null curve ignored");
        body->AddCurve(nullptr);
        QCOMPARE(body->GetNumCurves(), 1);
        QCOMPARE(surface->GetReferenceCount(), 2);
        QVERIFY(!body->GetSurface(1));
        QVERIFY(!body->GetCurve(-1));
        const ZYLMathBoundingBox box = body->GetBoundingBox();
        QVERIFY(box.Contains(ZYLMathPoint(5, 5, 5)) && box.Contains(ZYLMathPoint(1, 2, 0)) && box.Contains(ZYLMathPoint(0, 0, 0)));
        // Shared by two holders: the body releases, the surface lives on.
        body->AddReference();
        body->RemoveReference();
        QCOMPARE(g_curvesDestroyed, 1);
        QCOMPARE(g_surfacesDestroyed, 0);
        QCOMPARE(surface->GetReferenceCount(), 1);
        surface.reset();
        QCOMPARE(g_surfacesDestroyed, 1);
    }

    void assembledCurveHoldsSurfaceAndCurves()
    {
        auto *surface = new CountedSurface;
        auto *curve = new CountedCurve;
        {
            ZYLGeoAssembledCurveOnSurface boundary(surface);
            boundary.AddCurve(curve);
            boundary.AddCurve(curve); // a curve may appear twice; it is held twice
            QCOMPARE(curve->GetReferenceCount(), 2);
            QCOMPARE(boundary.GetNumCurves(), 2);
            QVERIFY(!boundary.GetCurve(2));
            QVERIFY(std::abs(boundary.GetLength() - 2 * std::sqrt(5.0)) < 1e-9);
        }
        QCOMPARE(g_curvesDestroyed, 1);
        QCOMPARE(g_surfacesDestroyed, 1);
        ZYLGeoAssembledCurveOnSurface withoutSurface(nullptr);
        QVERIFY(!withoutSurface.GetSurface());
    }

};

QTEST_GUILESS_MAIN(tst_ZYLGeoReferences)
#include "tst_ZYLGeoReferences.moc"
