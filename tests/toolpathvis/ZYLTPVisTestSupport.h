// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

// Readers of a built representation for the display tests: its primitives by the display
// options they were built with, and plain geometry checks.

#include "ZYLVisOptions.h"
#include "ZYLVisPrimitive.h"
#include "ZYLVisRep.h"

#include <QList>

#include <cmath>

inline bool ZYLTPVisNear(const ZYLMathPoint &a, const ZYLMathPoint &b, double tolerance = 1e-9)
{
    return a.GetDistanceTo(b) <= tolerance;
}

inline bool ZYLTPVisNear(double a, double b, double tolerance = 1e-9)
{
    return std::fabs(a - b) <= tolerance;
}

#include "ZYLTPVisualizationOptions.h"

/// Returns options whose elements all have different colours, so that a test can find the
/// primitives of each element by their display options.
inline ZYLTPVisualizationOptions ZYLTPVisDistinctOptions()
{
    ZYLTPVisualizationOptions options;
    for (int element = 0; element < ZYLTPVisualizationOptions::NumGraphicElements; ++element) {
        ZYLVisOptions attributes = options.GetGraphicAttributes(ZYLTPVisualizationOptions::GraphicElement(element));
        attributes.SetColor(QColor::fromHsv(element * 359 / ZYLTPVisualizationOptions::NumGraphicElements, 255, 255));
        options.SetGraphicAttributes(ZYLTPVisualizationOptions::GraphicElement(element), attributes);
    }
    return options;
}

/// Returns `options` with every drawing switch and mode off.
inline ZYLTPVisualizationOptions ZYLTPVisNothingDrawn(ZYLTPVisualizationOptions options)
{
    using O = ZYLTPVisualizationOptions;
    options.SetApproachRetractEnabled(false);
    options.SetRollInOutEnabled(false);
    options.SetTipPointEnabled(false);
    options.SetLayingTrajectoryEnabled(false);
    options.SetLinkingTrajectoriesEnabled(false);
    options.SetLinkingPointsEnabled(false);
    options.SetLayingVectorsToDisplay(O::NoVectors);
    options.SetLinkingVectorsToDisplay(O::NoVectors);
    options.SetLinkEndPointsVectorsToDisplay(O::NoVectors);
    options.SetTowHeadProfileDisplay(O::NoHeadProfiles);
    options.SetTowEdgeDisplay(O::NoTowEdges);
    options.SetShortTowDisplay(O::NoTowFill);
    return options;
}
