// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Course links: the derived off-part motion between courses and of the procedure's own links.
#include "ZYLTPCourseLink.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPCheck.h"
#include "ZYLTPCourse.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPModelRevision.h"
#include "ZYLTPOffPartPoint.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPSafetyPlaneCourseLink.h"

#include "ZYLFeatRecorder.h"
#include "ZYLGeoSurface.h"

#include <algorithm>
#include <cmath>

ZYLTPCourseLink::ZYLTPCourseLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from, const ZYLTPCourse *to)
    : m_procedure(procedure), m_from(from), m_to(to)
{
}

ZYLTPCourseLink::~ZYLTPCourseLink() = default;

void ZYLTPCourseLink::Refresh() const
{
    if (m_revision == ZYLTPModelRevision::Get() && !m_points.empty())
        return;
    const std::vector<ZYLMathAxis> frames = ComputeFrames();
    // Existing point objects take the new frames, so their addresses survive a recomputation
    // that keeps the number of points.
    const size_t kept = std::min(frames.size(), m_points.size());
    for (size_t i = 0; i < kept; ++i)
        m_points[i]->SetFrame(frames[i]);
    // Points no longer needed stay alive with the link: someone may be reading one of them
    // right now (a point refreshes its link before it answers).
    for (size_t i = kept; i < m_points.size(); ++i)
        m_retired.push_back(std::move(m_points[i]));
    m_points.resize(frames.size());
    for (size_t i = kept; i < frames.size(); ++i)
        m_points[i] = std::make_unique<ZYLTPOffPartPoint>(frames[i], nullptr, this);
    m_revision = ZYLTPModelRevision::Get();
}

void ZYLTPCourseLink::Update()
{
    m_revision = 0;
    Refresh();
}

int ZYLTPCourseLink::GetNumPoints() const
{
    Refresh();
    return int(m_points.size());
}

const ZYLTPOffPartPoint *ZYLTPCourseLink::GetPoint(int i) const
{
    Refresh();
    return i >= 0 && size_t(i) < m_points.size() ? m_points[size_t(i)].get() : nullptr;
}

int ZYLTPCourseLink::GetPointIndex(const ZYLTPOffPartPoint *point) const
{
    Refresh();
    for (size_t i = 0; i < m_points.size(); ++i) {
        if (m_points[i].get() == point)
            return int(i);
    }
    return -1;
}

double ZYLTPCourseLink::GetLength() const
{
    Refresh();
    double length = 0.0;
    for (size_t i = 1; i < m_points.size(); ++i)
        length += m_points[i]->GetTipPoint().GetDistanceTo(m_points[i - 1]->GetTipPoint());
    return length;
}

double ZYLTPCourseLink::GetTimeEstimate() const
{
    return GetLength() / m_procedure->GetRapidFeedRate() * 60.0;
}

void ZYLTPCourseLink::SetPointsDetail(OffPartMotionDetail detail)
{
    if (detail < Coarse || detail > Fine)
        throw ZYLSysOutOfBoundsException(detail, Coarse, Fine);
    if (detail == m_detail)
        return;
    ZYLFeatRecorder::SetValue(m_detail, detail);
    ZYLTPModelRevision::Record();
}

QList<ZYLTPCourseLink::OffPartMotionStrategy> ZYLTPCourseLink::GetAllOffPartMotionStrategies()
{
    return {Linear, SafetyPlane, Custom};
}

QString ZYLTPCourseLink::GetOffPartMotionStrategyLabel(OffPartMotionStrategy strategy)
{
    switch (strategy) {
    case Linear:
        return tr("Linear");
    case SafetyPlane:
        return tr("Safety plane");
    case Custom:
        return tr("Custom");
    }
    return {};
}

QList<ZYLTPCourseLink::OffPartMotionDetail> ZYLTPCourseLink::GetAllOffPartMotionDetails()
{
    return {Coarse, Normal, Fine};
}

QString ZYLTPCourseLink::GetOffPartMotionDetailLabel(OffPartMotionDetail detail)
{
    switch (detail) {
    case Coarse:
        return tr("Coarse");
    case Normal:
        return tr("Normal");
    case Fine:
        return tr("Fine");
    }
    return {};
}

int ZYLTPCourseLink::GetSegmentCount(OffPartMotionDetail detail)
{
    return detail == Coarse ? 1 : (detail == Normal ? 4 : 16);
}

