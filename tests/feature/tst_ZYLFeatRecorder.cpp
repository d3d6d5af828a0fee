// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatTestModel.h"

#include "ZYLFeatContainer.h"
#include "ZYLFeatRecorder.h"
#include "ZYLFeatTransaction.h"
#include "ZYLFeatValueChange.h"
#include "ZYLGeoGeometry.h"
#include "ZYLSysException.h"

#include <QtTest>

#include <functional>

namespace {

using Model = ZYLFeatTestModel;
using Edit = std::function<void(Model &)>;

// Shared geometry that counts how many of it are alive.
class CountedGeometry final : public ZYLGeoGeometry {
public:
    CountedGeometry() { ++alive; }
    ~CountedGeometry() override { --alive; }
    static inline int alive = 0;
};

} // namespace

Q_DECLARE_METATYPE(Edit)

class tst_ZYLFeatRecorder : public QObject {
    Q_OBJECT
private slots:
    void listEditsKeepIdentity_data();
    void listEditsKeepIdentity();
    void refusedEditChangesNothing_data();
    void refusedEditChangesNothing();
    void repeatedSetsMerge_data();
    void repeatedSetsMerge();
    void mergeDoesNotReorderAcrossOtherChanges();
    void wholeArraySetCopiesNothing();
    void rangeSetKeepsOnlyTheRun();
    void replacedReferenceLivesWhileInHistory();
    void valueChangeIsSmall();
};

void tst_ZYLFeatRecorder::listEditsKeepIdentity_data()
{
    QTest::addColumn<Edit>("edit");
    QTest::addColumn<QList<int>>("order"); // original child indexes after the edit, -1 new
    QTest::newRow("insert front") << Edit([](Model &m) {
        ZYLFeatRecorder::Insert(m.children, 0, std::make_unique<Model::Child>("n", 9.0));
    }) << QList<int>{-1, 0, 1, 2, 3};
    QTest::newRow("insert end") << Edit([](Model &m) {
        ZYLFeatRecorder::Insert(m.children, 4, std::make_unique<Model::Child>("n", 9.0));
    }) << QList<int>{0, 1, 2, 3, -1};
    QTest::newRow("remove middle") << Edit([](Model &m) { ZYLFeatRecorder::Remove(m.children, 2); })
                                   << QList<int>{0, 1, 3};
    QTest::newRow("replace first") << Edit([](Model &m) {
        ZYLFeatRecorder::Replace(m.children, 0, std::make_unique<Model::Child>("n", 9.0));
    }) << QList<int>{-1, 1, 2, 3};
    QTest::newRow("move forward") << Edit([](Model &m) { ZYLFeatRecorder::Move(m.children, 0, 3); })
                                  << QList<int>{1, 2, 3, 0};
    QTest::newRow("move backward") << Edit([](Model &m) { ZYLFeatRecorder::Move(m.children, 3, 1); })
                                   << QList<int>{0, 3, 1, 2};
    QTest::newRow("remove two, same slot") << Edit([](Model &m) {
        ZYLFeatRecorder::Remove(m.children, 1);
        ZYLFeatRecorder::Remove(m.children, 1);
    }) << QList<int>{0, 3};
}

// The edited list holds exactly the expected objects; undo brings back the very same
// objects in the original order, and removed ones stay alive meanwhile.
void tst_ZYLFeatRecorder::listEditsKeepIdentity()
{
    QFETCH(Edit, edit);
    QFETCH(QList<int>, order);
    Model model;
    model.Populate(4);
    std::vector<Model::Child *> original;
    for (const auto &c : model.children)
        original.push_back(c.get());
    const QString start = model.Dump();
    {
        ZYLFeatContainer container;
        container.OpenTransaction("edit");
        edit(model);
        container.CommitTransaction();
        QCOMPARE(qsizetype(model.children.size()), order.size());
        for (qsizetype i = 0; i < order.size(); ++i) {
            if (order[i] >= 0)
                QCOMPARE(model.children[size_t(i)].get(), original[size_t(order[i])]);
            else
                QVERIFY(std::find(original.begin(), original.end(), model.children[size_t(i)].get()) == original.end());
        }
        const QString edited = model.Dump();
        QCOMPARE(Model::Child::alive, 4 + int(order.count(-1)));

        container.Undo();
        QCOMPARE(model.Dump(), start);
        container.Redo();
        QCOMPARE(model.Dump(), edited);
    }
    // The container's history owned what the model no longer held.
    QCOMPARE(Model::Child::alive, int(model.children.size()));
}

