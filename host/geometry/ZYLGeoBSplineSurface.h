// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoRef.h"
#include "ZYLGeoSurface.h"
#include "ZYLMathAxis.h"

#include <QString>

#include <memory>
#include <vector>

/// A clamped tensor-product B-spline surface of degree 1 to 3 in each direction, from a grid
/// of control points: control point (i, j), i along u and j along v, is element
/// i · GetNumControlPointsV() + j. The surface passes through its corner control points.
/// Derivatives up to the second are exact, and so are the bounds of the second derivatives
/// (from the control points of the derivative surfaces), which keeps the closest-point search
/// rigorous. Interior knots of multiplicity equal to the degree make creases; they are
/// reported as kinks.
class ZYLGEOMETRY_EXPORT ZYLGeoBSplineSurface final : public ZYLGeoSurface {
public:
    /// Returns the surface, or null (with the reason in `error` when given) for a degree
    /// outside 1..3, fewer control points than degree + 1 in a direction, a point count that
    /// does not match, a point that is not finite, or a knot vector that is not finite,
    /// decreasing, unclamped (degree + 1 equal knots at each end), of the wrong size
    /// (count + degree + 1), empty inside, or with an interior knot repeated more than the
    /// degree. An empty knot vector stands for uniform knots on [0, 1].
    static ZYLGeoRef<ZYLGeoBSplineSurface> Create(int degreeU, int degreeV, int countU, int countV,
                                                  std::vector<ZYLMathPoint> controlPoints,
                                                  std::vector<double> knotsU = {}, std::vector<double> knotsV = {},
                                                  QString *error = nullptr);
    /// Returns a doubly curved panel, e.g. a mould for the demo: the surface
    /// z = (curvatureLength · x² + curvatureWidth · y²) / 2 in the local coordinates of
    /// `frame` over x in [−length/2, length/2] and y in [−width/2, width/2], as an exact bicubic
    /// B-spline with four spans each way. u in [0, length] and v in [0, width] run along the
    /// frame's first and second directions (u = x + length/2), and the normal at the centre is
    /// the frame's third direction. A positive curvature bends the panel towards its normal
    /// (concave on the normal side, like a mould's cavity), a negative one away from it (a
    /// dome); opposite signs make a saddle. Returns null (with the reason) for a length or
    /// width that is not positive and finite, or a curvature that is not finite.
    static ZYLGeoRef<ZYLGeoBSplineSurface> CreateDoublyCurvedPanel(const ZYLMathAxis &frame, double length,
                                                                   double width, double curvatureLength,
                                                                   double curvatureWidth, QString *error = nullptr);
    ~ZYLGeoBSplineSurface() override;

    int GetDegreeU() const;
    int GetDegreeV() const;
    int GetNumControlPointsU() const;
    int GetNumControlPointsV() const;
    /// Returns control point (i, j); both indices must be in range.
    const ZYLMathPoint &GetControlPoint(int i, int j) const;
    const std::vector<double> &GetKnotsU() const;
    const std::vector<double> &GetKnotsV() const;

    Domain GetDomain() const override;
    ZYLMathPoint Evaluate(double u, double v) const override;
    void EvaluateDerivatives(double u, double v, ZYLMathPoint *point, ZYLMathVector *du,
                             ZYLMathVector *dv) const override;
    SecondDerivatives EvaluateSecondDerivatives(double u, double v) const override;
    SecondDerivativeBounds GetSecondDerivativeBounds(const Domain &region) const override;
    std::vector<double> GetUKinks() const override;
    std::vector<double> GetVKinks() const override;

private:
    struct Data;
    explicit ZYLGeoBSplineSurface(std::unique_ptr<Data> data);
    // Sums the control points with the basis functions (and their derivatives up to `order`).
    SecondDerivatives Sum(double u, double v, int order) const;

    std::unique_ptr<Data> d;
};
