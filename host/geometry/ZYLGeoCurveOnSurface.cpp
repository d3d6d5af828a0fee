// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoCurveOnSurface.h"

#include "ZYLGeoParametricCurve.h"
#include "ZYLGeoPolyline.h"
#include "ZYLGeoSurface.h"

#include <algorithm>
#include <cmath>

namespace {

template <typename T>
ZYLGeoRef<T> Fail(const QString &reason, QString *error)
{
    if (error)
        *error = reason;
    return {};
}

} // namespace

ZYLGeoRef<ZYLGeoCurveOnSurface> ZYLGeoCurveOnSurface::Create(const ZYLGeoSurface *surface,
                                                             const ZYLGeoCurve *uvCurve, QString *error)
{
    if (!surface)
        return Fail<ZYLGeoCurveOnSurface>(QStringLiteral("A curve on a surface needs a surface."), error);
    if (!uvCurve)
        return Fail<ZYLGeoCurveOnSurface>(QStringLiteral("A curve on a surface needs a (u, v) curve."), error);
    return ZYLGeoRef<ZYLGeoCurveOnSurface>(new ZYLGeoCurveOnSurface(surface, uvCurve));
}

ZYLGeoRef<ZYLGeoCurveOnSurface> ZYLGeoCurveOnSurface::CreateFromPolyline(const ZYLGeoSurface *surface,
                                                                         const std::vector<QPointF> &uv,
                                                                         QString *error)
{
    if (!surface)
        return Fail<ZYLGeoCurveOnSurface>(QStringLiteral("A curve on a surface needs a surface."), error);
    const ZYLGeoSurface::Domain domain = surface->GetDomain();
    // Vertices computed in floating point may overshoot the border by a rounding error.
    const double slackU = 1e-9 * (domain.uMax - domain.uMin);
    const double slackV = 1e-9 * (domain.vMax - domain.vMin);
    std::vector<ZYLMathPoint> points;
    points.reserve(uv.size());
    for (size_t i = 0; i < uv.size(); ++i) {
        const double u = uv[i].x();
        const double v = uv[i].y();
        if (!(u >= domain.uMin - slackU && u <= domain.uMax + slackU && v >= domain.vMin - slackV
              && v <= domain.vMax + slackV)) {
            return Fail<ZYLGeoCurveOnSurface>(
                QStringLiteral("Vertex %1 (%2, %3) of the curve lies outside the surface domain [%4, %5] × [%6, %7].")
                    .arg(i)
                    .arg(u)
                    .arg(v)
                    .arg(domain.uMin)
                    .arg(domain.uMax)
                    .arg(domain.vMin)
                    .arg(domain.vMax),
                error);
        }
        points.emplace_back(u, v, 0.0);
    }
    QString reason;
    const ZYLGeoRef<ZYLGeoPolyline> polyline = ZYLGeoPolyline::Create(std::move(points), &reason);
    if (!polyline)
        return Fail<ZYLGeoCurveOnSurface>(reason, error);
    return Create(surface, polyline.get(), error);
}

ZYLGeoRef<ZYLGeoCurveOnSurface> ZYLGeoCurveOnSurface::CreateFromFunction(const ZYLGeoSurface *surface, UVFunction uv,
                                                                         double start, double end, QString *error)
{
    if (!surface)
        return Fail<ZYLGeoCurveOnSurface>(QStringLiteral("A curve on a surface needs a surface."), error);
    ZYLGeoParametricCurve::Function planar;
    if (uv) {
        planar = [uv = std::move(uv)](double t) {
            const QPointF p = uv(t);
            return ZYLMathPoint(p.x(), p.y(), 0.0);
        };
    }
    QString reason;
    const ZYLGeoRef<ZYLGeoParametricCurve> curve = ZYLGeoParametricCurve::Create(std::move(planar), start, end, {}, &reason);
    if (!curve)
        return Fail<ZYLGeoCurveOnSurface>(reason, error);
    return Create(surface, curve.get(), error);
}

ZYLGeoCurveOnSurface::ZYLGeoCurveOnSurface(const ZYLGeoSurface *surface, const ZYLGeoCurve *uvCurve)
    : m_surface(surface), m_uvCurve(uvCurve)
{
    m_surface->AddReference();
    m_uvCurve->AddReference();
}

ZYLGeoCurveOnSurface::~ZYLGeoCurveOnSurface()
{
    m_uvCurve->RemoveReference();
    m_surface->RemoveReference();
}

QPointF ZYLGeoCurveOnSurface::GetUV(double t) const
{
    const ZYLMathPoint p = m_uvCurve->Evaluate(t);
    const ZYLGeoSurface::Domain domain = m_surface->GetDomain();
    return {std::clamp(p.X(), domain.uMin, domain.uMax), std::clamp(p.Y(), domain.vMin, domain.vMax)};
}

double ZYLGeoCurveOnSurface::GetStartParameter() const
{
    return m_uvCurve->GetStartParameter();
}

double ZYLGeoCurveOnSurface::GetEndParameter() const
{
    return m_uvCurve->GetEndParameter();
}

ZYLMathPoint ZYLGeoCurveOnSurface::Evaluate(double t) const
{
    const QPointF uv = GetUV(t);
    return m_surface->Evaluate(uv.x(), uv.y());
}

ZYLMathVector ZYLGeoCurveOnSurface::EvaluateDerivative(double t) const
{
    const QPointF uv = GetUV(t);
    ZYLMathPoint point;
    ZYLMathVector du, dv;
    m_surface->EvaluateDerivatives(uv.x(), uv.y(), &point, &du, &dv);
    const ZYLMathVector d = m_uvCurve->EvaluateDerivative(t);
    return du * d.X() + dv * d.Y();
}

std::vector<double> ZYLGeoCurveOnSurface::GetKinks() const
{
    return m_uvCurve->GetKinks();
}
