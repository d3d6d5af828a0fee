// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisPrimitive.h"

#include "ZYLMathSetOfPoints.h"

/// Dots at a set of points.
class ZYLVISUALIZATION_EXPORT ZYLVisPointPrimitive final : public ZYLVisPrimitive {
public:
    explicit ZYLVisPointPrimitive(const ZYLMathSetOfPoints &points);
    explicit ZYLVisPointPrimitive(std::vector<ZYLMathPoint> points);
    ~ZYLVisPointPrimitive() override;

    int GetNumElements() const override { return GetNumVertices(); }
};
