// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdDialogCommand.h"

/// The dialog command "Edit course". Edits the courses of a roll layup procedure: their laying
/// order, direction, deletion and breaking, their linking into a chain, approach and retract
/// geometry and feed rates.
///
/// Its panel and behaviour come with a later version of the module. Until then
/// `CreateContentWidget` gives a panel that names the command and says that the editor is not
/// available in this build, and the command leaves the model as it is, whether it is accepted
/// or cancelled.
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

private:
    // Registers the class with the command controller while the module is loaded; defined
    // with the module's other load-time objects.
    static ZYLCmdCommandPublisher<ZYLTPEditCourseCmd> _Publisher;
};
