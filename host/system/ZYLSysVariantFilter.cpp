// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysVariantFilter.h"

#include "ZYLSysException.h"
#include "ZYLSysLocalizationManager.h"
#include "ZYLSysValue.h"

#include <QCoreApplication>

#include <cmath>
#include <optional>
#include <utility>

namespace {

enum class Kind { Text, Number, Quantity };

// A side of a comparison as far as numbers are concerned. For a quantity, number is the value
// in its system unit.
struct Operand {
    Kind kind = Kind::Text;
    double number = 0.0;
    ZYLSysValue::Magnitude magnitude = ZYLSysValue::None;
};

Operand Number(double value)
{
    if (!std::isfinite(value))
        return {};
    return {Kind::Number, value, ZYLSysValue::None};
}

Operand Quantity(const ZYLSysValue &value)
{
    if (value.GetMagnitude() == ZYLSysValue::None)
        return Number(value.GetValue());
    return {Kind::Quantity, value.GetValue(), value.GetMagnitude()};
}

Operand Classify(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Double: case QMetaType::Float: case QMetaType::Int: case QMetaType::UInt:
    case QMetaType::LongLong: case QMetaType::ULongLong: case QMetaType::Short: case QMetaType::UShort:
    case QMetaType::Long: case QMetaType::ULong:
        return Number(value.toDouble());
    case QMetaType::QString: {
        // Plain numbers first: cheaper than looking for a unit suffix, and the common case.
        const QString text = value.toString();
        double number = 0.0;
        if (ZYLSysLocalizationManager::GetManager()->ReadNumber(text, &number))
            return Number(number);
        ZYLSysValue quantity;
        if (ZYLSysValue::Parse(text, &quantity))
            return Quantity(quantity);
        return {};
    }
    default:
        if (value.metaType() == QMetaType::fromType<ZYLSysValue>())
            return Quantity(value.value<ZYLSysValue>());
        return {};
    }
}

// A plain number beside a quantity is read in the quantity's display unit.
double InSystemUnit(double number, ZYLSysValue::Magnitude magnitude)
{
    return ZYLSysValue::ConvertToSystemUnit(number, ZYLSysValue::GetMagnitudeCurrentUnit(magnitude));
}

std::optional<std::pair<double, double>> ComparableNumbers(const Operand &cell, const Operand &base)
{
    if (cell.kind == Kind::Text || base.kind == Kind::Text)
        return std::nullopt;
    if (cell.kind == base.kind) {
        if (cell.magnitude != base.magnitude)
            return std::nullopt;
        return std::make_pair(cell.number, base.number);
    }
    if (cell.kind == Kind::Quantity)
        return std::make_pair(cell.number, InSystemUnit(base.number, cell.magnitude));
    return std::make_pair(InSystemUnit(cell.number, base.magnitude), base.number);
}

bool CompareNumbers(double cell, double base, ZYLSysVariantFilter::ComparisonType comparison, double tolerance)
{
    switch (comparison) {
    case ZYLSysVariantFilter::Equal:
        return std::abs(cell - base) <= tolerance;
    case ZYLSysVariantFilter::NotEqual:
        return std::abs(cell - base) > tolerance;
    case ZYLSysVariantFilter::Greater:
        return cell > base + tolerance;
    case ZYLSysVariantFilter::GreaterOrEqual:
        return cell >= base - tolerance;
    case ZYLSysVariantFilter::Less:
        return cell < base - tolerance;
    case ZYLSysVariantFilter::LessOrEqual:
        return cell <= base + tolerance;
    default:
        return false;
    }
}

// A numeric comparison; a side that is not numeric passes only "not equal".
bool CompareOperands(const Operand &cell, const Operand &base, ZYLSysVariantFilter::ComparisonType comparison,
                     double tolerance)
{
    const std::optional<std::pair<double, double>> numbers = ComparableNumbers(cell, base);
    if (!numbers)
        return comparison == ZYLSysVariantFilter::NotEqual;
    return CompareNumbers(numbers->first, numbers->second, comparison, tolerance);
}

