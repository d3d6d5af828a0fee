// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatContainer.h"

#include "ZYLFeatChange.h"
#include "ZYLFeatMakeRoom.h"
#include "ZYLFeatObject.h"
#include "ZYLFeatTransaction.h"

#include "ZYLSysException.h"

#include <QPointer>

#include <algorithm>
#include <unordered_map>
#include <vector>

struct ZYLFeatContainer::Data {
    std::vector<ZYLFeatObject *> features;
    std::vector<std::unique_ptr<ZYLFeatTransaction>> open; // outermost first
    std::vector<std::unique_ptr<ZYLFeatTransaction>> undo; // oldest first
    std::vector<std::unique_ptr<ZYLFeatTransaction>> redo; // next to redo last
    // Entries discarded while a signal carrying a transaction is being delivered; deleted
    // once the emission is over so that no slot sees a dangling argument.
    std::vector<std::unique_ptr<ZYLFeatTransaction>> retired;
    // The history state each undo or redo entry leads to (see GetHistoryState), and the
    // state with no undo entry left.
    std::unordered_map<const ZYLFeatTransaction *, quint64> states;
    quint64 baseState = 0;
    quint64 lastState = 0;
    int limit = 100;
    int busy = 0;
    int emitting = 0;
    bool featuresDirty = false;
};

// Marks changes being applied: no transaction operation may start and no signal is emitted
// until the scope ends.
class ZYLFeatContainer::BusyScope {
public:
    explicit BusyScope(ZYLFeatContainer *container) : m_data(container->d.get()) { ++m_data->busy; }
    ~BusyScope() { --m_data->busy; }
    BusyScope(const BusyScope &) = delete;
    BusyScope &operator=(const BusyScope &) = delete;

private:
    Data *m_data;
};

// Marks an emission; retired transactions are deleted when the outermost one ends. A slot
// may delete the container, hence the guard.
class ZYLFeatContainer::EmitScope {
public:
    explicit EmitScope(ZYLFeatContainer *container) : m_container(container) { ++container->d->emitting; }
    ~EmitScope()
    {
        if (m_container && --m_container->d->emitting == 0)
            m_container->d->retired.clear();
    }
    EmitScope(const EmitScope &) = delete;
    EmitScope &operator=(const EmitScope &) = delete;
    bool IsAlive() const { return !m_container.isNull(); }

private:
    QPointer<ZYLFeatContainer> m_container;
};

// Adding or removing a feature. Once applied, the change holds a reference on the feature
// for as long as it lives, so a removed feature stays alive at its address while it can come
// back. It takes that reference only when first applied: a change that never got into the
// history must leave a new feature to its creator.
class ZYLFeatContainer::FeatureChange final : public ZYLFeatChange {
public:
    FeatureChange(ZYLFeatContainer *container, ZYLFeatObject *feature, qsizetype index, bool add)
        : m_container(container), m_feature(feature), m_index(index), m_add(add)
    {
    }
    ~FeatureChange() override
    {
        if (m_holding)
            m_feature->RemoveReference();
    }

    void Undo() override { m_add ? TakeOut() : PutIn(); }
    void Redo() override
    {
        if (!m_holding) {
            m_feature->AddReference();
            m_holding = true;
        }
        m_add ? PutIn() : TakeOut();
    }

private:
    // Neither can fail: the list has room for every feature it ever held (see
    // RecordFeatureChange) and erasing a pointer does not allocate.
    void PutIn()
    {
        auto &features = m_container->d->features;
        features.insert(features.begin() + m_index, m_feature);
        m_feature->AddReference();
        SetFeatureContainer(m_feature, m_container);
        m_container->NotifyFeaturesChanged();
    }
    void TakeOut()
    {
        auto &features = m_container->d->features;
        features.erase(features.begin() + m_index);
        SetFeatureContainer(m_feature, nullptr);
        // Never the last reference: this change holds one.
        m_feature->RemoveReference();
        m_container->NotifyFeaturesChanged();
    }

    ZYLFeatContainer *m_container;
    ZYLFeatObject *m_feature;
    qsizetype m_index;
    bool m_add;
    bool m_holding = false;
};

ZYLFeatContainer::ZYLFeatContainer(QObject *parent) : QObject(parent), d(std::make_unique<Data>())
{
    // Lets queued connections and signal spies carry the transaction argument.
    qRegisterMetaType<ZYLFeatTransaction *>();
}

ZYLFeatContainer::~ZYLFeatContainer()
{
    BusyScope busy(this);
    while (!d->open.empty()) {
        try {
            d->open.back()->UndoChanges();
        } catch (const std::exception &e) {
            qCritical("ZYLFeatContainer: rolling back \"%s\" at destruction failed: %s",
                      qUtf8Printable(d->open.back()->GetName()), e.what());
        }
        d->open.back()->Close();
        d->open.pop_back();
    }
    // Newest first, the reverse of how the entries were made.
    for (auto &entry : d->redo)
        entry.reset();
    while (!d->undo.empty())
        d->undo.pop_back();
    d->retired.clear();
    for (ZYLFeatObject *feature : d->features) {
        SetFeatureContainer(feature, nullptr);
        feature->RemoveReference();
    }
}

