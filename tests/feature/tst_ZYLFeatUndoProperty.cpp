// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatTestModel.h"

#include "ZYLFeatContainer.h"
#include "ZYLFeatRecorder.h"
#include "ZYLFeatTransaction.h"
#include "ZYLFeatTransactionContext.h"
#include "ZYLSysException.h"

#include <QRandomGenerator>
#include <QtTest>

namespace {

using Model = ZYLFeatTestModel;

// Makes random edits of a test model through the recorder, and checks on the way what must
// hold at once: a rolled-back nested context leaves the model as it found it, a refused
// edit changes nothing. The first violation is kept in `failure`.
class EditDriver {
public:
    EditDriver(Model &model, ZYLFeatContainer &container, quint32 seed)
        : m_model(model), m_container(container), m_random(seed)
    {
    }

    QString failure;

    void RandomEdits(int depth)
    {
        const int n = 1 + Pick(8);
        for (int i = 0; i < n && failure.isEmpty(); ++i)
            RandomEdit(depth);
    }

private:
    int Pick(int n) { return n <= 0 ? 0 : int(m_random.bounded(n)); }
    double Value() { return double(Pick(2000) - 1000) / 8.0; }
    std::unique_ptr<Model::Child> NewChild() { return std::make_unique<Model::Child>(QString::number(Pick(1000)), Value()); }
    Model::Child *AnyChild()
    {
        auto &children = m_model.children;
        return children.empty() ? nullptr : children[size_t(Pick(int(children.size())))].get();
    }
    Model::Child *ChildWithLeaves()
    {
        Model::Child *child = AnyChild();
        return child && !child->leaves.empty() ? child : nullptr;
    }
    void Fail(const QString &what)
    {
        if (failure.isEmpty())
            failure = what;
    }

    // Inserts, removes, moves or replaces in a list of owned objects, with the recorder.
    template <typename T, typename Make>
    void ListEdit(std::vector<std::unique_ptr<T>> &list, Make make)
    {
        const int size = int(list.size());
        const int op = Pick(4);
        if (op == 0)
            ZYLFeatRecorder::Insert(list, Pick(size + 1), make());
        else if (size == 0)
            return;
        else if (op == 1)
            ZYLFeatRecorder::Remove(list, Pick(size));
        else if (op == 2)
            ZYLFeatRecorder::Move(list, Pick(size), Pick(size));
        else
            ZYLFeatRecorder::Replace(list, Pick(size), make());
    }

    void RandomEdit(int depth)
    {
        switch (Pick(depth < 2 ? 14 : 13)) {
        case 0:
            ZYLFeatRecorder::SetValue(m_model.value, Value());
            break;
        case 1:
            ZYLFeatRecorder::SetValue(m_model.count, Pick(5));
            break;
        case 2:
            if (Model::Child *child = AnyChild())
                ZYLFeatRecorder::SetValue(child->x, Value());
            break;
        case 3:
            if (Model::Child *child = AnyChild())
                ZYLFeatRecorder::SetValue(child->label, QString::number(Pick(4)));
            break;
        case 4:
            if (Model::Child *child = ChildWithLeaves())
                ZYLFeatRecorder::SetValue(child->leaves[size_t(Pick(int(child->leaves.size())))]->weight, Value());
            break;
        case 5:
            ListEdit(m_model.children, [this] { return NewChild(); });
            break;
        case 6:
            if (Model::Child *child = AnyChild())
                ListEdit(child->leaves, [this] { return std::make_unique<Model::Leaf>(Value()); });
            break;
        case 7:
            if (!m_model.samples.empty()) {
                const int first = Pick(int(m_model.samples.size()));
                std::vector<double> run(size_t(1 + Pick(int(m_model.samples.size()) - first)));
                for (double &v : run)
                    v = Value();
                ZYLFeatRecorder::SetRange(m_model.samples, first, std::move(run));
            }
            break;
        case 8: {
            std::vector<double> array(size_t(Pick(6)));
            for (double &v : array)
                v = Value();
            ZYLFeatRecorder::SetValue(m_model.samples, std::move(array));
            break;
        }
        case 9:
            if (Model::Child *child = AnyChild())
                ZYLFeatRecorder::Record(std::make_unique<Model::SwapArrays>(m_model.samples, child->samples));
            break;
        case 10:
            ZYLFeatRecorder::Record(std::make_unique<Model::DoubleInPlace>(m_model.value));
            break;
        case 11:
            // A drag: the same fields set again and again, which merges.
            for (int k = 0; k < 1 + Pick(5); ++k) {
                ZYLFeatRecorder::SetValue(m_model.value, Value());
                if (Pick(2))
                    ZYLFeatRecorder::SetValue(m_model.count, Pick(3));
                if (Model::Child *child = Pick(3) == 0 ? AnyChild() : nullptr)
                    ZYLFeatRecorder::SetValue(child->x, Value());
            }
            break;
        case 12:
            RefusedEdit();
            break;
        case 13:
            NestedContext(depth);
            break;
        }
    }

