// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCommandExport.h"

#include <QDialogButtonBox>
#include <QObject>
#include <QString>

#include <memory>

class QWidget;
class ZYLCmdCommand;
class ZYLCmdController;

/// Frames the panel of the running dialog command and reports errors of the runner. Owned by
/// the controller (`ZYLCmdController::GetDialogHandler()`).
///
/// The frame (`GetWidget()`) is one widget for all runs, made when first needed (a
/// QApplication must exist by then): the window title is the command's class information
/// "label", the panel fills it above a `QDialogButtonBox` whose standard buttons are the
/// command's `GetStandardButtons()`; a press calls the command's `Click`, and closing the
/// frame as a window cancels the command. The host docks the frame where it likes and follows
/// `PanelShown` / `PanelHidden`; the frame is shown and hidden by the runner. It is deleted
/// when the QApplication is destroyed (any running command is cancelled then).
///
/// The handler never opens a message box: errors raised by commands are announced with
/// `ErrorReported`, for the host to show (and logged as warnings when nobody listens).
class ZYLCOMMAND_EXPORT ZYLCmdDialogHandler : public QObject {
    Q_OBJECT
public:
    ~ZYLCmdDialogHandler() override;

    /// Returns the frame, the widget that parents message boxes about commands; makes it on
    /// first use. Returns null while there is no QApplication.
    QWidget *GetWidget();
    /// Returns the command whose panel is in the frame, or null.
    ZYLCmdCommand *GetFramedCommand() const;
    /// Returns whether the frame is shown for a command.
    bool IsPanelShown() const;

    /// Enables or disables a standard button of `command`'s frame. Acts only when `command`
    /// is the running command, its frame is prepared and has that button; otherwise (a
    /// command that is not running, a command without panel, a button it lacks) it does
    /// nothing. Usable from `CreateContentWidget` on: the buttons exist before the panel.
    void SetStandardButtonEnabled(ZYLCmdCommand *command, QDialogButtonBox::StandardButton button, bool enabled);
    /// Returns whether that button of `command`'s frame exists and is enabled.
    bool IsStandardButtonEnabled(const ZYLCmdCommand *command, QDialogButtonBox::StandardButton button) const;

signals:
    /// The frame was shown for `command`.
    void PanelShown(ZYLCmdCommand *command);
    /// The frame was hidden at the end of `command`'s run.
    void PanelHidden(ZYLCmdCommand *command);
    /// The Help button of `command`'s frame was pressed (after the command's `Click`): the
    /// host shows its help on the command.
    void HelpRequested(ZYLCmdCommand *command);
    /// A command failed with an exception; `title` is its label, `message` the exception's.
    void ErrorReported(const QString &title, const QString &message);

private:
    friend class ZYLCmdController;

    explicit ZYLCmdDialogHandler(ZYLCmdController *controller);

    // Sets the frame up for `command` (title, buttons) and returns the parent for its panel;
    // null without QApplication.
    QWidget *Prepare(ZYLCmdCommand *command, const QString &title, QDialogButtonBox::StandardButtons buttons);
    void SetPanel(QWidget *panel);
    void Show(bool modal);
    // Hides the frame, takes the panel out and returns every widget that was put in the
    // content area during the run, for the runner to delete.
    QList<QWidget *> Release();
    void ReportError(const QString &title, const QString &message);
    void DeleteFrame();

    struct Data;
    std::unique_ptr<Data> d;
};