void ZYLFeatContainer::SetFeatureContainer(ZYLFeatObject *feature, ZYLFeatContainer *container)
{
    feature->m_container = container;
}

void ZYLFeatContainer::CheckNotBusy(const char *operation) const
{
    if (d->busy)
        throw ZYLSysException(tr("Cannot %1 while changes are being applied.").arg(tr(operation)));
}

ZYLFeatTransaction *ZYLFeatContainer::RequireOpenTransaction(const char *operation) const
{
    CheckNotBusy(operation);
    if (d->open.empty())
        throw ZYLSysException(tr("Cannot %1: there is no open transaction.").arg(tr(operation)));
    return d->open.back().get();
}

void ZYLFeatContainer::CheckHistoryUsable(const char *operation) const
{
    CheckNotBusy(operation);
    if (!d->open.empty())
        throw ZYLSysException(tr("Cannot %1 while the transaction \"%2\" is open.")
                                  .arg(tr(operation), d->open.front()->GetName()));
}

void ZYLFeatContainer::AddFeature(ZYLFeatObject *feature)
{
    ZYLFeatTransaction *transaction = RequireFeatureTransaction();
    if (!feature)
        throw ZYLSysException(tr("Cannot add a null feature."));
    if (feature->GetContainer())
        throw ZYLSysException(tr("The feature \"%1\" is already in a container.").arg(feature->GetName()));
    // Room for the feature now, so that putting it in (again, on redo) never fails.
    ZYLFeatMakeRoom(d->features);
    RecordFeatureChange(transaction,
                        std::make_unique<FeatureChange>(this, feature, qsizetype(d->features.size()), true));
}

void ZYLFeatContainer::RemoveFeature(ZYLFeatObject *feature)
{
    ZYLFeatTransaction *transaction = RequireFeatureTransaction();
    if (!feature)
        throw ZYLSysException(tr("Cannot remove a null feature."));
    const auto it = std::find(d->features.begin(), d->features.end(), feature);
    if (it == d->features.end())
        throw ZYLSysException(tr("The feature \"%1\" is not in this container.").arg(feature->GetName()));
    RecordFeatureChange(transaction, std::make_unique<FeatureChange>(this, feature, it - d->features.begin(), false));
}

ZYLFeatTransaction *ZYLFeatContainer::RequireFeatureTransaction() const
{
    CheckNotBusy(QT_TR_NOOP("change the features"));
    if (d->open.empty())
        throw ZYLSysException(tr("Changing the features outside a transaction"));
    return d->open.back().get();
}

void ZYLFeatContainer::RecordFeatureChange(ZYLFeatTransaction *transaction, std::unique_ptr<ZYLFeatChange> change)
{
    {
        // The signal waits until the change is safely kept in the transaction.
        BusyScope busy(this);
        transaction->Record(std::move(change));
    }
    EmitPendingFeaturesChanged();
}

QList<ZYLFeatObject *> ZYLFeatContainer::GetFeatures() const
{
    return QList<ZYLFeatObject *>(d->features.begin(), d->features.end());
}

void ZYLFeatContainer::NotifyFeaturesChanged()
{
    if (d->busy)
        d->featuresDirty = true;
    else
        emit FeaturesChanged();
}

void ZYLFeatContainer::EmitPendingFeaturesChanged()
{
    if (!d->featuresDirty)
        return;
    d->featuresDirty = false;
    emit FeaturesChanged();
}

ZYLFeatTransaction *ZYLFeatContainer::OpenTransaction(const QString &name)
{
    CheckNotBusy(QT_TR_NOOP("open a transaction"));
    ZYLFeatTransaction *parent = d->open.empty() ? nullptr : d->open.back().get();
    ZYLFeatMakeRoom(d->open);
    d->open.push_back(std::unique_ptr<ZYLFeatTransaction>(new ZYLFeatTransaction(this, name, parent)));
    ZYLFeatTransaction *transaction = d->open.back().get();
    if (!parent)
        emit HistoryChanged();
    return transaction;
}

void ZYLFeatContainer::CommitTransaction()
{
    ZYLFeatTransaction *transaction = RequireOpenTransaction(QT_TR_NOOP("commit a transaction"));
    if (ZYLFeatTransaction *parent = transaction->GetParentTransaction()) {
        parent->TakeChangesOf(*transaction);
        transaction->Close();
        Retire(std::move(d->open.back()));
        d->open.pop_back();
        return;
    }
    const bool keep = transaction->GetNumChanges() > 0;
    if (keep) {
        ZYLFeatMakeRoom(d->undo);
        d->states.emplace(transaction, ++d->lastState);
    }
    transaction->Close();
    std::unique_ptr<ZYLFeatTransaction> committed = std::move(d->open.back());
    d->open.pop_back();
    if (keep) {
        DiscardRedo();
        d->undo.push_back(std::move(committed));
        TrimToLimit();
    } else {
        Retire(std::move(committed));
    }
    emit HistoryChanged();
}

