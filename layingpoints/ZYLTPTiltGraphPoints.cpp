// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPTiltGraphPoints.h"

#include "ZYLTPCourse.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPOnPartTrajectory.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

ZYLTPTiltGraphPoints::ZYLTPTiltGraphPoints(const ZYLTPCourse *course, ZYLTPTiltGraphView *view, bool forward)
    : ZYLTPTiltGraphBaseItem(course, view), m_forward(forward) {}

ZYLTPTiltGraphPoints::~ZYLTPTiltGraphPoints() = default;

void ZYLTPTiltGraphPoints::SetShowCollisions(bool show) {
    m_showCollisions = show;
    update();
}

void ZYLTPTiltGraphPoints::SetCollisionFlags(const QList<bool> &flags) {
    m_collisionFlags = flags;
    update();
}

void ZYLTPTiltGraphPoints::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *) {
    const PaintScale scale = BeginPaint(painter);
    painter->setPen(QPen(GetColor(), 1));
    painter->setBrush(QBrush(GetColor(), Qt::SolidPattern));
    const int count = GetNumPoints();
    const bool marks = m_showCollisions && m_collisionFlags.size() >= count;
    const double marker = GetMarkerSize();
    // The curve in view pixels. Where points are denser than pixels, each pixel column gets
    // what it can show: the segment from the previous column, its vertical extent and one
    // cross wide enough for all its points; that looks the same and draws a few thousand
    // lines instead of tens of thousands.
    const bool dense = count > 2 * std::max(1.0, scale.visible.width() / scale.s);
    std::vector<QLineF> lines;
    lines.reserve(size_t(dense ? 4 * scale.visible.width() / scale.s + 8 : 3 * count));
    struct Column {
        double x = 0.0, left = 0.0, right = 0.0, first = 0.0, last = 0.0, low = 0.0, high = 0.0;
    };
    Column column;
    bool open = false;
    std::optional<QPointF> previous;
    const auto closeColumn = [&] {
        lines.emplace_back(column.left - marker, 0.0, column.right + marker, 0.0);
        lines.emplace_back(column.x, -marker, column.x, marker);
        if (column.high > column.low)
            lines.emplace_back(column.x, column.low, column.x, column.high);
    };
    for (int i = 0; i < count; ++i) {
        const ZYLTPOnPartPoint *point = GetCourse()->GetPoint(i);
        const auto *trajectory = point ? qobject_cast<const ZYLTPOnPartTrajectory *>(point->GetTrajectory()) : nullptr;
        if (!trajectory)
            continue;
        const double x = GetCourse()->ComputePointLength(point) / scale.s;
        const double tilt = m_forward ? trajectory->GetForwardTilt() : trajectory->GetSideTilt();
        const double y = GetYScale() * (-tilt * scale.halfH) / scale.s;
        if (marks && m_collisionFlags[i])
            painter->drawEllipse(QPointF(x, y), marker * scale.s, marker * scale.s);
        if (!dense) {
            if (previous)
                lines.emplace_back(*previous, QPointF(x, y));
            lines.emplace_back(x - marker, 0.0, x + marker, 0.0);
            lines.emplace_back(x, -marker, x, marker);
            previous = QPointF(x, y);
            continue;
        }
        const double pixel = std::floor(x);
        if (open && pixel == std::floor(column.x)) {
            column.right = x;
            column.last = y;
            column.low = std::min(column.low, y);
            column.high = std::max(column.high, y);
            continue;
        }
        if (open) {
            closeColumn();
            lines.emplace_back(column.x, column.last, x, y);
        }
        column = Column{x, x, x, y, y, y, y};
        open = true;
    }
    if (open)
        closeColumn();
    painter->drawLines(lines.data(), int(lines.size()));
    EndPaint(painter);
}
