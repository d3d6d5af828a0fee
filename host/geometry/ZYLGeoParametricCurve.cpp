// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoParametricCurve.h"

#include <algorithm>
#include <cmath>

ZYLGeoRef<ZYLGeoParametricCurve> ZYLGeoParametricCurve::Create(Function function, double start, double end,
                                                               DerivativeFunction derivative, QString *error)
{
    QString reason;
    if (!function) {
        reason = QStringLiteral("A parametric curve needs a function.");
    } else if (!std::isfinite(start) || !std::isfinite(end) || !(start < end)) {
        reason = QStringLiteral("The parameter interval [%1, %2] of a parametric curve must be finite and increasing.")
                     .arg(start)
                     .arg(end);
    } else {
        // A cheap sanity check: a function that is already broken at these three places
        // would make every later computation on the curve meaningless.
        for (double t : {start, 0.5 * (start + end), end}) {
            if (!function(t).IsFinite()) {
                reason = QStringLiteral("The curve function is not finite at t = %1.").arg(t);
                break;
            }
        }
    }
    if (!reason.isEmpty()) {
        if (error)
            *error = reason;
        return {};
    }
    return ZYLGeoRef<ZYLGeoParametricCurve>(
        new ZYLGeoParametricCurve(std::move(function), start, end, std::move(derivative)));
}

ZYLGeoParametricCurve::ZYLGeoParametricCurve(Function function, double start, double end,
                                             DerivativeFunction derivative)
    : m_function(std::move(function)), m_derivative(std::move(derivative)), m_start(start), m_end(end)
{
}

ZYLGeoParametricCurve::~ZYLGeoParametricCurve() = default;

double ZYLGeoParametricCurve::Clamp(double t) const
{
    return std::isnan(t) ? m_start : std::clamp(t, m_start, m_end);
}

ZYLMathPoint ZYLGeoParametricCurve::Evaluate(double t) const
{
    return m_function(Clamp(t));
}

ZYLMathVector ZYLGeoParametricCurve::EvaluateDerivative(double t) const
{
    return m_derivative ? m_derivative(Clamp(t)) : ZYLGeoCurve::EvaluateDerivative(t);
}
