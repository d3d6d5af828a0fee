// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLMathAxis.h"

#include <QCoreApplication>

#include <optional>
#include <vector>

class ZYLTPCollisionChecker;
class ZYLTPCourse;

/// Plans how `ZYLTPCourse::AvoidCollisions` tilts the tool over a range of a course's
/// points so that no collision point comes closer to the part than a distance. Internal to
/// the tool path library; it reads the course and changes nothing.
///
/// Method:
/// 1. Search. For each point of the range that collides at the distance, the smallest tilt
///    change that clears it: rays in the plane of (forward tilt, side tilt) changes,
///    `SearchDirections` of them evenly spaced and tried from the direction in which the
///    clearance grows fastest (the gradient, by central differences), are marched in steps
///    of `SearchStep` radians up to the best change found so far; the first clearing step
///    is refined by bisection, and the best direction by halving the angle between rays.
///    Tilts stay within the model's limits (±1.55 rad). The tilt found is rounded, away
///    from the point's tilt, to a multiple of `TiltQuantum`, so that neighbouring points
///    often share values and the course keeps few trajectories (unrounded when rounding
///    would not clear). A point that no tilt within the limits clears is left to the next
///    steps and reported.
/// 2. Smoothing. Each cleared point pins its new tilt in each of the two angles it changes.
///    Every point of the range then takes, per angle, the value nearest to its own tilt
///    that stays within `MaxTiltRate` × (distance along the course) of every pinned value:
///    tilts ramp in and out at no more than `MaxTiltRate` radians per millimetre, points far
///    from a correction keep their tilts, and a pinned point only moves further the way its
///    correction went. Nothing outside the range is read as pinned or changed, so the tilt
///    may step at the range's ends.
/// 3. Verification. Points that collide after smoothing (a ramp or a neighbour's pin can
///    move a point) are searched again from their smoothed tilt and pinned; steps 2 and 3
///    repeat until no point changes (at most `MaxRounds` times). Points still colliding are
///    listed in the plan as not cleared.
class ZYLTOOLPATH_NO_EXPORT ZYLTPCollisionAvoider {
public:
    /// Largest change of a corrected tilt per millimetre of course length (rad/mm): about
    /// 0.29° per mm, so a correction of 0.2 rad ramps in over 40 mm.
    static constexpr double MaxTiltRate = 0.005;
    /// Corrected tilts are multiples of this (rad), about 0.06°.
    static constexpr double TiltQuantum = 0.001;
    /// Step of the search along each direction of tilt change (rad).
    static constexpr double SearchStep = 0.01;
    static constexpr int SearchDirections = 32;
    static constexpr int MaxRounds = 8;
    /// The search clears points by this much more than the distance asked for (mm), so that
    /// the solver's rounding cannot put a corrected point back at the limit.
    static constexpr double Margin = 1e-4;

    struct Tilt {
        double forward = 0.0;
        double side = 0.0;
        bool operator==(const Tilt &) const = default;
    };
    /// Tilts for the points [start, end) of the course, in point order, and the indexes (in
    /// the course) of the points that still collide with them.
    struct Plan {
        int start = 0;
        std::vector<Tilt> tilts;
        std::vector<int> uncleared;
    };

    /// Plans with `checker` (set up for the surface, side and collision points) and the
    /// clearing distance (mm, >= 0).
    ZYLTPCollisionAvoider(const ZYLTPCourse &course, ZYLTPCollisionChecker &checker, double distance);

    /// Returns the plan for the points [start, end), valid indexes of the course.
    Plan MakePlan(int start, int end);

private:
    bool IsClear(const ZYLMathAxis &untilted, const Tilt &tilt, double distance);
    double GetClearance(const ZYLMathAxis &untilted, const Tilt &tilt);
    std::optional<Tilt> FindClearingTilt(const ZYLMathAxis &untilted, const Tilt &from);
    double FindClearingChange(const ZYLMathAxis &untilted, const Tilt &from, double angle, double limit);
    Tilt Round(const ZYLMathAxis &untilted, const Tilt &from, const Tilt &found);
    void Smooth(const std::vector<Tilt> &original, const std::vector<std::optional<Tilt>> &pins,
                const std::vector<double> &lengths, std::vector<Tilt> *result) const;

    const ZYLTPCourse &m_course;
    ZYLTPCollisionChecker &m_checker;
    double m_distance;
};