ZYLMathAxis ZYLTPCourseLink::GetStartFrame() const
{
    return m_from ? m_from->GetRetractTrajectory()->GetFarFrame() : m_procedure->GetHomeFrame();
}

ZYLMathAxis ZYLTPCourseLink::GetEndFrame() const
{
    return m_to ? m_to->GetApproachTrajectory()->GetFarFrame() : m_procedure->GetHomeFrame();
}

std::vector<std::unique_ptr<ZYLTPOffPartPoint>> &ZYLTPCourseLink::GetPointObjects() const
{
    Refresh();
    return m_points;
}

void ZYLTPCourseLink::AppendStraight(std::vector<ZYLMathAxis> &frames, const ZYLMathAxis &a, const ZYLMathPoint &b,
                                     int segments)
{
    // Zero-length moves still add their points, so that the number of points depends on the
    // detail only and point objects keep their addresses while the geometry changes.
    for (int j = 1; j <= segments; ++j) {
        ZYLMathAxis frame = a;
        frame.SetOrigin(ZYLMathPoint::Interpolate(a.GetOrigin(), b, double(j) / segments));
        frames.push_back(frame);
    }
}

// ---------------------------------------------------------------------------------------------

std::vector<ZYLMathAxis> ZYLTPCourseLink::StraightMotion(const ZYLMathAxis &start, const ZYLMathAxis &end,
                                                        double lift, double drop, int segments)
{
    return UpAcrossDown(start, start.GetOrigin() + start.GetThirdDirection() * lift,
                        end.GetOrigin() + end.GetThirdDirection() * drop, end, segments);
}

std::vector<ZYLMathAxis> ZYLTPCourseLink::UpAcrossDown(const ZYLMathAxis &start, const ZYLMathPoint &up,
                                                      const ZYLMathPoint &above, const ZYLMathAxis &end,
                                                      int segments)
{
    std::vector<ZYLMathAxis> frames{start};
    AppendStraight(frames, start, up, 1);
    AppendStraight(frames, frames.back(), above, segments);
    // The head arrives above the next start already turned to its frame.
    ZYLMathAxis turned = end;
    turned.SetOrigin(above);
    frames.back() = turned;
    AppendStraight(frames, turned, end.GetOrigin(), 1);
    frames.back() = end;
    return frames;
}

ZYLTPProcedureLink::ZYLTPProcedureLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from,
                                       const ZYLTPCourse *to)
    : ZYLTPCourseLink(procedure, from, to)
{
}
ZYLTPProcedureLink::~ZYLTPProcedureLink() = default;

std::vector<ZYLMathAxis> ZYLTPProcedureLink::ComputeFrames() const
{
    const ZYLTPRollLayupProcedure *procedure = GetProcedure();
    const int segments = GetSegmentCount(GetPointsDetail());
    if (IsApproachLink())
        return StraightMotion(procedure->GetHomeFrame(), GetEndFrame(), 0.0, procedure->GetRapidApproach(), segments);
    return StraightMotion(GetStartFrame(), procedure->GetHomeFrame(), procedure->GetRapidRetract(), 0.0,
                          segments);
}

ZYLTPLinearCourseLink::ZYLTPLinearCourseLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from,
                                             const ZYLTPCourse *to)
    : ZYLTPCourseLink(procedure, from, to),
      m_rapidApproach(procedure->GetRapidApproach()),
      m_rapidRetract(procedure->GetRapidRetract())
{
}
ZYLTPLinearCourseLink::~ZYLTPLinearCourseLink() = default;

void ZYLTPLinearCourseLink::SetRapidApproach(double distance)
{
    ZYLTPCheck::Length(distance);
    if (distance == m_rapidApproach)
        return;
    ZYLFeatRecorder::SetValue(m_rapidApproach, distance);
    ZYLTPModelRevision::Record();
}

void ZYLTPLinearCourseLink::SetRapidRetract(double distance)
{
    ZYLTPCheck::Length(distance);
    if (distance == m_rapidRetract)
        return;
    ZYLFeatRecorder::SetValue(m_rapidRetract, distance);
    ZYLTPModelRevision::Record();
}

