// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisSelectionFilter.h"

ZYLVisSelectionFilter::~ZYLVisSelectionFilter() = default;

bool ZYLVisSelectionFilter::IsMultiple() const
{
    return false;
}
