// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QList>
#include <QObject>

#include <memory>

class QMainWindow;
class QMenu;
class QToolBar;

/// The studio's tool bars, made from the actions that modules publish with the command
/// controller. The tool bars follow the controller's list: when a module is loaded its actions
/// appear, when it is unloaded they disappear, and a reload brings them back.
///
/// Grouping. The actions keep their publication order and are sorted into three tool bars by
/// their catalogue data, never by their names:
///  - "Edit": actions whose property "mode" is "edit" (the editing commands);
///  - "Inspection": actions without a "mode" property (commands that open a view of the
///    program, such as tables and inspectors);
///  - "View": actions with any other "mode", a view mode of their command. Consecutive modes
///    of one command class form a group that ends with its mode starting with "Hide"; each
///    such group is an exclusive `QActionGroup` of checkable actions. Modes of a command class
///    that no "Hide" mode closes are on/off toggles, checkable each on its own.
/// Separators part the groups. Each action keeps its icon, text and tool tip.
///
/// Checked state. View modes and toggles show the view settings that the module persists
/// (its settings object, found in the library that holds the view command's class): the
/// checked mode of each group is the value of the settings' text property paired with the
/// group, and each toggle shows the settings' switch paired with it. A group is paired with
/// the property whose value is one of its modes, a toggle with the switch named after it
/// ("ViewRoller" with "viewRoller", "ViewHead" with "viewMachineHead"); what is left is paired
/// in order. The state follows every change of the settings object, whether a view action
/// made it or code set it directly or reverted it to its defaults, and is read again after
/// each trigger of a view action, so a command that did not run leaves the state as it was.
/// A stored mode that no action of its group has leaves the group with nothing checked.
/// Without that settings object the actions are still checkable and keep the user's clicks.
///
/// Updates are coalesced: a change of the controller's list is applied on the next pass of
/// the event loop (a module publishes its actions one by one while it loads). Actions that a
/// module deletes leave the tool bars and menus at once.
///
/// GUI thread only; a QApplication must exist.
class ZYLStudioToolBars : public QObject {
    Q_OBJECT
public:
    /// Makes the three tool bars and adds them to `window`, which owns them and this object.
    explicit ZYLStudioToolBars(QMainWindow *window);
    ~ZYLStudioToolBars() override;

    /// Adds the view-mode groups and the toggles, parted by separators, at the end of `menu`
    /// (borrowed; forgotten when it is destroyed). The section follows the controller's list
    /// like the tool bars do and shares their actions, so checked states are the same.
    /// Adding the same menu twice does nothing.
    void AddViewMenuSection(QMenu *menu);

    /// Returns the tool bars: edit, inspection, view.
    QList<QToolBar *> GetToolBars() const;

private:
    void ScheduleRebuild();
    void Rebuild();
    void ClearPlacement();
    void FillMenu(int index);
    void BindSettings();
    void SyncFromSettings();

    struct Data;
    std::unique_ptr<Data> d;
};
