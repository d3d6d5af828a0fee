// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QItemSelection>
#include <QMainWindow>
#include <QModelIndex>
#include <QSet>
#include <QSharedPointer>

class ZYLFeatObject;
class ZYLTPEditCourseCmd;
class ZYLVisObject;

/// The panel of "Edit course": the courses of the program's roll layup procedures in laying
/// order, with the operations that change them.
///
/// Course modes, chosen with the exclusive actions of the course mode tool bar: `Select` (the
/// default: the courses list and the 3-D view select the same courses; the approach/retract
/// and feed-rate fields show the current course and write a change to every selected
/// course; Up, Down and Reverse all change the laying order), `Reverse` (a picked course is
/// reversed; every other course or all courses at once), `Break` (a picked break range
/// breaks its course; all courses get break ranges of a given length) and `Delete` (a picked
/// course is removed, never the last one of its procedure).
///
/// Link mode ("Link mode" action) rebuilds the chain of course links with the link tool bar:
/// `Unlink` removes a picked link, `Link` joins two picked courses, `ChainLink` joins picked
/// courses one after another, "UnlinkAll" removes every link and "Accept links" adds the
/// approach and retract links. While a procedure has a course without a link in or out,
/// neither link mode nor the command (its OK button) can be left.
///
/// Every edit reaches the model at once, inside the command's transaction, and the 3-D view
/// is redrawn after it. The selection of the 3-D view and of the courses list follow each
/// other, each direction disconnected while the other one runs.
class ZYLTPEditCourseWidget : public QMainWindow {
    Q_OBJECT
public:
    /// Builds the panel of `command` (borrowed; watched, as it may end first) as a child of
    /// `parent`, prepares the 3-D view for the `Select` mode and fills the courses list.
    ZYLTPEditCourseWidget(QWidget *parent, ZYLTPEditCourseCmd *command);
    ~ZYLTPEditCourseWidget() override;

public slots:
    /// Does nothing; kept for hosts that switch the selection mode.
    void UpdateSelectionMode(bool checked);
    /// Does nothing; kept for hosts that report feature selections.
    void OnFeatureSelectionChanged(QSet<ZYLFeatObject *> added, QSet<ZYLFeatObject *> removed);
    /// Enter or leave the course modes `Reverse` and `Break`.
    void ReverseActionTriggered(bool bCheck);
    void BreakActionTriggered(bool checked);
    /// Shows the sections (detailed) or only the tool bars.
    void MiniToolbarModeActionTriggered(bool detailed);
    /// Expands or collapses the sections of the current mode.
    void ExpandCollapseAllActionTriggered(bool expand);
    /// Enters or leaves the course mode `Delete`.
    void DeleteActionTriggered(bool checked);
    /// Follows a selection made in the 3-D view: selects the courses in the list, or runs
    /// the pick of the current mode.
    void OnVisualizationSelectionChanged(QSet<ZYLVisObject *> added, QSet<ZYLVisObject *> removed);
    /// Follow a selection made in a list: select the matching nodes of the 3-D view.
    void OnCoursesListSelectionChanged(const QItemSelection &selected, const QItemSelection &deselected);
    void OnBreakRangesListSelectionChanged(const QItemSelection &selected, const QItemSelection &deselected);
    /// Shows the values of the course of the new current row.
    void OnCoursesListCurrentChanged(const QModelIndex &current, const QModelIndex &previous);
    /// Enters or leaves link mode.
    void EditModeActionTriggered(bool on);
    /// Enter or leave the link sub-modes `Unlink`, `Link` and `ChainLink`.
    void UnlinkActionTriggered(bool checked);
    /// Removes every link of the procedure.
    void UnlinkAllActionTriggered();
    void LinkActionTriggered(bool checked);
    void ChainLinkActionTriggered(bool checked);
    /// Adds the missing approach and retract links of every procedure.
    void AcceptLinksActionTriggered();
    /// Puts back the procedure's feed rate of the sender's field.
    void OnResetButtonClicked();
    /// Writes the sender field's value to every selected course.
    void OnDoubleSpinBoxValueChanged(double value);
    /// Runs the bulk operation of the sender button on every procedure.
    void OnCoursesOperationButtonClicked();
    /// Moves the selected rows one place up or down the laying order.
    void OnUpDownButtonClicked();
    /// Shows or hides the content of the "Courses" section.
    void OnButtonOrderClicked(bool checked);

private:
    void setupConnections();

    struct Data;
    QSharedPointer<Data> d;
};
