// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisualizationExport.h"

#include <QColor>

/// Display options of one primitive: colour, line thickness, point size, transparency,
/// drawing priority and whether the depth test applies. A plain value type.
///
/// Priority orders drawing and picking: a primitive of higher priority is drawn over those of
/// lower priority at a similar depth and wins a pick against them (see ZYLVisEnvironment::Pick).
/// 10 is the main highlight, 1 the secondary highlight, 0 ordinary geometry.
///
/// Setters refuse values a renderer cannot use (an invalid colour, a negative or non-finite
/// size, a transparency outside [0, 1]) with a ZYLSysException and keep the old value.
class ZYLVISUALIZATION_EXPORT ZYLVisOptions {
public:
    enum Priority : int { NormalPriority = 0, SecondaryHighlightPriority = 1, MainHighlightPriority = 10 };

    /// Builds options for opaque light grey geometry: lines 1 px wide, points 5 px, priority 0,
    /// depth test on.
    ZYLVisOptions();

    QColor GetColor() const { return m_color; }
    /// Sets the colour; its alpha is ignored (see SetTransparency).
    void SetColor(const QColor &color);

    /// Returns the line width in pixels.
    double GetLineThickness() const { return m_lineThickness; }
    void SetLineThickness(double thickness);

    /// Returns the diameter of drawn points in pixels.
    double GetPointSize() const { return m_pointSize; }
    void SetPointSize(double size);

    int GetPriority() const { return m_priority; }
    void SetPriority(int priority) { m_priority = priority; }

    /// Returns whether the depth test applies; without it the primitive is drawn through
    /// surfaces in front of it.
    bool IsDepthEnabled() const { return m_depthEnabled; }
    void SetDepthEnabled(bool enabled) { m_depthEnabled = enabled; }

    /// Returns the transparency, 0 opaque to 1 invisible.
    double GetTransparency() const { return m_transparency; }
    void SetTransparency(double transparency);

    bool operator==(const ZYLVisOptions &other) const;
    bool operator!=(const ZYLVisOptions &other) const { return !(*this == other); }

private:
    QColor m_color;
    double m_lineThickness = 1.0;
    double m_pointSize = 5.0;
    double m_transparency = 0.0;
    int m_priority = NormalPriority;
    bool m_depthEnabled = true;
};
