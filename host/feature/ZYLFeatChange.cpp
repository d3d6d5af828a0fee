// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatChange.h"

ZYLFeatChange::~ZYLFeatChange() = default;

const void *ZYLFeatChange::GetValueField(const std::type_info &) const
{
    return nullptr;
}
