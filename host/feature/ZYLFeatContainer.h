// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatureExport.h"

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

class ZYLFeatChange;
class ZYLFeatObject;
class ZYLFeatTransaction;

/// A document of features with its transactions and its undo/redo history (see
/// `ZYLFeature.h` for the whole model).
///
/// Transactions nest: `OpenTransaction` opens a top-level transaction when none is open and
/// otherwise one nested in the innermost open one; `CommitTransaction` and
/// `AbortTransaction` close the innermost. Committing a nested transaction merges its
/// changes into the enclosing one; committing a top-level transaction with changes makes it
/// the newest undo entry and discards the redo entries (deleting what they own), while one
/// without changes adds no entry and keeps the redo entries. Aborting rolls back the
/// innermost transaction's own changes.
///
/// Signals: `TransactionRolledBackard` after an undo and `TransactionRolledForward` after a
/// redo of a history entry, never for an aborted or rolled-back (nested) transaction;
/// `HistoryChanged` whenever `CanUndo`, `CanRedo` or the entry names may have changed,
/// including when a top-level transaction opens or closes; `FeaturesChanged` after the
/// feature list or the content of a listed feature (`ZYLFeatObject::RecordEdit`) changed by
/// an edit, an abort, an undo or a redo. No signal is emitted while
/// changes are being applied.
///
/// Failures throw `ZYLSysException` and leave the container as it was: commit or abort with
/// no open transaction, undo or redo with nothing to undo or redo or while a transaction is
/// open, transaction operations from inside an undo, redo or abort in progress.
class ZYLFEATURE_EXPORT ZYLFeatContainer : public QObject {
    Q_OBJECT
public:
    explicit ZYLFeatContainer(QObject *parent = nullptr);
    /// Rolls back transactions still open, then deletes the history and releases the
    /// features. Emits nothing.
    ~ZYLFeatContainer() override;

    /// Appends a feature, recorded in this container's innermost open transaction; the
    /// container holds a reference on it while it lists it, and the change holds another
    /// while it is in the history. Throws for null, for a feature already in a container and
    /// with no transaction open on this container; the caller then still owns the feature.
    void AddFeature(ZYLFeatObject *feature);
    /// Removes a feature, recorded like `AddFeature`; the feature stays alive while the
    /// change is in the history. Throws for null and for a feature not in this container.
    void RemoveFeature(ZYLFeatObject *feature);
    /// Returns the features in order.
    QList<ZYLFeatObject *> GetFeatures() const;

    /// Opens a transaction (nested when one is open) and returns it; the container owns it.
    ZYLFeatTransaction *OpenTransaction(const QString &name);
    /// Closes the innermost open transaction and keeps its changes (see above).
    void CommitTransaction();
    /// Closes the innermost open transaction and rolls back its own changes.
    void AbortTransaction();
    bool HasOpenTransaction() const;
    /// Returns the innermost open transaction of this container, or null.
    ZYLFeatTransaction *GetOpenTransaction() const;

    /// Takes back the newest undo entry; it becomes the next redo entry.
    void Undo();
    /// Makes the next redo entry again; it becomes the newest undo entry.
    void Redo();
    /// Return whether `Undo` / `Redo` would succeed now.
    bool CanUndo() const;
    bool CanRedo() const;
    /// Return the name of the entry `Undo` / `Redo` would act on, or an empty string.
    QString GetUndoName() const;
    QString GetRedoName() const;
    int GetUndoCount() const;
    int GetRedoCount() const;

    /// Returns an identifier of the document state the history has reached: each committed
    /// entry makes a new one, never given out before; undo and redo return to the identifier
    /// of the state they reach, and trimming or clearing the history keeps it. Equal
    /// identifiers mean the same state (what "unmodified since the last save" compares).
    quint64 GetHistoryState() const;

    /// Sets the largest number of undo entries kept (100 by default; 0 keeps none); older
    /// entries are deleted with what they own. Throws for a negative limit.
    void SetHistoryLimit(int limit);
    int GetHistoryLimit() const;
    /// Deletes all undo and redo entries with what they own; open transactions stay.
    void ClearHistory();

signals:
    void TransactionRolledBackard(ZYLFeatTransaction *transaction);
    void TransactionRolledForward(ZYLFeatTransaction *transaction);
    void HistoryChanged();
    void FeaturesChanged();

private:
    friend class ZYLFeatObject;
    class FeatureChange;
    class BusyScope;
    class EmitScope;

    // Undoes the newest undo entry or redoes the next redo entry.
    void Replay(bool backward);
    void CheckNotBusy(const char *operation) const;
    void CheckHistoryUsable(const char *operation) const;
    ZYLFeatTransaction *RequireOpenTransaction(const char *operation) const;
    ZYLFeatTransaction *RequireFeatureTransaction() const;
    void RecordFeatureChange(ZYLFeatTransaction *transaction, std::unique_ptr<ZYLFeatChange> change);
    void NotifyFeaturesChanged();
    void EmitPendingFeaturesChanged();
    void Retire(std::unique_ptr<ZYLFeatTransaction> transaction);
    void DiscardRedo();
    bool TrimToLimit();
    static void SetFeatureContainer(ZYLFeatObject *feature, ZYLFeatContainer *container);

    struct Data;
    std::unique_ptr<Data> d;
};
