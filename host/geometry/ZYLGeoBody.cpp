// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoBody.h"

#include "ZYLGeoCurve.h"
#include "ZYLGeoSurface.h"

#include <QDebug>

ZYLGeoBody::~ZYLGeoBody()
{
    for (const ZYLGeoCurve *curve : m_curves)
        curve->RemoveReference();
    for (const ZYLGeoSurface *surface : m_surfaces)
        surface->RemoveReference();
}

void ZYLGeoBody::AddSurface(const ZYLGeoSurface *surface)
{
    if (!surface) {
        qWarning("ZYLGeoBody::AddSurface: null surface ignored");
        return;
    }
    surface->AddReference();
    m_surfaces.push_back(surface);
}

void ZYLGeoBody::AddCurve(const ZYLGeoCurve *curve)
{
    if (!curve) {
        qWarning("ZYLGeoBody::AddCurve: null curve ignored");
        return;
    }
    curve->AddReference();
    m_curves.push_back(curve);
}

const ZYLGeoSurface *ZYLGeoBody::GetSurface(int i) const
{
    return i >= 0 && i < GetNumSurfaces() ? m_surfaces[size_t(i)] : nullptr;
}

const ZYLGeoCurve *ZYLGeoBody::GetCurve(int i) const
{
    return i >= 0 && i < GetNumCurves() ? m_curves[size_t(i)] : nullptr;
}

ZYLMathBoundingBox ZYLGeoBody::GetBoundingBox() const
{
    ZYLMathBoundingBox box = m_points.GetBoundingBox();
    for (const ZYLGeoSurface *surface : m_surfaces)
        box.Add(surface->GetBoundingBox());
    for (const ZYLGeoCurve *curve : m_curves)
        box.Add(curve->GetBoundingBox());
    return box;
}
