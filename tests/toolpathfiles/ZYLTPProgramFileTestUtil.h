// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoRef.h"
#include "ZYLTPProgram.h"

namespace ZYLTPProgramFileTestUtil {
/// Builds a small program with every value a file holds away from its default: a head, a
/// roller and two plain tools (one without collision points), procedure parameters, courses
/// with frames taken as given (normals a little off unit length), runs with forced tows, a
/// break range, a laying order other than the stored one, links of every kind with their
/// parameters, and an inspection with a plain tool as scanner.
ZYLGeoRef<ZYLTPProgram> EveryParameterProgram();
/// Compares two programs through their read operations (resources, geometry, procedures,
/// courses point by point, trajectories, links); reports the first difference as a test
/// failure of the running test.
void CompareProgram(const ZYLTPProgram &expected, const ZYLTPProgram &actual);
} // namespace ZYLTPProgramFileTestUtil
