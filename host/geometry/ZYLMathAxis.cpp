// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLMathAxis.h"

#include <QDataStream>
#include <QDebug>

namespace {
// Directions closer to parallel than this (sine of the angle) do not define a plane.
constexpr double parallelTolerance = 1e-12;
}

ZYLMathVector ZYLMathRotate(const ZYLMathVector &v, const ZYLMathVector &axis, double angle)
{
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return v * c + axis.Cross(v) * s + axis * (axis.Dot(v) * (1.0 - c));
}

ZYLMathAxis::ZYLMathAxis(const ZYLMathPoint &origin, const ZYLMathVector &first, const ZYLMathVector &second)
    : m_origin(origin)
{
    SetDirections(first, second);
}

std::optional<ZYLMathAxis> ZYLMathAxis::Create(const ZYLMathPoint &origin, const ZYLMathVector &first,
                                               const ZYLMathVector &second)
{
    ZYLMathAxis axis;
    axis.m_origin = origin;
    if (!axis.SetDirections(first, second))
        return std::nullopt;
    return axis;
}

std::optional<ZYLMathAxis> ZYLMathAxis::FromThirdAndFirst(const ZYLMathPoint &origin, const ZYLMathVector &third,
                                                          const ZYLMathVector &firstHint)
{
    const std::optional<ZYLMathVector> z = third.Normalized();
    // A hint along the third direction projects to rounding noise, which would otherwise
    // normalise into an arbitrary first direction.
    if (!z || !(z->Cross(firstHint).GetLength() > parallelTolerance * firstHint.GetLength()))
        return std::nullopt;
    return Create(origin, firstHint - *z * firstHint.Dot(*z), z->Cross(firstHint));
}

bool ZYLMathAxis::SetDirections(const ZYLMathVector &first, const ZYLMathVector &second)
{
    const std::optional<ZYLMathVector> x = first.Normalized();
    if (!x)
        return false;
    const std::optional<ZYLMathVector> y = (second - *x * second.Dot(*x)).Normalized();
    if (!y || x->Cross(*y).GetLength() < parallelTolerance || second.Cross(*x).GetLength() < parallelTolerance * second.GetLength())
        return false;
    m_first = *x;
    m_second = *y;
    m_third = x->Cross(*y);
    return true;
}

ZYLMathPoint ZYLMathAxis::ToGlobal(const ZYLMathPoint &local) const
{
    return m_origin + ToGlobal(local.ToVector());
}

ZYLMathVector ZYLMathAxis::ToGlobal(const ZYLMathVector &local) const
{
    return m_first * local.X() + m_second * local.Y() + m_third * local.Z();
}

ZYLMathAxis ZYLMathAxis::ToGlobal(const ZYLMathAxis &local) const
{
    ZYLMathAxis global;
    global.m_origin = ToGlobal(local.m_origin);
    global.m_first = ToGlobal(local.m_first);
    global.m_second = ToGlobal(local.m_second);
    global.m_third = ToGlobal(local.m_third);
    return global;
}

ZYLMathPoint ZYLMathAxis::ToLocal(const ZYLMathPoint &global) const
{
    const ZYLMathVector v = ToLocal(global - m_origin);
    return {v.X(), v.Y(), v.Z()};
}

ZYLMathVector ZYLMathAxis::ToLocal(const ZYLMathVector &global) const
{
    return {global.Dot(m_first), global.Dot(m_second), global.Dot(m_third)};
}

ZYLMathAxis ZYLMathAxis::ToLocal(const ZYLMathAxis &global) const
{
    ZYLMathAxis local;
    local.m_origin = ToLocal(global.m_origin);
    local.m_first = ToLocal(global.m_first);
    local.m_second = ToLocal(global.m_second);
    local.m_third = ToLocal(global.m_third);
    return local;
}

ZYLMathAxis ZYLMathAxis::Inverse() const
{
    return ToLocal(ZYLMathAxis());
}

