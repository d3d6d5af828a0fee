// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeoGeometry.h"

#include <vector>

class ZYLGeoCurve;
class ZYLGeoSurface;

/// A chain of curves lying on a surface, e.g. one closed ply boundary. Holds a reference on
/// its surface and on each curve until it is destroyed. The surface may be null (a chain
/// known only by its curves); adding a null curve is a programming error that is logged and
/// ignored.
class ZYLGEOMETRY_EXPORT ZYLGeoAssembledCurveOnSurface : public ZYLGeoGeometry {
public:
    explicit ZYLGeoAssembledCurveOnSurface(const ZYLGeoSurface *surface);
    ~ZYLGeoAssembledCurveOnSurface() override;

    const ZYLGeoSurface *GetSurface() const { return m_surface; }
    void AddCurve(ZYLGeoCurve *curve);
    int GetNumCurves() const { return int(m_curves.size()); }
    /// Returns curve i, or null for an index outside [0, GetNumCurves()).
    ZYLGeoCurve *GetCurve(int i) const;
    /// Returns the sum of the curves' lengths.
    double GetLength() const;

private:
    const ZYLGeoSurface *m_surface;
    std::vector<ZYLGeoCurve *> m_curves;
};
