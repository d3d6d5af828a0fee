// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPDetailedTableFilter.h"

#include "ZYLTPDetailedTableModel.h"

#include "ZYLCompTowMask.h"
#include "ZYLSysException.h"
#include "ZYLSysValue.h"

#include <QRegularExpression>

#include <limits>
#include <memory>

namespace {

using Comparison = ZYLSysVariantFilter::ComparisonType;
using Model = ZYLTPDetailedTableModel;

// Reads a tow list; an empty text, and for a filter a text reading as the integer 0, is the
// empty set. Throws ZYLSysException for an unreadable list.
ZYLCompTowMask ReadMask(const QString &text, bool zeroIsEmpty)
{
    bool isInteger = false;
    if (text.isEmpty() || (zeroIsEmpty && text.trimmed().toLongLong(&isInteger) == 0 && isInteger))
        return {};
    return ZYLCompTowMask::FromString(text);
}

bool CompareMasks(const ZYLCompTowMask &cell, const ZYLCompTowMask &filter, Comparison comparison)
{
    switch (comparison) {
    case ZYLSysVariantFilter::Contains:
        return filter.IsAllDisabled() ? cell.IsAllDisabled() : (filter & cell) == filter;
    case ZYLSysVariantFilter::DoesNotContain:
        return filter.IsAllDisabled() ? !cell.IsAllDisabled() : (filter & cell).IsAllDisabled();
    case ZYLSysVariantFilter::Equal:
        return filter == cell;
    case ZYLSysVariantFilter::NotEqual:
        return filter != cell;
    default:
        return false;
    }
}

// The tow mask comparison handed to a proxy. Cells of neighbouring rows mostly repeat a tow
// list, so the last text read is kept with its set; the filter's set is read once.
ZYLTPDetailedTableFilter::Function MakeTowMaskFunction(const ZYLCompTowMask &filterMask)
{
    struct Last {
        QString text;
        std::optional<ZYLCompTowMask> mask;
    };
    auto last = std::make_shared<Last>();
    return [filterMask, last](const QVariant &cell, const ZYLSysVariantFilter &filter) {
        const QString text = cell.toString();
        if (!last->mask || text != last->text) {
            last->text = text;
            try {
                last->mask = ReadMask(text, false);
            } catch (const ZYLSysException &) {
                last->mask.reset();
                return false;
            }
        }
        return CompareMasks(*last->mask, filterMask, filter.GetComparisonType());
    };
}

// The display text of the first cell of a column that reads as a value with a unit.
std::optional<ZYLSysValue> FirstValue(const Model &model, int column)
{
    for (int row = 0; row < model.rowCount(); ++row) {
        ZYLSysValue value;
        if (ZYLSysValue::Parse(model.index(row, column).data().toString(), &value)
            && value.GetMagnitude() != ZYLSysValue::None)
            return value;
    }
    return std::nullopt;
}

} // namespace

QList<int> ZYLTPDetailedTableFilter::GetConditions(int columnType)
{
    switch (columnType) {
    case Model::Text: return {0, 1, 2, 3};
    case Model::TowMask: return {2, 3, Separator, 4, 5};
    case Model::Integer: case Model::PhysicalValue: case Model::Time: return {4, 5, 6, 7, 8, 9};
    default: return {};
    }
}

QString ZYLTPDetailedTableFilter::GetConditionLabel(int code)
{
    static const char *const labels[] = {
        QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "begins with"),
        QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "ends with"),
        QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "contains"),
        QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "does not contain"),
        QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "is equal to"),
        QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "is not equal to"),
        QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "greater than"),
        QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "greater than or equal to"),
        QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "less than"),
        QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "less than or equal to")};
    if (code == Separator)
        return QStringLiteral(QT_TRANSLATE_NOOP("ZYLTPDetailedInfoWidget", "-----------------"));
    return code >= 0 && code < 10 ? QString::fromLatin1(labels[code]) : QString();
}

