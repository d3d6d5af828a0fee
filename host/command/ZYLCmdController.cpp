// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmdController.h"

#include "ZYLCmdAction.h"
#include "ZYLCmdActionPublisher.h"
#include "ZYLCmdCommand.h"
#include "ZYLCmdDialogCommand.h"
#include "ZYLCmdDialogHandler.h"
#include "ZYLCmdLogging.h"
#include "ZYLFeatContainer.h"
#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLFeatTransaction.h"
#include "ZYLSysException.h"

#include <QCoreApplication>
#include <QHash>
#include <QMetaMethod>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <exception>

namespace {

// Set when the function-local controller is destroyed at process exit, so that static
// publishers destroyed after it find no controller instead of a dead one.
bool s_controllerDestroyed = false;

bool HasParentConstructor(const QMetaObject *commandClass) {
    for (int i = 0; i < commandClass->constructorCount(); ++i) {
        const QMetaMethod constructor = commandClass->constructor(i);
        if (constructor.parameterCount() == 1 && constructor.parameterType(0) == QMetaType::QObjectStar)
            return true;
    }
    return false;
}

QString ExceptionMessage(const std::exception_ptr &error) {
    try {
        std::rethrow_exception(error);
    } catch (const ZYLSysException &exception) {
        return exception.GetMessage();
    } catch (const std::exception &exception) {
        return QString::fromLocal8Bit(exception.what());
    } catch (...) {
        return ZYLCmdController::tr("Unknown error");
    }
}

} // namespace

// The state of the running command. Everything the runner touches after calling into the
// command is guarded: the command may end itself, start another command or be deleted from
// inside any of its operations, so the runner checks the run's serial after each call.
struct ZYLCmdController::Run {
    quint64 serial = 0;
    QPointer<ZYLCmdCommand> command;
    ZYLCmdCommand *address = nullptr;
    ZYLCmdDialogCommand *dialog = nullptr;
    const QMetaObject *commandClass = nullptr;
    QString label;
    QPointer<ZYLFeatContainer> container;
    QPointer<ZYLFeatTransaction> transaction;
    QMetaObject::Connection destroyedConnection;
    bool framed = false;
    bool placed = false;
    bool showRequested = false;
    bool focused = false;
    bool ending = false;
};

struct ZYLCmdController::Data {
    // A finished command or one of its widgets, waiting for its deferred deletion. Kept so
    // that unregistering the class deletes it at once, before its code is unloaded.
    struct Retired {
        const QMetaObject *commandClass;
        QPointer<QObject> object;
    };

    QList<const QMetaObject *> commands;
    QHash<QByteArray, const QMetaObject *> commandsByName;
    // Publications in publication order; their actions are made on demand.
    QList<ZYLCmdActionPublisher *> publications;
    QHash<QByteArray, ZYLCmdActionPublisher *> publicationsByKey;
    ZYLCmdDialogHandler *handler = nullptr;
    std::unique_ptr<Run> run;
    QList<Retired> retired;
    quint64 nextSerial = 1;
};

ZYLCmdController *ZYLCmdController::GetController() {
    if (s_controllerDestroyed)
        return nullptr;
    static ZYLCmdController controller;
    return &controller;
}

ZYLCmdController::ZYLCmdController() : d(std::make_unique<Data>()) {
    setObjectName(QStringLiteral("ZYLCmdController"));
    d->handler = new ZYLCmdDialogHandler(this);
}

ZYLCmdController::~ZYLCmdController() {
    s_controllerDestroyed = true;
    // At process exit nobody listens any more; end quietly what is left.
    blockSignals(true);
    Abandon();
    // Widgets cannot be deleted without the application; at exit they are simply left.
    DeleteRetired(nullptr, QCoreApplication::instance() != nullptr);
}

// ---- Command classes ------------------------------------------------------------------

