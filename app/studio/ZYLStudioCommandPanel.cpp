// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioCommandPanel.h"

#include "ZYLCmdCommand.h"
#include "ZYLCmdController.h"
#include "ZYLCmdDialogHandler.h"
#include "ZYLFeatContainer.h"
#include "ZYLFeatEnvironment.h"
#include "ZYLFeatTransaction.h"

#include <QCloseEvent>
#include <QMessageBox>
#include <QPointer>

struct ZYLStudioCommandPanel::Data {
    QPointer<QWidget> frame;
    bool running = false;
};

ZYLStudioCommandPanel::ZYLStudioCommandPanel(QWidget *parent) : QDockWidget(parent), d(std::make_unique<Data>()) {
    setObjectName(QStringLiteral("ZYLStudioCommandPanel"));
    setWindowTitle(tr("Command"));
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    ZYLCmdController *controller = ZYLCmdController::GetController();
    d->frame = controller->GetDialogHandler()->GetWidget();
    if (d->frame)
        setWidget(d->frame);
    d->running = controller->GetCurrentCommand() != nullptr;
    // Shown only while a command's panel is; a dock made during a run shows that panel.
    if (!controller->GetDialogHandler()->IsPanelShown())
        hide();
    else if (d->frame)
        setWindowTitle(d->frame->windowTitle());
    setupConnections();
}

ZYLStudioCommandPanel::~ZYLStudioCommandPanel() {
    // The frame is the dialog handler's: it survives the dock, ready for the next one.
    if (d->frame && d->frame->parentWidget() == this) {
        d->frame->hide();
        d->frame->setParent(nullptr);
    }
}

void ZYLStudioCommandPanel::setupConnections() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    ZYLCmdDialogHandler *handler = controller->GetDialogHandler();
    connect(controller, &ZYLCmdController::CommandStarted, this, [this] { SetRunning(true); });
    connect(controller, &ZYLCmdController::CommandFinished, this, [this, controller] {
        SetRunning(controller->GetCurrentCommand() != nullptr);
    });
    connect(handler, &ZYLCmdDialogHandler::PanelShown, this, [this] { ShowPanel(); });
    connect(handler, &ZYLCmdDialogHandler::PanelHidden, this, [this] { hide(); });
    connect(handler, &ZYLCmdDialogHandler::ErrorReported, this, [this](const QString &title, const QString &message) {
        // Window-modal and opened without a nested event loop: the runner that reports is in
        // the middle of ending the command.
        auto *box = new QMessageBox(QMessageBox::Warning, title, message, QMessageBox::Ok, window());
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
    });
}

bool ZYLStudioCommandPanel::IsCommandRunning() const {
    return d->running;
}

void ZYLStudioCommandPanel::SetRunning(bool running) {
    if (running == d->running)
        return;
    d->running = running;
    emit CommandRunningChanged(running);
}

void ZYLStudioCommandPanel::ShowPanel() {
    // The frame is the handler's and could have been taken by a newer dock.
    if (!d->frame || d->frame->parentWidget() != this)
        return;
    setWindowTitle(d->frame->windowTitle());
    show();
    raise();
}

bool ZYLStudioCommandPanel::HasEdits(const ZYLCmdCommand *command) {
    if (!command || command->GetTransactionBehavior() == ZYLCmdCommand::NoTransaction)
        return false;
    ZYLFeatEnvironment *environment = nullptr;
    try {
        environment = command->GetContext();
    } catch (...) {
        // Not knowing where the command edits, treat it as having edits so the user is asked.
        return true;
    }
    ZYLFeatContainer *container = environment ? environment->GetContainer() : nullptr;
    if (!container)
        return false;
    for (const ZYLFeatTransaction *transaction = container->GetOpenTransaction(); transaction;
         transaction = transaction->GetParentTransaction()) {
        if (transaction->GetNumChanges() > 0)
            return true;
    }
    return false;
}

bool ZYLStudioCommandPanel::CancelRunningCommand(QWidget *askParent) {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    QPointer<ZYLCmdCommand> command = controller->GetCurrentCommand();
    if (!command)
        return true;
    if (HasEdits(command)) {
        const QMessageBox::StandardButton answer =
            QMessageBox::question(askParent, tr("Cancel command"), tr("Discard the edits of %1?").arg(command->GetLabel()),
                                  QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
        if (answer != QMessageBox::Yes)
            return false;
        // The question ran an event loop: the command may have ended, or another started.
        if (!command || controller->GetCurrentCommand() != command)
            return controller->GetCurrentCommand() == nullptr;
    }
    controller->Reject();
    return controller->GetCurrentCommand() == nullptr;
}

void ZYLStudioCommandPanel::closeEvent(QCloseEvent *event) {
    if (IsCommandRunning() && !CancelRunningCommand(this)) {
        event->ignore();
        return;
    }
    QDockWidget::closeEvent(event);
}
