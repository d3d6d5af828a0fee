// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioUnitsDialog.h"

#include "ui_ZYLStudioUnitsDialog.h"

#include "ZYLSysUnits.h"
#include "ZYLSysValue.h"

#include <QComboBox>
#include <QMetaEnum>
#include <QPushButton>

namespace {

// Names of the units for people; files and settings keep the untranslated codes.
QString UnitName(ZYLSysValue::Unit unit) {
    switch (unit) {
    case ZYLSysValue::Millimeter:
        return ZYLStudioUnitsDialog::tr("Millimetre");
    case ZYLSysValue::Inch:
        return ZYLStudioUnitsDialog::tr("Inch");
    case ZYLSysValue::Newton:
        return ZYLStudioUnitsDialog::tr("Newton");
    case ZYLSysValue::PoundForce:
        return ZYLStudioUnitsDialog::tr("Pound-force");
    case ZYLSysValue::Second:
        return ZYLStudioUnitsDialog::tr("Second");
    case ZYLSysValue::MillimeterPerMinute:
        return ZYLStudioUnitsDialog::tr("Millimetre per minute");
    case ZYLSysValue::InchPerMinute:
        return ZYLStudioUnitsDialog::tr("Inch per minute");
    case ZYLSysValue::Radian:
        return ZYLStudioUnitsDialog::tr("Radian");
    case ZYLSysValue::Degree:
        return ZYLStudioUnitsDialog::tr("Degree");
    case ZYLSysValue::System:
        break;
    }
    return {};
}

QString UnitText(ZYLSysValue::Unit unit) {
    const QString suffix = ZYLSysValue::GetUnitSuffix(unit);
    const QString name = UnitName(unit);
    return name.isEmpty() ? suffix : ZYLStudioUnitsDialog::tr("%1 (%2)").arg(name, suffix);
}

ZYLSysValue::Unit Concrete(ZYLSysValue::Magnitude magnitude, ZYLSysValue::Unit unit) {
    return unit == ZYLSysValue::System ? ZYLSysValue::GetMagnitudeSystemUnit(magnitude) : unit;
}

} // namespace

struct ZYLStudioUnitsDialog::Data {
    struct Row {
        ZYLSysValue::Magnitude magnitude;
        QComboBox *combo;
    };
    Ui::ZYLStudioUnitsDialog ui;
    QList<Row> rows;

    ZYLSysValue::Unit Chosen(const Row &row) const {
        return ZYLSysValue::Unit(row.combo->currentData().toInt());
    }
    void Choose(const Row &row, ZYLSysValue::Unit unit) {
        const int index = row.combo->findData(int(Concrete(row.magnitude, unit)));
        if (index >= 0)
            row.combo->setCurrentIndex(index);
    }
};

ZYLStudioUnitsDialog::ZYLStudioUnitsDialog(QWidget *parent) : QDialog(parent), d(std::make_unique<Data>()) {
    d->ui.setupUi(this);
    d->ui.buttonBox->button(QDialogButtonBox::RestoreDefaults)->setText(tr("Restore defaults"));

    // One row per quantity that has units, in the order of the magnitudes, so that a
    // quantity added to the unit settings shows up here by itself.
    const ZYLSysUnits *units = ZYLSysUnits::GetInstance();
    const QMetaEnum magnitudes = QMetaEnum::fromType<ZYLSysValue::Magnitude>();
    for (int index = 0; index < magnitudes.keyCount(); ++index) {
        const auto magnitude = ZYLSysValue::Magnitude(magnitudes.value(index));
        const QList<ZYLSysValue::Unit> choices = ZYLSysValue::GetMagnitudeUnits(magnitude);
        if (choices.isEmpty())
            continue;
        auto *combo = new QComboBox(this);
        combo->setObjectName(QStringLiteral("unitCombo_%1").arg(QLatin1String(magnitudes.key(index))));
        for (ZYLSysValue::Unit unit : choices)
            combo->addItem(UnitText(unit), int(unit));
        QString label = ZYLSysValue::GetMagnitudeName(magnitude);
        if (!label.isEmpty())
            label[0] = label[0].toUpper();
        d->ui.unitsLayout->addRow(tr("%1:").arg(label), combo);
        d->rows.append({magnitude, combo});
        d->Choose(d->rows.back(), units->GetCurrentUnit(magnitude));
    }
    setupConnections();
}

ZYLStudioUnitsDialog::~ZYLStudioUnitsDialog() = default;

void ZYLStudioUnitsDialog::setupConnections() {
    connect(d->ui.buttonBox, &QDialogButtonBox::accepted, this, &ZYLStudioUnitsDialog::accept);
    connect(d->ui.buttonBox, &QDialogButtonBox::rejected, this, &ZYLStudioUnitsDialog::reject);
    connect(d->ui.buttonBox->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
            &ZYLStudioUnitsDialog::RestoreDefaults);
}

void ZYLStudioUnitsDialog::RestoreDefaults() {
    for (const Data::Row &row : std::as_const(d->rows))
        d->Choose(row, ZYLSysUnits::GetDefaultUnit(row.magnitude));
}

void ZYLStudioUnitsDialog::accept() {
    ZYLSysUnits *units = ZYLSysUnits::GetInstance();
    bool allDefault = true;
    for (const Data::Row &row : std::as_const(d->rows))
        allDefault = allDefault && d->Chosen(row) == Concrete(row.magnitude, ZYLSysUnits::GetDefaultUnit(row.magnitude));
    if (allDefault) {
        units->RevertToDefaults();
    } else {
        // The lists only hold units of their own quantity, which the unit settings accept.
        for (const Data::Row &row : std::as_const(d->rows))
            units->SetCurrentUnit(row.magnitude, d->Chosen(row));
    }
    QDialog::accept();
}
