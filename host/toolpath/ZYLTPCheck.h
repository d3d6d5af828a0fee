// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLSysOutOfBoundsException.h"
#include "ZYLSysValue.h"

#include "ZYLMathPoint.h"

#include <cmath>
#include <limits>
#include <numbers>

// Range checks shared by the setters and the builder of the tool path model: each throws
// ZYLSysOutOfBoundsException, with the magnitude so that the message shows units, before
// anything is changed. Not part of the public interface.
//
// Values are bounded by what a real program can hold, not only by what is finite: a
// coordinate of 1e300 mm is finite, but squared in a distance or fitted by a camera it is
// not, and nothing downstream should have to guard against it.
namespace ZYLTPCheck {

inline constexpr double Infinity = std::numeric_limits<double>::infinity();
/// Largest tilt the model accepts, radians.
inline constexpr double MaxTilt = 1.55;
/// Largest coordinate, length, distance and radius, mm (1 km: no part or machine comes near).
inline constexpr double MaxLength = 1e6;
/// Largest feed rate, mm/min (a thousand times a fast machine's rapid rate).
inline constexpr double MaxFeedRate = 1e6;
/// Largest force, N.
inline constexpr double MaxForce = 1e6;

inline void Range(double value, double minimum, double maximum, bool includeMinimum, bool includeMaximum,
                  ZYLSysValue::Magnitude magnitude)
{
    const bool aboveMin = includeMinimum ? value >= minimum : value > minimum;
    const bool belowMax = includeMaximum ? value <= maximum : value < maximum;
    if (!std::isfinite(value) || !aboveMin || !belowMax)
        throw ZYLSysOutOfBoundsException(value, minimum, maximum, includeMinimum, includeMaximum, magnitude);
}
/// Feed rates: (0, 1e6] mm/min.
inline void FeedRate(double v) { Range(v, 0.0, MaxFeedRate, false, true, ZYLSysValue::FeedRate); }
/// Lengths, distances and radii: [0, 1e6] mm.
inline void Length(double v) { Range(v, 0.0, MaxLength, true, true, ZYLSysValue::Length); }
/// Sizes that cannot be nothing (a roller's width and diameter): (0, 1e6] mm.
inline void Size(double v) { Range(v, 0.0, MaxLength, false, true, ZYLSysValue::Length); }
/// Coordinates: [-1e6, 1e6] mm.
inline void Coordinate(double v) { Range(v, -MaxLength, MaxLength, true, true, ZYLSysValue::Length); }
/// Points: every coordinate in [-1e6, 1e6] mm.
inline void Point(const ZYLMathPoint &p)
{
    Coordinate(p.X());
    Coordinate(p.Y());
    Coordinate(p.Z());
}
/// Tilts: [-1.55, 1.55] rad.
inline void Tilt(double v) { Range(v, -MaxTilt, MaxTilt, true, true, ZYLSysValue::Angle); }
/// Approach and retract angles: (0, pi/2] rad.
inline void ApproachAngle(double v) { Range(v, 0.0, std::numbers::pi / 2, false, true, ZYLSysValue::Angle); }
/// Forces: [0, 1e6] N.
inline void Force(double v) { Range(v, 0.0, MaxForce, true, true, ZYLSysValue::Force); }
/// Fractions: [0, 1].
inline void Fraction(double v) { Range(v, 0.0, 1.0, true, true, ZYLSysValue::None); }

} // namespace ZYLTPCheck
