// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QWidget>

class ZYLCmdCommand;

/// The panel of a dialog command whose editor this build of the module does not have yet: the
/// command's label as a title and one sentence saying that the editor is not available. It
/// offers no control, so the command it stands for cannot change anything.
///
/// The title is the command class's class information "label", translated with the command's
/// class name as context; the labels are `labelTitle` and `labelUnavailable`.
class ZYLTPUnavailableWidget : public QWidget {
    Q_OBJECT
public:
    /// Makes the panel of `command` (borrowed, read only here) as a child of `parent`.
    ZYLTPUnavailableWidget(const ZYLCmdCommand *command, QWidget *parent);
    ~ZYLTPUnavailableWidget() override;
};
