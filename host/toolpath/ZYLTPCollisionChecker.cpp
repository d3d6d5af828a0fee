// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCollisionChecker.h"

#include "ZYLTPCheck.h"
#include "ZYLTPOnPartPoint.h"

#include "ZYLGeoSurface.h"
#include "ZYLSysException.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

namespace {

struct Sphere {
    ZYLMathPoint centre;
    double radius = 0.0;
    // The foot of the last query, the start of the next one.
    ZYLGeoSurfaceFoot foot;
    bool hasFoot = false;
    // Where the last query was made and its distance, when the centre was in front of the
    // surface with its foot inside it (else anchorDistance is negative): the centre stays
    // at least anchorDistance − |moved| away from the part.
    ZYLMathPoint anchor;
    double anchorDistance = -1.0;
};

// Query state left by the checkers of one thread, most recently used last. A handful is
// enough for callers that alternate between a few sphere lists.
struct CachedState {
    const ZYLGeoSurface *surface = nullptr;
    double sign = 1.0;
    ZYLTPCollisionChecker::Spheres spheres;
    std::vector<Sphere> state;
    // The surface's domain and its point at the domain's centre when the state was made:
    // a new surface made at the address of a deleted one does not match them.
    ZYLGeoSurface::Domain domain;
    ZYLMathPoint witness;
};
constexpr size_t MaxCachedStates = 4;
thread_local std::vector<CachedState> threadStates;

bool SameDomain(const ZYLGeoSurface::Domain &a, const ZYLGeoSurface::Domain &b)
{
    return a.uMin == b.uMin && a.uMax == b.uMax && a.vMin == b.vMin && a.vMax == b.vMax;
}

ZYLMathPoint Witness(const ZYLGeoSurface &surface, const ZYLGeoSurface::Domain &domain)
{
    return surface.Evaluate(0.5 * (domain.uMin + domain.uMax), 0.5 * (domain.vMin + domain.vMax));
}

} // namespace

struct ZYLTPCollisionChecker::Data {
    const ZYLGeoSurface *surface = nullptr;
    double sign = 1.0;
    ZYLGeoSurface::Domain domain;
    std::vector<Sphere> spheres;
    int lastColliding = -1;
    WarmStart warmStart = WarmStart::Own;
    Spheres key;
    std::optional<ZYLMathPoint> witness;

    double Distance(Sphere &sphere, const ZYLMathPoint &q) const;
    bool IsClear(Sphere &sphere, const ZYLMathPoint &q, double tolerance) const;
};

double ZYLTPCollisionChecker::Data::Distance(Sphere &sphere, const ZYLMathPoint &q) const
{
    const ZYLGeoSurfaceFoot foot = surface->GetClosestPoint(q, sphere.hasFoot ? &sphere.foot : nullptr);
    if (!std::isfinite(foot.signedDistance))
        throw ZYLSysException(tr("A collision point lies at a position that is not finite"));
    sphere.foot = foot;
    sphere.hasFoot = true;
    const bool onBorder = foot.u <= domain.uMin || foot.u >= domain.uMax || foot.v <= domain.vMin || foot.v >= domain.vMax;
    double distance = sign * foot.signedDistance;
    // Beside the part is not behind it: only a foot inside the surface tells the back side.
    if (onBorder)
        distance = std::fabs(distance);
    sphere.anchor = q;
    sphere.anchorDistance = !onBorder && distance > 0.0 ? distance : -1.0;
    return distance;
}

bool ZYLTPCollisionChecker::Data::IsClear(Sphere &sphere, const ZYLMathPoint &q, double tolerance) const
{
    const double needed = sphere.radius + tolerance;
    if (sphere.anchorDistance > 0.0) {
        const double slack = sphere.anchorDistance - needed;
        if (slack > 0.0 && q.GetSquaredDistanceTo(sphere.anchor) < slack * slack)
            return true;
    }
    return Distance(sphere, q) - sphere.radius >= tolerance;
}

