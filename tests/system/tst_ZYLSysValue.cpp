// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysException.h"
#include "ZYLSysLocalizationManager.h"
#include "ZYLSysOutOfBoundsException.h"
#include "ZYLSysUnits.h"
#include "ZYLSysValue.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <limits>
#include <numbers>

using Value = ZYLSysValue;

namespace {

const double kPi = std::numbers::pi;

// Sets the locale and the display unit for one test row and puts them back afterwards.
class Scope {
public:
    Scope(const QString &locale, Value::Magnitude magnitude = Value::None, Value::Unit unit = Value::System)
        : m_magnitude(magnitude)
    {
        ZYLSysLocalizationManager::GetManager()->SetLocale(QLocale(locale));
        if (magnitude != Value::None) {
            m_unit = Value::GetMagnitudeCurrentUnit(magnitude);
            Value::SetMagnitudeCurrentUnit(magnitude, unit);
        }
    }
    ~Scope()
    {
        ZYLSysLocalizationManager::GetManager()->SetLocale(QLocale::c());
        if (m_magnitude != Value::None)
            Value::SetMagnitudeCurrentUnit(m_magnitude, m_unit);
    }

private:
    Value::Magnitude m_magnitude;
    Value::Unit m_unit = Value::System;
};

} // namespace

class tst_ZYLSysValue : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_folder;

