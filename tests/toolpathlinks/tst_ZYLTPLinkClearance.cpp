// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Link motion clear of the part: straight links over a dome, a flat part and a mould cavity,
// safety plane links, and the lift kept while the link's ends stay where they were.
#include "ZYLTPLinkTestUtil.h"

#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPSafetyPlaneCourseLink.h"

#include "ZYLGeoBSplineSurface.h"

#include <QTest>

class tst_ZYLTPLinkClearance : public QObject {
    Q_OBJECT
private slots:
    void linearLink_data();
    void linearLink();
    void safetyPlaneLink();
    void procedureLinksRiseOnTheCourseSide_data();
    void procedureLinksRiseOnTheCourseSide();
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

void tst_ZYLTPLinkClearance::linearLink_data()
{
    QTest::addColumn<double>("curvature");
    QTest::addColumn<int>("detail");
    QTest::addColumn<bool>("lifted");
    QTest::newRow("dome") << -1.0 / 250 << int(ZYLTPCourseLink::Normal) << true;
    QTest::newRow("dome, coarse") << -1.0 / 250 << int(ZYLTPCourseLink::Coarse) << true;
    QTest::newRow("flat") << 0.0 << int(ZYLTPCourseLink::Fine) << false;
    QTest::newRow("mould cavity") << 1.0 / 1000 << int(ZYLTPCourseLink::Normal) << false;
}

void tst_ZYLTPLinkClearance::linearLink()
{
    QFETCH(double, curvature);
    QFETCH(int, detail);
    QFETCH(bool, lifted);
    PanelProgram t(curvature, ZYLTPCourseLink::Linear);
    auto *link = qobject_cast<ZYLTPLinearCourseLink *>(t.link);
    t.Open();
    link->SetRapidApproach(40.0);
    link->SetPointsDetail(ZYLTPCourseLink::OffPartMotionDetail(detail));
    t.Commit();
    const int n = link->GetNumPoints();
    QCOMPARE(n, ZYLTPCourseLink::GetSegmentCount(ZYLTPCourseLink::OffPartMotionDetail(detail)) + 3);
    QCOMPARE(link->GetClearanceLift() > 1.0, lifted);
    // Both ends rise by the rapid distance plus the lift along their tool axes.
    const ZYLMathAxis start = link->GetPoint(0)->GetAxis();
    const ZYLMathPoint up = link->GetPoint(1)->GetTipPoint();
    const ZYLMathPoint above = link->GetPoint(n - 2)->GetTipPoint();
    QVERIFY(ZYLTPNear(up, start.GetOrigin() + start.GetThirdDirection() * (50.0 + link->GetClearanceLift())));
    // Every place of the traverse keeps its clearance: 50 mm at the start, 40 at the end.
    double slack = 1e9;
    for (int j = 0; j <= 160; ++j) {
        const double s = j / 160.0;
        slack = std::min(slack, t.Clearance(ZYLMathPoint::Interpolate(up, above, s)) - (50.0 - 10.0 * s));
    }
    QVERIFY2(slack > -0.05, qPrintable(QString::number(slack)));
    for (int i = 1; i < n - 1; ++i)
        QVERIFY(t.Clearance(link->GetPoint(i)->GetTipPoint()) >= 40.0 - 1e-6);
    // Lifted no more than needed: the traverse then just touches its clearance.
    if (lifted)
        QVERIFY2(slack < 0.01, qPrintable(QString::number(slack)));
}

void tst_ZYLTPLinkClearance::procedureLinksRiseOnTheCourseSide_data()
{
    QTest::addColumn<bool>("approach");
    QTest::newRow("approach") << true;
    QTest::newRow("retract") << false;
}

// Home lies low beyond the dome's far side, so the straight move to or from the first course
// would cut through the dome's top.
void tst_ZYLTPLinkClearance::procedureLinksRiseOnTheCourseSide()
{
    QFETCH(bool, approach);
    PanelProgram t(-1.0 / 250, ZYLTPCourseLink::Linear);
    // Home beyond the far side of the dome from the linked course.
    const ZYLMathAxis home(ZYLMathPoint(approach ? 700 : -700, 0, -300), ZYLMathVector(1, 0, 0), ZYLMathVector(0, 1, 0));
    t.Open();
    t.procedure->SetHomeFrame(home);
    const ZYLTPCourseLink *link = approach ? t.procedure->LinkCourses(nullptr, t.courses[0], nullptr)
                                           : t.procedure->LinkCourses(t.courses[1], nullptr, nullptr);
    t.Commit();
    QVERIFY(link->GetClearanceLift() > 1.0);
    const int n = link->GetNumPoints();
    // Home stays; the traverse keeps the rapid distance at the course, nothing at home.
    const ZYLMathPoint homePoint = link->GetPoint(approach ? 0 : n - 1)->GetTipPoint();
    QVERIFY(ZYLTPNear(homePoint, home.GetOrigin()));
    const double rapid = approach ? t.procedure->GetRapidApproach() : t.procedure->GetRapidRetract();
    const ZYLMathPoint lifted = link->GetPoint(approach ? n - 2 : 1)->GetTipPoint();
    // Checked where the link checks it: 17 places, every point of every detail among them.
    double slack = 1e9;
    for (int j = 0; j <= 16; ++j) {
        const double s = j / 16.0; // from home to the lifted course end
        slack = std::min(slack, t.Clearance(ZYLMathPoint::Interpolate(homePoint, lifted, s)) - rapid * s);
    }
    QVERIFY2(slack > -0.05, qPrintable(QString::number(slack)));
    QVERIFY2(slack < 0.01, qPrintable(QString::number(slack)));
}

void tst_ZYLTPLinkClearance::safetyPlaneLink()
{
    PanelProgram t(-1.0 / 250, ZYLTPCourseLink::SafetyPlane);
    const int n = t.link->GetNumPoints();
    for (int i = 1; i < n - 1; ++i)
        QVERIFY(t.Clearance(t.link->GetPoint(i)->GetTipPoint()) >= t.procedure->GetSafetyClearance() - 1e-6);
}

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
