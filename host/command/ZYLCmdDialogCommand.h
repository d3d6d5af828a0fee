// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCmdCommand.h"

#include <QDialogButtonBox>

#include <memory>

class QWidget;

/// A command with a panel that stays open until the user presses one of its standard buttons.
///
/// After `Initialize`, the runner calls `CreateContentWidget` with the content area of the
/// dialog handler's frame as parent, places the returned panel (null gives a frame with only
/// the buttons) above a button box made of `GetStandardButtons()`, titles the frame with the
/// class information "label", and calls `Load`. The frame is then shown at once (show delay
/// 0, the default, or a negative one), after the delay in milliseconds, or never for
/// `NeverShow` (2147483647), in which case the command calls `ShowDialog()` itself; then
/// `GainFocus` follows. A press on a standard button calls `Click`. The panel is deleted
/// after `Cleanup` with `deleteLater`, before the command.
class ZYLCOMMAND_EXPORT ZYLCmdDialogCommand : public ZYLCmdCommand {
    Q_OBJECT
public:
    /// The show delay that keeps the panel hidden until `ShowDialog()`.
    static constexpr int NeverShow = 2147483647;

    ZYLCmdDialogCommand(QObject *parent, ConcurrencyBehavior concurrency, TransactionBehavior transaction);
    ~ZYLCmdDialogCommand() override;

    /// Returns a new panel for the command, created with `parent`. The default returns null.
    virtual QWidget *CreateContentWidget(QWidget *parent);
    /// Returns the buttons of the frame. The default is Ok | Cancel.
    virtual QDialogButtonBox::StandardButtons GetStandardButtons() const;
    /// Returns whether the frame, when it is a window of its own, blocks the rest of the
    /// application while shown (a docked frame is not affected). The default is false.
    virtual bool IsModal();
    /// Reacts to a press on a standard button. The default accepts for Ok, cancels for
    /// Cancel and Close, and ignores every other button.
    virtual void Click(QDialogButtonBox::StandardButton button);

    /// Returns the panel made by `CreateContentWidget` while it exists, else null.
    QWidget *GetContentWidget() const;
    /// Shows the frame now if the command is running and its panel is in place; called
    /// earlier in the run, the frame is shown as soon as the panel is in place. Does nothing
    /// for a command that is not running.
    void ShowDialog();
    /// Sets the delay in milliseconds between the panel being in place and the frame being
    /// shown; `NeverShow` leaves showing to `ShowDialog()`. Read when the panel is placed, so
    /// set it in the constructor.
    void SetDialogShowDelay(int ms);
    int GetDialogShowDelay() const;

private:
    friend class ZYLCmdController;
    void SetContentWidget(QWidget *panel);

    struct Data;
    std::unique_ptr<Data> d;
};
