// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPVisCourseGeometry.h"

#include "ZYLTPCourse.h"
#include "ZYLTPCoursePoints.h"
#include "ZYLTPTowCourse.h"
#include "ZYLTPTowTrajectory.h"

#include <algorithm>
#include <bit>

ZYLTPVisCourseGeometry::ZYLTPVisCourseGeometry(const ZYLTPCourse &course, double towWidth)
    : m_course(course)
    , m_points(course.GetPointData())
    , m_towWidth(towWidth)
{
    quint64 used = 0;
    for (int t = 0; t < course.GetNumTrajectories(); ++t) {
        const auto *tow = qobject_cast<const ZYLTPTowTrajectory *>(course.GetTrajectory(t));
        if (!tow)
            continue;
        // A tow trajectory's drawn span reaches the next one's first point, so that the
        // band has no gap where the laid tows change.
        if (!m_spans.empty())
            m_spans.back().last = tow->GetFirstPointIndex();
        const quint64 mask = tow->GetTowMask().GetRawValue();
        m_spans.push_back({tow->GetFirstPointIndex(), tow->GetFirstPointIndex() + tow->GetNumPoints() - 1, mask});
        used |= mask;
    }
    // A tow course is as wide as its head (or its fixed width) says, whichever tows it lays,
    // so that unused tows at either side keep the laid ones in their lanes off the tip line.
    if (used == 0)
        m_numTows = 0;
    else if (const auto *towCourse = qobject_cast<const ZYLTPTowCourse *>(&course))
        m_numTows = towCourse->GetNumTows();
    else
        m_numTows = 64 - std::countl_zero(used);
}

int ZYLTPVisCourseGeometry::GetNumPoints() const
{
    return m_points.GetNumPoints();
}

const ZYLMathPoint &ZYLTPVisCourseGeometry::GetTip(int i) const
{
    return m_points.tips[size_t(i)];
}

const ZYLMathVector &ZYLTPVisCourseGeometry::GetNormal(int i) const
{
    return m_points.normals[size_t(i)];
}

ZYLMathVector ZYLTPVisCourseGeometry::GetSideDirection(int i) const
{
    return m_points.normals[size_t(i)].Cross(m_points.directions[size_t(i)]);
}

ZYLMathPoint ZYLTPVisCourseGeometry::GetOffsetPoint(int i, double offset) const
{
    return GetTip(i) + GetSideDirection(i) * offset;
}

double ZYLTPVisCourseGeometry::GetArcLength(int i) const
{
    // Arc lengths are stored from the first tow point; the roll-in point lies the roll-in
    // distance before it.
    return i == 0 ? 0.0 : m_course.GetRollIn() + m_points.arcLengths[size_t(i)];
}

std::pair<int, double> ZYLTPVisCourseGeometry::Locate(double arc) const
{
    const int n = GetNumPoints();
    if (n < 2)
        return {0, 0.0};
    if (arc <= 0.0)
        return {0, 0.0};
    // Index 0 is handled apart: its stored entry is not its arc length.
    int lo = 1;
    if (arc < GetArcLength(1)) {
        lo = 0;
    } else {
        const auto begin = m_points.arcLengths.begin() + 1;
        const auto end = m_points.arcLengths.end();
        const double stored = arc - m_course.GetRollIn();
        // The last point whose arc length is <= arc.
        lo = int(std::upper_bound(begin, end, stored) - m_points.arcLengths.begin()) - 1;
        lo = std::clamp(lo, 1, n - 2);
    }
    const double a = GetArcLength(lo);
    const double b = GetArcLength(lo + 1);
    const double t = b > a ? std::clamp((arc - a) / (b - a), 0.0, 1.0) : 1.0;
    return {lo, t};
}

std::vector<int> ZYLTPVisCourseGeometry::ComputeStations(const TowSpan &span, double tolerance) const
{
    std::vector<int> stations{span.first};
    // A chord of length L over an arc that turns by theta strays about L * theta / 8 from it;
    // a band edge h from the centre adds h to the lever. Squared, with theta^2 taken as
    // 2 (1 - cos theta) from the dot product of unit directions and normals, so that a
    // candidate costs no square root and no trigonometry.
    const double h = 0.5 * m_towWidth * m_numTows;
    const double limit = 64.0 * tolerance * tolerance;
    int anchor = span.first;
    for (int j = span.first + 1; j < span.last; ++j) {
        const int next = j + 1;
        const double chord2 = m_points.tips[size_t(next)].GetSquaredDistanceTo(m_points.tips[size_t(anchor)]);
        const double cosDirection = m_points.directions[size_t(anchor)].Dot(m_points.directions[size_t(next)]);
        const double cosNormal = m_points.normals[size_t(anchor)].Dot(m_points.normals[size_t(next)]);
        const double turn2 = 2.0 * (1.0 - std::min(cosDirection, cosNormal));
        if (2.0 * (chord2 + h * h) * turn2 > limit) {
            stations.push_back(j);
            anchor = j;
        }
    }
    if (span.last > span.first)
        stations.push_back(span.last);
    return stations;
}

std::vector<quint64> ZYLTPVisCourseGeometry::ComputeShortTowMasks(double minimumLength) const
{
    std::vector<quint64> shortMasks(m_spans.size(), 0);
    for (int tow = 0; tow < m_numTows; ++tow) {
        const quint64 bit = quint64(1) << tow;
        size_t s = 0;
        while (s < m_spans.size()) {
            if (!(m_spans[s].towMask & bit)) {
                ++s;
                continue;
            }
            size_t end = s;
            while (end < m_spans.size() && (m_spans[end].towMask & bit))
                ++end;
            const double length = GetArcLength(m_spans[end - 1].last) - GetArcLength(m_spans[s].first);
            if (length < minimumLength) {
                for (size_t k = s; k < end; ++k)
                    shortMasks[k] |= bit;
            }
            s = end;
        }
    }
    return shortMasks;
}
