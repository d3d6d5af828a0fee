// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatTestModel.h"

#include "ZYLFeatContainer.h"
#include "ZYLFeatRecorder.h"
#include "ZYLFeatTransaction.h"
#include "ZYLFeatTransactionContext.h"
#include "ZYLSysException.h"

#include <QtTest>

using Model = ZYLFeatTestModel;

class tst_ZYLFeatTransactionContext : public QObject {
    Q_OBJECT
private slots:
    void requireTopLevelRefusesNesting();
    void toleratesTransactionsClosedByOthers();
};

void tst_ZYLFeatTransactionContext::requireTopLevelRefusesNesting()
{
    ZYLFeatContainer container;
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, ZYLFeatTransactionContext(nullptr, "no container"));
    ZYLFeatTransaction *command = container.OpenTransaction("command");
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, ZYLFeatTransactionContext(&container, "own", true));
    QCOMPARE(container.GetOpenTransaction(), command);
    container.AbortTransaction();
    ZYLFeatTransactionContext own(&container, "own", true);
    QVERIFY(own.GetTransaction());
}

void tst_ZYLFeatTransactionContext::toleratesTransactionsClosedByOthers()
{
    Model model;
    ZYLFeatContainer container;
    {
        ZYLFeatTransactionContext context(&container, "outer");
        ZYLFeatRecorder::SetValue(model.value, 1.0);
        container.OpenTransaction("left open");
        ZYLFeatRecorder::SetValue(model.count, 1);
        context.FlagComplete();
        // The context rolls back the forgotten inner transaction, then commits its own.
    }
    QCOMPARE(model.value, 1.0);
    QCOMPARE(model.count, 0);
    QCOMPARE(container.GetUndoCount(), 1);
    {
        ZYLFeatTransactionContext context(&container, "closed early");
        ZYLFeatRecorder::SetValue(model.value, 2.0);
        container.CommitTransaction();
        QVERIFY(!context.GetTransaction());
    }
    QCOMPARE(container.GetUndoCount(), 2);
    QCOMPARE(model.value, 2.0);
    QVERIFY(!container.HasOpenTransaction());
}

QTEST_GUILESS_MAIN(tst_ZYLFeatTransactionContext)
#include "tst_ZYLFeatTransactionContext.moc"
