// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoSurface.h"

#include "ZYLGeoPartition.h"
#include "ZYLGeoSurfaceIndex.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Domain = ZYLGeoSurface::Domain;

constexpr int maxTessellationCells = 1024; // per direction
constexpr int maxTessellationRounds = 8;
// The mesh is checked at a few points per triangle; aiming a quarter below the tolerance
// covers the points in between.
constexpr double checkedFraction = 0.75;
// Sampled bounds of second derivatives are raised by this factor against peaks that fall
// between the samples.
constexpr double boundSafety = 1.5;

// Central difference of the first derivatives along one parameter, one-sided within the
// domain near its ends where evaluation is clamped.
template <typename Evaluate>
void Differentiate(const Evaluate &derivatives, double x, double lo, double hi, ZYLMathVector *ofDu,
                   ZYLMathVector *ofDv)
{
    const double span = hi - lo;
    if (!(span > 0.0)) {
        *ofDu = {};
        *ofDv = {};
        return;
    }
    const double h = std::min(1e-5 * span, 0.25 * span);
    ZYLMathVector du[3], dv[3];
    if (x - h < lo) {
        for (int k = 0; k < 3; ++k)
            derivatives(x + k * h, &du[k], &dv[k]);
        *ofDu = (du[0] * -3.0 + du[1] * 4.0 - du[2]) / (2.0 * h);
        *ofDv = (dv[0] * -3.0 + dv[1] * 4.0 - dv[2]) / (2.0 * h);
    } else if (x + h > hi) {
        for (int k = 0; k < 3; ++k)
            derivatives(x - k * h, &du[k], &dv[k]);
        *ofDu = (du[0] * 3.0 - du[1] * 4.0 + du[2]) / (2.0 * h);
        *ofDv = (dv[0] * 3.0 - dv[1] * 4.0 + dv[2]) / (2.0 * h);
    } else {
        derivatives(x + h, &du[0], &dv[0]);
        derivatives(x - h, &du[1], &dv[1]);
        *ofDu = (du[0] - du[1]) / (2.0 * h);
        *ofDv = (dv[0] - dv[1]) / (2.0 * h);
    }
}

// The worst deviation of a grid's triangles from the surface, measured at edge midpoints
// (told apart by direction) and at the triangles' centroids.
struct GridError {
    double alongU = 0.0;
    double alongV = 0.0;
    double across = 0.0;
};

GridError MeasureGrid(const ZYLGeoSurface &surface, const std::vector<double> &us, const std::vector<double> &vs,
                      const std::vector<ZYLMathPoint> &points)
{
    const size_t nv = vs.size();
    const auto at = [&](size_t i, size_t j) -> const ZYLMathPoint & { return points[i * nv + j]; };
    const auto deviation = [&](double u, double v, const ZYLMathPoint &a, const ZYLMathPoint &b,
                               const ZYLMathPoint &c, double wa, double wb, double wc) {
        const ZYLMathPoint linear = ZYLMathPoint() + (a.ToVector() * wa + b.ToVector() * wb + c.ToVector() * wc);
        return surface.Evaluate(u, v).GetDistanceTo(linear);
    };
    GridError error;
    for (size_t i = 0; i + 1 < us.size(); ++i) {
        for (size_t j = 0; j + 1 < nv; ++j) {
            const double u0 = us[i], u1 = us[i + 1], v0 = vs[j], v1 = vs[j + 1];
            const double um = 0.5 * (u0 + u1), vm = 0.5 * (v0 + v1);
            const ZYLMathPoint &p00 = at(i, j), &p10 = at(i + 1, j), &p01 = at(i, j + 1), &p11 = at(i + 1, j + 1);
            error.alongU = std::max({error.alongU, deviation(um, v0, p00, p10, p10, 0.5, 0.5, 0.0),
                                     deviation(um, v1, p01, p11, p11, 0.5, 0.5, 0.0)});
            error.alongV = std::max({error.alongV, deviation(u0, vm, p00, p01, p01, 0.5, 0.5, 0.0),
                                     deviation(u1, vm, p10, p11, p11, 0.5, 0.5, 0.0)});
            constexpr double third = 1.0 / 3.0;
            error.across = std::max({error.across, deviation(um, vm, p00, p11, p11, 0.5, 0.5, 0.0),
                                     deviation((u0 + 2 * u1) * third, (2 * v0 + v1) * third, p00, p10, p11, third,
                                               third, third),
                                     deviation((2 * u0 + u1) * third, (v0 + 2 * v1) * third, p00, p11, p01, third,
                                               third, third)});
        }
    }
    return error;
}

