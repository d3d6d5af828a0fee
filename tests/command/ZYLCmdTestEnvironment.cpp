// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmdTestEnvironment.h"

#include "ZYLFeatContainer.h"
#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLFeatObject.h"

struct ZYLCmdTestEnvironment::Data {
    ZYLFeatContainer container;
    std::unique_ptr<ZYLFeatEnvironment> environment;
};

ZYLCmdTestEnvironment::ZYLCmdTestEnvironment() : d(std::make_unique<Data>()) {
    d->environment = std::make_unique<ZYLFeatEnvironment>(&d->container);
    ZYLFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(d->environment.get());
}

ZYLCmdTestEnvironment::~ZYLCmdTestEnvironment() {
    ZYLFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(nullptr);
}

ZYLFeatContainer *ZYLCmdTestEnvironment::GetContainer() const {
    return &d->container;
}

ZYLFeatEnvironment *ZYLCmdTestEnvironment::GetEnvironment() const {
    return d->environment.get();
}

ZYLFeatObject *ZYLCmdTestEnvironment::AddFeature(const QString &name) {
    auto *feature = new ZYLFeatObject(name);
    d->container.OpenTransaction(QStringLiteral("Setup"));
    d->container.AddFeature(feature);
    d->container.CommitTransaction();
    d->container.ClearHistory();
    return feature;
}
