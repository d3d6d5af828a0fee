// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPVisualizationOptions.h"

#include "ZYLSysOutOfBoundsException.h"

#include <cmath>
#include <limits>

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

ZYLVisOptions Attributes(const QColor &color, double lineThickness, double pointSize,
                         int priority = ZYLVisOptions::NormalPriority)
{
    ZYLVisOptions options;
    options.SetColor(color);
    options.SetLineThickness(lineThickness);
    options.SetPointSize(pointSize);
    options.SetPriority(priority);
    return options;
}

void CheckLength(double value, bool zeroAllowed)
{
    const bool valid = std::isfinite(value) && (zeroAllowed ? value >= 0.0 : value > 0.0);
    if (!valid)
        throw ZYLSysOutOfBoundsException(value, 0.0, Infinity, zeroAllowed, false, ZYLSysValue::Length);
}

} // namespace

ZYLTPVisualizationOptions::ZYLTPVisualizationOptions()
{
    // Vectors carry the usual colours of a frame's x, y and z axes, so that a user reads the
    // laying direction, side direction and tool axis the way any other frame is read.
    m_attributes[TipPointElement] = Attributes(QColor(255, 255, 255), 1.0, 4.0);
    m_attributes[ToolAxisElement] = Attributes(QColor(0, 0, 255), 1.0, 5.0);
    m_attributes[TangentVectorElement] = Attributes(QColor(255, 0, 0), 1.0, 5.0);
    m_attributes[RollerAxisElement] = Attributes(QColor(0, 255, 0), 1.0, 5.0);
    m_attributes[CourseBandElement] = Attributes(QColor(150, 180, 215), 1.0, 5.0);
    m_attributes[ShortTowElement] = Attributes(QColor(255, 60, 200), 1.0, 5.0);
    m_attributes[TowEdgeElement] = Attributes(QColor(60, 60, 60), 1.0, 5.0);
    m_attributes[HeadProfileElement] = Attributes(QColor(255, 255, 255), 2.0, 5.0);
    m_attributes[LayingTrajectoryElement] = Attributes(QColor(0, 200, 200), 1.5, 5.0);
    m_attributes[ApproachRetractElement] = Attributes(QColor(255, 170, 60), 1.5, 5.0);
    m_attributes[RollInOutElement] = Attributes(QColor(170, 220, 60), 1.5, 5.0);
    m_attributes[LinkLineElement] = Attributes(QColor(160, 150, 255), 1.5, 5.0);
    m_attributes[LinkingPointElement] = Attributes(QColor(220, 220, 220), 1.0, 4.0);
    m_attributes[BreakRangeElement] =
        Attributes(QColor(255, 230, 0), 5.0, 6.0, ZYLVisOptions::SecondaryHighlightPriority);
}

void ZYLTPVisualizationOptions::SetVectorLength(double length)
{
    CheckLength(length, false);
    m_vectorLength = length;
}

void ZYLTPVisualizationOptions::SetTowWidth(double width)
{
    CheckLength(width, false);
    m_towWidth = width;
}

void ZYLTPVisualizationOptions::SetMinimumTowLength(double length)
{
    CheckLength(length, true);
    m_minimumTowLength = length;
}

int ZYLTPVisualizationOptions::CheckElement(GraphicElement element)
{
    if (element < 0 || element >= NumGraphicElements)
        throw ZYLSysOutOfBoundsException(element, 0, NumGraphicElements - 1);
    return element;
}

const ZYLVisOptions &ZYLTPVisualizationOptions::GetGraphicAttributes(GraphicElement element) const
{
    return m_attributes[size_t(CheckElement(element))];
}

void ZYLTPVisualizationOptions::SetGraphicAttributes(GraphicElement element, const ZYLVisOptions &attributes)
{
    m_attributes[size_t(CheckElement(element))] = attributes;
}

ZYLTPVisualizationOptions::GraphicElement ZYLTPVisualizationOptions::GetVectorElement(VectorsToDisplay vector)
{
    switch (vector) {
    case LayingDirection:
        return TangentVectorElement;
    case SideDirection:
        return RollerAxisElement;
    case ToolAxis:
        return ToolAxisElement;
    default:
        throw ZYLSysOutOfBoundsException(vector, LayingDirection, ToolAxis);
    }
}

bool ZYLTPVisualizationOptions::operator==(const ZYLTPVisualizationOptions &other) const
{
    return m_courseEnabled == other.m_courseEnabled && m_approachRetractEnabled == other.m_approachRetractEnabled
           && m_rollInOutEnabled == other.m_rollInOutEnabled && m_tipPointEnabled == other.m_tipPointEnabled
           && m_layingTrajectoryEnabled == other.m_layingTrajectoryEnabled
           && m_linkingTrajectoriesEnabled == other.m_linkingTrajectoriesEnabled
           && m_linkingPointsEnabled == other.m_linkingPointsEnabled
           && m_breakRangeEnabled == other.m_breakRangeEnabled && m_layingVectors == other.m_layingVectors
           && m_linkingVectors == other.m_linkingVectors && m_linkEndPointsVectors == other.m_linkEndPointsVectors
           && m_headProfiles == other.m_headProfiles && m_towEdges == other.m_towEdges
           && m_shortTows == other.m_shortTows && m_vectorLength == other.m_vectorLength
           && m_towWidth == other.m_towWidth && m_minimumTowLength == other.m_minimumTowLength
           && m_attributes == other.m_attributes;
}
