// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisMouseContext.h"

ZYLVisMouseContext::ZYLVisMouseContext(const ZYLVisPickRay &ray, const ZYLMathPoint &mousePoint, ZYLVisObject *object,
                                       bool snapped)
    : m_ray(ray), m_point(mousePoint), m_object(object), m_snapped(snapped)
{
}
