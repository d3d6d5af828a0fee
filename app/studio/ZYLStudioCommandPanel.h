// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QDockWidget>

#include <memory>

class QCloseEvent;
class ZYLCmdCommand;

/// The dock that holds the panel of the running dialog command: the dialog handler's frame,
/// with the command's panel above its standard buttons, whose OK the command enables and
/// disables. Message boxes of commands are parented to that frame, so to this dock.
///
/// The dock borrows the frame from the dialog handler for as long as it lives and gives it
/// back unparented when destroyed; one dock holds it at a time (the newest). It takes the
/// frame's title and shows itself and comes to the front when the frame is shown for a
/// command, and hides when the command's run ends. Errors the runner reports about a
/// command are shown in a window-modal message box that does not block the caller.
///
/// Closing the dock (its close button) while a command runs cancels the command as
/// `CancelRunningCommand` does, asking first when there are edits; answering no keeps both
/// the command and the dock.
///
/// Edits of a command. The command framework does not track whether a command changed
/// anything, so the dock looks at the transaction the runner opened for it: the command has
/// edits when that open transaction of its container, or one nested in it, has recorded a
/// change. A command without a transaction has none.
///
/// GUI thread only; a QApplication must exist.
class ZYLStudioCommandPanel : public QDockWidget {
    Q_OBJECT
public:
    explicit ZYLStudioCommandPanel(QWidget *parent = nullptr);
    ~ZYLStudioCommandPanel() override;

    /// Returns whether the controller runs a command (one with or without a panel) now.
    bool IsCommandRunning() const;

    /// Ends the running command as cancelled. When it has edits, first asks "Discard the edits
    /// of <command label>?" in a message box parented to `askParent`; answering no keeps the
    /// command and returns false. Returns true when no command runs afterwards, also when none
    /// ran; false when the command could not be cancelled (it is ending already).
    bool CancelRunningCommand(QWidget *askParent);

    /// Returns whether `command` has edits (see the class description).
    static bool HasEdits(const ZYLCmdCommand *command);

signals:
    /// A command started (true) or its run ended (false).
    void CommandRunningChanged(bool running);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void setupConnections();
    void SetRunning(bool running);
    void ShowPanel();

    struct Data;
    std::unique_ptr<Data> d;
};
