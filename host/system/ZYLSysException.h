// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLSystemExport.h"

#include <QByteArray>
#include <QString>

#include <exception>

/// The host's failure report: an exception carrying a message for the user.
class ZYLSYSTEM_EXPORT ZYLSysException : public std::exception {
public:
    explicit ZYLSysException(const QString &message);
    ~ZYLSysException() override;

    /// Returns the message as given.
    const QString &GetMessage() const { return m_message; }
    /// Returns the message in UTF-8.
    const char *what() const noexcept override;

private:
    QString m_message;
    QByteArray m_utf8;
};
