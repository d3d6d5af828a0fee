// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmdCommand.h"

#include "ZYLCmdController.h"
#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"

#include <QMetaClassInfo>

struct ZYLCmdCommand::Data {
    ConcurrencyBehavior concurrency;
    TransactionBehavior transaction;
};

ZYLCmdCommand::ZYLCmdCommand(QObject *parent, ConcurrencyBehavior concurrency, TransactionBehavior transaction)
    : QObject(parent), d(std::make_unique<Data>(Data{concurrency, transaction})) {}

ZYLCmdCommand::~ZYLCmdCommand() = default;

ZYLFeatEnvironment *ZYLCmdCommand::GetContext() const {
    const ZYLFeatEnvironmentManager *manager = ZYLFeatEnvironmentManager::GetManager();
    return manager ? manager->GetCurrentEnvironment() : nullptr;
}

void ZYLCmdCommand::Initialize() {}

void ZYLCmdCommand::GainFocus() {}

void ZYLCmdCommand::LoseFocus() {}

void ZYLCmdCommand::Load() {}

void ZYLCmdCommand::Commit() {}

bool ZYLCmdCommand::Cleanup() {
    return true;
}

void ZYLCmdCommand::PostApply() {}

void ZYLCmdCommand::Cancel() {
    if (ZYLCmdController *controller = ZYLCmdController::GetController())
        controller->EndCommand(this, false);
}

void ZYLCmdCommand::Accept() {
    if (ZYLCmdController *controller = ZYLCmdController::GetController())
        controller->EndCommand(this, true);
}

bool ZYLCmdCommand::IsRunning() const {
    const ZYLCmdController *controller = ZYLCmdController::GetController();
    return controller && controller->GetCurrentCommand() == this;
}

ZYLCmdCommand::ConcurrencyBehavior ZYLCmdCommand::GetConcurrencyBehavior() const {
    return d->concurrency;
}

ZYLCmdCommand::TransactionBehavior ZYLCmdCommand::GetTransactionBehavior() const {
    return d->transaction;
}

QString ZYLCmdCommand::GetLabel() const {
    return GetLabel(metaObject());
}

QString ZYLCmdCommand::GetLabel(const QMetaObject *commandClass) {
    if (!commandClass)
        return QString();
    const int index = commandClass->indexOfClassInfo("label");
    // fromUtf8 copies: the class information lives in the library of the class, which may be
    // unloaded while the text is still shown somewhere.
    return QString::fromUtf8(index >= 0 ? commandClass->classInfo(index).value() : commandClass->className());
}
