// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatureExport.h"

#include "ZYLVisOptions.h"

/// How a feature environment draws geometry bodies: which parts are visible
/// (`ZYLVisRepFactory::VisibleGeometry` flags) and the display options of points, curves and
/// surfaces, in the argument order of `ZYLVisRepFactory::CreateRep`. A plain value type.
///
/// The defaults suit a CAM part: shaded grey surfaces and dark curves 2 px wide are
/// visible; loose points (construction points) are hidden, dark blue when shown.
class ZYLFEATURE_EXPORT ZYLFeatVisualizationConfig {
public:
    ZYLFeatVisualizationConfig();

    /// Returns the visible parts, a combination of `ZYLVisRepFactory::VisibleGeometry`.
    int GetVisibleGeometry() const { return m_visibleGeometry; }
    /// Sets the visible parts; throws `ZYLSysException` for bits outside
    /// `ZYLVisRepFactory::VisibleAll`, keeping the old value.
    void SetVisibleGeometry(int flags);

    const ZYLVisOptions &GetPointOptions() const { return m_pointOptions; }
    void SetPointOptions(const ZYLVisOptions &options) { m_pointOptions = options; }
    const ZYLVisOptions &GetCurveOptions() const { return m_curveOptions; }
    void SetCurveOptions(const ZYLVisOptions &options) { m_curveOptions = options; }
    const ZYLVisOptions &GetSurfaceOptions() const { return m_surfaceOptions; }
    void SetSurfaceOptions(const ZYLVisOptions &options) { m_surfaceOptions = options; }

    bool operator==(const ZYLFeatVisualizationConfig &other) const;
    bool operator!=(const ZYLFeatVisualizationConfig &other) const { return !(*this == other); }

private:
    int m_visibleGeometry;
    ZYLVisOptions m_pointOptions;
    ZYLVisOptions m_curveOptions;
    ZYLVisOptions m_surfaceOptions;
};
