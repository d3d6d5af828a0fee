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

// Half the last shown decimal of a unit, in system units: what a round trip may lose.
double DisplayStep(Value::Unit unit)
{
    return 0.5 * std::pow(10.0, -Value::GetUnitDecimals(unit)) * Value::ConvertToSystemUnit(1.0, unit);
}

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

    void conversions_data()
    {
        QTest::addColumn<Value::Unit>("unit");
        QTest::addColumn<double>("inUnit");
        QTest::addColumn<double>("inSystem");
        QTest::newRow("in") << Value::Inch << 2.0 << 50.8;
        QTest::newRow("lbf") << Value::PoundForce << 1.0 << 4.4482216152605;
        QTest::newRow("s") << Value::Second << 5.0 << 5.0;
        QTest::newRow("in/min") << Value::InchPerMinute << 100.0 << 2540.0;
        QTest::newRow("deg") << Value::Degree << 180.0 << kPi;
    }

    void conversions()
    {
        QFETCH(Value::Unit, unit);
        QFETCH(double, inUnit);
        QFETCH(double, inSystem);
        QVERIFY(qAbs(Value::ConvertToSystemUnit(inUnit, unit) - inSystem) < 1e-12);
        QVERIFY(qAbs(Value::ConvertFromSystemUnit(inSystem, unit) - inUnit) < 1e-12);
        const Value::Magnitude magnitude = Value::GetUnitMagnitude(unit);
        QVERIFY(Value::GetMagnitudeUnits(magnitude).contains(unit));
        QCOMPARE(Value::GetMagnitudeUnits(magnitude).first(), Value::GetMagnitudeSystemUnit(magnitude));
    }

    void toString_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<Value::Magnitude>("magnitude");
        QTest::addColumn<Value::Unit>("unit");
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("expected");
        QTest::newRow("mm") << "C" << Value::Length << Value::Millimeter << 12.5 << "12.500 mm";
        QTest::newRow("in") << "C" << Value::Length << Value::Inch << 25.4 << "1.0000 in";
        QTest::newRow("deg") << "C" << Value::Angle << Value::Degree << kPi / 2 << QString::fromUtf8("90.000°");
        QTest::newRow("rad") << "C" << Value::Angle << Value::Radian << kPi / 2 << "1.57080 rad";
        QTest::newRow("lbf") << "C" << Value::Force << Value::PoundForce << 4.4482216152605 << "1.000 lbf";
        QTest::newRow("in/min") << "C" << Value::FeedRate << Value::InchPerMinute << 2540.0 << "100.000 in/min";
        QTest::newRow("mm/min") << "C" << Value::FeedRate << Value::MillimeterPerMinute << 2540.04 << "2540.0 mm/min";
        QTest::newRow("s") << "C" << Value::Time << Value::Second << 3.14159 << "3.14 s";
        QTest::newRow("no minus zero") << "C" << Value::Length << Value::Millimeter << -0.0001 << "0.000 mm";
        QTest::newRow("german, no grouping") << "de_DE" << Value::Length << Value::Millimeter << 1234.5 << "1234,500 mm";
        QTest::newRow("german deg") << "de_DE" << Value::Angle << Value::Degree << -kPi / 4 << QString::fromUtf8("-45,000°");
        QTest::newRow("plain number") << "C" << Value::None << Value::System << 12.5 << "12.5";
    }

    void toString()
    {
        QFETCH(QString, locale);
        QFETCH(Value::Magnitude, magnitude);
        QFETCH(Value::Unit, unit);
        QFETCH(double, value);
        QFETCH(QString, expected);
        const Scope scope(locale, magnitude, unit);
        QCOMPARE(Value(magnitude, value).ToString(), expected);
    }

    void roundTrip_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<Value::Magnitude>("magnitude");
        QTest::addColumn<Value::Unit>("unit");
        QTest::addColumn<double>("value");
        for (const char *locale : {"C", "de_DE"}) {
            for (int m = Value::Length; m <= Value::Angle; ++m) {
                const auto magnitude = Value::Magnitude(m);
                for (Value::Unit unit : Value::GetMagnitudeUnits(magnitude)) {
                    for (double value : {0.0, 12.3456789, -7.25, 98765.4321}) {
                        QTest::addRow("%s %s %g", locale, qPrintable(Value::GetUnitCode(unit)), value)
                            << QString::fromLatin1(locale) << magnitude << unit << value;
                    }
                }
            }
        }
    }

    void roundTrip()
    {
        QFETCH(QString, locale);
        QFETCH(Value::Magnitude, magnitude);
        QFETCH(Value::Unit, unit);
        QFETCH(double, value);
        const Scope scope(locale, magnitude, unit);
        const Value original(magnitude, value);
        Value read(magnitude, -1.0);
        read.FromString(original.ToString());
        QVERIFY2(qAbs(read.GetValue() - value) <= DisplayStep(unit) * 1.000001, qPrintable(original.ToString()));
        // Programs write "%.10f" and the system suffix whatever the user's locale.
        const QString exact = QString::asprintf("%.10f", value) + Value::GetUnitSuffix(Value::GetMagnitudeSystemUnit(magnitude));
        read.FromString(exact);
        QVERIFY2(qAbs(read.GetValue() - value) < 1e-9, qPrintable(exact));
    }

    void parseAccepted_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<Value::Magnitude>("magnitude");
        QTest::addColumn<Value::Unit>("unit");
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("expected");
        QTest::newRow("mm") << "C" << Value::Length << Value::Millimeter << "12.5 mm" << 12.5;
        QTest::newRow("inch without space") << "C" << Value::Length << Value::Millimeter << "0.5in" << 12.7;
        QTest::newRow("upper case") << "C" << Value::Length << Value::Millimeter << "2 IN" << 50.8;
        QTest::newRow("no suffix, display inch") << "C" << Value::Length << Value::Inch << "  3  " << 76.2;
        QTest::newRow("exponent") << "C" << Value::Length << Value::Millimeter << "1e2 mm" << 100.0;
        QTest::newRow("degree sign") << "C" << Value::Angle << Value::Degree << QString::fromUtf8("90°") << kPi / 2;
        QTest::newRow("deg") << "C" << Value::Angle << Value::Radian << "90 deg" << kPi / 2;
        QTest::newRow("rad in degree display") << "C" << Value::Angle << Value::Degree << "1.5707963268rad" << 1.5707963268;
        QTest::newRow("lbf") << "C" << Value::Force << Value::Newton << "2 lbf" << 8.896443230521;
        QTest::newRow("in/min before in") << "C" << Value::FeedRate << Value::MillimeterPerMinute << "100 in/min" << 2540.0;
        QTest::newRow("negative time") << "C" << Value::Time << Value::Second << "-4 s" << -4.0;
        QTest::newRow("german comma") << "de_DE" << Value::Length << Value::Millimeter << "12,5 mm" << 12.5;
        QTest::newRow("german, C text") << "de_DE" << Value::Length << Value::Millimeter << "12.5 mm" << 12.5;
        QTest::newRow("plain number") << "C" << Value::None << Value::System << "42" << 42.0;
    }

    void parseAccepted()
    {
        QFETCH(QString, locale);
        QFETCH(Value::Magnitude, magnitude);
        QFETCH(Value::Unit, unit);
        QFETCH(QString, text);
        QFETCH(double, expected);
        const Scope scope(locale, magnitude, unit);
        Value value(magnitude, 0.0);
        value.FromString(text);
        QVERIFY(qAbs(value.GetValue() - expected) < 1e-9);
    }

    void parseRefused_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<Value::Magnitude>("magnitude");
        QTest::addColumn<QString>("text");
        QTest::newRow("force suffix on length") << "C" << Value::Length << "12 N";
        QTest::newRow("suffix on plain number") << "C" << Value::None << "12 mm";
        QTest::newRow("garbage") << "C" << Value::Length << "abc";
        QTest::newRow("empty") << "C" << Value::Length << "";
        QTest::newRow("suffix only") << "C" << Value::Length << "mm";
        QTest::newRow("doubled suffix") << "C" << Value::Length << "12 mm mm";
        QTest::newRow("minutes") << "C" << Value::Length << "5 min";
        QTest::newRow("comma in C") << "C" << Value::Length << "1,5";
        QTest::newRow("german grouping") << "de_DE" << Value::Length << "1.234,5 mm";
        QTest::newRow("infinity") << "C" << Value::Length << "inf";
        QTest::newRow("nan") << "C" << Value::Time << "nan s";
        QTest::newRow("trailing text") << "C" << Value::Length << "12 mm!";
    }

    void parseRefused()
    {
        QFETCH(QString, locale);
        QFETCH(Value::Magnitude, magnitude);
        QFETCH(QString, text);
        const Scope scope(locale);
        Value value(magnitude, 7.0);
        try {
            value.FromString(text);
            QFAIL("no exception");
        } catch (const ZYLSysException &error) {
            QVERIFY(!error.GetMessage().isEmpty());
        }
        QVERIFY_THROWS_EXCEPTION(ZYLSysException, value.SetValue(text, Value::System));
        QCOMPARE(value.GetValue(), 7.0);
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
        const double inf = std::numeric_limits<double>::infinity();
        const auto N = Value::None;
        const auto S = Value::System;
        QTest::newRow("row index") << "C" << N << S << QList<double>{5, 0, 3} << true << true
                                   << "Value 5 is out of range [0, 3]";
        QTest::newRow("open lower end") << "C" << N << S << QList<double>{0, 0, 10} << false << true
                                        << "Value 0 is out of range (0, 10]";
        QTest::newRow("open upper end") << "C" << N << S << QList<double>{10, 0, 10} << true << false
                                        << "Value 10 is out of range [0, 10)";
        QTest::newRow("length in mm") << "C" << Value::Length << Value::Millimeter << QList<double>{12, 0, 10} << true
                                      << true << "Value 12 mm is out of range [0 mm, 10 mm]";
        QTest::newRow("length in inch") << "C" << Value::Length << Value::Inch << QList<double>{50.8, 0, 25.4} << true
                                        << true << "Value 2 in is out of range [0 in, 1 in]";
        QTest::newRow("tilt in degrees") << "C" << Value::Angle << Value::Degree
                                         << QList<double>{3.14159265358979, -1.55, 1.55} << true << true
                                         << QString::fromUtf8("Value 180° is out of range [-88.808°, 88.808°]");
        QTest::newRow("no upper end") << "C" << N << S << QList<double>{-1, 0, inf} << true << true
                                      << QString::fromUtf8("Value -1 is out of range [0, ∞]");
        QTest::newRow("german") << "de_DE" << Value::Length << Value::Millimeter << QList<double>{2.5, 3, 4} << true
                                << true << "Value 2,5 mm is out of range [3 mm, 4 mm]";
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
