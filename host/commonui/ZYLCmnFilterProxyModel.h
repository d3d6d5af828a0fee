// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCommonUIExport.h"

#include <QSortFilterProxyModel>

#include <functional>
#include <memory>

class ZYLSysVariantFilter;

/// A sort-filter proxy that keeps the rows whose key cell passes a comparison.
///
/// The comparison is a function of the cell value and a `ZYLSysVariantFilter`. For every
/// source row the proxy reads the cell in `filterKeyColumn()` with `filterRole()` and keeps
/// the row when the function returns true for it; with `filterKeyColumn() == -1` a row is
/// kept when any of its cells passes. Without a function (an empty `std::function`, the
/// initial state) `DefaultVariantFilterFunction` compares the cells, so an empty function
/// with a default-constructed filter keeps every row. The regular expression filter of the
/// base class still applies on top when one is set.
///
/// Setting the function, the filter, the key column or the role re-filters at once, in one
/// pass over the source rows that rebuilds the mapping (announced as a layout change), not
/// by removing and inserting the changed rows one stretch at a time, which the base class
/// does and which takes seconds when a million rows change in scattered places. For that
/// reason `setFilterKeyColumn` and `setFilterRole` are redeclared here; called through a
/// `QSortFilterProxyModel` pointer they still work, only slower. The per-row path reads one
/// value from the source model and calls the function with the stored filter, with no
/// allocation of its own.
///
/// Comparisons over top-level rows of one key column take a faster path with the same
/// outcome: the first re-filter reads the key column at once and every comparison after that
/// runs on what was read, without touching the source model, so that filtering (and typing a
/// filter over) a million rows stays interactive:
/// - text comparisons by the default function (filter type Text, or begins with ... does not
///   contain of any type) read the column into one buffer of case-folded texts (about 2 bytes
///   per character and 8 per row) and fold the filter's text once;
/// - numeric comparisons by the default function (`ZYLSysVariantFilter::ComparesNumbers`)
///   read the column's numbers, when the source model offers them
///   (`ZYLSysTypedColumnModel::ReadNumbers`);
/// - a function given with a bit set twin (`SetFilterFunction`) reads the column's bit sets,
///   when the source model offers them (`ZYLSysTypedColumnModel::ReadBits`), and calls the twin.
/// A source that does not offer its column so has its cells read one by one. The column read
/// is dropped when the source announces any change to the column, its rows or its layout (the
/// rows then re-filtered by the base class read their cells directly), and when the key column,
/// the role or the source model changes.
class ZYLCOMMONUI_EXPORT ZYLCmnFilterProxyModel : public QSortFilterProxyModel {
    Q_OBJECT
public:
    using FilterFunction = std::function<bool(const QVariant &cell, const ZYLSysVariantFilter &filter)>;
    /// A comparison of a cell given as its bit set (`ZYLSysTypedColumnModel::ReadBits`).
    using BitsFunction = std::function<bool(quint64 bits, const ZYLSysVariantFilter &filter)>;

    explicit ZYLCmnFilterProxyModel(QObject *parent = nullptr);
    ~ZYLCmnFilterProxyModel() override;

    /// Sets the comparison of a cell against the filter; an empty function restores
    /// `DefaultVariantFilterFunction`. `bitsFunction`, when given, must decide as `function`
    /// does for every cell, from the cell's bit set; it is used where the source model
    /// offers the key column as bit sets. Re-filters the rows.
    void SetFilterFunction(FilterFunction function, BitsFunction bitsFunction = {});
    /// Sets the filter handed to the comparison with every cell. Re-filters the rows.
    void SetVariantFilter(const ZYLSysVariantFilter &filter);
    /// Sets the comparison (as `SetFilterFunction`), the key column, the role and the filter
    /// at once, and re-filters once: one layout change for all of them.
    void SetFilter(FilterFunction function, BitsFunction bitsFunction, int keyColumn, int role,
                   const ZYLSysVariantFilter &filter);
    /// Returns the filter set last (a default-constructed one initially).
    const ZYLSysVariantFilter &GetVariantFilter() const;

    /// Sets the filtered column (-1: any column) and re-filters in one pass.
    void setFilterKeyColumn(int column);
    /// Sets the role the cells are read with and re-filters in one pass.
    void setFilterRole(int role);
    /// Sets the source model; also watches it so that the cached key column never outlives
    /// a change of the model.
    void setSourceModel(QAbstractItemModel *model) override;

    /// Returns whether `cell` passes `filter`, as the filter itself decides
    /// (`ZYLSysVariantFilter::Accepts`) for all comparison and filter types.
    static bool DefaultVariantFilterFunction(const QVariant &cell, const ZYLSysVariantFilter &filter);

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;

private:
    bool AcceptsAllRows() const;
    void SetAndRefilter(void (QSortFilterProxyModel::*setter)(int), int value);
    void Refilter();
    void DropColumn();
    bool EnsureColumn(int column, int role) const;
    bool StartPass(const QModelIndex &sourceParent) const;

    struct Data;
    std::unique_ptr<Data> d;
};
