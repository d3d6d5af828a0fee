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
class ZYLGEOMETRY_EXPORT ZYLGeoCurve : public ZYLGeoGeometry {
public:
    virtual double GetStartParameter() const = 0;
    virtual double GetEndParameter() const = 0;
    /// Returns the point at parameter t (clamped to the parameter interval).
    virtual ZYLMathPoint Evaluate(double t) const = 0;
    /// Returns the first derivative at t. The default is a central difference.
    virtual ZYLMathVector EvaluateDerivative(double t) const;
    /// Returns the unit tangent at t, or no value where the curve does not move.
    std::optional<ZYLMathVector> GetTangent(double t) const;

    /// Returns the arc length of a range (default: whole curve).
    virtual double GetLength(const ZYLGeoRangeOfCurve &range = {}) const;
    /// Returns the parameter at arc length s from the start of the range (clamped to it).
    virtual double GetParameterAtLength(double s, const ZYLGeoRangeOfCurve &range = {}) const;
    /// Returns points of the range, its ends included, such that no chord is farther than
    /// `chordTolerance` from the curve.
    virtual std::vector<ZYLMathPoint> Tessellate(double chordTolerance, const ZYLGeoRangeOfCurve &range = {}) const;

    ZYLMathBoundingBox GetBoundingBox() const;
    bool IsClosed(double tolerance = 1e-9) const;
};
