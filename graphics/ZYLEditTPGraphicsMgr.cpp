// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLEditTPGraphicsMgr.h"

#include "ZYLTPEditUISettings.h"

#include "ZYLTPBreakRange.h"
#include "ZYLTPBreakRangeVisRep.h"
#include "ZYLTPCourse.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPCourseVisRep.h"
#include "ZYLTPLinkVisRep.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPOffPartPoint.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPRoller.h"
#include "ZYLTPTool.h"
#include "ZYLTPVisualizationSettings.h"
#include "ZYLTPVisualizationUtil.h"

#include "ZYLCmdCommand.h"
#include "ZYLCmdController.h"
#include "ZYLFeatContainer.h"
#include "ZYLFeatContainerManager.h"
#include "ZYLFeatContainerProvider.h"
#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLFeatGeometry.h"
#include "ZYLFeatObject.h"
#include "ZYLFeatTransaction.h"
#include "ZYLFeatVisualizationConfig.h"
#include "ZYLGeoAssembledCurveOnSurface.h"
#include "ZYLGeoRangeOfCurve.h"
#include "ZYLMathSetOfPoints.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"
#include "ZYLVisOptions.h"
#include "ZYLVisPointPrimitive.h"
#include "ZYLVisPolylinePrimitive.h"
#include "ZYLVisRepFactory.h"
#include "ZYLVisRepGraphics.h"
#include "ZYLVisRepSet.h"
#include "ZYLVisVirtualObject.h"

#include <QDebug>
#include <QPointer>

namespace {

ZYLEditTPGraphicsMgr *s_designatedManager = nullptr;

// A counted reference on shared geometry that also notices when the object is destroyed
// behind its back: then the getter gives null and no reference is released on a dead object.
template <class T> class GuardedReference {
public:
    GuardedReference() = default;
    GuardedReference(const GuardedReference &) = delete;
    GuardedReference &operator=(const GuardedReference &) = delete;
    ~GuardedReference() { Reset(nullptr); }

    // The new reference is taken before the old one is released, so that setting the object
    // already held never drops it to zero.
    void Reset(const T *object) {
        if (object)
            object->AddReference();
        if (const T *old = m_guard.data())
            old->RemoveReference();
        m_guard = object;
    }
    const T *Get() const { return m_guard.data(); }

private:
    QPointer<const T> m_guard;
};

using CollisionTable = QList<std::pair<int, QList<ZYLEditTPGraphicsMgr::CollisionPoint>>>;

void SetCollisionPoints(CollisionTable &table, int id, const QList<ZYLEditTPGraphicsMgr::CollisionPoint> &points) {
    for (auto &entry : table) {
        if (entry.first == id) {
            entry.second = points;
            return;
        }
    }
    table.append({id, points});
}

void AppendCollisionPoints(const CollisionTable &table, int id, QList<ZYLEditTPGraphicsMgr::CollisionPoint> &points) {
    for (const auto &entry : table) {
        if (entry.first == id) {
            points += entry.second;
            return;
        }
    }
}

// Node and point frame: the tool frame of the point.
void PlaceAt(ZYLVisVirtualObject *node, const ZYLTPPoint *point) {
    if (!node || !point)
        return;
    const ZYLMathAxis frame = point->GetAxis(true);
    node->SetPosition(&frame);
}

const ZYLTPRollLayupProcedure *RollLayupProcedure(const ZYLTPProgram *program, int index) {
    return qobject_cast<const ZYLTPRollLayupProcedure *>(program->GetProcedure(index));
}

// The representations of the three kinds. The display options list that the host's
// representation may fill is not used by the manager.
ZYLVisRep *NewCourseRep(const ZYLTPCourse *course, int index, const ZYLTPVisualizationOptions &options) {
    QList<ZYLVisOptions> unused;
    return new ZYLTPCourseVisRep(course, index, options, unused);
}

ZYLVisRep *NewLinkRep(const ZYLTPCourseLink *link, const ZYLTPVisualizationOptions &options) {
    QList<ZYLVisOptions> unused;
    return new ZYLTPLinkVisRep(link, options, unused);
}

ZYLVisRep *NewBreakRangeRep(const ZYLTPBreakRange *range, const ZYLTPVisualizationOptions &options) {
    QList<ZYLVisOptions> unused;
    return new ZYLTPBreakRangeVisRep(range, options, unused);
}

// A hidden, unselectable node of `environment` showing `rep`, put in the scene. Head, roller,
// surfaces and ply nodes are hidden before they get their representation so that they never
// show up for a redraw before the view settings are applied.
ZYLVisVirtualObject *NewHiddenNode(ZYLVisEnvironment *environment, ZYLVisRep *rep) {
    auto *node = new ZYLVisVirtualObject(environment, nullptr);
    node->SetVisibility(false);
    node->SetRep(rep);
    node->SetSelectability(false);
    environment->AddVirtualObject(node);
    return node;
}

// An unselectable tool path node showing `rep`, put in the scene. Tool path nodes live in the
// environment of the designated manager, the one every command of the module works with.
ZYLVisVirtualObject *NewToolPathNode(ZYLVisRep *rep) {
    ZYLVisEnvironment *environment = ZYLEditTPGraphicsMgr::GetManager()->GetEditToolPathVisEnvironment();
    auto *node = new ZYLVisVirtualObject(environment, nullptr);
    node->SetRep(rep);
    node->SetSelectability(false);
    environment->AddVirtualObject(node);
    return node;
}

} // namespace

