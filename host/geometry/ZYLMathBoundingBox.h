// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLMathPoint.h"

#include <algorithm>
#include <limits>

/// An axis-aligned box; a default box is empty and grows as points and boxes are added.
class ZYLMathBoundingBox {
public:
    ZYLMathBoundingBox() = default;
    ZYLMathBoundingBox(const ZYLMathPoint &a, const ZYLMathPoint &b) { Add(a); Add(b); }

    bool IsEmpty() const { return m_min.X() > m_max.X(); }
    const ZYLMathPoint &GetMin() const { return m_min; }
    const ZYLMathPoint &GetMax() const { return m_max; }
    ZYLMathPoint GetCenter() const { return ZYLMathPoint::Interpolate(m_min, m_max, 0.5); }
    /// Returns max − min (the zero vector for an empty box).
    ZYLMathVector GetDiagonal() const { return IsEmpty() ? ZYLMathVector() : m_max - m_min; }

    void Add(const ZYLMathPoint &p)
    {
        m_min = {std::min(m_min.X(), p.X()), std::min(m_min.Y(), p.Y()), std::min(m_min.Z(), p.Z())};
        m_max = {std::max(m_max.X(), p.X()), std::max(m_max.Y(), p.Y()), std::max(m_max.Z(), p.Z())};
    }
    void Add(const ZYLMathBoundingBox &b)
    {
        if (!b.IsEmpty()) { Add(b.m_min); Add(b.m_max); }
    }
    /// Grows the box by d on every side.
    void Inflate(double d)
    {
        if (IsEmpty())
            return;
        m_min -= ZYLMathVector(d, d, d);
        m_max += ZYLMathVector(d, d, d);
    }
    bool Contains(const ZYLMathPoint &p) const
    {
        return p.X() >= m_min.X() && p.X() <= m_max.X() && p.Y() >= m_min.Y() && p.Y() <= m_max.Y()
               && p.Z() >= m_min.Z() && p.Z() <= m_max.Z();
    }
    bool Intersects(const ZYLMathBoundingBox &b) const
    {
        return !IsEmpty() && !b.IsEmpty() && m_min.X() <= b.m_max.X() && b.m_min.X() <= m_max.X()
               && m_min.Y() <= b.m_max.Y() && b.m_min.Y() <= m_max.Y() && m_min.Z() <= b.m_max.Z()
               && b.m_min.Z() <= m_max.Z();
    }
    bool operator==(const ZYLMathBoundingBox &) const = default;

private:
    static constexpr double inf = std::numeric_limits<double>::infinity();
    ZYLMathPoint m_min{inf, inf, inf};
    ZYLMathPoint m_max{-inf, -inf, -inf};
};
