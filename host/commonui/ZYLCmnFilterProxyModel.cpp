// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmnFilterProxyModel.h"

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
    ZYLSysVariantFilter filter;
    // Set while a base-class setter runs its row-by-row re-filter: rows then keep their state.
    bool keepingRows = false;

    // The filter's text folded, when the filter and function compare texts (see the header).
    std::optional<std::u16string> foldedBase;
    // The key column's texts folded, one after the other; row r's text ends at ends[r]. When
    // dropped, the buffers keep their memory for the next read of the column: first touches
    // of fresh memory cost more than reading the column itself.
    struct Texts {
        bool valid = false;
        int column = -1;
        int role = -1;
        std::u16string folded;
        std::vector<qsizetype> ends;
    };
    Texts texts;
    // Set by the re-filters this class starts (a pass over every row, worth a cached column);
    // cleared when the source changes, whose follow-up re-filters the base class does row by
    // row and which should not read the whole column for one edited cell.
    bool textsWanted = false;
    std::vector<QMetaObject::Connection> sourceConnections;

    void UpdateFoldedBase()
    {
        const bool defaultFunction =
            !function || (function.target<DefaultFunction>()
                          && *function.target<DefaultFunction>() == &ZYLCmnFilterProxyModel::DefaultVariantFilterFunction);
        const bool textComparison = !filter.IsAcceptAll()
                                    && (filter.GetFilterType() == ZYLSysVariantFilter::Text
                                        || filter.GetComparisonType() <= ZYLSysVariantFilter::DoesNotContain);
        foldedBase.reset();
        if (defaultFunction && textComparison) {
            foldedBase.emplace();
            AppendFolded(*foldedBase, filter.GetBaseValue().toString());
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
    d->textsWanted = true;
    invalidate();
}

void ZYLCmnFilterProxyModel::SetFilterFunction(FilterFunction function)
{
    d->function = std::move(function);
    d->UpdateFoldedBase();
    Refilter();
}

void ZYLCmnFilterProxyModel::SetVariantFilter(const ZYLSysVariantFilter &filter)
{
    d->filter = filter;
    d->UpdateFoldedBase();
    Refilter();
}

void ZYLCmnFilterProxyModel::setFilterKeyColumn(int column)
{
    SetAndRefilter(&QSortFilterProxyModel::setFilterKeyColumn, column);
}

void ZYLCmnFilterProxyModel::setFilterRole(int role)
{
    SetAndRefilter(&QSortFilterProxyModel::setFilterRole, role);
}

void ZYLCmnFilterProxyModel::DropTexts()
{
    d->texts.valid = false;
    d->textsWanted = false;
}

void ZYLCmnFilterProxyModel::setSourceModel(QAbstractItemModel *model)
{
    for (const QMetaObject::Connection &connection : d->sourceConnections)
        disconnect(connection);
    d->sourceConnections.clear();
    DropTexts();
    d->texts = {};
    // Connected before the base class connects its own handlers, so that the cached column
    // is gone before they re-filter the rows a change touched.
    if (model) {
        auto &c = d->sourceConnections;
        const auto drop = [this] { DropTexts(); };
        c.push_back(connect(model, &QAbstractItemModel::dataChanged, this,
                            [this](const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles) {
                                const Data::Texts &texts = d->texts;
                                if (!texts.valid || topLeft.parent().isValid())
                                    return;
                                const bool column = topLeft.column() <= texts.column && texts.column <= bottomRight.column();
                                if (column && (roles.isEmpty() || roles.contains(texts.role)))
                                    DropTexts();
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
    DropTexts();
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

// The outcome from the folded key column, reading the column first when a full re-filter
// wants it; empty when the row must be judged from its cell.
std::optional<bool> ZYLCmnFilterProxyModel::AcceptsFromTexts(int sourceRow, const QModelIndex &sourceParent) const
{
    const QAbstractItemModel *source = sourceModel();
    const int column = filterKeyColumn();
    const int role = filterRole();
    if (!d->foldedBase || sourceParent.isValid() || column < 0)
        return std::nullopt;
    Data::Texts &texts = d->texts;
    if (texts.valid && (texts.column != column || texts.role != role))
        texts.valid = false;
    if (!texts.valid) {
        if (!d->textsWanted || column >= source->columnCount())
            return std::nullopt;
        const int rows = source->rowCount();
        texts.folded.clear();
        texts.ends.clear();
        texts.ends.reserve(size_t(rows));
        // Room for texts of a few dozen characters; pages never written cost nothing.
        texts.folded.reserve(size_t(rows) * 32);
        for (int row = 0; row < rows; ++row) {
            AppendFoldedCell(texts.folded, source->index(row, column).data(role));
            texts.ends.push_back(qsizetype(texts.folded.size()));
        }
        texts.column = column;
        texts.role = role;
        texts.valid = true;
    }
    if (sourceRow < 0 || size_t(sourceRow) >= texts.ends.size())
        return std::nullopt;
    const qsizetype begin = sourceRow > 0 ? texts.ends[size_t(sourceRow) - 1] : 0;
    const QStringView cell(texts.folded.data() + begin, texts.ends[size_t(sourceRow)] - begin);
    return CompareFolded(cell, *d->foldedBase, d->filter.GetComparisonType());
}

bool ZYLCmnFilterProxyModel::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    if (d->keepingRows)
        return mapFromSource(sourceModel()->index(sourceRow, 0, sourceParent)).isValid();
    // Without a function of its own an accept-all filter keeps every row, so the common
    // unfiltered state never reads a cell.
    if (!AcceptsAllRows()) {
        const QAbstractItemModel *source = sourceModel();
        const int columns = source->columnCount(sourceParent);
        const int keyColumn = filterKeyColumn();
        if (const std::optional<bool> fromTexts = keyColumn < columns ? AcceptsFromTexts(sourceRow, sourceParent)
                                                                      : std::nullopt) {
            if (!*fromTexts)
                return false;
            return QSortFilterProxyModel::filterAcceptsRow(sourceRow, sourceParent);
        }
        const int role = filterRole();
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
