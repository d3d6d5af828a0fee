// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLMathPoint.h"
#include "ZYLMathVector.h"

#include <memory>
#include <vector>

class ZYLTPOnPartPoint;

/// The point data of a course, as parallel arrays (one entry per point of the course's point
/// list, roll-in point first and roll-out point last), with the cache of point views.
///
/// - `tips`: tool tip points (mm);
/// - `normals`: unit surface normals, the untilted tool axis;
/// - `directions`: unit laying directions, orthogonal to the normals;
/// - `arcLengths`: arc length of each point measured from the first tow point (index 1), so
///   entry 0 and entry 1 are 0 and the last entry (roll-out point) is the last tow point's
///   value plus the roll-out distance. The length from the roll-in point is the roll-in
///   distance plus this value (0 for the roll-in point itself).
///
/// A course replaces its whole point data (with its views) in one recorded change when the
/// points change as a whole (reversing, breaking), so that undo gives back the same views.
/// About 80 bytes per point, plus 8 once any view is requested, plus the views themselves.
struct ZYLTOOLPATH_EXPORT ZYLTPCoursePoints {
    ZYLTPCoursePoints();
    ~ZYLTPCoursePoints();
    ZYLTPCoursePoints(const ZYLTPCoursePoints &) = delete;
    ZYLTPCoursePoints &operator=(const ZYLTPCoursePoints &) = delete;

    std::vector<ZYLMathPoint> tips;
    std::vector<ZYLMathVector> normals;
    std::vector<ZYLMathVector> directions;
    std::vector<double> arcLengths;
    /// Views created on request, index by index; empty until the first request.
    std::vector<std::unique_ptr<ZYLTPOnPartPoint>> views;

    int GetNumPoints() const { return int(tips.size()); }
    /// Fills `arcLengths` from the tips for a roll-out distance.
    void ComputeArcLengths(double rollOut);
};
