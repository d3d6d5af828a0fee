// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLMathVector.h"

/// A position in model space (mm); the default point is the origin. The difference of two
/// points is a vector; a point moved by a vector is a point.
class ZYLMathPoint {
public:
    constexpr ZYLMathPoint() = default;
    constexpr ZYLMathPoint(double x, double y, double z) : m_x(x), m_y(y), m_z(z) {}

    constexpr double X() const { return m_x; }
    constexpr double Y() const { return m_y; }
    constexpr double Z() const { return m_z; }
    constexpr void SetX(double x) { m_x = x; }
    constexpr void SetY(double y) { m_y = y; }
    constexpr void SetZ(double z) { m_z = z; }
    /// Returns the coordinate i (0 x, 1 y, 2 z).
    constexpr double operator[](int i) const { return i == 0 ? m_x : (i == 1 ? m_y : m_z); }

    constexpr ZYLMathVector operator-(const ZYLMathPoint &o) const { return {m_x - o.m_x, m_y - o.m_y, m_z - o.m_z}; }
    constexpr ZYLMathPoint operator+(const ZYLMathVector &v) const { return {m_x + v.X(), m_y + v.Y(), m_z + v.Z()}; }
    constexpr ZYLMathPoint operator-(const ZYLMathVector &v) const { return {m_x - v.X(), m_y - v.Y(), m_z - v.Z()}; }
    constexpr ZYLMathPoint &operator+=(const ZYLMathVector &v) { return *this = *this + v; }
    constexpr ZYLMathPoint &operator-=(const ZYLMathVector &v) { return *this = *this - v; }
    constexpr bool operator==(const ZYLMathPoint &) const = default;

    /// Returns the position vector from the origin.
    constexpr ZYLMathVector ToVector() const { return {m_x, m_y, m_z}; }
    constexpr double GetSquaredDistanceTo(const ZYLMathPoint &o) const { return (*this - o).GetSquaredLength(); }
    double GetDistanceTo(const ZYLMathPoint &o) const { return (*this - o).GetLength(); }
    bool IsFinite() const { return std::isfinite(m_x) && std::isfinite(m_y) && std::isfinite(m_z); }

    /// Returns the point at parameter t of the segment a→b (t = 0 gives a, t = 1 gives b).
    static constexpr ZYLMathPoint Interpolate(const ZYLMathPoint &a, const ZYLMathPoint &b, double t)
    {
        return a + (b - a) * t;
    }

private:
    double m_x = 0.0;
    double m_y = 0.0;
    double m_z = 0.0;
};

ZYLGEOMETRY_EXPORT QDebug operator<<(QDebug debug, const ZYLMathPoint &p);
ZYLGEOMETRY_EXPORT QDataStream &operator<<(QDataStream &out, const ZYLMathPoint &p);
ZYLGEOMETRY_EXPORT QDataStream &operator>>(QDataStream &in, ZYLMathPoint &p);
