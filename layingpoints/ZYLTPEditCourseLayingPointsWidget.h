// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QItemSelectionModel>
#include <QList>
#include <QMainWindow>

#include <functional>
#include <memory>
#include <utility>

class QMouseEvent;
class ZYLMathPoint;
class ZYLMathVector;
class ZYLTPCourse;
class ZYLTPPoint;
class ZYLTPTiltGraphView;
class ZYLVisEnvironment;

// The signals' argument type must be complete where the meta-object is generated.
Q_MOC_INCLUDE(<QMouseEvent>)

/// The panel of the laying points command: the points of one course in a list, their
/// selection (in the list, by clicks in the 3-D view and by drags over the tilt graphs),
/// forward and side tilt over the selected points, tow feed and feed ratio over them, the
/// points shown in the 3-D view (unselected, selected and the one under the mouse), the two
/// tilt graphs, the collision check of the machine head against the part with its correction,
/// and the head, rollers and collision spheres at a chosen point.
///
/// The row selection of the point list is the only selection state; every other view is
/// rebuilt from it. Selected rows form ranges: a range starts at a selected row and ends at
/// the next unselected row (exclusive), or at the last point when it runs to the end of the
/// list. Tilt and tow edits are written to the model at once, once per range, inside the
/// command's transaction; a failing edit is rolled back as a whole and reported in a box.
///
/// The environment is held weakly: every 3-D operation does nothing once it is gone.
class ZYLTPEditCourseLayingPointsWidget : public QMainWindow {
    Q_OBJECT
public:
    /// Builds the form; the panel's own 3-D objects are made by `SetCourse`.
    ZYLTPEditCourseLayingPointsWidget(ZYLVisEnvironment *environment, QWidget *parent);
    /// Stores the section header states for the user and deletes the panel's 3-D objects.
    ~ZYLTPEditCourseLayingPointsWidget() override;

    /// Shows the course (borrowed): its points, the tow and head controls and its points in
    /// the 3-D view; the selection is cleared. Null is ignored.
    void SetCourse(const ZYLTPCourse *course);
    /// Returns the index of the point whose tip is nearest to the line through `point` along
    /// `direction` (the first of equals), or -1 when there is no point.
    int PickPointIndex(const ZYLMathPoint &point, const ZYLMathVector &direction) const;
    /// Selects the row `index` (with `select` true and the row unselected) or deselects it.
    /// The first call after construction only records that a click was seen. Throws
    /// `ZYLSysOutOfBoundsException` for an index outside the list.
    void TogglePointSelection(int index, bool select);
    /// Highlights the point `index` as the one under the mouse (nothing for a selected point);
    /// throws as `TogglePointSelection`.
    void PreviewPoint(int index);
    /// Removes the highlight of the point under the mouse.
    void ClearPointPreview();
    /// Ends the edit: with `commit` the panel's 3-D objects leave the view; without, the
    /// controls are reset as after `SetCourse`.
    void Finish(bool commit);
    /// Takes the panel's 3-D objects out of the environment, if it is alive.
    void RemoveEditGraphics();

public slots:
    void OnPointSelectionChanged();
    void OnSelectAllPointsClicked();
    void OnClearSelectAllPointsClicked();
    void OnForwardTiltCheckBoxStateChanged();
    void OnForwardTiltValueChanged();
    void OnSideTiltCheckBoxStateChanged();
    void OnSideTiltValueChanged();
    void OnTowSelectAllButtonClicked();
    void OnTowSelectNoneButtonClicked();
    void OnTowSelectOddButtonClicked();
    void OnTowSelectEvenButtonClicked();
    void OnTowSelectFeedOnButtonClicked();
    void OnTowSelectFeedOffButtonClicked();
    void OnTowSelectInvertButtonClicked();
    void OnTowItemSelectionChanged();
    void OnChangeForceFeedCheckChanged();
    void OnForceFeedRateChanged();
    void OnTiltGraphMouseMoveEvent(QMouseEvent *event);
    void OnTiltGraphMousePressEvent(QMouseEvent *event);
    void OnTiltGraphMouseReleaseEvent(QMouseEvent *event);
    void OnTiltGraphMouseDoubleClickEvent(QMouseEvent *event);
    void OnTiltPreviewSelectionChanged(int start, int end);
    void OnTiltZoomIn();
    void OnTiltZoomOut();
    void OnTitlZoomAll();
    void OnTiltShiftLeft();
    void OnTiltShiftRight();
    void OnTiltYScaleChanged(int);
    void OnUpdateCollisionClicked();
    void OnShowCollisionButtonClicked();
    void OnUpdateCollisonToleranceValueChanged();
    void OnCenterOnHeadPosition();
    void OnShowHeadButtonChecked();
    void OnHeadPositionValueChanged();

private:
    using Ranges = std::pair<QList<int>, QList<int>>;

    void setupConnections();
    void ResetControls();
    void ReloadPoints();
    void FillPointList(bool keepSelection);
    QList<const ZYLTPPoint *> SelectedPoints() const;
    QList<const ZYLTPPoint *> UnselectedPoints() const;
    void UpdateSelectionControls();
    void UpdatePointGraphics();
    Ranges SelectedRanges() const;
    void ApplyTilt();
    void SelectPointRows(int first, int last);
    // Applies `flags` to `selection` of the points table without its change signal and scrolls
    // to `row`; outside another edit, the controls and the 3-D points then follow.
    void ApplyPointSelection(const QItemSelection &selection, QItemSelectionModel::SelectionFlags flags, int row);
    // Brings the selection controls and the 3-D points (in one redraw) up to the selection.
    void FollowPointSelection();
    // Shows the points again after an edit: the list, the 3-D points and the graphs.
    void ShowEditedPoints();
    void LoadTowState();
    void FillTowTable(bool keepSelection);
    void SetTowRowSelected(int row, bool selected);
    int TowIndexOfRow(int row) const;
    void ShowFirstSelectedTow();
    void SelectTowRows(const std::function<bool(int row)> &select);
    void ApplyPinchState();
    void SetupGraphs();
    void RefreshGraphs();
    void ForBothGraphs(const std::function<void(ZYLTPTiltGraphView *)> &action);
    void UpdateHead();
    void DetectCollisions();
    template<typename Edit>
    void RunEdit(Edit edit);

    struct Data;
    std::unique_ptr<Data> d;
};
