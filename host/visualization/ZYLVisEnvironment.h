// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisualizationExport.h"

#include "ZYLVisMouseEvent.h"
#include "ZYLVisObject.h"
#include "ZYLVisPickResult.h"

#include <QList>
#include <QObject>
#include <QSet>

#include <memory>

class ZYLVisGizmo;
class ZYLVisSelectionFilter;
class ZYLVisVirtualObject;

/// One 3-D scene as data: its objects with their representations, the selection, the
/// pre-selection (the object under the mouse) and the selection filter, with picking done on
/// the CPU. A viewer draws what the environment holds, redraws on Changed(), and feeds mouse
/// rays to MouseMove, MouseClick and MouseLeave; tests call the same entry points.
///
/// Selection. The selection and pre-selection hold objects of this scene only; null objects
/// and objects not in the scene are refused (no change, false). The programmatic operations
/// (AddToSelection, SelectObject, RemoveFromSelection, SetVisualizationSelection,
/// SetPreSelectedObjects) do not consult selectability or the filter: these govern only what
/// the user may pick. Every change emits VisualizationSelectionChanged or
/// VisualizationPreselectionChanged synchronously, once, with exactly the objects added and
/// removed; nothing is emitted when nothing changed, inside a batch too. An object that leaves
/// the scene (removed or deleted) leaves both sets, with the signals.
///
/// Redraw. Changed() is emitted when what the viewer shows changes: objects added or removed,
/// representation (also set again), position or visibility of a scene object, the selection,
/// the pre-selection, or a gizmo. Outside a batch it is emitted at once; while a
/// ZYLVisEnvironmentBatchContext lives it is emitted once when the outermost one ends, and only
/// if something changed.
///
/// Mouse. MouseMove updates the pre-selection to the object picked under the ray (whatever the
/// interaction flags); with DeliverMoves it emits MouseEvent with Left for the object the mouse
/// left, then Entered for the one it entered, then Moved. MouseClick changes the selection:
/// Ctrl toggles the picked object; otherwise a multiple filter (IsMultiple) adds it and any
/// other filter, or none, replaces the selection with it; a click on nothing clears the
/// selection unless the filter is multiple. Then, with DeliverClicks, it emits Clicked.
/// MouseLeave clears the pre-selection and, with DeliverMoves, emits Left (with the object the
/// mouse was over, or null). Selection and pre-selection signals come before the mouse events of
/// the same call, so that listeners of the events see the new selection.
class ZYLVISUALIZATION_EXPORT ZYLVisEnvironment : public QObject {
    Q_OBJECT

public:
    enum MouseInteractionFlag : int {
        NoMouseInteraction = 0,
        /// Emit MouseEvent for clicks (action Clicked).
        DeliverClicks = 1,
        /// Emit MouseEvent for moves, entries and exits (Moved, Entered, Left).
        DeliverMoves = 2,
        /// Snap the mouse point of the events to the vertex types of SetMouseSnapGeometryTypes.
        SnapMousePoint = 16,
    };
    Q_DECLARE_FLAGS(MouseInteractionFlags, MouseInteractionFlag)

    /// Vertices the mouse point snaps to, within the pick radius of the ray, on any visible
    /// object (selectable or not).
    enum SnapGeometryType : int {
        SnapNothing = 0,
        SnapPoints = 1,
        SnapPolylineVertices = 2,
        SnapSegmentEnds = 4,
        SnapTriangleVertices = 8,
        SnapPolylineMidpoints = 16,
        SnapSegmentMidpoints = 32,
        SnapTriangleEdgeMidpoints = 64,
        SnapAll = 127,
    };
    Q_DECLARE_FLAGS(SnapGeometryTypes, SnapGeometryType)

    explicit ZYLVisEnvironment(QObject *parent = nullptr);
    /// Detaches the objects and gizmos made for this environment (they stay alive, owned by
    /// their makers) and deletes the selection filter. Emits nothing.
    ~ZYLVisEnvironment() override;

    /// Puts an object made for this environment in the scene, after the others. Null or an
    /// object already in the scene: no effect. Throws ZYLSysException for an object made for
    /// another environment.
    void AddVirtualObject(ZYLVisVirtualObject *object);
    /// Takes an object out of the scene (and the selection and pre-selection); the object is
    /// not deleted. No effect for null or an object not in the scene.
    void RemoveVirtualObject(ZYLVisVirtualObject *object);
    /// Takes every object out of the scene, with one selection and one pre-selection signal.
    void RemoveAllVirtualObjects();
    /// Returns the objects of the scene in the order they were added.
    QList<ZYLVisVirtualObject *> GetVirtualObjects() const;

