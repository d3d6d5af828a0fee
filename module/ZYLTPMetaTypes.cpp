// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPMetaTypes.h"

#include "ZYLTPBreakRange.h"
#include "ZYLTPCourse.h"
#include "ZYLVisObject.h"

#include <QList>
#include <QMetaType>
#include <QSet>

namespace {

// The types whose registered description lives in this library; withdrawn at unload.
struct OwnedTypes {
    QList<QMetaType> types;
    ~OwnedTypes() {
        for (const QMetaType &type : types)
            QMetaType::unregisterMetaType(type);
    }
};
OwnedTypes ownedTypes;

template <class T>
void Register(const char *name) {
    const int id = qRegisterMetaType<T>(name);
    // When the host registered the type first, its description is the one in the registry.
    if (QMetaType(id).iface() == QMetaType::fromType<T>().iface())
        ownedTypes.types.append(QMetaType::fromType<T>());
}

} // namespace

// The host usually has the set type registered already (its environment emits it); then the
// registration by the same name only hands back the host's id, and the registry keeps the
// host's type description rather than one inside this unloadable library.
int ZYLTPMetaTypes::GetVisObjectSetType() {
    static const int id = qRegisterMetaType<QSet<ZYLVisObject *>>("QSet<ZYLVisObject*>");
    return id;
}

void ZYLTPMetaTypes::RegisterCourseTypes() {
    static const bool registered = [] {
        Register<const ZYLTPCourse *>("const ZYLTPCourse*");
        Register<ZYLTPCourse *>("ZYLTPCourse*");
        Register<const ZYLTPBreakRange *>("const ZYLTPBreakRange*");
        Register<ZYLTPBreakRange *>("ZYLTPBreakRange*");
        return true;
    }();
    Q_UNUSED(registered);
}