    void RefusedEdit()
    {
        const QString before = m_model.Dump();
        const int changes = ZYLFeatTransaction::GetCurrent()->GetNumChanges();
        try {
            switch (Pick(4)) {
            case 0:
                ZYLFeatRecorder::Remove(m_model.children, qsizetype(m_model.children.size()));
                break;
            case 1:
                ZYLFeatRecorder::Insert(m_model.children, -1, NewChild());
                break;
            case 2:
                ZYLFeatRecorder::Replace(m_model.children, 0, std::unique_ptr<Model::Child>());
                break;
            default:
                ZYLFeatRecorder::SetRange(m_model.samples, 1, std::vector<double>(m_model.samples.size()));
                break;
            }
            Fail(QStringLiteral("an invalid edit was accepted"));
        } catch (const ZYLSysException &) {
        }
        if (m_model.Dump() != before || ZYLFeatTransaction::GetCurrent()->GetNumChanges() != changes)
            Fail(QStringLiteral("a refused edit changed something"));
    }

    void NestedContext(int depth)
    {
        const QString before = m_model.Dump();
        const bool flag = Pick(2) == 1;
        const bool throws = Pick(5) == 0;
        try {
            ZYLFeatTransactionContext context(&m_container, QStringLiteral("nested"));
            RandomEdits(depth + 1);
            if (throws)
                ZYLFeatRecorder::Remove(m_model.children, -1);
            if (flag)
                context.FlagComplete();
        } catch (const ZYLSysException &) {
            if (!throws)
                Fail(QStringLiteral("an unexpected exception in a nested context"));
        }
        if ((!flag || throws) && m_model.Dump() != before)
            Fail(QStringLiteral("a rolled-back nested context left changes:\n%1\n---\n%2").arg(before, m_model.Dump()));
    }

    Model &m_model;
    ZYLFeatContainer &m_container;
    QRandomGenerator m_random;
};

} // namespace

class tst_ZYLFeatUndoProperty : public QObject {
    Q_OBJECT
private slots:
    void undoRedoRestoresStateAndIdentity_data();
    void undoRedoRestoresStateAndIdentity();
};

void tst_ZYLFeatUndoProperty::undoRedoRestoresStateAndIdentity_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 20; ++seed)
        QTest::newRow(qPrintable(QStringLiteral("seed %1").arg(seed))) << seed;
}

// Each row runs 25 random sequences of transactions (committed or aborted, with nested
// contexts), then walks the history back to the start and forward to the end, comparing
// values and object addresses with the dumps taken after each commit.
void tst_ZYLFeatUndoProperty::undoRedoRestoresStateAndIdentity()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    for (int sequence = 0; sequence < 25; ++sequence) {
        {
            Model model;
            model.Populate(int(random.bounded(5)));
            ZYLFeatContainer container;
            EditDriver driver(model, container, random.generate());

            QStringList states{model.Dump()};
            const int transactions = 1 + int(random.bounded(6));
            for (int t = 0; t < transactions; ++t) {
                const QString before = model.Dump();
                const int entries = container.GetUndoCount();
                container.OpenTransaction(QStringLiteral("T%1").arg(t));
                driver.RandomEdits(0);
                QVERIFY2(driver.failure.isEmpty(), qPrintable(driver.failure));
                if (random.bounded(5) == 0) {
                    container.AbortTransaction();
                    QCOMPARE(model.Dump(), before);
                    continue;
                }
                container.CommitTransaction();
                if (container.GetUndoCount() == entries)
                    QCOMPARE(model.Dump(), before); // no changes kept: nothing changed
                else
                    states << model.Dump();
            }
            QCOMPARE(container.GetUndoCount(), states.size() - 1);

            for (qsizetype i = states.size() - 1; i > 0; --i) {
                container.Undo();
                QCOMPARE(model.Dump(), states[i - 1]);
            }
            QVERIFY(!container.CanUndo());
            for (qsizetype i = 1; i < states.size(); ++i) {
                container.Redo();
                QCOMPARE(model.Dump(), states[i]);
            }
            QVERIFY(!container.CanRedo());

            // Back half way, then a new edit: the redo branch goes with what it owns.
            for (qsizetype i = 0; i < states.size() / 2; ++i)
                container.Undo();
            container.OpenTransaction(QStringLiteral("branch"));
            ZYLFeatRecorder::Insert(model.children, 0, std::make_unique<Model::Child>(QStringLiteral("new"), 1.0));
            container.CommitTransaction();
            QCOMPARE(container.GetRedoCount(), 0);
        }
        // Container (history) and model are gone: every object was deleted exactly once.
        QCOMPARE(Model::Child::alive, 0);
        QCOMPARE(Model::Leaf::alive, 0);
        QVERIFY(!ZYLFeatTransaction::GetCurrent());
    }
}

QTEST_GUILESS_MAIN(tst_ZYLFeatUndoProperty)
#include "tst_ZYLFeatUndoProperty.moc"