    QSet<ZYLVisObject *> GetVisualizationSelection() const;
    QSet<ZYLVisObject *> GetPreSelectedObjects() const;
    /// Adds an object to the selection; returns whether the selection changed.
    bool AddToSelection(ZYLVisObject *object);
    void RemoveFromSelection(ZYLVisObject *object);
    /// Adds one object to the selection (as AddToSelection).
    virtual void SelectObject(ZYLVisObject *object);
    /// Replaces the selection; objects not in the scene are left out.
    virtual void SetVisualizationSelection(const QSet<ZYLVisObject *> &objects);
    /// Replaces the pre-selection; objects not in the scene are left out.
    virtual void SetPreSelectedObjects(const QSet<ZYLVisObject *> &objects);

    /// Installs the filter of the user's picks and takes ownership (deleting the previous one);
    /// null removes the filter.
    virtual void SetSelectionFilter(ZYLVisSelectionFilter *filter);
    const ZYLVisSelectionFilter *GetSelectionFilter() const;

    /// Sets which mouse events are delivered and whether mouse points snap. Throws
    /// ZYLSysException for bits other than 1, 2 and 16.
    void SetMouseInteraction(MouseInteractionFlags flags);
    void SetMouseInteraction(int flags);
    MouseInteractionFlags GetMouseInteraction() const;
    /// Sets the vertex types mouse points snap to. Throws ZYLSysException outside 0..127.
    void SetMouseSnapGeometryTypes(SnapGeometryTypes types);
    void SetMouseSnapGeometryTypes(int types);
    SnapGeometryTypes GetMouseSnapGeometryTypes() const;

    /// The mouse moved to a ray (see the class description).
    void MouseMove(const ZYLVisPickRay &ray);
    /// The user clicked along a ray (see the class description).
    void MouseClick(const ZYLVisPickRay &ray, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// The mouse left the view.
    void MouseLeave();

    /// Returns what the user would pick along the ray: the nearest hit on a visible,
    /// selectable object that passes the filter. Hits are points within the pick radius, the
    /// point of a polyline or segment nearest the ray when within the radius, and ray
    /// intersections with triangles, each in the object's position frame. Ranking: primitives
    /// drawn without depth test come before all others (they are drawn on top); then, among the
    /// hits whose depth is within twice the pick radius of the nearest one, the highest
    /// priority wins, then the hit nearest the ray, then the nearer one.
    ZYLVisPickResult Pick(const ZYLVisPickRay &ray) const;

    /// Returns the box around the visible objects with a representation, in world coordinates.
    ZYLMathBoundingBox GetBoundingBox() const;
    /// Returns the gizmos made for this environment.
    QList<ZYLVisGizmo *> GetGizmos() const;
    /// Returns whether a batch context is open.
    bool IsInBatch() const;

signals:
    void VisualizationSelectionChanged(const QSet<ZYLVisObject *> &added, const QSet<ZYLVisObject *> &removed);
    void VisualizationPreselectionChanged(const QSet<ZYLVisObject *> &added, const QSet<ZYLVisObject *> &removed);
    void MouseEvent(const ZYLVisMouseEvent &event);
    /// The scene must be redrawn.
    void Changed();

private:
    friend class ZYLVisObject;
    friend class ZYLVisGizmo;
    friend class ZYLVisEnvironmentBatchContext;
    enum class ObjectChange { Rep, Position, Visibility, Selectability };

    void RegisterObject(ZYLVisObject *object);
    void UnregisterObject(ZYLVisObject *object);
    void RemoveFromScene(ZYLVisObject *object);
    void OnObjectChanged(ZYLVisObject *object, ObjectChange change, const ZYLVisRep *previousRep);
    void RegisterGizmo(ZYLVisGizmo *gizmo);
    void UnregisterGizmo(ZYLVisGizmo *gizmo);
    void NotifyChanged();
    void BeginBatch();
    void EndBatch();

    struct Data;
    std::unique_ptr<Data> d;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(ZYLVisEnvironment::MouseInteractionFlags)
Q_DECLARE_OPERATORS_FOR_FLAGS(ZYLVisEnvironment::SnapGeometryTypes)
