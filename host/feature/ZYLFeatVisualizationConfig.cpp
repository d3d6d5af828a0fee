// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatVisualizationConfig.h"

#include "ZYLSysException.h"
#include "ZYLVisRepFactory.h"

#include <QCoreApplication>

ZYLFeatVisualizationConfig::ZYLFeatVisualizationConfig()
    : m_visibleGeometry(ZYLVisRepFactory::VisibleCurves | ZYLVisRepFactory::VisibleSurfaces)
{
    m_pointOptions.SetColor(QColor(30, 50, 110));
    m_pointOptions.SetPointSize(5.0);
    m_curveOptions.SetColor(QColor(40, 40, 45));
    m_curveOptions.SetLineThickness(2.0);
    m_surfaceOptions.SetColor(QColor(165, 168, 172));
}

void ZYLFeatVisualizationConfig::SetVisibleGeometry(int flags)
{
    if (flags & ~int(ZYLVisRepFactory::VisibleAll))
        throw ZYLSysException(QCoreApplication::translate("ZYLFeatVisualizationConfig",
                                                          "Invalid visible geometry flags %1 (allowed: 0 to %2).")
                                  .arg(flags)
                                  .arg(int(ZYLVisRepFactory::VisibleAll)));
    m_visibleGeometry = flags;
}

bool ZYLFeatVisualizationConfig::operator==(const ZYLFeatVisualizationConfig &other) const
{
    return m_visibleGeometry == other.m_visibleGeometry && m_pointOptions == other.m_pointOptions
        && m_curveOptions == other.m_curveOptions && m_surfaceOptions == other.m_surfaceOptions;
}
