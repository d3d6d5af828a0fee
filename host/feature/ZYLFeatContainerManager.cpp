// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatContainerManager.h"

#include "ZYLFeatContainer.h"
#include "ZYLFeatContainerProvider.h"

#include "ZYLSysException.h"

#include <unordered_map>

Q_GLOBAL_STATIC(ZYLFeatContainerManager, g_containerManager)

struct ZYLFeatContainerManager::Data {
    ZYLFeatContainerProvider defaultProvider;
    std::unordered_map<const ZYLFeatContainer *, std::unique_ptr<ZYLFeatContainerProvider>> providers;
};

ZYLFeatContainerManager *ZYLFeatContainerManager::GetManager()
{
    return g_containerManager();
}

ZYLFeatContainerManager::ZYLFeatContainerManager() : d(std::make_unique<Data>())
{
}

ZYLFeatContainerManager::~ZYLFeatContainerManager() = default;

ZYLFeatContainerProvider *ZYLFeatContainerManager::GetProvider(ZYLFeatContainer *container) const
{
    if (!container)
        throw ZYLSysException(tr("There is no provider for a null container."));
    const auto it = d->providers.find(container);
    return it != d->providers.end() ? it->second.get() : &d->defaultProvider;
}

void ZYLFeatContainerManager::SetProvider(ZYLFeatContainer *container,
                                          std::unique_ptr<ZYLFeatContainerProvider> provider)
{
    if (!container)
        throw ZYLSysException(tr("Cannot register a provider for a null container."));
    if (!provider) {
        d->providers.erase(container);
        disconnect(container, &QObject::destroyed, this, nullptr);
        return;
    }
    const bool known = d->providers.count(container) > 0;
    d->providers[container] = std::move(provider);
    // The address may be reused by a later container, which must not inherit the provider.
    if (!known)
        connect(container, &QObject::destroyed, this, [this, container] { d->providers.erase(container); });
}