void ZYLCmdController::RegisterCommand(const QMetaObject *commandClass) {
    if (!commandClass) {
        qCWarning(lcZYLCommand) << "RegisterCommand: a null command class is refused";
        return;
    }
    const QByteArray name(commandClass->className());
    if (!commandClass->inherits(&ZYLCmdCommand::staticMetaObject)) {
        qCWarning(lcZYLCommand, "RegisterCommand: %s is not a ZYLCmdCommand and is refused", name.constData());
        return;
    }
    if (!HasParentConstructor(commandClass)) {
        qCWarning(lcZYLCommand, "RegisterCommand: %s has no invokable constructor (QObject* parent) and is refused",
                  name.constData());
        return;
    }
    if (d->commandsByName.contains(name)) {
        qCWarning(lcZYLCommand, "RegisterCommand: %s is already registered; the second registration is ignored",
                  name.constData());
        return;
    }
    d->commands.append(commandClass);
    d->commandsByName.insert(name, commandClass);
    emit CommandsChanged();
}

void ZYLCmdController::UnregisterCommand(const QMetaObject *commandClass) {
    if (!commandClass || !d->commands.contains(commandClass))
        return;
    if (d->run && d->run->commandClass == commandClass && !d->run->ending)
        End(d->run->serial, false);
    // The class's code may be unloaded right after this call: nothing of it may wait for a
    // deferred deletion.
    DeleteRetired(commandClass, true);
    d->commands.removeOne(commandClass);
    d->commandsByName.remove(QByteArray(commandClass->className()));
    emit CommandsChanged();
}

QList<const QMetaObject *> ZYLCmdController::GetRegisteredCommands() const {
    return d->commands;
}

const QMetaObject *ZYLCmdController::GetRegisteredCommand(const QByteArray &className) const {
    return d->commandsByName.value(className);
}

// ---- Actions ----------------------------------------------------------------------------

ZYLCmdAction *ZYLCmdController::GetAction(const QByteArray &key) const {
    ZYLCmdActionPublisher *publication = d->publicationsByKey.value(key);
    return publication ? publication->MakeAction() : nullptr;
}

QList<ZYLCmdAction *> ZYLCmdController::GetActions() const {
    QList<ZYLCmdAction *> actions;
    for (ZYLCmdActionPublisher *publication : std::as_const(d->publications)) {
        if (ZYLCmdAction *action = publication->MakeAction())
            actions.append(action);
    }
    return actions;
}

bool ZYLCmdController::PublishAction(ZYLCmdActionPublisher *publication) {
    const QByteArray &key = publication->GetKey();
    if (d->publicationsByKey.contains(key)) {
        qCWarning(lcZYLCommand, "An action is already published under %s; the second one is ignored", key.constData());
        return false;
    }
    d->publications.append(publication);
    d->publicationsByKey.insert(key, publication);
    emit ActionsChanged();
    return true;
}

void ZYLCmdController::WithdrawAction(ZYLCmdActionPublisher *publication) {
    if (!d->publications.removeOne(publication))
        return;
    d->publicationsByKey.remove(publication->GetKey());
    if (publication->HasAction())
        disconnect(publication->MakeAction(), nullptr, this, nullptr);
    emit ActionsChanged();
}

bool ZYLCmdController::IsPublished(const ZYLCmdActionPublisher *publication) const {
    return d->publicationsByKey.value(publication->GetKey()) == publication;
}

// ---- Runner -----------------------------------------------------------------------------

ZYLCmdCommand *ZYLCmdController::GetCurrentCommand() const {
    return d->run ? d->run->command.data() : nullptr;
}

ZYLCmdDialogHandler *ZYLCmdController::GetDialogHandler() const {
    return d->handler;
}

bool ZYLCmdController::Trigger(const QByteArray &key) {
    ZYLCmdActionPublisher *publication = d->publicationsByKey.value(key);
    if (!publication) {
        qCWarning(lcZYLCommand, "Trigger: no action is published under %s", key.constData());
        return false;
    }
    ZYLCmdAction *action = publication->MakeAction();
    if (!action) {
        qCWarning(lcZYLCommand, "Trigger %s: actions need a QGuiApplication", key.constData());
        return false;
    }
    return Start(action);
}

bool ZYLCmdController::Accept() {
    if (!d->run || d->run->ending)
        return false;
    End(d->run->serial, true);
    return true;
}

