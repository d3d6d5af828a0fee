// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmnUnitSpinBox.h"

#include "ZYLSysLocalizationManager.h"
#include "ZYLSysUnits.h"
#include "ZYLSysValue.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>
#include <QTranslator>

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

// Translates the magnitude names in every context, as a loaded German translation would.
class GermanNames : public QTranslator {
public:
    QString translate(const char *, const char *sourceText, const char *, int) const override
    {
        if (qstrcmp(sourceText, "Length") == 0)
            return QStringLiteral("Länge");
        if (qstrcmp(sourceText, "Angle") == 0)
            return QStringLiteral("Winkel");
        return QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class tst_ZYLCmnUnitSpinBox : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void display_data();
    void display();
    void typing_data();
    void typing();
    void validation_data();
    void validation();
    void garbageKeepsValue_data();
    void garbageKeepsValue();
    void rangeInSystemUnits();
    void followsUnitChange();
    void magnitudeSetAfterConstruction();
    void translatedMagnitude();
    void emptySuffix();
    void confirmingDoesNotDrift();
    void stepsInDisplayUnit();
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
    QTest::newRow("mm") << "Length" << int(ZYLSysValue::Millimeter) << 25.4 << "25.400 mm";
    QTest::newRow("inch") << "Length" << int(ZYLSysValue::Inch) << 25.4 << "1.0000 in";
    QTest::newRow("degree") << "Angle" << int(ZYLSysValue::Degree) << kPi / 2 << "90.000\u00B0";
    QTest::newRow("radian") << "Angle" << int(ZYLSysValue::Radian) << kPi / 2 << "1.57080 rad";
    QTest::newRow("in/min") << "Linear Feed Rate" << int(ZYLSysValue::InchPerMinute) << 2540.0 << "100.000 in/min";
    QTest::newRow("lbf") << "Force" << int(ZYLSysValue::PoundForce) << 4.4482216152605 << "1.000 lbf";
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

void tst_ZYLCmnUnitSpinBox::typing_data()
{
    QTest::addColumn<QString>("magnitude");
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("value");
    QTest::newRow("mm, plain") << "Length" << int(ZYLSysValue::Millimeter) << "12.5" << 12.5;
    QTest::newRow("mm, inch typed") << "Length" << int(ZYLSysValue::Millimeter) << "1 in" << 25.4;
    QTest::newRow("mm, inch no space") << "Length" << int(ZYLSysValue::Millimeter) << "2in" << 50.8;
    QTest::newRow("inch, plain") << "Length" << int(ZYLSysValue::Inch) << "2" << 50.8;
    QTest::newRow("inch, mm typed") << "Length" << int(ZYLSysValue::Inch) << "25.4 mm" << 25.4;
    QTest::newRow("inch, negative") << "Length" << int(ZYLSysValue::Inch) << "-0.5" << -12.7;
    QTest::newRow("degree, plain") << "Angle" << int(ZYLSysValue::Degree) << "90" << kPi / 2;
    QTest::newRow("degree, radian typed") << "Angle" << int(ZYLSysValue::Degree) << "1 rad" << 1.0;
    QTest::newRow("radian, deg typed") << "Angle" << int(ZYLSysValue::Radian) << "45 deg" << kPi / 4;
    QTest::newRow("in/min, mm/min typed") << "Linear Feed Rate" << int(ZYLSysValue::InchPerMinute) << "100 mm/min"
                                          << 100.0;
}

void tst_ZYLCmnUnitSpinBox::typing()
{
    QFETCH(QString, magnitude);
    QFETCH(int, unit);
    QFETCH(QString, typed);
    QFETCH(double, value);
    ZYLSysValue::SetMagnitudeCurrentUnit(ZYLSysValue::GetMagnitudeByName(magnitude), ZYLSysValue::Unit(unit));
    ZYLCmnUnitSpinBox box;
    box.setProperty("magnitude", magnitude);
    box.show();
    QSignalSpy changed(&box, &QDoubleSpinBox::valueChanged);
    TypeInto(box, typed);
    QVERIFY2(Near(box.value(), value), qPrintable(QString::number(box.value(), 'g', 17)));
    QVERIFY(!changed.isEmpty());
    QVERIFY(Near(changed.last().at(0).toDouble(), value));
    // After confirming, the text shows the value in the display unit again.
    QCOMPARE(box.text(), box.textFromValue(box.value()));
}

void tst_ZYLCmnUnitSpinBox::validation_data()
{
    QTest::addColumn<QString>("magnitude");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("state");
    const int invalid = QValidator::Invalid, intermediate = QValidator::Intermediate,
              acceptable = QValidator::Acceptable;
    QTest::newRow("number") << "Length" << "12.5" << acceptable;
    QTest::newRow("degree sign") << "Angle" << "90\u00B0" << acceptable;
    QTest::newRow("empty") << "Length" << "" << intermediate;
    QTest::newRow("sign only") << "Length" << "-" << intermediate;
    QTest::newRow("decimal point only") << "Length" << "." << intermediate;
    QTest::newRow("open exponent") << "Length" << "1e" << intermediate;
    QTest::newRow("half suffix") << "Length" << "25.4 m" << intermediate;
    QTest::newRow("inch, start of in/min") << "Linear Feed Rate" << "2 in" << intermediate;
    QTest::newRow("out of range") << "Angle" << "1000" << intermediate;
    QTest::newRow("letters") << "Length" << "abc" << invalid;
    QTest::newRow("trailing junk") << "Length" << "12x" << invalid;
    QTest::newRow("foreign unit") << "Length" << "5 N" << invalid;
    QTest::newRow("two points") << "Length" << "1..2" << invalid;
    QTest::newRow("unit on a plain number") << "" << "5 mm" << invalid;
}

void tst_ZYLCmnUnitSpinBox::validation()
{
    QFETCH(QString, magnitude);
    QFETCH(QString, text);
    QFETCH(int, state);
    ZYLCmnUnitSpinBox box;
    box.setProperty("magnitude", magnitude);
    int position = int(text.size());
    QCOMPARE(int(box.validate(text, position)), state);
}

void tst_ZYLCmnUnitSpinBox::garbageKeepsValue_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("letters") << "abc";
    QTest::newRow("unit first") << "in 5";
    QTest::newRow("unfinished unit") << "7 m";
    QTest::newRow("out of range") << "2000000";
}

void tst_ZYLCmnUnitSpinBox::garbageKeepsValue()
{
    QFETCH(QString, typed);
    ZYLCmnUnitSpinBox box;
    box.setProperty("magnitude", "Length");
    box.setValue(10.0);
    // Judged as a whole on Return, not by the readable beginnings typed on the way.
    box.setKeyboardTracking(false);
    box.show();
    TypeInto(box, typed);
    QCOMPARE(box.value(), 10.0);
    QCOMPARE(box.text(), QStringLiteral("10.000 mm"));
}

void tst_ZYLCmnUnitSpinBox::rangeInSystemUnits()
{
    ZYLCmnUnitSpinBox box;
    box.setProperty("magnitude", "Angle");
    box.setRange(-1.5, 1.5);
    QCOMPARE(box.minimum(), -1.5);
    QCOMPARE(box.maximum(), 1.5);
    box.setValue(2.0);
    QCOMPARE(box.value(), 1.5);
    QCOMPARE(box.text(), QStringLiteral("85.944\u00B0"));
    box.show();
    // The shown bounds, typed back, reach the bounds although they read as slightly beyond.
    box.setValue(0.0);
    TypeInto(box, QStringLiteral("85.944"));
    QCOMPARE(box.value(), 1.5);
    TypeInto(box, QStringLiteral("-85.944"));
    QCOMPARE(box.value(), -1.5);
    box.setKeyboardTracking(false);
    TypeInto(box, QStringLiteral("86"));
    QCOMPARE(box.value(), -1.5);
    TypeInto(box, QStringLiteral("1.25 rad"));
    QCOMPARE(box.value(), 1.25);
}

void tst_ZYLCmnUnitSpinBox::followsUnitChange()
{
    ZYLCmnUnitSpinBox length;
    length.setProperty("magnitude", "Length");
    length.setValue(25.4);
    ZYLCmnUnitSpinBox angle;
    angle.setProperty("magnitude", "Angle");
    angle.setValue(kPi);
    QSignalSpy changed(&length, &QDoubleSpinBox::valueChanged);

    ZYLSysValue::SetMagnitudeCurrentUnit(ZYLSysValue::Length, ZYLSysValue::Inch);
    QCOMPARE(length.text(), QStringLiteral("1.0000 in"));
    QCOMPARE(length.value(), 25.4);
    QCOMPARE(angle.text(), QStringLiteral("180.000\u00B0"));

    ZYLSysValue::SetMagnitudeCurrentUnit(ZYLSysValue::Angle, ZYLSysValue::Radian);
    QCOMPARE(angle.text(), QStringLiteral("3.14159 rad"));
    QCOMPARE(angle.value(), kPi);

    ZYLSysValue::SetMagnitudeCurrentUnit(ZYLSysValue::Length, ZYLSysValue::Millimeter);
    QCOMPARE(length.text(), QStringLiteral("25.400 mm"));
    QCOMPARE(changed.count(), 0);
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

void tst_ZYLCmnUnitSpinBox::translatedMagnitude()
{
    GermanNames german;
    QCoreApplication::installTranslator(&german);
    ZYLCmnUnitSpinBox box;
    box.setProperty("magnitude", QStringLiteral("Winkel"));
    box.setValue(kPi);
    QCoreApplication::removeTranslator(&german);
    QCOMPARE(box.text(), QStringLiteral("180.000\u00B0"));
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

void tst_ZYLCmnUnitSpinBox::confirmingDoesNotDrift()
{
    ZYLCmnUnitSpinBox box;
    box.setProperty("magnitude", "Angle");
    box.setValue(0.5);
    QCOMPARE(box.text(), QStringLiteral("28.648\u00B0"));
    box.show();
    QSignalSpy changed(&box, &QDoubleSpinBox::valueChanged);
    box.selectAll();
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(box.value(), 0.5);
    QCOMPARE(box.valueFromText(box.text()), 0.5);
    for (const QList<QVariant> &emitted : changed)
        QCOMPARE(emitted.at(0).toDouble(), 0.5);

    // Values keep full precision; the display rounding is only in the text.
    box.setValue(0.1 + 0.2);
    QCOMPARE(box.value(), 0.1 + 0.2);
}

void tst_ZYLCmnUnitSpinBox::stepsInDisplayUnit()
{
    ZYLSysValue::SetMagnitudeCurrentUnit(ZYLSysValue::Length, ZYLSysValue::Inch);
    ZYLCmnUnitSpinBox box;
    box.setProperty("magnitude", "Length");
    box.setValue(25.4);
    box.stepUp();
    QCOMPARE(box.text(), QStringLiteral("1.1000 in"));
    QVERIFY(Near(box.value(), 27.94));

    // A step set by the user is kept when the unit changes.
    box.setSingleStep(5.0);
    ZYLSysValue::SetMagnitudeCurrentUnit(ZYLSysValue::Length, ZYLSysValue::Millimeter);
    QCOMPARE(box.singleStep(), 5.0);
}

QTEST_MAIN(tst_ZYLCmnUnitSpinBox)
#include "tst_ZYLCmnUnitSpinBox.moc"
