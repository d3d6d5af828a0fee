// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatTransactionContext.h"

#include "ZYLFeatContainer.h"
#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLFeatTransaction.h"

#include "ZYLSysException.h"
#include "ZYLVisEnvironmentBatchContext.h"

#include <QPointer>

struct ZYLFeatTransactionContext::Data {
    QPointer<ZYLFeatContainer> container;
    QPointer<ZYLFeatTransaction> transaction;
    bool flagged = false;
    // With UpdateDisplayAtEnd: the environment showing the container, held back while the
    // context lives. The batch is declared last so that it ends after everything else.
    QPointer<ZYLFeatEnvironment> environment;
    std::unique_ptr<ZYLVisEnvironmentBatchContext> batch;
};

ZYLFeatTransactionContext::ZYLFeatTransactionContext(ZYLFeatContainer *container, const QString &name,
                                                     bool requireTopLevel, AutoUpdateBehavior autoUpdate)
    : d(std::make_unique<Data>())
{
    if (!container)
        throw ZYLSysException(tr("Cannot open the transaction \"%1\" without a container.").arg(name));
    if (requireTopLevel && container->HasOpenTransaction())
        throw ZYLSysException(tr("Cannot open \"%1\" as a transaction of its own: \"%2\" is open.")
                                  .arg(name, container->GetOpenTransaction()->GetName()));
    d->container = container;
    d->transaction = container->OpenTransaction(name);
    const ZYLFeatEnvironmentManager *manager = ZYLFeatEnvironmentManager::GetManager();
    ZYLFeatEnvironment *environment = manager ? manager->GetCurrentEnvironment() : nullptr;
    if (autoUpdate == UpdateDisplayAtEnd && environment && environment->GetContainer() == container) {
        d->environment = environment;
        d->batch = std::make_unique<ZYLVisEnvironmentBatchContext>(environment);
        environment->HoldContentUpdates();
    }
}

ZYLFeatTransactionContext::~ZYLFeatTransactionContext()
{
    try {
        Finish();
    } catch (const std::exception &e) {
        qCritical("ZYLFeatTransactionContext: closing the transaction failed: %s", e.what());
    } catch (...) {
        qCritical("ZYLFeatTransactionContext: closing the transaction failed");
    }
    // Inside the batch, so the rebuilt content and the edits are drawn once.
    if (d->environment)
        d->environment->ReleaseContentUpdates();
}

void ZYLFeatTransactionContext::FlagComplete()
{
    d->flagged = true;
}

bool ZYLFeatTransactionContext::IsFlaggedComplete() const
{
    return d->flagged;
}

ZYLFeatTransaction *ZYLFeatTransactionContext::GetTransaction() const
{
    return d->transaction && d->transaction->IsOpen() ? d->transaction.data() : nullptr;
}

void ZYLFeatTransactionContext::Finish()
{
    ZYLFeatContainer *container = d->container;
    ZYLFeatTransaction *transaction = GetTransaction();
    if (!container || !transaction) {
        qWarning("ZYLFeatTransactionContext: the transaction was closed before the end of its scope");
        return;
    }
    // Someone left a transaction open inside ours: it cannot outlive ours.
    while (container->GetOpenTransaction() != transaction) {
        qWarning("ZYLFeatTransactionContext: rolling back \"%s\", left open inside \"%s\"",
                 qUtf8Printable(container->GetOpenTransaction()->GetName()), qUtf8Printable(transaction->GetName()));
        container->AbortTransaction();
    }
    if (d->flagged) {
        try {
            container->CommitTransaction();
            return;
        } catch (const std::exception &e) {
            qCritical("ZYLFeatTransactionContext: committing \"%s\" failed, rolling back: %s",
                      qUtf8Printable(transaction->GetName()), e.what());
        }
    }
    container->AbortTransaction();
}
