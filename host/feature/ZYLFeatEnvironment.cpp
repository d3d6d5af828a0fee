// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatEnvironment.h"

#include "ZYLFeatContainer.h"
#include "ZYLFeatContainerManager.h"
#include "ZYLFeatContainerProvider.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLFeatVisualizationConfig.h"

#include "ZYLSysException.h"
#include "ZYLVisRep.h"
#include "ZYLVisVirtualObject.h"

#include <QPointer>

struct ZYLFeatEnvironment::Data {
    QPointer<ZYLFeatContainer> container;
    ZYLFeatVisualizationConfig config;
    // Owns the representation of the container's content.
    std::unique_ptr<ZYLVisVirtualObject> content;
    int holds = 0;
    bool contentDirty = false;
};

ZYLFeatEnvironment::ZYLFeatEnvironment(ZYLFeatContainer *container, QObject *parent)
    : ZYLVisEnvironment(parent), d(std::make_unique<Data>())
{
    if (!container)
        throw ZYLSysException(tr("A feature environment needs a container."));
    d->container = container;
    d->content = std::make_unique<ZYLVisVirtualObject>(this);
    d->content->SetSelectability(false);
    d->content->SetLabel(QStringLiteral("content"));
    AddVirtualObject(d->content.get());
    connect(container, &ZYLFeatContainer::FeaturesChanged, this, &ZYLFeatEnvironment::OnContentChanged);
    OnContentChanged();
}

ZYLFeatEnvironment::~ZYLFeatEnvironment()
{
    if (ZYLFeatEnvironmentManager *manager = ZYLFeatEnvironmentManager::GetManager())
        manager->ForgetEnvironment(this);
    if (d->container)
        disconnect(d->container, nullptr, this, nullptr);
    d->content.reset();
}

ZYLFeatContainer *ZYLFeatEnvironment::GetContainer() const
{
    return d->container;
}

const ZYLFeatVisualizationConfig &ZYLFeatEnvironment::GetSurfaceConfig() const
{
    return d->config;
}

void ZYLFeatEnvironment::SetSurfaceConfig(const ZYLFeatVisualizationConfig &config)
{
    if (config == d->config)
        return;
    d->config = config;
    OnContentChanged();
    emit SurfaceConfigChanged();
}

ZYLVisVirtualObject *ZYLFeatEnvironment::GetContentObject() const
{
    return d->content.get();
}

void ZYLFeatEnvironment::UpdateContent()
{
    d->contentDirty = false;
    ZYLVisRep *rep = nullptr;
    const ZYLFeatContainerManager *manager = ZYLFeatContainerManager::GetManager();
    if (d->container && manager)
        rep = manager->GetProvider(d->container)->CreateRep(d->container);
    d->content->SetRep(rep);
}

void ZYLFeatEnvironment::OnContentChanged()
{
    if (d->holds > 0) {
        d->contentDirty = true;
        return;
    }
    // Called from signals and scope ends, where an exception has nowhere to go: a content
    // that cannot be drawn is shown as nothing.
    try {
        UpdateContent();
    } catch (const std::exception &e) {
        qWarning("ZYLFeatEnvironment: the content cannot be drawn: %s", e.what());
        d->content->SetRep(nullptr);
    }
}

void ZYLFeatEnvironment::HoldContentUpdates()
{
    ++d->holds;
}

void ZYLFeatEnvironment::ReleaseContentUpdates()
{
    if (d->holds > 0 && --d->holds == 0 && d->contentDirty)
        OnContentChanged();
}
