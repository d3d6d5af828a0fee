// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmnFilterProxyModel.h"

#include "ZYLSysTypedColumnModel.h"
#include "ZYLSysVariantFilter.h"

#include <QScopedValueRollback>
#include <QStringView>

#include <string>
#include <utility>
#include <vector>

namespace {

using Comparison = ZYLSysVariantFilter::ComparisonType;
using DefaultFunction = bool (*)(const QVariant &, const ZYLSysVariantFilter &);

// Appends `text` case-folded to `out`, code point by code point as the case-insensitive
// comparisons of QString fold (a surrogate pair as one code point), so that comparing folded
// texts exactly gives what comparing the texts without regard to case gives.
void AppendFolded(std::u16string &out, QStringView text)
{
    // A code point folds to one of the same length, so the text's room is made at once.
    const qsizetype n = text.size();
    const size_t at = out.size();
    out.resize(at + size_t(n));
    char16_t *folded = out.data() + at;
    const char16_t *in = text.utf16();
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t c = in[i];
        if (c < 0x80) {
            folded[i] = c >= u'A' && c <= u'Z' ? char16_t(c + (u'a' - u'A')) : c;
        } else if (QChar::isHighSurrogate(c) && i + 1 < n && QChar::isLowSurrogate(in[i + 1])) {
            const char32_t code = QChar::toCaseFolded(QChar::surrogateToUcs4(c, in[i + 1]));
            folded[i] = QChar::highSurrogate(code);
            folded[++i] = QChar::lowSurrogate(code);
        } else {
            folded[i] = char16_t(QChar::toCaseFolded(char32_t(c)));
        }
    }
}

// Appends the folded text of a cell, without a copy of the string when the cell holds one.
void AppendFoldedCell(std::u16string &out, const QVariant &cell)
{
    if (cell.metaType() == QMetaType::fromType<QString>())
        AppendFolded(out, *static_cast<const QString *>(cell.constData()));
    else
        AppendFolded(out, cell.toString());
}

// The text comparisons of ZYLSysVariantFilter, on folded texts.
bool CompareFolded(QStringView cell, QStringView base, Comparison comparison)
{
    switch (comparison) {
    case ZYLSysVariantFilter::BeginsWith:
        return cell.startsWith(base);
    case ZYLSysVariantFilter::EndsWith:
        return cell.endsWith(base);
    case ZYLSysVariantFilter::Contains:
        return cell.contains(base);
    case ZYLSysVariantFilter::DoesNotContain:
        return !cell.contains(base);
    case ZYLSysVariantFilter::Equal:
        return cell.compare(base) == 0;
    case ZYLSysVariantFilter::NotEqual:
        return cell.compare(base) != 0;
    case ZYLSysVariantFilter::Greater:
        return cell.compare(base) > 0;
    case ZYLSysVariantFilter::GreaterOrEqual:
        return cell.compare(base) >= 0;
    case ZYLSysVariantFilter::Less:
        return cell.compare(base) < 0;
    case ZYLSysVariantFilter::LessOrEqual:
        return cell.compare(base) <= 0;
    }
    return false;
}

} // namespace

struct ZYLCmnFilterProxyModel::Data {
    FilterFunction function;
    BitsFunction bitsFunction;
    ZYLSysVariantFilter filter;
    // Set while a base-class setter runs its row-by-row re-filter: rows then keep their state.
    bool keepingRows = false;
    // With keepingRows: the column read gives the state of the rows, the mapping need not.
    bool keptFromColumn = false;