bool CompareTexts(const QString &cell, const QString &base, ZYLSysVariantFilter::ComparisonType comparison)
{
    switch (comparison) {
    case ZYLSysVariantFilter::BeginsWith:
        return cell.startsWith(base, Qt::CaseInsensitive);
    case ZYLSysVariantFilter::EndsWith:
        return cell.endsWith(base, Qt::CaseInsensitive);
    case ZYLSysVariantFilter::Contains:
        return cell.contains(base, Qt::CaseInsensitive);
    case ZYLSysVariantFilter::DoesNotContain:
        return !cell.contains(base, Qt::CaseInsensitive);
    case ZYLSysVariantFilter::Equal:
        return cell.compare(base, Qt::CaseInsensitive) == 0;
    case ZYLSysVariantFilter::NotEqual:
        return cell.compare(base, Qt::CaseInsensitive) != 0;
    case ZYLSysVariantFilter::Greater:
        return cell.compare(base, Qt::CaseInsensitive) > 0;
    case ZYLSysVariantFilter::GreaterOrEqual:
        return cell.compare(base, Qt::CaseInsensitive) >= 0;
    case ZYLSysVariantFilter::Less:
        return cell.compare(base, Qt::CaseInsensitive) < 0;
    case ZYLSysVariantFilter::LessOrEqual:
        return cell.compare(base, Qt::CaseInsensitive) <= 0;
    }
    return false;
}

} // namespace

struct ZYLSysVariantFilter::Data {
    QVariant base;
    ComparisonType comparison = Contains;
    double tolerance = 0.0;
    FilterType type = Text;
    bool acceptAll = true;
    // Derived from base once, so that filtering a large table reads only the cells.
    QString baseText;
    Operand baseOperand;
};

ZYLSysVariantFilter::ZYLSysVariantFilter()
{
    static const std::shared_ptr<const Data> acceptAll = std::make_shared<const Data>();
    d = acceptAll;
}

ZYLSysVariantFilter::ZYLSysVariantFilter(const QVariant &base, ComparisonType comparison, double tolerance,
                                         FilterType type)
{
    if (comparison < BeginsWith || comparison > LessOrEqual)
        throw ZYLSysException(QCoreApplication::translate("ZYLSysVariantFilter", "Unknown comparison %1.")
                                  .arg(int(comparison)));
    if (type != Text && type != Other)
        throw ZYLSysException(QCoreApplication::translate("ZYLSysVariantFilter", "Unknown filter type %1.")
                                  .arg(int(type)));
    if (!(tolerance >= 0.0))
        throw ZYLSysException(QCoreApplication::translate("ZYLSysVariantFilter", "Invalid tolerance %1.")
                                  .arg(tolerance));
    auto data = std::make_shared<Data>();
    data->base = base;
    data->comparison = comparison;
    data->tolerance = tolerance;
    data->type = type;
    data->acceptAll = false;
    data->baseText = base.toString();
    data->baseOperand = Classify(base);
    d = std::move(data);
}

ZYLSysVariantFilter::ZYLSysVariantFilter(const ZYLSysVariantFilter &other) = default;
ZYLSysVariantFilter &ZYLSysVariantFilter::operator=(const ZYLSysVariantFilter &other) = default;
ZYLSysVariantFilter::~ZYLSysVariantFilter() = default;

ZYLSysVariantFilter ZYLSysVariantFilter::CreateFilter(const QVariant &base, FilterType type,
                                                      ComparisonType comparison, double tolerance)
{
    return ZYLSysVariantFilter(base, comparison, tolerance, type);
}

bool ZYLSysVariantFilter::IsAcceptAll() const
{
    return d->acceptAll;
}

QVariant ZYLSysVariantFilter::GetBaseValue() const
{
    return d->base;
}

ZYLSysVariantFilter::ComparisonType ZYLSysVariantFilter::GetComparisonType() const
{
    return d->comparison;
}

double ZYLSysVariantFilter::GetTolerance() const
{
    return d->tolerance;
}

ZYLSysVariantFilter::FilterType ZYLSysVariantFilter::GetFilterType() const
{
    return d->type;
}

bool ZYLSysVariantFilter::Accepts(const QVariant &value) const
{
    if (d->acceptAll)
        return true;
    if (d->type == Text || d->comparison <= DoesNotContain || d->baseOperand.kind == Kind::Text)
        return CompareTexts(value.toString(), d->baseText, d->comparison);
    return CompareOperands(Classify(value), d->baseOperand, d->comparison, d->tolerance);
}

bool ZYLSysVariantFilter::ComparesNumbers() const
{
    return !d->acceptAll && d->type != Text && d->comparison > DoesNotContain && d->baseOperand.kind != Kind::Text;
}

bool ZYLSysVariantFilter::AcceptsNumber(double number) const
{
    return CompareOperands(Number(number), d->baseOperand, d->comparison, d->tolerance);
}
