// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QWidget>

#include <memory>

class QObject;
class ZYLVisMouseEvent;

/// The panel of the contextual view: the properties of one tool path object, read only.
///
/// The user chooses the kind of object: "Course" or "Course Link" are taken from the node the
/// mouse is over or the one last picked in the 3-D view; "Laying Point" from the mouse
/// itself, the laying point nearest to the view ray (roll-in and roll-out points excluded)
/// being highlighted and shown. Each kind applies its own display of the tool path. An empty
/// selection leaves the table as it was.
///
/// The panel installs a selection filter accepting every object; the command removes it and
/// restores the display at its end. The highlight object is owned by the panel.
class ZYLTPContextualViewWidget : public QWidget {
    Q_OBJECT
public:
    /// Builds the panel for the graphics manager's current program, as a child of `parent`.
    explicit ZYLTPContextualViewWidget(QWidget *parent = nullptr);
    ~ZYLTPContextualViewWidget() override;

public slots:
    void OnVisualizationSelectionChanged(bool isPreSelect);
    void OnObjectTypeChanged(int index);
    void OnMouseEvent(const ZYLVisMouseEvent &mouseEvent);

private:
    void setupConnections();
    void UpdateDisplayForType();
    void CollectLayingPoints();
    void FillPropertyTable(const QObject *object);

    struct Data;
    std::unique_ptr<Data> d;
};
