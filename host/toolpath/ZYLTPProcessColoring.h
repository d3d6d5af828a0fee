// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include <QColor>

#include <memory>

class ZYLTPProcessCheck;

/// Colouring of course bands by steering radius. While a check is set (`SetCheck`), course
/// representations built afterwards (`ZYLTPCourseVisRep`) draw the tow band of each course
/// the check has values for in colours by the radius at each point, relative to the check's
/// minimum steering radius: tighter than the limit in red, then from the limit (red) through
/// twice the limit (yellow) to straight (green), in `NumBins - 1` steps; stretches without a
/// radius keep the band's colour. A check whose values no longer fit a course (another
/// number of points after an edit) leaves that course plain until the next check is set.
///
/// Process-wide, like the display settings; set from the GUI thread while no representation
/// is being built, read by the builders (thread safe).
class ZYLTOOLPATH_EXPORT ZYLTPProcessColoring {
public:
    ZYLTPProcessColoring() = delete;

    /// Sets the check whose radii colour the bands; null turns the colouring off.
    static void SetCheck(std::shared_ptr<const ZYLTPProcessCheck> check);
    static std::shared_ptr<const ZYLTPProcessCheck> GetCheck();

    /// Colour bins: 0 below the limit, then 1 (at the limit) to `NumBins - 1` (straight).
    static constexpr int NumBins = 9;
    /// Returns the bin of a signed curvature (1/mm) under `minRadius`, or -1 for NaN (no
    /// radius). Inline: representations ask for every point.
    static int GetBin(float curvature, double minRadius)
    {
        if (curvature != curvature)
            return -1;
        const double ratio = (curvature < 0.0f ? -curvature : curvature) * minRadius;
        if (ratio >= 1.0)
            return 0;
        const int bin = 1 + int((1.0 - ratio) * (NumBins - 1));
        return bin < NumBins ? bin : NumBins - 1;
    }
    /// Returns the colour of a bin.
    static QColor GetBinColor(int bin);
    /// Returns the colour of the ratio limit / |radius| (0 straight, 0.5 at twice the limit,
    /// 1 and above at or below the limit).
    static QColor GetColor(double ratio);
};
