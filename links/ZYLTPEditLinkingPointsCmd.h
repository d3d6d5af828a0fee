// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathUIExport.h"

#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdDialogCommand.h"

/// The dialog command "Edit Linking points". Edits the linking points of one picked course
/// link, which becomes a custom link.
///
/// Exported, with its meta-object, for the modules that build on this one.
///
/// Its panel and behaviour come with a later version of the module. Until then
/// `CreateContentWidget` gives a panel that names the command and says that the editor is not
/// available in this build, and the command leaves the model as it is, whether it is accepted
/// or cancelled.
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

    /// Returns a new panel for the command, created with `parent`.
    QWidget *CreateContentWidget(QWidget *parent) override;

private:
    // Registers the class with the command controller while the module is loaded; defined
    // with the module's other load-time objects.
    static ZYLCmdCommandPublisher<ZYLTPEditLinkingPointsCmd> _Publisher;

    // Constructs and destroys one instance with a null parent, so that the class fails to
    // build without the constructor the controller calls. Nothing calls it.
    static void _constructor_checker();
};
