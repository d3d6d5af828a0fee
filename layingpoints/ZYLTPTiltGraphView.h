// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QGraphicsView>
#include <QList>
#include <QPointF>

class QMouseEvent;
class ZYLTPCourse;
class ZYLTPTiltGraphMouseHover;
class ZYLTPTiltGraphSelectionRange;

// The signals' argument type must be complete where the meta-object is generated.
Q_MOC_INCLUDE(<QMouseEvent>)

/// The view of one tilt graph of the laying points panel (forward or side tilt along the
/// course). It forwards every mouse press, release, double click and move to its owner as a
/// signal, after the base handling; the owner passes each event to the `Handle…` operations of
/// both graphs, so that both show the same hover line and drag.
///
/// Zooming and panning change only the view's scene rectangle, which is always fitted to fill
/// the whole view (keeping the aspect ratio by expanding). The hover read-out and the range
/// bands are made on the first mouse move over a course with points; a course without points
/// shows nothing and ignores the mouse.
class ZYLTPTiltGraphView : public QGraphicsView {
    Q_OBJECT
public:
    /// Creates the view with `parent`: mouse tracking, antialiasing, no scroll bars.
    explicit ZYLTPTiltGraphView(QWidget *parent = nullptr);
    ~ZYLTPTiltGraphView() override;

    /// Sets the course drawn (borrowed; null for none) and forgets the mouse items, which the
    /// owner removes with the scene's other items.
    void SetCourse(const ZYLTPCourse *course);
    const ZYLTPCourse *GetCourse() const;
    /// Sets the selected ranges drawn as bands (kept for the band item made later).
    void SetRanges(const QList<int> &starts, const QList<int> &ends);
    /// Returns the index of the first point beyond the mouse position, or the last point.
    int PointIndexAt(QMouseEvent *event) const;
    void HandleMouseMove(QMouseEvent *event);
    void HandleMousePress(QMouseEvent *event);
    void HandleMouseRelease(QMouseEvent *event);
    /// Zoom by 0.9 (in) or 1.1 (out) about the centre, fit the whole course, or pan by a tenth
    /// of the visible width; nothing without a valid scene rectangle.
    void ZoomIn();
    void ZoomOut();
    void ZoomAll();
    void ShiftLeft();
    void ShiftRight();
    /// Centres the visible width on point `index`.
    void CenterOn(int index);

signals:
    void OnMouseMoveEvent(QMouseEvent *event);
    void OnMousePressEvent(QMouseEvent *event);
    void OnMouseReleaseEvent(QMouseEvent *event);
    void OnMouseDoubleClickEvent(QMouseEvent *event);
    /// A drag over the graph ended over the points `start` to `end` (0-based, in order).
    void OnPreviewSelectionChanged(int start, int end);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void Zoom(double factor);
    void Shift(double fraction);
    void SetVisible(const QRectF &rect);
    double PointLength(int index) const;

    const ZYLTPCourse *m_course = nullptr;
    ZYLTPTiltGraphMouseHover *m_hover = nullptr;
    ZYLTPTiltGraphSelectionRange *m_range = nullptr;
    int m_pressIndex = -1;
    QPointF m_pressPosition;
    bool m_shownOnce = false;
    QList<int> m_starts;
    QList<int> m_ends;
};
