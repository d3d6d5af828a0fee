// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Trajectories: on-part runs of a course's points, and the derived approach and retract motion.
#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPCheck.h"
#include "ZYLTPCourse.h"
#include "ZYLTPCoursePoints.h"
#include "ZYLTPModelRevision.h"
#include "ZYLTPOffPartPoint.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPTowTrajectory.h"

#include "ZYLFeatRecorder.h"

ZYLTPTrajectory::~ZYLTPTrajectory() = default;

int ZYLTPTrajectory::GetPointIndex(const ZYLTPPoint *point) const
{
    if (!point)
        return -1;
    for (int i = 0, n = GetNumPoints(); i < n; ++i) {
        if (GetPoint(i) == point)
            return i;
    }
    return -1;
}

double ZYLTPTrajectory::GetTimeEstimate() const
{
    // Feed rates are per minute, estimates in seconds.
    return GetLength() / GetFeedRate() * 60.0;
}

// ---------------------------------------------------------------------------------------------

ZYLTPOnPartTrajectory::ZYLTPOnPartTrajectory(const ZYLTPCourse *course, int first, int count, const Values &values)
    : ZYLTPTrajectory(course),
      m_first(first),
      m_count(count),
      m_forwardTilt(values.forwardTilt),
      m_sideTilt(values.sideTilt),
      m_feedRate(values.feedRate),
      m_compactionForce(values.compactionForce)
{
}

ZYLTPOnPartTrajectory::~ZYLTPOnPartTrajectory() = default;

const ZYLTPPoint *ZYLTPOnPartTrajectory::GetPoint(int i) const
{
    return GetOnPartPoint(i);
}

const ZYLTPOnPartPoint *ZYLTPOnPartTrajectory::GetOnPartPoint(int i) const
{
    if (i < 0 || i >= m_count)
        return nullptr;
    return GetCourse()->GetPoint(m_first + i);
}

double ZYLTPOnPartTrajectory::GetLength() const
{
    const ZYLTPCourse *course = GetCourse();
    const int last = course->GetNumPoints() - 1;
    if (m_first == 0)
        return course->GetRollIn();
    if (m_first == last)
        return course->GetRollOut();
    // A tow trajectory runs to the next trajectory's first point, the last one to the last tow
    // point (the segment after it belongs to the roll-out).
    const std::vector<double> &arc = course->GetPointData().arcLengths;
    const int end = std::min(m_first + m_count, last - 1);
    return arc[size_t(end)] - arc[size_t(m_first)];
}

bool ZYLTPOnPartTrajectory::HasSameValues(const ZYLTPOnPartTrajectory &other) const
{
    return typeid(*this) == typeid(other) && GetValues() == other.GetValues();
}

std::unique_ptr<ZYLTPOnPartTrajectory> ZYLTPOnPartTrajectory::Clone(int first, int count) const
{
    return std::make_unique<ZYLTPOnPartTrajectory>(GetCourse(), first, count, GetValues());
}

// ---------------------------------------------------------------------------------------------

ZYLTPTowTrajectory::ZYLTPTowTrajectory(const ZYLTPCourse *course, int first, int count, const Values &values,
                                       const ZYLCompTowMask &towMask, const ZYLCompTowMask &forcedMask,
                                       const QList<double> &forcedRates)
    : ZYLTPOnPartTrajectory(course, first, count, values), m_towMask(towMask), m_forcedMask(forcedMask)
{
    const QList<double> rates = NormalizedRates(forcedRates);
    if (!std::all_of(rates.begin(), rates.end(), [](double r) { return r == 1.0; }))
        m_forcedRates = rates;
}

ZYLTPTowTrajectory::~ZYLTPTowTrajectory() = default;

QList<double> ZYLTPTowTrajectory::GetForcedRates() const
{
    return m_forcedRates.isEmpty() ? QList<double>(ZYLCompTowMask::MaxTows, 1.0) : m_forcedRates;
}

QList<double> ZYLTPTowTrajectory::NormalizedRates(const QList<double> &rates)
{
    if (rates.size() > ZYLCompTowMask::MaxTows)
        throw ZYLSysOutOfBoundsException(double(rates.size()), 0, ZYLCompTowMask::MaxTows);
    for (double rate : rates)
        ZYLTPCheck::Fraction(rate);
    QList<double> result = rates;
    result.resize(ZYLCompTowMask::MaxTows, 1.0);
    return result;
}

