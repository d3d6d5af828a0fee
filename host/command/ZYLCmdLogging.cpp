// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmdLogging.h"

Q_LOGGING_CATEGORY(lcZYLCommand, "zyl.command")
