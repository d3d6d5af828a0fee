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
#include <limits>

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
    // right now (a point refreshes its link before it answers). They are kept as a stack,
    // last point deepest, so that when the count grows back (undo of a detail change) each
    // position gets back the very object it had.
    for (size_t i = m_points.size(); i > kept; --i)
        m_retired.push_back(std::move(m_points[i - 1]));
    m_points.resize(frames.size());
    for (size_t i = kept; i < frames.size(); ++i) {
        if (!m_retired.empty()) {
            m_points[i] = std::move(m_retired.back());
            m_retired.pop_back();
            m_points[i]->SetFrame(frames[i]);
        } else {
            m_points[i] = std::make_unique<ZYLTPOffPartPoint>(frames[i], nullptr, this);
        }
    }
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

void ZYLTPCourseLink::AppendStraight(std::vector<ZYLMathAxis> &frames, ZYLMathAxis a, ZYLMathPoint b, int segments)
{
    // a and b are taken by value: a caller may pass frames.back(), which push_back reallocates.
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
    // The home frame stays where it is: only the course's end rises to clear the part.
    if (IsApproachLink()) {
        const ZYLMathAxis end = GetEndFrame();
        const double approach = procedure->GetRapidApproach();
        const double lift = ComputeClearanceLift(procedure->GetHomeFrame(), end, 0.0, approach, LiftEnd);
        return StraightMotion(procedure->GetHomeFrame(), end, 0.0, approach + lift, segments);
    }
    const ZYLMathAxis start = GetStartFrame();
    const double retract = procedure->GetRapidRetract();
    const double lift = ComputeClearanceLift(start, procedure->GetHomeFrame(), retract, 0.0, LiftStart);
    return StraightMotion(start, procedure->GetHomeFrame(), retract + lift, 0.0, segments);
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
// Clearance error (mm) at which the lift counts as found.
constexpr double ClearanceTolerance = 1e-6;
constexpr int MaxClearanceSteps = 24;

// Returns the extra height by which the lifted ends of a straight traverse that may rise
// (`ends`) must rise along their tool axes so that every place of it keeps the clearance
// required there, the least such height to within the tolerance.
double FindClearanceLift(const ZYLGeoSurface &surface, const ZYLMathAxis &start, const ZYLMathAxis &end,
                         double retract, double approach, ZYLTPCourseLink::LiftedEnds ends)
{
    // The head works on the side of the surface its tool axis points to on the course: at the
    // start, unless only the end lies on a course (a link from the home frame).
    const ZYLMathAxis &course = ends == ZYLTPCourseLink::LiftEnd ? end : start;
    const ZYLGeoSurfaceFoot courseFoot = surface.GetClosestPoint(course.GetOrigin());
    const double side = courseFoot.normal.Dot(course.GetThirdDirection()) < 0.0 ? -1.0 : 1.0;
    const ZYLGeoSurfaceFoot startFoot = surface.GetClosestPoint(start.GetOrigin(), &courseFoot);
    const double startLift = ends == ZYLTPCourseLink::LiftEnd ? 0.0 : 1.0;
    const double endLift = ends == ZYLTPCourseLink::LiftStart ? 0.0 : 1.0;
    // How far the traverse falls short of its clearance at its worst place (negative: how
    // much to spare) with the ends lifted `lift` further.
    const auto shortfall = [&](double lift) {
        const ZYLMathPoint up = start.GetOrigin() + start.GetThirdDirection() * (retract + startLift * lift);
        const ZYLMathPoint above = end.GetOrigin() + end.GetThirdDirection() * (approach + endLift * lift);
        double worst = -std::numeric_limits<double>::infinity();
        ZYLGeoSurfaceFoot foot = startFoot;
        for (int j = 0; j <= ClearanceSamples; ++j) {
            const double s = double(j) / ClearanceSamples;
            // Neighbouring places have neighbouring feet: each query starts from the last.
            foot = surface.GetClosestPoint(ZYLMathPoint::Interpolate(up, above, s), &foot);
            const double clearance = side * foot.signedDistance;
            if (std::isfinite(clearance))
                worst = std::max(worst, retract + (approach - retract) * s - clearance);
        }
        return worst;
    };
    double low = 0.0; // a lift that falls short (or none is needed)
    double lowMissing = shortfall(low);
    if (lowMissing <= ClearanceTolerance)
        return 0.0;
    double high = -1.0; // a lift that clears, once one is known
    double highMissing = 0.0;
    // Raising the ends by h raises no place by more than h (the distance to a surface changes
    // no faster than the point moves), so the shortfall drops at a rate of at most 1: the
    // first step, taken at that rate, cannot overshoot. Later steps extrapolate at the rate
    // seen so far until a clearing lift is found, then close in between the two.
    double rate = 1.0;
    for (int step = 0; step < MaxClearanceSteps; ++step) {
        const double next = high < 0.0 ? low + lowMissing / rate
                                       : low + (high - low) * lowMissing / (lowMissing - highMissing);
        const double missing = shortfall(next);
        if (missing > ClearanceTolerance) {
            rate = std::clamp((lowMissing - missing) / (next - low), 0.05, 1.0);
            low = next;
            lowMissing = missing;
        } else {
            high = next;
            highMissing = missing;
            if (missing >= -ClearanceTolerance)
                break;
        }
    }
    // A clearing lift when one was found; the best short one only in a pathological case.
    return high >= 0.0 ? high : low;
}

} // namespace

double ZYLTPCourseLink::ComputeClearanceLift(const ZYLMathAxis &start, const ZYLMathAxis &end, double retract,
                                             double approach, LiftedEnds ends) const
{
    const ZYLGeoSurface *surface = GetProcedure()->GetProgram()->GetPlySurface();
    if (!surface)
        return 0.0;
    LiftCache &c = m_lift;
    if (c.valid && c.surface == surface && c.start == start && c.end == end && c.retract == retract
        && c.approach == approach && c.ends == ends)
        return c.lift;
    const double lift = FindClearanceLift(*surface, start, end, retract, approach, ends);
    c = LiftCache{true, surface, start, end, retract, approach, ends, lift};
    return lift;
}

double ZYLTPCourseLink::GetClearanceLift() const
{
    GetNumPoints();
    const ZYLGeoSurface *surface = GetProcedure()->GetProgram()->GetPlySurface();
    return surface && m_lift.valid && m_lift.surface == surface ? m_lift.lift : 0.0;
}

std::vector<ZYLMathAxis> ZYLTPLinearCourseLink::ComputeFrames() const
{
    const ZYLMathAxis start = GetStartFrame();
    const ZYLMathAxis end = GetEndFrame();
    const double lift = ComputeClearanceLift(start, end, m_rapidRetract, m_rapidApproach, LiftBoth);
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
