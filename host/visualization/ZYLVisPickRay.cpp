// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisPickRay.h"

#include "ZYLSysException.h"

ZYLVisPickRay::ZYLVisPickRay(const ZYLMathPoint &origin, const ZYLMathVector &direction, double radius,
                             double radiusSlope)
    : m_origin(origin), m_radius(radius), m_slope(radiusSlope)
{
    const std::optional<ZYLMathVector> unit = direction.Normalized();
    if (!unit || !origin.IsFinite())
        throw ZYLSysException(QStringLiteral("A pick ray needs a finite origin and a non-zero finite direction."));
    if (!(radius >= 0.0 && std::isfinite(radius) && radiusSlope >= 0.0 && std::isfinite(radiusSlope)))
        throw ZYLSysException(
            QStringLiteral("Invalid pick radius %1 or slope %2 (expected finite values >= 0).").arg(radius).arg(radiusSlope));
    m_direction = *unit;
}

double ZYLVisPickRay::GetDistanceTo(const ZYLMathPoint &p) const
{
    const ZYLMathVector v = p - m_origin;
    return (v - m_direction * v.Dot(m_direction)).GetLength();
}

ZYLVisPickRay ZYLVisPickRay::ToLocal(const ZYLMathAxis &frame) const
{
    ZYLVisPickRay local = *this;
    local.m_origin = frame.ToLocal(m_origin);
    local.m_direction = frame.ToLocal(m_direction);
    return local;
}
