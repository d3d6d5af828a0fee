// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPTiltGraphBaseItem.h"

#include <QCoreApplication>
#include <QPointF>

/// The read-out of the point under the mouse in a tilt graph: a vertical line at the point
/// and its name ("Point.N") beside the mouse, on the left of it near the right edge.
class ZYLTPTiltGraphMouseHover : public ZYLTPTiltGraphBaseItem {
    Q_DECLARE_TR_FUNCTIONS(ZYLTPTiltGraphMouseHover)
public:
    ZYLTPTiltGraphMouseHover(const ZYLTPCourse *course, ZYLTPTiltGraphView *view);
    ~ZYLTPTiltGraphMouseHover() override;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

    /// Shows point `index` (0-based) with the mouse at `position` (scene); throws
    /// `ZYLSysOutOfBoundsException` for an index outside the course.
    void SetHover(int index, const QPointF &position);

private:
    int m_index = -1;
    QPointF m_position;
};
