// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPTiltGraphPoints.h"

#include "ZYLTPCourse.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPOnPartTrajectory.h"

#include <QPainter>

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
    // Every inner point ends one segment and starts the next, so it is listed twice; the
    // crosses are gathered as lines too, so that the whole curve is three draw calls.
    std::vector<QPointF> segments;
    std::vector<QLineF> crosses;
    segments.reserve(size_t(2 * count));
    crosses.reserve(size_t(2 * count));
    for (int i = 0; i < count; ++i) {
        const ZYLTPOnPartPoint *point = GetCourse()->GetPoint(i);
        const auto *trajectory = point ? qobject_cast<const ZYLTPOnPartTrajectory *>(point->GetTrajectory()) : nullptr;
        if (!trajectory)
            continue;
        const double x = GetCourse()->ComputePointLength(point) / scale.s;
        const double tilt = m_forward ? trajectory->GetForwardTilt() : trajectory->GetSideTilt();
        const double y = GetYScale() * (-tilt * scale.halfH) / scale.s;
        segments.emplace_back(x, y);
        if (i > 0 && i < count - 1)
            segments.emplace_back(x, y);
        crosses.emplace_back(x - marker, 0.0, x + marker, 0.0);
        crosses.emplace_back(x, -marker, x, marker);
        if (marks && m_collisionFlags[i])
            painter->drawEllipse(QPointF(x, y), marker * scale.s, marker * scale.s);
    }
    painter->drawLines(crosses.data(), int(crosses.size()));
    painter->drawLines(segments.data(), int(segments.size() / 2));
    EndPaint(painter);
}
