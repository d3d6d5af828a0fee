// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisualizationExport.h"

#include "ZYLVisPickRay.h"

class ZYLVisObject;

/// Where the mouse is in the scene when a mouse event is delivered.
class ZYLVISUALIZATION_EXPORT ZYLVisMouseContext {
public:
    ZYLVisMouseContext() = default;
    ZYLVisMouseContext(const ZYLVisPickRay &ray, const ZYLMathPoint &mousePoint, ZYLVisObject *object, bool snapped);

    /// Returns the model-space point under the cursor: the hit point on the object under the
    /// cursor, or, over empty space, the point of the ray nearest the centre of the scene. With
    /// snapping on it is the snapped vertex when one is near the ray. Always on or within the
    /// pick radius of the view ray.
    const ZYLMathPoint &GetMousePoint() const { return m_point; }
    /// Returns the unit direction of the view ray.
    const ZYLMathVector &GetViewDirection() const { return m_ray.GetDirection(); }
    /// Returns the object under the cursor; for an entered or left event the object entered or
    /// left (null when the mouse left the view over empty space).
    ZYLVisObject *GetVisObject() const { return m_object; }
    const ZYLVisPickRay &GetRay() const { return m_ray; }
    /// Returns whether the mouse point was snapped to a vertex.
    bool IsSnapped() const { return m_snapped; }

private:
    ZYLVisPickRay m_ray;
    ZYLMathPoint m_point;
    ZYLVisObject *m_object = nullptr;
    bool m_snapped = false;
};
