// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioSteeringLegend.h"

#include "ZYLTPProcessColoring.h"

#include "ZYLSysValue.h"

#include <QPainter>

namespace {
constexpr int Margin = 6;
constexpr int BarHeight = 14;
} // namespace

ZYLStudioSteeringLegend::ZYLStudioSteeringLegend(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void ZYLStudioSteeringLegend::SetLimit(double minRadius)
{
    m_limit = minRadius;
    adjustSize();
    update();
}

QSize ZYLStudioSteeringLegend::sizeHint() const
{
    const int line = fontMetrics().height();
    return {320, 2 * line + BarHeight + 3 * Margin};
}

void ZYLStudioSteeringLegend::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 215));
    painter.drawRoundedRect(rect(), 4, 4);

    const int line = fontMetrics().height();
    const QRect title(Margin, Margin, width() - 2 * Margin, line);
    painter.setPen(Qt::black);
    painter.drawText(title, Qt::AlignLeft | Qt::AlignVCenter, tr("Steering radius"));

    // One cell per colour bin, straight on the left, below the limit on the right.
    const QRect bar(Margin, title.bottom() + Margin, width() - 2 * Margin, BarHeight);
    constexpr int Bins = ZYLTPProcessColoring::NumBins;
    for (int k = 0; k < Bins; ++k) {
        const int bin = Bins - 1 - k;
        const int x0 = bar.left() + bar.width() * k / Bins, x1 = bar.left() + bar.width() * (k + 1) / Bins;
        painter.fillRect(QRect(x0, bar.top(), x1 - x0, bar.height()), ZYLTPProcessColoring::GetBinColor(bin));
    }
    painter.setPen(Qt::darkGray);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(bar.adjusted(0, 0, -1, -1));

    // Ratio limit/radius 0 at the left end, 0.5 (twice the limit) in the middle of the
    // gradient, 1 (the limit) where the last cell starts.
    painter.setPen(Qt::black);
    const QRect labels(bar.left(), bar.bottom() + Margin / 2, bar.width(), line);
    const int limitX = bar.left() + bar.width() * (Bins - 1) / Bins;
    const int twiceX = bar.left() + bar.width() * (Bins - 1) / (2 * Bins);
    auto show = [](double mm) { return ZYLSysValue(ZYLSysValue::Length, mm).ToString(); };
    painter.drawText(labels, Qt::AlignLeft | Qt::AlignVCenter, tr("straight"));
    if (m_limit > 0.0) {
        painter.drawText(QRect(twiceX - 60, labels.top(), 120, line), Qt::AlignCenter, show(2 * m_limit));
        painter.drawText(QRect(limitX - 120, labels.top(), 120 + bar.right() - limitX, line),
                         Qt::AlignRight | Qt::AlignVCenter, QStringLiteral("≤ %1").arg(show(m_limit)));
    }
}
