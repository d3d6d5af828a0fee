// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCommandExport.h"

#include <QObject>

#include <memory>

class ZYLFeatEnvironment;

/// One run of a command: `ZYLCmdController` creates an instance each time an action of the
/// class is triggered, through the class's invokable constructor `(QObject* parent)` with the
/// controller as parent, and deletes it when the run ends. Subclasses declare that
/// constructor `Q_INVOKABLE` and register the class with a `ZYLCmdCommandPublisher`.
///
/// The runner calls the virtual operations in this order (every override calls the base):
///  1. construction; then the action's property hash is set on the object as dynamic
///     properties (read them with `property("mode")`, not in the constructor);
///  2. `GetContext()`; unless the transaction behaviour is `NoTransaction`, one transaction
///     is opened on the container of that environment, named after the class information
///     "label" (the class name when it has none); with no environment the command runs
///     without a transaction;
///  3. `Initialize()`;
///  4. a `ZYLCmdDialogCommand` gets its panel here (see there);
///  5. `Load()`;
///  6. `GainFocus()`; a command without a panel is accepted right after it.
/// Accepted (OK): `LoseFocus()`, `Commit()`, the transaction is committed, `Cleanup()`, then
/// `PostApply()` when `Cleanup()` returned true. Cancelled (Cancel, Close, `Cancel()`, another
/// action unless `CommitWhenInterrupted`, unregistration of the class, destruction of the
/// application): `LoseFocus()`, the transaction is rolled back, `Cleanup()`.
/// `LoseFocus()` runs only when `GainFocus()` has completed.
///
/// An exception escaping any of these operations (or the constructor) is reported through the
/// dialog handler's `ErrorReported`, and the run ends as cancelled: the transaction is rolled
/// back and `Cleanup()` runs (an exception from `Cleanup()` itself is reported too). The
/// object and its panel are deleted afterwards with `deleteLater`, so a command may end
/// itself from inside its own slots.
class ZYLCOMMAND_EXPORT ZYLCmdCommand : public QObject {
    Q_OBJECT
public:
    /// What happens to a running command when another action is triggered.
    enum ConcurrencyBehavior {
        /// It is accepted (committed) before the new command starts.
        CommitWhenInterrupted = 0,
        /// It is cancelled (rolled back) before the new command starts. Only one command
        /// runs at a time in either case.
        CancelWhenInterrupted = 1,
    };
    Q_ENUM(ConcurrencyBehavior)

    /// Whether the runner wraps the command in a transaction.
    enum TransactionBehavior {
        /// One transaction on the container of `GetContext()` for the whole run.
        OwnTransaction = 0,
        /// None: the command does not edit the model (edits would throw).
        NoTransaction = 1,
    };
    Q_ENUM(TransactionBehavior)

    ZYLCmdCommand(QObject *parent, ConcurrencyBehavior concurrency, TransactionBehavior transaction);
    ~ZYLCmdCommand() override;

    /// Returns the environment whose container holds the command's transaction. The default
    /// returns the current environment of `ZYLFeatEnvironmentManager` (null when none).
    virtual ZYLFeatEnvironment *GetContext() const;
    /// Called once the transaction is open, before any panel exists; dynamic properties are
    /// set by then. Does nothing by default.
    virtual void Initialize();
    /// Called when the command becomes the active one, after its panel is in place. Does
    /// nothing by default.
    virtual void GainFocus();
    /// Called when the command stops being the active one, before `Commit` or the rollback.
    /// Does nothing by default.
    virtual void LoseFocus();
    /// Called after the panel is in place and before it is shown, to fill it from the model.
    /// Does nothing by default.
    virtual void Load();
    /// Called on acceptance, before the transaction is committed. Does nothing by default.
    virtual void Commit();
    /// Called at the end of every run, accepted or cancelled, after the commit or rollback,
    /// while the panel still exists. Returns true by default; false skips `PostApply` and is
    /// logged as a warning.
    virtual bool Cleanup();
    /// Called last after an accepted run whose `Cleanup` returned true, once the edits are an
    /// undo step; the command is no longer current, so it may trigger a follow-up action.
    /// Does nothing by default.
    virtual void PostApply();

    /// Ends the command as cancelled if it is the running one; otherwise does nothing.
    void Cancel();
    /// Ends the command as accepted if it is the running one; otherwise does nothing.
    void Accept();
    /// Returns whether the command is the controller's running command.
    bool IsRunning() const;

    ConcurrencyBehavior GetConcurrencyBehavior() const;
    TransactionBehavior GetTransactionBehavior() const;
    /// Returns the class information "label" of the command's class, or the class name when
    /// there is none.
    QString GetLabel() const;
    /// Returns the class information "label" of a command class, or its class name.
    static QString GetLabel(const QMetaObject *commandClass);

private:
    struct Data;
    std::unique_ptr<Data> d;
};
