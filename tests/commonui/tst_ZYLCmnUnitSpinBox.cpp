// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmnUnitSpinBox.h"

#include "ZYLSysLocalizationManager.h"
#include "ZYLSysUnits.h"
#include "ZYLSysValue.h"

#include <QTest>

#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

bool Near(double actual, double expected)
{
    return std::abs(actual - expected) <= 1e-9 * std::max(1.0, std::abs(expected));
}

// Opens the box as a user would find it: shown, focused, its whole text selected.
void TypeInto(ZYLCmnUnitSpinBox &box, const QString &text)
{
    box.selectAll();
    QTest::keyClicks(&box, text);
    QTest::keyClick(&box, Qt::Key_Return);
}

} // namespace

class tst_ZYLCmnUnitSpinBox : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void display_data();
    void display();
    void magnitudeSetAfterConstruction();
    void emptySuffix();
};

void tst_ZYLCmnUnitSpinBox::initTestCase()
{
    ZYLSysLocalizationManager::GetManager()->SetLocale(QLocale::c());
}

void tst_ZYLCmnUnitSpinBox::init()
{
    ZYLSysUnits::GetInstance()->RevertToDefaults();
}

void tst_ZYLCmnUnitSpinBox::display_data()
{
    QTest::addColumn<QString>("magnitude");
    QTest::addColumn<int>("unit");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("radian") << "Angle" << int(ZYLSysValue::Radian) << kPi / 2 << "1.57080 rad";
    QTest::newRow("in/min") << "Linear Feed Rate" << int(ZYLSysValue::InchPerMinute) << 2540.0 << "100.000 in/min";
}

void tst_ZYLCmnUnitSpinBox::display()
{
    QFETCH(QString, magnitude);
    QFETCH(int, unit);
    QFETCH(double, value);
    QFETCH(QString, text);
    const auto quantity = ZYLSysValue::GetMagnitudeByName(magnitude);
    ZYLSysValue::SetMagnitudeCurrentUnit(quantity, ZYLSysValue::Unit(unit));
    ZYLCmnUnitSpinBox box;
    box.setProperty("magnitude", magnitude);
    box.setValue(value);
    QCOMPARE(box.text(), text);
    QCOMPARE(box.value(), value);
}

void tst_ZYLCmnUnitSpinBox::magnitudeSetAfterConstruction()
{
    // A form sets range and value before the dynamic property: all stay in system units.
    ZYLCmnUnitSpinBox box;
    box.setRange(0.01, 1000000.0);
    box.setValue(10.0);
    box.setProperty("magnitude", "Length");
    QCOMPARE(box.minimum(), 0.01);
    QCOMPARE(box.maximum(), 1000000.0);
    QCOMPARE(box.text(), QStringLiteral("10.000 mm"));

    // Without a range of its own the box takes the magnitude's default range.
    ZYLCmnUnitSpinBox angle;
    angle.setValue(1.0);
    angle.setProperty("magnitude", "Angle");
    QCOMPARE(angle.value(), 1.0);
    QCOMPARE(angle.text(), QStringLiteral("57.296\u00B0"));
    QVERIFY(Near(angle.maximum(), 2 * kPi));
    QVERIFY(Near(angle.minimum(), -2 * kPi));

    angle.setProperty("magnitude", int(ZYLSysValue::FeedRate));
    QCOMPARE(angle.text(), QStringLiteral("1.0 mm/min"));
    QCOMPARE(angle.minimum(), 0.0);
}

void tst_ZYLCmnUnitSpinBox::emptySuffix()
{
    ZYLSysValue::SetMagnitudeCurrentUnit(ZYLSysValue::Length, ZYLSysValue::Inch);
    ZYLCmnUnitSpinBox box;
    box.setSuffix(QString());
    box.setProperty("magnitude", "Length");
    box.setValue(50.8);
    QCOMPARE(box.text(), QStringLiteral("2.0000"));
    box.show();
    TypeInto(box, QStringLiteral("3"));
    QVERIFY(Near(box.value(), 76.2));
    TypeInto(box, QStringLiteral("10 mm"));
    QVERIFY(Near(box.value(), 10.0));
    ZYLSysValue::SetMagnitudeCurrentUnit(ZYLSysValue::Length, ZYLSysValue::Millimeter);
    QCOMPARE(box.text(), QStringLiteral("10.000"));
}

QTEST_MAIN(tst_ZYLCmnUnitSpinBox)
#include "tst_ZYLCmnUnitSpinBox.moc"
