// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisGizmo.h"

#include "ZYLVisEnvironment.h"
#include "ZYLVisPickRay.h"
#include "ZYLVisPolylinePrimitive.h"
#include "ZYLVisRepGraphics.h"
#include "ZYLVisSegmentPrimitive.h"

#include "ZYLSysException.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace {
constexpr int translations[3] = {ZYLVisGizmo::TranslateX, ZYLVisGizmo::TranslateY, ZYLVisGizmo::TranslateZ};
constexpr int rotations[3] = {ZYLVisGizmo::RotateX, ZYLVisGizmo::RotateY, ZYLVisGizmo::RotateZ};
// Rings sit inside the arrows so that both kinds of handle can be grabbed where they cross.
constexpr double ringRatio = 0.75;
// Arrows start off the centre, where all three would be ambiguous.
constexpr double arrowStartRatio = 0.15;
constexpr double grabRatio = 0.06;
constexpr int ringSegments = 64;

const ZYLMathVector unitAxes[3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

QColor axisColor(int k)
{
    return k == 0 ? QColor(220, 40, 40) : k == 1 ? QColor(40, 180, 40) : QColor(40, 80, 230);
}

// Parameter along the line g + s·a (unit a) of its point nearest the ray, or no value when
// the two are parallel.
std::optional<double> parameterOnAxis(const ZYLMathPoint &g, const ZYLMathVector &a, const ZYLVisPickRay &ray)
{
    const ZYLMathVector &dir = ray.GetDirection();
    const ZYLMathVector w = g - ray.GetOrigin();
    const double b = a.Dot(dir);
    const double denom = 1.0 - b * b;
    if (denom < 1e-9)
        return std::nullopt;
    return (b * dir.Dot(w) - a.Dot(w)) / denom;
}

// Depth at which the ray meets the plane through g with unit normal n, or no value when it
// runs parallel to it or meets it behind the origin.
std::optional<double> depthOnPlane(const ZYLMathPoint &g, const ZYLMathVector &n, const ZYLVisPickRay &ray)
{
    const double dn = ray.GetDirection().Dot(n);
    if (std::abs(dn) < 1e-9)
        return std::nullopt;
    const double t = (g - ray.GetOrigin()).Dot(n) / dn;
    if (t < 0.0)
        return std::nullopt;
    return t;
}
}

struct ZYLVisGizmo::Data {
    ZYLVisEnvironment *environment = nullptr;
    int interactions = AllInteractions;
    ZYLMathAxis position;
    bool shown = true;
    double size = 100.0;
    mutable std::unique_ptr<ZYLVisRep> rep;

    // State of the drag in progress.
    int handle = 0;
    ZYLMathAxis start;
    double startParameter = 0.0;
    ZYLMathVector startVector;

    void Notify() const
    {
        if (environment)
            environment->NotifyChanged();
    }
};

ZYLVisGizmo::ZYLVisGizmo(ZYLVisEnvironment *environment, QObject *parent)
    : QObject(parent), d(std::make_unique<Data>())
{
    if (!environment)
        throw ZYLSysException(QStringLiteral("A gizmo needs an environment."));
    d->environment = environment;
    environment->RegisterGizmo(this);
}

ZYLVisGizmo::~ZYLVisGizmo()
{
    if (d->environment)
        d->environment->UnregisterGizmo(this);
}

void ZYLVisGizmo::ForgetEnvironment()
{
    d->environment = nullptr;
}

ZYLVisEnvironment *ZYLVisGizmo::GetEnvironment() const
{
    return d->environment;
}

void ZYLVisGizmo::SetEnabledInteraction(int interactions)
{
    if (interactions & ~AllInteractions)
        throw ZYLSysException(QStringLiteral("Invalid gizmo interactions %1 (1, 2, 4 translate along x, y, z; "
                                             "16, 32, 64 rotate about x, y, z).")
                                  .arg(interactions));
    if (interactions == d->interactions)
        return;
    d->interactions = interactions;
    if (!(d->handle & interactions))
        d->handle = 0;
    d->rep.reset();
    d->Notify();
}

int ZYLVisGizmo::GetEnabledInteraction() const
{
    return d->interactions;
}

void ZYLVisGizmo::SetPosition(const ZYLMathAxis &position)
{
    if (position == d->position && d->shown)
        return;
    d->position = position;
    d->shown = true;
    d->Notify();
}

ZYLMathAxis ZYLVisGizmo::GetPosition() const
{
    return d->position;
}

void ZYLVisGizmo::Show(bool shown)
{
    if (!shown)
        d->handle = 0;
    if (shown == d->shown)
        return;
    d->shown = shown;
    d->Notify();
}

bool ZYLVisGizmo::IsShown() const
{
    return d->shown;
}

void ZYLVisGizmo::SetSize(double size)
{
    if (!(size > 0.0) || !std::isfinite(size))
        throw ZYLSysException(QStringLiteral("Invalid gizmo size %1 (expected a positive value).").arg(size));
    if (size == d->size)
        return;
    d->size = size;
    d->rep.reset();
    d->Notify();
}

double ZYLVisGizmo::GetSize() const
{
    return d->size;
}