int Refined(int count, double error, double tolerance)
{
    const double factor = 1.1 * std::sqrt(error / tolerance);
    return std::min(maxTessellationCells, std::max(count + 1, int(std::ceil(count * factor))));
}

} // namespace

ZYLGeoSurface::ZYLGeoSurface() = default;

ZYLGeoSurface::~ZYLGeoSurface() = default;

const ZYLGeoSurfaceIndex &ZYLGeoSurface::GetIndex() const
{
    std::call_once(m_indexOnce, [this] { m_index = std::make_unique<ZYLGeoSurfaceIndex>(*this); });
    return *m_index;
}

ZYLGeoSurface::SecondDerivatives ZYLGeoSurface::EvaluateSecondDerivatives(double u, double v) const
{
    const Domain domain = GetDomain();
    u = std::isnan(u) ? domain.uMin : std::clamp(u, domain.uMin, domain.uMax);
    v = std::isnan(v) ? domain.vMin : std::clamp(v, domain.vMin, domain.vMax);
    SecondDerivatives s;
    EvaluateDerivatives(u, v, &s.point, &s.du, &s.dv);
    ZYLMathPoint ignored;
    ZYLMathVector duu, dvu, duv, dvv;
    Differentiate([&](double x, ZYLMathVector *du, ZYLMathVector *dv) { EvaluateDerivatives(x, v, &ignored, du, dv); },
                  u, domain.uMin, domain.uMax, &duu, &dvu);
    Differentiate([&](double y, ZYLMathVector *du, ZYLMathVector *dv) { EvaluateDerivatives(u, y, &ignored, du, dv); },
                  v, domain.vMin, domain.vMax, &duv, &dvv);
    s.duu = duu;
    s.duv = (duv + dvu) * 0.5;
    s.dvv = dvv;
    return s;
}

ZYLGeoSurface::SecondDerivativeBounds ZYLGeoSurface::GetSecondDerivativeBounds(const Domain &region) const
{
    constexpr int samples = 4;
    SecondDerivativeBounds bounds;
    for (int i = 0; i <= samples; ++i) {
        for (int j = 0; j <= samples; ++j) {
            const SecondDerivatives s =
                EvaluateSecondDerivatives(region.uMin + (region.uMax - region.uMin) * i / samples,
                                          region.vMin + (region.vMax - region.vMin) * j / samples);
            bounds.uu = std::max(bounds.uu, s.duu.GetLength());
            bounds.uv = std::max(bounds.uv, s.duv.GetLength());
            bounds.vv = std::max(bounds.vv, s.dvv.GetLength());
        }
    }
    bounds.uu *= boundSafety;
    bounds.uv *= boundSafety;
    bounds.vv *= boundSafety;
    return bounds;
}

std::vector<double> ZYLGeoSurface::GetUKinks() const
{
    return {};
}

std::vector<double> ZYLGeoSurface::GetVKinks() const
{
    return {};
}

ZYLMathVector ZYLGeoSurface::GetNormal(double u, double v) const
{
    const Domain domain = GetDomain();
    const double uc = 0.5 * (domain.uMin + domain.uMax), vc = 0.5 * (domain.vMin + domain.vMax);
    // At a pole du × dv vanishes; the normal just inside the domain is the one to show.
    for (double step : {0.0, 1e-6, 1e-3}) {
        ZYLMathPoint point;
        ZYLMathVector du, dv;
        EvaluateDerivatives(u + (uc - u) * step, v + (vc - v) * step, &point, &du, &dv);
        if (const std::optional<ZYLMathVector> normal = du.Cross(dv).Normalized())
            return *normal;
    }
    return {0.0, 0.0, 1.0};
}

