// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoGeometry.h"
#include "ZYLGeoMesh.h"

#include <memory>
#include <mutex>
#include <vector>

class ZYLGeoSurfaceIndex;

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
///
/// Subclasses give evaluation and first derivatives; second derivatives, their bounds,
/// tessellation and the closest point have numeric defaults. The closest-point search builds,
/// on its first use, an index of the surface (a tree of parameter rectangles with oriented
/// boxes and bounds on the derivatives) and then answers queries by a projected Newton
/// iteration in (u, v) whose result is proved to be the global nearest point, or else
/// improved, by a branch-and-bound over that tree. The surface must not change after the
/// first query. Queries are safe from several threads.
class ZYLGEOMETRY_EXPORT ZYLGeoSurface : public ZYLGeoGeometry {
public:
    struct Domain {
        double uMin = 0.0, uMax = 1.0, vMin = 0.0, vMax = 1.0;
    };
    /// The point and the first and second partial derivatives at one (u, v).
    struct SecondDerivatives {
        ZYLMathPoint point;
        ZYLMathVector du, dv, duu, duv, dvv;
    };
    /// Upper bounds of |duu|, |duv| and |dvv| over a parameter rectangle.
    struct SecondDerivativeBounds {
        double uu = 0.0, uv = 0.0, vv = 0.0;
    };

    ~ZYLGeoSurface() override;

    virtual Domain GetDomain() const = 0;
    /// Returns the point at (u, v), clamped to the domain.
    virtual ZYLMathPoint Evaluate(double u, double v) const = 0;
    /// Returns the point and the partial derivatives at (u, v).
    virtual void EvaluateDerivatives(double u, double v, ZYLMathPoint *point, ZYLMathVector *du,
                                     ZYLMathVector *dv) const = 0;
    /// Returns the point and the first and second partial derivatives at (u, v), clamped to
    /// the domain. The default takes central differences of the first derivatives.
    virtual SecondDerivatives EvaluateSecondDerivatives(double u, double v) const;
    /// Returns bounds of the second derivatives' lengths over a rectangle of the domain. The
    /// closest-point search relies on them; the default estimates them by sampling (with a
    /// safety factor), exact subclasses return true bounds. Infinite bounds are allowed.
    virtual SecondDerivativeBounds GetSecondDerivativeBounds(const Domain &region) const;
    /// Returns the u (v) parameters strictly inside the domain, in increasing order, across
    /// which the surface may have a crease. Searches and tessellation keep them on cell
    /// borders. The default has none.
    virtual std::vector<double> GetUKinks() const;
    virtual std::vector<double> GetVKinks() const;

    /// Returns the unit normal du × dv at (u, v). Where du × dv vanishes (a pole), returns the
    /// normal a little way into the domain; (0, 0, 1) when the surface is degenerate there too.
    ZYLMathVector GetNormal(double u, double v) const;

    /// Returns a triangle mesh that deviates from the surface by at most `chordTolerance`:
    /// every mesh point lies within the tolerance of the surface point of the same (u, v).
    /// A tolerance that is not a positive finite number gives an empty mesh; the mesh has at
    /// most 1024 × 1024 cells, so a tolerance that would need more is not met.
    virtual ZYLGeoMesh Tessellate(double chordTolerance) const;
    /// Returns the nearest point of the surface to q (the global one, with its foot on the
    /// domain's border when q lies beyond it). `hint`, when given, is a foot found for a
    /// nearby query and speeds up runs of neighbouring queries; it never changes the result
    /// beyond the solver's accuracy (about 1e-9 of the surface's size). A query with a
    /// non-finite coordinate gives the foot at the domain's centre with a NaN distance.
    virtual ZYLGeoSurfaceFoot GetClosestPoint(const ZYLMathPoint &q, const ZYLGeoSurfaceFoot *hint = nullptr) const;
    /// Returns the distance of q to the surface, positive on the normal side.
    double GetSignedDistance(const ZYLMathPoint &q) const { return GetClosestPoint(q).signedDistance; }

    /// Returns a box that contains the whole surface.
    ZYLMathBoundingBox GetBoundingBox() const;

protected:
    ZYLGeoSurface();

    /// Returns the search index, building it on first use.
    const ZYLGeoSurfaceIndex &GetIndex() const;
    /// Returns the answer to a query that has no foot (a non-finite point): the domain's
    /// centre with a NaN distance.
    ZYLGeoSurfaceFoot GetUndefinedFoot() const;

private:
    mutable std::once_flag m_indexOnce;
    mutable std::unique_ptr<ZYLGeoSurfaceIndex> m_index;
};
