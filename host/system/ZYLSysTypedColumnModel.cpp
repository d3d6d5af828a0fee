// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysTypedColumnModel.h"

// Defined here so that the type has one identity in every library that casts to it.
ZYLSysTypedColumnModel::~ZYLSysTypedColumnModel() = default;
