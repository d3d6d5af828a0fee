// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatTransaction.h"

#include "ZYLFeatChange.h"
#include "ZYLFeatMakeRoom.h"

#include "ZYLSysException.h"

#include <algorithm>
#include <vector>

namespace {

// Open transactions of all containers, innermost last. Model objects do not know their
// container, so the recorder finds the transaction to record into here.
std::vector<ZYLFeatTransaction *> &OpenStack()
{
    static std::vector<ZYLFeatTransaction *> stack;
    return stack;
}

// How far back a repeated set of a field looks for the change to merge into. A drag in a
// panel sets a handful of fields per step; looking further only costs time.
constexpr int kMergeLookBack = 16;

} // namespace

struct ZYLFeatTransaction::Data {
    ZYLFeatContainer *container = nullptr;
    QString name;
    ZYLFeatTransaction *parent = nullptr;
    ZYLFeatTransaction *openChild = nullptr;
    bool open = true;
    bool applied = true;
    std::vector<std::unique_ptr<ZYLFeatChange>> changes;
};

ZYLFeatTransaction::ZYLFeatTransaction(ZYLFeatContainer *container, const QString &name,
                                       ZYLFeatTransaction *parent)
    : d(std::make_unique<Data>())
{
    d->container = container;
    d->name = name;
    d->parent = parent;
    ZYLFeatMakeRoom(OpenStack());
    OpenStack().push_back(this);
    if (parent)
        parent->d->openChild = this;
}

ZYLFeatTransaction::~ZYLFeatTransaction()
{
    Close();
    // Newest first: a change may own an object that an older change of the same
    // transaction refers to by address.
    while (!d->changes.empty())
        d->changes.pop_back();
}

ZYLFeatTransaction *ZYLFeatTransaction::GetCurrent()
{
    return OpenStack().empty() ? nullptr : OpenStack().back();
}

const QString &ZYLFeatTransaction::GetName() const
{
    return d->name;
}

ZYLFeatContainer *ZYLFeatTransaction::GetContainer() const
{
    return d->container;
}

ZYLFeatTransaction *ZYLFeatTransaction::GetParentTransaction() const
{
    return d->parent;
}

bool ZYLFeatTransaction::IsOpen() const
{
    return d->open;
}

bool ZYLFeatTransaction::IsApplied() const
{
    return d->applied;
}

int ZYLFeatTransaction::GetNumChanges() const
{
    return int(d->changes.size());
}

const ZYLFeatChange *ZYLFeatTransaction::GetChange(int index) const
{
    if (index < 0 || index >= GetNumChanges())
        throw ZYLSysException(tr("Change index %1 is out of range (%2 changes).")
                                  .arg(index)
                                  .arg(GetNumChanges()));
    return d->changes[size_t(index)].get();
}

void ZYLFeatTransaction::CheckRecordable() const
{
    if (!d->open)
        throw ZYLSysException(tr("The transaction \"%1\" is closed; it records no more changes.").arg(d->name));
    if (d->openChild)
        throw ZYLSysException(
            tr("The transaction \"%1\" has a nested transaction open; changes go into the nested one.").arg(d->name));
}

void ZYLFeatTransaction::Record(std::unique_ptr<ZYLFeatChange> change)
{
    if (!change)
        throw ZYLSysException(tr("A null change cannot be recorded."));
    CheckRecordable();
    // Make room first so that, once the change is applied, keeping it cannot fail.
    ZYLFeatMakeRoom(d->changes);
    change->Redo();
    d->changes.push_back(std::move(change));
}

ZYLFeatChange *ZYLFeatTransaction::FindMergeableValue(const std::type_info &type, const void *field,
                                                      std::size_t size) const
{
    const auto begin = quintptr(field);
    const int last = int(d->changes.size()) - 1;
    for (int i = last; i >= 0 && i > last - kMergeLookBack; --i) {
        const ZYLFeatChange::ValueField other = d->changes[size_t(i)]->GetValueField();
        // Any other kind of change in between may write the field (a custom change, a run
        // of an array holding it), and so may a value change of memory overlapping it;
        // merging across those would reorder the two writes.
        if (!other.address)
            return nullptr;
        if (other.address == field && *other.type == type)
            return d->changes[size_t(i)].get();
        const auto otherBegin = quintptr(other.address);
        if (otherBegin < begin + size && begin < otherBegin + other.size)
            return nullptr;
    }
    return nullptr;
}

void ZYLFeatTransaction::DropChange(const ZYLFeatChange *change)
{
    auto it = std::find_if(d->changes.begin(), d->changes.end(),
                           [change](const std::unique_ptr<ZYLFeatChange> &c) { return c.get() == change; });
    if (it != d->changes.end())
        d->changes.erase(it);
}

void ZYLFeatTransaction::UndoChanges()
{
    auto &changes = d->changes;
    size_t undone = 0;
    try {
        for (; undone < changes.size(); ++undone)
            changes[changes.size() - 1 - undone]->Undo();
    } catch (...) {
        // The failing change left the model untouched; re-apply what was undone so the
        // transaction is whole again.
        while (undone > 0)
            changes[changes.size() - undone--]->Redo();
        throw;
    }
    d->applied = false;
}

void ZYLFeatTransaction::RedoChanges()
{
    auto &changes = d->changes;
    size_t redone = 0;
    try {
        for (; redone < changes.size(); ++redone)
            changes[redone]->Redo();
    } catch (...) {
        while (redone > 0)
            changes[--redone]->Undo();
        throw;
    }
    d->applied = true;
}

void ZYLFeatTransaction::TakeChangesOf(ZYLFeatTransaction &nested)
{
    auto &mine = d->changes;
    auto &theirs = nested.d->changes;
    ZYLFeatMakeRoom(mine, theirs.size());
    std::move(theirs.begin(), theirs.end(), std::back_inserter(mine));
    theirs.clear();
}

void ZYLFeatTransaction::Close()
{
    if (!d->open)
        return;
    d->open = false;
    auto &stack = OpenStack();
    auto it = std::find(stack.rbegin(), stack.rend(), this);
    if (it != stack.rend())
        stack.erase(std::next(it).base());
    if (d->parent && d->parent->d->openChild == this)
        d->parent->d->openChild = nullptr;
    d->parent = nullptr;
}
