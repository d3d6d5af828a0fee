// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLGeometryExport.h"

class ZYLGeoCurve;

/// A parameter interval of a curve. The default range is the whole curve, whatever its
/// parameter interval; an explicit range is clamped to the curve when it is resolved.
class ZYLGEOMETRY_EXPORT ZYLGeoRangeOfCurve {
public:
    ZYLGeoRangeOfCurve() = default;
    ZYLGeoRangeOfCurve(double start, double end) : m_whole(false), m_start(start), m_end(end) {}

    bool IsWholeCurve() const { return m_whole; }
    /// Returns the start and end parameters of this range on `curve`, clamped to its interval
    /// and ordered so that start <= end.
    double GetStart(const ZYLGeoCurve &curve) const;
    double GetEnd(const ZYLGeoCurve &curve) const;

    bool operator==(const ZYLGeoRangeOfCurve &) const = default;

private:
    bool m_whole = true;
    double m_start = 0.0;
    double m_end = 0.0;
};
