// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathUIExport.h"

#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdDialogCommand.h"
#include "ZYLVisObject.h"

#include <QSet>

/// The dialog command "Edit Linking points". Edits the linking points of one picked course
/// link, which becomes a custom link.
///
/// Exported, with its meta-object, for the modules that build on this one.
///
/// While it runs the 3-D view shows only the course links between courses, which can be
/// picked. The panel stays hidden until the user picks exactly one link; that link goes to the
/// panel (`ZYLTPEditLinkingPointsWidget`) and the panel shows. Later picks go to the panel.
/// The edits live in the command's transaction: accepting keeps them, cancelling gives back
/// the original link.
///
/// The controller creates an instance through the invokable constructor each time the action
/// "ZYLTPEditLinkingPointsCmd.Edit" is triggered; it runs in a transaction of its own and is
/// cancelled when another command starts.
class ZYLTOOLPATHUI_EXPORT ZYLTPEditLinkingPointsCmd : public ZYLCmdDialogCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "Edit Linking points")
public:
    /// Creates the command as a child of `parent` (the controller).
    Q_INVOKABLE explicit ZYLTPEditLinkingPointsCmd(QObject *parent);
    ~ZYLTPEditLinkingPointsCmd() override;

    /// Shows the links display and waits for the pick of one link (the 3-D selection and
    /// pre-selection emptied, every object pickable, clicks and moves delivered with
    /// snapping), then gains focus as every command does.
    void GainFocus() override;
    /// Restores the display of the current view modes, then cleans up as every command does.
    bool Cleanup() override;
    /// Returns a new `ZYLTPEditLinkingPointsWidget` created with `parent`.
    QWidget *CreateContentWidget(QWidget *parent) override;

protected:
    /// Rebuilds the tool path nodes with the links display options (links with the tool axis
    /// at their end points, laying detail off), makes the course link nodes selectable and
    /// hides the approach and retract links.
    void ShowLinksGraphics();
    /// Rebuilds the tool path nodes with the current options.
    void RestoreGraphics();

protected slots:
    /// Hands the first single pick of a course link to the panel and shows it.
    void OnVisualizationSelectionChanged(const QSet<ZYLVisObject *> &selected, const QSet<ZYLVisObject *> &deselected);

private:
    // Registers the class with the command controller while the module is loaded; defined
    // with the module's other load-time objects.
    static ZYLCmdCommandPublisher<ZYLTPEditLinkingPointsCmd> _Publisher;

    // Constructs and destroys one instance with a null parent, so that the class fails to
    // build without the constructor the controller calls. Nothing calls it.
    static void _constructor_checker();
};