struct ZYLEditTPGraphicsMgr::Data {
    GuardedReference<ZYLTPProgram> program;
    GuardedReference<ZYLFeatObject> feature;
    QList<const ZYLFeatGeometry *> surfaces;
    QList<ZYLGeoAssembledCurveOnSurface *> plyBoundaryCurves;
    QList<std::pair<VirtualNodeGraphicsType, QList<ZYLVisVirtualObject *>>> registry;
    ZYLVisVirtualObject *surfacesNode = nullptr;
    ZYLVisVirtualObject *plyBoundariesNode = nullptr;
    ZYLVisVirtualObject *machineHeadNode = nullptr;
    QList<std::pair<int, ZYLVisVirtualObject *>> rollers;
    QMetaObject::Connection undoConnection;
    QMetaObject::Connection redoConnection;
    CollisionTable headCollisionPoints;
    CollisionTable rollerCollisionPoints;
    bool feedTowsIndividually = true;
    bool feedTowsAtSeparateRates = false;
    ZYLVisEnvironment *environment = nullptr;
    bool layupDirection = false;
};

ZYLEditTPGraphicsMgr::ZYLEditTPGraphicsMgr() : QObject(nullptr), d(std::make_unique<Data>()) {
    if (!s_designatedManager)
        s_designatedManager = this;
    ResetViewMRUSettings();
    connect(ZYLTPVisualizationSettings::GetInstance(), &ZYLTPVisualizationSettings::OptionsChanged, this,
            &ZYLEditTPGraphicsMgr::OnVisualizationSettingsChanged);
}

ZYLEditTPGraphicsMgr::~ZYLEditTPGraphicsMgr() {
    delete d->surfacesNode;
    delete d->plyBoundariesNode;
    delete d->machineHeadNode;
    delete d->environment;
    d->feature.Reset(nullptr);
    d->program.Reset(nullptr);
    if (s_designatedManager == this)
        s_designatedManager = nullptr;
}

ZYLEditTPGraphicsMgr *ZYLEditTPGraphicsMgr::GetManager() {
    return s_designatedManager;
}

const ZYLGeoSurface *ZYLEditTPGraphicsMgr::GetUpdatedSurface() const {
    return nullptr;
}

// --- Context -----------------------------------------------------------------------------

void ZYLEditTPGraphicsMgr::SetToolPathProgram(const ZYLTPProgram *program) {
    d->program.Reset(program);
}

const ZYLTPProgram *ZYLEditTPGraphicsMgr::GetToolPathProgram() {
    return d->program.Get();
}

void ZYLEditTPGraphicsMgr::SetEditToolPathFeature(const ZYLFeatObject *feature) {
    d->feature.Reset(feature);
}

const ZYLFeatObject *ZYLEditTPGraphicsMgr::GetToolPathFeature() const {
    return d->feature.Get();
}

void ZYLEditTPGraphicsMgr::SetEditToolPathVisEnvironment(ZYLVisEnvironment *environment) {
    if (environment == d->environment)
        return;
    delete std::exchange(d->environment, environment);
}

ZYLVisEnvironment *ZYLEditTPGraphicsMgr::GetEditToolPathVisEnvironment() {
    return d->environment;
}

