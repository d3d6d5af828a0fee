// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysLocalizationManager.h"
#include "ZYLSysOutOfBoundsException.h"

#include <QTemporaryDir>
#include <QTest>

#include <limits>

class tst_ZYLSysOutOfBoundsException : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_folder;

private slots:
    void initTestCase()
    {
        qputenv("ZYL_SETTINGS_DIR", m_folder.path().toUtf8());
    }

    void message_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<int>("lengthUnit");
        QTest::addColumn<double>("value");
        QTest::addColumn<double>("minimum");
        QTest::addColumn<double>("maximum");
        QTest::addColumn<bool>("includeMinimum");
        QTest::addColumn<bool>("includeMaximum");
        QTest::addColumn<ZYLSysValue::Magnitude>("magnitude");
        QTest::addColumn<QString>("expected");
        const double inf = std::numeric_limits<double>::infinity();
        const int mm = ZYLSysValue::Millimeter;
        QTest::newRow("row index") << "C" << mm << 5.0 << 0.0 << 3.0 << true << true << ZYLSysValue::None
                                   << "Value 5 is out of range [0, 3]";
        QTest::newRow("open lower end") << "C" << mm << 0.0 << 0.0 << 10.0 << false << true << ZYLSysValue::None
                                        << "Value 0 is out of range (0, 10]";
        QTest::newRow("open upper end") << "C" << mm << 10.0 << 0.0 << 10.0 << true << false << ZYLSysValue::None
                                        << "Value 10 is out of range [0, 10)";
        QTest::newRow("length in mm") << "C" << mm << 12.0 << 0.0 << 10.0 << true << true << ZYLSysValue::Length
                                      << "Value 12 mm is out of range [0 mm, 10 mm]";
        QTest::newRow("length in inch") << "C" << int(ZYLSysValue::Inch) << 50.8 << 0.0 << 25.4 << true << true
                                        << ZYLSysValue::Length << "Value 2 in is out of range [0 in, 1 in]";
        QTest::newRow("tilt in degrees") << "C" << mm << 3.14159265358979 << -1.55 << 1.55 << true << true
                                         << ZYLSysValue::Angle
                                         << QString::fromUtf8("Value 180° is out of range [-88.808°, 88.808°]");
        QTest::newRow("no upper end") << "C" << mm << -1.0 << 0.0 << inf << true << true << ZYLSysValue::None
                                      << QString::fromUtf8("Value -1 is out of range [0, ∞]");
        QTest::newRow("german") << "de_DE" << mm << 2.5 << 3.0 << 4.0 << true << true << ZYLSysValue::Length
                                << "Value 2,5 mm is out of range [3 mm, 4 mm]";
    }

    void message()
    {
        QFETCH(QString, locale);
        QFETCH(int, lengthUnit);
        QFETCH(double, value);
        QFETCH(double, minimum);
        QFETCH(double, maximum);
        QFETCH(bool, includeMinimum);
        QFETCH(bool, includeMaximum);
        QFETCH(ZYLSysValue::Magnitude, magnitude);
        QFETCH(QString, expected);
        ZYLSysLocalizationManager::GetManager()->SetLocale(QLocale(locale));
        ZYLSysValue::SetMagnitudeCurrentUnit(ZYLSysValue::Length, ZYLSysValue::Unit(lengthUnit));
        try {
            throw ZYLSysOutOfBoundsException(value, minimum, maximum, includeMinimum, includeMaximum, magnitude);
        } catch (const ZYLSysException &error) {
            QCOMPARE(error.GetMessage(), expected);
            QCOMPARE(QString::fromUtf8(error.what()), expected);
            const auto *bounds = dynamic_cast<const ZYLSysOutOfBoundsException *>(&error);
            QVERIFY(bounds);
            // The numbers stay in system units; only the text uses the display unit.
            QCOMPARE(bounds->GetValue(), value);
            QCOMPARE(bounds->GetMaximum(), maximum);
            QCOMPARE(bounds->IsMinimumIncluded(), includeMinimum);
        }
        ZYLSysLocalizationManager::GetManager()->SetLocale(QLocale::c());
        ZYLSysValue::SetMagnitudeCurrentUnit(ZYLSysValue::Length, ZYLSysValue::Millimeter);
    }
};

QTEST_GUILESS_MAIN(tst_ZYLSysOutOfBoundsException)
#include "tst_ZYLSysOutOfBoundsException.moc"
