// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCmdCommand.h"
#include "ZYLCmdCommandPublisher.h"

/// The view command "View toolpath": the command of the 21 view actions, which switch the
/// view mode of courses, laying points, course links and linking points and show or hide
/// the surface, the ply boundary, the machine head and the rollers. The action's view mode
/// arrives as the dynamic property "mode".
///
/// `GainFocus` does the whole work: a view mode is stored in its setting of
/// `ZYLTPEditUISettings`; then, for every action, the graphics manager rebuilds the tool path
/// nodes with its current options; a toggle finally stores the checked state of its action
/// ("ZYLToolPathViewCmd." followed by the mode) and shows or hides the surface, the ply
/// boundary, the machine head or the rollers of id 0 accordingly. The command has no panel
/// and no transaction of its own; the controller accepts it right after `GainFocus`.
class ZYLToolPathViewCmd : public ZYLCmdCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "View toolpath")
public:
    /// Creates the command as a child of `parent` (the controller).
    Q_INVOKABLE explicit ZYLToolPathViewCmd(QObject *parent);
    ~ZYLToolPathViewCmd() override;

    /// Applies the action's view mode or toggle (see the class description).
    void GainFocus() override;

private:
    // Registers the class with the command controller while the module is loaded; defined
    // with the module's other load-time objects.
    static ZYLCmdCommandPublisher<ZYLToolPathViewCmd> _Publisher;
};
