// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatureExport.h"

#include <QCoreApplication>
#include <QString>

#include <memory>

class ZYLFeatContainer;
class ZYLFeatTransaction;

/// A scope that runs one transaction on a container: it opens the transaction when
/// constructed and closes it when destroyed, by commit if `FlagComplete` was called and by
/// rollback otherwise, on every path out of the scope including exceptions.
///
/// Opened while the container has a transaction open (the command's transaction, usually),
/// the context's transaction is nested: flagged, its changes merge into the enclosing
/// transaction; unflagged, exactly its own changes are rolled back and the enclosing
/// transaction's earlier changes stay. Opened with none open, it is a top-level transaction
/// that a flagged end commits to the history.
///
/// The destructor never throws. Transactions that are still open inside the context's own
/// at its end are rolled back first (with a warning); if its own transaction was already
/// closed by someone else, it warns and does nothing; a failure while closing is logged.
class ZYLFEATURE_EXPORT ZYLFeatTransactionContext {
    Q_DECLARE_TR_FUNCTIONS(ZYLFeatTransactionContext)
public:
    /// What the context does about the display.
    enum AutoUpdateBehavior {
        /// Nothing: whoever makes the edits keeps the display up to date.
        NoAutoUpdate = 0,
        /// When the current feature environment shows the container, its display is held
        /// back while the context lives (a `ZYLVisEnvironmentBatchContext`, and no rebuild
        /// of its content) and updated once when the context ends, after the commit or
        /// rollback, so a long run of edits is drawn once.
        UpdateDisplayAtEnd = 1,
    };

    /// Opens the transaction `name` on `container`. With `requireTopLevel` the transaction
    /// must be a top-level one of its own: the constructor throws `ZYLSysException` if the
    /// container already has a transaction open. Also throws for a null container and when
    /// the container cannot open a transaction now.
    ZYLFeatTransactionContext(ZYLFeatContainer *container, const QString &name, bool requireTopLevel = false,
                              AutoUpdateBehavior autoUpdate = UpdateDisplayAtEnd);
    ~ZYLFeatTransactionContext();
    ZYLFeatTransactionContext(const ZYLFeatTransactionContext &) = delete;
    ZYLFeatTransactionContext &operator=(const ZYLFeatTransactionContext &) = delete;

    /// Marks the work as successful: the transaction is committed at the end of the scope.
    void FlagComplete();
    bool IsFlaggedComplete() const;
    /// Returns the context's transaction while it is open, else null.
    ZYLFeatTransaction *GetTransaction() const;

private:
    void Finish();

    struct Data;
    std::unique_ptr<Data> d;
};
