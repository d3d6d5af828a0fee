// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCommonUIExport.h"

#include <QDoubleSpinBox>

#include <memory>

/// A double spin box for a physical quantity: values in system units, text in the user's unit.
///
/// The quantity comes from the dynamic property "magnitude": "Length", "Angle", "Force",
/// "Time", "Linear Feed Rate" (or "Feed Rate"), untranslated or translated, or a
/// `ZYLSysValue::Magnitude` number. It may be set at any time, also after construction (as a
/// form does); without it, or with an unknown name (logged as a warning), the box holds a
/// plain number.
///
/// Design: the base class stores the value in the system unit (mm, rad, N, s, mm/min) with
/// full double precision, so `value()`, `setValue()`, `minimum()`, `maximum()`,
/// `setRange()`, `singleStep()` and `valueChanged(double)` are all in system units. Only the
/// text is converted: `textFromValue` shows the value in the user's current display unit
/// (`ZYLSysValue::GetMagnitudeCurrentUnit`) with its suffix, and `valueFromText`/`validate`
/// read a number in that unit or with the suffix of any unit of the magnitude ("25.4 mm" in
/// an inch box, "1 rad" in a degree box). Text that shows the current value unchanged reads
/// back as exactly that value, so confirming a rounded display never moves the value. When
/// the user picks another display unit while the box is open, the text follows and the value
/// stays. A typed value outside the range is refused (the previous value is kept) unless it
/// lies within half a displayed digit of a bound, which it then takes.
///
/// Defaults of the host, per magnitude and display unit (they follow the magnitude until set):
/// - range: length -1e6..1e6 mm, angle -2 pi..2 pi rad, force, time and feed rate 0..1e6,
///   plain numbers -1e6..1e6; set a range to keep it whatever the magnitude;
/// - single step, given in the display unit: mm 1, in 0.1, deg 1, rad 0.01, N 1, lbf 0.1,
///   s 1, mm/min 100, in/min 5, plain 1; `setSingleStep` (in system units) fixes it;
/// - decimals: those of `ZYLSysValue::GetUnitDecimals` for the display unit.
///
/// `decimals()` and `suffix()` of this class are about the text and hide those of the base
/// class: `setDecimals` fixes the decimals shown in every unit (negative: back to the unit's
/// own), `setSuffix` replaces the unit suffix for good, an empty suffix showing the bare
/// number. The base class's own decimals are the precision of the stored value; do not
/// change them through a `QDoubleSpinBox` pointer.
class ZYLCOMMONUI_EXPORT ZYLCmnUnitSpinBox : public QDoubleSpinBox {
    Q_OBJECT
    Q_PROPERTY(int decimals READ decimals WRITE setDecimals)
    Q_PROPERTY(QString suffix READ suffix WRITE setSuffix)
public:
    explicit ZYLCmnUnitSpinBox(QWidget *parent = nullptr);
    ~ZYLCmnUnitSpinBox() override;

    /// Returns the decimals shown in the current display unit.
    int decimals() const;
    /// Sets the decimals shown in every display unit; a negative number restores the unit's own.
    void setDecimals(int decimals);

    /// Returns the text shown after the number: the display unit's suffix unless set.
    QString suffix() const;
    /// Replaces the unit suffix by `suffix`, for every display unit; empty shows no suffix.
    void setSuffix(const QString &suffix);

    /// Returns the text of a system-unit value in the display unit, with the suffix.
    QString textFromValue(double value) const override;
    /// Returns the system-unit value of typed text; the current value for unreadable text.
    double valueFromText(const QString &text) const override;
    /// Accepts a number in the display unit or with a unit suffix of the magnitude, within the
    /// range; partial input that may still become such text is intermediate.
    QValidator::State validate(QString &input, int &pos) const override;

protected:
    bool event(QEvent *event) override;

private:
    void applyMagnitude();
    void applyDisplayUnit();
    void refreshText();
    QValidator::State interpret(const QString &text, double *value) const;

    struct Data;
    std::unique_ptr<Data> d;
};
