// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCommandExport.h"

#include <QByteArray>
#include <QDialogButtonBox>
#include <QList>
#include <QObject>

#include <exception>
#include <memory>

class ZYLCmdAction;
class ZYLCmdActionPublisher;
class ZYLCmdCommand;
class ZYLCmdDialogCommand;
class ZYLCmdDialogHandler;

/// The process-wide command controller: it lists the registered command classes and the
/// published actions, and runs commands, one at a time (the runner is described at
/// `ZYLCmdCommand` and `ZYLCmdDialogCommand`).
///
/// Triggering an action (its `QAction::trigger()` or `Trigger(key)`) first ends the running
/// command as its `ZYLCmdCommand::ConcurrencyBehavior` says, then creates the action's command
/// class through its invokable constructor `(QObject* parent)` with the controller as parent,
/// sets the action's properties on it as dynamic properties and runs it. The command's class
/// must be registered by then; the action may be published before or after registration.
///
/// Bad input never throws and never changes anything: a key with no action (or a trigger
/// without QGuiApplication, as actions need one), an unregistered command class, a trigger while the running command is ending (from inside its `Commit` or
/// `Cleanup`), and a `RequireFilteredSelection` action whose selection does not pass give a
/// warning and `Trigger` returns false. `RegisterCommand` refuses with a warning a null
/// meta-object, a class that is not a `ZYLCmdCommand`, a class without an invokable
/// `(QObject*)` constructor and a class (or class name) already registered.
/// `UnregisterCommand` of a class that is not registered does nothing, so that the publisher
/// of a refused class may unregister it.
///
/// All calls on the GUI thread.
class ZYLCOMMAND_EXPORT ZYLCmdController : public QObject {
    Q_OBJECT
public:
    /// Returns the controller, creating it on first use (no application object is needed
    /// yet, so static objects of a library may call it while the library loads). Returns null
    /// only once it has been destroyed at process exit.
    static ZYLCmdController *GetController();

    /// Adds a command class (see the class comment for refused classes); `CommandsChanged`.
    void RegisterCommand(const QMetaObject *commandClass);
    /// Withdraws a command class. A running command of that class is cancelled (rollback,
    /// `Cleanup`) and, like finished instances still waiting for deferred deletion, deleted
    /// at once, so that the library holding the class can be unloaded; `CommandsChanged`.
    void UnregisterCommand(const QMetaObject *commandClass);
    /// Returns the registered classes in registration order.
    QList<const QMetaObject *> GetRegisteredCommands() const;
    /// Returns the registered class of that class name, or null.
    const QMetaObject *GetRegisteredCommand(const QByteArray &className) const;

    /// Returns the action published under `key` (command class name + "." + action name), or
    /// null; also null while there is no QGuiApplication (see `ZYLCmdActionPublisher`).
    ZYLCmdAction *GetAction(const QByteArray &key) const;
    /// Returns the published actions in publication order (none without a QGuiApplication).
    QList<ZYLCmdAction *> GetActions() const;

    /// Returns the running command, or null. A command stays current until its `Cleanup`
    /// has returned.
    ZYLCmdCommand *GetCurrentCommand() const;
    /// Returns the handler that frames panels and reports errors.
    ZYLCmdDialogHandler *GetDialogHandler() const;

    /// Starts the command of the action published under `key`. Returns false with a warning
    /// when it cannot start (see the class comment) and when the command's constructor
    /// throws (reported through the dialog handler); true once a command ran, even if it
    /// ended during its start (commands without panel always do).
    bool Trigger(const QByteArray &key);
    /// Ends the running command as accepted without going through `Click`. Returns false
    /// when no command runs or it is already ending.
    bool Accept();
    /// Ends the running command as cancelled. Returns false when no command runs or it is
    /// already ending.
    bool Reject();

signals:
    /// An action was published or withdrawn.
    void ActionsChanged();
    /// A command class was registered or unregistered.
    void CommandsChanged();
    /// A command was created and became the current one (before its transaction opens).
    void CommandStarted(ZYLCmdCommand *command);
    /// A run ended; `accepted` is true when its transaction was committed. The command is
    /// still alive (deleted later). If a running command was deleted by someone else, the
    /// pointer is only its former address.
    void CommandFinished(ZYLCmdCommand *command, bool accepted);

private:
    friend class ZYLCmdActionPublisher;
    friend class ZYLCmdCommand;
    friend class ZYLCmdDialogCommand;
    friend class ZYLCmdDialogHandler;

    ZYLCmdController();
    ~ZYLCmdController() override;

    // Publisher side.
    bool PublishAction(ZYLCmdActionPublisher *publication);
    void WithdrawAction(ZYLCmdActionPublisher *publication);
    bool IsPublished(const ZYLCmdActionPublisher *publication) const;

    // Runner.
    struct Run;
    bool Start(ZYLCmdAction *action);
    template <class F>
    bool Call(quint64 serial, F &&operation);
    bool IsCurrent(quint64 serial) const;
    bool PlacePanel(quint64 serial, ZYLCmdDialogCommand *command);
    void ShowPanel(quint64 serial);
    void End(quint64 serial, bool accept);
    bool CloseTransaction(Run &run, bool commit);
    void Abandon();
    void Retire(const QMetaObject *commandClass, QObject *command, const QList<QWidget *> &widgets);
    void DeleteRetired(const QMetaObject *commandClass, bool widgetsToo);
    void Report(const QString &title, const QString &message);
    void Report(const QString &title, const std::exception_ptr &error);

    // Command, dialog command and handler side.
    void EndCommand(ZYLCmdCommand *command, bool accept);
    void ShowDialogOf(ZYLCmdDialogCommand *command);
    void ClickRunning(QDialogButtonBox::StandardButton button);
    void OnApplicationTeardown();
    static void ApplicationTeardown();

    struct Data;
    std::unique_ptr<Data> d;
};
