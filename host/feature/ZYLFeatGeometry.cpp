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
    ZYLFeatRecorder::RequireTransaction(QT_TRANSLATE_NOOP("ZYLFeatRecorder", "Setting the body of a feature"));
    if (body != m_body)
        RecordEdit(std::make_unique<ZYLFeatReferenceChange<ZYLGeoBody>>(m_body, body));
}
