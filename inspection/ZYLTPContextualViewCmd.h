// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdDialogCommand.h"

/// The dialog command "View contextual tool path". Lists the properties of the course, laying
/// point or course link under the mouse or in the selection (`ZYLTPContextualViewWidget`).
///
/// It reads only; its frame offers Close and Help. `Cleanup` makes every node unselectable
/// again, removes the panel's selection filter, stops the mouse events and restores the
/// display from the current view settings.
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

    /// Returns a new `ZYLTPContextualViewWidget`, created with `parent`.
    QWidget *CreateContentWidget(QWidget *parent) override;
    /// Returns Close and Help.
    QDialogButtonBox::StandardButtons GetStandardButtons() const override;
    /// Restores the display, then ends as every command does.
    bool Cleanup() override;

    /// Makes the nodes unselectable, removes the selection filter, switches the mouse events
    /// off and rebuilds the nodes with the current options.
    virtual void RestoreGraphics();

private:
    // Registers the class with the command controller while the module is loaded; defined
    // with the module's other load-time objects.
    static ZYLCmdCommandPublisher<ZYLTPContextualViewCmd> _Publisher;
};
