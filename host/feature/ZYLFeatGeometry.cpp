// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatGeometry.h"

#include "ZYLFeatRecorder.h"

#include "ZYLGeoBody.h"

ZYLFeatGeometry::ZYLFeatGeometry(const ZYLGeoBody *body, const QString &name)
    : ZYLFeatObject(name), m_body(body)
{
    if (m_body)
        m_body->AddReference();
}

ZYLFeatGeometry::~ZYLFeatGeometry()
{
    if (m_body)
        m_body->RemoveReference();
}

void ZYLFeatGeometry::SetBody(const ZYLGeoBody *body)
{
    ZYLFeatRecorder::SetReference(m_body, body);
}
