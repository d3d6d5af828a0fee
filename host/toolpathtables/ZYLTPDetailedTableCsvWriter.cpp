// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPDetailedTableCsvWriter.h"

#include "ZYLTPDetailedTableModel.h"

#include <QSaveFile>

#include <utility>

namespace {

constexpr qsizetype BlockSize = 1 << 20;
constexpr char Separator[] = ", ";

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
    QByteArray block;
    block.reserve(BlockSize + BlockSize / 4);
    block.append("\xEF\xBB\xBF");
    if (m_horizontalHeader) {
        if (m_verticalHeader)
            block.append(Separator);
        for (qsizetype i = 0; i < m_columns.size(); ++i) {
            if (i > 0)
                block.append(Separator);
            block.append(m_model.headerData(m_columns.at(i), Qt::Horizontal).toString().toUtf8());
        }
        if (!m_columns.isEmpty())
            block.append('\n');
    }
    const auto flush = [&](qint64 done) {
        if (file.write(block) != block.size()) {
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
            block.append(m_model.headerData(row, Qt::Vertical).toString().toUtf8());
            block.append(Separator);
        }
        for (qsizetype c = 0; c < m_columns.size(); ++c) {
            if (c > 0)
                block.append(Separator);
            m_model.AppendCellText(row, m_columns.at(c), block);
        }
        block.append('\n');
        if (block.size() >= BlockSize) {
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
