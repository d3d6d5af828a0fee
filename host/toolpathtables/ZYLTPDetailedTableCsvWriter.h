// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathTablesExport.h"

#include <QList>
#include <QString>

#include <functional>
#include <vector>

class ZYLTPDetailedTableModel;

/// Writes rows of a detailed table as a comma-separated file, as they are shown.
///
/// Layout: fields separated by ", " (comma and space), written as displayed with no quoting
/// or escaping, lines ending in a line feed (CR LF on Windows), UTF-8 with a byte-order mark.
/// With the horizontal header shown the first line holds the column headers, preceded by an
/// empty field when the vertical header is shown (so it starts with ", "); it is left out
/// when no column is written. Each row then gives one line: its vertical header text first
/// when that header is shown, then its cells.
///
/// The text is made and written in blocks of about a megabyte into a temporary file that
/// replaces the target only when everything is written, so a failed or cancelled write
/// leaves no file behind and keeps the file that was there.
class ZYLTOOLPATHTABLES_EXPORT ZYLTPDetailedTableCsvWriter {
public:
    enum Result { Written, Failed, Cancelled };
    /// Called after each block with the rows done and the rows in all; returning false
    /// cancels the write.
    using Progress = std::function<bool(qint64 done, qint64 total)>;

    /// Returns `fileName` with ".csv" appended unless it ends so (in any case).
    static QString CompleteFileName(const QString &fileName);

    /// Sets the rows to write (model rows, in the order given) and the columns (in order).
    ZYLTPDetailedTableCsvWriter(const ZYLTPDetailedTableModel &model, std::vector<int> rows, QList<int> columns);
    void SetHeadersShown(bool horizontal, bool vertical);
    void SetProgress(Progress progress);

    /// Writes the file. On failure `GetError()` says why.
    Result Write(const QString &fileName);
    QString GetError() const { return m_error; }

private:
    const ZYLTPDetailedTableModel &m_model;
    std::vector<int> m_rows;
    QList<int> m_columns;
    bool m_horizontalHeader = true;
    bool m_verticalHeader = true;
    Progress m_progress;
    QString m_error;
};
