// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPLinkEdit.h"

#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLFeatTransactionContext.h"

#include <QString>

void ZYLTPLinkEdit::Run(const QString &name, const std::function<void()> &edits) {
    ZYLFeatEnvironmentManager *manager = ZYLFeatEnvironmentManager::GetManager();
    ZYLFeatEnvironment *environment = manager ? manager->GetCurrentEnvironment() : nullptr;
    ZYLFeatContainer *container = environment ? environment->GetContainer() : nullptr;
    if (!container) {
        edits();
        return;
    }
    // The panels redraw what they changed themselves, so the context leaves the display alone.
    ZYLFeatTransactionContext context(container, name, false, ZYLFeatTransactionContext::NoAutoUpdate);
    edits();
    context.FlagComplete();
}
