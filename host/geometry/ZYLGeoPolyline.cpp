// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoPolyline.h"

#include <algorithm>
#include <cmath>

ZYLGeoRef<ZYLGeoPolyline> ZYLGeoPolyline::Create(std::vector<ZYLMathPoint> points, QString *error)
{
    QString reason;
    if (points.size() < 2)
        reason = QStringLiteral("A polyline needs at least two points; %1 given.").arg(points.size());
    for (size_t i = 0; reason.isEmpty() && i < points.size(); ++i) {
        if (!points[i].IsFinite())
            reason = QStringLiteral("Point %1 of the polyline is not finite.").arg(i);
    }
    if (!reason.isEmpty()) {
        if (error)
            *error = reason;
        return {};
    }
    return ZYLGeoRef<ZYLGeoPolyline>(new ZYLGeoPolyline(std::move(points)));
}

ZYLGeoPolyline::ZYLGeoPolyline(std::vector<ZYLMathPoint> points) : m_points(std::move(points))
{
    m_cumulative.reserve(m_points.size());
    double length = 0.0;
    m_cumulative.push_back(length);
    for (size_t i = 1; i < m_points.size(); ++i) {
        length += m_points[i].GetDistanceTo(m_points[i - 1]);
        m_cumulative.push_back(length);
    }
}

ZYLGeoPolyline::~ZYLGeoPolyline() = default;

std::pair<size_t, double> ZYLGeoPolyline::Locate(double t) const
{
    const double last = GetEndParameter();
    t = std::isnan(t) ? 0.0 : std::clamp(t, 0.0, last);
    const size_t i = std::min(size_t(t), m_points.size() - 2);
    return {i, t - double(i)};
}

ZYLMathPoint ZYLGeoPolyline::Evaluate(double t) const
{
    const auto [i, f] = Locate(t);
    return ZYLMathPoint::Interpolate(m_points[i], m_points[i + 1], f);
}

ZYLMathVector ZYLGeoPolyline::EvaluateDerivative(double t) const
{
    const size_t i = Locate(t).first;
    return m_points[i + 1] - m_points[i];
}

std::vector<double> ZYLGeoPolyline::GetKinks() const
{
    std::vector<double> kinks;
    for (size_t i = 1; i + 1 < m_points.size(); ++i)
        kinks.push_back(double(i));
    return kinks;
}

double ZYLGeoPolyline::LengthAt(double t) const
{
    const auto [i, f] = Locate(t);
    return m_cumulative[i] + f * (m_cumulative[i + 1] - m_cumulative[i]);
}

double ZYLGeoPolyline::GetLength(const ZYLGeoRangeOfCurve &range) const
{
    return LengthAt(range.GetEnd(*this)) - LengthAt(range.GetStart(*this));
}

double ZYLGeoPolyline::GetParameterAtLength(double s, const ZYLGeoRangeOfCurve &range) const
{
    const double a = range.GetStart(*this);
    const double b = range.GetEnd(*this);
    if (!(s > 0.0))
        return a;
    const double target = LengthAt(a) + s;
    if (target >= LengthAt(b))
        return b;
    // The first vertex at or beyond the target closes the segment that holds it; a run of
    // zero-length segments before it is skipped, so the first parameter reaching s wins.
    const auto it = std::lower_bound(m_cumulative.begin(), m_cumulative.end(), target);
    const size_t end = size_t(it - m_cumulative.begin());
    if (end == 0)
        return a;
    const size_t i = end - 1;
    const double segment = m_cumulative[end] - m_cumulative[i];
    const double t = double(i) + (segment > 0.0 ? (target - m_cumulative[i]) / segment : 0.0);
    return std::clamp(t, a, b);
}

std::vector<ZYLMathPoint> ZYLGeoPolyline::Tessellate(double chordTolerance, const ZYLGeoRangeOfCurve &range) const
{
    if (!(chordTolerance > 0.0) || !std::isfinite(chordTolerance))
        return {};
    const double a = range.GetStart(*this);
    const double b = range.GetEnd(*this);
    std::vector<ZYLMathPoint> points{Evaluate(a)};
    for (size_t i = size_t(std::floor(a)) + 1; double(i) < b; ++i)
        points.push_back(m_points[i]);
    points.push_back(Evaluate(b));
    return points;
}

ZYLMathBoundingBox ZYLGeoPolyline::GetBoundingBox() const
{
    ZYLMathBoundingBox box;
    for (const ZYLMathPoint &p : m_points)
        box.Add(p);
    return box;
}
