// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Link motion clear of the part: the lift is kept while the link's ends stay where they were
// and worked out again once they move.
#include "ZYLTPLinkTestUtil.h"

#include "ZYLTPLinearCourseLink.h"

#include "ZYLGeoBSplineSurface.h"

#include <QTest>

class tst_ZYLTPLinkClearance : public QObject {
    Q_OBJECT
private slots:
    void liftKeptUntilEndsChange();
};

namespace {
// A ply surface that counts closest-point queries.
class CountingSurface final : public ZYLGeoSurface {
public:
    explicit CountingSurface(ZYLGeoRef<ZYLGeoBSplineSurface> inner) : m_inner(std::move(inner)) {}
    Domain GetDomain() const override { return m_inner->GetDomain(); }
    ZYLMathPoint Evaluate(double u, double v) const override { return m_inner->Evaluate(u, v); }
    void EvaluateDerivatives(double u, double v, ZYLMathPoint *p, ZYLMathVector *du, ZYLMathVector *dv) const override
    {
        m_inner->EvaluateDerivatives(u, v, p, du, dv);
    }
    SecondDerivatives EvaluateSecondDerivatives(double u, double v) const override
    {
        return m_inner->EvaluateSecondDerivatives(u, v);
    }
    SecondDerivativeBounds GetSecondDerivativeBounds(const Domain &region) const override
    {
        return m_inner->GetSecondDerivativeBounds(region);
    }
    ZYLGeoSurfaceFoot GetClosestPoint(const ZYLMathPoint &q, const ZYLGeoSurfaceFoot *hint) const override
    {
        ++queries;
        return m_inner->GetClosestPoint(q, hint);
    }
    mutable int queries = 0;

private:
    ZYLGeoRef<ZYLGeoBSplineSurface> m_inner;
};

// Two courses on the panel z = curvature · x² / 2 (1000 x 400 mm), both laid along +x at
// y = 0, one over x in [-400, -300] and one over [300, 400], linked by `strategy`.
struct PanelProgram : ZYLTPTestProgram {
    PanelProgram(double curvature, ZYLTPCourseLink::OffPartMotionStrategy strategy)
        : ZYLTPTestProgram(0),
          surface(new CountingSurface(
              ZYLGeoBSplineSurface::CreateDoublyCurvedPanel(ZYLMathAxis(), 1000, 400, curvature, 0)))
    {
        builder.SetPlySurface(surface.get());
        for (double x0 : {-400.0, 300.0}) {
            ZYLTPProgramBuilder::CourseData data = ZYLTPStraightCourse(0, 10, {{11, 0xF}});
            for (size_t i = 0; i < data.tips.size(); ++i) {
                data.tips[i] = surface->Evaluate(x0 + 10.0 * i + 500, 200);
                data.normals[i] = surface->GetNormal(x0 + 10.0 * i + 500, 200);
            }
            courses << builder.AddTowCourse(procedure, configuration, data);
        }
        link = builder.AddLink(procedure, courses[0], courses[1], strategy);
    }
    // Clearance on the head's side of the surface.
    double Clearance(const ZYLMathPoint &p) const { return surface->GetSignedDistance(p); }
    ZYLGeoRef<CountingSurface> surface;
    ZYLTPCourseLink *link = nullptr;
};
} // namespace

void tst_ZYLTPLinkClearance::liftKeptUntilEndsChange()
{
    PanelProgram t(-1.0 / 250, ZYLTPCourseLink::Linear);
    auto *link = qobject_cast<ZYLTPLinearCourseLink *>(t.link);
    const double lift = link->GetClearanceLift();
    QVERIFY(lift > 1.0);
    const int queries = t.surface->queries;
    t.Open();
    t.procedure->SetLayingFeedrate(1234.0);
    t.Commit();
    // The model changed, so the link is recomputed, but its ends did not move.
    link->GetNumPoints();
    QCOMPARE(t.surface->queries, queries);
    t.Open();
    t.courses[1]->SetRollIn(60.0);
    t.Commit();
    link->GetNumPoints();
    QVERIFY(t.surface->queries > queries);
    QVERIFY(link->GetClearanceLift() != lift);
    t.container.Undo();
    QCOMPARE(link->GetClearanceLift(), lift);
}

QTEST_GUILESS_MAIN(tst_ZYLTPLinkClearance)
#include "tst_ZYLTPLinkClearance.moc"
