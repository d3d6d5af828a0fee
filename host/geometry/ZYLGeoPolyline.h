// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoCurve.h"
#include "ZYLGeoRef.h"

#include <QString>

#include <vector>

/// A chain of straight segments through two or more points. The parameter counts vertices:
/// t = i is vertex i and t in [i, i + 1] runs along segment i, so the interval is
/// [0, GetNumPoints() − 1]. Lengths and arc-length parameters are exact, and the
/// tessellation of a range is its vertices (with the range's ends), whatever the tolerance.
/// Consecutive equal points are allowed: their segment has no length and no tangent.
class ZYLGEOMETRY_EXPORT ZYLGeoPolyline final : public ZYLGeoCurve {
public:
    /// Returns a polyline through `points`, or null (with the reason in `error` when given)
    /// for fewer than two points or a point that is not finite.
    static ZYLGeoRef<ZYLGeoPolyline> Create(std::vector<ZYLMathPoint> points, QString *error = nullptr);
    ~ZYLGeoPolyline() override;

    int GetNumPoints() const { return int(m_points.size()); }
    const ZYLMathPoint &GetPoint(int i) const { return m_points[size_t(i)]; }
    const std::vector<ZYLMathPoint> &GetPoints() const { return m_points; }

    double GetStartParameter() const override { return 0.0; }
    double GetEndParameter() const override { return double(m_points.size() - 1); }
    ZYLMathPoint Evaluate(double t) const override;
    /// Returns the vector of the segment at t; at a vertex, the segment that starts there
    /// (the last one at the end).
    ZYLMathVector EvaluateDerivative(double t) const override;
    std::vector<double> GetKinks() const override;
    double GetLength(const ZYLGeoRangeOfCurve &range = {}) const override;
    double GetParameterAtLength(double s, const ZYLGeoRangeOfCurve &range = {}) const override;
    std::vector<ZYLMathPoint> Tessellate(double chordTolerance, const ZYLGeoRangeOfCurve &range = {}) const override;
    ZYLMathBoundingBox GetBoundingBox() const override;

private:
    explicit ZYLGeoPolyline(std::vector<ZYLMathPoint> points);
    // Returns the segment index of t and the fraction along it.
    std::pair<size_t, double> Locate(double t) const;
    // Returns the arc length from the start to parameter t.
    double LengthAt(double t) const;

    std::vector<ZYLMathPoint> m_points;
    std::vector<double> m_cumulative; // arc length at each vertex
};