    // How a full re-filter reads the key column at once (see the header).
    enum class Mode { Cells, Texts, Numbers, Bits };
    Mode mode = Mode::Cells;
    // The filter's text folded, for Mode::Texts.
    std::u16string foldedBase;
    // The key column as read for the mode: texts folded, one after the other (row r's text
    // ends at ends[r]), numbers or bit sets. When dropped, the buffers keep their memory for
    // the next read of the column: first touches of fresh memory cost more than reading the
    // column itself.
    struct Column {
        bool valid = false;
        Mode mode = Mode::Cells;
        int column = -1;
        int role = -1;
        std::u16string folded;
        std::vector<qsizetype> ends;
        std::vector<double> numbers;
        std::vector<quint64> bits;
    };
    Column cache;
    // Set by the re-filters this class starts (a pass over every row, worth a cached column);
    // cleared when the source changes, whose follow-up re-filters the base class does row by
    // row and which should not read the whole column for one edited cell, and when the source
    // does not offer the column in the mode's type.
    bool columnWanted = false;
    // The pass over every row of a re-filter this class started, from its row 0 to passEnd:
    // its rows come one after the other with no other call in between, so nothing can change
    // the filter, the key column or the regular expression during it. Its rows are judged
    // without those checks (all pass, or from the read column) and the regular expression of
    // the base class, looked at once, is skipped when it is empty. passRow is the next row of
    // the pass, or -1 when none runs.
    int passRow = -1;
    int passEnd = 0;
    bool passAll = false;
    bool passWithoutPattern = false;
    std::vector<QMetaObject::Connection> sourceConnections;

    void UpdateMode()
    {
        const bool defaultFunction =
            !function || (function.target<DefaultFunction>()
                          && *function.target<DefaultFunction>() == &ZYLCmnFilterProxyModel::DefaultVariantFilterFunction);
        const bool textComparison = filter.GetFilterType() == ZYLSysVariantFilter::Text
                                    || filter.GetComparisonType() <= ZYLSysVariantFilter::DoesNotContain;
        foldedBase.clear();
        if (filter.IsAcceptAll())
            mode = Mode::Cells;
        else if (bitsFunction)
            mode = Mode::Bits;
        else if (defaultFunction && textComparison)
            mode = Mode::Texts;
        else if (defaultFunction && filter.ComparesNumbers())
            mode = Mode::Numbers;
        else
            mode = Mode::Cells;
        if (mode == Mode::Texts)
            AppendFolded(foldedBase, filter.GetBaseValue().toString());
    }

    // Reads the key column for the mode; false when the source does not offer it so.
    bool Read(const QAbstractItemModel &source, int column, int role)
    {
        const int rows = source.rowCount();
        const auto *typed = dynamic_cast<const ZYLSysTypedColumnModel *>(&source);
        switch (mode) {
        case Mode::Cells:
            return false;
        case Mode::Numbers:
            return typed && typed->ReadNumbers(column, role, cache.numbers) && cache.numbers.size() == size_t(rows);
        case Mode::Bits:
            return typed && typed->ReadBits(column, role, cache.bits) && cache.bits.size() == size_t(rows);
        case Mode::Texts:
            break;
        }
        cache.folded.clear();
        cache.ends.clear();
        cache.ends.reserve(size_t(rows));
        // Room for texts of a few dozen characters; pages never written cost nothing.
        cache.folded.reserve(size_t(rows) * 32);
        for (int row = 0; row < rows; ++row) {
            AppendFoldedCell(cache.folded, source.index(row, column).data(role));
            cache.ends.push_back(qsizetype(cache.folded.size()));
        }
        return true;
    }

