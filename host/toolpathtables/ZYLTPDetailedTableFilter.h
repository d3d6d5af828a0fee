// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathTablesExport.h"

#include "ZYLSysVariantFilter.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>

class QAbstractItemModel;
class ZYLTPDetailedTableModel;

/// A filter of a detailed table made from what the user chose: a column (by label), a
/// condition (a `ZYLSysVariantFilter::ComparisonType` code, -1 the separator) and a value text.
///
/// `Create` checks the choice and works out what a filter proxy needs: the key column, the
/// role its cells are read with, the comparison function and the `ZYLSysVariantFilter`:
/// - text columns compare texts without regard to case;
/// - integer columns take the first number found in the text ("x12" filters on 12);
/// - time columns the same, compared with the cells' number in seconds;
/// - physical value columns read the text as a value of the column's quantity, a number
///   without a unit being in the user's display unit ("2000" feed rate in mm/min, "1.5in"),
///   and compare it with the cells' number in the display unit;
/// - tow mask columns compare tow sets (`CompareTowMasks`); "0" stands for no tow.
/// A refused choice gives an `Error` (and, for an unreadable value, the reason in
/// `GetMessage()`) and no filter.
///
/// Passes the cell (read with `GetRole()` from `GetKeyColumn()`) when
/// `GetFunction()(cell, GetVariantFilter())` returns true; `Accepts` does the same for one row.
/// A proxy whose source offers the key column as bit sets may call `GetBitsFunction()` instead.
class ZYLTOOLPATHTABLES_EXPORT ZYLTPDetailedTableFilter {
public:
    enum Error {
        NoError,
        /// No column chosen, or none with the label.
        NoProperty,
        /// No condition chosen, the separator, or a condition the column does not take.
        NoCondition,
        /// Empty value text.
        NoValue,
        /// No number in the text of an integer or time filter, or a physical value column
        /// without any value to compare with.
        NoNumber,
        /// The value text is not a value of the column's quantity or not a tow list.
        InvalidValue
    };
    using Function = std::function<bool(const QVariant &cell, const ZYLSysVariantFilter &filter)>;
    /// The same comparison on a cell given as its bit set (tow mask columns).
    using BitsFunction = std::function<bool(quint64 bits, const ZYLSysVariantFilter &filter)>;

    /// The separator code of the condition lists.
    static constexpr int Separator = -1;
    /// Returns the conditions a column type offers, in order (the separator included).
    static QList<int> GetConditions(int columnType);
    /// Returns the untranslated label of a condition code ("greater than"); empty for others.
    static QString GetConditionLabel(int code);
    /// Returns the condition code of a label (exact, or without regard to case) or of its
    /// decimal number; nullopt for anything else.
    static std::optional<int> FindCondition(const QString &text);

    /// Compares tow sets: `cellText` and `filterText` as tow lists (an empty text, and a filter
    /// text reading as the integer 0, are the empty set). Contains: every filter tow is in the
    /// cell (an empty filter: the cell has no tow). Does not contain: no filter tow is in the
    /// cell (an empty filter: the cell has a tow). Equal, not equal: as sets. Other
    /// comparisons and unreadable texts give false.
    static bool CompareTowMasks(const QString &cellText, const QString &filterText,
                                ZYLSysVariantFilter::ComparisonType comparison);

    /// Builds the filter of `model`'s column with `label` (null label: none chosen) for a
    /// condition (nullopt: none chosen) and a value text; see the class comment.
    static ZYLTPDetailedTableFilter Create(const ZYLTPDetailedTableModel &model, const std::optional<QString> &label,
                                           std::optional<int> condition, const QString &value);

    Error GetError() const { return m_error; }
    /// Returns the reason an `InvalidValue` was refused.
    const QString &GetMessage() const { return m_message; }
    int GetKeyColumn() const { return m_column; }
    int GetRole() const { return m_role; }
    const Function &GetFunction() const { return m_function; }
    /// Returns the function's twin on bit sets (tow mask columns; empty for others), which
    /// decides as the function does for every cell.
    const BitsFunction &GetBitsFunction() const { return m_bitsFunction; }
    const ZYLSysVariantFilter &GetVariantFilter() const { return m_filter; }
    /// Returns whether row `row` of `model` passes (for a filter without error).
    bool Accepts(const QAbstractItemModel &model, int row) const;

private:
    Error m_error = NoError;
    QString m_message;
    int m_column = -1;
    int m_role = Qt::DisplayRole;
    Function m_function;
    BitsFunction m_bitsFunction;
    ZYLSysVariantFilter m_filter;
};
