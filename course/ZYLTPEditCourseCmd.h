// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdDialogCommand.h"

/// The dialog command "Edit course". Edits the courses of a roll layup procedure: their laying
/// order, direction, deletion and breaking, their linking into a chain, approach and retract
/// geometry and feed rates, through its panel `ZYLTPEditCourseWidget`.
///
/// The command holds no state of its own: the panel edits the model at once, inside the
/// command's transaction, which keeps the edits on accept and rolls them back on cancel. On
/// both ends it restores the 3-D view (`RestoreGraphics`).
///
/// The controller creates an instance through the invokable constructor each time the action
/// "ZYLTPEditCourseCmd.Edit" is triggered; it runs in a transaction of its own and is cancelled
/// when another command starts.
class ZYLTPEditCourseCmd : public ZYLCmdDialogCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "Edit course")
public:
    /// Creates the command as a child of `parent` (the controller).
    Q_INVOKABLE explicit ZYLTPEditCourseCmd(QObject *parent);
    ~ZYLTPEditCourseCmd() override;

    /// Returns a new panel for the command, created with `parent`.
    QWidget *CreateContentWidget(QWidget *parent) override;
    /// Restores the graphics, then commits as the base does.
    void Commit() override;
    /// Restores the graphics, then cleans up as the base does and returns its result.
    bool Cleanup() override;

    /// Makes every tool path node unselectable, removes the selection filter and rebuilds the
    /// nodes with the manager's current options, in one redraw. Does nothing without an edit
    /// environment.
    virtual void RestoreGraphics();

private:
    // Registers the class with the command controller while the module is loaded; defined
    // with the module's other load-time objects.
    static ZYLCmdCommandPublisher<ZYLTPEditCourseCmd> _Publisher;
};
