// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisPrimitive.h"

#include "ZYLGeoRangeOfCurve.h"

class ZYLGeoCurve;

/// A connected line through vertices in order, e.g. a tessellated curve.
class ZYLVISUALIZATION_EXPORT ZYLVisPolylinePrimitive final : public ZYLVisPrimitive {
public:
    /// Tessellates a range of a curve (by default the whole curve) once, here. With
    /// `chordTolerance` <= 0 the tolerance is a thousandth of the diagonal of the curve's
    /// bounding box, so that every curve looks smooth whatever its size. The primitive keeps no
    /// reference to the curve. Throws ZYLSysException for a null curve.
    explicit ZYLVisPolylinePrimitive(const ZYLGeoCurve *curve, const ZYLGeoRangeOfCurve &range = {},
                                     double chordTolerance = 0.0);
    /// Joins the given points in order.
    explicit ZYLVisPolylinePrimitive(std::vector<ZYLMathPoint> points);
    ~ZYLVisPolylinePrimitive() override;

    int GetNumElements() const override { return GetNumVertices() > 1 ? GetNumVertices() - 1 : 0; }

    /// Returns the tolerance used for a curve whose bounding box has the given diagonal length.
    static double GetAutomaticTolerance(double diagonal);
};
