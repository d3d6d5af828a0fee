// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLSystemExport.h"

#include <functional>

/// Queues a callback that the host runs once at its initialisation, in registration order.
///
/// Modules call it while they load, usually before the host is initialised. A callback
/// registered after the host's initialisation runs at once, inside this call. Returns true when
/// the callback was queued or has run (also when it threw: the failure is logged); returns false
/// only for an empty callback, which is refused.
ZYLSYSTEM_EXPORT bool ZYLSysRegisterInit(std::function<void()> callback);

/// The host's side: runs every queued callback once, in registration order, and marks the host
/// as initialised. Persisted settings are read back first (`ZYLSysSettings::RestoreAll`), so
/// the callbacks see the user's values. A callback that throws is logged as a warning and does
/// not stop the others; callbacks queued by a running callback run in the same pass. A second
/// call has nothing left to run. Returns the number of callbacks that ran (including failed ones).
ZYLSYSTEM_EXPORT int ZYLSysRunInitCallbacks();

/// Returns whether `ZYLSysRunInitCallbacks` has run.
ZYLSYSTEM_EXPORT bool ZYLSysIsInitialized();
