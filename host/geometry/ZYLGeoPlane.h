// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoRef.h"
#include "ZYLGeoSurface.h"
#include "ZYLMathAxis.h"

#include <QString>

/// A bounded plane: the rectangle origin + u·first + v·second of a frame for (u, v) in the
/// domain, so that parameters are lengths along the frame's first and second directions and
/// the normal is its third direction. Closest points and tessellation are exact.
class ZYLGEOMETRY_EXPORT ZYLGeoPlane final : public ZYLGeoSurface {
public:
    /// Returns the rectangle of `frame` over `extents`, or null (with the reason in `error`
    /// when given) when the extents are not finite or not increasing or the frame's origin is
    /// not finite.
    static ZYLGeoRef<ZYLGeoPlane> Create(const ZYLMathAxis &frame, const Domain &extents, QString *error = nullptr);
    ~ZYLGeoPlane() override;

    const ZYLMathAxis &GetFrame() const { return m_frame; }

    Domain GetDomain() const override { return m_extents; }
    ZYLMathPoint Evaluate(double u, double v) const override;
    void EvaluateDerivatives(double u, double v, ZYLMathPoint *point, ZYLMathVector *du,
                             ZYLMathVector *dv) const override;
    SecondDerivatives EvaluateSecondDerivatives(double u, double v) const override;
    SecondDerivativeBounds GetSecondDerivativeBounds(const Domain &region) const override;
    /// Returns the two triangles of the rectangle, whatever the (valid) tolerance.
    ZYLGeoMesh Tessellate(double chordTolerance) const override;
    /// Projects q onto the plane and clamps the foot to the rectangle; `hint` is not needed.
    ZYLGeoSurfaceFoot GetClosestPoint(const ZYLMathPoint &q, const ZYLGeoSurfaceFoot *hint = nullptr) const override;

private:
    ZYLGeoPlane(const ZYLMathAxis &frame, const Domain &extents);

    ZYLMathAxis m_frame;
    Domain m_extents;
};
