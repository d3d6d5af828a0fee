// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoPlane.h"

#include <algorithm>
#include <cmath>

ZYLGeoRef<ZYLGeoPlane> ZYLGeoPlane::Create(const ZYLMathAxis &frame, const Domain &extents, QString *error)
{
    QString reason;
    const auto increasing = [](double lo, double hi) { return std::isfinite(lo) && std::isfinite(hi) && lo < hi; };
    if (!increasing(extents.uMin, extents.uMax) || !increasing(extents.vMin, extents.vMax)) {
        reason = QStringLiteral("The extents [%1, %2] × [%3, %4] of a plane must be finite and increasing.")
                     .arg(extents.uMin)
                     .arg(extents.uMax)
                     .arg(extents.vMin)
                     .arg(extents.vMax);
    } else if (!frame.GetOrigin().IsFinite()) {
        reason = QStringLiteral("The origin of a plane must be finite.");
    }
    if (!reason.isEmpty()) {
        if (error)
            *error = reason;
        return {};
    }
    return ZYLGeoRef<ZYLGeoPlane>(new ZYLGeoPlane(frame, extents));
}

ZYLGeoPlane::ZYLGeoPlane(const ZYLMathAxis &frame, const Domain &extents) : m_frame(frame), m_extents(extents) {}

ZYLGeoPlane::~ZYLGeoPlane() = default;

ZYLMathPoint ZYLGeoPlane::Evaluate(double u, double v) const
{
    u = std::isnan(u) ? m_extents.uMin : std::clamp(u, m_extents.uMin, m_extents.uMax);
    v = std::isnan(v) ? m_extents.vMin : std::clamp(v, m_extents.vMin, m_extents.vMax);
    return m_frame.ToGlobal(ZYLMathPoint(u, v, 0.0));
}

void ZYLGeoPlane::EvaluateDerivatives(double u, double v, ZYLMathPoint *point, ZYLMathVector *du,
                                      ZYLMathVector *dv) const
{
    if (point)
        *point = Evaluate(u, v);
    if (du)
        *du = m_frame.GetFirstDirection();
    if (dv)
        *dv = m_frame.GetSecondDirection();
}

ZYLGeoSurface::SecondDerivatives ZYLGeoPlane::EvaluateSecondDerivatives(double u, double v) const
{
    SecondDerivatives s;
    EvaluateDerivatives(u, v, &s.point, &s.du, &s.dv);
    return s;
}

ZYLGeoSurface::SecondDerivativeBounds ZYLGeoPlane::GetSecondDerivativeBounds(const Domain &) const
{
    return {};
}

ZYLGeoMesh ZYLGeoPlane::Tessellate(double chordTolerance) const
{
    if (!(chordTolerance > 0.0) || !std::isfinite(chordTolerance))
        return {};
    ZYLGeoMesh mesh;
    const Domain &e = m_extents;
    mesh.vertices = {Evaluate(e.uMin, e.vMin), Evaluate(e.uMax, e.vMin), Evaluate(e.uMax, e.vMax),
                     Evaluate(e.uMin, e.vMax)};
    mesh.normals.assign(4, m_frame.GetThirdDirection());
    mesh.triangles = {{0, 1, 2}, {0, 2, 3}};
    return mesh;
}

ZYLGeoSurfaceFoot ZYLGeoPlane::GetClosestPoint(const ZYLMathPoint &q, const ZYLGeoSurfaceFoot *) const
{
    if (!q.IsFinite())
        return GetUndefinedFoot();
    ZYLGeoSurfaceFoot foot;
    foot.normal = m_frame.GetThirdDirection();
    const ZYLMathPoint local = m_frame.ToLocal(q);
    foot.u = std::clamp(local.X(), m_extents.uMin, m_extents.uMax);
    foot.v = std::clamp(local.Y(), m_extents.vMin, m_extents.vMax);
    foot.point = Evaluate(foot.u, foot.v);
    const double distance = q.GetDistanceTo(foot.point);
    foot.signedDistance = local.Z() < 0.0 ? -distance : distance;
    return foot;
}
