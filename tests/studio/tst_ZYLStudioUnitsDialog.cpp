// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The units dialog: "Restore defaults" puts the defaults back for OK to apply.
#include "ZYLStudioUnitsDialog.h"

#include "ZYLSysSettings.h"
#include "ZYLSysUnits.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTest>

namespace {

using Unit = ZYLSysValue::Unit;
using Magnitude = ZYLSysValue::Magnitude;

// Reads the unit settings from the settings file, as the next start of the studio would.
class UnitsReader : public ZYLSysSettings {
public:
    UnitsReader() : ZYLSysSettings(QByteArrayLiteral("ZYLUnits")) {}
};

QComboBox *Combo(const QDialog &dialog, Magnitude magnitude) {
    const char *name = QMetaEnum::fromType<Magnitude>().valueToKey(magnitude);
    return dialog.findChild<QComboBox *>(QStringLiteral("unitCombo_") + QLatin1String(name));
}

Unit Shown(const QDialog &dialog, Magnitude magnitude) {
    return Unit(Combo(dialog, magnitude)->currentData().toInt());
}

void Press(const QDialog &dialog, QDialogButtonBox::StandardButton button) {
    dialog.findChild<QDialogButtonBox *>()->button(button)->click();
}

const QList<Magnitude> Quantities{ZYLSysValue::Length, ZYLSysValue::Force, ZYLSysValue::Time, ZYLSysValue::FeedRate,
                                  ZYLSysValue::Angle};

} // namespace

class tst_ZYLStudioUnitsDialog : public QObject {
    Q_OBJECT
private slots:
    void init() { ZYLSysUnits::GetInstance()->RevertToDefaults(); }

    void restoreDefaults();
};

void tst_ZYLStudioUnitsDialog::restoreDefaults() {
    ZYLSysUnits *units = ZYLSysUnits::GetInstance();
    QVERIFY(units->SetCurrentUnit(ZYLSysValue::Length, ZYLSysValue::Inch));
    QVERIFY(units->SetCurrentUnit(ZYLSysValue::Angle, ZYLSysValue::Radian));
    ZYLStudioUnitsDialog dialog;
    // It opens on the current units, one list per quantity with all its units.
    for (Magnitude magnitude : Quantities) {
        QCOMPARE(Combo(dialog, magnitude)->count(), ZYLSysValue::GetMagnitudeUnits(magnitude).size());
        QCOMPARE(Shown(dialog, magnitude), units->GetCurrentUnit(magnitude));
    }
    QCOMPARE(Shown(dialog, ZYLSysValue::Length), ZYLSysValue::Inch);
    QCOMPARE(dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::RestoreDefaults)->text(),
             QStringLiteral("Restore defaults"));

    Press(dialog, QDialogButtonBox::RestoreDefaults);
    for (Magnitude magnitude : Quantities)
        QCOMPARE(Shown(dialog, magnitude), ZYLSysUnits::GetDefaultUnit(magnitude));
    QCOMPARE(units->GetCurrentUnit(ZYLSysValue::Length), ZYLSysValue::Inch);

    Press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(units->GetCurrentUnit(ZYLSysValue::Length), ZYLSysValue::Millimeter);
    QCOMPARE(units->GetCurrentUnit(ZYLSysValue::Angle), ZYLSysValue::Degree);
    // Back to the defaults, nothing stays stored.
    QVERIFY(!UnitsReader().GetValue("lengthUnit").isValid());
    QVERIFY(!UnitsReader().GetValue("angleUnit").isValid());
}

QTEST_MAIN(tst_ZYLStudioUnitsDialog)
#include "tst_ZYLStudioUnitsDialog.moc"
