// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisFunctionFilter.h"

ZYLVisFunctionFilter::ZYLVisFunctionFilter(bool multiple, std::function<bool(const ZYLVisObject *)> predicate)
    : m_multiple(multiple), m_predicate(std::move(predicate))
{
}

ZYLVisFunctionFilter::~ZYLVisFunctionFilter() = default;

bool ZYLVisFunctionFilter::IsSelectable(const ZYLVisObject *object) const
{
    return !m_predicate || m_predicate(object);
}
