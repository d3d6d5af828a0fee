// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPDetailedTableCsvWriter.h"

#include "ZYLTPDetailedTableModel.h"

#include <QSaveFile>

#include <string>
#include <string_view>
#include <utility>

namespace {

constexpr qsizetype BlockSize = 1 << 20;
constexpr std::string_view Separator = ", ";

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
    // A plain buffer: appending to it is a bounds check and a copy, which matters at ten
    // million fields.
    std::string block;
    block.reserve(BlockSize + BlockSize / 4);
    const auto appendText = [&block](const QString &text) {
        const QByteArray utf8 = text.toUtf8();
        block.append(utf8.constData(), size_t(utf8.size()));
    };
    block.append("\xEF\xBB\xBF");
    if (m_horizontalHeader) {
        if (m_verticalHeader)
            block.append(Separator);
        for (qsizetype i = 0; i < m_columns.size(); ++i) {
            if (i > 0)
                block.append(Separator);
            appendText(m_model.headerData(m_columns.at(i), Qt::Horizontal).toString());
        }
        if (!m_columns.isEmpty())
            block += '\n';
    }
    const auto flush = [&](qint64 done) {
        if (file.write(block.data(), qint64(block.size())) != qint64(block.size())) {
            m_error = file.errorString();
            return Failed;
        }
        block.clear();
        if (m_progress && !m_progress(done, qint64(m_rows.size())))
            return Cancelled;
        return Written;
    };
    for (size_t i = 0; i < m_rows.size(); ++i) {
        const int row = m_rows[i];
        if (m_verticalHeader) {
            appendText(m_model.headerData(row, Qt::Vertical).toString());
            block.append(Separator);
        }
        for (qsizetype c = 0; c < m_columns.size(); ++c) {
            if (c > 0)
                block.append(Separator);
            m_model.AppendCellText(row, m_columns.at(c), block);
        }
        block += '\n';
        if (block.size() >= size_t(BlockSize)) {
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