ZYLMathAxis ZYLMathAxis::Rotated(const ZYLMathPoint &center, const ZYLMathVector &axis, double angle) const
{
    const std::optional<ZYLMathVector> u = axis.Normalized();
    if (!u)
        return *this;
    ZYLMathAxis r;
    r.m_origin = center + ZYLMathRotate(m_origin - center, *u, angle);
    r.m_first = ZYLMathRotate(m_first, *u, angle);
    r.m_second = ZYLMathRotate(m_second, *u, angle);
    r.m_third = ZYLMathRotate(m_third, *u, angle);
    return r;
}

ZYLMathAxis ZYLMathAxis::Translated(const ZYLMathVector &v) const
{
    ZYLMathAxis t = *this;
    t.m_origin += v;
    return t;
}

bool ZYLMathAxis::IsEqual(const ZYLMathAxis &other, double distanceTolerance, double directionTolerance) const
{
    const double dd = directionTolerance * directionTolerance;
    return m_origin.GetSquaredDistanceTo(other.m_origin) <= distanceTolerance * distanceTolerance
           && (m_first - other.m_first).GetSquaredLength() <= dd
           && (m_second - other.m_second).GetSquaredLength() <= dd
           && (m_third - other.m_third).GetSquaredLength() <= dd;
}

QDebug operator<<(QDebug debug, const ZYLMathVector &v)
{
    QDebugStateSaver saver(debug);
    debug.nospace() << "ZYLMathVector(" << v.X() << ", " << v.Y() << ", " << v.Z() << ')';
    return debug;
}

QDebug operator<<(QDebug debug, const ZYLMathPoint &p)
{
    QDebugStateSaver saver(debug);
    debug.nospace() << "ZYLMathPoint(" << p.X() << ", " << p.Y() << ", " << p.Z() << ')';
    return debug;
}

QDebug operator<<(QDebug debug, const ZYLMathAxis &a)
{
    QDebugStateSaver saver(debug);
    debug.nospace() << "ZYLMathAxis(origin " << a.GetOrigin() << ", first " << a.GetFirstDirection() << ", second "
                    << a.GetSecondDirection() << ", third " << a.GetThirdDirection() << ')';
    return debug;
}

QDataStream &operator<<(QDataStream &out, const ZYLMathVector &v)
{
    return out << v.X() << v.Y() << v.Z();
}

QDataStream &operator>>(QDataStream &in, ZYLMathVector &v)
{
    double x = 0, y = 0, z = 0;
    in >> x >> y >> z;
    // A short or corrupt stream leaves the value as it was.
    if (in.status() == QDataStream::Ok)
        v = {x, y, z};
    return in;
}

QDataStream &operator<<(QDataStream &out, const ZYLMathPoint &p)
{
    return out << p.X() << p.Y() << p.Z();
}

QDataStream &operator>>(QDataStream &in, ZYLMathPoint &p)
{
    double x = 0, y = 0, z = 0;
    in >> x >> y >> z;
    // A short or corrupt stream leaves the value as it was.
    if (in.status() == QDataStream::Ok)
        p = {x, y, z};
    return in;
}

QDataStream &operator<<(QDataStream &out, const ZYLMathAxis &a)
{
    return out << a.GetOrigin() << a.GetFirstDirection() << a.GetSecondDirection() << a.GetThirdDirection();
}

QDataStream &operator>>(QDataStream &in, ZYLMathAxis &a)
{
    ZYLMathAxis read;
    in >> read.m_origin >> read.m_first >> read.m_second >> read.m_third;
    // Keep the directions bit for bit, but a corrupt stream must not produce a skewed frame:
    // keep the old frame and flag the stream.
    constexpr double tolerance = 1e-9;
    const auto unit = [](const ZYLMathVector &v) { return std::abs(v.GetSquaredLength() - 1.0) <= tolerance; };
    const bool orthonormal = unit(read.m_first) && unit(read.m_second) && unit(read.m_third)
                             && std::abs(read.m_first.Dot(read.m_second)) <= tolerance
                             && (read.m_first.Cross(read.m_second) - read.m_third).GetSquaredLength() <= tolerance
                             && read.m_origin.IsFinite();
    if (orthonormal && in.status() == QDataStream::Ok)
        a = read;
    else
        in.setStatus(QDataStream::ReadCorruptData);
    return in;
}
