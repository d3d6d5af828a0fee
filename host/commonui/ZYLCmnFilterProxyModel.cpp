// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmnFilterProxyModel.h"

#include "ZYLSysVariantFilter.h"

#include <QScopedValueRollback>

#include <utility>

struct ZYLCmnFilterProxyModel::Data {
    FilterFunction function;
    ZYLSysVariantFilter filter;
    // Set while a base-class setter runs its row-by-row re-filter: rows then keep their state.
    bool keepingRows = false;
};

ZYLCmnFilterProxyModel::ZYLCmnFilterProxyModel(QObject *parent)
    : QSortFilterProxyModel(parent)
    , d(std::make_unique<Data>())
{
}

ZYLCmnFilterProxyModel::~ZYLCmnFilterProxyModel() = default;

// invalidate() drops the mapping and builds it again in one pass when next asked;
// invalidateFilter() would instead remove and insert every changed stretch of rows with its
// own signals, which is quadratic when a million rows change in scattered places.
void ZYLCmnFilterProxyModel::SetFilterFunction(FilterFunction function)
{
    d->function = std::move(function);
    invalidate();
}

void ZYLCmnFilterProxyModel::SetVariantFilter(const ZYLSysVariantFilter &filter)
{
    d->filter = filter;
    invalidate();
}

void ZYLCmnFilterProxyModel::setFilterKeyColumn(int column)
{
    SetAndRefilter(&QSortFilterProxyModel::setFilterKeyColumn, column);
}

void ZYLCmnFilterProxyModel::setFilterRole(int role)
{
    SetAndRefilter(&QSortFilterProxyModel::setFilterRole, role);
}

bool ZYLCmnFilterProxyModel::AcceptsAllRows() const
{
    return !d->function && d->filter.IsAcceptAll();
}

void ZYLCmnFilterProxyModel::SetAndRefilter(void (QSortFilterProxyModel::*setter)(int), int value)
{
    // With nothing to filter on, the base class's own pass changes no row and is cheap.
    if (AcceptsAllRows() && filterRegularExpression().pattern().isEmpty()) {
        (this->*setter)(value);
        return;
    }
    // The base class setters re-filter row by row; let that pass find nothing to change,
    // then re-filter in one go.
    {
        const QScopedValueRollback<bool> keeping(d->keepingRows, true);
        (this->*setter)(value);
    }
    invalidate();
}

const ZYLSysVariantFilter &ZYLCmnFilterProxyModel::GetVariantFilter() const
{
    return d->filter;
}

bool ZYLCmnFilterProxyModel::DefaultVariantFilterFunction(const QVariant &cell, const ZYLSysVariantFilter &filter)
{
    return filter.Accepts(cell);
}

bool ZYLCmnFilterProxyModel::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    if (d->keepingRows)
        return mapFromSource(sourceModel()->index(sourceRow, 0, sourceParent)).isValid();
    // Without a function of its own an accept-all filter keeps every row, so the common
    // unfiltered state never reads a cell.
    if (!AcceptsAllRows()) {
        const QAbstractItemModel *source = sourceModel();
        const int role = filterRole();
        const auto passes = [&](int column) {
            const QVariant cell = source->index(sourceRow, column, sourceParent).data(role);
            return d->function ? d->function(cell, d->filter) : DefaultVariantFilterFunction(cell, d->filter);
        };
        const int columns = source->columnCount(sourceParent);
        const int keyColumn = filterKeyColumn();
        if (keyColumn < 0) {
            bool anyPasses = false;
            for (int column = 0; column < columns && !anyPasses; ++column)
                anyPasses = passes(column);
            if (!anyPasses)
                return false;
        } else if (keyColumn < columns && !passes(keyColumn)) {
            // A key column past the last one filters nothing, as in the base class.
            return false;
        }
    }
    return QSortFilterProxyModel::filterAcceptsRow(sourceRow, sourceParent);
}
