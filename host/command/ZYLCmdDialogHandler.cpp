// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmdDialogHandler.h"

#include "ZYLCmdCommand.h"
#include "ZYLCmdController.h"
#include "ZYLCmdLogging.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QMetaMethod>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWidget>

#include <functional>

namespace {

// The frame turns a close of its window into a cancel of the framed command; the runner then
// hides the frame itself, so that close event is refused. With no command framed the frame
// closes normally.
class Frame final : public QWidget {
public:
    std::function<bool()> cancelFramed;

protected:
    void closeEvent(QCloseEvent *event) override {
        if (cancelFramed && cancelFramed())
            event->ignore();
        else
            QWidget::closeEvent(event);
    }
};

} // namespace

struct ZYLCmdDialogHandler::Data {
    ZYLCmdController *controller = nullptr;
    QPointer<Frame> frame;
    QWidget *content = nullptr;
    QVBoxLayout *contentLayout = nullptr;
    QDialogButtonBox *buttons = nullptr;
    QPointer<ZYLCmdCommand> command;
    QPointer<QWidget> panel;
    bool prepared = false;
    bool shown = false;
};

ZYLCmdDialogHandler::ZYLCmdDialogHandler(ZYLCmdController *controller)
    : QObject(controller), d(std::make_unique<Data>()) {
    d->controller = controller;
}

ZYLCmdDialogHandler::~ZYLCmdDialogHandler() {
    // Widgets must not be deleted once the application is gone; the application teardown
    // has deleted the frame already in the normal case.
    if (QCoreApplication::instance())
        DeleteFrame();
}

QWidget *ZYLCmdDialogHandler::GetWidget() {
    if (d->frame)
        return d->frame;
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return nullptr;

    auto *frame = new Frame;
    frame->setObjectName(QStringLiteral("ZYLCmdDialogFrame"));
    frame->cancelFramed = [this] { return d->prepared && d->controller->Reject(); };
    auto *layout = new QVBoxLayout(frame);
    d->content = new QWidget(frame);
    d->content->setObjectName(QStringLiteral("ZYLCmdDialogContent"));
    d->contentLayout = new QVBoxLayout(d->content);
    d->contentLayout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(d->content, 1);
    d->buttons = new QDialogButtonBox(frame);
    layout->addWidget(d->buttons);
    connect(d->buttons, &QDialogButtonBox::clicked, this, [this, box = d->buttons](QAbstractButton *button) {
        const QDialogButtonBox::StandardButton standard = box->standardButton(button);
        d->controller->ClickRunning(standard);
        if (standard == QDialogButtonBox::Help && GetFramedCommand())
            emit HelpRequested(GetFramedCommand());
    });
    d->frame = frame;
    // The frame must go while the application still exists; post routines run first thing
    // in its destruction, while every widget is still alive.
    qAddPostRoutine(&ZYLCmdController::ApplicationTeardown);
    return frame;
}

ZYLCmdCommand *ZYLCmdDialogHandler::GetFramedCommand() const {
    return d->prepared ? d->command.data() : nullptr;
}

bool ZYLCmdDialogHandler::IsPanelShown() const {
    return d->prepared && d->shown;
}

void ZYLCmdDialogHandler::SetStandardButtonEnabled(ZYLCmdCommand *command, QDialogButtonBox::StandardButton button,
                                                   bool enabled) {
    if (!command || !d->prepared || command != d->command || command != d->controller->GetCurrentCommand())
        return;
    if (QPushButton *pushButton = d->buttons->button(button))
        pushButton->setEnabled(enabled);
}

bool ZYLCmdDialogHandler::IsStandardButtonEnabled(const ZYLCmdCommand *command,
                                                  QDialogButtonBox::StandardButton button) const {
    if (!command || !d->prepared || command != d->command)
        return false;
    const QPushButton *pushButton = d->buttons->button(button);
    return pushButton && pushButton->isEnabled();
}

QWidget *ZYLCmdDialogHandler::Prepare(ZYLCmdCommand *command, const QString &title,
                                      QDialogButtonBox::StandardButtons buttons) {
    if (!GetWidget())
        return nullptr;
    d->frame->setWindowTitle(title);
    // Setting the buttons again makes new ones, so no enabled state leaks from the last run.
    d->buttons->setStandardButtons(QDialogButtonBox::NoButton);
    d->buttons->setStandardButtons(buttons);
    d->command = command;
    d->prepared = true;
    d->shown = false;
    return d->content;
}

void ZYLCmdDialogHandler::SetPanel(QWidget *panel) {
    d->panel = panel;
    if (panel)
        d->contentLayout->addWidget(panel);
}

void ZYLCmdDialogHandler::Show(bool modal) {
    if (!d->prepared || d->shown)
        return;
    // Modality only matters while the frame is a window of its own, and can only change while
    // it is hidden.
    d->frame->setWindowModality(modal && d->frame->isWindow() ? Qt::ApplicationModal : Qt::NonModal);
    d->frame->show();
    d->shown = true;
    emit PanelShown(d->command);
}

QList<QWidget *> ZYLCmdDialogHandler::Release() {
    QList<QWidget *> leftovers;
    if (!d->prepared)
        return leftovers;
    ZYLCmdCommand *command = d->command;
    const bool wasShown = d->shown;
    d->prepared = false;
    d->shown = false;
    d->command = nullptr;
    d->panel = nullptr;
    if (d->frame) {
        d->frame->hide();
        d->frame->setWindowModality(Qt::NonModal);
        d->buttons->setStandardButtons(QDialogButtonBox::NoButton);
        // Everything the command put in the content area goes, the panel and any widget it
        // made there without returning it.
        leftovers = d->content->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
        for (QWidget *widget : std::as_const(leftovers)) {
            d->contentLayout->removeWidget(widget);
            widget->hide();
        }
    }
    if (wasShown)
        emit PanelHidden(command);
    return leftovers;
}

void ZYLCmdDialogHandler::ReportError(const QString &title, const QString &message) {
    if (!isSignalConnected(QMetaMethod::fromSignal(&ZYLCmdDialogHandler::ErrorReported)))
        qCWarning(lcZYLCommand).noquote() << title << "failed:" << message;
    emit ErrorReported(title, message);
}

void ZYLCmdDialogHandler::DeleteFrame() {
    delete d->frame;
    d->content = nullptr;
    d->contentLayout = nullptr;
    d->buttons = nullptr;
    d->prepared = false;
    d->shown = false;
}
