// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoAssembledCurveOnSurface.h"

#include "ZYLGeoCurve.h"
#include "ZYLGeoSurface.h"

#include <QDebug>

ZYLGeoAssembledCurveOnSurface::ZYLGeoAssembledCurveOnSurface(const ZYLGeoSurface *surface) : m_surface(surface)
{
    if (m_surface)
        m_surface->AddReference();
}

ZYLGeoAssembledCurveOnSurface::~ZYLGeoAssembledCurveOnSurface()
{
    for (ZYLGeoCurve *curve : m_curves)
        curve->RemoveReference();
    if (m_surface)
        m_surface->RemoveReference();
}

void ZYLGeoAssembledCurveOnSurface::AddCurve(ZYLGeoCurve *curve)
{
    if (!curve) {
        qWarning("ZYLGeoAssembledCurveOnSurface::AddCurve: null curve ignored");
        return;
    }
    curve->AddReference();
    m_curves.push_back(curve);
}

ZYLGeoCurve *ZYLGeoAssembledCurveOnSurface::GetCurve(int i) const
{
    return i >= 0 && i < GetNumCurves() ? m_curves[size_t(i)] : nullptr;
}

double ZYLGeoAssembledCurveOnSurface::GetLength() const
{
    double length = 0.0;
    for (const ZYLGeoCurve *curve : m_curves)
        length += curve->GetLength();
    return length;
}
