// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdDialogCommand.h"

/// The dialog command "View contextual tool path". Lists the properties of the course, laying
/// point or course link under the mouse or in the selection.
///
/// Its panel and behaviour come with a later version of the module. Until then
/// `CreateContentWidget` gives a panel that names the command and says that the editor is not
/// available in this build, and the command leaves the model as it is, whether it is accepted
/// or cancelled.
///
/// The controller creates an instance through the invokable constructor each time the action
/// "ZYLTPContextualViewCmd.View" is triggered; it runs in a transaction of its own and is
/// cancelled when another command starts.
class ZYLTPContextualViewCmd : public ZYLCmdDialogCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "View contextual tool path")
public:
    /// Creates the command as a child of `parent` (the controller).
    Q_INVOKABLE explicit ZYLTPContextualViewCmd(QObject *parent);
    ~ZYLTPContextualViewCmd() override;

    /// Returns a new panel for the command, created with `parent`.
    QWidget *CreateContentWidget(QWidget *parent) override;

private:
    // Registers the class with the command controller while the module is loaded; defined
    // with the module's other load-time objects.
    static ZYLCmdCommandPublisher<ZYLTPContextualViewCmd> _Publisher;
};
