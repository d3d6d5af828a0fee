// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPTiltGraphVerticalAxis.h"

#include <QPainter>

namespace {

// The value of pi the graphs' tick arithmetic uses.
constexpr double Pi = 3.1415926;

} // namespace

ZYLTPTiltGraphVerticalAxis::ZYLTPTiltGraphVerticalAxis(const ZYLTPCourse *course, ZYLTPTiltGraphView *view)
    : ZYLTPTiltGraphBaseItem(course, view) {}

ZYLTPTiltGraphVerticalAxis::~ZYLTPTiltGraphVerticalAxis() = default;

void ZYLTPTiltGraphVerticalAxis::SetHeadIndex(int index) {
    m_headIndex = index;
    update();
}

void ZYLTPTiltGraphVerticalAxis::SetHeadColor(const QColor &color) {
    m_headColor = color;
    update();
}

void ZYLTPTiltGraphVerticalAxis::SetZeroLineColor(const QColor &color) {
    m_zeroLineColor = color;
    update();
}

int ZYLTPTiltGraphVerticalAxis::TickStep(int yScale) {
    const double d = 180.0 / (yScale * Pi) / 3.0;
    return d < 4 ? 3 : d < 8 ? 5 : d < 12 ? 10 : d < 22 ? 20 : 25;
}

void ZYLTPTiltGraphVerticalAxis::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *) {
    const int count = GetNumPoints();
    if (count == 0)
        return;
    const PaintScale scale = BeginPaint(painter);
    double length = GetPointLength(count - 1);
    if (m_headIndex >= 0 && m_headIndex < count) {
        length = GetPointLength(m_headIndex);
    } else {
        for (int i = 0; i < count; ++i) {
            if (GetPointLength(i) > scale.visible.left()) {
                length = GetPointLength(i);
                break;
            }
        }
    }
    const double ax = length / scale.s;
    const double reach = scale.halfH * 1.3 / scale.s;
    const int marker = GetMarkerSize();
    painter->setPen(QPen(m_headColor, 2 * marker));
    painter->drawLine(QPointF(ax, -reach), QPointF(ax, reach));

    painter->setPen(QPen(GetColor(), 1));
    DrawCross(painter, QPointF(ax, 0.0), 1.0);
    const int step = TickStep(GetYScale());
    for (int k = 1; k <= 3; ++k) {
        const double yk = k * step * Pi * scale.halfH * GetYScale() / 180.0 / scale.s;
        DrawCross(painter, QPointF(ax, -yk), 1.0);
        DrawCross(painter, QPointF(ax, yk), 1.0);
        const QString value = QString::number(double(k * step), 'g') + QChar(0x00B0);
        painter->drawText(QPoint(int(ax + 4 * marker), int(-yk - 3 * marker)), value);
        painter->drawText(QPoint(int(ax + 4 * marker), int(yk + 3 * marker)), QLatin1Char('-') + value);
    }
    painter->setPen(QPen(m_zeroLineColor, 1));
    painter->drawLine(QPointF(0.0, 0.0), QPointF(GetLength() / scale.s, 0.0));
    EndPaint(painter);
}
