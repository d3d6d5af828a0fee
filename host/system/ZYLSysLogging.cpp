// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysLogging.h"

Q_LOGGING_CATEGORY(lcZYLSystem, "zyl.system")
