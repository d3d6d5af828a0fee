// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// A library loaded and unloaded by the tests: one dialog command registered and two actions
// published by static objects, the way a module does it.
#include "ZYLCmdActionPublisher.h"
#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdDialogCommand.h"

#include <QLabel>

namespace {

class ZYLCmdTestPluginPanel : public QLabel {
    Q_OBJECT
public:
    explicit ZYLCmdTestPluginPanel(QWidget *parent) : QLabel(QStringLiteral("panel of the loaded library"), parent) {}
};

} // namespace

class ZYLCmdTestPluginCmd : public ZYLCmdDialogCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "Plugin test")
public:
    Q_INVOKABLE explicit ZYLCmdTestPluginCmd(QObject *parent)
        : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {}
    QWidget *CreateContentWidget(QWidget *parent) override { return new ZYLCmdTestPluginPanel(parent); }

private:
    static ZYLCmdCommandPublisher<ZYLCmdTestPluginCmd> _Publisher;
};

// Actions first, as nothing requires the class to be registered before its actions.
static ZYLCmdActionPublisher s_editAction("Edit", "ZYLCmdTestPluginCmd", QStringLiteral("courses-edit"),
                                          QStringLiteral("Edit"), QStringLiteral("Edit in the loaded library"),
                                          nullptr, ZYLCmdAction::AnySelection,
                                          {{QStringLiteral("mode"), QStringLiteral("edit")}});
static ZYLCmdActionPublisher s_viewAction("View", "ZYLCmdTestPluginCmd", QStringLiteral("head-off"),
                                          QStringLiteral("View"), QStringLiteral("View in the loaded library"),
                                          nullptr, ZYLCmdAction::AnySelection,
                                          {{QStringLiteral("mode"), QStringLiteral("ViewHead")}});
ZYLCmdCommandPublisher<ZYLCmdTestPluginCmd> ZYLCmdTestPluginCmd::_Publisher;

#include "ZYLCmdTestPlugin.moc"
