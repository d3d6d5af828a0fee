// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathUIExport.h"

#include "ZYLMathPoint.h"
#include "ZYLTPVisualizationOptions.h"

#include <QList>
#include <QObject>

#include <memory>
#include <utility>

class ZYLFeatContainer;
class ZYLFeatGeometry;
class ZYLFeatObject;
class ZYLGeoAssembledCurveOnSurface;
class ZYLGeoSurface;
class ZYLTPBreakRange;
class ZYLTPCourse;
class ZYLTPCourseLink;
class ZYLTPMachineConfiguration;
class ZYLTPPoint;
class ZYLTPProgram;
class ZYLVisEnvironment;
class ZYLVisRep;
class ZYLVisVirtualObject;

/// The graphics of the tool path edit environment: the one object through which the
/// module's commands show the tool path in the 3-D view.
///
/// The manager holds the program and the feature being edited (counted references with a
/// weak guard: once either is destroyed elsewhere its getter returns null), owns the edit
/// visualization environment, and turns the program's courses, course links and break
/// ranges into virtual nodes of that environment. The nodes are kept in a registry of
/// entries (kind, list of nodes) in order of registration; lookups go both ways (model
/// object to node, node to model object) through the representation of each node. The
/// manager owns every node it registers and deletes it when it removes it; a node keeps its
/// representation, the manager keeps no pointer to one.
///
/// It also holds the ply's surfaces and boundary curves (one node each), the machine head
/// and roller models (parked at the first point of the program's approach link), the head
/// and roller collision points by resource id, three flags for the edit commands, and it
/// maps the persisted view modes of `ZYLTPEditUISettings` to display options
/// (`GetCurrentOptions`).
///
/// The class is abstract: the host derives its own manager, whose one host-specific
/// operation is `GetUpdatedSurface`. The first manager constructed becomes the one that
/// `GetManager()` returns, until it is destroyed. The host sets the environment, the
/// program and the feature, calls `EnterToolPathEnv` and builds the graphics; before it
/// leaves it removes the tool path nodes with `RemoveEditToolPathGraphics` and then calls
/// `LeaveToolPathEnv`. While entered, undo and redo of any transaction of the current
/// container rebuild all tool path nodes with the current options; so does a change of the
/// host's global tool path display options while any entry is registered.
///
/// GUI thread only.
class ZYLTOOLPATHUI_EXPORT ZYLEditTPGraphicsMgr : public QObject {
    Q_OBJECT
public:
    /// The kinds of tool path node in the registry.
    enum VirtualNodeGraphicsType {
        /// One node per course of a roll layup procedure (`ZYLTPCourseVisRep`).
        CourseNodes = 0,
        /// One node per course link of a roll layup procedure (`ZYLTPLinkVisRep`).
        CourseLinkNodes = 1,
        /// One node per break range of every course (`ZYLTPBreakRangeVisRep`).
        BreakRangeNodes = 2,
    };
    Q_ENUM(VirtualNodeGraphicsType)

    /// A collision point: a point and the value the host's collision detection pairs with it.
    using CollisionPoint = std::pair<ZYLMathPoint, double>;

    /// Creates the manager without parent, designates it when no manager is, writes the four
    /// default view modes and follows changes of the host's global display options.
    ZYLEditTPGraphicsMgr();
    /// Deletes the surfaces, ply boundaries and machine head nodes and the owned environment
    /// and releases program and feature. Tool path and roller nodes are deleted by
    /// `RemoveEditToolPathGraphics` and `LeaveToolPathEnv`, not here.
    ~ZYLEditTPGraphicsMgr() override = 0;

    /// Returns the designated manager, or null.
    static ZYLEditTPGraphicsMgr *GetManager();

    /// Returns the surface against which collisions of the laying points are detected. The
    /// base returns null; the host's manager overrides it.
    virtual const ZYLGeoSurface *GetUpdatedSurface() const;

    // --- Context, set by the host -------------------------------------------------------

