// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatTestModel.h"

#include "ZYLFeatContainer.h"
#include "ZYLFeatObject.h"
#include "ZYLFeatRecorder.h"
#include "ZYLFeatTransaction.h"
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
    void refusedOperationLeavesHistory_data();
    void refusedOperationLeavesHistory();
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

void tst_ZYLFeatContainer::refusedOperationLeavesHistory_data()
{
    QTest::addColumn<Action>("prepare");
    QTest::addColumn<Action>("refused");
    const Action nothing = [](ZYLFeatContainer &, Model &) {};
    const Action open = [](ZYLFeatContainer &c, Model &m) {
        c.OpenTransaction("open");
        ZYLFeatRecorder::SetValue(m.value, 3.0);
    };
    QTest::newRow("redo with nothing to redo") << nothing << Action([](ZYLFeatContainer &c, Model &) { c.Redo(); });
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
