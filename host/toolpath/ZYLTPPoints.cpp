// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The point views: thin objects that read their course's arrays or hold a frame.
#include "ZYLTPCourse.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPOffPartTrajectory.h"
#include "ZYLTPCoursePoints.h"
#include "ZYLTPOffPartPoint.h"
#include "ZYLTPOnPartTrajectory.h"
#include "ZYLTPTowPoint.h"

ZYLTPPoint::~ZYLTPPoint() = default;
ZYLTPOnPartPoint::~ZYLTPOnPartPoint() = default;
ZYLTPTowPoint::~ZYLTPTowPoint() = default;
ZYLTPOffPartPoint::~ZYLTPOffPartPoint() = default;

ZYLMathPoint ZYLTPOnPartPoint::GetTipPoint() const
{
    return m_data->tips[size_t(m_index)];
}

ZYLMathAxis ZYLTPOnPartPoint::GetAxis(bool toolFrame) const
{
    if (m_data != &m_course->GetPointData())
        return ZYLTPCourse::GetUntiltedFrame(*m_data, m_index);
    return m_course->GetPointFrame(m_index, toolFrame);
}

const ZYLTPTrajectory *ZYLTPOnPartPoint::GetTrajectory() const
{
    return GetOnPartTrajectory();
}

const ZYLTPOnPartTrajectory *ZYLTPOnPartPoint::GetOnPartTrajectory() const
{
    return m_data == &m_course->GetPointData() ? m_course->GetTrajectoryOfPoint(m_index) : nullptr;
}

void ZYLTPOffPartPoint::RefreshOwner() const
{
    if (!m_owner)
        return;
    if (auto *trajectory = qobject_cast<const ZYLTPOffPartTrajectory *>(m_owner))
        trajectory->GetPoint(0);
    else if (auto *link = qobject_cast<const ZYLTPCourseLink *>(m_owner))
        link->GetNumPoints();
}

ZYLMathPoint ZYLTPOffPartPoint::GetTipPoint() const
{
    RefreshOwner();
    return m_frame.GetOrigin();
}

ZYLMathAxis ZYLTPOffPartPoint::GetAxis(bool) const
{
    RefreshOwner();
    return m_frame;
}

ZYLTPCoursePoints::ZYLTPCoursePoints() = default;
ZYLTPCoursePoints::~ZYLTPCoursePoints() = default;

void ZYLTPCoursePoints::ComputeArcLengths(double rollOut)
{
    const size_t n = tips.size();
    arcLengths.assign(n, 0.0);
    // Entries 0 (roll-in point) and 1 (first tow point) stay 0: lengths count from the first
    // tow point, so that moving the roll-in point changes no entry.
    for (size_t i = 2; i + 1 < n; ++i)
        arcLengths[i] = arcLengths[i - 1] + tips[i].GetDistanceTo(tips[i - 1]);
    if (n >= 3)
        arcLengths[n - 1] = arcLengths[n - 2] + rollOut;
}