void ZYLEditTPGraphicsMgr::EnterToolPathEnv() {
    ZYLFeatEnvironment *environment = ZYLFeatEnvironmentManager::GetManager()->GetCurrentEnvironment();
    ZYLFeatContainer *container = environment ? environment->GetContainer() : nullptr;
    if (!container)
        return;
    if (!d->undoConnection)
        d->undoConnection = connect(container, &ZYLFeatContainer::TransactionRolledBackard, this,
                                    &ZYLEditTPGraphicsMgr::OnTransactonUndoRedo);
    if (!d->redoConnection)
        d->redoConnection = connect(container, &ZYLFeatContainer::TransactionRolledForward, this,
                                    &ZYLEditTPGraphicsMgr::OnTransactonUndoRedo);
}

void ZYLEditTPGraphicsMgr::LeaveToolPathEnv() {
    if (ZYLCmdController *controller = ZYLCmdController::GetController()) {
        if (ZYLCmdCommand *command = controller->GetCurrentCommand())
            command->Cancel();
    }
    disconnect(d->undoConnection);
    disconnect(d->redoConnection);
    d->feature.Reset(nullptr);
    d->program.Reset(nullptr);

    d->surfaces.clear();
    delete std::exchange(d->surfacesNode, nullptr);
    d->plyBoundaryCurves.clear();
    delete std::exchange(d->plyBoundariesNode, nullptr);

    delete std::exchange(d->machineHeadNode, nullptr);
    for (const auto &roller : std::as_const(d->rollers))
        delete roller.second;
    d->rollers.clear();

    d->headCollisionPoints.clear();
    d->rollerCollisionPoints.clear();

    if (d->environment) {
        d->environment->RemoveAllVirtualObjects();
        delete std::exchange(d->environment, nullptr);
    }
}

// --- Tool path nodes ---------------------------------------------------------------------

void ZYLEditTPGraphicsMgr::CreateEditToolPathGraphics(const ZYLTPVisualizationOptions &options) {
    ZYLVisEnvironmentBatchContext batch(d->environment);
    const ZYLTPProgram *program = d->program.Get();
    if (!program)
        return;
    for (int p = 0; p < program->GetNumProcedures(); ++p) {
        const ZYLTPRollLayupProcedure *procedure = RollLayupProcedure(program, p);
        if (!procedure)
            continue;
        if (options.IsCourseEnabled()) {
            QList<ZYLVisVirtualObject *> nodes;
            for (int c = 0; c < procedure->GetNumCourses(); ++c)
                nodes.append(NewToolPathNode(NewCourseRep(procedure->GetCourseByIndex(c), c, options)));
            AddToolPathVirtualNode(CourseNodes, nodes);
        }
        if (options.GetLinkingTrajectoriesEnabled()) {
            QList<ZYLVisVirtualObject *> nodes;
            for (int l = 0; l < procedure->GetNumLinks(); ++l) {
                const ZYLTPCourseLink *link = procedure->GetLinkByIndex(l);
                if (!link) {
                    qDebug() << "input link object is null";
                    continue;
                }
                nodes.append(NewToolPathNode(NewLinkRep(link, options)));
            }
            AddToolPathVirtualNode(CourseLinkNodes, nodes);
        }
        if (options.IsBreakRangeEnabled()) {
            QList<ZYLVisVirtualObject *> nodes;
            for (int c = 0; c < procedure->GetNumCourses(); ++c) {
                const ZYLTPCourse *course = procedure->GetCourseByIndex(c);
                for (int r = 0; r < course->GetNumBreakRanges(); ++r)
                    nodes.append(NewToolPathNode(NewBreakRangeRep(course->GetBreakRange(r), options)));
            }
            AddToolPathVirtualNode(BreakRangeNodes, nodes);
        }
    }
}

void ZYLEditTPGraphicsMgr::RemoveEditToolPathGraphics() {
    ZYLVisEnvironmentBatchContext batch(d->environment);
    // The registry is taken first so that nothing reached from a node's destruction (a
    // selection slot, say) sees half-deleted entries.
    const auto registry = std::exchange(d->registry, {});
    for (const auto &entry : registry) {
        for (ZYLVisVirtualObject *node : entry.second)
            delete node;
    }
}

void ZYLEditTPGraphicsMgr::UpdateAllGraphics(const ZYLTPVisualizationOptions &options) {
    ZYLVisEnvironmentBatchContext batch(d->environment);
    RemoveEditToolPathGraphics();
    CreateEditToolPathGraphics(options);
}