void tst_ZYLFeatRecorder::refusedEditChangesNothing_data()
{
    QTest::addColumn<Edit>("edit");
    QTest::addColumn<bool>("inTransaction");
    const auto insertNull = [](Model &m) { ZYLFeatRecorder::Insert(m.children, 0, nullptr); };
    const auto insertPastEnd = [](Model &m) {
        ZYLFeatRecorder::Insert(m.children, 4, std::make_unique<Model::Child>("n", 1.0));
    };
    const auto setValue = [](Model &m) { ZYLFeatRecorder::SetValue(m.value, 5.0); };
    QTest::newRow("set value outside") << Edit(setValue) << false;
    QTest::newRow("insert outside") << Edit([](Model &m) {
        ZYLFeatRecorder::Insert(m.children, 0, std::make_unique<Model::Child>("n", 1.0));
    }) << false;
    QTest::newRow("remove outside") << Edit([](Model &m) { ZYLFeatRecorder::Remove(m.children, 0); }) << false;
    QTest::newRow("move outside") << Edit([](Model &m) { ZYLFeatRecorder::Move(m.children, 0, 1); }) << false;
    QTest::newRow("custom outside") << Edit([](Model &m) {
        ZYLFeatRecorder::Record(std::make_unique<Model::DoubleInPlace>(m.value));
    }) << false;
    QTest::newRow("insert null") << Edit(insertNull) << true;
    QTest::newRow("insert past end") << Edit(insertPastEnd) << true;
    QTest::newRow("insert negative") << Edit([](Model &m) {
        ZYLFeatRecorder::Insert(m.children, -1, std::make_unique<Model::Child>("n", 1.0));
    }) << true;
    QTest::newRow("remove past end") << Edit([](Model &m) { ZYLFeatRecorder::Remove(m.children, 3); }) << true;
    QTest::newRow("replace by null") << Edit([](Model &m) { ZYLFeatRecorder::Replace(m.children, 1, nullptr); }) << true;
    QTest::newRow("move to past end") << Edit([](Model &m) { ZYLFeatRecorder::Move(m.children, 0, 3); }) << true;
    QTest::newRow("range too long") << Edit([](Model &m) {
        ZYLFeatRecorder::SetRange(m.samples, 2, std::vector<double>{1.0, 2.0, 3.0});
    }) << true;
    QTest::newRow("null custom change") << Edit([](Model &) { ZYLFeatRecorder::Record(nullptr); }) << true;
}

void tst_ZYLFeatRecorder::refusedEditChangesNothing()
{
    QFETCH(Edit, edit);
    QFETCH(bool, inTransaction);
    Model model;
    model.Populate(3);
    const QString before = model.Dump();
    ZYLFeatContainer container;
    if (inTransaction)
        container.OpenTransaction("t");
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, edit(model));
    QCOMPARE(model.Dump(), before);
    if (inTransaction) {
        QCOMPARE(container.GetOpenTransaction()->GetNumChanges(), 0);
        container.CommitTransaction();
    }
    QCOMPARE(container.GetUndoCount(), 0);
}

void tst_ZYLFeatRecorder::repeatedSetsMerge_data()
{
    QTest::addColumn<QList<double>>("values"); // set one after the other, starting from 0
    QTest::addColumn<int>("changes");
    QTest::newRow("drag") << QList<double>{1.0, 2.0, 3.0, 4.0} << 1;
    QTest::newRow("drag back to start") << QList<double>{1.0, 2.0, 0.0} << 0;
    QTest::newRow("same value") << QList<double>{0.0} << 0;
}

void tst_ZYLFeatRecorder::repeatedSetsMerge()
{
    QFETCH(QList<double>, values);
    QFETCH(int, changes);
    Model model;
    ZYLFeatContainer container;
    ZYLFeatTransaction *transaction = container.OpenTransaction("drag");
    for (double v : values) {
        ZYLFeatRecorder::SetValue(model.value, v);
        QCOMPARE(model.value, v);
    }
    QCOMPARE(transaction->GetNumChanges(), changes);
    container.CommitTransaction();
    QCOMPARE(container.GetUndoCount(), changes > 0 ? 1 : 0);
    if (changes > 0) {
        container.Undo();
        QCOMPARE(model.value, 0.0);
        container.Redo();
        QCOMPARE(model.value, values.last());
    }
}

