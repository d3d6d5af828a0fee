// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

/// ZYLFeature: features, containers, transactions, undo and redo.
///
/// Transactions
/// ------------
/// A container (`ZYLFeatContainer`) owns a document's features and its history. Every edit
/// of the model happens inside an open transaction (`ZYLFeatTransaction`): the command
/// runner opens one per command, commits it on OK and aborts (rolls back) it on Cancel.
/// Transactions nest: one opened while another is open on the same container records its
/// own changes; committed, they merge into the enclosing transaction; aborted, exactly its
/// own changes are rolled back. `ZYLFeatTransactionContext` is the scope object for this.
///
/// A committed top-level transaction with changes becomes an undo entry named after it;
/// one without changes adds no entry. A new entry discards the redo entries and deletes
/// what they own. The history keeps at most `SetHistoryLimit` entries (100 by default) and
/// deletes the oldest beyond it with what they own. `Undo` and `Redo` refuse (throw
/// `ZYLSysException`) while a transaction is open on the container and when there is
/// nothing to undo or redo; `CanUndo` and `CanRedo` tell beforehand.
///
/// Signals: `TransactionRolledBackard` after an undo and `TransactionRolledForward` after a
/// redo, with the history entry as argument. A rolled-back nested transaction and an
/// aborted command emit neither: their changes never reached the history, and whoever
/// aborts knows it did. `HistoryChanged` tells an Edit menu to refresh.
///
/// Recording
/// ---------
/// Model objects do not know their container, so recording goes to the innermost open
/// transaction of any container, `ZYLFeatTransaction::GetCurrent()`. Model code writes one
/// line per edit with `ZYLFeatRecorder` (values, ranges of arrays, counted references, and
/// inserts, removes, replacements and moves in lists); custom edits are `ZYLFeatChange`
/// subclasses passed to `ZYLFeatRecorder::Record`. Recording with no transaction open
/// throws `ZYLSysException("... outside a transaction")` and changes nothing; so does any
/// invalid argument (index out of range, null object).
///
/// Undo restores values, list orders and object identity exactly: a removed or replaced
/// object is kept alive by its change, at the same address, until the change leaves the
/// history, and undo puts that object back. Redo re-applies exactly. Widgets may therefore
/// hold pointers to model objects across undo, redo and rollbacks.
///
/// Memory: a change of one `double` is 24 bytes (the field's address and the other value,
/// swapped by undo and redo). Repeated sets of one field in a transaction merge into one
/// change that keeps the first old value (a spin-box drag stays one change per field).
/// Bulk edits record one change: `SetValue` of a whole array moves the new array in and
/// keeps the old buffer without copying; `SetRange` keeps only the overwritten run.
///
/// Rules for the model: fields, arrays and lists handed to the recorder stay at their
/// address while the history holds changes of them (objects are removed only through the
/// recorder, so this holds for their members); model objects whose edits are in a history
/// outlive it, or the history is cleared first (`ClearHistory`). Everything runs on the GUI
/// thread.
///
/// Display
/// -------
/// `ZYLFeatEnvironment` is a `ZYLVisEnvironment` bound to one container: the document's
/// scene, which shows the container's content as one scene object and carries the surface
/// configuration (`ZYLFeatVisualizationConfig`) used to draw bodies everywhere. It is not
/// the scene that a module's edit commands fill with their own objects; a host hands the
/// module that one separately. `ZYLFeatEnvironmentManager` holds the current feature
/// environment, which the host sets and which is cleared when it is destroyed; commands
/// open their transactions on its container.
///
/// `ZYLFeatContainerManager` gives each container its provider, the builder of the
/// representation of its content: by default one `ZYLVisRepFactory` representation per
/// geometry feature drawn with the current environment's surface configuration (or the
/// defaults), in a `ZYLVisRepSet`; containers with other content (a machine head's model)
/// register their own.
///
/// The bool argument of `ZYLFeatTransactionContext` (`requireTopLevel`), when true, demands a top-level
/// transaction of its own (the constructor throws if one is open); with false, which edit
/// commands pass, it nests in the open transaction. Auto-update behaviour 1
/// (`UpdateDisplayAtEnd`) holds back the display of the current environment while the
/// context lives and draws the result once at its end; 0 leaves the display alone.

#include "ZYLFeatChange.h"
#include "ZYLFeatContainer.h"
#include "ZYLFeatContainerManager.h"
#include "ZYLFeatContainerProvider.h"
#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLFeatGeometry.h"
#include "ZYLFeatObject.h"
#include "ZYLFeatRecorder.h"
#include "ZYLFeatTransaction.h"
#include "ZYLFeatTransactionContext.h"
#include "ZYLFeatVisualizationConfig.h"
