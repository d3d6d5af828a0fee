// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeometryExport.h"

#include <cmath>
#include <optional>

class QDebug;
class QDataStream;

/// A direction or displacement in model space (mm). A plain value type: the usual vector
/// arithmetic, dot and cross products and lengths. Normalising a zero vector is reported to
/// the caller (`Normalize` returns false, `Normalized` returns no value) and never yields NaN.
class ZYLMathVector {
public:
    constexpr ZYLMathVector() = default;
    constexpr ZYLMathVector(double x, double y, double z) : m_x(x), m_y(y), m_z(z) {}

    constexpr double X() const { return m_x; }
    constexpr double Y() const { return m_y; }
    constexpr double Z() const { return m_z; }
    constexpr void SetX(double x) { m_x = x; }
    constexpr void SetY(double y) { m_y = y; }
    constexpr void SetZ(double z) { m_z = z; }
    /// Returns the coordinate i (0 x, 1 y, 2 z).
    constexpr double operator[](int i) const { return i == 0 ? m_x : (i == 1 ? m_y : m_z); }

    constexpr ZYLMathVector operator+(const ZYLMathVector &o) const { return {m_x + o.m_x, m_y + o.m_y, m_z + o.m_z}; }
    constexpr ZYLMathVector operator-(const ZYLMathVector &o) const { return {m_x - o.m_x, m_y - o.m_y, m_z - o.m_z}; }
    constexpr ZYLMathVector operator-() const { return {-m_x, -m_y, -m_z}; }
    constexpr ZYLMathVector operator*(double f) const { return {m_x * f, m_y * f, m_z * f}; }
    constexpr ZYLMathVector operator/(double f) const { return {m_x / f, m_y / f, m_z / f}; }
    constexpr ZYLMathVector &operator+=(const ZYLMathVector &o) { return *this = *this + o; }
    constexpr ZYLMathVector &operator-=(const ZYLMathVector &o) { return *this = *this - o; }
    constexpr ZYLMathVector &operator*=(double f) { return *this = *this * f; }
    constexpr bool operator==(const ZYLMathVector &) const = default;

    constexpr double Dot(const ZYLMathVector &o) const { return m_x * o.m_x + m_y * o.m_y + m_z * o.m_z; }
    constexpr ZYLMathVector Cross(const ZYLMathVector &o) const
    {
        return {m_y * o.m_z - m_z * o.m_y, m_z * o.m_x - m_x * o.m_z, m_x * o.m_y - m_y * o.m_x};
    }
    constexpr double GetSquaredLength() const { return Dot(*this); }
    double GetLength() const { return std::sqrt(GetSquaredLength()); }
    constexpr bool IsZero(double tolerance = 0.0) const { return GetSquaredLength() <= tolerance * tolerance; }

    /// Scales the vector to unit length. Returns false, leaving the vector unchanged, when it
    /// is zero or has a component that is not finite.
    bool Normalize()
    {
        if (!std::isfinite(m_x) || !std::isfinite(m_y) || !std::isfinite(m_z))
            return false;
        // Scaling by the largest component first keeps the squared length from overflowing
        // (1e200) or underflowing (1e-200) on the way.
        const double largest = std::fmax(std::fabs(m_x), std::fmax(std::fabs(m_y), std::fabs(m_z)));
        if (!(largest > 0.0))
            return false;
        const ZYLMathVector scaled = *this / largest;
        *this = scaled / scaled.GetLength();
        return true;
    }
    /// Returns the unit vector of this direction, or no value for a zero vector.
    std::optional<ZYLMathVector> Normalized() const
    {
        ZYLMathVector v = *this;
        return v.Normalize() ? std::optional<ZYLMathVector>(v) : std::nullopt;
    }
    /// Returns the angle to another vector in radians, in [0, pi]; 0 when either is zero.
    double AngleTo(const ZYLMathVector &o) const { return std::atan2(Cross(o).GetLength(), Dot(o)); }

private:
    double m_x = 0.0;
    double m_y = 0.0;
    double m_z = 0.0;
};

constexpr ZYLMathVector operator*(double f, const ZYLMathVector &v) { return v * f; }

ZYLGEOMETRY_EXPORT QDebug operator<<(QDebug debug, const ZYLMathVector &v);
ZYLGEOMETRY_EXPORT QDataStream &operator<<(QDataStream &out, const ZYLMathVector &v);
ZYLGEOMETRY_EXPORT QDataStream &operator>>(QDataStream &in, ZYLMathVector &v);
