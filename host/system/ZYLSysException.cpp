// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysException.h"

ZYLSysException::ZYLSysException(const QString &message)
    : m_message(message), m_utf8(message.toUtf8())
{
}

ZYLSysException::~ZYLSysException() = default;

const char *ZYLSysException::what() const noexcept
{
    return m_utf8.constData();
}
