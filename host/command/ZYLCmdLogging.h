// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QLoggingCategory>

// Logging category of the command library ("zyl.command"); internal, not exported.
Q_DECLARE_LOGGING_CATEGORY(lcZYLCommand)
