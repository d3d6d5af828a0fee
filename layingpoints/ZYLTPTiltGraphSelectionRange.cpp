// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPTiltGraphSelectionRange.h"

#include "ZYLSysException.h"

#include <QCoreApplication>
#include <QPainter>

#include <utility>

ZYLTPTiltGraphSelectionRange::ZYLTPTiltGraphSelectionRange(const ZYLTPCourse *course, ZYLTPTiltGraphView *view)
    : ZYLTPTiltGraphBaseItem(course, view) {
    setAcceptHoverEvents(true);
}

ZYLTPTiltGraphSelectionRange::~ZYLTPTiltGraphSelectionRange() = default;

void ZYLTPTiltGraphSelectionRange::SetRanges(const QList<int> &starts, const QList<int> &ends) {
    if (starts.size() != ends.size())
        throw ZYLSysException(QCoreApplication::translate("ZYLTPTiltGraphSelectionRange", "range sizes are not equal"));
    m_starts = starts;
    m_ends = ends;
    update();
}

void ZYLTPTiltGraphSelectionRange::SetPreview(int start, const QPointF &startPosition, int end,
                                              const QPointF &endPosition) {
    CheckPointIndex(start);
    CheckPointIndex(end);
    m_previewStart = start;
    m_previewEnd = end;
    m_previewStartPosition = startPosition;
    m_previewEndPosition = endPosition;
    if (start > end) {
        std::swap(m_previewStart, m_previewEnd);
        std::swap(m_previewStartPosition, m_previewEndPosition);
    }
    update();
}

void ZYLTPTiltGraphSelectionRange::GetPreview(int &start, int &end) const {
    start = m_previewStart;
    end = m_previewEnd;
}

void ZYLTPTiltGraphSelectionRange::ClearPreview() {
    m_previewStart = m_previewEnd = -1;
    update();
}

void ZYLTPTiltGraphSelectionRange::SetPreviewColor(const QColor &color) {
    m_previewColor = color;
    update();
}

void ZYLTPTiltGraphSelectionRange::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *) {
    const int count = GetNumPoints();
    const PaintScale scale = BeginPaint(painter);
    const double reach = scale.halfH * 1.3 / scale.s;
    if (!m_starts.isEmpty()) {
        painter->setPen(QPen(GetColor(), 1));
        painter->setBrush(QBrush(GetColor(), Qt::SolidPattern));
        for (int k = 0; k < m_starts.size(); ++k) {
            int a = m_starts[k];
            int b = m_ends[k] == count - 1 ? m_ends[k] : m_ends[k] - 1;
            if (b < a)
                std::swap(a, b);
            if (a == b || a < 0 || b >= count)
                continue;
            const double left = GetPointLength(a);
            painter->drawRect(int(left / scale.s), int(-reach), int((GetPointLength(b) - left) / scale.s), int(2 * reach));
        }
    }
    if (m_previewStart != -1 && m_previewEnd != -1) {
        painter->setPen(QPen(m_previewColor, 1));
        for (const QPointF &position : {m_previewStartPosition, m_previewEndPosition})
            painter->drawLine(QPointF(position.x() / scale.s, -reach), QPointF(position.x() / scale.s, 2 * reach));
    }
    EndPaint(painter);
}
