// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

class ZYLTPProgram;

namespace ZYLTPProgramFileTestUtil {
/// Compares two programs through their read operations (resources, geometry, procedures,
/// courses point by point, trajectories, links); reports the first difference as a test
/// failure of the running test.
void CompareProgram(const ZYLTPProgram &expected, const ZYLTPProgram &actual);
} // namespace ZYLTPProgramFileTestUtil
