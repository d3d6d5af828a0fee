// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPTiltGraphMouseHover.h"

#include <QPainter>

ZYLTPTiltGraphMouseHover::ZYLTPTiltGraphMouseHover(const ZYLTPCourse *course, ZYLTPTiltGraphView *view)
    : ZYLTPTiltGraphBaseItem(course, view) {
    setAcceptHoverEvents(true);
}

ZYLTPTiltGraphMouseHover::~ZYLTPTiltGraphMouseHover() = default;

void ZYLTPTiltGraphMouseHover::SetHover(int index, const QPointF &position) {
    CheckPointIndex(index);
    m_index = index;
    m_position = position;
    update();
}

void ZYLTPTiltGraphMouseHover::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *) {
    if (m_index == -1 || m_index >= GetNumPoints())
        return;
    const PaintScale scale = BeginPaint(painter);
    const double length = GetPointLength(m_index);
    const int marker = GetMarkerSize();
    // Near the right edge the text goes to the left of the mouse, so that it stays visible.
    const double dx = length > scale.visible.right() - 0.2 * scale.visible.width() ? -4 * marker : 2 * marker;
    painter->setPen(QPen(GetColor(), 1));
    painter->drawText(QPointF(m_position.x() / scale.s + dx, m_position.y() / scale.s), tr("Point.%1").arg(m_index + 1));
    const int x = int(length / scale.s);
    const double reach = scale.halfH * 1.3 / scale.s;
    painter->drawLine(x, int(-reach), x, int(reach));
    EndPaint(painter);
}
