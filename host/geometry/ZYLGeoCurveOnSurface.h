// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoCurve.h"
#include "ZYLGeoRef.h"

#include <QPointF>
#include <QString>

#include <functional>
#include <vector>

class ZYLGeoSurface;

/// A curve drawn in the (u, v) domain of a surface and mapped onto it, such as a ply
/// boundary. The (u, v) curve is a planar curve whose x and y are u and v (z is ignored); it
/// gives the parameter interval and the kinks, and its points are clamped to the domain.
/// The curve holds a reference on its surface and on its (u, v) curve.
class ZYLGEOMETRY_EXPORT ZYLGeoCurveOnSurface final : public ZYLGeoCurve {
public:
    using UVFunction = std::function<QPointF(double)>;

    /// Returns the curve through (u, v) vertices joined by straight segments in the domain,
    /// with the vertex-counting parameter of `ZYLGeoPolyline`; or null (with the reason in
    /// `error` when given) without a surface, with fewer than two vertices, or with a vertex
    /// that is not finite or lies outside the domain.
    static ZYLGeoRef<ZYLGeoCurveOnSurface> CreateFromPolyline(const ZYLGeoSurface *surface,
                                                              const std::vector<QPointF> &uv,
                                                              QString *error = nullptr);
    /// Returns the curve t ↦ surface(uv(t)) on [start, end]; or null (with the reason) as for
    /// `ZYLGeoParametricCurve::Create`, or without a surface.
    static ZYLGeoRef<ZYLGeoCurveOnSurface> CreateFromFunction(const ZYLGeoSurface *surface, UVFunction uv,
                                                              double start, double end, QString *error = nullptr);
    /// Returns the curve mapping any planar (u, v) curve onto the surface; null (with the
    /// reason) without a surface or a curve.
    static ZYLGeoRef<ZYLGeoCurveOnSurface> Create(const ZYLGeoSurface *surface, const ZYLGeoCurve *uvCurve,
                                                  QString *error = nullptr);
    ~ZYLGeoCurveOnSurface() override;

    const ZYLGeoSurface *GetSurface() const { return m_surface; }
    const ZYLGeoCurve *GetUVCurve() const { return m_uvCurve; }
    /// Returns the (u, v) of parameter t, clamped to the surface's domain.
    QPointF GetUV(double t) const;

    double GetStartParameter() const override;
    double GetEndParameter() const override;
    ZYLMathPoint Evaluate(double t) const override;
    /// Returns the exact chain-rule derivative du·u'(t) + dv·v'(t).
    ZYLMathVector EvaluateDerivative(double t) const override;
    std::vector<double> GetKinks() const override;

private:
    ZYLGeoCurveOnSurface(const ZYLGeoSurface *surface, const ZYLGeoCurve *uvCurve);

    const ZYLGeoSurface *m_surface;
    const ZYLGeoCurve *m_uvCurve;
};