const ZYLVisRep *ZYLVisGizmo::GetRep() const
{
    if (d->rep)
        return d->rep.get();
    QList<ZYLVisPrimitive *> primitives;
    QList<ZYLVisOptions> options;
    for (int k = 0; k < 3; ++k) {
        // Handles are drawn on top of the scene so that they can always be grabbed.
        ZYLVisOptions handleOptions;
        handleOptions.SetColor(axisColor(k));
        handleOptions.SetLineThickness(2.0);
        handleOptions.SetPriority(ZYLVisOptions::MainHighlightPriority);
        handleOptions.SetDepthEnabled(false);
        if (d->interactions & translations[k]) {
            std::vector<ZYLMathPoint> ends;
            ZYLVisSegmentPrimitive::AppendArrow(ends, ZYLMathPoint() + unitAxes[k] * (arrowStartRatio * d->size),
                                                ZYLMathPoint() + unitAxes[k] * d->size, 0.2 * d->size);
            primitives.append(new ZYLVisSegmentPrimitive(std::move(ends)));
            options.append(handleOptions);
        }
        if (d->interactions & rotations[k]) {
            const ZYLMathVector &u = unitAxes[(k + 1) % 3];
            const ZYLMathVector &v = unitAxes[(k + 2) % 3];
            std::vector<ZYLMathPoint> ring;
            for (int i = 0; i <= ringSegments; ++i) {
                const double angle = 2.0 * std::numbers::pi * i / ringSegments;
                ring.push_back(ZYLMathPoint() + (u * std::cos(angle) + v * std::sin(angle)) * (ringRatio * d->size));
            }
            primitives.append(new ZYLVisPolylinePrimitive(std::move(ring)));
            options.append(handleOptions);
        }
    }
    d->rep = std::make_unique<ZYLVisRepGraphics>(primitives, options);
    return d->rep.get();
}

int ZYLVisGizmo::PickHandle(const ZYLVisPickRay &ray) const
{
    const ZYLMathPoint &g = d->position.GetOrigin();
    const double grab = grabRatio * d->size;
    int best = 0;
    double bestDepth = std::numeric_limits<double>::infinity();
    for (int k = 0; k < 3; ++k) {
        const ZYLMathVector &a = d->position.GetDirection(k);
        if (d->interactions & translations[k]) {
            // Nearest point of the arrow's shaft to the ray, then its distance to the ray.
            const std::optional<double> s = parameterOnAxis(g, a, ray);
            const double clamped = std::clamp(s.value_or(0.0), arrowStartRatio * d->size, d->size);
            const ZYLMathPoint p = g + a * clamped;
            const double t = ray.GetParameterOf(p);
            if (t >= 0.0 && ray.GetDistanceTo(p) <= std::max(ray.GetRadiusAt(t), grab) && t < bestDepth) {
                best = translations[k];
                bestDepth = t;
            }
        }
        if (d->interactions & rotations[k]) {
            const std::optional<double> t = depthOnPlane(g, a, ray);
            if (t) {
                const double off = std::abs((ray.GetPointAt(*t) - g).GetLength() - ringRatio * d->size);
                if (off <= std::max(ray.GetRadiusAt(*t), grab) && *t < bestDepth) {
                    best = rotations[k];
                    bestDepth = *t;
                }
            }
        }
    }
    return best;
}

bool ZYLVisGizmo::BeginDrag(const ZYLVisPickRay &ray)
{
    d->handle = 0;
    if (!d->shown)
        return false;
    const int handle = PickHandle(ray);
    if (!handle)
        return false;
    const ZYLMathPoint &g = d->position.GetOrigin();
    for (int k = 0; k < 3; ++k) {
        const ZYLMathVector &a = d->position.GetDirection(k);
        if (handle == translations[k]) {
            const std::optional<double> s = parameterOnAxis(g, a, ray);
            if (!s)
                return false;
            d->startParameter = *s;
        } else if (handle == rotations[k]) {
            const std::optional<double> t = depthOnPlane(g, a, ray);
            if (!t)
                return false;
            d->startVector = ray.GetPointAt(*t) - g;
        }
    }
    d->handle = handle;
    d->start = d->position;
    return true;
}

bool ZYLVisGizmo::Drag(const ZYLVisPickRay &ray)
{
    if (!d->handle)
        return false;
    const ZYLMathPoint &g = d->start.GetOrigin();
    for (int k = 0; k < 3; ++k) {
        const ZYLMathVector &a = d->start.GetDirection(k);
        if (d->handle == translations[k]) {
            const std::optional<double> s = parameterOnAxis(g, a, ray);
            if (!s)
                return false;
            return SetPositionAndNotify(d->start.Translated(a * (*s - d->startParameter)));
        }
        if (d->handle == rotations[k]) {
            const std::optional<double> t = depthOnPlane(g, a, ray);
            if (!t)
                return false;
            const ZYLMathVector v = ray.GetPointAt(*t) - g;
            if (v.IsZero() || d->startVector.IsZero())
                return false;
            // Signed angle from the grabbed direction to the current one, about the axis.
            const double angle = std::atan2(a.Dot(d->startVector.Cross(v)), d->startVector.Dot(v));
            return SetPositionAndNotify(d->start.Rotated(g, a, angle));
        }
    }
    return false;
}

bool ZYLVisGizmo::SetPositionAndNotify(const ZYLMathAxis &position)
{
    if (position == d->position)
        return false;
    d->position = position;
    d->Notify();
    emit PositionChanged(position);
    return true;
}

void ZYLVisGizmo::EndDrag()
{
    d->handle = 0;
}

bool ZYLVisGizmo::IsDragging() const
{
    return d->handle != 0;
}

int ZYLVisGizmo::GetDraggedHandle() const
{
    return d->handle;
}
