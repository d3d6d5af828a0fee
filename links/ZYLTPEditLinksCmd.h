// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathUIExport.h"

#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdDialogCommand.h"

/// The dialog command "Edit Links". Edits the off-part motion, the point detail and the rapid
/// approach and retract distances of the selected course links.
///
/// Exported, with its meta-object, for the modules that build on this one.
///
/// While it runs the 3-D view shows only the course links, which can be picked; its panel
/// (`ZYLTPEditLinksWidget`) edits the selected links at once, except for their point detail,
/// which is set when the command is accepted.
///
/// The controller creates an instance through the invokable constructor each time the action
/// "ZYLTPEditLinksCmd.Edit" is triggered; it runs in a transaction of its own and is cancelled
/// when another command starts.
class ZYLTOOLPATHUI_EXPORT ZYLTPEditLinksCmd : public ZYLCmdDialogCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "Edit Links")
public:
    /// Creates the command as a child of `parent` (the controller).
    Q_INVOKABLE explicit ZYLTPEditLinksCmd(QObject *parent);
    ~ZYLTPEditLinksCmd() override;

    /// Shows the links display, then gains focus as every command does.
    void GainFocus() override;
    /// Sets the panel's point detail on the links selected in it, then commits.
    void Commit() override;
    /// Restores the display of the current view modes, then cleans up as every command does.
    bool Cleanup() override;
    /// Returns a new `ZYLTPEditLinksWidget` created with `parent`.
    QWidget *CreateContentWidget(QWidget *parent) override;

protected:
    /// Rebuilds the tool path nodes with the links display options (links without their
    /// points, laying detail off) and makes the course link nodes selectable.
    void ShowLinksGraphics();
    /// Rebuilds the tool path nodes with the current options.
    void RestoreGraphics();

private:
    // Registers the class with the command controller while the module is loaded; defined
    // with the module's other load-time objects.
    static ZYLCmdCommandPublisher<ZYLTPEditLinksCmd> _Publisher;

    // Constructs and destroys one instance with a null parent, so that the class fails to
    // build without the constructor the controller calls. Nothing calls it.
    static void _constructor_checker();
};
