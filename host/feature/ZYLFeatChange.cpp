// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatChange.h"

ZYLFeatChange::~ZYLFeatChange() = default;

ZYLFeatChange::ValueField ZYLFeatChange::GetValueField() const
{
    return {};
}