void ZYLEditTPGraphicsMgr::UpdateAllGraphics(VirtualNodeGraphicsType type, const ZYLTPVisualizationOptions &options) {
    for (ZYLVisVirtualObject *node : GetToolPathVirtualNodes(type)) {
        if (!node)
            continue;
        const ZYLVisRep *rep = node->GetRep();
        switch (type) {
        case CourseNodes:
            if (auto course = qobject_cast<const ZYLTPCourseVisRep *>(rep))
                node->SetRep(NewCourseRep(course->GetCourse(), course->GetCourseIndex(), options));
            break;
        case CourseLinkNodes:
            if (auto link = qobject_cast<const ZYLTPLinkVisRep *>(rep))
                node->SetRep(NewLinkRep(link->GetCourseLink(), options));
            break;
        case BreakRangeNodes:
            if (auto range = qobject_cast<const ZYLTPBreakRangeVisRep *>(rep))
                node->SetRep(NewBreakRangeRep(range->GetBreakRange(), options));
            break;
        }
    }
}

void ZYLEditTPGraphicsMgr::UpdateVirtualNode(ZYLVisVirtualObject *node, const ZYLTPVisualizationOptions &options) {
    if (!node)
        return;
    const ZYLVisRep *rep = node->GetRep();
    if (auto course = qobject_cast<const ZYLTPCourseVisRep *>(rep))
        node->SetRep(NewCourseRep(course->GetCourse(), course->GetCourseIndex(), options));
    else if (auto link = qobject_cast<const ZYLTPLinkVisRep *>(rep))
        node->SetRep(NewLinkRep(link->GetCourseLink(), options));
}

void ZYLEditTPGraphicsMgr::AddToolPathVirtualNode(VirtualNodeGraphicsType type, QList<ZYLVisVirtualObject *> nodes) {
    d->registry.append({type, nodes});
}

QList<ZYLVisVirtualObject *> ZYLEditTPGraphicsMgr::GetToolPathVirtualNodes(VirtualNodeGraphicsType type) const {
    QList<ZYLVisVirtualObject *> nodes;
    for (const auto &entry : d->registry) {
        if (entry.first == type)
            nodes += entry.second;
    }
    return nodes;
}

void ZYLEditTPGraphicsMgr::UpdateToolPathVirtualNode(VirtualNodeGraphicsType, QList<ZYLVisVirtualObject *>) {}

ZYLVisVirtualObject *ZYLEditTPGraphicsMgr::AddCourseLinkVirtualNode(const ZYLTPCourseLink *link,
                                                                  const ZYLTPVisualizationOptions &options) {
    if (!link) {
        qDebug() << "input link object is null";
        return nullptr;
    }
    ZYLVisVirtualObject *node = NewToolPathNode(NewLinkRep(link, options));
    AddToolPathVirtualNode(CourseLinkNodes, {node});
    return node;
}

namespace {

// The first node of `nodes` whose representation is a `Rep` showing `object`.
template <class Rep, class Object, class Getter>
ZYLVisVirtualObject *FindNode(const QList<ZYLVisVirtualObject *> &nodes, const Object *object, Getter get) {
    for (ZYLVisVirtualObject *node : nodes) {
        if (!node)
            continue;
        if (auto rep = qobject_cast<const Rep *>(node->GetRep()); rep && (rep->*get)() == object)
            return node;
    }
    return nullptr;
}

template <class Rep, class Getter> auto ShownObject(ZYLVisVirtualObject *node, Getter get) {
    const Rep *rep = node ? qobject_cast<const Rep *>(node->GetRep()) : nullptr;
    return rep ? (rep->*get)() : nullptr;
}

} // namespace

ZYLVisVirtualObject *ZYLEditTPGraphicsMgr::GetCourseVirtualNode(const ZYLTPCourse *course) const {
    return FindNode<ZYLTPCourseVisRep>(GetToolPathVirtualNodes(CourseNodes), course, &ZYLTPCourseVisRep::GetCourse);
}

ZYLVisVirtualObject *ZYLEditTPGraphicsMgr::GetCourseLinkVirtualNode(const ZYLTPCourseLink *link) const {
    return FindNode<ZYLTPLinkVisRep>(GetToolPathVirtualNodes(CourseLinkNodes), link, &ZYLTPLinkVisRep::GetCourseLink);
}

ZYLVisVirtualObject *ZYLEditTPGraphicsMgr::GetBreakRangeVirtualNode(const ZYLTPBreakRange *range) const {
    return FindNode<ZYLTPBreakRangeVisRep>(GetToolPathVirtualNodes(BreakRangeNodes), range,
                                           &ZYLTPBreakRangeVisRep::GetBreakRange);
}

