// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

// The geometry the course and break range representations draw from, read straight from a
// course's point arrays. Internal to the tool path library.

#include "ZYLMathPoint.h"
#include "ZYLMathVector.h"

#include <QtGlobal>

#include <utility>
#include <vector>

class ZYLTPCourse;
struct ZYLTPCoursePoints;

/// A course seen as tow lanes along its points.
///
/// Lanes: a tow course has `ZYLTPTowCourse::GetNumTows()` lanes of `towWidth` (n), side by
/// side across the side direction with the band of all n centred on the tip points, whichever
/// tows are laid; edge k (0 to n) lies at `GetEdgeOffset(k)` along the side direction, lane j
/// (tow j) between edges j and j + 1. A course that lays no tow has no lanes.
///
/// Spans: one per tow trajectory, in laying order, with the points it covers, as drawn: from
/// its first point to the first point of the next tow trajectory, or to its own last point
/// for the last one.
class ZYLTPVisCourseGeometry {
public:
    struct TowSpan {
        int first = 0;
        int last = 0;
        quint64 towMask = 0;
    };

    ZYLTPVisCourseGeometry(const ZYLTPCourse &course, double towWidth);

    const ZYLTPCourse &GetCourse() const { return m_course; }
    int GetNumPoints() const;
    const ZYLMathPoint &GetTip(int i) const;
    const ZYLMathVector &GetNormal(int i) const;
    /// Returns the side direction of point i: its surface normal crossed with its laying
    /// direction (the second direction of its untilted frame).
    ZYLMathVector GetSideDirection(int i) const;
    /// Returns the point `offset` mm from tip i along its side direction.
    ZYLMathPoint GetOffsetPoint(int i, double offset) const;
    /// Returns the arc length of point i from the roll-in point (mm).
    double GetArcLength(int i) const;
    /// Returns the segment index i and the fraction t in [0, 1] such that arc length `arc`
    /// lies t of the way from point i to point i + 1; clamped to the course.
    std::pair<int, double> Locate(double arc) const;

    int GetNumTows() const { return m_numTows; }
    double GetTowWidth() const { return m_towWidth; }
    double GetEdgeOffset(int edge) const { return (edge - 0.5 * m_numTows) * m_towWidth; }
    const std::vector<TowSpan> &GetTowSpans() const { return m_spans; }
    /// Returns the points of span `span` the band is drawn through: its first and last point
    /// and, between them, as few points as keep the band and its edges within `tolerance` mm
    /// of the band through every point (a smooth course needs a point only where it turns).
    std::vector<int> ComputeStations(const TowSpan &span, double tolerance) const;
    /// Returns, per span, the tows that belong to a tow piece (a run of consecutive spans
    /// laying the tow) shorter than `minimumLength`.
    std::vector<quint64> ComputeShortTowMasks(double minimumLength) const;

private:
    const ZYLTPCourse &m_course;
    const ZYLTPCoursePoints &m_points;
    double m_towWidth;
    int m_numTows = 0;
    std::vector<TowSpan> m_spans;
};

/// Calls `f(first, last)` for each run of consecutive set bits of `mask`, lowest first, with
/// the bit indexes of the run's ends (both included).
template<class F>
void ZYLTPVisForEachBitRun(quint64 mask, F f)
{
    int bit = 0;
    while (mask != 0 && bit < 64) {
        if (!(mask & (quint64(1) << bit))) {
            ++bit;
            continue;
        }
        const int first = bit;
        while (bit < 64 && (mask & (quint64(1) << bit)))
            ++bit;
        f(first, bit - 1);
    }
}
