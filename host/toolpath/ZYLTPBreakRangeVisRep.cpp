// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPBreakRangeVisRep.h"

#include "ZYLTPBreakRange.h"
#include "ZYLTPCourse.h"
#include "ZYLTPVisCourseGeometry.h"
#include "ZYLTPVisPrimitives.h"

#include <algorithm>

struct ZYLTPBreakRangeVisRep::Data {
    const ZYLTPBreakRange *range = nullptr;
};

namespace {

struct Station {
    ZYLMathPoint point;
    ZYLMathVector side;
};

// The point and side direction at an arc length, interpolated between the two points around it.
Station StationAt(const ZYLTPVisCourseGeometry &g, double arc)
{
    const auto [i, t] = g.Locate(arc);
    const ZYLMathVector side = g.GetSideDirection(i) * (1.0 - t) + g.GetSideDirection(i + 1) * t;
    return {ZYLMathPoint::Interpolate(g.GetTip(i), g.GetTip(i + 1), t), side.Normalized().value_or(g.GetSideDirection(i))};
}

void BuildRange(const ZYLTPBreakRange &range, const ZYLTPVisualizationOptions &options, ZYLTPVisPrimitiveList &out)
{
    const ZYLTPVisCourseGeometry g(*range.GetCourse(), options.GetTowWidth());
    const int n = g.GetNumPoints();
    if (n < 2)
        return;
    const double length = g.GetArcLength(n - 1);
    const double start = std::clamp(std::min(range.GetStart(), range.GetEnd()), 0.0, length);
    const double end = std::clamp(std::max(range.GetStart(), range.GetEnd()), 0.0, length);

    const Station first = StationAt(g, start);
    const Station last = StationAt(g, end);
    std::vector<ZYLMathPoint> line{first.point};
    for (int i = g.Locate(start).first + 1; i < n && g.GetArcLength(i) < end; ++i) {
        if (g.GetArcLength(i) > start)
            line.push_back(g.GetTip(i));
    }
    line.push_back(last.point);

    const double half = 0.5 * g.GetTowWidth() * std::max(g.GetNumTows(), 1);
    std::vector<ZYLMathPoint> ticks;
    for (const Station &station : {first, last}) {
        ticks.push_back(station.point - station.side * half);
        ticks.push_back(station.point + station.side * half);
    }
    const ZYLVisOptions &attributes = options.GetBreakRangeGraphicAttributes();
    out.AddPolyline(std::move(line), attributes);
    out.AddSegments(std::move(ticks), attributes);
}

} // namespace

ZYLTPBreakRangeVisRep::ZYLTPBreakRangeVisRep(const ZYLTPBreakRange *range, const ZYLTPVisualizationOptions &options,
                                             QList<ZYLVisOptions> &out)
    : d(std::make_unique<Data>())
{
    d->range = range;
    if (!range || !range->GetCourse())
        return;
    ZYLTPVisPrimitiveList list;
    BuildRange(*range, options, list);
    AddPrimitives(list.GetPrimitives(), list.GetOptions());
    out.append(list.GetOptions());
    list.Release();
}

ZYLTPBreakRangeVisRep::~ZYLTPBreakRangeVisRep() = default;

const ZYLTPBreakRange *ZYLTPBreakRangeVisRep::GetBreakRange() const
{
    return d->range;
}
