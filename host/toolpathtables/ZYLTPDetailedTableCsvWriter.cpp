// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPDetailedTableCsvWriter.h"

#include "ZYLTPDetailedTableModel.h"

#include <QByteArrayView>
#include <QSaveFile>

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace {

constexpr qsizetype BlockSize = 1 << 20;
constexpr QByteArrayView Separator = ", ";

} // namespace

QString ZYLTPDetailedTableCsvWriter::CompleteFileName(const QString &fileName)
{
    return fileName.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive) ? fileName
                                                                         : fileName + QLatin1String(".csv");
}

ZYLTPDetailedTableCsvWriter::ZYLTPDetailedTableCsvWriter(const ZYLTPDetailedTableModel &model, std::vector<int> rows,
                                                         QList<int> columns)
    : m_model(model)
    , m_rows(std::move(rows))
    , m_columns(std::move(columns))
{
}

void ZYLTPDetailedTableCsvWriter::SetHeadersShown(bool horizontal, bool vertical)
{
    m_horizontalHeader = horizontal;
    m_verticalHeader = vertical;
}

void ZYLTPDetailedTableCsvWriter::SetProgress(Progress progress)
{
    m_progress = std::move(progress);
}

ZYLTPDetailedTableCsvWriter::Result ZYLTPDetailedTableCsvWriter::Write(const QString &fileName)
{
    QSaveFile file(fileName);
    // Text mode turns each line feed into the platform's line end.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        m_error = file.errorString();
        return Failed;
    }
    // A plain buffer written through a pointer: appending is a bounds check and a copy, made
    // inline, which matters at ten million fields.
    std::string block(size_t(BlockSize) * 2, '\0');
    size_t used = 0;
    const auto put = [&block, &used](QByteArrayView text) {
        const size_t n = size_t(text.size());
        if (used + n > block.size())
            block.resize(std::max(block.size() * 2, used + n));
        if (n) // an empty view may carry no buffer at all
            std::memcpy(block.data() + used, text.data(), n);
        used += n;
    };
    const auto putText = [&put](const QString &text) { put(text.toUtf8()); };
    put("\xEF\xBB\xBF");
    if (m_horizontalHeader) {
        if (m_verticalHeader)
            put(Separator);
        for (qsizetype i = 0; i < m_columns.size(); ++i) {
            if (i > 0)
                put(Separator);
            putText(m_model.headerData(m_columns.at(i), Qt::Horizontal).toString());
        }
        if (!m_columns.isEmpty())
            put("\n");
    }
    const auto flush = [&](qint64 done) {
        if (file.write(block.data(), qint64(used)) != qint64(used)) {
            m_error = file.errorString();
            return Failed;
        }
        used = 0;
        if (m_progress && !m_progress(done, qint64(m_rows.size())))
            return Cancelled;
        return Written;
    };
    for (size_t i = 0; i < m_rows.size(); ++i) {
        const int row = m_rows[i];
        if (m_verticalHeader) {
            putText(m_model.headerData(row, Qt::Vertical).toString());
            put(Separator);
        }
        for (qsizetype c = 0; c < m_columns.size(); ++c) {
            if (c > 0)
                put(Separator);
            put(m_model.GetCellUtf8(row, m_columns.at(c)));
        }
        put("\n");
        if (used >= size_t(BlockSize)) {
            if (const Result result = flush(qint64(i + 1)); result != Written) {
                file.cancelWriting();
                return result;
            }
        }
    }
    if (const Result result = flush(qint64(m_rows.size())); result != Written) {
        file.cancelWriting();
        return result;
    }
    if (!file.commit()) {
        m_error = file.errorString();
        return Failed;
    }
    return Written;
}
