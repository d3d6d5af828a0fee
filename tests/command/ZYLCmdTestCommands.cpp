// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmdTestCommands.h"

#include "ZYLCmdController.h"
#include "ZYLCmdDialogHandler.h"
#include "ZYLFeatContainer.h"
#include "ZYLFeatObject.h"
#include "ZYLSysException.h"

#include <QMetaEnum>

ZYLCmdTestScript &ZYLCmdTestScript::Get() {
    static ZYLCmdTestScript script;
    return script;
}

void ZYLCmdTestScript::Reset() {
    *this = ZYLCmdTestScript();
}

void ZYLCmdTestScript::Step(QObject *who, const QString &operation) {
    // The class name, not the object, names the step: the log must survive the object.
    const QString name = QString::fromLatin1(who->metaObject()->className()).remove(QStringLiteral("ZYLCmdTest"));
    QString entry = name + QLatin1Char('.') + operation;
    if ((operation == QLatin1String("Commit") || operation == QLatin1String("Cleanup")) && feature
        && feature->GetContainer())
        entry += feature->GetContainer()->HasOpenTransaction() ? QStringLiteral("[open]") : QStringLiteral("[closed]");
    log.append(entry);
    if (operation == editIn && feature)
        feature->SetName(QStringLiteral("edited in ") + operation);
    if (operation == disableOkIn) {
        if (auto *command = qobject_cast<ZYLCmdCommand *>(who))
            ZYLCmdController::GetController()->GetDialogHandler()->SetStandardButtonEnabled(
                command, QDialogButtonBox::Ok, false);
    }
    if (operation == cancelIn) {
        if (auto *command = qobject_cast<ZYLCmdCommand *>(who))
            command->Cancel();
    }
    if (operation == throwIn)
        throw ZYLSysException(QStringLiteral("failure in ") + operation);
}

ZYLCmdTestPanel::ZYLCmdTestPanel(QWidget *parent) : QWidget(parent) {}

ZYLCmdTestPanel::~ZYLCmdTestPanel() {
    ZYLCmdTestScript::Get().log.append(QStringLiteral("Panel.dtor"));
}

// ---- Plain --------------------------------------------------------------------------------

ZYLCmdTestPlainCmd::ZYLCmdTestPlainCmd(QObject *parent)
    : ZYLCmdCommand(parent, CancelWhenInterrupted, OwnTransaction) {
    Record(this, "ctor");
}

ZYLCmdTestPlainCmd::~ZYLCmdTestPlainCmd() {
    ZYLCmdTestScript::Get().log.append(QStringLiteral("PlainCmd.dtor"));
}

// ---- Dialog -------------------------------------------------------------------------------

// Each most derived constructor logs "ctor" itself: in a base constructor the object does not
// know its final class yet.
ZYLCmdTestDialogCmd::ZYLCmdTestDialogCmd(QObject *parent) : ZYLCmdTestDialogCmd(parent, CancelWhenInterrupted) {
    Record(this, "ctor");
}

ZYLCmdTestDialogCmd::ZYLCmdTestDialogCmd(QObject *parent, ConcurrencyBehavior concurrency)
    : ZYLCmdDialogCommand(parent, concurrency, OwnTransaction) {
    SetDialogShowDelay(ZYLCmdTestScript::Get().showDelay);
}

ZYLCmdTestDialogCmd::~ZYLCmdTestDialogCmd() {
    ZYLCmdTestScript::Get().log.append(QStringLiteral("Cmd.dtor"));
}

QWidget *ZYLCmdTestDialogCmd::CreateContentWidget(QWidget *parent) {
    auto *panel = new ZYLCmdTestPanel(parent);
    // Thrown after the panel exists, so the test sees that a half-made panel is not leaked.
    ZYLCmdTestScript::Get().Step(this, QStringLiteral("CreateContentWidget"));
    return panel;
}

void ZYLCmdTestDialogCmd::Click(QDialogButtonBox::StandardButton button) {
    const QMetaEnum buttons = QMetaEnum::fromType<QDialogButtonBox::StandardButtons>();
    ZYLCmdTestScript::Get().Step(this, QStringLiteral("Click(%1)").arg(QLatin1String(buttons.valueToKey(button))));
    ZYLCmdDialogCommand::Click(button);
}

ZYLCmdTestHiddenCmd::ZYLCmdTestHiddenCmd(QObject *parent) : ZYLCmdTestDialogCmd(parent, CancelWhenInterrupted) {
    SetDialogShowDelay(NeverShow);
    Record(this, "ctor");
}

ZYLCmdTestKeepCmd::ZYLCmdTestKeepCmd(QObject *parent) : ZYLCmdTestDialogCmd(parent, CommitWhenInterrupted) {
    Record(this, "ctor");
}

QDialogButtonBox::StandardButtons ZYLCmdTestKeepCmd::GetStandardButtons() const {
    return QDialogButtonBox::Close | QDialogButtonBox::Help;
}

ZYLCmdTestNoCtorCmd::ZYLCmdTestNoCtorCmd(QObject *parent)
    : ZYLCmdCommand(parent, CancelWhenInterrupted, OwnTransaction) {}

ZYLCmdTestNotACmd::ZYLCmdTestNotACmd(QObject *parent) : QObject(parent) {}
