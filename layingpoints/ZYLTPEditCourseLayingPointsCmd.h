// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathUIExport.h"

#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdDialogCommand.h"

#include <QSet>

class ZYLTPCourse;
class ZYLVisEnvironment;
class ZYLVisMouseContext;
class ZYLVisMouseEvent;
class ZYLVisObject;

// The slot's argument type must be complete where the meta-object is generated.
Q_MOC_INCLUDE("ZYLVisObject.h")

/// The dialog command "Machine" behind the action "Laying Points": the user picks one course
/// of the edited program in the 3-D view, then edits its laying points in the panel
/// (`ZYLTPEditCourseLayingPointsWidget`): tilts, tow feed and collision corrections over the
/// selected points, with tilt graphs and the machine head at a chosen point.
///
/// The panel stays hidden until a course is picked. While the command has the focus, course
/// nodes are shown and selectable and course links hidden; the first valid pick (one course
/// node of the edited program) hides the courses, hands the course to the panel and shows it.
/// From then on mouse moves in the 3-D view preview the nearest laying point and clicks toggle
/// its selection. Later picks change nothing. The edits are made by the panel inside the
/// command's transaction; OK keeps them, Cancel rolls them back, and either way the normal
/// display comes back.
///
/// Exported, with its meta-object, for the modules that build on this one. The controller
/// creates an instance through the invokable constructor each time the action
/// "ZYLTPEditCourseLayingPointsCmd.Edit" is triggered; it runs in a transaction of its own and
/// is cancelled when another command starts.
class ZYLTOOLPATHUI_EXPORT ZYLTPEditCourseLayingPointsCmd : public ZYLCmdDialogCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "Machine")
public:
    /// Creates the command as a child of `parent` (the controller), with its panel hidden.
    Q_INVOKABLE explicit ZYLTPEditCourseLayingPointsCmd(QObject *parent);
    ~ZYLTPEditCourseLayingPointsCmd() override;

    /// Prepares the 3-D view for the pick and listens to its selection and mouse.
    void GainFocus() override;
    /// Takes the panel's 3-D objects out of the view, then commits.
    void Commit() override;
    /// Removes the panel's 3-D objects, stops listening to the view and restores its display.
    bool Cleanup() override;
    /// Returns a new panel for the command, created with `parent`.
    QWidget *CreateContentWidget(QWidget *parent) override;

    /// Shows the courses of the program selectable, with their tows and tip points, and hides
    /// the course links.
    virtual void PrepareGraphics();
    /// Rebuilds the tool path nodes as the view modes prescribe, none selectable.
    virtual void RestoreGraphics();

private slots:
    void OnVisualizationSelectionChanged(const QSet<ZYLVisObject *> &added, const QSet<ZYLVisObject *> &removed);

private:
    const ZYLTPCourse *GetCourseObjectFromVisualizationSelection();
    ZYLVisEnvironment *GetVisEnvironment();
    void OnMouseEvent(const ZYLVisMouseEvent &event);
    void MouseClicked(const ZYLVisMouseContext &context);
    void MouseMoved(const ZYLVisMouseContext &context);
    void MouseEntered(const ZYLVisObject *object);
    void MouseExited(const ZYLVisObject *object);

    // Registers the class with the command controller while the module is loaded; defined
    // with the module's other load-time objects.
    static ZYLCmdCommandPublisher<ZYLTPEditCourseLayingPointsCmd> _Publisher;

    // Constructs and destroys one instance with a null parent, so that the class fails to
    // build without the constructor the controller calls. Nothing calls it.
    static void _constructor_checker();
};
