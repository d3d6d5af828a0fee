// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLGeoGeometry.h"

#include <QDebug>

ZYLGeoGeometry::~ZYLGeoGeometry() = default;

void ZYLGeoGeometry::AddReference() const
{
    ++m_references;
}

void ZYLGeoGeometry::RemoveReference() const
{
    if (m_references <= 0) {
        qWarning("ZYLGeoGeometry::RemoveReference: no reference to release");
        return;
    }
    if (--m_references == 0)
        delete this;
}
