// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisOptions.h"

#include "ZYLSysException.h"

#include <cmath>

namespace {
double checkedSize(double value, const char *what)
{
    if (!std::isfinite(value) || value < 0.0)
        throw ZYLSysException(QStringLiteral("Invalid %1: %2 (expected a finite value >= 0).")
                                  .arg(QLatin1String(what))
                                  .arg(value));
    return value;
}
}

ZYLVisOptions::ZYLVisOptions() : m_color(200, 200, 200) {}

void ZYLVisOptions::SetColor(const QColor &color)
{
    if (!color.isValid())
        throw ZYLSysException(QStringLiteral("Invalid colour for display options."));
    m_color = color.toRgb();
    m_color.setAlpha(255);
}

void ZYLVisOptions::SetLineThickness(double thickness)
{
    m_lineThickness = checkedSize(thickness, "line thickness");
}

void ZYLVisOptions::SetPointSize(double size)
{
    m_pointSize = checkedSize(size, "point size");
}

void ZYLVisOptions::SetTransparency(double transparency)
{
    if (!(transparency >= 0.0 && transparency <= 1.0))
        throw ZYLSysException(QStringLiteral("Invalid transparency: %1 (expected a value in [0, 1]).").arg(transparency));
    m_transparency = transparency;
}

bool ZYLVisOptions::operator==(const ZYLVisOptions &other) const
{
    return m_color == other.m_color && m_lineThickness == other.m_lineThickness && m_pointSize == other.m_pointSize
           && m_transparency == other.m_transparency && m_priority == other.m_priority
           && m_depthEnabled == other.m_depthEnabled;
}