bool ZYLTPTowTrajectory::HasSameValues(const ZYLTPOnPartTrajectory &other) const
{
    if (!ZYLTPOnPartTrajectory::HasSameValues(other))
        return false;
    const auto &tow = static_cast<const ZYLTPTowTrajectory &>(other);
    return m_towMask == tow.m_towMask && m_forcedMask == tow.m_forcedMask && GetForcedRates() == tow.GetForcedRates();
}

std::unique_ptr<ZYLTPOnPartTrajectory> ZYLTPTowTrajectory::Clone(int first, int count) const
{
    return std::make_unique<ZYLTPTowTrajectory>(GetCourse(), first, count, GetValues(), m_towMask, m_forcedMask,
                                                m_forcedRates);
}

// ---------------------------------------------------------------------------------------------

ZYLTPOffPartTrajectory::ZYLTPOffPartTrajectory(const ZYLTPCourse *course, double angle, double length)
    : ZYLTPTrajectory(course), m_angle(angle), m_length(length)
{
}

ZYLTPOffPartTrajectory::~ZYLTPOffPartTrajectory() = default;

void ZYLTPOffPartTrajectory::SetAngle(double angle)
{
    ZYLTPCheck::ApproachAngle(angle);
    if (angle == m_angle)
        return;
    ZYLFeatRecorder::SetValue(m_angle, angle);
    ZYLTPModelRevision::Record();
}

void ZYLTPOffPartTrajectory::SetLength(double length)
{
    ZYLTPCheck::Length(length);
    if (length == m_length)
        return;
    ZYLFeatRecorder::SetValue(m_length, length);
    ZYLTPModelRevision::Record();
}

double ZYLTPOffPartTrajectory::GetFeedRate() const
{
    return GetCourse()->GetProcedure()->GetRapidFeedRate();
}

ZYLMathAxis ZYLTPOffPartTrajectory::GetFarFrame() const
{
    const ZYLMathAxis part = GetPartFrame();
    // The motion lies in the plane of laying direction and normal, inclined by the angle
    // from the surface: behind the part point for the approach, ahead of it for the retract.
    const ZYLMathVector offset = part.GetFirstDirection() * (GetSense() * m_length * std::cos(m_angle))
                                 + part.GetThirdDirection() * (m_length * std::sin(m_angle));
    return part.Translated(offset);
}

const ZYLTPPoint *ZYLTPOffPartTrajectory::GetPoint(int i) const
{
    if (i < 0 || i > 1)
        return nullptr;
    if (m_revision != ZYLTPModelRevision::Get() || !m_points[0]) {
        const ZYLMathAxis far = GetFarFrame();
        const ZYLMathAxis part = GetPartFrame();
        const ZYLMathAxis &first = FarEndFirst() ? far : part;
        const ZYLMathAxis &second = FarEndFirst() ? part : far;
        // Refreshed in place, so that the point objects keep their addresses.
        if (!m_points[0]) {
            m_points[0] = std::make_unique<ZYLTPOffPartPoint>(first, this, this);
            m_points[1] = std::make_unique<ZYLTPOffPartPoint>(second, this, this);
        } else {
            m_points[0]->SetFrame(first);
            m_points[1]->SetFrame(second);
        }
        m_revision = ZYLTPModelRevision::Get();
    }
    return m_points[i].get();
}

ZYLTPApproachTrajectory::ZYLTPApproachTrajectory(const ZYLTPCourse *course, double angle, double length)
    : ZYLTPOffPartTrajectory(course, angle, length)
{
}
ZYLTPApproachTrajectory::~ZYLTPApproachTrajectory() = default;

ZYLMathAxis ZYLTPApproachTrajectory::GetPartFrame() const
{
    return GetCourse()->GetPointFrame(0, true);
}

ZYLTPRetractTrajectory::ZYLTPRetractTrajectory(const ZYLTPCourse *course, double angle, double length)
    : ZYLTPOffPartTrajectory(course, angle, length)
{
}
ZYLTPRetractTrajectory::~ZYLTPRetractTrajectory() = default;

ZYLMathAxis ZYLTPRetractTrajectory::GetPartFrame() const
{
    return GetCourse()->GetPointFrame(GetCourse()->GetNumPoints() - 1, true);
}
