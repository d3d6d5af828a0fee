// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLMathPoint.h"

/// A right-handed orthonormal frame: an origin and three unit directions. The default frame
/// is the world frame. Local coordinates (a, b, c) of the frame denote the global point
/// origin + a·first + b·second + c·third.
///
/// In a tool frame of the tool path model the first direction is the laying direction, the
/// second the side direction and the third the tool axis.
class ZYLGEOMETRY_EXPORT ZYLMathAxis {
public:
    ZYLMathAxis() = default;
    /// Builds the frame from an origin, a first direction and a direction in the plane of the
    /// first and second ones; the second is made orthogonal to the first and the third is their
    /// cross product. Use `Create` to learn whether the directions were usable; this
    /// constructor falls back to the world directions for degenerate input.
    ZYLMathAxis(const ZYLMathPoint &origin, const ZYLMathVector &first, const ZYLMathVector &second);

    /// Returns the frame of `ZYLMathAxis(origin, first, second)`, or no value when first is zero
    /// or parallel to second.
    static std::optional<ZYLMathAxis> Create(const ZYLMathPoint &origin, const ZYLMathVector &first,
                                             const ZYLMathVector &second);
    /// Returns the frame whose third direction is `third` and whose first direction is the
    /// projection of `firstHint` onto the plane normal to it; no value when they are parallel.
    static std::optional<ZYLMathAxis> FromThirdAndFirst(const ZYLMathPoint &origin, const ZYLMathVector &third,
                                                        const ZYLMathVector &firstHint);

    const ZYLMathPoint &GetOrigin() const { return m_origin; }
    void SetOrigin(const ZYLMathPoint &origin) { m_origin = origin; }
    const ZYLMathVector &GetFirstDirection() const { return m_first; }
    const ZYLMathVector &GetSecondDirection() const { return m_second; }
    const ZYLMathVector &GetThirdDirection() const { return m_third; }
    /// Returns direction i (0 first, 1 second, 2 third).
    const ZYLMathVector &GetDirection(int i) const { return i == 0 ? m_first : (i == 1 ? m_second : m_third); }
    /// Sets the directions as the constructor does. Returns false, leaving the frame unchanged,
    /// when first is zero or parallel to second.
    bool SetDirections(const ZYLMathVector &first, const ZYLMathVector &second);

    /// Maps local coordinates of this frame to global ones.
    ZYLMathPoint ToGlobal(const ZYLMathPoint &local) const;
    ZYLMathVector ToGlobal(const ZYLMathVector &local) const;
    /// Expresses a frame given in this frame's coordinates in global coordinates.
    ZYLMathAxis ToGlobal(const ZYLMathAxis &local) const;
    /// Maps global coordinates to local coordinates of this frame.
    ZYLMathPoint ToLocal(const ZYLMathPoint &global) const;
    ZYLMathVector ToLocal(const ZYLMathVector &global) const;
    ZYLMathAxis ToLocal(const ZYLMathAxis &global) const;
    /// Returns the frame that maps global coordinates to this frame's local ones, so that
    /// `Inverse().ToGlobal(p) == ToLocal(p)`. A frame is a rigid transform: `ToGlobal(other)`
    /// composes two of them.
    ZYLMathAxis Inverse() const;

    /// Returns the frame turned by `angle` radians about `axis` through `center` (right hand);
    /// the frame itself for a zero axis.
    ZYLMathAxis Rotated(const ZYLMathPoint &center, const ZYLMathVector &axis, double angle) const;
    /// Returns the frame moved by a vector.
    ZYLMathAxis Translated(const ZYLMathVector &v) const;

    /// Exact comparison of origin and directions.
    bool operator==(const ZYLMathAxis &) const = default;
    /// Comparison within a distance tolerance for the origin and a tolerance on the direction
    /// components.
    bool IsEqual(const ZYLMathAxis &other, double distanceTolerance, double directionTolerance) const;

private:
    friend ZYLGEOMETRY_EXPORT QDataStream &operator>>(QDataStream &in, ZYLMathAxis &a);
    ZYLMathPoint m_origin;
    ZYLMathVector m_first{1.0, 0.0, 0.0};
    ZYLMathVector m_second{0.0, 1.0, 0.0};
    ZYLMathVector m_third{0.0, 0.0, 1.0};
};

/// Returns v turned by `angle` radians about the unit vector `axis` (Rodrigues' formula).
ZYLGEOMETRY_EXPORT ZYLMathVector ZYLMathRotate(const ZYLMathVector &v, const ZYLMathVector &axis, double angle);

ZYLGEOMETRY_EXPORT QDebug operator<<(QDebug debug, const ZYLMathAxis &a);
ZYLGEOMETRY_EXPORT QDataStream &operator<<(QDataStream &out, const ZYLMathAxis &a);
ZYLGEOMETRY_EXPORT QDataStream &operator>>(QDataStream &in, ZYLMathAxis &a);
