// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QCoreApplication>
#include <QIODevice>
#include <QList>
#include <QString>

#include <charconv>
#include <string>
#include <string_view>
#include <vector>

/// A streaming JSON writer for program files (internal): values go into a byte buffer that
/// is handed to the device whenever it passes about a megabyte, so memory stays flat however
/// large the program is. Numbers are written with `std::to_chars` in their shortest form
/// that reads back to the same double; commas and the optional line breaks are placed by
/// the writer. A failed device write throws `Failure`.
class ZYLTPProgramFileWriter {
public:
    struct Failure {
        QString message;
    };

    explicit ZYLTPProgramFileWriter(QIODevice *device) : m_device(device) { m_buffer.reserve(ChunkSize + 4096); }

    void BeginObject()
    {
        Prelude();
        m_buffer.push_back('{');
        m_needComma = false;
    }
    void EndObject()
    {
        m_buffer.push_back('}');
        Closed();
    }
    void BeginArray()
    {
        Prelude();
        m_buffer.push_back('[');
        m_needComma = false;
    }
    void EndArray()
    {
        m_buffer.push_back(']');
        Closed();
    }
    /// Writes `"key":`; the next call writes the member's value.
    void Key(std::string_view key)
    {
        Prelude();
        m_buffer.push_back('"');
        m_buffer.append(key);
        m_buffer.append("\":");
        m_needComma = false;
    }
    /// Starts the next value on a new line (only for readability).
    void Newline() { m_pendingNewline = true; }

    void Null()
    {
        Prelude();
        m_buffer.append("null");
        Closed();
    }
    void Int(long long value)
    {
        Prelude();
        char text[24];
        const auto result = std::to_chars(text, text + sizeof text, value);
        m_buffer.append(text, result.ptr);
        Closed();
    }
    void Number(double value)
    {
        Prelude();
        char text[32];
        const auto result = std::to_chars(text, text + sizeof text, value);
        m_buffer.append(text, result.ptr);
        Closed();
    }
    void Triple(double x, double y, double z)
    {
        BeginArray();
        Number(x);
        Number(y);
        Number(z);
        EndArray();
    }
    template<class Container>
    void Numbers(const Container &values)
    {
        BeginArray();
        for (double v : values)
            Number(v);
        EndArray();
    }
    void String(const QString &text)
    {
        Prelude();
        m_buffer.push_back('"');
        const QByteArray utf8 = text.toUtf8();
        for (char c : utf8) {
            const auto u = static_cast<unsigned char>(c);
            if (c == '"' || c == '\\') {
                m_buffer.push_back('\\');
                m_buffer.push_back(c);
            } else if (u < 0x20) {
                static const char hex[] = "0123456789abcdef";
                m_buffer.append("\\u00");
                m_buffer.push_back(hex[u >> 4]);
                m_buffer.push_back(hex[u & 15]);
            } else {
                m_buffer.push_back(c);
            }
        }
        m_buffer.push_back('"');
        Closed();
    }

    /// Writes what is buffered to the device.
    void Flush()
    {
        if (m_pendingNewline) {
            m_buffer.push_back('\n');
            m_pendingNewline = false;
        }
        if (!m_buffer.empty() && m_device->write(m_buffer.data(), qint64(m_buffer.size())) != qint64(m_buffer.size()))
            throw Failure{QCoreApplication::translate("ZYLTPProgramFile", "Write error: %1").arg(m_device->errorString())};
        m_buffer.clear();
    }

private:
    static constexpr size_t ChunkSize = size_t(1) << 20;

    void Prelude()
    {
        if (m_needComma)
            m_buffer.push_back(',');
        if (m_pendingNewline) {
            m_buffer.push_back('\n');
            m_pendingNewline = false;
        }
    }
    void Closed()
    {
        m_needComma = true;
        if (m_buffer.size() >= ChunkSize)
            Flush();
    }

    QIODevice *m_device;
    std::string m_buffer;
    bool m_needComma = false;
    bool m_pendingNewline = false;
};
