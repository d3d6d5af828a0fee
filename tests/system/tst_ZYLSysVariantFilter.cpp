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

QVariant Length(double mm)
{
    return QVariant::fromValue(ZYLSysValue(ZYLSysValue::Length, mm));
}

} // namespace

class tst_ZYLSysVariantFilter : public QObject {
    Q_OBJECT
private:
    QTemporaryDir m_folder;

private slots:
    void initTestCase()
    {
        qputenv("ZYL_SETTINGS_DIR", m_folder.path().toUtf8());
        ZYLSysLocalizationManager::GetManager()->SetLocale(QLocale::c());
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
