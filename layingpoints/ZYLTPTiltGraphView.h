// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QGraphicsView>

class QMouseEvent;
class ZYLTPCourse;

// The signals' argument type must be complete where the meta-object is generated.
Q_MOC_INCLUDE(<QMouseEvent>)

/// The view of one tilt graph of the laying points panel (forward or side tilt along the
/// course). It forwards every mouse press, release, double click and move to its owner as a
/// signal, after the base handling, so that the owner can drive both graphs together.
///
/// Mouse tracking and antialiasing are on, scroll bars are off and the owner places the scene
/// rectangle itself (no transformation anchor).
class ZYLTPTiltGraphView : public QGraphicsView {
    Q_OBJECT
public:
    /// Creates the view with `parent`.
    explicit ZYLTPTiltGraphView(QWidget *parent = nullptr);
    ~ZYLTPTiltGraphView() override;

    /// Sets the course drawn (borrowed; null for none).
    void SetCourse(const ZYLTPCourse *course);
    /// Returns the course drawn, or null.
    const ZYLTPCourse *GetCourse() const;

signals:
    void OnMouseMoveEvent(QMouseEvent *event);
    void OnMousePressEvent(QMouseEvent *event);
    void OnMouseReleaseEvent(QMouseEvent *event);
    void OnMouseDoubleClickEvent(QMouseEvent *event);
    /// A drag over the graph ended over the points `start` to `end` (0-based, either order).
    void OnPreviewSelectionChanged(int start, int end);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    const ZYLTPCourse *m_course = nullptr;
};
