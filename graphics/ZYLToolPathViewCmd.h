// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCmdCommand.h"
#include "ZYLCmdCommandPublisher.h"

/// The view command "View toolpath": the command of the 21 view actions, which switch the
/// view mode of courses, laying points, course links and linking points and show or hide
/// the surface, the ply boundary, the machine head and the rollers. The action's view mode
/// arrives as the dynamic property "mode".
///
/// A view mode takes effect through the tool path graphics manager, which this build of the
/// module does not have yet; so far the command stores no setting and draws nothing, and the
/// controller accepts it right after `GainFocus`, as it does every command without a panel.
class ZYLToolPathViewCmd : public ZYLCmdCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "View toolpath")
public:
    /// Creates the command as a child of `parent` (the controller).
    Q_INVOKABLE explicit ZYLToolPathViewCmd(QObject *parent);
    ~ZYLToolPathViewCmd() override;

    /// Applies the action's view mode (see the class description).
    void GainFocus() override;

private:
    // Registers the class with the command controller while the module is loaded; defined
    // with the module's other load-time objects.
    static ZYLCmdCommandPublisher<ZYLToolPathViewCmd> _Publisher;
};
