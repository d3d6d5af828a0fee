// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLMathBoundingBox.h"

#include <initializer_list>
#include <vector>

/// An ordered set of points, e.g. the laying points shown as dots.
class ZYLMathSetOfPoints {
public:
    ZYLMathSetOfPoints() = default;
    explicit ZYLMathSetOfPoints(const ZYLMathPoint &p) : m_points{p} {}
    ZYLMathSetOfPoints(std::initializer_list<ZYLMathPoint> points) : m_points(points) {}
    explicit ZYLMathSetOfPoints(std::vector<ZYLMathPoint> points) : m_points(std::move(points)) {}

    int GetNumPoints() const { return int(m_points.size()); }
    const ZYLMathPoint &GetPoint(int i) const { return m_points[size_t(i)]; }
    void Add(const ZYLMathPoint &p) { m_points.push_back(p); }
    void Reserve(int n) { m_points.reserve(size_t(n)); }
    const std::vector<ZYLMathPoint> &GetPoints() const { return m_points; }
    auto begin() const { return m_points.begin(); }
    auto end() const { return m_points.end(); }

    ZYLMathBoundingBox GetBoundingBox() const
    {
        ZYLMathBoundingBox box;
        for (const ZYLMathPoint &p : m_points)
            box.Add(p);
        return box;
    }

private:
    std::vector<ZYLMathPoint> m_points;
};