void ZYLFeatContainer::AbortTransaction()
{
    ZYLFeatTransaction *transaction = RequireOpenTransaction(QT_TR_NOOP("abort a transaction"));
    {
        BusyScope busy(this);
        transaction->UndoChanges();
    }
    const bool topLevel = !transaction->GetParentTransaction();
    transaction->Close();
    Retire(std::move(d->open.back()));
    d->open.pop_back();
    QPointer<ZYLFeatContainer> self(this);
    EmitPendingFeaturesChanged();
    if (self && topLevel)
        emit HistoryChanged();
}

bool ZYLFeatContainer::HasOpenTransaction() const
{
    return !d->open.empty();
}

ZYLFeatTransaction *ZYLFeatContainer::GetOpenTransaction() const
{
    return d->open.empty() ? nullptr : d->open.back().get();
}

void ZYLFeatContainer::Undo()
{
    Replay(true);
}

void ZYLFeatContainer::Redo()
{
    Replay(false);
}

void ZYLFeatContainer::Replay(bool backward)
{
    CheckHistoryUsable(backward ? QT_TR_NOOP("undo") : QT_TR_NOOP("redo"));
    auto &from = backward ? d->undo : d->redo;
    auto &to = backward ? d->redo : d->undo;
    if (from.empty())
        throw ZYLSysException(backward ? tr("There is nothing to undo.") : tr("There is nothing to redo."));
    ZYLFeatMakeRoom(to);
    ZYLFeatTransaction *transaction = from.back().get();
    {
        BusyScope busy(this);
        if (backward)
            transaction->UndoChanges();
        else
            transaction->RedoChanges();
    }
    to.push_back(std::move(from.back()));
    from.pop_back();

    EmitScope emitting(this);
    EmitPendingFeaturesChanged();
    if (emitting.IsAlive()) {
        if (backward)
            emit TransactionRolledBackard(transaction);
        else
            emit TransactionRolledForward(transaction);
    }
    if (emitting.IsAlive())
        emit HistoryChanged();
}

bool ZYLFeatContainer::CanUndo() const
{
    return !d->busy && d->open.empty() && !d->undo.empty();
}

bool ZYLFeatContainer::CanRedo() const
{
    return !d->busy && d->open.empty() && !d->redo.empty();
}

QString ZYLFeatContainer::GetUndoName() const
{
    return d->undo.empty() ? QString() : d->undo.back()->GetName();
}

QString ZYLFeatContainer::GetRedoName() const
{
    return d->redo.empty() ? QString() : d->redo.back()->GetName();
}

int ZYLFeatContainer::GetUndoCount() const
{
    return int(d->undo.size());
}

int ZYLFeatContainer::GetRedoCount() const
{
    return int(d->redo.size());
}

void ZYLFeatContainer::SetHistoryLimit(int limit)
{
    if (limit < 0)
        throw ZYLSysException(tr("The history limit must not be negative (got %1).").arg(limit));
    CheckNotBusy(QT_TR_NOOP("change the history limit"));
    d->limit = limit;
    if (TrimToLimit())
        emit HistoryChanged();
}

quint64 ZYLFeatContainer::GetHistoryState() const
{
    if (d->undo.empty())
        return d->baseState;
    const auto state = d->states.find(d->undo.back().get());
    return state == d->states.end() ? d->baseState : state->second;
}

int ZYLFeatContainer::GetHistoryLimit() const
{
    return d->limit;
}

void ZYLFeatContainer::ClearHistory()
{
    CheckNotBusy(QT_TR_NOOP("clear the history"));
    if (d->undo.empty() && d->redo.empty())
        return;
    // Clearing forgets how the document got here, not where it is.
    d->baseState = GetHistoryState();
    DiscardRedo();
    while (!d->undo.empty()) {
        Retire(std::move(d->undo.back()));
        d->undo.pop_back();
    }
    emit HistoryChanged();
}

void ZYLFeatContainer::Retire(std::unique_ptr<ZYLFeatTransaction> transaction)
{
    d->states.erase(transaction.get());
    if (d->emitting) {
        // Growing this list may fail; then the entry goes at once, as outside an emission.
        try {
            d->retired.push_back(std::move(transaction));
        } catch (...) {
        }
    }
}

void ZYLFeatContainer::DiscardRedo()
{
    // The entry redone last was made last: delete the farthest future first.
    for (auto &entry : d->redo)
        Retire(std::move(entry));
    d->redo.clear();
}

bool ZYLFeatContainer::TrimToLimit()
{
    if (int(d->undo.size()) <= d->limit)
        return false;
    const auto excess = d->undo.size() - size_t(d->limit);
    d->baseState = d->states.at(d->undo[excess - 1].get());
    for (size_t i = 0; i < excess; ++i)
        Retire(std::move(d->undo[i]));
    d->undo.erase(d->undo.begin(), d->undo.begin() + qsizetype(excess));
    return true;
}
