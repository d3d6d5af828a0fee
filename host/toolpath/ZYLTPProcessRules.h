// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

/// The process limits a program's plies are checked against (mm), with the defaults of a
/// quarter-inch tow on an unheated tool:
/// - `towWidth`: the width of one tow, (0, 300]; the steering radius is fitted over about
///   this arc length;
/// - `minSteeringRadius`: the smallest radius a tow takes in the plane of the surface
///   without buckling, (0, 1e6];
/// - `minCutLength`: the shortest stretch a cut tow must stay cut before it is added again,
///   [0, 10000] (0 turns the check off);
/// - `minAddLength`: the shortest stretch an added tow must stay fed before it is cut,
///   [0, 10000];
/// - `minCourseLength`: the shortest laid length of a course, [0, 10000].
struct ZYLTOOLPATH_EXPORT ZYLTPProcessRules {
    double towWidth = 6.35;
    double minSteeringRadius = 1350.0;
    double minCutLength = 100.0;
    double minAddLength = 100.0;
    double minCourseLength = 150.0;

    bool operator==(const ZYLTPProcessRules &) const = default;

    /// Upper bounds of the rules (mm).
    static constexpr double MaxTowWidth = 300.0;
    static constexpr double MaxSteeringRadius = 1e6;
    static constexpr double MaxLength = 1e4;

    /// Throws `ZYLSysOutOfBoundsException` (with the length unit in its message) for the first
    /// member out of its range, in the order of the struct.
    static void Check(const ZYLTPProcessRules &rules);
};
