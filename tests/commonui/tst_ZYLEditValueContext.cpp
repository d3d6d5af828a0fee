// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLEditValueContext.h"

#include <QTest>

#include <memory>

class tst_ZYLEditValueContext : public QObject {
    Q_OBJECT
private slots:
    void endsInAnyOrder();
};

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
