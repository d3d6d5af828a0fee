// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysException.h"
#include "ZYLSysLocalizationManager.h"
#include "ZYLSysValue.h"
#include "ZYLSysVariantFilter.h"

#include <QTemporaryDir>
#include <QTest>

#include <limits>
#include <numbers>

using Filter = ZYLSysVariantFilter;

namespace {

const double kEpsilon = std::numeric_limits<double>::epsilon();

QVariant Length(double mm)
{
    return QVariant::fromValue(ZYLSysValue(ZYLSysValue::Length, mm));
}

QVariant Angle(double rad)
{
    return QVariant::fromValue(ZYLSysValue(ZYLSysValue::Angle, rad));
}

} // namespace

class tst_ZYLSysVariantFilter : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_folder;

    static void AddRow(const char *name, const QVariant &base, Filter::FilterType type,
                       Filter::ComparisonType comparison, double tolerance, const QVariant &cell, bool accepted)
    {
        QTest::newRow(name) << base << int(type) << int(comparison) << tolerance << cell << accepted;
    }

private slots:
    void initTestCase()
    {
        qputenv("ZYL_SETTINGS_DIR", m_folder.path().toUtf8());
        ZYLSysLocalizationManager::GetManager()->SetLocale(QLocale::c());
    }

    void accepts_data()
    {
        QTest::addColumn<QVariant>("base");
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("comparison");
        QTest::addColumn<double>("tolerance");
        QTest::addColumn<QVariant>("cell");
        QTest::addColumn<bool>("accepted");
        const auto T = Filter::Text;
        const auto O = Filter::Other;
        const QVariant s2000(2000.0);
        // numbers, tolerance 1e-07
        AddRow("= within tolerance", s2000, O, Filter::Equal, 1e-7, 2000.00000005, true);
        AddRow("= outside tolerance", s2000, O, Filter::Equal, 1e-7, 2000.001, false);
        AddRow("!= different", s2000, O, Filter::NotEqual, 1e-7, 1999.0, true);
        AddRow("!= within tolerance", s2000, O, Filter::NotEqual, 1e-7, 1999.99999995, false);
        AddRow("> above", s2000, O, Filter::Greater, 1e-7, 2000.5, true);
        AddRow("> within tolerance", s2000, O, Filter::Greater, 1e-7, 2000.00000005, false);
        AddRow(">= within tolerance below", s2000, O, Filter::GreaterOrEqual, 1e-7, 1999.99999995, true);
        AddRow(">= below", s2000, O, Filter::GreaterOrEqual, 1e-7, 1999.0, false);
        AddRow("< below", s2000, O, Filter::Less, 1e-7, 1500, true);
        AddRow("< equal", s2000, O, Filter::Less, 1e-7, 2000, false);
        AddRow("<= within tolerance above", s2000, O, Filter::LessOrEqual, 1e-7, 2000.00000005, true);
        AddRow("<= above", s2000, O, Filter::LessOrEqual, 1e-7, 2000.5, false);
        AddRow("text base, int cell", QStringLiteral("12"), O, Filter::Equal, 1e-7, 12, true);
        AddRow("numeric text cell", s2000, O, Filter::Greater, 1e-7, QStringLiteral("2500"), true);
        AddRow("negative numbers", QStringLiteral("-1.5"), O, Filter::Less, 1e-7, -2, true);
        AddRow("empty cell >", s2000, O, Filter::Greater, 1e-7, QVariant(), false);
        AddRow("empty cell != number", s2000, O, Filter::NotEqual, 1e-7, QVariant(), true);
        AddRow("empty cell !=", s2000, O, Filter::NotEqual, 1e-7, QString(), true);
        AddRow("word cell =", s2000, O, Filter::Equal, 1e-7, QStringLiteral("abc"), false);
        AddRow("substring of a number", QStringLiteral("20"), O, Filter::BeginsWith, 1e-7, 2000, true);
        // text, case-insensitive
        const QVariant cour(QStringLiteral("cour"));
        AddRow("begins with", cour, T, Filter::BeginsWith, kEpsilon, QStringLiteral("Course 12"), true);
        AddRow("begins with, no", cour, T, Filter::BeginsWith, kEpsilon, QStringLiteral("A Course"), false);
        AddRow("ends with", QStringLiteral("12"), T, Filter::EndsWith, kEpsilon, QStringLiteral("Course 12"), true);
        AddRow("ends with, no", QStringLiteral("1"), T, Filter::EndsWith, kEpsilon, QStringLiteral("Course 12"), false);
        AddRow("contains", QStringLiteral("RSE"), T, Filter::Contains, kEpsilon, QStringLiteral("Course 12"), true);
        AddRow("does not contain", QStringLiteral("xyz"), T, Filter::DoesNotContain, kEpsilon, QStringLiteral("Course"), true);
        AddRow("does not contain, no", cour, T, Filter::DoesNotContain, kEpsilon, QStringLiteral("Course"), false);
        AddRow("equal", QStringLiteral("course 12"), T, Filter::Equal, kEpsilon, QStringLiteral("COURSE 12"), true);
        AddRow("not equal", QStringLiteral("course 12"), T, Filter::NotEqual, kEpsilon, QStringLiteral("Course 12"), false);
        AddRow("text order", QStringLiteral("A"), T, Filter::Greater, kEpsilon, QStringLiteral("b"), true);
        AddRow("numbers as text", QStringLiteral("9"), T, Filter::Greater, kEpsilon, 10, false);
        // tow-mask-like text, tolerance 0
        const QVariant mask(QStringLiteral("1-8,10"));
        AddRow("mask contains", QStringLiteral("10"), O, Filter::Contains, 0.0, mask, true);
        AddRow("mask does not contain", QStringLiteral("12"), O, Filter::DoesNotContain, 0.0, mask, true);
        AddRow("mask equal", mask, O, Filter::Equal, 0.0, QStringLiteral("1-8,10"), true);
        AddRow("mask equal, no", QStringLiteral("1-8"), O, Filter::Equal, 0.0, mask, false);
        AddRow("single tow against range", QStringLiteral("3"), O, Filter::NotEqual, 0.0, QStringLiteral("1-3"), true);
        // values with units: compared in system units
        AddRow("same length", Length(25.4), O, Filter::Equal, 1e-7, Length(25.4), true);
        AddRow("longer", Length(10), O, Filter::Greater, 1e-7, Length(10.5), true);
        AddRow("other magnitude =", Length(1), O, Filter::Equal, 1e-7, Angle(1), false);
        AddRow("other magnitude !=", Length(1), O, Filter::NotEqual, 1e-7, Angle(1), true);
        AddRow("number in display mm", 12.0, O, Filter::Equal, 1e-7, Length(12), true);
        AddRow("number in display degrees", 90.0, O, Filter::Equal, 1e-7, Angle(std::numbers::pi / 2), true);
        AddRow("cell text with unit", 12, O, Filter::Equal, 1e-7, QStringLiteral("12.000 mm"), true);
        AddRow("inch text vs mm value", Length(25.4), O, Filter::Equal, 1e-7, QStringLiteral("1 in"), true);
        AddRow("base text with unit", QStringLiteral("0.5 in"), O, Filter::Less, 1e-7, Length(12), true);
        AddRow("text filter on a value", QStringLiteral("12.5"), T, Filter::BeginsWith, kEpsilon, Length(12.5), true);
    }

    void accepts()
    {
        QFETCH(QVariant, base);
        QFETCH(int, type);
        QFETCH(int, comparison);
        QFETCH(double, tolerance);
        QFETCH(QVariant, cell);
        QFETCH(bool, accepted);
        const Filter filter(base, Filter::ComparisonType(comparison), tolerance, Filter::FilterType(type));
        QCOMPARE(filter.Accepts(cell), accepted);
        // A cell holding a number or nothing is judged alike from the number alone.
        const bool number = cell.typeId() == QMetaType::Double || cell.typeId() == QMetaType::Int;
        if (filter.ComparesNumbers() && (number || !cell.isValid()))
            QCOMPARE(filter.AcceptsNumber(number ? cell.toDouble() : qQNaN()), accepted);
        // The factory takes its arguments in another order.
        QCOMPARE(Filter::CreateFilter(base, Filter::FilterType(type), Filter::ComparisonType(comparison), tolerance)
                     .Accepts(cell),
                 accepted);
    }

    void defaultAcceptsEverything()
    {
        const Filter filter;
        QVERIFY(filter.IsAcceptAll());
        for (const QVariant &cell : {QVariant(), QVariant(0), QVariant(QStringLiteral("x")), Length(-3)})
            QVERIFY(filter.Accepts(cell));
    }

    void germanLocaleNumbers()
    {
        ZYLSysLocalizationManager::GetManager()->SetLocale(QLocale(QStringLiteral("de_DE")));
        const Filter filter(QStringLiteral("1,5"), Filter::Greater, 1e-7, Filter::Other);
        QVERIFY(filter.Accepts(QStringLiteral("2,25")));
        QVERIFY(!filter.Accepts(1.25));
        ZYLSysLocalizationManager::GetManager()->SetLocale(QLocale::c());
    }

    void badArgumentsThrow_data()
    {
        QTest::addColumn<int>("comparison");
        QTest::addColumn<double>("tolerance");
        QTest::addColumn<int>("type");
        QTest::newRow("separator code") << -1 << 0.0 << 0;
        QTest::newRow("code 10") << 10 << 0.0 << 0;
        QTest::newRow("negative tolerance") << 4 << -1e-7 << 1;
        QTest::newRow("nan tolerance") << 4 << std::numeric_limits<double>::quiet_NaN() << 1;
        QTest::newRow("filter type 2") << 4 << 0.0 << 2;
    }

    void badArgumentsThrow()
    {
        QFETCH(int, comparison);
        QFETCH(double, tolerance);
        QFETCH(int, type);
        QVERIFY_THROWS_EXCEPTION(ZYLSysException, Filter(QVariant(1), Filter::ComparisonType(comparison), tolerance,
                                                         Filter::FilterType(type)));
    }
};

QTEST_GUILESS_MAIN(tst_ZYLSysVariantFilter)
#include "tst_ZYLSysVariantFilter.moc"
