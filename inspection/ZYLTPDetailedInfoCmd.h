// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdDialogCommand.h"

/// The dialog command "View detailed info". Shows the operation, course, laying point and
/// linking motion tables of the tool path, with their filter and CSV export.
///
/// The command only hosts its panel (`ZYLTPDetailedInfoWidget`); it reads the program and
/// never changes it, and its frame offers Close and Help.
///
/// The controller creates an instance through the invokable constructor each time the action
/// "ZYLTPDetailedInfoCmd.View" is triggered; it runs in a transaction of its own and is
/// cancelled when another command starts.
class ZYLTPDetailedInfoCmd : public ZYLCmdDialogCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "View detailed info")
public:
    /// Creates the command as a child of `parent` (the controller).
    Q_INVOKABLE explicit ZYLTPDetailedInfoCmd(QObject *parent);
    ~ZYLTPDetailedInfoCmd() override;

    /// Returns a new panel for the command, created with `parent`.
    QWidget *CreateContentWidget(QWidget *parent) override;
    /// Returns Close and Help: the panel changes nothing that could be accepted.
    QDialogButtonBox::StandardButtons GetStandardButtons() const override;

private:
    // Registers the class with the command controller while the module is loaded; defined
    // with the module's other load-time objects.
    static ZYLCmdCommandPublisher<ZYLTPDetailedInfoCmd> _Publisher;
};
