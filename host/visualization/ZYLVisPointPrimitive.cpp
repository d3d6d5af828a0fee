// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisPointPrimitive.h"

ZYLVisPointPrimitive::ZYLVisPointPrimitive(const ZYLMathSetOfPoints &points)
    : ZYLVisPrimitive(Kind::Points, points.GetPoints())
{
}

ZYLVisPointPrimitive::ZYLVisPointPrimitive(std::vector<ZYLMathPoint> points)
    : ZYLVisPrimitive(Kind::Points, std::move(points))
{
}

ZYLVisPointPrimitive::~ZYLVisPointPrimitive() = default;
