// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPTiltGraphBaseItem.h"

#include "ZYLTPTiltGraphView.h"

#include "ZYLTPCourse.h"
#include "ZYLTPOnPartPoint.h"

#include "ZYLSysOutOfBoundsException.h"

#include <QPainter>

#include <limits>

struct ZYLTPTiltGraphBaseItem::Data {
    const ZYLTPCourse *course = nullptr;
    ZYLTPTiltGraphView *view = nullptr;
    double length = 0.0;
    int yScale = 1;
    QColor color = QColor(0, 0, 0, 255);
    int markerSize = 3;
    // What BeginPaint remembered, for EndPaint.
    mutable QTransform transform;
    mutable QPen pen;
    mutable QBrush brush;
};

ZYLTPTiltGraphBaseItem::ZYLTPTiltGraphBaseItem(const ZYLTPCourse *course, ZYLTPTiltGraphView *view)
    : d(std::make_unique<Data>()) {
    d->course = course;
    d->view = view;
    d->length = course ? course->GetLength() : 0.0;
}

ZYLTPTiltGraphBaseItem::~ZYLTPTiltGraphBaseItem() = default;

QRectF ZYLTPTiltGraphBaseItem::boundingRect() const {
    return QRectF(0.0, -d->length / 2.0, d->length, d->length);
}

void ZYLTPTiltGraphBaseItem::paint(QPainter *, const QStyleOptionGraphicsItem *, QWidget *) {}

void ZYLTPTiltGraphBaseItem::UpdateLength() {
    // Announcing a change that is none would take the item out of the scene's index until
    // the index catches up.
    const double length = d->course ? d->course->GetLength() : 0.0;
    if (length == d->length)
        return;
    prepareGeometryChange();
    d->length = length;
}

void ZYLTPTiltGraphBaseItem::DrawCross(QPainter *painter, const QPointF &centre, double scale) const {
    const double half = d->markerSize * scale;
    painter->drawLine(QPointF(centre.x() - half, centre.y()), QPointF(centre.x() + half, centre.y()));
    painter->drawLine(QPointF(centre.x(), centre.y() - half), QPointF(centre.x(), centre.y() + half));
}

void ZYLTPTiltGraphBaseItem::SetYScale(int scale) {
    if (scale < 1)
        throw ZYLSysOutOfBoundsException(scale, 1, std::numeric_limits<double>::infinity());
    if (scale == d->yScale)
        return;
    d->yScale = scale;
    update();
}

void ZYLTPTiltGraphBaseItem::SetColor(const QColor &color) {
    d->color = color;
    update();
}

ZYLTPTiltGraphBaseItem::PaintScale ZYLTPTiltGraphBaseItem::BeginPaint(QPainter *painter) const {
    PaintScale scale;
    const QRect rect = d->view->rect();
    const QPointF topLeft = d->view->mapToScene(rect.topLeft());
    const QPointF bottomRight = d->view->mapToScene(rect.bottomRight());
    scale.visible = QRectF(topLeft, bottomRight);
    const double visibleHeight = bottomRight.y() - topLeft.y();
    scale.s = rect.height() > 0 && visibleHeight > 0.0 ? visibleHeight / rect.height() : 1.0;
    scale.halfH = visibleHeight * 0.5;
    d->transform = painter->transform();
    d->pen = painter->pen();
    d->brush = painter->brush();
    painter->scale(scale.s, scale.s);
    return scale;
}

void ZYLTPTiltGraphBaseItem::EndPaint(QPainter *painter) const {
    painter->setTransform(d->transform);
    painter->setPen(d->pen);
    painter->setBrush(d->brush);
}

const ZYLTPCourse *ZYLTPTiltGraphBaseItem::GetCourse() const {
    return d->course;
}

ZYLTPTiltGraphView *ZYLTPTiltGraphBaseItem::GetView() const {
    return d->view;
}

double ZYLTPTiltGraphBaseItem::GetLength() const {
    return d->length;
}

int ZYLTPTiltGraphBaseItem::GetYScale() const {
    return d->yScale;
}

QColor ZYLTPTiltGraphBaseItem::GetColor() const {
    return d->color;
}

int ZYLTPTiltGraphBaseItem::GetMarkerSize() const {
    return d->markerSize;
}

int ZYLTPTiltGraphBaseItem::GetNumPoints() const {
    return d->course ? d->course->GetNumPoints() : 0;
}

double ZYLTPTiltGraphBaseItem::GetPointLength(int i) const {
    return d->course->ComputePointLength(d->course->GetPoint(i));
}

void ZYLTPTiltGraphBaseItem::CheckPointIndex(int index) const {
    if (index < 0 || index >= GetNumPoints())
        throw ZYLSysOutOfBoundsException(index, 0, GetNumPoints() - 1);
}
