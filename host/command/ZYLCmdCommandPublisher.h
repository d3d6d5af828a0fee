// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCmdController.h"

/// Registers the command class `T` for as long as it lives, typically as a static member of
/// `T` (`static ZYLCmdCommandPublisher<T> _Publisher;`): the constructor calls
/// `RegisterCommand(&T::staticMetaObject)`, the destructor `UnregisterCommand` with the same
/// meta-object, which cancels and deletes a running instance first. Safe during static
/// initialisation and when the library holding `T` is unloaded; after the controller itself
/// is gone (process exit) the destructor does nothing.
template <class T>
class ZYLCmdCommandPublisher {
public:
    ZYLCmdCommandPublisher() {
        if (ZYLCmdController *controller = ZYLCmdController::GetController())
            controller->RegisterCommand(&T::staticMetaObject);
    }
    ~ZYLCmdCommandPublisher() {
        if (ZYLCmdController *controller = ZYLCmdController::GetController())
            controller->UnregisterCommand(&T::staticMetaObject);
    }
    ZYLCmdCommandPublisher(const ZYLCmdCommandPublisher &) = delete;
    ZYLCmdCommandPublisher &operator=(const ZYLCmdCommandPublisher &) = delete;
};
