// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatureExport.h"

#include <QObject>
#include <QString>

#include <cstddef>
#include <memory>
#include <typeinfo>

class ZYLFeatChange;
class ZYLFeatContainer;

/// One named transaction of a container: the ordered changes it recorded. Transactions are
/// made by `ZYLFeatContainer::OpenTransaction` (or a `ZYLFeatTransactionContext`) and are
/// owned by their container: while open, then as an entry of its undo or redo history. They
/// are passed to the container's undo and redo signals, where the argument is valid for the
/// time of the emission.
///
/// All open transactions of all containers form one process-wide stack in opening order;
/// `GetCurrent` returns its top, the transaction that `ZYLFeatRecorder` records into. Use
/// from the GUI thread only.
class ZYLFEATURE_EXPORT ZYLFeatTransaction final : public QObject {
    Q_OBJECT
public:
    ~ZYLFeatTransaction() override;

    /// Returns the innermost open transaction of any container, or null when none is open.
    static ZYLFeatTransaction *GetCurrent();

    /// Returns the name given when it was opened (shown as "Undo <name>").
    const QString &GetName() const;
    /// Returns the container that owns it.
    ZYLFeatContainer *GetContainer() const;
    /// Returns the transaction it is nested in while open, or null for a top-level one.
    ZYLFeatTransaction *GetParentTransaction() const;
    /// Returns whether it is still open (recording). Committed transactions in the history
    /// are closed.
    bool IsOpen() const;
    /// Returns whether its changes are applied to the model: true while open and for undo
    /// entries, false for redo entries.
    bool IsApplied() const;

    /// Returns the number of changes, and one change by index in recording order.
    int GetNumChanges() const;
    const ZYLFeatChange *GetChange(int index) const;

    /// Applies `change` (its first `Redo`) and keeps it as the last change. Throws
    /// `ZYLSysException` when the change is null, the transaction is closed or a transaction
    /// nested in it is open; an exception from the change itself propagates and nothing is
    /// recorded.
    void Record(std::unique_ptr<ZYLFeatChange> change);

private:
    friend class ZYLFeatContainer;
    friend class ZYLFeatRecorder;

    ZYLFeatTransaction(ZYLFeatContainer *container, const QString &name, ZYLFeatTransaction *parent);

    // Throws unless changes may be recorded into this transaction now.
    void CheckRecordable() const;
    // Finds, among the last few changes, the value change of `field` that a new set may
    // merge into; only value changes of other, non-overlapping fields may lie in between.
    ZYLFeatChange *FindMergeableValue(const std::type_info &type, const void *field, std::size_t size) const;
    void DropChange(const ZYLFeatChange *change);

    // Undoes (redoes) all changes in reverse (recorded) order. If one throws, the ones
    // already done are taken back, so the model and the transaction stay as they were.
    void UndoChanges();
    void RedoChanges();
    // Appends the changes of a nested transaction that is being committed into this one.
    void TakeChangesOf(ZYLFeatTransaction &nested);
    void Close();

    struct Data;
    std::unique_ptr<Data> d;
};
