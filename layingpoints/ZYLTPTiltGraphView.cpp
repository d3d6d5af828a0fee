// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPTiltGraphView.h"

#include "ZYLTPTiltGraphMouseHover.h"
#include "ZYLTPTiltGraphSelectionRange.h"

#include "ZYLTPCourse.h"
#include "ZYLTPOnPartPoint.h"

#include <QMouseEvent>
#include <QPainter>

ZYLTPTiltGraphView::ZYLTPTiltGraphView(QWidget *parent) : QGraphicsView(parent) {
    setMouseTracking(true);
    setRenderHint(QPainter::Antialiasing, true);
    setOptimizationFlag(QGraphicsView::DontSavePainterState, true);
    setViewportUpdateMode(QGraphicsView::SmartViewportUpdate);
    setTransformationAnchor(QGraphicsView::NoAnchor);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

ZYLTPTiltGraphView::~ZYLTPTiltGraphView() = default;

void ZYLTPTiltGraphView::SetCourse(const ZYLTPCourse *course) {
    m_course = course;
    m_hover = nullptr;
    m_range = nullptr;
    m_pressIndex = -1;
    m_starts.clear();
    m_ends.clear();
    if (m_shownOnce)
        ZoomAll();
}

const ZYLTPCourse *ZYLTPTiltGraphView::GetCourse() const {
    return m_course;
}

void ZYLTPTiltGraphView::SetRanges(const QList<int> &starts, const QList<int> &ends) {
    m_starts = starts;
    m_ends = ends;
    if (m_range)
        m_range->SetRanges(starts, ends);
}

double ZYLTPTiltGraphView::PointLength(int index) const {
    return m_course->ComputePointLength(m_course->GetPoint(index));
}

int ZYLTPTiltGraphView::PointIndexAt(QMouseEvent *event) const {
    const int count = m_course ? m_course->GetNumPoints() : 0;
    const double x = mapToScene(event->position().toPoint()).x();
    // Arc lengths grow along the course: the first point beyond x by bisection.
    int lo = 0, hi = count;
    while (lo < hi) {
        const int mid = (lo + hi) / 2;
        if (PointLength(mid) > x)
            hi = mid;
        else
            lo = mid + 1;
    }
    return lo < count ? lo : count - 1;
}

void ZYLTPTiltGraphView::HandleMouseMove(QMouseEvent *event) {
    if (!m_course || m_course->GetNumPoints() == 0 || !scene())
        return;
    if (!m_hover) {
        m_hover = new ZYLTPTiltGraphMouseHover(m_course, this);
        m_hover->setZValue(0.8);
        m_hover->SetColor(QColor(143, 143, 143, 255));
        scene()->addItem(m_hover);
        m_range = new ZYLTPTiltGraphSelectionRange(m_course, this);
        m_range->setZValue(0.8);
        m_range->SetColor(QColor(152, 152, 152, 127));
        m_range->SetPreviewColor(QColor(179, 0, 0, 255));
        m_range->SetRanges(m_starts, m_ends);
        scene()->addItem(m_range);
    }
    const int index = PointIndexAt(event);
    const QPointF position = mapToScene(event->position().toPoint());
    m_hover->SetHover(index, position);
    if (m_pressIndex != -1)
        m_range->SetPreview(m_pressIndex, m_pressPosition, index, position);
}

void ZYLTPTiltGraphView::HandleMousePress(QMouseEvent *event) {
    if (!m_course || m_course->GetNumPoints() == 0)
        return;
    m_pressPosition = mapToScene(event->position().toPoint());
    m_pressIndex = PointIndexAt(event);
}

void ZYLTPTiltGraphView::HandleMouseRelease(QMouseEvent *) {
    m_pressIndex = -1;
    if (!m_range)
        return;
    int start = -1, end = -1;
    m_range->GetPreview(start, end);
    m_range->ClearPreview();
    if (start != -1 && end != -1)
        emit OnPreviewSelectionChanged(start, end);
}

void ZYLTPTiltGraphView::SetVisible(const QRectF &rect) {
    setSceneRect(rect);
    fitInView(rect, Qt::KeepAspectRatioByExpanding);
    if (scene())
        scene()->invalidate();
}

void ZYLTPTiltGraphView::Zoom(double factor) {
    const QRectF rect = sceneRect();
    if (!rect.isValid())
        return;
    QRectF zoomed(0.0, 0.0, rect.width() * factor, rect.height() * factor);
    zoomed.moveCenter(rect.center());
    SetVisible(zoomed);
}

void ZYLTPTiltGraphView::ZoomIn() {
    Zoom(0.9);
}

void ZYLTPTiltGraphView::ZoomOut() {
    Zoom(1.1);
}

void ZYLTPTiltGraphView::ZoomAll() {
    if (!scene())
        return;
    QRectF rect = scene()->sceneRect();
    if (!rect.isValid())
        return;
    const double width = rect.width();
    rect.setLeft(rect.left() - 0.01 * width);
    rect.setWidth(1.02 * width);
    SetVisible(rect);
}

void ZYLTPTiltGraphView::Shift(double fraction) {
    const QRectF rect = sceneRect();
    if (rect.isValid())
        SetVisible(rect.translated(fraction * rect.width(), 0.0));
}

void ZYLTPTiltGraphView::ShiftLeft() {
    Shift(-0.1);
}

void ZYLTPTiltGraphView::ShiftRight() {
    Shift(0.1);
}

void ZYLTPTiltGraphView::CenterOn(int index) {
    const QRectF rect = sceneRect();
    if (!m_course || index < 0 || index >= m_course->GetNumPoints() || !rect.isValid())
        return;
    const double length = PointLength(index);
    QRectF centred = rect;
    centred.setLeft(length - rect.width() * 0.5);
    centred.setRight(length + rect.width() * 0.5);
    SetVisible(centred);
}

void ZYLTPTiltGraphView::mousePressEvent(QMouseEvent *event) {
    QGraphicsView::mousePressEvent(event);
    emit OnMousePressEvent(event);
}

void ZYLTPTiltGraphView::mouseReleaseEvent(QMouseEvent *event) {
    QGraphicsView::mouseReleaseEvent(event);
    emit OnMouseReleaseEvent(event);
}

void ZYLTPTiltGraphView::mouseDoubleClickEvent(QMouseEvent *event) {
    QGraphicsView::mouseDoubleClickEvent(event);
    emit OnMouseDoubleClickEvent(event);
}

void ZYLTPTiltGraphView::mouseMoveEvent(QMouseEvent *event) {
    QGraphicsView::mouseMoveEvent(event);
    emit OnMouseMoveEvent(event);
}

void ZYLTPTiltGraphView::resizeEvent(QResizeEvent *event) {
    QGraphicsView::resizeEvent(event);
    fitInView(sceneRect(), Qt::KeepAspectRatioByExpanding);
    if (scene())
        scene()->invalidate();
}

void ZYLTPTiltGraphView::showEvent(QShowEvent *event) {
    QGraphicsView::showEvent(event);
    if (!m_shownOnce) {
        m_shownOnce = true;
        ZoomAll();
    }
}