ZYLTPCollisionChecker::ZYLTPCollisionChecker(const ZYLGeoSurface *surface, bool direction, const Spheres &spheres,
                                             WarmStart warmStart)
    : d(std::make_unique<Data>())
{
    if (!surface)
        throw ZYLSysException(tr("There is no surface to check collisions against"));
    d->spheres.reserve(size_t(spheres.size()));
    for (qsizetype k = 0; k < spheres.size(); ++k) {
        const auto &[centre, radius] = spheres[k];
        if (!centre.IsFinite())
            throw ZYLSysException(tr("Collision point %1 has a centre that is not finite").arg(k + 1));
        if (!std::isfinite(radius) || radius < 0.0)
            throw ZYLSysException(tr("Collision point %1 has an invalid radius %2").arg(k + 1).arg(radius));
        Sphere sphere;
        sphere.centre = centre;
        sphere.radius = radius;
        d->spheres.push_back(sphere);
    }
    d->surface = surface;
    d->sign = direction ? 1.0 : -1.0;
    d->domain = surface->GetDomain();
    d->warmStart = warmStart;
    if (warmStart != WarmStart::Thread)
        return;
    d->key = spheres;
    for (auto it = threadStates.begin(); it != threadStates.end(); ++it) {
        if (it->surface != surface || it->sign != d->sign || it->spheres != spheres)
            continue;
        if (SameDomain(it->domain, d->domain) && Witness(*surface, d->domain) == it->witness) {
            // Equal sphere lists: the stored spheres have the same centres and radii.
            d->spheres = std::move(it->state);
            d->witness = it->witness;
        }
        threadStates.erase(it);
        break;
    }
}

ZYLTPCollisionChecker::~ZYLTPCollisionChecker()
{
    if (d->warmStart != WarmStart::Thread)
        return;
    CachedState entry;
    entry.surface = d->surface;
    entry.sign = d->sign;
    entry.spheres = std::move(d->key);
    entry.state = std::move(d->spheres);
    entry.domain = d->domain;
    entry.witness = d->witness ? *d->witness : Witness(*d->surface, d->domain);
    std::erase_if(threadStates, [&](const CachedState &other) {
        return other.surface == entry.surface && other.sign == entry.sign && other.spheres == entry.spheres;
    });
    if (threadStates.size() >= MaxCachedStates)
        threadStates.erase(threadStates.begin());
    threadStates.push_back(std::move(entry));
}

void ZYLTPCollisionChecker::CheckTolerance(double tolerance)
{
    ZYLTPCheck::Length(tolerance);
}

int ZYLTPCollisionChecker::GetNumSpheres() const
{
    return int(d->spheres.size());
}

bool ZYLTPCollisionChecker::Collides(const ZYLMathAxis &toolFrame, double tolerance, int *sphere)
{
    const auto collides = [&](int k) {
        Sphere &s = d->spheres[size_t(k)];
        if (d->IsClear(s, toolFrame.ToGlobal(s.centre), tolerance))
            return false;
        d->lastColliding = k;
        if (sphere)
            *sphere = k;
        return true;
    };
    // The sphere that collided last time most likely collides again: it goes first.
    const int first = d->lastColliding;
    if (first >= 0 && collides(first))
        return true;
    for (int k = 0; k < GetNumSpheres(); ++k) {
        if (k != first && collides(k))
            return true;
    }
    if (sphere)
        *sphere = -1;
    return false;
}

double ZYLTPCollisionChecker::GetClearance(const ZYLMathAxis &toolFrame)
{
    double clearance = std::numeric_limits<double>::infinity();
    for (Sphere &s : d->spheres)
        clearance = std::min(clearance, d->Distance(s, toolFrame.ToGlobal(s.centre)) - s.radius);
    return clearance;
}

bool ZYLTPOnPartPoint::DetectCollision(const ZYLGeoSurface *surface, bool direction, double tolerance,
                                       const QList<std::pair<ZYLMathPoint, double>> &collisionPoints) const
{
    ZYLTPCollisionChecker checker(surface, direction, collisionPoints, ZYLTPCollisionChecker::WarmStart::Thread);
    ZYLTPCollisionChecker::CheckTolerance(tolerance);
    return checker.Collides(GetAxis(true), tolerance);
}
