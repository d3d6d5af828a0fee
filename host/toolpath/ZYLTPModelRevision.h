// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include <QtGlobal>

/// The revision counter of the tool path model. Derived geometry (approach and retract
/// motion, link motion, lookup tables) is cached together with the revision it was computed
/// at and recomputed when the counter has moved on.
///
/// The counter only ever grows: every recorded model edit appends, after its own changes, a
/// small change that bumps it when applied and again when undone, so undo, redo and rollback
/// all invalidate the caches, and a counter value never comes back for a different state.
/// The counter is process-wide, so an edit of one program also refreshes the caches of
/// others, which costs a recomputation of a few points at most.
class ZYLTOOLPATH_EXPORT ZYLTPModelRevision {
public:
    ZYLTPModelRevision() = delete;
    /// Returns the current revision.
    static quint64 Get();
    /// Moves the revision on without recording (construction outside any history).
    static void Bump();
    /// Records, in the current transaction, the change that bumps the revision on apply and
    /// on undo. Throws `ZYLSysException` when no transaction is open.
    static void Record();
};
