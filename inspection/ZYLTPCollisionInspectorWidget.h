// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QMainWindow>

#include <memory>

class ZYLVisMouseEvent;

/// The panel of the collision inspector: lists every laying point of the program at which the
/// machine head or its roller collides with the part surface at a tolerance, with the point's
/// forward and side tilts, draws the listed points in the 3-D view, shows the head and its
/// collision points at the last selected point, and avoids the collisions of the selected
/// points in one transaction.
///
/// The list is computed by "Update", once per tolerance (a change of more than 0.001 mm, or an
/// avoidance since, makes it stale). A search that takes longer than half a second shows a
/// progress dialog whose Cancel keeps the previous list. The table is a lazy view over the
/// rows, so that a list of a million points fills at once.
///
/// The tolerance is kept per user in the host's UI settings under
/// `ZYLTPCollisionInspectorCmd::LastUsedCollisionTolSettingKey`. The four scene objects of the
/// panel (selected, unselected and hovered points, collision points) are owned by the panel
/// and live in the edit visualization environment until `Release`.
class ZYLTPCollisionInspectorWidget : public QMainWindow {
    Q_OBJECT
public:
    /// Builds the panel for the graphics manager's current program, as a child of `parent`.
    explicit ZYLTPCollisionInspectorWidget(QWidget *parent = nullptr);
    ~ZYLTPCollisionInspectorWidget() override;

    /// Reacts to the mouse in the 3-D view: a move shows the listed point nearest the view ray,
    /// a click selects or deselects its row, leaving the view clears the hover.
    void HandleMouseEvent(const ZYLVisMouseEvent &event);
    /// Stores the tolerance in the UI settings and takes the panel's objects out of the scene.
    void Release();

private slots:
    void OnAvoidCollisionClicked();
    void OnShowCollisionButtonClicked();
    void OnUpdateCollisonToleranceValueChanged(double val);
    void OnShowHeadButtonChecked();
    void OnPointSelectionChanged();

private:
    void setupConnections();
    bool Search(double tolerance);
    void ShowRows(bool restoreSelection);
    void FillTable(bool restoreSelection);
    void UpdateButtons();
    void UpdateHeadDisplay();
    void RedrawPoints();
    void ToggleRow(int row);

    struct Data;
    std::unique_ptr<Data> d;
};
