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