bool ZYLCmdController::Reject() {
    if (!d->run || d->run->ending)
        return false;
    End(d->run->serial, false);
    return true;
}

bool ZYLCmdController::IsCurrent(quint64 serial) const {
    return d->run && d->run->serial == serial;
}

template <class F>
bool ZYLCmdController::Call(quint64 serial, F &&operation) {
    const QString title = d->run->label;
    try {
        operation();
    } catch (...) {
        Report(title, std::current_exception());
        End(serial, false);
        return false;
    }
    return IsCurrent(serial);
}

bool ZYLCmdController::Start(ZYLCmdAction *action) {
    const QByteArray &key = action->GetKey();
    const QMetaObject *commandClass = d->commandsByName.value(action->GetCommandClass());
    if (!commandClass) {
        qCWarning(lcZYLCommand, "Trigger %s: the command class %s is not registered", key.constData(),
                  action->GetCommandClass().constData());
        return false;
    }
    if (d->run && d->run->ending) {
        qCWarning(lcZYLCommand, "Trigger %s: refused while %s is ending", key.constData(),
                  d->run->commandClass->className());
        return false;
    }
    if (action->GetFilterBehavior() == ZYLCmdAction::RequireFilteredSelection) {
        const ZYLFeatEnvironmentManager *manager = ZYLFeatEnvironmentManager::GetManager();
        const ZYLFeatEnvironment *environment = manager ? manager->GetCurrentEnvironment() : nullptr;
        if (!action->AcceptsSelection(environment ? environment->GetVisualizationSelection()
                                                  : QSet<ZYLVisObject *>())) {
            qCWarning(lcZYLCommand, "Trigger %s: the current selection does not suit the action", key.constData());
            return false;
        }
    }
    // One command at a time: the running one ends first, as it asked to be ended.
    if (d->run) {
        const bool commit = d->run->command
                            && d->run->command->GetConcurrencyBehavior() == ZYLCmdCommand::CommitWhenInterrupted;
        End(d->run->serial, commit);
    }
    if (d->run) {
        qCWarning(lcZYLCommand, "Trigger %s: another command started while the running one ended", key.constData());
        return false;
    }

    const QString label = ZYLCmdCommand::GetLabel(commandClass);
    QObject *object = nullptr;
    try {
        object = commandClass->newInstance(Q_ARG(QObject *, this));
    } catch (...) {
        Report(label, std::current_exception());
        return false;
    }
    auto *command = qobject_cast<ZYLCmdCommand *>(object);
    if (!command) {
        delete object;
        qCWarning(lcZYLCommand, "Trigger %s: %s could not be created", key.constData(), commandClass->className());
        return false;
    }
    // A constructor that started a command of its own loses to the one being started.
    if (d->run)
        End(d->run->serial, false);

    auto run = std::make_unique<Run>();
    const quint64 serial = d->nextSerial++;
    run->serial = serial;
    run->command = command;
    run->address = command;
    run->commandClass = commandClass;
    run->label = label;
    run->destroyedConnection = connect(command, &QObject::destroyed, this, [this, serial] {
        // Deleted by someone else while running. An ending run copes with that itself.
        if (IsCurrent(serial) && !d->run->ending)
            Abandon();
    });
    d->run = std::move(run);

    const QHash<QString, QVariant> &properties = action->GetProperties();
    for (auto it = properties.cbegin(); it != properties.cend(); ++it)
        command->setProperty(it.key().toUtf8().constData(), it.value());

    emit CommandStarted(command);
    if (!IsCurrent(serial))
        return true;

    if (command->GetTransactionBehavior() == ZYLCmdCommand::OwnTransaction) {
        ZYLFeatEnvironment *context = nullptr;
        if (!Call(serial, [&] { context = command->GetContext(); }))
            return true;
        if (ZYLFeatContainer *container = context ? context->GetContainer() : nullptr) {
            ZYLFeatTransaction *transaction = nullptr;
            if (!Call(serial, [&] { transaction = container->OpenTransaction(label); }))
                return true;
            d->run->container = container;
            d->run->transaction = transaction;
        }
    }

    if (!Call(serial, [&] { command->Initialize(); }))
        return true;
    auto *dialog = qobject_cast<ZYLCmdDialogCommand *>(command);
    if (dialog && !PlacePanel(serial, dialog))
        return true;
    if (!Call(serial, [&] { command->Load(); }))
        return true;
    if (dialog) {
        const int delay = dialog->GetDialogShowDelay();
        if (d->run->showRequested || delay <= 0) {
            ShowPanel(serial);
            if (!IsCurrent(serial))
                return true;
        } else if (delay != ZYLCmdDialogCommand::NeverShow) {
            QTimer::singleShot(delay, command, [this, serial] { ShowPanel(serial); });
        }
    }
    if (!Call(serial, [&] { command->GainFocus(); }))
        return true;
    d->run->focused = true;
    if (!dialog)
        End(serial, true);
    return true;
}

