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
    void nestedEndsWithItsOwnChanges_data();
    void nestedEndsWithItsOwnChanges();
    void withoutEnclosingBecomesTopLevel_data();
    void withoutEnclosingBecomesTopLevel();
    void requireTopLevelRefusesNesting();
    void recordsIntoInnermostAcrossContainers();
    void toleratesTransactionsClosedByOthers();
};

void tst_ZYLFeatTransactionContext::nestedEndsWithItsOwnChanges_data()
{
    QTest::addColumn<bool>("flag");
    QTest::newRow("flagged: merged") << true;
    QTest::newRow("not flagged: rolled back") << false;
}

// Inside a command's transaction, a nested context either hands its changes to the command
// or takes back exactly its own; the command's earlier and later changes stay either way.
void tst_ZYLFeatTransactionContext::nestedEndsWithItsOwnChanges()
{
    QFETCH(bool, flag);
    Model model;
    model.Populate(3);
    ZYLFeatContainer container;
    const QString start = model.Dump();
    ZYLFeatTransaction *command = container.OpenTransaction("command");
    ZYLFeatRecorder::SetValue(model.value, 1.0);
    ZYLFeatRecorder::Remove(model.children, 0);
    const QString beforeNested = model.Dump();
    {
        ZYLFeatTransactionContext nested(&container, "Execute Collision", false,
                                         ZYLFeatTransactionContext::UpdateDisplayAtEnd);
        QCOMPARE(ZYLFeatTransaction::GetCurrent(), nested.GetTransaction());
        QCOMPARE(nested.GetTransaction()->GetParentTransaction(), command);
        ZYLFeatRecorder::SetValue(model.value, 2.0); // the same field as the command set
        ZYLFeatRecorder::Move(model.children, 0, 1);
        ZYLFeatRecorder::Insert(model.children, 2, std::make_unique<Model::Child>("n", 3.0));
        if (flag)
            nested.FlagComplete();
    }
    QCOMPARE(ZYLFeatTransaction::GetCurrent(), command);
    if (!flag) {
        QCOMPARE(model.Dump(), beforeNested);
        QCOMPARE(Model::Child::alive, 3);
    }
    QCOMPARE(command->GetNumChanges(), flag ? 5 : 2);
    ZYLFeatRecorder::SetValue(model.children[0]->x, 8.0);
    const QString end = model.Dump();
    container.CommitTransaction();
    QCOMPARE(container.GetUndoCount(), 1);
    container.Undo();
    QCOMPARE(model.Dump(), start);
    container.Redo();
    QCOMPARE(model.Dump(), end);
}

void tst_ZYLFeatTransactionContext::withoutEnclosingBecomesTopLevel_data()
{
    QTest::addColumn<bool>("flag");
    QTest::addColumn<int>("entries");
    QTest::newRow("flagged: committed") << true << 1;
    QTest::newRow("not flagged: rolled back") << false << 0;
}

void tst_ZYLFeatTransactionContext::withoutEnclosingBecomesTopLevel()
{
    QFETCH(bool, flag);
    QFETCH(int, entries);
    Model model;
    ZYLFeatContainer container;
    {
        ZYLFeatTransactionContext context(&container, "alone", false, ZYLFeatTransactionContext::NoAutoUpdate);
        QVERIFY(!context.GetTransaction()->GetParentTransaction());
        ZYLFeatRecorder::SetValue(model.value, 6.0);
        if (flag)
            context.FlagComplete();
    }
    QCOMPARE(container.GetUndoCount(), entries);
    QCOMPARE(model.value, flag ? 6.0 : 0.0);
    if (flag)
        QCOMPARE(container.GetUndoName(), QStringLiteral("alone"));
    QVERIFY(!container.HasOpenTransaction());
}

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

// Model objects do not know their container: edits go to the innermost open transaction,
// whichever container it belongs to.
void tst_ZYLFeatTransactionContext::recordsIntoInnermostAcrossContainers()
{
    Model model;
    ZYLFeatContainer first;
    ZYLFeatContainer second;
    first.OpenTransaction("first");
    {
        ZYLFeatTransactionContext context(&second, "second");
        ZYLFeatRecorder::SetValue(model.value, 1.0);
        context.FlagComplete();
    }
    first.CommitTransaction();
    QCOMPARE(first.GetUndoCount(), 0);
    QCOMPARE(second.GetUndoCount(), 1);
    second.Undo();
    QCOMPARE(model.value, 0.0);
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