private slots:
    void initTestCase()
    {
        qputenv("ZYL_SETTINGS_DIR", m_folder.path().toUtf8());
        ZYLSysLocalizationManager::GetManager()->SetLocale(QLocale::c());
    }

    void setValueInUnits()
    {
        Value value(Value::Length, 0.0);
        value.SetValue(1.0, Value::Inch);
        QCOMPARE(value.GetValue(), 25.4);
        value.SetValue(QStringLiteral("2"), Value::Inch);
        QCOMPARE(value.GetValue(), 50.8);
        value.SetValue(QStringLiteral("2 mm"), Value::Inch);
        QCOMPARE(value.GetValue(), 2.0);
        QVERIFY_THROWS_EXCEPTION(ZYLSysException, value.SetValue(1.0, Value::Degree));
        QVERIFY_THROWS_EXCEPTION(ZYLSysException, value.SetValue(QStringLiteral("1"), Value::Newton));
        QCOMPARE(value.GetValue(), 2.0);
        QCOMPARE(value.ToString(Value::Inch, true), QStringLiteral("0.0787 in"));
        QVERIFY_THROWS_EXCEPTION(ZYLSysException, value.ToString(Value::Second));
    }

    void currentUnitIsCheckedPersistedAndAnnounced()
    {
        ZYLSysUnits *units = ZYLSysUnits::GetInstance();
        QSignalSpy changed(units, &ZYLSysUnits::CurrentUnitChanged);
        Value::SetMagnitudeCurrentUnit(Value::Length, Value::Inch);
        QCOMPARE(Value::GetMagnitudeCurrentUnit(Value::Length), Value::Inch);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().first().toInt(), int(Value::Length));
        QCOMPARE(units->GetValue("lengthUnit").toString(), QStringLiteral("in"));

        QVERIFY_THROWS_EXCEPTION(ZYLSysException, Value::SetMagnitudeCurrentUnit(Value::Length, Value::Newton));
        QVERIFY_THROWS_EXCEPTION(ZYLSysException, Value::SetMagnitudeCurrentUnit(Value::None, Value::Millimeter));
        QCOMPARE(Value::GetMagnitudeCurrentUnit(Value::Length), Value::Inch);
        QCOMPARE(changed.count(), 1);

        Value::SetMagnitudeCurrentUnit(Value::Length, Value::System);
        QCOMPARE(Value::GetMagnitudeCurrentUnit(Value::Length), Value::Millimeter);
        QCOMPARE(changed.count(), 2);
    }

    void storedUnitsAreRestoredOrRefused()
    {
        QFile file(ZYLSysSettings::GetSettingsFilePath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[ZYLUnits]\nlengthUnit=N\nangleUnit=rad\nforceUnit=furlong\nfeedRateUnit=in/min\n");
        file.close();
        ZYLSysUnits *units = ZYLSysUnits::GetInstance();
        units->Restore();
        QCOMPARE(Value::GetMagnitudeCurrentUnit(Value::Length), Value::Millimeter);
        QCOMPARE(Value::GetMagnitudeCurrentUnit(Value::Angle), Value::Radian);
        QCOMPARE(Value::GetMagnitudeCurrentUnit(Value::Force), Value::Newton);
        QCOMPARE(Value::GetMagnitudeCurrentUnit(Value::FeedRate), Value::InchPerMinute);
        units->RevertToDefaults();
        QCOMPARE(Value::GetMagnitudeCurrentUnit(Value::Angle), Value::Degree);
        QCOMPARE(Value::GetMagnitudeCurrentUnit(Value::FeedRate), Value::MillimeterPerMinute);
        QVERIFY(!units->GetValue("angleUnit").isValid());
    }

    void variantConversions()
    {
        const Value length(Value::Length, 12.5);
        const QVariant held = QVariant::fromValue(length);
        QVERIFY(held.canConvert<Value>());
        QCOMPARE(held.value<Value>(), length);
        QCOMPARE(held.toString(), length.ToString());
        QCOMPARE(held.toDouble(), 12.5);

        // A table cell holding text converts to a value whose magnitude its suffix gives.
        const QVariant angleText(QString::fromUtf8("90.000°"));
        QVERIFY(angleText.canConvert<Value>());
        const Value angle = angleText.value<Value>();
        QCOMPARE(angle.GetMagnitude(), Value::Angle);
        QVERIFY(qAbs(angle.GetValue() - kPi / 2) < 1e-12);
        QCOMPARE(QVariant(QStringLiteral("25.4")).value<Value>().GetMagnitude(), Value::None);

        QVariant garbage(QStringLiteral("twelve"));
        QVERIFY(!garbage.convert(QMetaType::fromType<Value>()));
    }

    void magnitudeByName()
    {
        QCOMPARE(Value::GetMagnitudeByName("Length"), Value::Length);
        QCOMPARE(Value::GetMagnitudeByName("Linear Feed Rate"), Value::FeedRate);
        QCOMPARE(Value::GetMagnitudeByName("force"), Value::Force);
        QCOMPARE(Value::GetMagnitudeByName("Pressure"), Value::None);
    }

    void outOfBoundsMessage_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<Value::Magnitude>("magnitude");
        QTest::addColumn<Value::Unit>("unit");
        QTest::addColumn<QList<double>>("numbers"); // value, minimum, maximum
        QTest::addColumn<bool>("includeMinimum");
        QTest::addColumn<bool>("includeMaximum");
        QTest::addColumn<QString>("expected");
        QTest::newRow("length in mm") << "C" << Value::Length << Value::Millimeter << QList<double>{12, 0, 10} << true
                                      << true << "Value 12 mm is out of range [0 mm, 10 mm]";
    }

    // The text shows the display unit and locale; the numbers it carries stay in system units.
    void outOfBoundsMessage()
    {
        QFETCH(QString, locale);
        QFETCH(Value::Magnitude, magnitude);
        QFETCH(Value::Unit, unit);
        QFETCH(QList<double>, numbers);
        QFETCH(bool, includeMinimum);
        QFETCH(bool, includeMaximum);
        QFETCH(QString, expected);
        const Scope scope(locale, magnitude, unit);
        const ZYLSysOutOfBoundsException bounds(numbers[0], numbers[1], numbers[2], includeMinimum, includeMaximum,
                                                magnitude);
        const ZYLSysException &error = bounds;
        QCOMPARE(error.GetMessage(), expected);
        QCOMPARE(QString::fromUtf8(error.what()), expected);
        QCOMPARE(bounds.GetValue(), numbers[0]);
    }
};

QTEST_GUILESS_MAIN(tst_ZYLSysValue)
#include "tst_ZYLSysValue.moc"
