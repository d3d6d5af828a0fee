// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmdDialogCommand.h"

#include "ZYLCmdController.h"

#include <QPointer>
#include <QWidget>

struct ZYLCmdDialogCommand::Data {
    int showDelay = 0;
    QPointer<QWidget> panel;
};

ZYLCmdDialogCommand::ZYLCmdDialogCommand(QObject *parent, ConcurrencyBehavior concurrency,
                                         TransactionBehavior transaction)
    : ZYLCmdCommand(parent, concurrency, transaction), d(std::make_unique<Data>()) {}

ZYLCmdDialogCommand::~ZYLCmdDialogCommand() = default;

QWidget *ZYLCmdDialogCommand::CreateContentWidget(QWidget *) {
    return nullptr;
}

QDialogButtonBox::StandardButtons ZYLCmdDialogCommand::GetStandardButtons() const {
    return QDialogButtonBox::Ok | QDialogButtonBox::Cancel;
}

bool ZYLCmdDialogCommand::IsModal() {
    return false;
}

void ZYLCmdDialogCommand::Click(QDialogButtonBox::StandardButton button) {
    switch (button) {
    case QDialogButtonBox::Ok:
        Accept();
        break;
    case QDialogButtonBox::Cancel:
    case QDialogButtonBox::Close:
        Cancel();
        break;
    default:
        break;
    }
}

QWidget *ZYLCmdDialogCommand::GetContentWidget() const {
    return d->panel;
}

void ZYLCmdDialogCommand::SetContentWidget(QWidget *panel) {
    d->panel = panel;
}

void ZYLCmdDialogCommand::ShowDialog() {
    if (ZYLCmdController *controller = ZYLCmdController::GetController())
        controller->ShowDialogOf(this);
}

void ZYLCmdDialogCommand::SetDialogShowDelay(int ms) {
    d->showDelay = ms;
}

int ZYLCmdDialogCommand::GetDialogShowDelay() const {
    return d->showDelay;
}
