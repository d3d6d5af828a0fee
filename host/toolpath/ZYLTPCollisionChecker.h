// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLMathAxis.h"
#include "ZYLMathPoint.h"

#include <QCoreApplication>
#include <QList>

#include <memory>
#include <utility>

class ZYLGeoSurface;

/// Checks machine collision points against a part surface, keeping the query state between
/// checks so that runs of neighbouring tool frames (the points of a course, the tilts tried
/// for one point) are cheap. Internal to the tool path library: `ZYLTPOnPartPoint::
/// DetectCollision` and `ZYLTPCourse::AvoidCollisions` are built on it.
///
/// Model. Each collision point is a sphere: a centre in the tool frame and a radius (mm). Its
/// clearance is the distance of its centre from the surface on the working side, minus the
/// radius. The working side is the side the surface normal points to when `direction` is
/// true, the other side otherwise. The distance comes from the exact closest point of the
/// surface and its normal there: a centre whose foot lies inside the surface and that lies
/// behind it (against the working side) has a negative distance, so penetration always gives
/// a clearance below minus the radius. A centre whose foot lies on the border of the surface
/// is beside the part, not behind it, and counts with its plain distance. The tool collides
/// at a tolerance when some sphere's clearance is below the tolerance.
///
/// Speed. Every sphere keeps the foot of its last query as the start of the next (a warm
/// start), and a bound avoids most queries of spheres well clear of the part: a sphere whose
/// last query found it in front of the surface at a distance D (foot inside the surface) is
/// clear while its centre stays within D minus radius minus tolerance of that query's
/// centre, since the distance to a surface changes no faster than the point moves and the
/// centre cannot reach the back of the part without crossing it. No bound is taken from the
/// surface's bounding box: a centre outside the box may still lie behind the part (under a
/// plate, for one), and the box cannot tell. The bound and warm starts change only the time
/// a check takes, never its answer.
///
/// Checkers made with `WarmStart::Thread` take up the query state (feet and bounds) that an
/// earlier such checker of the calling thread left for the same surface, side and spheres,
/// and leave theirs when destroyed, so that a caller checking one point at a time (as the
/// editing module does) gets warm starts and skipped queries too. The state is taken only
/// when the surface still has the domain and the point at its centre it had when the state
/// was made, so that a new surface made at the address of a deleted one does not inherit
/// bounds that belong to another shape.
///
/// Tool frames of trial tilts come from `ZYLTPCourse::TiltFrame`, as the course's own do.
class ZYLTOOLPATH_NO_EXPORT ZYLTPCollisionChecker {
    Q_DECLARE_TR_FUNCTIONS(ZYLTPCollisionChecker)
public:
    using Spheres = QList<std::pair<ZYLMathPoint, double>>;
    enum class WarmStart { Own, Thread };

    /// Prepares checks of `spheres` against `surface`. Throws `ZYLSysException` for a null
    /// surface and for a sphere whose centre is not finite or whose radius is negative or not
    /// finite.
    ZYLTPCollisionChecker(const ZYLGeoSurface *surface, bool direction, const Spheres &spheres,
                          WarmStart warmStart = WarmStart::Own);
    ~ZYLTPCollisionChecker();
    ZYLTPCollisionChecker(const ZYLTPCollisionChecker &) = delete;
    ZYLTPCollisionChecker &operator=(const ZYLTPCollisionChecker &) = delete;

    /// Throws `ZYLSysOutOfBoundsException` for a tolerance (or distance) that is negative or
    /// not finite.
    static void CheckTolerance(double tolerance);

    int GetNumSpheres() const;
    /// Returns whether the tool placed at `toolFrame` collides at `tolerance`; `sphere`, when
    /// given, receives the index of a colliding sphere (-1 when none). Spheres found
    /// colliding before are checked first.
    bool Collides(const ZYLMathAxis &toolFrame, double tolerance, int *sphere = nullptr);
    /// Returns the smallest clearance of all spheres at `toolFrame` (mm; +∞ without spheres).
    double GetClearance(const ZYLMathAxis &toolFrame);

private:
    struct Data;
    std::unique_ptr<Data> d;
};
