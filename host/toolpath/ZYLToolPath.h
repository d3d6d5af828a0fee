// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

/// ZYLToolPath: the tool path model of automated fibre placement.
///
/// Object graph
/// ------------
/// `ZYLTPProgram` (counted reference, `QPointer`-guardable) owns its procedures
/// (`ZYLTPRollLayupProcedure`, `ZYLTPInspectionProcedure`), its machine resources
/// (`ZYLTPMachineHead`, `ZYLTPTool`/`ZYLTPRoller`) and references the ply surface and
/// boundaries. A roll layup procedure owns its courses (stored list plus laying order), its
/// links (`ZYLTPProcedureLink`, `ZYLTPLinearCourseLink`, `ZYLTPSafetyPlaneCourseLink`,
/// `ZYLTPCustomCourseLink`) and its machine configurations. A course (`ZYLTPTowCourse`) owns
/// its trajectories (approach, roll-in, tow trajectories, roll-out, retract), its break
/// ranges and its point data. Every class is a `QObject` told apart by `qobject_cast`.
///
/// Memory layout
/// -------------
/// Point data live in parallel arrays per course (`ZYLTPCoursePoints`: tips, normals, laying
/// directions, arc lengths; about 80 bytes per point). Point objects (`ZYLTPOnPartPoint`,
/// `ZYLTPTowPoint`) are views created on first request and cached with the arrays; with
/// every view created a program takes about 270 bytes per laying point.
///
/// Editing and undo
/// ----------------
/// Every edit records its changes through `ZYLFeatRecorder` inside the open transaction, so
/// undo, redo and rollback restore values and object identity exactly: owning lists are
/// `std::vector<std::unique_ptr<...>>` edited only through the recorder, and removed objects
/// live on in the history. Setters check their ranges first and throw
/// `ZYLSysOutOfBoundsException` without changing anything.
///
/// Derived geometry
/// ----------------
/// Approach and retract motion and link motion are computed from stored parameters and the
/// courses' end frames, cached, and recomputed when `ZYLTPModelRevision` has moved on: every
/// recorded edit bumps it (on apply and on undo). Lengths, times and material are computed
/// on request, never stored. Units: mm, rad, N, s, mm/min.
///
/// Construction
/// ------------
/// `ZYLTPProgramBuilder` makes whole programs without a transaction, validating as it goes.

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPBreakRange.h"
#include "ZYLTPCourse.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPCoursePoints.h"
#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPInspectionProcedure.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPOffPartPoint.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPOnPartTrajectory.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPProgram.h"
#include "ZYLTPProgramBuilder.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPRoller.h"
#include "ZYLTPSafetyPlaneCourseLink.h"
#include "ZYLTPTowCourse.h"
#include "ZYLTPTowPoint.h"
#include "ZYLTPTowTrajectory.h"
