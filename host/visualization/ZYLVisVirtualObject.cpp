// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisVirtualObject.h"

ZYLVisVirtualObject::ZYLVisVirtualObject(const ZYLVisEnvironment *environment, QObject *parent)
    : ZYLVisObject(environment, parent)
{
}

ZYLVisVirtualObject::~ZYLVisVirtualObject()
{
    // Leave the scene while still a virtual object: slots of the selection signal cast the
    // removed objects to this class.
    DetachFromEnvironment();
}
