// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathTablesExport.h"

#include "ZYLSysTypedColumnModel.h"

#include <QAbstractTableModel>
#include <QByteArrayView>
#include <QList>
#include <QString>

#include <memory>

class ZYLTPProgram;

/// One of the four detailed tables of a tool path program, read lazily from the program.
///
/// Tables: the operation summary (one row per property of each roll layup procedure, then one
/// per tow length, in one column "Value"), the courses (one row per tow course, by laying
/// position), the laying points (one row per on-part point of every course) and the linking
/// motion (the approach link of each course in laying order, then the retract link of the
/// last one). Rows and their vertical headers ("Course n", "Link n") are fixed when the model
/// is made; cell texts and numbers are made when asked for, so that a million rows cost a
/// few bytes each and showing them costs only the visible cells. The model does not follow
/// later edits of the program, which must outlive it.
///
/// Header data: for the columns of the course, laying points and linking motion tables the
/// display role is the translated name, `ColumnIndexRole` (256) the column's index,
/// `ColumnTypeRole` (257) its `ColumnType`, `LabelRole` (266) its untranslated label. The
/// operation table's single column is "Value"; its rows carry the translated property name
/// and the label (266) as vertical header data.
///
/// Cells: the display role holds the text as shown (values with their unit in the user's
/// display unit, integers as numbers); values and times also hold a number under
/// `NumberRole` (256): a physical value in its display unit as rounded for display, a time in
/// seconds.
///
/// Texts are translated in the context "ZYLTPDetailedInfoWidget".
///
/// Filters read whole columns through `ZYLSysTypedColumnModel`: integer cells (display role)
/// and values and times (`NumberRole`) as numbers, tow masks (display role) as bit sets.
class ZYLTOOLPATHTABLES_EXPORT ZYLTPDetailedTableModel : public QAbstractTableModel, public ZYLSysTypedColumnModel {
    Q_OBJECT
public:
    enum Table { Operation = 0, Course = 1, LayingPoints = 2, LinkingMotion = 3 };
    Q_ENUM(Table)
    /// What a column holds, and so which filter conditions it takes.
    enum ColumnType { NotFilterable = -1, Text = 0, Integer = 1, TowMask = 2, PhysicalValue = 3, Time = 4 };
    enum Role { NumberRole = Qt::UserRole, ColumnIndexRole = Qt::UserRole, ColumnTypeRole = Qt::UserRole + 1,
                LabelRole = Qt::UserRole + 10 };
    /// A column of a table (a row of the operation table). `name` is the untranslated source
    /// text of the header and equals `label`, the key used by settings and filters.
    struct Column {
        QString name;
        ColumnType type;
        QString label;
    };
    /// The number of tow length columns of the course table.
    static constexpr int NumTowLengthColumns = 32;

    /// Returns the listed columns of a table in their fixed order (for the operation table:
    /// its properties, unsorted); the course table's tow length columns are not listed.
    static const QList<Column> &GetColumns(Table table);
    /// Returns the name under which a table's settings are kept: "OperationTable",
    /// "CourseTable", "LayingPointsTable", "LinkingMotionTable".
    static QString GetSettingsName(Table table);
    /// Returns the tow length label "Tow n length" (untranslated) and its translated text,
    /// `tow` counted from 1.
    static QString GetTowLengthLabel(int tow);
    static QString GetTowLengthText(int tow);
    /// Returns the text translated in the tables' context.
    static QString Translate(const char *text);

    /// Makes the table of `program` (borrowed; null gives an empty table).
    ZYLTPDetailedTableModel(Table table, const ZYLTPProgram *program, QObject *parent = nullptr);
    ~ZYLTPDetailedTableModel() override;

    Table GetTable() const;
    /// Returns the column (for the operation table: the first row) whose label is `label`,
    /// or -1.
    int FindSection(const QString &label) const;
    /// Returns the type of a column (-1 when out of range).
    ColumnType GetColumnType(int column) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    /// Orders the rows by a column: numbers (values, times, integers) by their number, other
    /// cells by their text without regard to case, empty cells first; rows with equal cells
    /// keep their order. A column out of range restores the order of the program.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;
    /// Returns the column the rows are ordered by, or -1 for the order of the program.
    int GetSortColumn() const;

    bool ReadNumbers(int column, int role, std::vector<double> &numbers) const override;
    bool ReadBits(int column, int role, std::vector<quint64> &bits) const override;

    /// Returns the display text of a cell as UTF-8, as `data` would give it, without making a
    /// QString for repeats of the previous value in the same column (the fast path of CSV
    /// files). The text stays valid until the next call for the same column.
    QByteArrayView GetCellUtf8(int row, int column) const;

private:
    struct Data;
    std::unique_ptr<Data> d;
};
