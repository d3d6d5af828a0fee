// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLMathAxis.h"
#include "ZYLMathBoundingBox.h"
#include "ZYLVisPickRay.h"

#include <QMatrix4x4>
#include <QPointF>
#include <QSizeF>

/// The camera of the 3-D view: it looks at a target point from a distance, along a view
/// direction with an up direction, in perspective or orthographic projection. A plain value
/// type; all state is kept in double precision and only the matrices handed to OpenGL are
/// floats.
///
/// Widget positions are in logical pixels with the origin at the top left corner; a viewport
/// is the widget's size in the same units. The orthographic view shows the height that the
/// perspective view shows at the target, so switching projection keeps the scale there.
/// Near and far planes enclose the scene box given by SetSceneBox.
class ZYLStudioCamera {
public:
    enum class Projection { Perspective, Orthographic };
    enum class StandardView { Top, Bottom, Front, Back, Left, Right, Isometric };

    /// Builds an isometric perspective camera looking at the origin from 100 mm.
    ZYLStudioCamera();

    Projection GetProjection() const { return m_projection; }
    void SetProjection(Projection projection) { m_projection = projection; }

    const ZYLMathPoint &GetTarget() const { return m_target; }
    void SetTarget(const ZYLMathPoint &target) { m_target = target; }
    double GetDistance() const { return m_distance; }
    /// Sets the distance from the eye to the target; values that are not positive and finite
    /// are ignored.
    void SetDistance(double distance);
    /// Returns the vertical field of view of the perspective projection in radians.
    double GetFieldOfView() const { return m_fieldOfView; }

    /// Returns the unit direction the camera looks along.
    ZYLMathVector GetViewDirection() const { return m_up.Cross(m_right); }
    const ZYLMathVector &GetUpDirection() const { return m_up; }
    const ZYLMathVector &GetRightDirection() const { return m_right; }
    /// Turns the camera to look along `viewDirection` with `up` projected normal to it. Returns
    /// false, changing nothing, when the two are parallel or zero.
    bool SetOrientation(const ZYLMathVector &viewDirection, const ZYLMathVector &up);
    /// Returns the position of the eye (the target moved back by the distance).
    ZYLMathPoint GetEye() const;
    /// Returns the eye frame: origin at the eye, first direction right, second up, third
    /// pointing back from the scene, as OpenGL's eye coordinates.
    ZYLMathAxis GetEyeFrame() const;

    /// Sets the box the near and far planes must enclose (world coordinates).
    void SetSceneBox(const ZYLMathBoundingBox &box) { m_sceneBox = box; }
    /// Returns the distances of the near and far clipping planes from the eye. The near plane
    /// may lie behind the eye in orthographic projection.
    std::pair<double, double> GetClipRange() const;
    /// Returns half the height of the view at the target, in model units.
    double GetHalfHeight() const;
    /// Returns the size of one pixel at the target, in model units.
    double GetPixelSize(const QSizeF &viewport) const;

    /// Returns the projection matrix for a viewport.
    QMatrix4x4 GetProjectionMatrix(const QSizeF &viewport) const;
    /// Returns the matrix from coordinates relative to `localOrigin` in `frame` to eye
    /// coordinates. Composed in double precision so that large world coordinates cancel
    /// before they become floats.
    QMatrix4x4 GetModelViewMatrix(const ZYLMathAxis &frame, const ZYLMathPoint &localOrigin = {}) const;

    /// Returns the view ray through a widget position, with a pick radius of `pickPixels`
    /// pixels: constant in orthographic projection, growing with depth in perspective. The ray
    /// starts at the eye (perspective) or on the near plane (orthographic).
    ZYLVisPickRay GetRay(const QPointF &widgetPos, const QSizeF &viewport, double pickPixels) const;
    /// Returns the widget position where a world point is drawn (undefined behind the eye).
    QPointF Project(const ZYLMathPoint &point, const QSizeF &viewport) const;

    /// Turns the camera about the target by the angles of a mouse drag in pixels: horizontal
    /// motion turns about the up direction, vertical motion about the right direction.
    void Orbit(double dxPixels, double dyPixels, const QSizeF &viewport);
    /// Moves the camera so that the point at the target's depth follows a mouse drag.
    void Pan(double dxPixels, double dyPixels, const QSizeF &viewport);
    /// Scales the distance by `factor` (< 1 zooms in) keeping the point at the target's depth
    /// under `widgetPos` fixed on screen.
    void Zoom(double factor, const QPointF &widgetPos, const QSizeF &viewport);
    /// Looks at the centre of a box from a distance at which the whole box is in the view,
    /// keeping the orientation. An empty box centres the origin.
    void Fit(const ZYLMathBoundingBox &box, const QSizeF &viewport);
    /// Turns the camera to a standard direction (Z up), keeping target and distance.
    void SetStandardView(StandardView view);

private:
    /// Returns the vertical and horizontal half extents of the view at unit depth
    /// (perspective) or in model units (orthographic).
    std::pair<double, double> GetHalfExtents(const QSizeF &viewport) const;

    Projection m_projection = Projection::Perspective;
    ZYLMathPoint m_target;
    double m_distance = 100.0;
    double m_fieldOfView;
    ZYLMathVector m_right{1.0, 0.0, 0.0};
    ZYLMathVector m_up{0.0, 1.0, 0.0};
    ZYLMathBoundingBox m_sceneBox;
};
