// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCollisionChecker.h"

#include "ZYLTPCheck.h"
#include "ZYLTPOnPartPoint.h"

#include "ZYLGeoSurface.h"
#include "ZYLMathBoundingBox.h"
#include "ZYLSysException.h"

#include <algorithm>
#include <cmath>
#include <limits>
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

// Warm-start feet left by the checkers of one thread, most recently used last. A handful
// is enough for callers that alternate between a few sphere lists.
struct CachedFeet {
    const ZYLGeoSurface *surface = nullptr;
    ZYLTPCollisionChecker::Spheres spheres;
    std::vector<ZYLGeoSurfaceFoot> feet;
    std::vector<bool> hasFoot;
};
constexpr size_t MaxCachedFeet = 4;
thread_local std::vector<CachedFeet> threadFeet;

double SquaredDistanceToBox(const ZYLMathBoundingBox &box, const ZYLMathPoint &q)
{
    double sum = 0.0;
    for (int i = 0; i < 3; ++i) {
        const double below = box.GetMin()[i] - q[i];
        const double above = q[i] - box.GetMax()[i];
        const double outside = std::max({below, above, 0.0});
        sum += outside * outside;
    }
    return sum;
}

} // namespace

struct ZYLTPCollisionChecker::Data {
    const ZYLGeoSurface *surface = nullptr;
    double sign = 1.0;
    ZYLGeoSurface::Domain domain;
    ZYLMathBoundingBox box;
    std::vector<Sphere> spheres;
    int lastColliding = -1;
    WarmStart warmStart = WarmStart::Own;
    Spheres key;

    double Distance(Sphere &sphere, const ZYLMathPoint &q) const;
    bool IsClear(Sphere &sphere, const ZYLMathPoint &q, double tolerance, const ZYLMathAxis &frame) const;
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

bool ZYLTPCollisionChecker::Data::IsClear(Sphere &sphere, const ZYLMathPoint &q, double tolerance,
                                          const ZYLMathAxis &frame) const
{
    const double needed = sphere.radius + tolerance;
    if (sphere.anchorDistance > 0.0) {
        const double slack = sphere.anchorDistance - needed;
        if (slack > 0.0 && q.GetSquaredDistanceTo(sphere.anchor) < slack * slack)
            return true;
    }
    // A sphere beyond the surface's box on the head's side of the tool cannot reach the part.
    if (SquaredDistanceToBox(box, q) > needed * needed
        && sign * (q - frame.GetOrigin()).Dot(frame.GetThirdDirection()) >= 0.0)
        return true;
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
    d->box = surface->GetBoundingBox();
    d->warmStart = warmStart;
    if (warmStart != WarmStart::Thread)
        return;
    d->key = spheres;
    for (auto it = threadFeet.begin(); it != threadFeet.end(); ++it) {
        if (it->surface != surface || it->spheres != spheres)
            continue;
        for (size_t k = 0; k < d->spheres.size(); ++k) {
            d->spheres[k].foot = it->feet[k];
            d->spheres[k].hasFoot = it->hasFoot[k];
        }
        threadFeet.erase(it);
        break;
    }
}

ZYLTPCollisionChecker::~ZYLTPCollisionChecker()
{
    if (d->warmStart != WarmStart::Thread)
        return;
    CachedFeet entry;
    entry.surface = d->surface;
    entry.spheres = std::move(d->key);
    for (const Sphere &sphere : d->spheres) {
        entry.feet.push_back(sphere.foot);
        entry.hasFoot.push_back(sphere.hasFoot);
    }
    std::erase_if(threadFeet, [&](const CachedFeet &other) {
        return other.surface == entry.surface && other.spheres == entry.spheres;
    });
    if (threadFeet.size() >= MaxCachedFeet)
        threadFeet.erase(threadFeet.begin());
    threadFeet.push_back(std::move(entry));
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
        if (d->IsClear(s, toolFrame.ToGlobal(s.centre), tolerance, toolFrame))
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

ZYLMathAxis ZYLTPCollisionChecker::TiltFrame(const ZYLMathAxis &untilted, double forward, double side)
{
    ZYLMathAxis frame = untilted;
    const ZYLMathPoint &tip = untilted.GetOrigin();
    if (side != 0.0)
        frame = frame.Rotated(tip, untilted.GetFirstDirection(), side);
    if (forward != 0.0)
        frame = frame.Rotated(tip, untilted.GetSecondDirection(), forward);
    return frame;
}

bool ZYLTPOnPartPoint::DetectCollision(const ZYLGeoSurface *surface, bool direction, double tolerance,
                                       const QList<std::pair<ZYLMathPoint, double>> &collisionPoints) const
{
    ZYLTPCollisionChecker checker(surface, direction, collisionPoints, ZYLTPCollisionChecker::WarmStart::Thread);
    ZYLTPCollisionChecker::CheckTolerance(tolerance);
    return checker.Collides(GetAxis(true), tolerance);
}