const ZYLTPCourse *ZYLEditTPGraphicsMgr::GetCourseObject(ZYLVisVirtualObject *node) const {
    return ShownObject<ZYLTPCourseVisRep>(node, &ZYLTPCourseVisRep::GetCourse);
}

const ZYLTPCourseLink *ZYLEditTPGraphicsMgr::GetCourseLinkObject(ZYLVisVirtualObject *node) const {
    return ShownObject<ZYLTPLinkVisRep>(node, &ZYLTPLinkVisRep::GetCourseLink);
}

const ZYLTPBreakRange *ZYLEditTPGraphicsMgr::GetBreakRangeObject(ZYLVisVirtualObject *node) const {
    return ShownObject<ZYLTPBreakRangeVisRep>(node, &ZYLTPBreakRangeVisRep::GetBreakRange);
}

void ZYLEditTPGraphicsMgr::SetAllVirtualNodesVisibility(bool visible) {
    for (const auto &entry : std::as_const(d->registry))
        SetVirtualNodesVisibility(visible, entry.second);
}

void ZYLEditTPGraphicsMgr::SetAllVirtualNodesSelectable(bool selectable) {
    for (const auto &entry : std::as_const(d->registry))
        SetVirtualNodesSelectable(selectable, entry.second);
}

void ZYLEditTPGraphicsMgr::SetVirtualNodesVisibility(bool visible, QList<ZYLVisVirtualObject *> nodes) {
    for (ZYLVisVirtualObject *node : nodes) {
        if (node)
            node->SetVisibility(visible);
    }
}

void ZYLEditTPGraphicsMgr::SetVirtualNodesSelectable(bool selectable, QList<ZYLVisVirtualObject *> nodes) {
    for (ZYLVisVirtualObject *node : nodes) {
        if (node)
            node->SetSelectability(selectable);
    }
}

void ZYLEditTPGraphicsMgr::SetVirtualObjectPositionByTpPoint(ZYLVisVirtualObject *node, const ZYLTPPoint *point) {
    PlaceAt(node, point);
}

QList<const ZYLTPCourseLink *> ZYLEditTPGraphicsMgr::GetStartEndLinks() {
    QList<const ZYLTPCourseLink *> links;
    const ZYLTPProgram *program = d->program.Get();
    if (!program || program->GetNumProcedures() == 0)
        return links;
    if (const ZYLTPRollLayupProcedure *first = RollLayupProcedure(program, 0); first && first->GetApproachLink())
        links.append(first->GetApproachLink());
    const int last = program->GetNumProcedures() - 1;
    if (const ZYLTPRollLayupProcedure *procedure = RollLayupProcedure(program, last);
        procedure && procedure->GetRetractLink())
        links.append(procedure->GetRetractLink());
    return links;
}

const ZYLTPPoint *ZYLEditTPGraphicsMgr::GetApproachLinkStartPoint() {
    const ZYLTPProgram *program = d->program.Get();
    if (!program || program->GetNumProcedures() == 0)
        return nullptr;
    const ZYLTPRollLayupProcedure *procedure = RollLayupProcedure(program, 0);
    if (!procedure || !procedure->GetApproachLink())
        return nullptr;
    return procedure->GetApproachLink()->GetPoint(0);
}

void ZYLEditTPGraphicsMgr::OnTransactonUndoRedo() {
    // The feature environment redraws the model it shows after the undo as well; both
    // scenes are redrawn once, at the end.
    ZYLVisEnvironmentBatchContext featureBatch(ZYLFeatEnvironmentManager::GetManager()->GetCurrentEnvironment());
    const ZYLTPVisualizationOptions options = GetCurrentOptions();
    ZYLVisEnvironmentBatchContext batch(d->environment);
    RemoveEditToolPathGraphics();
    CreateEditToolPathGraphics(options);
}

void ZYLEditTPGraphicsMgr::OnVisualizationSettingsChanged() {
    // Without registered nodes nobody shows the tool path here, and building it now would
    // put it into a view that did not ask for it.
    if (d->registry.isEmpty())
        return;
    const ZYLTPVisualizationOptions options = GetCurrentOptions();
    ZYLVisEnvironmentBatchContext batch(d->environment);
    RemoveEditToolPathGraphics();
    CreateEditToolPathGraphics(options);
}

// --- Display options and view modes ------------------------------------------------------

