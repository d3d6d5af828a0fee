// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisObject.h"

#include "ZYLVisEnvironment.h"
#include "ZYLVisRep.h"

#include "ZYLSysException.h"

#include <optional>

struct ZYLVisObject::Data {
    ZYLVisEnvironment *environment = nullptr;
    qsizetype sceneIndex = -1;
    const ZYLVisRep *rep = nullptr;
    QMetaObject::Connection repWatch;
    std::optional<ZYLMathAxis> position;
    bool visible = true;
    bool selectable = true;
    QString label;
    quint64 changes = 0;
};

ZYLVisObject::ZYLVisObject(const ZYLVisEnvironment *environment, QObject *parent)
    : QObject(parent), d(std::make_unique<Data>())
{
    if (!environment)
        throw ZYLSysException(QStringLiteral("A scene object needs an environment."));
    // The object reports its own changes to the environment it was made for; that is
    // bookkeeping of the scene, not a change of the environment the maker could observe.
    d->environment = const_cast<ZYLVisEnvironment *>(environment);
    d->environment->RegisterObject(this);
}

ZYLVisObject::~ZYLVisObject()
{
    DetachFromEnvironment();
    if (d->environment)
        d->environment->UnregisterObject(this);
}

void ZYLVisObject::DetachFromEnvironment()
{
    if (d->environment && d->sceneIndex >= 0)
        d->environment->RemoveFromScene(this);
}

ZYLVisEnvironment *ZYLVisObject::GetEnvironment() const
{
    return d->environment;
}

bool ZYLVisObject::IsInScene() const
{
    return d->sceneIndex >= 0;
}

const ZYLVisRep *ZYLVisObject::GetRep() const
{
    return d->rep;
}

ZYLMathBoundingBox ZYLVisObject::GetBoundingBox(bool inGlobalCoordinates) const
{
    if (!d->rep)
        return {};
    const ZYLMathBoundingBox local = d->rep->GetBoundingBox();
    if (!inGlobalCoordinates || !d->position || local.IsEmpty())
        return local;
    ZYLMathBoundingBox global;
    const ZYLMathPoint &lo = local.GetMin();
    const ZYLMathPoint &hi = local.GetMax();
    for (int corner = 0; corner < 8; ++corner)
        global.Add(d->position->ToGlobal(
            ZYLMathPoint(corner & 1 ? hi.X() : lo.X(), corner & 2 ? hi.Y() : lo.Y(), corner & 4 ? hi.Z() : lo.Z())));
    return global;
}

ZYLMathAxis ZYLVisObject::GetPosition() const
{
    return d->position.value_or(ZYLMathAxis());
}

bool ZYLVisObject::HasPosition() const
{
    return d->position.has_value();
}

bool ZYLVisObject::IsVisible() const
{
    return d->visible;
}

bool ZYLVisObject::IsSelectable() const
{
    return d->selectable;
}

QString ZYLVisObject::GetLabel() const
{
    return d->label;
}

quint64 ZYLVisObject::GetChangeCount() const
{
    return d->changes;
}

void ZYLVisObject::SetSceneIndex(qsizetype index)
{
    d->sceneIndex = index;
}

qsizetype ZYLVisObject::GetSceneIndex() const
{
    return d->sceneIndex;
}

void ZYLVisObject::ForgetEnvironment()
{
    d->environment = nullptr;
    d->sceneIndex = -1;
}

void ZYLVisObject::SetRep(const ZYLVisRep *rep)
{
    const ZYLVisRep *previous = d->rep;
    if (rep != previous) {
        disconnect(d->repWatch);
        d->rep = rep;
        // A representation deleted while set must not leave a dangling pointer for the
        // renderer or the picking index: drop it as if null had been set.
        if (rep)
            d->repWatch = connect(rep, &QObject::destroyed, this, [this] { SetRep(nullptr); });
    }
    ++d->changes;
    if (d->environment && d->sceneIndex >= 0)
        d->environment->OnObjectChanged(this, ZYLVisEnvironment::ObjectChange::Rep, previous);
}

void ZYLVisObject::SetPosition(const ZYLMathAxis *position)
{
    const std::optional<ZYLMathAxis> next = position ? std::optional<ZYLMathAxis>(*position) : std::nullopt;
    if (next == d->position)
        return;
    d->position = next;
    ++d->changes;
    if (d->environment && d->sceneIndex >= 0)
        d->environment->OnObjectChanged(this, ZYLVisEnvironment::ObjectChange::Position, d->rep);
}

void ZYLVisObject::SetVisibility(bool visible)
{
    if (visible == d->visible)
        return;
    d->visible = visible;
    ++d->changes;
    if (d->environment && d->sceneIndex >= 0)
        d->environment->OnObjectChanged(this, ZYLVisEnvironment::ObjectChange::Visibility, d->rep);
}

void ZYLVisObject::SetSelectability(bool selectable)
{
    if (selectable == d->selectable)
        return;
    d->selectable = selectable;
    if (d->environment && d->sceneIndex >= 0)
        d->environment->OnObjectChanged(this, ZYLVisEnvironment::ObjectChange::Selectability, d->rep);
}

void ZYLVisObject::SetLabel(const QString &label)
{
    d->label = label;
}
