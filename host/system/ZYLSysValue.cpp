// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysValue.h"

#include "ZYLSysException.h"
#include "ZYLSysLocalizationManager.h"
#include "ZYLSysUnits.h"

#include <QCoreApplication>

#include <array>
#include <numbers>
#include <optional>

namespace {

struct UnitInfo {
    ZYLSysValue::Magnitude magnitude;
    const char *code;        // untranslated, what files store
    const char16_t *suffix;  // what the user sees
    double factor;           // system value = value in this unit * factor
    int decimals;
};

// Indexed by ZYLSysValue::Unit; entry 0 stands for System (plain numbers of magnitude None).
constexpr UnitInfo kUnits[] = {
    {ZYLSysValue::None, "", u"", 1.0, 6},
    {ZYLSysValue::Length, "mm", u"mm", 1.0, 3},
    {ZYLSysValue::Length, "in", u"in", 25.4, 4},
    {ZYLSysValue::Force, "N", u"N", 1.0, 2},
    {ZYLSysValue::Force, "lbf", u"lbf", 4.4482216152605, 3},
    {ZYLSysValue::Time, "s", u"s", 1.0, 2},
    {ZYLSysValue::FeedRate, "mm/min", u"mm/min", 1.0, 1},
    {ZYLSysValue::FeedRate, "in/min", u"in/min", 25.4, 3},
    {ZYLSysValue::Angle, "rad", u"rad", 1.0, 5},
    {ZYLSysValue::Angle, "deg", u"\u00B0", std::numbers::pi / 180.0, 3},
};
constexpr int kUnitCount = int(std::size(kUnits));

constexpr ZYLSysValue::Unit kSystemUnits[] = {
    ZYLSysValue::System, ZYLSysValue::Millimeter, ZYLSysValue::Newton,
    ZYLSysValue::Second, ZYLSysValue::MillimeterPerMinute, ZYLSysValue::Radian,
};

bool IsValidUnit(ZYLSysValue::Unit unit)
{
    return unit >= 0 && unit < kUnitCount;
}

bool IsValidMagnitude(ZYLSysValue::Magnitude magnitude)
{
    return magnitude >= ZYLSysValue::None && magnitude <= ZYLSysValue::Angle;
}

const UnitInfo &Info(ZYLSysValue::Unit unit)
{
    return kUnits[IsValidUnit(unit) ? unit : ZYLSysValue::System];
}

QString Tr(const char *text)
{
    return QCoreApplication::translate("ZYLSysValue", text);
}

// Maps System to the magnitude's concrete unit and checks that the unit belongs to the
// magnitude; returns nullopt for a foreign or unknown unit.
std::optional<ZYLSysValue::Unit> ResolveUnit(ZYLSysValue::Magnitude magnitude, ZYLSysValue::Unit unit)
{
    if (!IsValidMagnitude(magnitude) || !IsValidUnit(unit))
        return std::nullopt;
    const ZYLSysValue::Unit resolved = unit == ZYLSysValue::System ? kSystemUnits[magnitude] : unit;
    if (Info(resolved).magnitude != magnitude)
        return std::nullopt;
    return resolved;
}

QString ForeignUnitMessage(ZYLSysValue::Magnitude magnitude, ZYLSysValue::Unit unit)
{
    const QString name = IsValidUnit(unit) && unit != ZYLSysValue::System ? ZYLSysValue::GetUnitCode(unit)
                                                                          : QString::number(int(unit));
    if (magnitude == ZYLSysValue::None)
        return Tr("A plain number has no unit \"%1\".").arg(name);
    return Tr("\"%1\" is not a unit of %2.").arg(name, ZYLSysValue::GetMagnitudeName(magnitude));
}

ZYLSysValue::Unit ResolveOrThrow(ZYLSysValue::Magnitude magnitude, ZYLSysValue::Unit unit)
{
    if (const std::optional<ZYLSysValue::Unit> resolved = ResolveUnit(magnitude, unit))
        return *resolved;
    throw ZYLSysException(ForeignUnitMessage(magnitude, unit));
}

struct Reading {
    double number = 0.0;
    ZYLSysValue::Unit unit = ZYLSysValue::System; // System: the text has no suffix
};

// Splits off the longest known suffix (so "in/min" wins over "in", "in" over "N") and reads
// the rest as a number.
std::optional<Reading> ReadText(const QString &text)
{
    const QStringView trimmed = QStringView(text).trimmed();
    Reading reading;
    qsizetype suffixLength = 0;
    const auto consider = [&](auto candidate, int unit) {
        if (candidate.size() > suffixLength && trimmed.endsWith(candidate, Qt::CaseInsensitive)) {
            suffixLength = candidate.size();
            reading.unit = ZYLSysValue::Unit(unit);
        }
    };
    for (int unit = 1; unit < kUnitCount; ++unit) {
        consider(QStringView(kUnits[unit].suffix), unit);
        consider(QLatin1String(kUnits[unit].code), unit);
    }
    const QStringView number = trimmed.chopped(suffixLength).trimmed();
    if (!ZYLSysLocalizationManager::GetManager()->ReadNumber(number, &reading.number))
        return std::nullopt;
    return reading;
}

void RegisterMetaType()
{
    qRegisterMetaType<ZYLSysValue>();
    QMetaType::registerConverter<ZYLSysValue, QString>([](const ZYLSysValue &value) { return value.ToString(); });
    QMetaType::registerConverter<ZYLSysValue, double>(&ZYLSysValue::GetValue);
    QMetaType::registerConverterFunction(
        [](const void *from, void *to) {
            return ZYLSysValue::Parse(*static_cast<const QString *>(from), static_cast<ZYLSysValue *>(to));
        },
        QMetaType::fromType<QString>(), QMetaType::fromType<ZYLSysValue>());
}
Q_CONSTRUCTOR_FUNCTION(RegisterMetaType)

} // namespace

