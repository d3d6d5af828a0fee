// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLMathPoint.h"

/// An infinite straight line through an origin along a vector. With a zero vector the line
/// degenerates to its origin.
class ZYLMathLine {
public:
    ZYLMathLine() = default;
    ZYLMathLine(const ZYLMathPoint &origin, const ZYLMathVector &vector) : m_origin(origin), m_vector(vector) {}

    const ZYLMathPoint &GetOrigin() const { return m_origin; }
    void SetOrigin(const ZYLMathPoint &origin) { m_origin = origin; }
    const ZYLMathVector &GetVector() const { return m_vector; }
    void SetVector(const ZYLMathVector &vector) { m_vector = vector; }

    /// Returns the line parameter t of the foot of p, so that origin + t·vector is nearest p.
    double GetParameterOf(const ZYLMathPoint &p) const
    {
        const double vv = m_vector.GetSquaredLength();
        return vv > 0.0 ? (p - m_origin).Dot(m_vector) / vv : 0.0;
    }
    ZYLMathPoint GetPointAt(double t) const { return m_origin + m_vector * t; }
    /// Returns the squared distance from p to the line.
    double GetSquaredDistanceTo(const ZYLMathPoint &p) const
    {
        return p.GetSquaredDistanceTo(GetPointAt(GetParameterOf(p)));
    }

private:
    ZYLMathPoint m_origin;
    ZYLMathVector m_vector{0.0, 0.0, 1.0};
};
