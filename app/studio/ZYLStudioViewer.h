// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLStudioCamera.h"

#include <QColor>
#include <QImage>
#include <QOpenGLWidget>

#include <memory>

class ZYLVisEnvironment;

/// The studio's 3-D view: draws what a ZYLVisEnvironment holds with OpenGL 3.3 (core profile)
/// and turns mouse input into the environment's entry points, so that picking and selection
/// are the environment's.
///
/// Drawing. Every visible virtual object is drawn with the primitives of its representation,
/// placed at its position frame, in the colour of each primitive's options: points as round
/// sprites of the point size, polylines and segments as lines of the line thickness, triangles
/// lit by a headlight on both sides. Selected objects are tinted towards the highlight colour
/// (towards its opposite hue when they are of about that colour already), pre-selected ones
/// are drawn brighter (darker when they are about white). Priorities form bands drawn in increasing order, and
/// the depth buffer is cleared between bands, so that a band lies on top of all lower ones.
/// Within a band, primitives without depth test come after those with it. Shown gizmos are
/// drawn last, on top of everything.
///
/// Buffers. A representation is uploaded to GPU buffers the first time it is drawn and reused,
/// by its unique id, while any object of the scene still uses it; the buffers of
/// representations no longer used are freed at the next frame. Primitives far from their
/// own origin are uploaded relative to their centre so that floats keep their precision.
/// Points and polylines whose consecutive vertices lie much closer than a pixel are drawn
/// through every k-th vertex of the same buffer (k a power of two, kept so that dots stay
/// within half a sprite and line vertices within two pixels of each other; four times that
/// while the user moves the camera).
///
/// Updates. The view repaints once per Changed() of its environment (the environment batches
/// changes) and after camera moves; it never watches single objects.
///
/// Mouse. Left drag orbits, middle drag or Shift+left drag pans, the wheel zooms towards the
/// cursor. A left drag that starts on a handle of a shown gizmo drags the gizmo instead. Moves
/// without a button call MouseMove with the ray under the cursor, a left press and release
/// without a drag calls MouseClick with the keyboard modifiers, leaving the widget calls
/// MouseLeave.
class ZYLStudioViewer : public QOpenGLWidget {
    Q_OBJECT

public:
    using Projection = ZYLStudioCamera::Projection;
    using StandardView = ZYLStudioCamera::StandardView;

    /// Pick radius of the view rays, in pixels.
    static constexpr double pickRadiusPixels = 4.0;

    explicit ZYLStudioViewer(QWidget *parent = nullptr);
    ~ZYLStudioViewer() override;

    /// Shows an environment, which the view borrows (null shows nothing). The view forgets the
    /// environment when it is destroyed.
    void SetEnvironment(ZYLVisEnvironment *environment);
    ZYLVisEnvironment *GetEnvironment() const;

    const ZYLStudioCamera &GetCamera() const;
    /// Replaces the camera and repaints.
    void SetCamera(const ZYLStudioCamera &camera);
    /// Looks at the whole scene (visible objects and shown gizmos) from the current direction.
    void FitAll();
    /// Turns the camera to a standard direction and fits the scene into the view.
    void SetStandardView(StandardView view);
    void SetProjection(Projection projection);
    Projection GetProjection() const;

    /// Returns the view ray under a widget position, with the view's pick radius.
    ZYLVisPickRay GetRay(const QPointF &widgetPos) const;
    /// Returns the widget position where a world point is drawn.
    QPointF Project(const ZYLMathPoint &point) const;

    /// Renders the scene with the current camera into an image of the given size in pixels
    /// (an empty size takes the widget's framebuffer size).
    QImage RenderToImage(const QSize &size = {});

    /// Sets the background gradient, from the top of the view to its bottom.
    void SetBackgroundColors(const QColor &top, const QColor &bottom);
    /// Sets the colour selected objects are tinted towards.
    void SetHighlightColor(const QColor &color);
    /// Returns the colour an object of `color` is drawn in (before lighting) when selected or
    /// pre-selected.
    QColor GetDisplayColor(const QColor &color, bool selected, bool preselected) const;

    /// Returns how many representations have been uploaded to GPU buffers (for diagnostics).
    quint64 GetUploadCount() const;
    /// Returns how many representations have buffers now.
    int GetCachedRepCount() const;
    /// Returns whether the view is being turned, panned or zoomed: it then draws dense points
    /// and polylines coarser, and in full detail again on release or shortly after the wheel
    /// stops.
    bool IsInteracting() const;

    /// Returns how many vertices the last frame or image sent to OpenGL (dense points and
    /// polylines are thinned to the pixels they cover).
    qint64 GetDrawnVertexCount() const;
    /// Returns how many frames have been drawn.
    quint64 GetFrameCount() const;

signals:
    /// The model point under the mouse changed (for a status bar).
    void MousePointChanged(const ZYLMathPoint &point);

protected:
    void initializeGL() override;
    void paintGL() override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    void RenderScene(const QSize &pixelSize, const QSizeF &viewport);
    void SetInteracting(bool interacting);
    /// Returns the box of what is drawn: visible objects and shown gizmos.
    ZYLMathBoundingBox GetSceneBox() const;
    void ReleaseGpuResources();

    struct Data;
    std::unique_ptr<Data> d;
};
