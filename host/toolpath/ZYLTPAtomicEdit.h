// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

// Internal to the tool path library.

#include "ZYLFeatRecorder.h"
#include "ZYLFeatTransaction.h"
#include "ZYLFeatTransactionContext.h"

#include <QString>

/// Runs `edit`, a model edit made of many recorded changes, in a transaction nested in the
/// open one, so that an exception part way through rolls back exactly the changes made so
/// far and the model is as before. Throws `ZYLSysException` ("<what> outside a transaction")
/// when no transaction is open; `what` is an untranslated text.
template<class Edit>
void ZYLTPAtomicEdit(const char *what, Edit &&edit)
{
    ZYLFeatTransaction *open = ZYLFeatRecorder::RequireTransaction(what);
    ZYLFeatTransactionContext context(open->GetContainer(), QString::fromLatin1(what), false,
                                      ZYLFeatTransactionContext::NoAutoUpdate);
    edit();
    context.FlagComplete();
}