// Merging a later set into an earlier change is only right when nothing in between wrote
// the same field; an in-place custom change does. Interleaved sets of two fields merge.
void tst_ZYLFeatRecorder::mergeDoesNotReorderAcrossOtherChanges()
{
    Model model;
    model.value = 1.0;
    ZYLFeatContainer container;
    ZYLFeatTransaction *transaction = container.OpenTransaction("t");
    ZYLFeatRecorder::SetValue(model.value, 3.0);
    ZYLFeatRecorder::Record(std::make_unique<Model::DoubleInPlace>(model.value)); // 6
    ZYLFeatRecorder::SetValue(model.value, 7.0);
    QCOMPARE(transaction->GetNumChanges(), 3);
    ZYLFeatRecorder::SetValue(model.count, 1);
    ZYLFeatRecorder::SetValue(model.count, 2);
    QCOMPARE(transaction->GetNumChanges(), 4);
    container.CommitTransaction();
    container.Undo();
    QCOMPARE(model.value, 1.0);
    QCOMPARE(model.count, 0);
    container.Redo();
    QCOMPARE(model.value, 7.0);
    QCOMPARE(model.count, 2);

    ZYLFeatTransaction *drag = container.OpenTransaction("drag");
    for (int step = 1; step <= 10; ++step) {
        ZYLFeatRecorder::SetValue(model.value, 7.0 + step);
        ZYLFeatRecorder::SetValue(model.count, 2 + step);
    }
    QCOMPARE(drag->GetNumChanges(), 2);
    container.AbortTransaction();
    QCOMPARE(model.value, 7.0);
    QCOMPARE(model.count, 2);
}

// A whole-array set moves buffers instead of copying: the new buffer is the one handed in,
// and undo brings back the old buffer itself.
void tst_ZYLFeatRecorder::wholeArraySetCopiesNothing()
{
    Model model;
    model.samples.assign(1000000, 1.0);
    const double *oldBuffer = model.samples.data();
    std::vector<double> tilted(1000000, 2.0);
    const double *newBuffer = tilted.data();
    ZYLFeatContainer container;
    container.OpenTransaction("tilt");
    ZYLFeatRecorder::SetValue(model.samples, std::move(tilted));
    container.CommitTransaction();
    QCOMPARE(model.samples.data(), newBuffer);
    container.Undo();
    QCOMPARE(model.samples.data(), oldBuffer);
    QCOMPARE(model.samples[999999], 1.0);
    container.Redo();
    QCOMPARE(model.samples.data(), newBuffer);
    QCOMPARE(model.samples[0], 2.0);
}

void tst_ZYLFeatRecorder::rangeSetKeepsOnlyTheRun()
{
    Model model;
    model.samples = {0.0, 1.0, 2.0, 3.0, 4.0};
    const double *buffer = model.samples.data();
    ZYLFeatContainer container;
    container.OpenTransaction("range");
    ZYLFeatRecorder::SetRange(model.samples, 1, {10.0, 20.0});
    ZYLFeatRecorder::SetRange(model.samples, 4, {40.0});
    container.CommitTransaction();
    QCOMPARE(model.samples, (std::vector<double>{0.0, 10.0, 20.0, 3.0, 40.0}));
    container.Undo();
    QCOMPARE(model.samples, (std::vector<double>{0.0, 1.0, 2.0, 3.0, 4.0}));
    QCOMPARE(model.samples.data(), buffer);
    container.Redo();
    QCOMPARE(model.samples, (std::vector<double>{0.0, 10.0, 20.0, 3.0, 40.0}));
}

void tst_ZYLFeatRecorder::replacedReferenceLivesWhileInHistory()
{
    {
        auto *first = new CountedGeometry;
        auto *second = new CountedGeometry;
        const ZYLGeoGeometry *field = first;
        first->AddReference(); // the owner's reference
        ZYLFeatContainer container;
        container.OpenTransaction("swap");
        ZYLFeatRecorder::SetReference(field, second);
        container.CommitTransaction();
        QCOMPARE(field, second);
        QCOMPARE(CountedGeometry::alive, 2);
        container.Undo();
        QCOMPARE(field, first);
        container.Redo();
        QCOMPARE(field, second);
        container.ClearHistory();
        QCOMPARE(CountedGeometry::alive, 1); // first had only the change's reference left
        QCOMPARE(second->GetReferenceCount(), 1);
        field->RemoveReference();
    }
    QCOMPARE(CountedGeometry::alive, 0);
}

void tst_ZYLFeatRecorder::valueChangeIsSmall()
{
    QVERIFY(sizeof(ZYLFeatValueChange<double>) <= 3 * sizeof(void *));
}

QTEST_GUILESS_MAIN(tst_ZYLFeatRecorder)
#include "tst_ZYLFeatRecorder.moc"
