// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPTiltGraphBaseItem.h"

#include <QList>
#include <QPointF>

/// The selected point ranges of a tilt graph, as translucent bands, and the range being
/// dragged, as two vertical lines. Range ends are exclusive (the first unselected point)
/// except at the last point of the course; a range of one point has no band.
class ZYLTPTiltGraphSelectionRange : public ZYLTPTiltGraphBaseItem {
public:
    ZYLTPTiltGraphSelectionRange(const ZYLTPCourse *course, ZYLTPTiltGraphView *view);
    ~ZYLTPTiltGraphSelectionRange() override;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

    /// Sets the ranges; lists of unequal length throw `ZYLSysException`.
    void SetRanges(const QList<int> &starts, const QList<int> &ends);
    /// Sets the dragged range from point `start` at `startPosition` to point `end` at
    /// `endPosition` (scene), in increasing order; an index outside the course throws
    /// `ZYLSysOutOfBoundsException`.
    void SetPreview(int start, const QPointF &startPosition, int end, const QPointF &endPosition);
    /// Returns the dragged range's indices (-1 when there is none).
    void GetPreview(int &start, int &end) const;
    void ClearPreview();
    void SetPreviewColor(const QColor &color);

private:
    QList<int> m_starts;
    QList<int> m_ends;
    int m_previewStart = -1;
    int m_previewEnd = -1;
    QPointF m_previewStartPosition;
    QPointF m_previewEndPosition;
    QColor m_previewColor;
};
