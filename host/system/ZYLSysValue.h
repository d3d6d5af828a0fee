// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLSystemExport.h"

#include <QList>
#include <QMetaType>
#include <QObject>
#include <QString>

/// A number with a physical quantity (magnitude), held in the magnitude's system unit.
///
/// System units: length mm, force N, time s, feed rate mm/min, angle rad. The user chooses a
/// display unit per magnitude (`SetMagnitudeCurrentUnit`, persisted; defaults mm, N, s, mm/min,
/// degree); `ToString` shows the value in it, `FromString` reads text in it.
///
/// Text: a number in the locale of `ZYLSysLocalizationManager` or in the C locale (never with
/// group separators), optionally followed by the suffix of any unit of the value's magnitude,
/// with or without a space: "12.5 mm", "0.5in", "90°", "90 deg", "1.5707963268rad". Suffixes
/// are matched without regard to case. Degrees are shown as "°" and read as "°" or "deg".
/// Text without a suffix is in the display unit (`FromString`) or the given unit (`SetValue`).
/// Unreadable text, a suffix of another magnitude and non-finite numbers throw
/// ZYLSysException and leave the value unchanged.
///
/// Decimals shown per unit: mm 3, in 4, N 2, lbf 3, s 2, mm/min 1, in/min 3, rad 5, ° 3.
///
/// Registered with the meta-type system: a QVariant holding one converts to QString
/// (`ToString`) and to double (system value); a QString converts to a ZYLSysValue whose
/// magnitude comes from the text's suffix (no suffix: magnitude None), the conversion failing
/// for unreadable text.
class ZYLSYSTEM_EXPORT ZYLSysValue {
    Q_GADGET
public:
    enum Magnitude { None = 0, Length = 1, Force = 2, Time = 3, FeedRate = 4, Angle = 5 };
    Q_ENUM(Magnitude)
    /// Units; System (0) means the system unit of the value's magnitude.
    enum Unit {
        System = 0,
        Millimeter,
        Inch,
        Newton,
        PoundForce,
        Second,
        MillimeterPerMinute,
        InchPerMinute,
        Radian,
        Degree
    };
    Q_ENUM(Unit)

    ZYLSysValue() = default;
    /// Creates a value of the magnitude, given in its system unit.
    ZYLSysValue(Magnitude magnitude, double value);

    /// Returns the value in the system unit.
    double GetValue() const { return m_value; }
    Magnitude GetMagnitude() const { return m_magnitude; }

    /// Sets the value given in a unit of this magnitude (or System). Throws ZYLSysException for
    /// a unit of another magnitude.
    void SetValue(double value, Unit unit);
    /// Reads typed text; a number without suffix is in the given unit. Throws ZYLSysException
    /// for unreadable text or a foreign unit; the value is then unchanged.
    void SetValue(const QString &text, Unit unit);
    /// Reads text as `SetValue(text, GetMagnitudeCurrentUnit(GetMagnitude()))` does.
    void FromString(const QString &text);

    /// Returns the value in the current display unit, e.g. "12.500 mm" or "90.000°".
    QString ToString() const;
    /// Returns the value in the given unit (System: the system unit); compact drops trailing
    /// zeros ("12 mm"). Throws ZYLSysException for a unit of another magnitude.
    QString ToString(Unit unit, bool compact = false) const;

    /// Reads text with any known suffix (or none) without a magnitude given beforehand; the
    /// result takes the suffix's magnitude (None without suffix; the number is then taken as
    /// is). Returns false for unreadable text, leaving result unchanged.
    static bool Parse(const QString &text, ZYLSysValue *result);

    /// Returns the concrete system unit of a magnitude (System for None).
    static Unit GetMagnitudeSystemUnit(Magnitude magnitude);
    /// Returns the user's display unit of a magnitude (System for None).
    static Unit GetMagnitudeCurrentUnit(Magnitude magnitude);
    /// Sets and persists the user's display unit of a magnitude (System: its system unit) and
    /// notifies `ZYLSysUnits::CurrentUnitChanged`. Throws ZYLSysException for a unit of another
    /// magnitude or for None.
    static void SetMagnitudeCurrentUnit(Magnitude magnitude, Unit unit);
    /// Returns the units of a magnitude, system unit first (empty for None).
    static QList<Unit> GetMagnitudeUnits(Magnitude magnitude);
    /// Returns the magnitude of a unit (None for System).
    static Magnitude GetUnitMagnitude(Unit unit);
    /// Returns the suffix of a unit: "mm", "in", "N", "lbf", "s", "mm/min", "in/min", "rad",
    /// "°"; empty for System.
    static QString GetUnitSuffix(Unit unit);
    /// Returns the suffix as `ToString` appends it: " mm", "°".
    static QString GetUnitDisplaySuffix(Unit unit);
    /// Returns the untranslated code of a unit as files store it: "mm", ..., "deg".
    static QString GetUnitCode(Unit unit);
    /// Returns the unit with the code (or suffix), System when none has it.
    static Unit GetUnitByCode(const QString &code);
    /// Returns the decimals `ToString` shows for a unit.
    static int GetUnitDecimals(Unit unit);
    /// Converts a system-unit value into the unit (System: unchanged).
    static double ConvertFromSystemUnit(double value, Unit unit);
    /// Converts a value in the unit into the system unit (System: unchanged).
    static double ConvertToSystemUnit(double value, Unit unit);
    /// Returns the translated lower-case name of a magnitude for messages ("length").
    static QString GetMagnitudeName(Magnitude magnitude);
    /// Returns the magnitude named "Length", "Force", "Time", "Feed Rate", "Linear Feed Rate"
    /// or "Angle" (any case, untranslated or translated); None for other names.
    static Magnitude GetMagnitudeByName(const QString &name);

    friend bool operator==(const ZYLSysValue &, const ZYLSysValue &) = default;

private:
    Magnitude m_magnitude = None;
    double m_value = 0.0;
};

Q_DECLARE_METATYPE(ZYLSysValue)