bool ZYLCmdController::PlacePanel(quint64 serial, ZYLCmdDialogCommand *command) {
    d->run->dialog = command;
    QDialogButtonBox::StandardButtons buttons;
    if (!Call(serial, [&] { buttons = command->GetStandardButtons(); }))
        return false;
    QWidget *contentArea = d->handler->Prepare(command, d->run->label, buttons);
    if (!contentArea) {
        Report(d->run->label, tr("A command panel needs a QApplication."));
        End(serial, false);
        return false;
    }
    d->run->framed = true;
    const QMetaObject *commandClass = d->run->commandClass;
    // The buttons exist before the panel, so a panel may set their state while it is built.
    QPointer<QWidget> panel;
    const bool placed = Call(serial, [&] { panel = command->CreateContentWidget(contentArea); });
    if (!placed) {
        // A panel returned by a command that ended meanwhile has no frame to go to.
        if (panel)
            Retire(commandClass, nullptr, {panel});
        return false;
    }
    command->SetContentWidget(panel);
    d->handler->SetPanel(panel);
    d->run->placed = true;
    return true;
}

void ZYLCmdController::ShowPanel(quint64 serial) {
    if (!IsCurrent(serial) || d->run->ending || !d->run->placed)
        return;
    ZYLCmdDialogCommand *dialog = d->run->dialog;
    bool modal = false;
    if (!Call(serial, [&] { modal = dialog->IsModal(); }))
        return;
    d->handler->Show(modal);
}

void ZYLCmdController::End(quint64 serial, bool accept) {
    if (!IsCurrent(serial) || d->run->ending)
        return;
    Run &run = *d->run;
    run.ending = true;
    // Failures while ending are reported and turn an acceptance into a cancellation; the
    // command itself may vanish in any of its operations.
    const auto guarded = [this, &run](auto &&operation) {
        if (!run.command)
            return false;
        try {
            operation();
            return true;
        } catch (...) {
            Report(run.label, std::current_exception());
            return false;
        }
    };
    bool accepted = accept;
    if (run.focused) {
        run.focused = false;
        if (!guarded([&] { run.command->LoseFocus(); }))
            accepted = false;
    }
    if (accepted && !guarded([&] { run.command->Commit(); }))
        accepted = false;
    if (accepted && !CloseTransaction(run, true))
        accepted = false;
    if (!accepted)
        CloseTransaction(run, false);
    bool cleaned = false;
    if (guarded([&] { cleaned = run.command->Cleanup(); }) && !cleaned)
        qCWarning(lcZYLCommand, "%s: Cleanup reported a failure", run.commandClass->className());

    const QList<QWidget *> widgets = run.framed ? d->handler->Release() : QList<QWidget *>();
    // From here on the command is no longer current: PostApply may start another one.
    const std::unique_ptr<Run> finished = std::move(d->run);
    disconnect(finished->destroyedConnection);
    if (accepted && cleaned)
        guarded([&] { run.command->PostApply(); });
    emit CommandFinished(finished->address, accepted);
    Retire(finished->commandClass, finished->command, widgets);
}

