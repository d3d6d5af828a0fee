// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisualizationExport.h"

#include "ZYLMathAxis.h"

/// The ray under the mouse cursor with its pick tolerance: an origin, a unit direction and a
/// pick radius that grows along the ray, radius(t) = radius + radiusSlope · t at distance t
/// from the origin. An orthographic view passes a slope of 0 (a cylinder); a perspective view
/// passes its eye as origin and the size of a few pixels per unit of depth as slope (a cone).
class ZYLVISUALIZATION_EXPORT ZYLVisPickRay {
public:
    /// The ray from the world origin along +z with no tolerance.
    ZYLVisPickRay() = default;
    /// Normalises the direction. Throws ZYLSysException for a zero or non-finite direction, a
    /// non-finite origin, or a negative or non-finite radius or slope.
    ZYLVisPickRay(const ZYLMathPoint &origin, const ZYLMathVector &direction, double radius = 0.0,
                  double radiusSlope = 0.0);

    const ZYLMathPoint &GetOrigin() const { return m_origin; }
    const ZYLMathVector &GetDirection() const { return m_direction; }
    double GetRadius() const { return m_radius; }
    double GetRadiusSlope() const { return m_slope; }

    /// Returns the pick radius at distance t along the ray (t < 0 counts as 0).
    double GetRadiusAt(double t) const { return m_radius + m_slope * (t > 0.0 ? t : 0.0); }
    ZYLMathPoint GetPointAt(double t) const { return m_origin + m_direction * t; }
    /// Returns the distance along the ray of the foot of p (negative behind the origin).
    double GetParameterOf(const ZYLMathPoint &p) const { return (p - m_origin).Dot(m_direction); }
    /// Returns the distance from p to the line of the ray.
    double GetDistanceTo(const ZYLMathPoint &p) const;

    /// Returns this ray in the local coordinates of a frame. Frames are rigid, so distances
    /// along the ray and the radius are unchanged.
    ZYLVisPickRay ToLocal(const ZYLMathAxis &frame) const;

private:
    ZYLMathPoint m_origin;
    ZYLMathVector m_direction{0.0, 0.0, 1.0};
    double m_radius = 0.0;
    double m_slope = 0.0;
};
