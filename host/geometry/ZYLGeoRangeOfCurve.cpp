// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoRangeOfCurve.h"

#include "ZYLGeoCurve.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

// A NaN end stands for the curve's own end on that side, so that a half-made range still
// resolves to an interval of the curve instead of poisoning every computation after it.
std::pair<double, double> Resolve(const ZYLGeoRangeOfCurve &range, double start, double end, double a, double b)
{
    if (range.IsWholeCurve())
        return {a, b};
    constexpr double inf = std::numeric_limits<double>::infinity();
    double lo = std::isnan(start) ? -inf : start;
    double hi = std::isnan(end) ? inf : end;
    if (lo > hi)
        std::swap(lo, hi);
    return {std::clamp(lo, a, b), std::clamp(hi, a, b)};
}

} // namespace

double ZYLGeoRangeOfCurve::GetStart(const ZYLGeoCurve &curve) const
{
    return Resolve(*this, m_start, m_end, curve.GetStartParameter(), curve.GetEndParameter()).first;
}

double ZYLGeoRangeOfCurve::GetEnd(const ZYLGeoCurve &curve) const
{
    return Resolve(*this, m_start, m_end, curve.GetStartParameter(), curve.GetEndParameter()).second;
}
