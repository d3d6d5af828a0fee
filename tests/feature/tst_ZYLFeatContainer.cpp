// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatTestModel.h"

#include "ZYLFeatContainer.h"
#include "ZYLFeatObject.h"
#include "ZYLFeatRecorder.h"
#include "ZYLFeatTransaction.h"
#include "ZYLFeatTransactionContext.h"
#include "ZYLSysException.h"

#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

#include <functional>

namespace {

using Model = ZYLFeatTestModel;
using Action = std::function<void(ZYLFeatContainer &, Model &)>;

// Commits one transaction that removes the first child of the model.
void CommitRemoval(ZYLFeatContainer &container, Model &model, const QString &name)
{
    container.OpenTransaction(name);
    ZYLFeatRecorder::Remove(model.children, 0);
    container.CommitTransaction();
}

void CommitValue(ZYLFeatContainer &container, Model &model, double value)
{
    container.OpenTransaction(QStringLiteral("set %1").arg(value));
    ZYLFeatRecorder::SetValue(model.value, value);
    container.CommitTransaction();
}

} // namespace

Q_DECLARE_METATYPE(Action)

class tst_ZYLFeatContainer : public QObject {
    Q_OBJECT
private slots:
    void historyLimitDeletesWhatOldEntriesOwned();
    void emptyCommitAddsNoEntry();
    void historyStateNamesDocumentStates();
    void emittedSignals_data();
    void emittedSignals();
    void refusedOperationLeavesHistory_data();
    void refusedOperationLeavesHistory();
    void undoFromSlotDuringSignalIsSafe();
    void featuresAreRecordedAndKeepIdentity();
    void destroyingContainerRollsBackOpenTransaction();
};

void tst_ZYLFeatContainer::historyLimitDeletesWhatOldEntriesOwned()
{
    Model model;
    model.Populate(6);
    ZYLFeatContainer container;
    container.SetHistoryLimit(3);
    for (int i = 0; i < 5; ++i)
        CommitRemoval(container, model, QStringLiteral("remove %1").arg(i));
    // Five children removed, the two oldest entries dropped with the child each owned.
    QCOMPARE(container.GetUndoCount(), 3);
    QCOMPARE(Model::Child::alive, 6 - 2);
    QCOMPARE(container.GetUndoName(), QStringLiteral("remove 4"));

    QSignalSpy history(&container, &ZYLFeatContainer::HistoryChanged);
    container.SetHistoryLimit(1);
    QCOMPARE(history.count(), 1);
    QCOMPARE(container.GetUndoCount(), 1);
    QCOMPARE(Model::Child::alive, 6 - 4);

    container.Undo();
    QCOMPARE(model.children.size(), size_t(2));
    QVERIFY(!container.CanUndo());

    container.SetHistoryLimit(0);
    CommitRemoval(container, model, QStringLiteral("gone"));
    QCOMPARE(container.GetUndoCount(), 0);
    QCOMPARE(Model::Child::alive, 1);
}

void tst_ZYLFeatContainer::historyStateNamesDocumentStates()
{
    Model model;
    ZYLFeatContainer container;
    const quint64 start = container.GetHistoryState();
    CommitValue(container, model, 1.0);
    const quint64 one = container.GetHistoryState();
    CommitValue(container, model, 2.0);
    const quint64 two = container.GetHistoryState();
    QVERIFY(start != one && one != two && start != two);

    container.Undo();
    QCOMPARE(container.GetHistoryState(), one);
    container.Undo();
    QCOMPARE(container.GetHistoryState(), start);
    container.Redo();
    QCOMPARE(container.GetHistoryState(), one);

    // An edit after undoing makes a state never seen before, even where the undone one was.
    CommitValue(container, model, 3.0);
    const quint64 three = container.GetHistoryState();
    QVERIFY(three != start && three != one && three != two);

    // An empty transaction, clearing and trimming leave the document where it is.
    container.OpenTransaction(QStringLiteral("nothing"));
    container.CommitTransaction();
    QCOMPARE(container.GetHistoryState(), three);
    container.ClearHistory();
    QCOMPARE(container.GetHistoryState(), three);
    CommitValue(container, model, 4.0);
    const quint64 four = container.GetHistoryState();
    container.SetHistoryLimit(1);
    CommitValue(container, model, 5.0);
    QCOMPARE(container.GetUndoCount(), 1);
    container.Undo();
    QCOMPARE(container.GetHistoryState(), four);
    container.SetHistoryLimit(0);
    QCOMPARE(container.GetHistoryState(), four);
}

void tst_ZYLFeatContainer::emptyCommitAddsNoEntry()
{
    Model model;
    ZYLFeatContainer container;
    CommitValue(container, model, 1.0);
    container.Undo();
    container.OpenTransaction("nothing");
    ZYLFeatRecorder::SetValue(model.value, 0.0); // the value it has
    container.CommitTransaction();
    QCOMPARE(container.GetUndoCount(), 0);
    QCOMPARE(container.GetRedoCount(), 1); // the redo entry is still valid
    container.Redo();
    QCOMPARE(model.value, 1.0);
}

