// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The units dialog: OK persists the chosen units, Cancel changes nothing, "Restore defaults"
// puts the defaults back for OK to apply.
#include "ZYLStudioUnitsDialog.h"

#include "ZYLSysSettings.h"
#include "ZYLSysUnits.h"
#include "ZYLSysValue.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

Q_DECLARE_METATYPE(ZYLSysValue::Magnitude)
Q_DECLARE_METATYPE(ZYLSysValue::Unit)

namespace {

// Reads the unit settings straight from the settings file, as the next start of the studio
// would.
class UnitsReader : public ZYLSysSettings {
public:
    UnitsReader() : ZYLSysSettings(QByteArrayLiteral("ZYLUnits")) {}
};

QComboBox *Combo(const ZYLStudioUnitsDialog &dialog, ZYLSysValue::Magnitude magnitude) {
    const QString name = QStringLiteral("unitCombo_%1")
                             .arg(QLatin1String(QMetaEnum::fromType<ZYLSysValue::Magnitude>().valueToKey(magnitude)));
    return dialog.findChild<QComboBox *>(name);
}

ZYLSysValue::Unit Shown(const ZYLStudioUnitsDialog &dialog, ZYLSysValue::Magnitude magnitude) {
    const QComboBox *combo = Combo(dialog, magnitude);
    return combo ? ZYLSysValue::Unit(combo->currentData().toInt()) : ZYLSysValue::System;
}

bool Choose(const ZYLStudioUnitsDialog &dialog, ZYLSysValue::Magnitude magnitude, ZYLSysValue::Unit unit) {
    QComboBox *combo = Combo(dialog, magnitude);
    const int index = combo ? combo->findData(int(unit)) : -1;
    if (index < 0)
        return false;
    combo->setCurrentIndex(index);
    return true;
}

void Press(const ZYLStudioUnitsDialog &dialog, QDialogButtonBox::StandardButton button) {
    QPushButton *push = dialog.findChild<QDialogButtonBox *>()->button(button);
    QVERIFY(push);
    push->click();
}

const QList<ZYLSysValue::Magnitude> Quantities{ZYLSysValue::Length, ZYLSysValue::Force, ZYLSysValue::Time,
                                               ZYLSysValue::FeedRate, ZYLSysValue::Angle};

} // namespace

class tst_ZYLStudioUnitsDialog : public QObject {
    Q_OBJECT
private slots:
    void init();

    void opensOnTheCurrentUnits();
    void okPersists_data();
    void okPersists();
    void cancelChangesNothing();
    void restoreDefaults();
};

void tst_ZYLStudioUnitsDialog::init() {
    ZYLSysUnits::GetInstance()->RevertToDefaults();
}

void tst_ZYLStudioUnitsDialog::opensOnTheCurrentUnits() {
    ZYLSysUnits *units = ZYLSysUnits::GetInstance();
    QVERIFY(units->SetCurrentUnit(ZYLSysValue::Length, ZYLSysValue::Inch));
    QVERIFY(units->SetCurrentUnit(ZYLSysValue::Angle, ZYLSysValue::Radian));
    ZYLStudioUnitsDialog dialog;
    for (ZYLSysValue::Magnitude magnitude : Quantities) {
        QVERIFY2(Combo(dialog, magnitude), QMetaEnum::fromType<ZYLSysValue::Magnitude>().valueToKey(magnitude));
        QCOMPARE(Combo(dialog, magnitude)->count(), ZYLSysValue::GetMagnitudeUnits(magnitude).size());
        QCOMPARE(Shown(dialog, magnitude), units->GetCurrentUnit(magnitude));
    }
    QCOMPARE(Shown(dialog, ZYLSysValue::Length), ZYLSysValue::Inch);
    QCOMPARE(Shown(dialog, ZYLSysValue::Angle), ZYLSysValue::Radian);
    QCOMPARE(dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::RestoreDefaults)->text(),
             QStringLiteral("Restore defaults"));
}