bool ZYLCmdController::CloseTransaction(Run &run, bool commit) {
    ZYLFeatContainer *container = run.container;
    ZYLFeatTransaction *transaction = run.transaction;
    run.transaction = nullptr;
    // No transaction, or it went with its container.
    if (!container || !transaction)
        return true;
    if (!transaction->IsOpen()) {
        qCWarning(lcZYLCommand, "%s: its transaction was closed by someone else", run.commandClass->className());
        return true;
    }
    try {
        // Transactions the command left open inside its own belong to it and go first.
        while (container->GetOpenTransaction() && container->GetOpenTransaction() != transaction) {
            qCWarning(lcZYLCommand).noquote() << run.commandClass->className() << "left the transaction"
                                              << container->GetOpenTransaction()->GetName()
                                              << "open; it is rolled back";
            container->AbortTransaction();
        }
        if (commit)
            container->CommitTransaction();
        else
            container->AbortTransaction();
        return true;
    } catch (...) {
        Report(run.label, std::current_exception());
    }
    // A commit that failed must not leave the edits half in the model.
    if (commit && container && container->GetOpenTransaction() == transaction) {
        try {
            container->AbortTransaction();
        } catch (...) {
            Report(run.label, std::current_exception());
        }
    }
    return false;
}

void ZYLCmdController::Abandon() {
    std::unique_ptr<Run> run = std::move(d->run);
    if (!run)
        return;
    disconnect(run->destroyedConnection);
    CloseTransaction(*run, false);
    const QList<QWidget *> widgets = run->framed ? d->handler->Release() : QList<QWidget *>();
    emit CommandFinished(run->address, false);
    Retire(run->commandClass, run->command, widgets);
}

void ZYLCmdController::Retire(const QMetaObject *commandClass, QObject *command, const QList<QWidget *> &widgets) {
    d->retired.removeIf([](const Data::Retired &retired) { return retired.object.isNull(); });
    // Widgets go before the command: panels may still talk to their command while dying.
    for (QWidget *widget : widgets) {
        widget->deleteLater();
        d->retired.append({commandClass, widget});
    }
    if (command) {
        command->deleteLater();
        d->retired.append({commandClass, command});
    }
}

void ZYLCmdController::DeleteRetired(const QMetaObject *commandClass, bool widgetsToo) {
    // Taken out first: a destructor may end up retiring more objects.
    QList<Data::Retired> doomed;
    d->retired.removeIf([&](const Data::Retired &retired) {
        if (commandClass && retired.commandClass != commandClass)
            return false;
        if (retired.object && retired.object->isWidgetType() && !widgetsToo)
            return false;
        doomed.append(retired);
        return true;
    });
    for (const Data::Retired &retired : std::as_const(doomed))
        delete retired.object.data();
}

void ZYLCmdController::Report(const QString &title, const QString &message) {
    d->handler->ReportError(title, message);
}

void ZYLCmdController::Report(const QString &title, const std::exception_ptr &error) {
    Report(title, ExceptionMessage(error));
}

// ---- Requests from commands and the handler ---------------------------------------------

void ZYLCmdController::EndCommand(ZYLCmdCommand *command, bool accept) {
    if (d->run && d->run->command == command)
        End(d->run->serial, accept);
}

void ZYLCmdController::ShowDialogOf(ZYLCmdDialogCommand *command) {
    if (!d->run || d->run->command != command || d->run->ending)
        return;
    if (d->run->placed)
        ShowPanel(d->run->serial);
    else
        d->run->showRequested = true;
}

void ZYLCmdController::ClickRunning(QDialogButtonBox::StandardButton button) {
    if (!d->run || d->run->ending || !d->run->dialog || button == QDialogButtonBox::NoButton)
        return;
    ZYLCmdDialogCommand *dialog = d->run->dialog;
    Call(d->run->serial, [&] { dialog->Click(button); });
}

void ZYLCmdController::ApplicationTeardown() {
    if (ZYLCmdController *controller = GetController())
        controller->OnApplicationTeardown();
}

void ZYLCmdController::OnApplicationTeardown() {
    // Widgets die with the application: the running command is cancelled while its panel
    // still exists, and nothing that waits for a deferred deletion survives it.
    if (d->run && !d->run->ending)
        End(d->run->serial, false);
    Abandon();
    DeleteRetired(nullptr, true);
    d->handler->DeleteFrame();
}