void tst_ZYLFeatContainer::emittedSignals_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<int>("backward");
    QTest::addColumn<int>("forward");
    QTest::addColumn<QString>("argumentName");
    QTest::newRow("undo") << Action([](ZYLFeatContainer &c, Model &) { c.Undo(); }) << 1 << 0 << "set 1";
    QTest::newRow("undo, redo") << Action([](ZYLFeatContainer &c, Model &) {
        c.Undo();
        c.Redo();
    }) << 1 << 1 << "set 1";
    QTest::newRow("commit") << Action([](ZYLFeatContainer &c, Model &m) { CommitValue(c, m, 2.0); }) << 0 << 0
                            << "";
    QTest::newRow("abort") << Action([](ZYLFeatContainer &c, Model &m) {
        c.OpenTransaction("cancel");
        ZYLFeatRecorder::SetValue(m.value, 5.0);
        c.AbortTransaction();
    }) << 0 << 0 << "";
    QTest::newRow("nested rolled back") << Action([](ZYLFeatContainer &c, Model &m) {
        c.OpenTransaction("command");
        {
            ZYLFeatTransactionContext nested(&c, "Execute Collision");
            ZYLFeatRecorder::SetValue(m.value, 5.0);
        }
        c.CommitTransaction();
    }) << 0 << 0 << "";
}

void tst_ZYLFeatContainer::emittedSignals()
{
    QFETCH(Action, action);
    QFETCH(int, backward);
    QFETCH(int, forward);
    QFETCH(QString, argumentName);
    Model model;
    ZYLFeatContainer container;
    CommitValue(container, model, 1.0);
    QStringList names; // read inside the slot: the argument is valid during the emission
    const auto record = [&names](ZYLFeatTransaction *t) { names << t->GetName(); };
    connect(&container, &ZYLFeatContainer::TransactionRolledBackard, this, record);
    connect(&container, &ZYLFeatContainer::TransactionRolledForward, this, record);
    QSignalSpy back(&container, &ZYLFeatContainer::TransactionRolledBackard);
    QSignalSpy ahead(&container, &ZYLFeatContainer::TransactionRolledForward);
    QSignalSpy history(&container, &ZYLFeatContainer::HistoryChanged);
    action(container, model);
    QCOMPARE(back.count(), backward);
    QCOMPARE(ahead.count(), forward);
    QVERIFY(history.count() >= 1);
    for (const QString &name : names)
        QCOMPARE(name, argumentName);
    disconnect(&container, nullptr, this, nullptr);
}

void tst_ZYLFeatContainer::refusedOperationLeavesHistory_data()
{
    QTest::addColumn<Action>("prepare");
    QTest::addColumn<Action>("refused");
    const Action nothing = [](ZYLFeatContainer &, Model &) {};
    const Action open = [](ZYLFeatContainer &c, Model &m) {
        c.OpenTransaction("open");
        ZYLFeatRecorder::SetValue(m.value, 3.0);
    };
    const Action undoAll = [](ZYLFeatContainer &c, Model &) {
        c.Undo();
        c.Undo();
    };
    QTest::newRow("commit with none open") << nothing << Action([](ZYLFeatContainer &c, Model &) { c.CommitTransaction(); });
    QTest::newRow("abort with none open") << nothing << Action([](ZYLFeatContainer &c, Model &) { c.AbortTransaction(); });
    QTest::newRow("commit twice") << Action([](ZYLFeatContainer &c, Model &m) {
        c.OpenTransaction("once");
        ZYLFeatRecorder::SetValue(m.count, 7);
        c.CommitTransaction();
    }) << Action([](ZYLFeatContainer &c, Model &) { c.CommitTransaction(); });
    QTest::newRow("undo with nothing to undo") << undoAll << Action([](ZYLFeatContainer &c, Model &) { c.Undo(); });
    QTest::newRow("redo with nothing to redo") << nothing << Action([](ZYLFeatContainer &c, Model &) { c.Redo(); });
    QTest::newRow("undo while open") << open << Action([](ZYLFeatContainer &c, Model &) { c.Undo(); });
    QTest::newRow("redo while open") << Action([](ZYLFeatContainer &c, Model &) {
        c.Undo();
        c.OpenTransaction("open");
    }) << Action([](ZYLFeatContainer &c, Model &) { c.Redo(); });
    QTest::newRow("negative history limit") << nothing << Action([](ZYLFeatContainer &c, Model &) { c.SetHistoryLimit(-1); });
    QTest::newRow("add null feature") << open << Action([](ZYLFeatContainer &c, Model &) { c.AddFeature(nullptr); });
    QTest::newRow("add feature outside a transaction") << nothing << Action([](ZYLFeatContainer &c, Model &) {
        ZYLFeatObject feature("f");
        c.AddFeature(&feature);
    });
    QTest::newRow("remove foreign feature") << open << Action([](ZYLFeatContainer &c, Model &) {
        ZYLFeatObject feature("f");
        c.RemoveFeature(&feature);
    });
    QTest::newRow("rename outside a transaction") << nothing << Action([](ZYLFeatContainer &, Model &) {
        ZYLFeatObject feature("f");
        feature.SetName("g");
    });
}

