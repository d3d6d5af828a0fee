// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysSettingsValue.h"

#include <QLocale>

#include <cmath>
#include <limits>
#include <optional>

namespace {

bool IsText(const QVariant &value)
{
    const int type = value.typeId();
    return type == QMetaType::QString || type == QMetaType::QByteArray;
}

bool IsNumber(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int: case QMetaType::UInt: case QMetaType::LongLong: case QMetaType::ULongLong:
    case QMetaType::Short: case QMetaType::UShort: case QMetaType::Long: case QMetaType::ULong:
    case QMetaType::Double: case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

std::optional<double> ReadDouble(const QVariant &value)
{
    bool ok = false;
    double number = 0.0;
    if (IsText(value))
        number = QLocale::c().toDouble(value.toString().trimmed(), &ok);
    else if (IsNumber(value))
        number = value.toDouble(&ok);
    if (!ok || !std::isfinite(number))
        return std::nullopt;
    return number;
}

// Integers go through long double so that 64-bit values survive and fractions are seen.
std::optional<long double> ReadInteger(const QVariant &value)
{
    if (IsText(value)) {
        bool ok = false;
        const QString text = value.toString().trimmed();
        if (const qlonglong number = QLocale::c().toLongLong(text, &ok); ok)
            return static_cast<long double>(number);
        if (const qulonglong number = QLocale::c().toULongLong(text, &ok); ok)
            return static_cast<long double>(number);
        return std::nullopt;
    }
    if (value.typeId() == QMetaType::ULongLong)
        return static_cast<long double>(value.toULongLong());
    if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float) {
        const double number = value.toDouble();
        if (!std::isfinite(number) || std::trunc(number) != number)
            return std::nullopt;
        return static_cast<long double>(number);
    }
    if (IsNumber(value))
        return static_cast<long double>(value.toLongLong());
    return std::nullopt;
}

template <typename Integer>
bool ConvertInteger(const QVariant &stored, QVariant *result)
{
    const std::optional<long double> number = ReadInteger(stored);
    if (!number || *number < static_cast<long double>(std::numeric_limits<Integer>::min())
        || *number > static_cast<long double>(std::numeric_limits<Integer>::max()))
        return false;
    *result = QVariant::fromValue(static_cast<Integer>(*number));
    return true;
}

bool ConvertBool(const QVariant &stored, QVariant *result)
{
    if (stored.typeId() == QMetaType::Bool) {
        *result = stored;
        return true;
    }
    const QString text = stored.toString().trimmed().toLower();
    if (!IsText(stored) && !IsNumber(stored))
        return false;
    if (text == QLatin1String("true") || text == QLatin1String("1"))
        *result = true;
    else if (text == QLatin1String("false") || text == QLatin1String("0"))
        *result = false;
    else
        return false;
    return true;
}

bool ConvertEnum(const QVariant &stored, QMetaType target, const QMetaEnum &enumerator, QVariant *result)
{
    int value = 0;
    if (IsText(stored)) {
        const QString text = stored.toString().trimmed();
        bool ok = false;
        value = text.toInt(&ok);
        if (!ok) {
            const QByteArray key = text.toLatin1();
            value = enumerator.isFlag() ? enumerator.keysToValue(key.constData(), &ok)
                                        : enumerator.keyToValue(key.constData(), &ok);
            if (!ok)
                return false;
        }
    } else if (const std::optional<long double> number = ReadInteger(stored)) {
        value = static_cast<int>(*number);
    } else {
        return false;
    }
    if (!enumerator.isFlag() && !enumerator.valueToKey(value))
        return false;
    QVariant converted(value);
    if (!converted.convert(target))
        return false;
    *result = converted;
    return true;
}

} // namespace

bool ZYLSysSettingsValue::Convert(const QVariant &stored, QMetaType target, const QMetaEnum &enumerator,
                                  QVariant *result)
{
    if (!stored.isValid() || !target.isValid())
        return false;
    if (enumerator.isValid())
        return ConvertEnum(stored, target, enumerator, result);
    switch (target.id()) {
    case QMetaType::Bool:
        return ConvertBool(stored, result);
    case QMetaType::Int:
        return ConvertInteger<int>(stored, result);
    case QMetaType::UInt:
        return ConvertInteger<uint>(stored, result);
    case QMetaType::LongLong:
        return ConvertInteger<qlonglong>(stored, result);
    case QMetaType::ULongLong:
        return ConvertInteger<qulonglong>(stored, result);
    case QMetaType::Double:
    case QMetaType::Float: {
        const std::optional<double> number = ReadDouble(stored);
        if (!number)
            return false;
        QVariant converted(*number);
        converted.convert(target);
        *result = converted;
        return true;
    }
    case QMetaType::QString:
        if (!IsText(stored) && !IsNumber(stored) && stored.typeId() != QMetaType::Bool)
            return false;
        *result = stored.toString();
        return true;
    case QMetaType::QByteArray:
        if (!IsText(stored))
            return false;
        *result = stored.toByteArray();
        return true;
    default:
        break;
    }
    if (stored.metaType() == target) {
        *result = stored;
        return true;
    }
    QVariant converted = stored;
    if (!converted.canConvert(target) || !converted.convert(target))
        return false;
    *result = converted;
    return true;
}