ZYLTPVisualizationOptions ZYLEditTPGraphicsMgr::GetCurrentOptions() const {
    using Options = ZYLTPVisualizationOptions;
    Options options;
    ZYLTPVisualizationSettings::GetInstance()->GetVisualizationOptions(&options);

    const ZYLTPEditUISettings *settings = ZYLTPEditUISettings::GetInstance();
    const QString course = settings->GetViewCourseMode();
    const QString laying = settings->GetViewLayingPointsMode();
    const QString linking = settings->GetViewLinkPointsMode();
    const QString links = settings->GetViewCourseLinksMode();

    const bool polyline = course == QLatin1String("ViewCoursePolyline") ||
                          course == QLatin1String("ViewCourseAndPolyline");
    options.SetApproachRetractEnabled(polyline);
    options.SetRollInOutEnabled(polyline);
    if (course == QLatin1String("HideCourse"))
        options.SetTowHeadProfileDisplay(Options::HeadProfilesDisplay(0));
    if (course == QLatin1String("ViewCoursePolyline") || course == QLatin1String("HideCourse")) {
        options.SetTowEdgeDisplay(Options::TowEdgesDisplay(0));
        options.SetShortTowDisplay(Options::ShortTowDisplay(0));
    } else {
        options.SetShortTowDisplay(Options::ShortTowDisplay(4));
    }
    options.SetTipPointEnabled(polyline && laying != QLatin1String("HideLayingPoints"));
    options.SetLinkingTrajectoriesEnabled(links != QLatin1String("HideCourseLinks") &&
                                          course != QLatin1String("ViewCourse"));
    options.SetLayingTrajectoryEnabled(polyline);
    options.SetLinkingPointsEnabled(linking != QLatin1String("HideLinkingPoints"));

    // A mode that no table names leaves the global choice of its vectors in place.
    struct VectorMode {
        const char *mode;
        int vectors;
    };
    auto vectorsOf = [](const QString &mode, std::initializer_list<VectorMode> table) -> int {
        for (const VectorMode &entry : table) {
            if (mode == QLatin1String(entry.mode))
                return entry.vectors;
        }
        return -1;
    };
    if (const int vectors = vectorsOf(laying, {{"ViewLayingPointsWithToolAxis", 4},
                                               {"ViewLayingPointsWithToolAndLayingAxes", 5},
                                               {"ViewLayingPointsWithAllAxes", 7},
                                               {"HideLayingPoints", 0}});
        vectors >= 0)
        options.SetLayingVectorsToDisplay(Options::VectorsToDisplay(vectors));
    if (const int vectors = vectorsOf(linking, {{"ViewLinkPointsWithToolAxis", 4},
                                                {"ViewLinkingPointsWithToolAndLayingAxes", 5},
                                                {"ViewLinkingPointsWithAllAxes", 7},
                                                {"HideLinkingPoints", 0}});
        vectors >= 0)
        options.SetLinkingVectorsToDisplay(Options::VectorsToDisplay(vectors));
    if (const int vectors = vectorsOf(links, {{"ViewCourseLinksWithPointsOnly", 0},
                                              {"HideCourseLinks", 0},
                                              {"ViewCourseLinksWithRollerAxis", 4},
                                              {"ViewCourseLinksWithAllAxes", 7}});
        vectors >= 0)
        options.SetLinkEndPointsVectorsToDisplay(Options::VectorsToDisplay(vectors));
    return options;
}

void ZYLEditTPGraphicsMgr::ResetViewMRUSettings() {
    ZYLTPEditUISettings *settings = ZYLTPEditUISettings::GetInstance();
    settings->SetViewCourseMode(QStringLiteral("ViewCourse"));
    settings->SetViewLayingPointsMode(QStringLiteral("ViewLayingPointsWithToolAxis"));
    settings->SetViewCourseLinksMode(QStringLiteral("ViewCourseLinksWithPointsOnly"));
    settings->SetViewLinkPointsMode(QStringLiteral("ViewLinkPointsOnly"));
}

