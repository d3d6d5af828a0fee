// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmnUnitSpinBox.h"

#include "ZYLSysLocalizationManager.h"
#include "ZYLSysUnits.h"
#include "ZYLSysValue.h"

#include <QDynamicPropertyChangeEvent>
#include <QLoggingCategory>
#include <QRegularExpression>

#include <cfloat>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

namespace {

Q_LOGGING_CATEGORY(lcUnitSpinBox, "zyl.commonui.unitspinbox")

constexpr char kMagnitudeProperty[] = "magnitude";

// The base class rounds every stored value to its decimals. At Qt's largest setting the
// rounding reproduces any double exactly, so system values keep their full precision.
constexpr int kStoredDecimals = DBL_MAX_10_EXP + DBL_DIG;

struct Range {
    double minimum;
    double maximum;
};

Range DefaultRange(ZYLSysValue::Magnitude magnitude)
{
    switch (magnitude) {
    case ZYLSysValue::Angle:
        return {-2.0 * std::numbers::pi, 2.0 * std::numbers::pi};
    case ZYLSysValue::Force:
    case ZYLSysValue::Time:
    case ZYLSysValue::FeedRate:
        return {0.0, 1e6};
    case ZYLSysValue::Length:
    case ZYLSysValue::None:
        break;
    }
    return {-1e6, 1e6};
}

// Step of the arrows in the display unit: one click changes the shown number by a round amount.
double DefaultDisplayStep(ZYLSysValue::Unit unit)
{
    switch (unit) {
    case ZYLSysValue::Inch:
    case ZYLSysValue::PoundForce:
        return 0.1;
    case ZYLSysValue::Radian:
        return 0.01;
    case ZYLSysValue::MillimeterPerMinute:
        return 100.0;
    case ZYLSysValue::InchPerMinute:
        return 5.0;
    default:
        return 1.0;
    }
}

ZYLSysValue::Magnitude MagnitudeFromProperty(const QVariant &property)
{
    if (!property.isValid())
        return ZYLSysValue::None;
    if (property.typeId() == QMetaType::QString || property.typeId() == QMetaType::QByteArray) {
        const QString name = property.toString();
        const ZYLSysValue::Magnitude magnitude = ZYLSysValue::GetMagnitudeByName(name);
        if (magnitude == ZYLSysValue::None && !name.trimmed().isEmpty())
            qCWarning(lcUnitSpinBox) << "Unknown magnitude" << name << "; the box holds a plain number";
        return magnitude;
    }
    bool ok = false;
    const int number = property.toInt(&ok);
    if (ok && number >= ZYLSysValue::None && number <= ZYLSysValue::Angle)
        return ZYLSysValue::Magnitude(number);
    qCWarning(lcUnitSpinBox) << "Unknown magnitude" << property << "; the box holds a plain number";
    return ZYLSysValue::None;
}

// Whether text is the start of a number: sign, digits, one decimal point, an exponent.
// Signs and decimal point may be the user's locale's or the C locale's.
bool IsPartialNumber(QStringView text, const QLocale &locale)
{
    static const QRegularExpression pattern(QStringLiteral("^[+-]?\\d*(?:\\.\\d*)?(?:[eE][+-]?\\d*)?$"));
    QString normalized = text.toString();
    normalized.replace(locale.negativeSign(), QStringLiteral("-"));
    normalized.replace(locale.positiveSign(), QStringLiteral("+"));
    normalized.replace(locale.decimalPoint(), QStringLiteral("."));
    return pattern.match(normalized).hasMatch();
}

// Length of the leading run of characters that may belong to a number.
qsizetype NumberLength(QStringView text, const QLocale &locale)
{
    const QString extra = locale.negativeSign() + locale.positiveSign() + locale.decimalPoint();
    qsizetype length = 0;
    while (length < text.size()) {
        const QChar character = text[length];
        if (!character.isDigit() && !QStringView(u"+-.eE").contains(character) && !extra.contains(character))
            break;
        ++length;
    }
    return length;
}

// Whether text is the start of one of the unit texts the user may type for the magnitude.
bool IsPartialUnit(QStringView text, ZYLSysValue::Magnitude magnitude)
{
    for (const ZYLSysValue::Unit unit : ZYLSysValue::GetMagnitudeUnits(magnitude)) {
        if (ZYLSysValue::GetUnitSuffix(unit).startsWith(text, Qt::CaseInsensitive)
            || ZYLSysValue::GetUnitCode(unit).startsWith(text, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

} // namespace

struct ZYLCmnUnitSpinBox::Data {
    ZYLSysValue::Magnitude magnitude = ZYLSysValue::None;
    ZYLSysValue::Unit unit = ZYLSysValue::System; // display unit, concrete
    int decimals = -1;                             // -1: the display unit's own
    std::optional<QString> suffix;                 // set: replaces the unit suffix
    // Range and step last set by the box itself; while they are unchanged they follow the
    // magnitude and the display unit, once the user sets others they stay.
    Range autoRange{0.0, 0.0};
    double autoStep = 0.0;
};

ZYLCmnUnitSpinBox::ZYLCmnUnitSpinBox(QWidget *parent)
    : QDoubleSpinBox(parent)
    , d(std::make_unique<Data>())
{
    QDoubleSpinBox::setDecimals(kStoredDecimals);
    d->autoRange = {minimum(), maximum()};
    d->autoStep = singleStep();
    applyMagnitude();
    connect(ZYLSysUnits::GetInstance(), &ZYLSysUnits::CurrentUnitChanged, this, [this](int magnitude) {
        if (magnitude == d->magnitude)
            applyDisplayUnit();
    });
    connect(ZYLSysLocalizationManager::GetManager(), &ZYLSysLocalizationManager::LocaleChanged, this,
            [this] { refreshText(); });
}

ZYLCmnUnitSpinBox::~ZYLCmnUnitSpinBox() = default;

int ZYLCmnUnitSpinBox::decimals() const
{
    return d->decimals >= 0 ? d->decimals : ZYLSysValue::GetUnitDecimals(d->unit);
}

void ZYLCmnUnitSpinBox::setDecimals(int decimals)
{
    d->decimals = decimals < 0 ? -1 : qMin(decimals, std::numeric_limits<double>::max_digits10);
    refreshText();
}

QString ZYLCmnUnitSpinBox::suffix() const
{
    return d->suffix ? *d->suffix : ZYLSysValue::GetUnitDisplaySuffix(d->unit);
}

void ZYLCmnUnitSpinBox::setSuffix(const QString &suffix)
{
    d->suffix = suffix;
    refreshText();
}

QString ZYLCmnUnitSpinBox::textFromValue(double value) const
{
    const double shown = ZYLSysValue::ConvertFromSystemUnit(value, d->unit);
    return ZYLSysLocalizationManager::GetManager()->FormatNumber(shown, decimals()) + suffix();
}

double ZYLCmnUnitSpinBox::valueFromText(const QString &text) const
{
    double result = value();
    interpret(text, &result);
    return result;
}

QValidator::State ZYLCmnUnitSpinBox::validate(QString &input, int &pos) const
{
    Q_UNUSED(pos);
    double result = 0.0;
    const QValidator::State state = interpret(input, &result);
    if (state != QValidator::Acceptable)
        return state;
    // The shown text is rounded, so the displayed bound itself may read back just outside the
    // range; half a shown digit of slack keeps it typeable.
    const double slack = ZYLSysValue::ConvertToSystemUnit(0.5 * std::pow(10.0, -decimals()), d->unit);
    if (result < minimum() - slack || result > maximum() + slack)
        return QValidator::Intermediate;
    return QValidator::Acceptable;
}

bool ZYLCmnUnitSpinBox::event(QEvent *event)
{
    if (event->type() == QEvent::DynamicPropertyChange
        && static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName() == kMagnitudeProperty)
        applyMagnitude();
    return QDoubleSpinBox::event(event);
}

void ZYLCmnUnitSpinBox::applyMagnitude()
{
    d->magnitude = MagnitudeFromProperty(property(kMagnitudeProperty));
    if (minimum() == d->autoRange.minimum && maximum() == d->autoRange.maximum) {
        d->autoRange = DefaultRange(d->magnitude);
        setRange(d->autoRange.minimum, d->autoRange.maximum);
    }
    applyDisplayUnit();
}

void ZYLCmnUnitSpinBox::applyDisplayUnit()
{
    const ZYLSysValue::Unit current = ZYLSysValue::GetMagnitudeCurrentUnit(d->magnitude);
    d->unit = current == ZYLSysValue::System ? ZYLSysValue::GetMagnitudeSystemUnit(d->magnitude) : current;
    if (singleStep() == d->autoStep) {
        d->autoStep = ZYLSysValue::ConvertToSystemUnit(DefaultDisplayStep(d->unit), d->unit);
        setSingleStep(d->autoStep);
    }
    refreshText();
}

void ZYLCmnUnitSpinBox::refreshText()
{
    // The base class keeps its suffix empty (the unit text comes from textFromValue);
    // setting it again is how it rewrites the text and drops its cached size hints.
    QDoubleSpinBox::setSuffix(QString());
}

QValidator::State ZYLCmnUnitSpinBox::interpret(const QString &text, double *value) const
{
    if (!specialValueText().isEmpty() && text == specialValueText()) {
        *value = minimum();
        return QValidator::Acceptable;
    }
    QStringView body(text);
    // The base class adds its prefix and suffix around our text before it hands it back.
    if (!prefix().isEmpty() && body.startsWith(prefix()))
        body = body.mid(prefix().size());
    if (!QDoubleSpinBox::suffix().isEmpty() && body.endsWith(QDoubleSpinBox::suffix()))
        body.chop(QDoubleSpinBox::suffix().size());
    // Confirming the shown text must not replace the value by its rounded display.
    if (body == textFromValue(this->value())) {
        *value = this->value();
        return QValidator::Acceptable;
    }
    if (d->suffix && !d->suffix->isEmpty() && body.endsWith(*d->suffix))
        body.chop(d->suffix->size());
    body = body.trimmed();

    ZYLSysValue reading;
    if (ZYLSysValue::Parse(body.toString(), &reading)) {
        if (reading.GetMagnitude() == ZYLSysValue::None) {
            *value = ZYLSysValue::ConvertToSystemUnit(reading.GetValue(), d->unit);
            return QValidator::Acceptable;
        }
        if (reading.GetMagnitude() == d->magnitude) {
            *value = reading.GetValue();
            return QValidator::Acceptable;
        }
        // Another magnitude's unit may still be the start of one of ours ("in" of "in/min").
    }

    const QLocale locale = ZYLSysLocalizationManager::GetManager()->GetLocale();
    const qsizetype numberLength = NumberLength(body, locale);
    const QStringView unit = body.sliced(numberLength).trimmed();
    if (IsPartialNumber(body.first(numberLength), locale) && (unit.isEmpty() || IsPartialUnit(unit, d->magnitude)))
        return QValidator::Intermediate;
    return QValidator::Invalid;
}
