// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLMathAxis.h"
#include "ZYLVisObject.h"

#include <QMainWindow>
#include <QSet>

#include <memory>

class QItemSelection;
class ZYLTPCourseLink;

/// The panel of the "Edit Linking points" command: the linking points of one course link.
///
/// `SetCourseLink` turns the picked link into a custom link (the conversion is an edit inside
/// the command's transaction) and lists its interior points as rows "Point.%1"; the end points
/// on the courses are never listed. Each listed point has a selectable marker in the 3-D view,
/// and a gizmo stands on the point when exactly one is selected: dragging or turning it moves
/// and re-orients the point live. The offset boxes move the selected points, to coordinates
/// or (with "Relative to point") by a displacement; insert, delete and interpolate work on the
/// selected points. Every edit reaches the model at once.
///
/// The list and the 3-D selection of the markers follow each other. Only the markers of points
/// whose frame changed are rebuilt after an edit, so a drag step on a long link stays cheap.
/// Destruction removes the markers and the gizmo and resets the environment's mouse
/// interaction and snapping. GUI thread only.
class ZYLTPEditLinkingPointsWidget : public QMainWindow {
    Q_OBJECT
public:
    explicit ZYLTPEditLinkingPointsWidget(QWidget *parent = nullptr);
    ~ZYLTPEditLinkingPointsWidget() override;

    /// Edits `link`: converts it to a custom link unless it is one, shows its points and lists
    /// them. Null only stores null.
    void SetCourseLink(const ZYLTPCourseLink *link);
    /// Stops following the 3-D selection and the gizmo, so that nothing reads the edited
    /// points again (a rollback may have deleted them).
    void Detach();

public slots:
    void OnCoordinateChanged();
    void OnRelativeToggled();
    void OnInsertBeforeButtonClicked();
    void OnInsertAfterButtonClicked();
    void OnSelectAllButtonClicked();
    void OnDeselectAllButtonClicked();
    void OnDeleteButtonClicked();
    void OnInterpolateButtonClicked();
    void OnVisualizationSelectionChanged(const QSet<ZYLVisObject *> &selected, const QSet<ZYLVisObject *> &deselected);
    void OnLinkingPtListSelectionChanged(const QItemSelection &selected, const QItemSelection &deselected);
    void OnPositionChanged(const ZYLMathAxis &position);

private:
    void setupConnections();

    struct Data;
    std::unique_ptr<Data> d;
};