void tst_ZYLStudioUnitsDialog::okPersists_data() {
    QTest::addColumn<ZYLSysValue::Magnitude>("magnitude");
    QTest::addColumn<ZYLSysValue::Unit>("unit");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QString>("code");
    QTest::newRow("length in inches") << ZYLSysValue::Length << ZYLSysValue::Inch << QByteArray("lengthUnit")
                                      << QStringLiteral("in");
    QTest::newRow("force in pound-force") << ZYLSysValue::Force << ZYLSysValue::PoundForce
                                          << QByteArray("forceUnit") << QStringLiteral("lbf");
    QTest::newRow("feed rate in in/min") << ZYLSysValue::FeedRate << ZYLSysValue::InchPerMinute
                                         << QByteArray("feedRateUnit") << QStringLiteral("in/min");
    QTest::newRow("angle in radians") << ZYLSysValue::Angle << ZYLSysValue::Radian << QByteArray("angleUnit")
                                      << QStringLiteral("rad");
}

void tst_ZYLStudioUnitsDialog::okPersists() {
    QFETCH(ZYLSysValue::Magnitude, magnitude);
    QFETCH(ZYLSysValue::Unit, unit);
    QFETCH(QByteArray, key);
    QFETCH(QString, code);
    QSignalSpy changed(ZYLSysUnits::GetInstance(), &ZYLSysUnits::CurrentUnitChanged);
    ZYLStudioUnitsDialog dialog;
    QVERIFY(Choose(dialog, magnitude, unit));
    // Nothing is applied before OK.
    QCOMPARE(ZYLSysValue::GetMagnitudeCurrentUnit(magnitude), ZYLSysUnits::GetDefaultUnit(magnitude));
    Press(dialog, QDialogButtonBox::Ok);

    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(ZYLSysValue::GetMagnitudeCurrentUnit(magnitude), unit);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.at(0).at(0).toInt(), int(magnitude));
    UnitsReader reader;
    QCOMPARE(reader.GetValue(key).toString(), code);
    // The other quantities keep their defaults.
    for (ZYLSysValue::Magnitude other : Quantities) {
        if (other != magnitude)
            QCOMPARE(ZYLSysValue::GetMagnitudeCurrentUnit(other), ZYLSysUnits::GetDefaultUnit(other));
    }
}

void tst_ZYLStudioUnitsDialog::cancelChangesNothing() {
    QSignalSpy changed(ZYLSysUnits::GetInstance(), &ZYLSysUnits::CurrentUnitChanged);
    ZYLStudioUnitsDialog dialog;
    QVERIFY(Choose(dialog, ZYLSysValue::Length, ZYLSysValue::Inch));
    QVERIFY(Choose(dialog, ZYLSysValue::Angle, ZYLSysValue::Radian));
    Press(dialog, QDialogButtonBox::Cancel);

    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QCOMPARE(changed.size(), 0);
    QCOMPARE(ZYLSysValue::GetMagnitudeCurrentUnit(ZYLSysValue::Length), ZYLSysValue::Millimeter);
    QCOMPARE(ZYLSysValue::GetMagnitudeCurrentUnit(ZYLSysValue::Angle), ZYLSysValue::Degree);
    UnitsReader reader;
    QVERIFY(!reader.GetValue("lengthUnit").isValid());
    QVERIFY(!reader.GetValue("angleUnit").isValid());
}

void tst_ZYLStudioUnitsDialog::restoreDefaults() {
    ZYLSysUnits *units = ZYLSysUnits::GetInstance();
    QVERIFY(units->SetCurrentUnit(ZYLSysValue::Length, ZYLSysValue::Inch));
    QVERIFY(units->SetCurrentUnit(ZYLSysValue::Force, ZYLSysValue::PoundForce));
    ZYLStudioUnitsDialog dialog;
    QCOMPARE(Shown(dialog, ZYLSysValue::Length), ZYLSysValue::Inch);

    Press(dialog, QDialogButtonBox::RestoreDefaults);
    for (ZYLSysValue::Magnitude magnitude : Quantities)
        QCOMPARE(Shown(dialog, magnitude), ZYLSysUnits::GetDefaultUnit(magnitude));
    // Shown only: the units change on OK.
    QCOMPARE(units->GetCurrentUnit(ZYLSysValue::Length), ZYLSysValue::Inch);

    Press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(units->GetCurrentUnit(ZYLSysValue::Length), ZYLSysValue::Millimeter);
    QCOMPARE(units->GetCurrentUnit(ZYLSysValue::Force), ZYLSysValue::Newton);
    // Back to defaults means nothing stored, so later default changes reach the user.
    UnitsReader reader;
    QVERIFY(!reader.GetValue("lengthUnit").isValid());
    QVERIFY(!reader.GetValue("forceUnit").isValid());
}

QTEST_MAIN(tst_ZYLStudioUnitsDialog)
#include "tst_ZYLStudioUnitsDialog.moc"
