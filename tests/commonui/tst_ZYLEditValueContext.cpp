// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLEditValueContext.h"

#include <QTest>

#include <memory>

class tst_ZYLEditValueContext : public QObject {
    Q_OBJECT
private slots:
    void nests();
    void endsInAnyOrder();
};

void tst_ZYLEditValueContext::nests()
{
    QVERIFY(!ZYLEditValueContext::IsInEditContext());
    {
        const ZYLEditValueContext outer;
        QVERIFY(ZYLEditValueContext::IsInEditContext());
        {
            const ZYLEditValueContext inner;
            QVERIFY(ZYLEditValueContext::IsInEditContext());
        }
        // The inner context ending leaves the outer one in force.
        QVERIFY(ZYLEditValueContext::IsInEditContext());
    }
    QVERIFY(!ZYLEditValueContext::IsInEditContext());
}

void tst_ZYLEditValueContext::endsInAnyOrder()
{
    auto first = std::make_unique<ZYLEditValueContext>();
    auto second = std::make_unique<ZYLEditValueContext>();
    first.reset();
    QVERIFY(ZYLEditValueContext::IsInEditContext());
    second.reset();
    QVERIFY(!ZYLEditValueContext::IsInEditContext());
}

QTEST_GUILESS_MAIN(tst_ZYLEditValueContext)
#include "tst_ZYLEditValueContext.moc"