void ZYLEditTPGraphicsMgr::UpdateUISettingGraphics() {
    const ZYLTPEditUISettings *settings = ZYLTPEditUISettings::GetInstance();
    if (d->surfacesNode)
        d->surfacesNode->SetVisibility(settings->IsViewSurface());
    if (d->plyBoundariesNode)
        d->plyBoundariesNode->SetVisibility(settings->IsViewPlyBoundary());
    if (d->machineHeadNode)
        d->machineHeadNode->SetVisibility(settings->IsViewMachineHead());
    SetRollersVisibility(settings->IsViewRoller(), d->rollers.isEmpty() ? -1 : d->rollers.first().first);

    if (const ZYLTPPoint *start = GetApproachLinkStartPoint()) {
        PlaceAt(d->machineHeadNode, start);
        for (const auto &roller : std::as_const(d->rollers))
            PlaceAt(roller.second, start);
    }
}

ZYLVisRep *ZYLEditTPGraphicsMgr::CreatePointSelectionVisRep(const ZYLTPPoint *point,
                                                           const ZYLTPVisualizationOptions &options, int priority) {
    if (!point)
        return nullptr;
    ZYLMathSetOfPoints tip;
    tip.Add(point->GetTipPoint());
    ZYLVisOptions display = options.GetTipPointGraphicAttributes();
    display.SetPriority(priority);
    return new ZYLVisRepGraphics({new ZYLVisPointPrimitive(tip)}, display);
}

ZYLVisRep *ZYLEditTPGraphicsMgr::CreatePointsSelectionVisRep(const QList<const ZYLTPPoint *> &points,
                                                            ZYLTPVisualizationOptions::VectorsToDisplay vectors,
                                                            const ZYLTPVisualizationOptions &options, int priority) {
    if (points.isEmpty())
        return nullptr;
    QList<ZYLVisPrimitive *> primitives;
    QList<ZYLVisOptions> displays;
    ZYLTPVisualizationUtil::CreateVectorPrimitives(points, vectors, options, primitives, displays);
    for (ZYLVisOptions &display : displays)
        display.SetPriority(priority);
    return new ZYLVisRepGraphics(primitives, displays);
}

void ZYLEditTPGraphicsMgr::SetLayupDirection(bool direction) {
    d->layupDirection = direction;
}

bool ZYLEditTPGraphicsMgr::GetLayupDirection() const {
    return d->layupDirection;
}

void ZYLEditTPGraphicsMgr::SetFeedTowsIndividually(bool individually) {
    d->feedTowsIndividually = individually;
}

bool ZYLEditTPGraphicsMgr::CanFeedTowsIndividually() const {
    return d->feedTowsIndividually;
}

void ZYLEditTPGraphicsMgr::SetFeedTowsAtSeparateRates(bool separateRates) {
    d->feedTowsAtSeparateRates = separateRates;
}

bool ZYLEditTPGraphicsMgr::CanFeedTowsAtSeparateRates() const {
    return d->feedTowsAtSeparateRates;
}

// --- Machine head, rollers and collision points ------------------------------------------

ZYLVisVirtualObject *ZYLEditTPGraphicsMgr::CreateToolVirtualNode(ZYLFeatContainer *container) {
    ZYLVisRep *rep = ZYLFeatContainerManager::GetManager()->GetProvider(container)->CreateRep(container);
    return NewHiddenNode(d->environment, rep);
}

void ZYLEditTPGraphicsMgr::SetMachineHead(ZYLFeatContainer *container) {
    ZYLVisVirtualObject *node = CreateToolVirtualNode(container);
    if (node != d->machineHeadNode)
        delete std::exchange(d->machineHeadNode, node);
    if (d->machineHeadNode)
        PlaceAt(d->machineHeadNode, GetApproachLinkStartPoint());
}

ZYLVisVirtualObject *ZYLEditTPGraphicsMgr::GetMachineHeadVirtualNode() {
    return d->machineHeadNode;
}

void ZYLEditTPGraphicsMgr::SetMachineHeadVisibility(bool visible) {
    if (d->machineHeadNode)
        d->machineHeadNode->SetVisibility(visible);
}

void ZYLEditTPGraphicsMgr::AddRoller(int rollerId, ZYLFeatContainer *container) {
    d->rollers.append({rollerId, CreateToolVirtualNode(container)});
    PlaceAt(d->rollers.last().second, GetApproachLinkStartPoint());
}

QList<std::pair<int, ZYLVisVirtualObject *>> ZYLEditTPGraphicsMgr::GetRollersVirtualNodes() {
    return d->rollers;
}

void ZYLEditTPGraphicsMgr::SetRollersVisibility(bool visible, int rollerId) {
    for (const auto &roller : std::as_const(d->rollers)) {
        if (roller.second)
            roller.second->SetVisibility(roller.first == rollerId && visible);
    }
}