ZYLSysValue::ZYLSysValue(Magnitude magnitude, double value)
    : m_magnitude(IsValidMagnitude(magnitude) ? magnitude : None)
    , m_value(value)
{
    if (m_magnitude != magnitude)
        throw ZYLSysException(Tr("Unknown magnitude %1.").arg(int(magnitude)));
}

void ZYLSysValue::SetValue(double value, Unit unit)
{
    m_value = ConvertToSystemUnit(value, ResolveOrThrow(m_magnitude, unit));
}

void ZYLSysValue::SetValue(const QString &text, Unit unit)
{
    const Unit defaultUnit = ResolveOrThrow(m_magnitude, unit);
    const std::optional<Reading> reading = ReadText(text);
    if (!reading)
        throw ZYLSysException(Tr("Cannot read \"%1\" as a %2.").arg(text, GetMagnitudeName(m_magnitude)));
    const Unit textUnit = reading->unit == System ? defaultUnit : ResolveOrThrow(m_magnitude, reading->unit);
    m_value = ConvertToSystemUnit(reading->number, textUnit);
}

void ZYLSysValue::FromString(const QString &text)
{
    SetValue(text, GetMagnitudeCurrentUnit(m_magnitude));
}

QString ZYLSysValue::ToString() const
{
    // Plain numbers have no fixed precision worth padding with zeros.
    return ToString(GetMagnitudeCurrentUnit(m_magnitude), m_magnitude == None);
}

QString ZYLSysValue::ToString(Unit unit, bool compact) const
{
    const Unit resolved = ResolveOrThrow(m_magnitude, unit);
    const double number = ConvertFromSystemUnit(m_value, resolved);
    return ZYLSysLocalizationManager::GetManager()->FormatNumber(number, Info(resolved).decimals, compact)
           + GetUnitDisplaySuffix(resolved);
}

bool ZYLSysValue::Parse(const QString &text, ZYLSysValue *result)
{
    const std::optional<Reading> reading = ReadText(text);
    if (!reading)
        return false;
    const Magnitude magnitude = Info(reading->unit).magnitude;
    *result = ZYLSysValue(magnitude, ConvertToSystemUnit(reading->number, reading->unit));
    return true;
}

ZYLSysValue::Unit ZYLSysValue::GetMagnitudeSystemUnit(Magnitude magnitude)
{
    return IsValidMagnitude(magnitude) ? kSystemUnits[magnitude] : System;
}

ZYLSysValue::Unit ZYLSysValue::GetMagnitudeCurrentUnit(Magnitude magnitude)
{
    return ZYLSysUnits::GetInstance()->GetCurrentUnit(magnitude);
}

void ZYLSysValue::SetMagnitudeCurrentUnit(Magnitude magnitude, Unit unit)
{
    if (!ZYLSysUnits::GetInstance()->SetCurrentUnit(magnitude, unit))
        throw ZYLSysException(ForeignUnitMessage(magnitude, unit));
}

