// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioCamera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {
constexpr double defaultFieldOfView = 30.0 * std::numbers::pi / 180.0;
// Extra room around a fitted scene so that it does not touch the border.
constexpr double fitMargin = 1.1;

double aspectOf(const QSizeF &viewport)
{
    return viewport.height() > 0.0 && viewport.width() > 0.0 ? viewport.width() / viewport.height() : 1.0;
}
} // namespace

ZYLStudioCamera::ZYLStudioCamera() : m_fieldOfView(defaultFieldOfView)
{
    SetStandardView(StandardView::Isometric);
}

void ZYLStudioCamera::SetDistance(double distance)
{
    if (std::isfinite(distance) && distance > 0.0)
        m_distance = distance;
}

bool ZYLStudioCamera::SetOrientation(const ZYLMathVector &viewDirection, const ZYLMathVector &up)
{
    const auto forward = viewDirection.Normalized();
    if (!forward)
        return false;
    const auto right = forward->Cross(up).Normalized();
    if (!right || right->GetLength() < 0.5)
        return false;
    m_right = *right;
    m_up = right->Cross(*forward);
    return true;
}

ZYLMathPoint ZYLStudioCamera::GetEye() const
{
    return m_target - GetViewDirection() * m_distance;
}

ZYLMathAxis ZYLStudioCamera::GetEyeFrame() const
{
    return ZYLMathAxis(GetEye(), m_right, m_up);
}

std::pair<double, double> ZYLStudioCamera::GetClipRange() const
{
    double centreDepth = m_distance;
    double radius = m_distance;
    if (!m_sceneBox.IsEmpty()) {
        centreDepth = (m_sceneBox.GetCenter() - GetEye()).Dot(GetViewDirection());
        radius = std::max(0.5 * m_sceneBox.GetDiagonal().GetLength(), 1e-6 * m_distance);
    }
    // A little slack keeps geometry on the bounding sphere from being clipped by rounding.
    radius *= 1.02;
    // The target's neighbourhood must stay visible even when the scene is elsewhere.
    double nearPlane = std::min(centreDepth - radius, 0.5 * m_distance);
    double farPlane = std::max(centreDepth + radius, 2.0 * m_distance);
    if (m_projection == Projection::Perspective)
        // The depth buffer has a fixed relative resolution: keep near away from zero.
        nearPlane = std::max(nearPlane, farPlane * 1e-4);
    return {nearPlane, farPlane};
}

double ZYLStudioCamera::GetHalfHeight() const
{
    return m_distance * std::tan(0.5 * m_fieldOfView);
}

double ZYLStudioCamera::GetPixelSize(const QSizeF &viewport) const
{
    return viewport.height() > 0.0 ? 2.0 * GetHalfHeight() / viewport.height() : 0.0;
}

std::pair<double, double> ZYLStudioCamera::GetHalfExtents(const QSizeF &viewport) const
{
    const double halfHeight = m_projection == Projection::Perspective ? std::tan(0.5 * m_fieldOfView) : GetHalfHeight();
    return {halfHeight, halfHeight * aspectOf(viewport)};
}

QMatrix4x4 ZYLStudioCamera::GetProjectionMatrix(const QSizeF &viewport) const
{
    const auto [nearPlane, farPlane] = GetClipRange();
    const auto [halfHeight, halfWidth] = GetHalfExtents(viewport);
    QMatrix4x4 matrix;
    if (m_projection == Projection::Perspective)
        matrix.frustum(float(-halfWidth * nearPlane), float(halfWidth * nearPlane), float(-halfHeight * nearPlane),
                       float(halfHeight * nearPlane), float(nearPlane), float(farPlane));
    else
        matrix.ortho(float(-halfWidth), float(halfWidth), float(-halfHeight), float(halfHeight), float(nearPlane),
                     float(farPlane));
    return matrix;
}

QMatrix4x4 ZYLStudioCamera::GetModelViewMatrix(const ZYLMathAxis &frame, const ZYLMathPoint &localOrigin) const
{
    const ZYLMathAxis inEye = GetEyeFrame().ToLocal(frame);
    const ZYLMathPoint origin = inEye.ToGlobal(localOrigin);
    const ZYLMathVector &a = inEye.GetFirstDirection();
    const ZYLMathVector &b = inEye.GetSecondDirection();
    const ZYLMathVector &c = inEye.GetThirdDirection();
    return QMatrix4x4(float(a.X()), float(b.X()), float(c.X()), float(origin.X()), //
                      float(a.Y()), float(b.Y()), float(c.Y()), float(origin.Y()), //
                      float(a.Z()), float(b.Z()), float(c.Z()), float(origin.Z()), //
                      0.0f, 0.0f, 0.0f, 1.0f);
}

ZYLVisPickRay ZYLStudioCamera::GetRay(const QPointF &widgetPos, const QSizeF &viewport, double pickPixels) const
{
    const double w = std::max(viewport.width(), 1.0);
    const double h = std::max(viewport.height(), 1.0);
    const double x = 2.0 * widgetPos.x() / w - 1.0;
    const double y = 1.0 - 2.0 * widgetPos.y() / h;
    const auto [halfHeight, halfWidth] = GetHalfExtents(viewport);
    const double pixel = 2.0 * halfHeight / h;
    const ZYLMathVector forward = GetViewDirection();
    const ZYLMathVector sideways = m_right * (x * halfWidth) + m_up * (y * halfHeight);
    if (m_projection == Projection::Perspective)
        return ZYLVisPickRay(GetEye(), forward + sideways, 0.0, pickPixels * pixel);
    const double nearPlane = GetClipRange().first;
    return ZYLVisPickRay(GetEye() + sideways + forward * nearPlane, forward, pickPixels * pixel, 0.0);
}

