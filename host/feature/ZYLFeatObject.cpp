// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatObject.h"

#include "ZYLFeatRecorder.h"

ZYLFeatObject::ZYLFeatObject(const QString &name) : m_name(name)
{
}

ZYLFeatObject::~ZYLFeatObject()
{
    // A container or a history change still points here; there is no safe repair, so say
    // it loudly where the mistake was made.
    if (m_container)
        qCritical("ZYLFeatObject \"%s\" deleted while its container still lists it", qUtf8Printable(m_name));
}

void ZYLFeatObject::SetName(const QString &name)
{
    ZYLFeatRecorder::SetValue(m_name, name);
}