QList<ZYLSysValue::Unit> ZYLSysValue::GetMagnitudeUnits(Magnitude magnitude)
{
    QList<Unit> units;
    if (magnitude == None || !IsValidMagnitude(magnitude))
        return units;
    units.append(kSystemUnits[magnitude]);
    for (int unit = 1; unit < kUnitCount; ++unit) {
        if (kUnits[unit].magnitude == magnitude && unit != kSystemUnits[magnitude])
            units.append(Unit(unit));
    }
    return units;
}

ZYLSysValue::Magnitude ZYLSysValue::GetUnitMagnitude(Unit unit)
{
    return Info(unit).magnitude;
}

QString ZYLSysValue::GetUnitSuffix(Unit unit)
{
    // Built once: every formatted value appends one, and shared copies cost no allocation.
    static const std::array<QString, kUnitCount> suffixes = [] {
        std::array<QString, kUnitCount> texts;
        for (int index = 0; index < kUnitCount; ++index)
            texts[index] = QString::fromUtf16(kUnits[index].suffix);
        return texts;
    }();
    return suffixes[IsValidUnit(unit) ? unit : System];
}

QString ZYLSysValue::GetUnitDisplaySuffix(Unit unit)
{
    static const std::array<QString, kUnitCount> suffixes = [] {
        std::array<QString, kUnitCount> texts;
        for (int index = 0; index < kUnitCount; ++index) {
            // A degree sign sits on the number; every other symbol is set off by a space.
            const auto shown = Unit(index);
            texts[index] = shown == System || shown == Degree ? GetUnitSuffix(shown)
                                                              : QLatin1Char(' ') + GetUnitSuffix(shown);
        }
        return texts;
    }();
    return suffixes[IsValidUnit(unit) ? unit : System];
}

QString ZYLSysValue::GetUnitCode(Unit unit)
{
    return QLatin1String(Info(unit).code);
}

ZYLSysValue::Unit ZYLSysValue::GetUnitByCode(const QString &code)
{
    const QString trimmed = code.trimmed();
    for (int unit = 1; unit < kUnitCount; ++unit) {
        if (trimmed.compare(QLatin1String(kUnits[unit].code), Qt::CaseInsensitive) == 0
            || trimmed.compare(QString::fromUtf16(kUnits[unit].suffix), Qt::CaseInsensitive) == 0)
            return Unit(unit);
    }
    return System;
}

int ZYLSysValue::GetUnitDecimals(Unit unit)
{
    return Info(unit).decimals;
}

double ZYLSysValue::ConvertFromSystemUnit(double value, Unit unit)
{
    return value / Info(unit).factor;
}

double ZYLSysValue::ConvertToSystemUnit(double value, Unit unit)
{
    return value * Info(unit).factor;
}

QString ZYLSysValue::GetMagnitudeName(Magnitude magnitude)
{
    switch (magnitude) {
    case Length:
        return Tr("length");
    case Force:
        return Tr("force");
    case Time:
        return Tr("time");
    case FeedRate:
        return Tr("feed rate");
    case Angle:
        return Tr("angle");
    case None:
        break;
    }
    return Tr("number");
}

ZYLSysValue::Magnitude ZYLSysValue::GetMagnitudeByName(const QString &name)
{
    static const struct {
        const char *name;
        Magnitude magnitude;
    } names[] = {
        {QT_TRANSLATE_NOOP("ZYLSysValue", "Length"), Length},
        {QT_TRANSLATE_NOOP("ZYLSysValue", "Force"), Force},
        {QT_TRANSLATE_NOOP("ZYLSysValue", "Time"), Time},
        {QT_TRANSLATE_NOOP("ZYLSysValue", "Feed Rate"), FeedRate},
        {QT_TRANSLATE_NOOP("ZYLSysValue", "Linear Feed Rate"), FeedRate},
        {QT_TRANSLATE_NOOP("ZYLSysValue", "Angle"), Angle},
    };
    const QString trimmed = name.trimmed();
    for (const auto &entry : names) {
        if (trimmed.compare(QLatin1String(entry.name), Qt::CaseInsensitive) == 0
            || trimmed.compare(Tr(entry.name), Qt::CaseInsensitive) == 0)
            return entry.magnitude;
    }
    return None;
}
