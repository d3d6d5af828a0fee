// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoGeometry.h"
#include "ZYLMathSetOfPoints.h"

#include <vector>

class ZYLGeoCurve;
class ZYLGeoSurface;

/// The geometry of a feature as it is drawn: surfaces, curves and loose points. Holds a
/// reference on each surface and curve.
class ZYLGEOMETRY_EXPORT ZYLGeoBody : public ZYLGeoGeometry {
public:
    ZYLGeoBody() = default;
    ~ZYLGeoBody() override;

    void AddSurface(const ZYLGeoSurface *surface);
    void AddCurve(const ZYLGeoCurve *curve);
    void AddPoint(const ZYLMathPoint &point) { m_points.Add(point); }

    int GetNumSurfaces() const { return int(m_surfaces.size()); }
    const ZYLGeoSurface *GetSurface(int i) const { return m_surfaces[size_t(i)]; }
    int GetNumCurves() const { return int(m_curves.size()); }
    const ZYLGeoCurve *GetCurve(int i) const { return m_curves[size_t(i)]; }
    const ZYLMathSetOfPoints &GetPoints() const { return m_points; }

    ZYLMathBoundingBox GetBoundingBox() const;

private:
    std::vector<const ZYLGeoSurface *> m_surfaces;
    std::vector<const ZYLGeoCurve *> m_curves;
    ZYLMathSetOfPoints m_points;
};