void ZYLEditTPGraphicsMgr::AddHeadCollisionPoints(int headId, const QList<CollisionPoint> &points) {
    SetCollisionPoints(d->headCollisionPoints, headId, points);
}

void ZYLEditTPGraphicsMgr::AddRollerCollisionPoints(int rollerId, const QList<CollisionPoint> &points) {
    SetCollisionPoints(d->rollerCollisionPoints, rollerId, points);
}

void ZYLEditTPGraphicsMgr::GetCollisionPoints(const ZYLTPMachineConfiguration &configuration,
                                              QList<CollisionPoint> &points) const {
    points.clear();
    const ZYLTPMachineHead *head = configuration.GetHead();
    if (!head)
        return;
    AppendCollisionPoints(d->headCollisionPoints, head->GetId(), points);
    const auto *roller = qobject_cast<const ZYLTPRoller *>(configuration.GetTool());
    if (!roller)
        return;
    AppendCollisionPoints(d->rollerCollisionPoints, roller->GetId(), points);
}

// --- Surfaces and ply boundaries ---------------------------------------------------------

void ZYLEditTPGraphicsMgr::SetSurfaces(QList<const ZYLFeatGeometry *> surfaces) {
    d->surfaces = surfaces;
    ZYLVisVirtualObject *node = CreateSurfacesVirtualNode();
    if (node != d->surfacesNode)
        delete std::exchange(d->surfacesNode, node);
}

void ZYLEditTPGraphicsMgr::SetPlyBoundaryCurves(QList<ZYLGeoAssembledCurveOnSurface *> curves) {
    d->plyBoundaryCurves = curves;
    ZYLVisVirtualObject *node = CreatePlyBoundariesVirtualNode();
    if (node != d->plyBoundariesNode)
        delete std::exchange(d->plyBoundariesNode, node);
}

void ZYLEditTPGraphicsMgr::SetSurfacesVisibility(bool visible) {
    if (d->surfacesNode)
        d->surfacesNode->SetVisibility(visible);
}

void ZYLEditTPGraphicsMgr::SetPlyBoundariesVisibility(bool visible) {
    if (d->plyBoundariesNode)
        d->plyBoundariesNode->SetVisibility(visible);
}

void ZYLEditTPGraphicsMgr::RemoveNonEditToolPathGraphics() {
    delete std::exchange(d->surfacesNode, nullptr);
    delete std::exchange(d->plyBoundariesNode, nullptr);
}

ZYLVisVirtualObject *ZYLEditTPGraphicsMgr::CreateSurfacesVirtualNode() {
    return NewHiddenNode(d->environment, CreateSurfacesVisRep());
}

ZYLVisRep *ZYLEditTPGraphicsMgr::CreateSurfacesVisRep() {
    // Surfaces look here as they do everywhere else in the host: drawn with the surface
    // configuration of the current feature environment.
    const ZYLFeatEnvironment *environment = ZYLFeatEnvironmentManager::GetManager()->GetCurrentEnvironment();
    const ZYLFeatVisualizationConfig config =
        environment ? environment->GetSurfaceConfig() : ZYLFeatVisualizationConfig();
    QList<ZYLVisRep *> reps;
    for (const ZYLFeatGeometry *surface : std::as_const(d->surfaces)) {
        if (!surface)
            continue;
        reps.append(ZYLVisRepFactory::CreateRep(surface->GetBody(), config.GetPointOptions(), config.GetCurveOptions(),
                                                config.GetSurfaceOptions(), config.GetVisibleGeometry()));
    }
    return new ZYLVisRepSet(reps);
}

ZYLVisVirtualObject *ZYLEditTPGraphicsMgr::CreatePlyBoundariesVirtualNode() {
    return NewHiddenNode(d->environment, CreatePlyVisRep());
}

ZYLVisRep *ZYLEditTPGraphicsMgr::CreatePlyVisRep() {
    QList<ZYLVisPrimitive *> primitives;
    for (const ZYLGeoAssembledCurveOnSurface *boundary : std::as_const(d->plyBoundaryCurves)) {
        if (!boundary)
            continue;
        for (int i = 0; i < boundary->GetNumCurves(); ++i)
            primitives.append(new ZYLVisPolylinePrimitive(boundary->GetCurve(i), ZYLGeoRangeOfCurve()));
    }
    // The boundary stays visible through the surface it lies on.
    ZYLVisOptions options;
    options.SetDepthEnabled(false);
    return new ZYLVisRepGraphics(primitives, options);
}