    /// Replaces the program (a reference is added to the new one before the old one's is
    /// released).
    void SetToolPathProgram(const ZYLTPProgram *program);
    /// Returns the program, or null if none is set or it was destroyed.
    const ZYLTPProgram *GetToolPathProgram();
    /// Replaces the feature, as `SetToolPathProgram`.
    void SetEditToolPathFeature(const ZYLFeatObject *feature);
    /// Returns the feature, or null if none is set or it was destroyed.
    const ZYLFeatObject *GetToolPathFeature() const;
    /// Takes ownership of the environment every node lives in. The one already held changes
    /// nothing; another one replaces it and the old one is deleted; null deletes it.
    void SetEditToolPathVisEnvironment(ZYLVisEnvironment *environment);
    /// Returns the owned environment, or null.
    ZYLVisEnvironment *GetEditToolPathVisEnvironment();

    /// Connects undo and redo of the current feature environment's container to a rebuild
    /// of the tool path nodes (once, however often it is called). Builds no graphics.
    void EnterToolPathEnv();
    /// Cancels the running command, disconnects undo and redo, releases feature and program,
    /// empties and deletes surfaces, ply boundaries, head and rollers and the collision
    /// points, and deletes the environment. The registry is not touched: the caller removes
    /// the tool path nodes with `RemoveEditToolPathGraphics` first.
    void LeaveToolPathEnv();

    // --- Tool path nodes ----------------------------------------------------------------

    /// Builds and registers the nodes of every roll layup procedure of the program: one entry
    /// of course nodes, one of link nodes and one of break range nodes per procedure, each
    /// only if the options enable that kind. New nodes are not selectable.
    void CreateEditToolPathGraphics(const ZYLTPVisualizationOptions &options);
    /// Deletes every registered node and empties the registry.
    void RemoveEditToolPathGraphics();
    /// Replaces all tool path nodes by new ones built with the options, in one redraw.
    void UpdateAllGraphics(const ZYLTPVisualizationOptions &options);
    /// Gives the nodes of one kind new representations built with the options; the nodes
    /// themselves, their visibility and selectability stay.
    void UpdateAllGraphics(VirtualNodeGraphicsType type, const ZYLTPVisualizationOptions &options);
    /// Gives one course or course link node a new representation built with the options;
    /// other nodes and null are left alone.
    void UpdateVirtualNode(ZYLVisVirtualObject *node, const ZYLTPVisualizationOptions &options);
    /// Appends one registry entry (entries are never merged); the manager owns the nodes.
    void AddToolPathVirtualNode(VirtualNodeGraphicsType type, QList<ZYLVisVirtualObject *> nodes);
    /// Returns the nodes of every entry of that kind, in registry order.
    QList<ZYLVisVirtualObject *> GetToolPathVirtualNodes(VirtualNodeGraphicsType type) const;
    /// Does nothing; kept for callers that announce changed nodes.
    void UpdateToolPathVirtualNode(VirtualNodeGraphicsType type, QList<ZYLVisVirtualObject *> nodes);
    /// Builds one course link node, registered as an entry of its own, and returns it; null
    /// for a null link.
    ZYLVisVirtualObject *AddCourseLinkVirtualNode(const ZYLTPCourseLink *link,
                                                  const ZYLTPVisualizationOptions &options);

    /// Return the first node showing the object, or null.
    ZYLVisVirtualObject *GetCourseVirtualNode(const ZYLTPCourse *course) const;
    ZYLVisVirtualObject *GetCourseLinkVirtualNode(const ZYLTPCourseLink *link) const;
    ZYLVisVirtualObject *GetBreakRangeVirtualNode(const ZYLTPBreakRange *range) const;
    /// Return the object a node shows, or null for null or a node of another kind.
    const ZYLTPCourse *GetCourseObject(ZYLVisVirtualObject *node) const;
    const ZYLTPCourseLink *GetCourseLinkObject(ZYLVisVirtualObject *node) const;
    const ZYLTPBreakRange *GetBreakRangeObject(ZYLVisVirtualObject *node) const;

    /// Show or hide, or make selectable or not, every registered node or the given nodes.
    void SetAllVirtualNodesVisibility(bool visible);
    void SetAllVirtualNodesSelectable(bool selectable);
    void SetVirtualNodesVisibility(bool visible, QList<ZYLVisVirtualObject *> nodes);
    void SetVirtualNodesSelectable(bool selectable, QList<ZYLVisVirtualObject *> nodes);
    /// Places a node at the point's tool frame; nothing when either is null.
    void SetVirtualObjectPositionByTpPoint(ZYLVisVirtualObject *node, const ZYLTPPoint *point);
    /// Returns the approach link of the first procedure and the retract link of the last
    /// one, those that exist and belong to roll layup procedures.
    QList<const ZYLTPCourseLink *> GetStartEndLinks();
    /// Returns the first point of the first procedure's approach link, or null.
    const ZYLTPPoint *GetApproachLinkStartPoint();