namespace {

// Places along the traverse where its clearance is checked: every point of every detail
// (1, 4 or 16 segments) lies on one of them.
constexpr int ClearanceSamples = 16;
// Clearance shortfall (mm) below which the traverse counts as clear.
constexpr double ClearanceTolerance = 1e-6;
// Lifting both ends by h raises no place of the traverse by more than h (the distance to a
// surface changes no faster than the point moves), so adding the shortfall never overshoots
// and the lift grows towards the smallest one that clears. Steep tool axes make each step
// gain less; the bound only stops a pathological case.
constexpr int MaxClearanceSteps = 32;

// Returns the extra height by which both lifted ends of a straight traverse must rise along
// their tool axes so that every place of it keeps the clearance required there.
double FindClearanceLift(const ZYLGeoSurface &surface, const ZYLMathAxis &start, const ZYLMathAxis &end,
                         double retract, double approach)
{
    // The head works on the side of the surface its tool axis points to at the start.
    const ZYLGeoSurfaceFoot startFoot = surface.GetClosestPoint(start.GetOrigin());
    const double side = startFoot.normal.Dot(start.GetThirdDirection()) < 0.0 ? -1.0 : 1.0;
    double lift = 0.0;
    for (int step = 0; step < MaxClearanceSteps; ++step) {
        const ZYLMathPoint up = start.GetOrigin() + start.GetThirdDirection() * (retract + lift);
        const ZYLMathPoint above = end.GetOrigin() + end.GetThirdDirection() * (approach + lift);
        double shortfall = 0.0;
        ZYLGeoSurfaceFoot foot = startFoot;
        for (int j = 0; j <= ClearanceSamples; ++j) {
            const double s = double(j) / ClearanceSamples;
            // Neighbouring places have neighbouring feet: each query starts from the last.
            foot = surface.GetClosestPoint(ZYLMathPoint::Interpolate(up, above, s), &foot);
            const double required = retract + (approach - retract) * s;
            const double clearance = side * foot.signedDistance;
            if (std::isfinite(clearance))
                shortfall = std::max(shortfall, required - clearance);
        }
        if (shortfall <= ClearanceTolerance)
            break;
        lift += shortfall;
    }
    return lift;
}

} // namespace

double ZYLTPLinearCourseLink::ComputeLift(const ZYLMathAxis &start, const ZYLMathAxis &end) const
{
    const ZYLGeoSurface *surface = GetProcedure()->GetProgram()->GetPlySurface();
    if (!surface)
        return 0.0;
    LiftCache &c = m_lift;
    if (c.valid && c.surface == surface && c.start == start && c.end == end && c.retract == m_rapidRetract
        && c.approach == m_rapidApproach)
        return c.lift;
    const double lift = FindClearanceLift(*surface, start, end, m_rapidRetract, m_rapidApproach);
    c = LiftCache{true, surface, start, end, m_rapidRetract, m_rapidApproach, lift};
    return lift;
}

double ZYLTPLinearCourseLink::GetClearanceLift() const
{
    GetNumPoints();
    const ZYLGeoSurface *surface = GetProcedure()->GetProgram()->GetPlySurface();
    return surface && m_lift.valid && m_lift.surface == surface ? m_lift.lift : 0.0;
}

std::vector<ZYLMathAxis> ZYLTPLinearCourseLink::ComputeFrames() const
{
    const ZYLMathAxis start = GetStartFrame();
    const ZYLMathAxis end = GetEndFrame();
    const double lift = ComputeLift(start, end);
    return StraightMotion(start, end, m_rapidRetract + lift, m_rapidApproach + lift,
                          GetSegmentCount(GetPointsDetail()));
}

ZYLTPSafetyPlaneCourseLink::ZYLTPSafetyPlaneCourseLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from,
                                                       const ZYLTPCourse *to)
    : ZYLTPCourseLink(procedure, from, to)
{
}
ZYLTPSafetyPlaneCourseLink::~ZYLTPSafetyPlaneCourseLink() = default;

std::vector<ZYLMathAxis> ZYLTPSafetyPlaneCourseLink::ComputeFrames() const
{
    const ZYLMathAxis start = GetStartFrame();
    const ZYLMathAxis end = GetEndFrame();
    const ZYLMathBoundingBox box = GetProcedure()->GetProgram()->GetPartBoundingBox();
    double plane = box.IsEmpty() ? 0.0 : box.GetMax().Z();
    plane = std::max({plane + GetProcedure()->GetSafetyClearance(), start.GetOrigin().Z(), end.GetOrigin().Z()});
    const ZYLMathPoint up(start.GetOrigin().X(), start.GetOrigin().Y(), plane);
    const ZYLMathPoint over(end.GetOrigin().X(), end.GetOrigin().Y(), plane);
    return UpAcrossDown(start, up, over, end, GetSegmentCount(GetPointsDetail()));
}
