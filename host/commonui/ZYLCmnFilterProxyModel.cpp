// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmnFilterProxyModel.h"

#include "ZYLSysVariantFilter.h"

#include <utility>

struct ZYLCmnFilterProxyModel::Data {
    FilterFunction function;
    ZYLSysVariantFilter filter;
};

ZYLCmnFilterProxyModel::ZYLCmnFilterProxyModel(QObject *parent)
    : QSortFilterProxyModel(parent)
    , d(std::make_unique<Data>())
{
}

ZYLCmnFilterProxyModel::~ZYLCmnFilterProxyModel() = default;

void ZYLCmnFilterProxyModel::SetFilterFunction(FilterFunction function)
{
    d->function = std::move(function);
    invalidateFilter();
}

void ZYLCmnFilterProxyModel::SetVariantFilter(const ZYLSysVariantFilter &filter)
{
    d->filter = filter;
    invalidateFilter();
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
    // Without a function of its own an accept-all filter keeps every row, so the common
    // unfiltered state never reads a cell.
    if (d->function || !d->filter.IsAcceptAll()) {
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
