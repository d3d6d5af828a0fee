// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The units dialog: OK persists the chosen units, Cancel changes nothing, "Restore defaults"
// puts the defaults back for OK to apply.
#include "ZYLStudioUnitsDialog.h"

#include "ZYLSysSettings.h"
#include "ZYLSysUnits.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QSignalSpy>
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

void Choose(const QDialog &dialog, Magnitude magnitude, Unit unit) {
    QComboBox *combo = Combo(dialog, magnitude);
    combo->setCurrentIndex(combo->findData(int(unit)));
    QCOMPARE(Shown(dialog, magnitude), unit);
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

    void okPersists_data();
    void okPersists();
    void cancelChangesNothing();
    void restoreDefaults();
};

void tst_ZYLStudioUnitsDialog::okPersists_data() {
    QTest::addColumn<int>("magnitude");
    QTest::addColumn<int>("unit");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QString>("code");
    QTest::newRow("length") << int(ZYLSysValue::Length) << int(ZYLSysValue::Inch) << QByteArray("lengthUnit")
                            << QStringLiteral("in");
    QTest::newRow("force") << int(ZYLSysValue::Force) << int(ZYLSysValue::PoundForce) << QByteArray("forceUnit")
                           << QStringLiteral("lbf");
    QTest::newRow("feed rate") << int(ZYLSysValue::FeedRate) << int(ZYLSysValue::InchPerMinute)
                               << QByteArray("feedRateUnit") << QStringLiteral("in/min");
    QTest::newRow("angle") << int(ZYLSysValue::Angle) << int(ZYLSysValue::Radian) << QByteArray("angleUnit")
                           << QStringLiteral("rad");
}

void tst_ZYLStudioUnitsDialog::okPersists() {
    QFETCH(int, magnitude);
    QFETCH(int, unit);
    QFETCH(QByteArray, key);
    QFETCH(QString, code);
    QSignalSpy changed(ZYLSysUnits::GetInstance(), &ZYLSysUnits::CurrentUnitChanged);
    ZYLStudioUnitsDialog dialog;
    Choose(dialog, Magnitude(magnitude), Unit(unit));
    QCOMPARE(changed.size(), 0);
    Press(dialog, QDialogButtonBox::Ok);

    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.at(0).at(0).toInt(), magnitude);
    for (Magnitude quantity : Quantities) {
        const Unit expected = quantity == magnitude ? Unit(unit) : ZYLSysUnits::GetDefaultUnit(quantity);
        QCOMPARE(ZYLSysValue::GetMagnitudeCurrentUnit(quantity), expected);
    }
    QCOMPARE(UnitsReader().GetValue(key).toString(), code);
}

void tst_ZYLStudioUnitsDialog::cancelChangesNothing() {
    QSignalSpy changed(ZYLSysUnits::GetInstance(), &ZYLSysUnits::CurrentUnitChanged);
    ZYLStudioUnitsDialog dialog;
    Choose(dialog, ZYLSysValue::Length, ZYLSysValue::Inch);
    Choose(dialog, ZYLSysValue::Angle, ZYLSysValue::Radian);
    Press(dialog, QDialogButtonBox::Cancel);
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QCOMPARE(changed.size(), 0);
    QCOMPARE(ZYLSysValue::GetMagnitudeCurrentUnit(ZYLSysValue::Length), ZYLSysValue::Millimeter);
    QVERIFY(!UnitsReader().GetValue("lengthUnit").isValid());
}

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
