// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPTiltGraphBaseItem.h"

#include <QList>

/// The curve of one tilt graph: the forward (or side) tilt of every laying point, drawn as
/// segments between consecutive points, a cross on the zero line under each point and, when
/// collisions are shown, a filled circle on each colliding point.
class ZYLTPTiltGraphPoints : public ZYLTPTiltGraphBaseItem {
public:
    /// Creates the curve of the forward tilt (`forward`) or of the side tilt.
    ZYLTPTiltGraphPoints(const ZYLTPCourse *course, ZYLTPTiltGraphView *view, bool forward);
    ~ZYLTPTiltGraphPoints() override;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

    void SetShowCollisions(bool show);
    /// Sets one flag per point, true where the point collides.
    void SetCollisionFlags(const QList<bool> &flags);

private:
    bool m_forward;
    bool m_showCollisions = false;
    QList<bool> m_collisionFlags;
};