std::optional<int> ZYLTPDetailedTableFilter::FindCondition(const QString &text)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (isNumber)
        return number >= 0 && number < 10 ? std::optional<int>(number) : std::nullopt;
    for (int code = 0; code < 10; ++code) {
        if (GetConditionLabel(code).compare(text.simplified(), Qt::CaseInsensitive) == 0)
            return code;
    }
    return std::nullopt;
}

bool ZYLTPDetailedTableFilter::CompareTowMasks(const QString &cellText, const QString &filterText,
                                               ZYLSysVariantFilter::ComparisonType comparison)
{
    try {
        return CompareMasks(ReadMask(cellText, false), ReadMask(filterText, true), comparison);
    } catch (const ZYLSysException &) {
        return false;
    }
}

ZYLTPDetailedTableFilter ZYLTPDetailedTableFilter::Create(const ZYLTPDetailedTableModel &model,
                                                          const std::optional<QString> &label,
                                                          std::optional<int> condition, const QString &value)
{
    ZYLTPDetailedTableFilter f;
    const auto refuse = [&f](Error error, const QString &message = {}) {
        f.m_error = error;
        f.m_message = message;
        return f;
    };
    if (!label)
        return refuse(NoProperty);
    if (!condition)
        return refuse(NoCondition);
    if (value.isEmpty())
        return refuse(NoValue);
    f.m_column = model.FindSection(*label);
    if (model.GetTable() == Model::Operation || f.m_column < 0)
        return refuse(NoProperty);
    const int type = model.GetColumnType(f.m_column);
    try {
        double number = 0.0;
        if (type == Model::PhysicalValue) {
            // The column's quantity comes from its values; a column without any has nothing
            // to compare with, which is refused rather than compared with zero.
            std::optional<ZYLSysValue> quantity = FirstValue(model, f.m_column);
            if (!quantity)
                return refuse(NoNumber);
            const ZYLSysValue::Unit unit = ZYLSysValue::GetMagnitudeCurrentUnit(quantity->GetMagnitude());
            quantity->SetValue(value, unit);
            number = ZYLSysValue::ConvertFromSystemUnit(quantity->GetValue(), unit);
            f.m_role = Model::NumberRole;
        }
        if (*condition == Separator || !GetConditions(type).contains(*condition))
            return refuse(NoCondition);
        const auto comparison = Comparison(*condition);
        switch (type) {
        case Model::TowMask:
        {
            const ZYLCompTowMask filterMask = ReadMask(value, true);
            f.m_function = MakeTowMaskFunction(filterMask);
            f.m_bitsFunction = [filterMask](quint64 bits, const ZYLSysVariantFilter &filter) {
                return CompareMasks(ZYLCompTowMask(bits), filterMask, filter.GetComparisonType());
            };
            f.m_filter = ZYLSysVariantFilter(value, comparison, 0.0, ZYLSysVariantFilter::Other);
            break;
        }
        case Model::PhysicalValue:
            f.m_filter = ZYLSysVariantFilter(number, comparison, 1e-07, ZYLSysVariantFilter::Other);
            break;
        case Model::Integer:
        case Model::Time: {
            static const QRegularExpression numberPattern(QStringLiteral("(-?\\d+\\.\\d+)|(\\d+)"));
            const QRegularExpressionMatch match = numberPattern.match(value);
            if (!match.hasMatch())
                return refuse(NoNumber);
            if (type == Model::Time)
                f.m_role = Model::NumberRole;
            f.m_filter = ZYLSysVariantFilter(match.captured(0), comparison, 1e-07, ZYLSysVariantFilter::Other);
            break;
        }
        default:
            f.m_filter = ZYLSysVariantFilter::CreateFilter(value, ZYLSysVariantFilter::Text, comparison,
                                                           std::numeric_limits<double>::epsilon());
            break;
        }
    } catch (const ZYLSysException &e) {
        return refuse(InvalidValue, e.GetMessage());
    }
    return f;
}

bool ZYLTPDetailedTableFilter::Accepts(const QAbstractItemModel &model, int row) const
{
    const QVariant cell = model.index(row, m_column).data(m_role);
    return m_function ? m_function(cell, m_filter) : m_filter.Accepts(cell);
}
