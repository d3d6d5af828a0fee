// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QLoggingCategory>

// Logging category of the system library ("zyl.system"); internal, not exported.
Q_DECLARE_LOGGING_CATEGORY(lcZYLSystem)
