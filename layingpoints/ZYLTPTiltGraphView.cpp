// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPTiltGraphView.h"

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
}

const ZYLTPCourse *ZYLTPTiltGraphView::GetCourse() const {
    return m_course;
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
