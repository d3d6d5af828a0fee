// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoGeometry.h"
#include "ZYLGeoMesh.h"

/// The foot of a query point on a surface: its parameters, position and unit normal, and the
/// signed distance of the query point (positive on the normal side).
struct ZYLGeoSurfaceFoot {
    double u = 0.0;
    double v = 0.0;
    ZYLMathPoint point;
    ZYLMathVector normal{0.0, 0.0, 1.0};
    double signedDistance = 0.0;
};

/// A bounded parametric surface over the domain [uMin, uMax] × [vMin, vMax], oriented by
/// du × dv. Mould surfaces of plies are of this kind.
class ZYLGEOMETRY_EXPORT ZYLGeoSurface : public ZYLGeoGeometry {
public:
    struct Domain {
        double uMin = 0.0, uMax = 1.0, vMin = 0.0, vMax = 1.0;
    };
    virtual Domain GetDomain() const = 0;
    /// Returns the point at (u, v), clamped to the domain.
    virtual ZYLMathPoint Evaluate(double u, double v) const = 0;
    /// Returns the point and the partial derivatives at (u, v).
    virtual void EvaluateDerivatives(double u, double v, ZYLMathPoint *point, ZYLMathVector *du,
                                     ZYLMathVector *dv) const = 0;
    /// Returns the unit normal du × dv at (u, v).
    ZYLMathVector GetNormal(double u, double v) const;

    /// Returns a triangle mesh that deviates from the surface by at most `chordTolerance`.
    virtual ZYLGeoMesh Tessellate(double chordTolerance) const;
    /// Returns the nearest point of the surface to q. `hint`, when given, is a foot found for a
    /// nearby query and speeds up runs of neighbouring queries.
    virtual ZYLGeoSurfaceFoot GetClosestPoint(const ZYLMathPoint &q, const ZYLGeoSurfaceFoot *hint = nullptr) const;
    /// Returns the distance of q to the surface, positive on the normal side.
    double GetSignedDistance(const ZYLMathPoint &q) const { return GetClosestPoint(q).signedDistance; }

    ZYLMathBoundingBox GetBoundingBox() const;
};
