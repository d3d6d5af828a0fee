// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

// Shared pieces of the collision tests: a flat plate under the small test programs, tilts
// read point by point, the colliding points of a course, and the collision points the host
// hands over for a course (its head's, then its tool's).

#include "ZYLTPTestProgram.h"

#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPOnPartTrajectory.h"
#include "ZYLTPTool.h"

#include "ZYLGeoPlane.h"

#include <QList>
#include <QPair>

using ZYLTPSpheres = QList<std::pair<ZYLMathPoint, double>>;

/// The plane z = 0 (normal +z) over x in [-100, 300] and y in [-60, 60]: course 0 and 1 of a
/// `ZYLTPTestProgram` lie on it, their tool frames upright.
inline ZYLGeoRef<ZYLGeoPlane> ZYLTPTestPlate()
{
    return ZYLGeoPlane::Create(ZYLMathAxis(), {-100.0, 300.0, -60.0, 60.0});
}

/// (forward, side) tilt of every point of the course.
inline QList<QPair<double, double>> ZYLTPTilts(const ZYLTPCourse *course)
{
    QList<QPair<double, double>> tilts;
    for (int i = 0; i < course->GetNumPoints(); ++i) {
        const ZYLTPOnPartTrajectory *t = course->GetPoint(i)->GetOnPartTrajectory();
        tilts.append({t->GetForwardTilt(), t->GetSideTilt()});
    }
    return tilts;
}

/// Indexes of the points of the course that collide.
inline QList<int> ZYLTPCollidingPoints(const ZYLTPCourse *course, const ZYLGeoSurface *surface, bool direction,
                                       double tolerance, const ZYLTPSpheres &spheres)
{
    QList<int> colliding;
    for (int i = 0; i < course->GetNumPoints(); ++i) {
        if (course->GetPoint(i)->DetectCollision(surface, direction, tolerance, spheres))
            colliding.append(i);
    }
    return colliding;
}

inline ZYLTPSpheres ZYLTPCourseSpheres(const ZYLTPCourse *course)
{
    const ZYLTPMachineConfiguration &configuration = course->GetMachineConfiguration();
    ZYLTPSpheres spheres;
    if (configuration.GetHead())
        spheres += configuration.GetHead()->GetCollisionPoints();
    spheres += configuration.GetTool()->GetCollisionPoints();
    return spheres;
}