QPointF ZYLStudioCamera::Project(const ZYLMathPoint &point, const QSizeF &viewport) const
{
    const ZYLMathPoint eye = GetEyeFrame().ToLocal(point);
    const auto [halfHeight, halfWidth] = GetHalfExtents(viewport);
    double x = eye.X() / halfWidth;
    double y = eye.Y() / halfHeight;
    if (m_projection == Projection::Perspective) {
        x /= -eye.Z();
        y /= -eye.Z();
    }
    return {0.5 * (x + 1.0) * viewport.width(), 0.5 * (1.0 - y) * viewport.height()};
}

void ZYLStudioCamera::Orbit(double dxPixels, double dyPixels, const QSizeF &viewport)
{
    // Dragging across the whole height turns the camera by half a turn.
    const double radiansPerPixel = std::numbers::pi / std::max(viewport.height(), 1.0);
    const ZYLMathVector forward = GetViewDirection();
    const double yaw = -dxPixels * radiansPerPixel;
    const double pitch = -dyPixels * radiansPerPixel;
    ZYLMathVector newForward = ZYLMathRotate(forward, m_up, yaw);
    ZYLMathVector newRight = ZYLMathRotate(m_right, m_up, yaw);
    ZYLMathVector newUp = ZYLMathRotate(m_up, newRight, pitch);
    newForward = ZYLMathRotate(newForward, newRight, pitch);
    SetOrientation(newForward, newUp);
}

void ZYLStudioCamera::Pan(double dxPixels, double dyPixels, const QSizeF &viewport)
{
    const double pixel = GetPixelSize(viewport);
    m_target = m_target - m_right * (dxPixels * pixel) + m_up * (dyPixels * pixel);
}

void ZYLStudioCamera::Zoom(double factor, const QPointF &widgetPos, const QSizeF &viewport)
{
    if (!std::isfinite(factor) || factor <= 0.0)
        return;
    const double pixel = GetPixelSize(viewport);
    // The point under the cursor at the target's depth; scaling the camera about it keeps it
    // on the same pixel in both projections.
    const ZYLMathPoint fixed = m_target + m_right * ((widgetPos.x() - 0.5 * viewport.width()) * pixel)
                               - m_up * ((widgetPos.y() - 0.5 * viewport.height()) * pixel);
    m_target = fixed + (m_target - fixed) * factor;
    m_distance *= factor;
}

void ZYLStudioCamera::Fit(const ZYLMathBoundingBox &box, const QSizeF &viewport)
{
    m_target = box.IsEmpty() ? ZYLMathPoint() : box.GetCenter();
    const double aspect = aspectOf(viewport);
    const double tanHalf = std::tan(0.5 * m_fieldOfView);
    // The box's corners in the view's axes (back points from the target to the eye): a fit to
    // them frames a flat part seen at a slant far tighter than its bounding sphere would.
    const ZYLMathVector back = m_right.Cross(m_up);
    double halfHeight = 0.0; // orthographic: half the view's height
    double distance = 0.0;   // perspective: the eye's distance from the target
    for (int corner = 0; !box.IsEmpty() && corner < 8; ++corner) {
        const ZYLMathPoint p((corner & 1 ? box.GetMax() : box.GetMin()).X(), (corner & 2 ? box.GetMax() : box.GetMin()).Y(),
                             (corner & 4 ? box.GetMax() : box.GetMin()).Z());
        const ZYLMathVector offset = p - m_target;
        const double x = fitMargin * std::abs(offset.Dot(m_right));
        const double y = fitMargin * std::abs(offset.Dot(m_up));
        const double toEye = offset.Dot(back);
        halfHeight = std::max({halfHeight, y, x / aspect});
        distance = std::max({distance, y / tanHalf + toEye, x / (tanHalf * aspect) + toEye});
    }
    if (halfHeight <= 0.0) {
        // A point or nothing at all: a small view around it.
        halfHeight = std::max(50.0, 1e-3 * m_target.ToVector().GetLength());
        distance = halfHeight / tanHalf;
    }
    m_distance = m_projection == Projection::Perspective ? distance : halfHeight / tanHalf;
}

void ZYLStudioCamera::SetStandardView(StandardView view)
{
    const ZYLMathVector z(0.0, 0.0, 1.0);
    const ZYLMathVector y(0.0, 1.0, 0.0);
    switch (view) {
    case StandardView::Top:
        SetOrientation(-z, y);
        break;
    case StandardView::Bottom:
        SetOrientation(z, y);
        break;
    case StandardView::Front:
        SetOrientation(y, z);
        break;
    case StandardView::Back:
        SetOrientation(-y, z);
        break;
    case StandardView::Left:
        SetOrientation(ZYLMathVector(1.0, 0.0, 0.0), z);
        break;
    case StandardView::Right:
        SetOrientation(ZYLMathVector(-1.0, 0.0, 0.0), z);
        break;
    case StandardView::Isometric:
        SetOrientation(ZYLMathVector(-1.0, 1.0, -1.0), z);
        break;
    }
}
