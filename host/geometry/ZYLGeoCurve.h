// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoGeometry.h"
#include "ZYLGeoRangeOfCurve.h"
#include "ZYLMathBoundingBox.h"

#include <optional>
#include <vector>

/// A parametric curve in model space over [GetStartParameter(), GetEndParameter()].
/// Subclasses give the evaluation; lengths, arc-length parameters and tessellation have
/// numeric defaults that exact subclasses (polylines) override.
///
/// The numeric defaults integrate the speed |C'(t)| by adaptive Gauss-Legendre quadrature to
/// a relative accuracy of about 1e-10, piece by piece between the kinks the subclass reports,
/// and tessellate by recursive bisection until every chord is within the tolerance of the
/// curve sampled at a quarter, half and three quarters of it.
class ZYLGEOMETRY_EXPORT ZYLGeoCurve : public ZYLGeoGeometry {
public:
    virtual double GetStartParameter() const = 0;
    virtual double GetEndParameter() const = 0;
    /// Returns the point at parameter t (clamped to the parameter interval).
    virtual ZYLMathPoint Evaluate(double t) const = 0;
    /// Returns the first derivative at t. The default is a fourth-order central difference
    /// (one-sided near the ends of the interval, where evaluation is clamped).
    virtual ZYLMathVector EvaluateDerivative(double t) const;
    /// Returns the unit tangent at t, or no value where the curve does not move.
    std::optional<ZYLMathVector> GetTangent(double t) const;
    /// Returns the parameters strictly inside the interval, in increasing order, where the
    /// curve may turn abruptly (the vertices of a polyline). Numeric integration and
    /// tessellation treat the pieces between them separately. The default has none.
    virtual std::vector<double> GetKinks() const;

    /// Returns the arc length of a range (default: whole curve).
    virtual double GetLength(const ZYLGeoRangeOfCurve &range = {}) const;
    /// Returns the parameter at arc length s from the start of the range (clamped to it: a
    /// negative or NaN s gives the start, a length beyond the range gives its end). Where the
    /// curve stands still, any parameter of the standstill may be returned (polylines return
    /// the first).
    virtual double GetParameterAtLength(double s, const ZYLGeoRangeOfCurve &range = {}) const;
    /// Returns points of the range, its ends included, such that no chord is farther than
    /// `chordTolerance` from the curve. A tolerance that is not a positive finite number gives
    /// an empty list; a tolerance below a millionth of the curve's size is raised to that.
    virtual std::vector<ZYLMathPoint> Tessellate(double chordTolerance, const ZYLGeoRangeOfCurve &range = {}) const;

    /// Returns a box that contains the whole curve (the numeric default is slightly larger
    /// than the tightest one, by a ten-thousandth of the curve's size at most).
    virtual ZYLMathBoundingBox GetBoundingBox() const;
    bool IsClosed(double tolerance = 1e-9) const;
};
