// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPTiltGraphBaseItem.h"

/// The vertical axis of a tilt graph, standing at the head position (or at the left edge of
/// the visible course): a thick head line, ticks at three multiples of a step that suits the y
/// scale, labelled in degrees, and the zero line along the course.
class ZYLTPTiltGraphVerticalAxis : public ZYLTPTiltGraphBaseItem {
public:
    ZYLTPTiltGraphVerticalAxis(const ZYLTPCourse *course, ZYLTPTiltGraphView *view);
    ~ZYLTPTiltGraphVerticalAxis() override;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

    /// Sets the 0-based point the axis stands at; outside the course the axis follows the view.
    void SetHeadIndex(int index);
    void SetHeadColor(const QColor &color);
    void SetZeroLineColor(const QColor &color);
    /// Returns the tick step in degrees for a y scale: 20, 10, 5, 5, 3 for 1 to 5.
    static int TickStep(int yScale);

private:
    QColor m_headColor = QColor(0, 255, 0, 255);
    QColor m_zeroLineColor = QColor(0, 0, 0, 255);
    int m_headIndex = 0;
};
