// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoGeometry.h"
#include "ZYLMathSetOfPoints.h"

#include <vector>

class ZYLGeoCurve;
class ZYLGeoSurface;

/// The geometry of a feature as it is drawn: surfaces, curves and loose points. Holds a
/// reference on each surface and curve, from `AddSurface`/`AddCurve` until it is destroyed.
/// Adding a null surface or curve is a programming error: it is logged and ignored.
class ZYLGEOMETRY_EXPORT ZYLGeoBody : public ZYLGeoGeometry {
public:
    ZYLGeoBody() = default;
    ~ZYLGeoBody() override;

    void AddSurface(const ZYLGeoSurface *surface);
    void AddCurve(const ZYLGeoCurve *curve);
    void AddPoint(const ZYLMathPoint &point) { m_points.Add(point); }

    int GetNumSurfaces() const { return int(m_surfaces.size()); }
    /// Returns surface i, or null for an index outside [0, GetNumSurfaces()).
    const ZYLGeoSurface *GetSurface(int i) const;
    int GetNumCurves() const { return int(m_curves.size()); }
    /// Returns curve i, or null for an index outside [0, GetNumCurves()).
    const ZYLGeoCurve *GetCurve(int i) const;
    const ZYLMathSetOfPoints &GetPoints() const { return m_points; }

    /// Returns a box holding every surface, curve and point (empty for an empty body).
    ZYLMathBoundingBox GetBoundingBox() const;

private:
    std::vector<const ZYLGeoSurface *> m_surfaces;
    std::vector<const ZYLGeoCurve *> m_curves;
    ZYLMathSetOfPoints m_points;
};