// Each refused operation throws and leaves the history, the open transaction and the model
// exactly as they were.
void tst_ZYLFeatContainer::refusedOperationLeavesHistory()
{
    QFETCH(Action, prepare);
    QFETCH(Action, refused);
    Model model;
    ZYLFeatContainer container;
    CommitValue(container, model, 1.0);
    CommitValue(container, model, 2.0);
    prepare(container, model);
    const auto state = [&] {
        return QStringList{QString::number(container.GetUndoCount()), container.GetUndoName(),
                           QString::number(container.GetRedoCount()), container.GetRedoName(),
                           QString::number(container.GetHistoryLimit()), model.Dump()};
    };
    const QStringList before = state();
    ZYLFeatTransaction *open = container.GetOpenTransaction();
    const int openChanges = open ? open->GetNumChanges() : 0;
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, refused(container, model));
    QCOMPARE(state(), before);
    QCOMPARE(container.GetOpenTransaction(), open);
    if (open) {
        QCOMPARE(open->GetNumChanges(), openChanges);
        container.AbortTransaction();
    }
    QVERIFY(!ZYLFeatTransaction::GetCurrent());
}

// Slots may undo again or commit new work while the argument of the signal is in use; the
// argument stays valid until the emission is over.
void tst_ZYLFeatContainer::undoFromSlotDuringSignalIsSafe()
{
    Model model;
    model.Populate(2);
    ZYLFeatContainer container;
    container.OpenTransaction("add");
    ZYLFeatRecorder::Insert(model.children, 0, std::make_unique<Model::Child>("n", 1.0));
    container.CommitTransaction();
    QStringList seen;
    connect(&container, &ZYLFeatContainer::TransactionRolledBackard, this,
            [&container, &model](ZYLFeatTransaction *) {
                // Deletes the redo branch holding the signal's argument.
                CommitValue(container, model, 5.0);
            });
    connect(&container, &ZYLFeatContainer::TransactionRolledBackard, this,
            [&seen](ZYLFeatTransaction *t) { seen << t->GetName(); });
    container.Undo();
    QCOMPARE(seen, QStringList{"add"});
    QCOMPARE(container.GetRedoCount(), 0);
    QCOMPARE(Model::Child::alive, 2); // the undone insertion's child went with the branch
    disconnect(&container, nullptr, this, nullptr);
}

void tst_ZYLFeatContainer::featuresAreRecordedAndKeepIdentity()
{
    auto *a = new ZYLFeatObject("a");
    auto *b = new ZYLFeatObject("b");
    QPointer<ZYLFeatObject> guardA(a);
    QPointer<ZYLFeatObject> guardB(b);
    {
        ZYLFeatContainer container;
        QSignalSpy changed(&container, &ZYLFeatContainer::FeaturesChanged);
        container.OpenTransaction("add");
        container.AddFeature(a);
        container.AddFeature(b);
        QVERIFY_THROWS_EXCEPTION(ZYLSysException, container.AddFeature(a));
        container.CommitTransaction();
        QCOMPARE(container.GetFeatures(), (QList<ZYLFeatObject *>{a, b}));
        QCOMPARE(a->GetContainer(), &container);

        container.OpenTransaction("remove");
        container.RemoveFeature(a);
        a->SetName("renamed");
        container.CommitTransaction();
        QCOMPARE(container.GetFeatures(), QList<ZYLFeatObject *>{b});
        QCOMPARE(a->GetContainer(), nullptr);
        changed.clear();

        container.Undo();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(container.GetFeatures(), (QList<ZYLFeatObject *>{a, b}));
        QCOMPARE(a->GetName(), QStringLiteral("a"));
        container.Redo();
        container.ClearHistory();
        // Nothing holds `a` any more: the removal change held the last reference.
        QVERIFY(guardA.isNull());
        QVERIFY(!guardB.isNull());
    }
    QVERIFY(guardB.isNull());
}

void tst_ZYLFeatContainer::destroyingContainerRollsBackOpenTransaction()
{
    Model model;
    model.Populate(2);
    const QString before = model.Dump();
    {
        ZYLFeatContainer container;
        container.OpenTransaction("open");
        ZYLFeatRecorder::Remove(model.children, 0);
        container.OpenTransaction("nested");
        ZYLFeatRecorder::SetValue(model.value, 4.0);
    }
    QCOMPARE(model.Dump(), before);
    QVERIFY(!ZYLFeatTransaction::GetCurrent());
}

QTEST_GUILESS_MAIN(tst_ZYLFeatContainer)
#include "tst_ZYLFeatContainer.moc"
