// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPMetaTypes.h"

#include "ZYLVisObject.h"

#include <QMetaType>
#include <QSet>

// The host usually has the set type registered already (its environment emits it); then the
// registration by the same name only hands back the host's id, and the registry keeps the
// host's type description rather than one inside this unloadable library.
int ZYLTPMetaTypes::GetVisObjectSetType() {
    static const int id = qRegisterMetaType<QSet<ZYLVisObject *>>("QSet<ZYLVisObject*>");
    return id;
}
