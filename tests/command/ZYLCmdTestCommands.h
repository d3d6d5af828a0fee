// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCmdDialogCommand.h"

#include <QPointer>
#include <QStringList>
#include <QWidget>

class ZYLFeatObject;

// What the recording commands do besides writing the log: the operation named in `throwIn`
// throws a ZYLSysException, the one named in `editIn` renames `feature` (an edit recorded in
// the open transaction), the one named in `cancelIn` cancels the command from inside itself.
// Operation names: "ctor", "Initialize", "Load", "GainFocus", "LoseFocus", "Commit", "Cleanup",
// "PostApply", "CreateContentWidget", "Click".
struct ZYLCmdTestScript {
    QString throwIn;
    QString editIn;
    QString cancelIn;
    // The operation named here disables the command's OK button through the dialog handler.
    QString disableOkIn;
    bool cleanupResult = true;
    // Show delay the recording dialog commands set in their constructor.
    int showDelay = 0;
    ZYLFeatObject *feature = nullptr;
    QStringList log;

    static ZYLCmdTestScript &Get();
    void Reset();
    // Writes "<who>.<operation>" to the log, then does what the script says for it. With a
    // feature in a container, "Commit" and "Cleanup" are logged with "[open]" or "[closed]":
    // the state of the container's transaction at that moment.
    void Step(QObject *who, const QString &operation);
};

// The script's step for `who`, for the one-line overrides below.
inline void Record(QObject *who, const char *operation) {
    ZYLCmdTestScript::Get().Step(who, QString::fromLatin1(operation));
}

// Records "Cleanup" and returns the result the script asks Cleanup to report.
inline bool RecordCleanup(QObject *who) {
    Record(who, "Cleanup");
    return ZYLCmdTestScript::Get().cleanupResult;
}

// The panel of the recording dialog commands; logs its destruction.
class ZYLCmdTestPanel : public QWidget {
    Q_OBJECT
public:
    explicit ZYLCmdTestPanel(QWidget *parent);
    ~ZYLCmdTestPanel() override;
};

// Recording plain command (no panel), for "view"-like actions.
class ZYLCmdTestPlainCmd : public ZYLCmdCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "Plain test")
public:
    Q_INVOKABLE explicit ZYLCmdTestPlainCmd(QObject *parent);
    ~ZYLCmdTestPlainCmd() override;
    void Initialize() override { Record(this, "Initialize"); }
    void GainFocus() override { Record(this, "GainFocus"); }
    void LoseFocus() override { Record(this, "LoseFocus"); }
    void Load() override { Record(this, "Load"); }
    void Commit() override { Record(this, "Commit"); }
    bool Cleanup() override { const bool ok = RecordCleanup(this); return ZYLCmdCommand::Cleanup() && ok; }
    void PostApply() override { Record(this, "PostApply"); }
};

// Recording dialog command with a ZYLCmdTestPanel, Ok | Cancel, shown at once.
class ZYLCmdTestDialogCmd : public ZYLCmdDialogCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "Dialog test")
public:
    Q_INVOKABLE explicit ZYLCmdTestDialogCmd(QObject *parent);
    ~ZYLCmdTestDialogCmd() override;
    void Initialize() override { Record(this, "Initialize"); }
    void GainFocus() override { Record(this, "GainFocus"); ZYLCmdDialogCommand::GainFocus(); }
    void LoseFocus() override { Record(this, "LoseFocus"); }
    void Load() override { Record(this, "Load"); }
    void Commit() override { Record(this, "Commit"); ZYLCmdDialogCommand::Commit(); }
    bool Cleanup() override { const bool ok = RecordCleanup(this); return ZYLCmdDialogCommand::Cleanup() && ok; }
    void PostApply() override { Record(this, "PostApply"); }
    QWidget *CreateContentWidget(QWidget *parent) override;
    void Click(QDialogButtonBox::StandardButton button) override;

protected:
    ZYLCmdTestDialogCmd(QObject *parent, ConcurrencyBehavior concurrency);
};

// The panel stays hidden until the command calls ShowDialog().
class ZYLCmdTestHiddenCmd : public ZYLCmdTestDialogCmd {
    Q_OBJECT
    Q_CLASSINFO("label", "Hidden test")
public:
    Q_INVOKABLE explicit ZYLCmdTestHiddenCmd(QObject *parent);
};

// Close | Help buttons; accepted, not cancelled, when another action interrupts it.
class ZYLCmdTestKeepCmd : public ZYLCmdTestDialogCmd {
    Q_OBJECT
    Q_CLASSINFO("label", "Keep test")
public:
    Q_INVOKABLE explicit ZYLCmdTestKeepCmd(QObject *parent);
    QDialogButtonBox::StandardButtons GetStandardButtons() const override;
};

// Refused by RegisterCommand: its constructor is not invokable.
class ZYLCmdTestNoCtorCmd : public ZYLCmdCommand {
    Q_OBJECT
public:
    explicit ZYLCmdTestNoCtorCmd(QObject *parent);
};

// Refused by RegisterCommand: not a command.
class ZYLCmdTestNotACmd : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE explicit ZYLCmdTestNotACmd(QObject *parent);
};