    // --- Display options and view modes -------------------------------------------------

    /// Returns the host's global display options adjusted to the current view modes.
    ZYLTPVisualizationOptions GetCurrentOptions() const;
    /// Applies the four on/off view settings to the surfaces, ply boundaries, head and roller
    /// nodes and parks head and rollers at the start of the approach link.
    void UpdateUISettingGraphics();
    /// Returns a new representation (owned by the caller) highlighting a point's tip with the
    /// tip point display options at `priority`; null for a null point.
    ZYLVisRep *CreatePointSelectionVisRep(const ZYLTPPoint *point, const ZYLTPVisualizationOptions &options,
                                          int priority);
    /// Returns a new representation (owned by the caller) of the points' vectors at
    /// `priority`; null for an empty list.
    ZYLVisRep *CreatePointsSelectionVisRep(const QList<const ZYLTPPoint *> &points,
                                           ZYLTPVisualizationOptions::VectorsToDisplay vectors,
                                           const ZYLTPVisualizationOptions &options, int priority);

    /// The flags the host sets for the edit commands; the setters only store.
    void SetLayupDirection(bool direction);
    bool GetLayupDirection() const;
    void SetFeedTowsIndividually(bool individually);
    bool CanFeedTowsIndividually() const;
    void SetFeedTowsAtSeparateRates(bool separateRates);
    bool CanFeedTowsAtSeparateRates() const;

    // --- Machine head, rollers and collision points -------------------------------------

    /// Builds the head node (hidden) from the head's container and parks it, replacing and
    /// deleting the previous one.
    void SetMachineHead(ZYLFeatContainer *container);
    /// Returns the head node, or null.
    ZYLVisVirtualObject *GetMachineHeadVirtualNode();
    /// Shows or hides the head node, if there is one.
    void SetMachineHeadVisibility(bool visible);
    /// Appends a roller node (hidden) under `rollerId` and parks it.
    void AddRoller(int rollerId, ZYLFeatContainer *container);
    /// Returns a copy of the rollers list, in order of `AddRoller`.
    QList<std::pair<int, ZYLVisVirtualObject *>> GetRollersVirtualNodes();
    /// Shows (with `visible`) the rollers of `rollerId` and hides all others.
    void SetRollersVisibility(bool visible, int rollerId);
    /// Set the collision points of a head id or a roller id (replacing earlier ones).
    void AddHeadCollisionPoints(int headId, const QList<CollisionPoint> &points);
    void AddRollerCollisionPoints(int rollerId, const QList<CollisionPoint> &points);
    /// Fills `points` with the collision points of the configuration's head followed by those
    /// of its roller; empty without head.
    void GetCollisionPoints(const ZYLTPMachineConfiguration &configuration, QList<CollisionPoint> &points) const;

    // --- Surfaces and ply boundaries ----------------------------------------------------

    /// Store the list (not owned) and rebuild its node, hidden.
    void SetSurfaces(QList<const ZYLFeatGeometry *> surfaces);
    void SetPlyBoundaryCurves(QList<ZYLGeoAssembledCurveOnSurface *> curves);
    /// Show or hide the node, if there is one.
    void SetSurfacesVisibility(bool visible);
    void SetPlyBoundariesVisibility(bool visible);
    /// Deletes the surfaces and ply boundaries nodes; the lists stay.
    void RemoveNonEditToolPathGraphics();

public slots:
    /// Rebuilds the tool path nodes with the current options, if any entry is registered.
    void OnVisualizationSettingsChanged();

private:
    void OnTransactonUndoRedo();
    void ResetViewMRUSettings();
    ZYLVisVirtualObject *CreateToolVirtualNode(ZYLFeatContainer *container);
    ZYLVisVirtualObject *CreateSurfacesVirtualNode();
    ZYLVisRep *CreateSurfacesVisRep();
    ZYLVisVirtualObject *CreatePlyBoundariesVirtualNode();
    ZYLVisRep *CreatePlyVisRep();

    struct Data;
    std::unique_ptr<Data> d;
};
