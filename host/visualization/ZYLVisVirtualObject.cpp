// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisVirtualObject.h"

#include "ZYLVisRep.h"

ZYLVisVirtualObject::ZYLVisVirtualObject(const ZYLVisEnvironment *environment, QObject *parent)
    : ZYLVisObject(environment, parent)
{
}

ZYLVisVirtualObject::~ZYLVisVirtualObject()
{
    // Leave the scene while still a virtual object: slots of the selection signal cast the
    // removed objects to this class.
    DetachFromEnvironment();
    SetRep(nullptr);
}

void ZYLVisVirtualObject::SetRep(const ZYLVisRep *rep)
{
    const ZYLVisRep *previous = GetRep();
    // Parent the new rep first: the base drops a rep as soon as it is destroyed, so the old
    // one is deleted only after the object no longer points at it.
    if (rep && rep != previous && !rep->parent())
        const_cast<ZYLVisRep *>(rep)->setParent(this);
    ZYLVisObject::SetRep(rep);
    if (previous && previous != rep && previous->parent() == this)
        delete previous;
}
