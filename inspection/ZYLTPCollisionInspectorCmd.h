// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdDialogCommand.h"

#include <QByteArray>

/// The dialog command "View Collision Infomation". Lists every laying point at which the
/// machine head or a roller collides with the part, with its tilts, places the head at the
/// selected point and avoids collisions from the table.
///
/// Its panel and behaviour come with a later version of the module. Until then
/// `CreateContentWidget` gives a panel that names the command and says that the editor is not
/// available in this build, and the command leaves the model as it is, whether it is accepted
/// or cancelled.
///
/// The controller creates an instance through the invokable constructor each time the action
/// "ZYLTPCollisionInspectorCmd.View" is triggered; it runs in a transaction of its own and is
/// cancelled when another command starts.
class ZYLTPCollisionInspectorCmd : public ZYLCmdDialogCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "View Collision Infomation")
public:
    /// Creates the command as a child of `parent` (the controller).
    Q_INVOKABLE explicit ZYLTPCollisionInspectorCmd(QObject *parent);
    ~ZYLTPCollisionInspectorCmd() override;

    /// Returns a new panel for the command, created with `parent`.
    QWidget *CreateContentWidget(QWidget *parent) override;

    /// The key under which the per-widget UI settings keep the collision tolerance the user
    /// last chose: "LastUsedCollisionTolSettingKey".
    static const QByteArray LastUsedCollisionTolSettingKey;

private:
    // Registers the class with the command controller while the module is loaded; defined
    // with the module's other load-time objects.
    static ZYLCmdCommandPublisher<ZYLTPCollisionInspectorCmd> _Publisher;
};