    // The outcome for a row of the cached column.
    bool Accepts(size_t row) const
    {
        switch (cache.mode) {
        case Mode::Numbers:
            return filter.AcceptsNumber(cache.numbers[row]);
        case Mode::Bits:
            return bitsFunction(cache.bits[row], filter);
        default:
            break;
        }
        const qsizetype begin = row > 0 ? cache.ends[row - 1] : 0;
        const QStringView cell(cache.folded.data() + begin, cache.ends[row] - begin);
        return CompareFolded(cell, foldedBase, filter.GetComparisonType());
    }
    size_t CachedRows() const
    {
        switch (cache.mode) {
        case Mode::Numbers: return cache.numbers.size();
        case Mode::Bits: return cache.bits.size();
        default: return cache.ends.size();
        }
    }
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
void ZYLCmnFilterProxyModel::Refilter()
{
    d->columnWanted = true;
    d->passRow = -1;
    invalidate();
}

void ZYLCmnFilterProxyModel::SetFilterFunction(FilterFunction function, BitsFunction bitsFunction)
{
    d->function = std::move(function);
    d->bitsFunction = std::move(bitsFunction);
    d->UpdateMode();
    Refilter();
}

void ZYLCmnFilterProxyModel::SetVariantFilter(const ZYLSysVariantFilter &filter)
{
    d->filter = filter;
    d->UpdateMode();
    Refilter();
}

void ZYLCmnFilterProxyModel::SetFilter(FilterFunction function, BitsFunction bitsFunction, int keyColumn, int role,
                                       const ZYLSysVariantFilter &filter)
{
    // The layout change that invalidate() announces, told once around all the settings: each
    // setting told by itself would leave the views holding rows of a dropped mapping, which
    // they would then have re-filtered only to be dropped again by the next setting.
    emit layoutAboutToBeChanged();
    {
        const QSignalBlocker blocker(this);
        // The base class setters re-filter row by row; let that pass find nothing to change.
        // When every row passes now, it is a pass over every row in order, which needs no
        // look at the mapping.
        const bool withoutPattern = filterRegularExpression().pattern().isEmpty();
        const bool keep = !AcceptsAllRows() || !withoutPattern;
        const QScopedValueRollback<bool> keeping(d->keepingRows, keep);
        // The rows' state is that of the current comparison, which the column read gives.
        const Data::Column &cache = d->cache;
        const QScopedValueRollback<bool> keptFromColumn(
            d->keptFromColumn, keep && withoutPattern && cache.valid && cache.mode == d->mode
                                   && cache.column == filterKeyColumn() && cache.role == filterRole());
        const auto set = [this, keep](void (QSortFilterProxyModel::*setter)(int), int value) {
            d->columnWanted = !keep;
            (this->*setter)(value);
        };
        if (keyColumn != filterKeyColumn())
            set(&QSortFilterProxyModel::setFilterKeyColumn, keyColumn);
        if (role != filterRole())
            set(&QSortFilterProxyModel::setFilterRole, role);
    }
    d->function = std::move(function);
    d->bitsFunction = std::move(bitsFunction);
    d->filter = filter;
    d->UpdateMode();
    {
        const QSignalBlocker blocker(this);
        Refilter();
    }
    emit layoutChanged();
}

void ZYLCmnFilterProxyModel::setFilterKeyColumn(int column)
{
    SetAndRefilter(&QSortFilterProxyModel::setFilterKeyColumn, column);
}

void ZYLCmnFilterProxyModel::setFilterRole(int role)
{
    SetAndRefilter(&QSortFilterProxyModel::setFilterRole, role);
}

void ZYLCmnFilterProxyModel::DropColumn()
{
    d->cache.valid = false;
    d->columnWanted = false;
    d->passRow = -1;
}

void ZYLCmnFilterProxyModel::setSourceModel(QAbstractItemModel *model)
{
    for (const QMetaObject::Connection &connection : d->sourceConnections)
        disconnect(connection);
    d->sourceConnections.clear();
    DropColumn();
    d->cache = {};
    // Connected before the base class connects its own handlers, so that the cached column
    // is gone before they re-filter the rows a change touched.
    if (model) {
        auto &c = d->sourceConnections;
        const auto drop = [this] { DropColumn(); };
        c.push_back(connect(model, &QAbstractItemModel::dataChanged, this,
                            [this](const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles) {
                                const Data::Column &cache = d->cache;
                                if (!cache.valid || topLeft.parent().isValid())
                                    return;
                                const bool column = topLeft.column() <= cache.column && cache.column <= bottomRight.column();
                                if (column && (roles.isEmpty() || roles.contains(cache.role)))
                                    DropColumn();
                            }));
        c.push_back(connect(model, &QAbstractItemModel::rowsInserted, this, drop));
        c.push_back(connect(model, &QAbstractItemModel::rowsRemoved, this, drop));
        c.push_back(connect(model, &QAbstractItemModel::rowsMoved, this, drop));
        c.push_back(connect(model, &QAbstractItemModel::columnsInserted, this, drop));
        c.push_back(connect(model, &QAbstractItemModel::columnsRemoved, this, drop));
        c.push_back(connect(model, &QAbstractItemModel::columnsMoved, this, drop));
        c.push_back(connect(model, &QAbstractItemModel::layoutChanged, this, drop));
        c.push_back(connect(model, &QAbstractItemModel::modelReset, this, drop));
        c.push_back(connect(model, &QObject::destroyed, this, drop));
    }
    QSortFilterProxyModel::setSourceModel(model);
}

bool ZYLCmnFilterProxyModel::AcceptsAllRows() const
{
    return !d->function && d->filter.IsAcceptAll();
}

void ZYLCmnFilterProxyModel::SetAndRefilter(void (QSortFilterProxyModel::*setter)(int), int value)
{
    DropColumn();
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
    Refilter();
}

const ZYLSysVariantFilter &ZYLCmnFilterProxyModel::GetVariantFilter() const
{
    return d->filter;
}

bool ZYLCmnFilterProxyModel::DefaultVariantFilterFunction(const QVariant &cell, const ZYLSysVariantFilter &filter)
{
    return filter.Accepts(cell);
}

// Makes sure the key column is read for the mode, reading it when a full re-filter wants it;
// false when rows must be judged from their cells. A valid read is of a column that existed
// then; any change of the source's columns drops it.
bool ZYLCmnFilterProxyModel::EnsureColumn(int column, int role) const
{
    if (d->mode == Data::Mode::Cells || column < 0)
        return false;
    Data::Column &cache = d->cache;
    if (cache.valid && cache.mode == d->mode && cache.column == column && cache.role == role)
        return true;
    cache.valid = false;
    const QAbstractItemModel *source = sourceModel();
    if (!d->columnWanted || column >= source->columnCount())
        return false;
    if (!d->Read(*source, column, role)) {
        // Not offered: this re-filter reads the cells one by one.
        d->columnWanted = false;
        return false;
    }
    cache.mode = d->mode;
    cache.column = column;
    cache.role = role;
    cache.valid = true;
    return true;
}

// Starts the pass of a wanted re-filter at its row 0 (see Data::passRow) when its rows need
// no cell read one by one.
bool ZYLCmnFilterProxyModel::StartPass(const QModelIndex &sourceParent) const
{
    if (!d->columnWanted || d->keepingRows || sourceParent.isValid())
        return false;
    d->passAll = AcceptsAllRows();
    if (!d->passAll && !EnsureColumn(filterKeyColumn(), filterRole()))
        return false;
    d->columnWanted = false;
    d->passEnd = sourceModel()->rowCount();
    d->passWithoutPattern = filterRegularExpression().pattern().isEmpty();
    return d->passAll || d->CachedRows() == size_t(d->passEnd);
}

bool ZYLCmnFilterProxyModel::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    const bool inPass = sourceRow == d->passRow && !sourceParent.isValid();
    d->passRow = -1;
    if (inPass || (sourceRow == 0 && StartPass(sourceParent))) {
        d->passRow = sourceRow + 1 < d->passEnd ? sourceRow + 1 : -1;
        return (d->passAll || d->Accepts(size_t(sourceRow)))
               && (d->passWithoutPattern || QSortFilterProxyModel::filterAcceptsRow(sourceRow, sourceParent));
    }
    if (d->keepingRows) {
        if (d->keptFromColumn && !sourceParent.isValid() && size_t(sourceRow) < d->CachedRows())
            return d->Accepts(size_t(sourceRow));
        return mapFromSource(sourceModel()->index(sourceRow, 0, sourceParent)).isValid();
    }
    // Without a function of its own an accept-all filter keeps every row, so the common
    // unfiltered state never reads a cell.
    if (!AcceptsAllRows()) {
        const int keyColumn = filterKeyColumn();
        const int role = filterRole();
        if (!sourceParent.isValid() && EnsureColumn(keyColumn, role) && size_t(sourceRow) < d->CachedRows()) {
            if (!d->Accepts(size_t(sourceRow)))
                return false;
            return QSortFilterProxyModel::filterAcceptsRow(sourceRow, sourceParent);
        }
        const QAbstractItemModel *source = sourceModel();
        const int columns = source->columnCount(sourceParent);
        const auto passes = [&](int column) {
            const QVariant cell = source->index(sourceRow, column, sourceParent).data(role);
            return d->function ? d->function(cell, d->filter) : DefaultVariantFilterFunction(cell, d->filter);
        };
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
