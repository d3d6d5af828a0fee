// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QWidget>

/// The legend of the colouring by steering radius, laid over the 3-D view: a bar of the
/// colours of `ZYLTPProcessColoring` from straight (green) through twice the limit (yellow)
/// to the limit and below (red), with the limit in the user's display length unit.
class ZYLStudioSteeringLegend : public QWidget {
    Q_OBJECT
public:
    explicit ZYLStudioSteeringLegend(QWidget *parent = nullptr);

    /// Sets the minimum steering radius the colours refer to (mm).
    void SetLimit(double minRadius);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double m_limit = 0.0;
};
