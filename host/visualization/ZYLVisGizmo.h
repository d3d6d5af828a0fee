// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisualizationExport.h"

#include "ZYLMathAxis.h"

#include <QObject>

#include <memory>

class ZYLVisEnvironment;
class ZYLVisPickRay;
class ZYLVisRep;

/// An interactive handle that moves and turns a frame: an arrow along each axis of its
/// position frame to translate along it, and a ring about each axis to rotate about it. Only
/// the handles of enabled interactions are drawn and can be dragged.
///
/// The environment lists its gizmos for the viewer, which draws GetRep() placed at
/// GetPosition() while IsShown(), and routes a drag to BeginDrag, Drag and EndDrag. Each drag
/// step that moves the frame updates the position and emits PositionChanged. SetPosition does
/// not emit, and it shows a hidden gizmo: an editor hides the gizmo when no single point is
/// chosen and simply places it again when one is. A new gizmo is
/// shown, at the world frame, with every interaction enabled.
class ZYLVISUALIZATION_EXPORT ZYLVisGizmo : public QObject {
    Q_OBJECT

public:
    enum Interaction : int {
        TranslateX = 1,
        TranslateY = 2,
        TranslateZ = 4,
        RotateX = 16,
        RotateY = 32,
        RotateZ = 64,
        AllInteractions = TranslateX | TranslateY | TranslateZ | RotateX | RotateY | RotateZ,
    };

    /// Throws ZYLSysException for a null environment.
    explicit ZYLVisGizmo(ZYLVisEnvironment *environment, QObject *parent = nullptr);
    ~ZYLVisGizmo() override;

    /// Returns the environment, or null once it is destroyed.
    ZYLVisEnvironment *GetEnvironment() const;

    /// Enables interactions (bits of Interaction; 55 = the three translations and the
    /// rotations about x and y). Ends a drag of a handle that is disabled. Throws
    /// ZYLSysException for other bits.
    void SetEnabledInteraction(int interactions);
    int GetEnabledInteraction() const;

    /// Moves the gizmo without emitting PositionChanged.
    void SetPosition(const ZYLMathAxis &position);
    ZYLMathAxis GetPosition() const;

    /// Shows or hides the gizmo; hiding ends a drag.
    void Show(bool shown);
    bool IsShown() const;

    /// Sets the length of the arrows in model units (the rings are a little smaller). Throws
    /// ZYLSysException unless positive and finite.
    void SetSize(double size);
    double GetSize() const;

    /// Returns what the viewer draws, in the gizmo's own coordinates (place it at
    /// GetPosition()). Owned by the gizmo; replaced when the size or the interactions change.
    const ZYLVisRep *GetRep() const;

    /// Returns the enabled handle under a ray (an Interaction bit), nearest first, or 0.
    /// A handle counts within the ray's pick radius or 6 % of the size, whichever is larger.
    int PickHandle(const ZYLVisPickRay &ray) const;
    /// Starts dragging the handle under the ray; returns false, with no drag, when the gizmo
    /// is hidden or no enabled handle is there.
    bool BeginDrag(const ZYLVisPickRay &ray);
    /// Moves the gizmo so that the grabbed point follows the ray: along the handle's axis for
    /// an arrow, about it for a ring (axes of the frame when the drag began). Returns whether
    /// the position changed (then PositionChanged was emitted). Without a drag, or with the
    /// ray parallel to the axis (arrow) or to the ring's plane, nothing happens.
    bool Drag(const ZYLVisPickRay &ray);
    void EndDrag();
    bool IsDragging() const;
    /// Returns the handle being dragged (an Interaction bit), or 0.
    int GetDraggedHandle() const;

signals:
    void PositionChanged(const ZYLMathAxis &position);

private:
    friend class ZYLVisEnvironment;
    void ForgetEnvironment();
    bool SetPositionAndNotify(const ZYLMathAxis &position);

    struct Data;
    std::unique_ptr<Data> d;
};
