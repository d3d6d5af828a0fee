// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLSysOutOfBoundsException.h"
#include "ZYLSysValue.h"

#include <cmath>
#include <limits>
#include <numbers>

// Range checks shared by the setters and the builder of the tool path model: each throws
// ZYLSysOutOfBoundsException, with the magnitude so that the message shows units, before
// anything is changed. Not part of the public interface.
namespace ZYLTPCheck {

inline constexpr double Infinity = std::numeric_limits<double>::infinity();
/// Largest tilt the model accepts, radians.
inline constexpr double MaxTilt = 1.55;

inline void Range(double value, double minimum, double maximum, bool includeMinimum, bool includeMaximum,
                  ZYLSysValue::Magnitude magnitude)
{
    const bool aboveMin = includeMinimum ? value >= minimum : value > minimum;
    const bool belowMax = includeMaximum ? value <= maximum : value < maximum;
    if (!std::isfinite(value) || !aboveMin || !belowMax)
        throw ZYLSysOutOfBoundsException(value, minimum, maximum, includeMinimum, includeMaximum, magnitude);
}
/// Feed rates: (0, ∞) mm/min.
inline void FeedRate(double v) { Range(v, 0.0, Infinity, false, false, ZYLSysValue::FeedRate); }
/// Lengths and distances: [0, ∞) mm.
inline void Length(double v) { Range(v, 0.0, Infinity, true, false, ZYLSysValue::Length); }
/// Tilts: [-1.55, 1.55] rad.
inline void Tilt(double v) { Range(v, -MaxTilt, MaxTilt, true, true, ZYLSysValue::Angle); }
/// Approach and retract angles: (0, pi/2] rad.
inline void ApproachAngle(double v) { Range(v, 0.0, std::numbers::pi / 2, false, true, ZYLSysValue::Angle); }
/// Forces: [0, ∞) N.
inline void Force(double v) { Range(v, 0.0, Infinity, true, false, ZYLSysValue::Force); }
/// Fractions: [0, 1].
inline void Fraction(double v) { Range(v, 0.0, 1.0, true, true, ZYLSysValue::None); }

} // namespace ZYLTPCheck