ZYLGeoMesh ZYLGeoSurface::Tessellate(double chordTolerance) const
{
    if (!(chordTolerance > 0.0) || !std::isfinite(chordTolerance))
        return {};
    const Domain domain = GetDomain();
    const double width = domain.uMax - domain.uMin, height = domain.vMax - domain.vMin;
    const double target = checkedFraction * chordTolerance;
    // First guess from the interpolation error h²·|S''|/8, a third of the target for each
    // of the u, v and mixed terms; the check below corrects it.
    const SecondDerivativeBounds m = GetSecondDerivativeBounds(domain);
    double hu = m.uu > 0.0 ? std::sqrt(8.0 * target / 3.0 / m.uu) : width;
    double hv = m.vv > 0.0 ? std::sqrt(8.0 * target / 3.0 / m.vv) : height;
    const double mixed = 2.0 * hu * hv * m.uv / 8.0;
    if (mixed > target / 3.0) {
        const double shrink = std::sqrt(target / 3.0 / mixed);
        hu *= shrink;
        hv *= shrink;
    }
    const auto cells = [](double span, double h) {
        return h > 0.0 && std::isfinite(span / h) ? std::clamp(int(std::ceil(span / h)), 1, maxTessellationCells) : 1;
    };
    int countU = cells(width, hu), countV = cells(height, hv);

    std::vector<double> us, vs;
    std::vector<ZYLMathPoint> points;
    for (int round = 0;; ++round) {
        us = ZYLGeoPartition(domain.uMin, domain.uMax, GetUKinks(), countU);
        vs = ZYLGeoPartition(domain.vMin, domain.vMax, GetVKinks(), countV);
        points.clear();
        points.reserve(us.size() * vs.size());
        for (double u : us) {
            for (double v : vs)
                points.push_back(Evaluate(u, v));
        }
        if (round + 1 >= maxTessellationRounds)
            break;
        const GridError error = MeasureGrid(*this, us, vs, points);
        const bool refineU = error.alongU > target || (error.across > target && error.alongV <= target);
        const bool refineV = error.alongV > target || (error.across > target && error.alongU <= target);
        const int nextU = refineU ? Refined(countU, std::max(error.alongU, error.across), target) : countU;
        const int nextV = refineV ? Refined(countV, std::max(error.alongV, error.across), target) : countV;
        if (nextU == countU && nextV == countV)
            break;
        countU = nextU;
        countV = nextV;
    }

    ZYLGeoMesh mesh;
    mesh.vertices = std::move(points);
    mesh.normals.reserve(mesh.vertices.size());
    for (double u : us) {
        for (double v : vs)
            mesh.normals.push_back(GetNormal(u, v));
    }
    const int nv = int(vs.size());
    mesh.triangles.reserve(2 * (us.size() - 1) * (vs.size() - 1));
    for (int i = 0; i + 1 < int(us.size()); ++i) {
        for (int j = 0; j + 1 < nv; ++j) {
            const int a = i * nv + j, b = (i + 1) * nv + j, c = (i + 1) * nv + j + 1, d = i * nv + j + 1;
            // Counter-clockwise in (u, v), hence seen from the du × dv side.
            mesh.triangles.push_back({a, b, c});
            mesh.triangles.push_back({a, c, d});
        }
    }
    return mesh;
}

ZYLGeoSurfaceFoot ZYLGeoSurface::GetClosestPoint(const ZYLMathPoint &q, const ZYLGeoSurfaceFoot *hint) const
{
    if (!q.IsFinite())
        return GetUndefinedFoot();
    return GetIndex().FindClosestPoint(q, hint);
}

ZYLGeoSurfaceFoot ZYLGeoSurface::GetUndefinedFoot() const
{
    const Domain domain = GetDomain();
    ZYLGeoSurfaceFoot foot;
    foot.u = 0.5 * (domain.uMin + domain.uMax);
    foot.v = 0.5 * (domain.vMin + domain.vMax);
    foot.point = Evaluate(foot.u, foot.v);
    foot.normal = GetNormal(foot.u, foot.v);
    foot.signedDistance = std::numeric_limits<double>::quiet_NaN();
    return foot;
}

ZYLMathBoundingBox ZYLGeoSurface::GetBoundingBox() const
{
    return GetIndex().GetBoundingBox();
}
