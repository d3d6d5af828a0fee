// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QColor>
#include <QGraphicsItem>
#include <QRectF>

#include <memory>

class ZYLTPCourse;
class ZYLTPTiltGraphView;

/// The base of the items of a tilt graph: the scene's x axis is the arc length along the
/// course (0 to the course length), the y axis the tilt. Every item covers the square
/// (0, -length/2, length, length) and is drawn at (0, 0).
///
/// Items compute their drawing scale from the view on each paint, so that zooming and panning
/// (which only change the view's scene rectangle) need no item update: after `BeginPaint` the
/// painter draws in pixels of the view, a scene x is drawn at x / s and a vertical position is
/// given in pixels from the zero line, so that a tilt of 1 / y scale (radians) reaches half the
/// view's height whatever the zoom.
class ZYLTPTiltGraphBaseItem : public QGraphicsItem {
public:
    /// Creates the item drawing `course` (borrowed) for `view` (borrowed).
    ZYLTPTiltGraphBaseItem(const ZYLTPCourse *course, ZYLTPTiltGraphView *view);
    ~ZYLTPTiltGraphBaseItem() override;

    QRectF boundingRect() const override;
    /// Draws nothing; the graph items draw their own parts.
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;
    /// Reads the course length again, announcing the geometry change.
    virtual void UpdateLength();
    /// Draws a cross of half size marker size x `scale` around `centre`.
    virtual void DrawCross(QPainter *painter, const QPointF &centre, double scale) const;

    /// Sets the vertical magnification; throws `ZYLSysOutOfBoundsException` below 1.
    void SetYScale(int scale);
    void SetColor(const QColor &color);

protected:
    /// The drawing scale of one paint: scene units per pixel, half the visible height in
    /// scene units and the visible scene rectangle.
    struct PaintScale {
        double s = 1.0;
        double halfH = 0.0;
        QRectF visible;
    };
    /// Remembers the painter's transform, pen and brush and scales it to view pixels.
    PaintScale BeginPaint(QPainter *painter) const;
    /// Restores what `BeginPaint` remembered.
    void EndPaint(QPainter *painter) const;

    const ZYLTPCourse *GetCourse() const;
    ZYLTPTiltGraphView *GetView() const;
    double GetLength() const;
    int GetYScale() const;
    QColor GetColor() const;
    int GetMarkerSize() const;
    /// Returns the number of points of the course (0 without one).
    int GetNumPoints() const;
    /// Returns the arc length of point i from the course start.
    double GetPointLength(int i) const;
    /// Throws `ZYLSysOutOfBoundsException` unless 0 <= index < points.
    void CheckPointIndex(int index) const;

private:
    struct Data;
    std::unique_ptr<Data> d;
};
