// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatEnvironmentManager.h"

#include "ZYLFeatEnvironment.h"

Q_GLOBAL_STATIC(ZYLFeatEnvironmentManager, g_environmentManager)

struct ZYLFeatEnvironmentManager::Data {
    ZYLFeatEnvironment *current = nullptr;
};

ZYLFeatEnvironmentManager *ZYLFeatEnvironmentManager::GetManager()
{
    return g_environmentManager();
}

ZYLFeatEnvironmentManager::ZYLFeatEnvironmentManager() : d(std::make_unique<Data>())
{
    qRegisterMetaType<ZYLFeatEnvironment *>();
}

ZYLFeatEnvironmentManager::~ZYLFeatEnvironmentManager() = default;

ZYLFeatEnvironment *ZYLFeatEnvironmentManager::GetCurrentEnvironment() const
{
    return d->current;
}

void ZYLFeatEnvironmentManager::SetCurrentEnvironment(ZYLFeatEnvironment *environment)
{
    if (environment == d->current)
        return;
    d->current = environment;
    emit CurrentEnvironmentChanged(environment);
}

void ZYLFeatEnvironmentManager::ForgetEnvironment(ZYLFeatEnvironment *environment)
{
    if (environment == d->current)
        SetCurrentEnvironment(nullptr);
}
