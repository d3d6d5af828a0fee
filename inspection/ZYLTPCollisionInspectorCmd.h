// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdDialogCommand.h"

#include <QByteArray>

class ZYLVisMouseEvent;

/// The dialog command "View Collision Infomation". Lists every laying point at which the
/// machine head or a roller collides with the part, with its tilts, places the head at the
/// selected point and avoids collisions from the table (`ZYLTPCollisionInspectorWidget`).
///
/// While it has focus the course and course link nodes are hidden, so that the listed points
/// stand out, and the 3-D view delivers mouse moves and clicks to the panel; `Cleanup` gives
/// the normal display back. Avoidance runs in a nested transaction of the command's own, so
/// OK keeps it as one undoable step and Cancel drops it.
///
/// The controller creates an instance through the invokable constructor each time the action
/// "ZYLTPCollisionInspectorCmd.View" is triggered; it runs in a transaction of its own and is
/// cancelled when another command starts.
class ZYLTPCollisionInspectorCmd : public ZYLCmdDialogCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "View Collision Infomation")
public:
    /// Creates the command as a child of `parent` (the controller) and listens to the mouse
    /// in the edit visualization environment.
    Q_INVOKABLE explicit ZYLTPCollisionInspectorCmd(QObject *parent);
    ~ZYLTPCollisionInspectorCmd() override;

    /// Returns a new `ZYLTPCollisionInspectorWidget`, created with `parent`.
    QWidget *CreateContentWidget(QWidget *parent) override;
    /// Hides the tool path nodes and asks the view for mouse moves and clicks.
    void GainFocus() override;
    /// Stores the panel's tolerance, removes its scene objects, stops listening to the mouse
    /// and restores the display.
    bool Cleanup() override;

    /// Hides the course and course link nodes.
    virtual void PrepareGraphics();
    /// Shows the nodes again as the current view settings say.
    virtual void RestoreGraphics();

    /// The key under which the per-widget UI settings keep the collision tolerance the user
    /// last chose: "LastUsedCollisionTolSettingKey".
    static const QByteArray LastUsedCollisionTolSettingKey;

private:
    void OnMouseEvent(const ZYLVisMouseEvent &event);

    // Registers the class with the command controller while the module is loaded; defined
    // with the module's other load-time objects.
    static ZYLCmdCommandPublisher<ZYLTPCollisionInspectorCmd> _Publisher;
};
