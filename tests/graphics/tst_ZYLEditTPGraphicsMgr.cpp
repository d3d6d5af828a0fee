// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The tool path edit graphics as the studio runs them: the session loads the module and the
// graphics bridge, enters the edit environment of a small program, and the tests look at the
// nodes of the scene, their lookups and rebuilds, the machine and the surfaces.
#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLTPEditUISettings.h"
#include "ZYLTPTestProgram.h"

#include "ZYLStudioSession.h"

#include "ZYLTPBreakRange.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPCourseVisRep.h"
#include "ZYLTPDemoGenerator.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPVisualizationOptions.h"
#include "ZYLTPVisualizationSettings.h"

#include "ZYLGeoAssembledCurveOnSurface.h"
#include "ZYLGeoRef.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisRepSet.h"
#include "ZYLVisVirtualObject.h"

#include <QPointer>
#include <QTest>

#include <memory>

namespace {

using CollisionPoints = QList<ZYLEditTPGraphicsMgr::CollisionPoint>;
using Mgr = ZYLEditTPGraphicsMgr;

const CollisionPoints HeadPoints{{ZYLMathPoint(0.0, 0.0, 150.0), 40.0}, {ZYLMathPoint(0.0, 30.0, 200.0), 35.0}};
const CollisionPoints Roller0Points{{ZYLMathPoint(0.0, 25.0, 10.0), 5.0}};
const CollisionPoints Roller1Points{{ZYLMathPoint(0.0, -15.0, 8.0), 3.0}, {ZYLMathPoint(0.0, 15.0, 8.0), 3.0}};

// Three straight courses linked into a chain with approach and retract links, a break range
// on the first course, a head and two rollers with collision points.
struct Program {
    Program() {
        head = builder.AddMachineHead(QStringLiteral("Head"));
        roller0 = builder.AddRoller(QStringLiteral("Roller 0"), 50.0, 60.0);
        roller1 = builder.AddRoller(QStringLiteral("Roller 1"), 30.0, 40.0);
        builder.SetCollisionPoints(head, HeadPoints);
        builder.SetCollisionPoints(roller0, Roller0Points);
        builder.SetCollisionPoints(roller1, Roller1Points);
        procedure = builder.AddRollLayupProcedure(QStringLiteral("Ply 1"), QString());
        configuration = builder.AddMachineConfiguration(procedure, head, roller0);
        for (int i = 0; i < 3; ++i)
            courses << builder.AddTowCourse(procedure, configuration, ZYLTPStraightCourse(50.0 * i, 10.0, {{11, 0xF}}));
        range = builder.AddBreakRange(courses[0], 30.0, 50.0);
        builder.AddLink(procedure, nullptr, courses[0], ZYLTPCourseLink::Linear);
        builder.AddLink(procedure, courses[0], courses[1], ZYLTPCourseLink::Linear);
        builder.AddLink(procedure, courses[1], courses[2], ZYLTPCourseLink::Linear);
        builder.AddLink(procedure, courses[2], nullptr, ZYLTPCourseLink::Linear);
        program = ZYLGeoRef<ZYLTPProgram>(builder.TakeProgram());
    }

    ZYLTPProgramBuilder builder;
    ZYLTPMachineHead *head = nullptr;
    ZYLTPRoller *roller0 = nullptr;
    ZYLTPRoller *roller1 = nullptr;
    ZYLTPRollLayupProcedure *procedure = nullptr;
    ZYLTPMachineConfiguration *configuration = nullptr;
    QList<ZYLTPTowCourse *> courses;
    ZYLTPBreakRange *range = nullptr;
    ZYLGeoRef<ZYLTPProgram> program;
};

template <class Rep> QList<ZYLVisVirtualObject *> SceneNodesOf(ZYLVisEnvironment *environment) {
    QList<ZYLVisVirtualObject *> nodes;
    for (ZYLVisVirtualObject *object : environment->GetVirtualObjects()) {
        if (qobject_cast<const Rep *>(object->GetRep()))
            nodes << object;
    }
    return nodes;
}

QList<QPointer<ZYLVisVirtualObject>> Guarded(const QList<ZYLVisVirtualObject *> &nodes) {
    QList<QPointer<ZYLVisVirtualObject>> guarded;
    for (ZYLVisVirtualObject *node : nodes)
        guarded << node;
    return guarded;
}

int CountAlive(const QList<QPointer<ZYLVisVirtualObject>> &nodes) {
    return int(std::count_if(nodes.begin(), nodes.end(), [](const auto &node) { return !node.isNull(); }));
}

ZYLTPVisualizationOptions GlobalOptions() {
    ZYLTPVisualizationOptions options;
    ZYLTPVisualizationSettings::GetInstance()->GetVisualizationOptions(&options);
    return options;
}

// Changes the host's global display options (the length of drawn vectors).
void ChangeGlobalOptions() {
    ZYLTPVisualizationOptions options = GlobalOptions();
    options.SetVectorLength(options.GetVectorLength() + 1.0);
    ZYLTPVisualizationSettings::GetInstance()->SetVisualizationOptions(options);
}

void SetModes(const QString &course, const QString &laying, const QString &links, const QString &linking) {
    ZYLTPEditUISettings *settings = ZYLTPEditUISettings::GetInstance();
    settings->SetViewCourseMode(course);
    settings->SetViewLayingPointsMode(laying);
    settings->SetViewCourseLinksMode(links);
    settings->SetViewLinkPointsMode(linking);
}

} // namespace

class tst_ZYLEditTPGraphicsMgr : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void lookupsGoBothWays();
    void rebuildingOneKindKeepsTheNodes();
    void addedLinkNodeComesAfterTheProcedureLinks();
    void globalOptionsChangeRebuildsOnlyShownNodes();
    void rollLayupProceduresAfterOtherKindsAreShown();
    void collisionPointsOfConfiguration();
    void viewSettingsShowToolsAndSurfaces_data();
    void viewSettingsShowToolsAndSurfaces();
    void leavingTearsTheEnvironmentDown();
    void demoPlyShowsSurfaceAndBoundaries();

private:
    ZYLVisEnvironment *Scene() const { return m_manager->GetEditToolPathVisEnvironment(); }
    // The surfaces node: the one scene object whose representation is a set.
    ZYLVisVirtualObject *SurfacesNode() const;
    // The ply boundaries node: the scene object that is neither a tool path, head, roller
    // nor surfaces node.
    ZYLVisVirtualObject *PlyBoundariesNode() const;

    ZYLStudioSession *m_session = nullptr;
    Program *m_program = nullptr;
    Mgr *m_manager = nullptr;
};

void tst_ZYLEditTPGraphicsMgr::initTestCase() {
    m_session = new ZYLStudioSession(this);
    QVERIFY2(m_session->Start(), qPrintable(m_session->GetErrorString()));
    m_manager = qobject_cast<Mgr *>(m_session->GetGraphicsManager());
    QVERIFY(m_manager);
    QCOMPARE(Mgr::GetManager(), m_manager);
    m_program = new Program;
    QVERIFY(m_session->EnterEditEnvironment(m_program->program.get()));
    QCOMPARE(m_manager->GetToolPathProgram(), m_program->program.get());
}

void tst_ZYLEditTPGraphicsMgr::init() {
    if (!m_session->IsInEditEnvironment())
        QVERIFY(m_session->EnterEditEnvironment(m_program->program.get()));
    SetModes(QStringLiteral("ViewCourseAndPolyline"), QStringLiteral("ViewLayingPointsWithToolAxis"),
             QStringLiteral("ViewCourseLinksWithPointsOnly"), QStringLiteral("ViewLinkPointsOnly"));
    m_manager->UpdateAllGraphics(m_manager->GetCurrentOptions());
}

void tst_ZYLEditTPGraphicsMgr::cleanupTestCase() {
    m_session->Shutdown();
    QVERIFY(!Mgr::GetManager());
    delete m_program;
}

ZYLVisVirtualObject *tst_ZYLEditTPGraphicsMgr::SurfacesNode() const {
    const QList<ZYLVisVirtualObject *> sets = SceneNodesOf<ZYLVisRepSet>(Scene());
    return sets.size() == 1 ? sets.first() : nullptr;
}

ZYLVisVirtualObject *tst_ZYLEditTPGraphicsMgr::PlyBoundariesNode() const {
    QList<ZYLVisVirtualObject *> known{SurfacesNode(), m_manager->GetMachineHeadVirtualNode()};
    for (const auto &roller : m_manager->GetRollersVirtualNodes())
        known << roller.second;
    for (auto type : {Mgr::CourseNodes, Mgr::CourseLinkNodes, Mgr::BreakRangeNodes})
        known += m_manager->GetToolPathVirtualNodes(type);
    ZYLVisVirtualObject *found = nullptr;
    for (ZYLVisVirtualObject *object : Scene()->GetVirtualObjects()) {
        if (known.contains(object))
            continue;
        if (found)
            return nullptr;
        found = object;
    }
    return found;
}

void tst_ZYLEditTPGraphicsMgr::lookupsGoBothWays() {
    ZYLTPVisualizationOptions options = m_manager->GetCurrentOptions();
    options.SetCourseEnabled(true);
    options.SetLinkingTrajectoriesEnabled(true);
    options.SetBreakRangeEnabled(true);
    m_manager->UpdateAllGraphics(options);

    for (const ZYLTPCourse *course : std::as_const(m_program->courses)) {
        ZYLVisVirtualObject *node = m_manager->GetCourseVirtualNode(course);
        QVERIFY(node);
        QCOMPARE(m_manager->GetCourseObject(node), course);
        QCOMPARE(m_manager->GetCourseLinkObject(node), nullptr);
        QCOMPARE(m_manager->GetBreakRangeObject(node), nullptr);
    }
    for (int i = 0; i < m_program->procedure->GetNumLinks(); ++i) {
        const ZYLTPCourseLink *link = m_program->procedure->GetLinkByIndex(i);
        ZYLVisVirtualObject *node = m_manager->GetCourseLinkVirtualNode(link);
        QVERIFY(node);
        QCOMPARE(m_manager->GetCourseLinkObject(node), link);
        QCOMPARE(m_manager->GetCourseObject(node), nullptr);
    }
    ZYLVisVirtualObject *rangeNode = m_manager->GetBreakRangeVirtualNode(m_program->range);
    QVERIFY(rangeNode);
    QCOMPARE(m_manager->GetBreakRangeObject(rangeNode), m_program->range);
    QCOMPARE(m_manager->GetCourseVirtualNode(nullptr), nullptr);
    QCOMPARE(m_manager->GetCourseObject(nullptr), nullptr);
    QCOMPARE(m_manager->GetCourseObject(m_manager->GetMachineHeadVirtualNode()), nullptr);
}

void tst_ZYLEditTPGraphicsMgr::rebuildingOneKindKeepsTheNodes() {
    const QList<ZYLVisVirtualObject *> nodes = m_manager->GetToolPathVirtualNodes(Mgr::CourseNodes);
    QVERIFY(!nodes.isEmpty());
    QList<const ZYLVisRep *> reps;
    for (ZYLVisVirtualObject *node : nodes)
        reps << node->GetRep();
    m_manager->SetVirtualNodesVisibility(false, {nodes.first()});
    m_manager->SetVirtualNodesSelectable(true, {nodes.last()});

    m_manager->UpdateAllGraphics(Mgr::CourseNodes, m_manager->GetCurrentOptions());
    QCOMPARE(m_manager->GetToolPathVirtualNodes(Mgr::CourseNodes), nodes);
    for (int i = 0; i < nodes.size(); ++i) {
        QVERIFY(nodes[i]->GetRep() != reps[i]);
        QCOMPARE(m_manager->GetCourseObject(nodes[i]), m_program->courses[i]);
    }
    QVERIFY(!nodes.first()->IsVisible());
    QVERIFY(nodes.last()->IsSelectable());

    // Rebuilding everything replaces every node.
    const auto guarded = Guarded(nodes);
    m_manager->UpdateAllGraphics(m_manager->GetCurrentOptions());
    QCOMPARE(CountAlive(guarded), 0);
    QCOMPARE(m_manager->GetToolPathVirtualNodes(Mgr::CourseNodes).size(), nodes.size());
}

void tst_ZYLEditTPGraphicsMgr::addedLinkNodeComesAfterTheProcedureLinks() {
    const QList<ZYLVisVirtualObject *> before = m_manager->GetToolPathVirtualNodes(Mgr::CourseLinkNodes);
    QVERIFY(!before.isEmpty());
    const ZYLTPCourseLink *link = m_program->procedure->GetLinkByIndex(1);
    ZYLVisVirtualObject *added = m_manager->AddCourseLinkVirtualNode(link, m_manager->GetCurrentOptions());
    QVERIFY(added);
    QCOMPARE(m_manager->GetToolPathVirtualNodes(Mgr::CourseLinkNodes), before + QList<ZYLVisVirtualObject *>{added});
    QVERIFY(Scene()->GetVirtualObjects().contains(added));
    QVERIFY(!added->IsSelectable());

    QTest::ignoreMessage(QtDebugMsg, "input link object is null");
    QCOMPARE(m_manager->AddCourseLinkVirtualNode(nullptr, m_manager->GetCurrentOptions()), nullptr);
    QCOMPARE(m_manager->GetToolPathVirtualNodes(Mgr::CourseLinkNodes).size(), before.size() + 1);

    // Removing the graphics deletes the added node too.
    QPointer<ZYLVisVirtualObject> guard(added);
    m_manager->RemoveEditToolPathGraphics();
    QVERIFY(guard.isNull());
}

void tst_ZYLEditTPGraphicsMgr::globalOptionsChangeRebuildsOnlyShownNodes() {
    const auto shown = Guarded(m_manager->GetToolPathVirtualNodes(Mgr::CourseNodes));
    ChangeGlobalOptions();
    QCOMPARE(CountAlive(shown), 0);
    QCOMPARE(m_manager->GetToolPathVirtualNodes(Mgr::CourseNodes).size(), shown.size());

    m_manager->RemoveEditToolPathGraphics();
    ChangeGlobalOptions();
    QVERIFY(m_manager->GetToolPathVirtualNodes(Mgr::CourseNodes).isEmpty());
    QVERIFY(SceneNodesOf<ZYLTPCourseVisRep>(Scene()).isEmpty());
}

void tst_ZYLEditTPGraphicsMgr::rollLayupProceduresAfterOtherKindsAreShown() {
    ZYLTPProgramBuilder builder;
    const ZYLTPRoller *roller = builder.AddRoller(QStringLiteral("Roller"), 50.0, 60.0);
    builder.AddInspectionProcedure(QStringLiteral("Scan"), QString(), roller,
                                   {ZYLMathPoint(0.0, 0.0, 50.0), ZYLMathPoint(100.0, 0.0, 50.0)}, 1000.0);
    ZYLTPRollLayupProcedure *procedure = builder.AddRollLayupProcedure(QStringLiteral("Ply"), QString());
    const ZYLTPMachineConfiguration *configuration = builder.AddMachineConfiguration(procedure, nullptr, roller);
    const ZYLTPCourse *first =
        builder.AddTowCourse(procedure, configuration, ZYLTPStraightCourse(0.0, 10.0, {{5, 0x3}}));
    const ZYLTPCourse *second =
        builder.AddTowCourse(procedure, configuration, ZYLTPStraightCourse(40.0, 10.0, {{5, 0x3}}));
    builder.AddLink(procedure, nullptr, first, ZYLTPCourseLink::Linear);
    builder.AddLink(procedure, second, nullptr, ZYLTPCourseLink::Linear);
    const ZYLGeoRef<ZYLTPProgram> other(builder.TakeProgram());

    m_manager->SetToolPathProgram(other.get());
    m_manager->UpdateAllGraphics(m_manager->GetCurrentOptions());
    QCOMPARE(m_manager->GetToolPathVirtualNodes(Mgr::CourseNodes).size(), 2);
    QVERIFY(m_manager->GetCourseVirtualNode(second));
    // Head and rollers park only at an approach link of a first roll layup procedure; the
    // retract link of the last one still counts.
    QCOMPARE(m_manager->GetApproachLinkStartPoint(), nullptr);
    QCOMPARE(m_manager->GetStartEndLinks(), QList<const ZYLTPCourseLink *>{procedure->GetRetractLink()});

    m_manager->SetToolPathProgram(m_program->program.get());
    m_manager->UpdateAllGraphics(m_manager->GetCurrentOptions());
    QCOMPARE(other->GetReferenceCount(), 1);
}

void tst_ZYLEditTPGraphicsMgr::collisionPointsOfConfiguration() {
    CollisionPoints points{{ZYLMathPoint(1.0, 2.0, 3.0), 4.0}};
    m_manager->GetCollisionPoints(*m_program->configuration, points);
    QCOMPARE(points, HeadPoints + Roller0Points);

    // A second call for the same id replaces the list.
    const CollisionPoints other{{ZYLMathPoint(5.0, 5.0, 5.0), 1.0}};
    m_manager->AddHeadCollisionPoints(m_program->head->GetId(), other);
    m_manager->GetCollisionPoints(*m_program->configuration, points);
    QCOMPARE(points, other + Roller0Points);
    m_manager->AddHeadCollisionPoints(m_program->head->GetId(), HeadPoints);

    // Configurations of another program with the same ids: without head nothing at all;
    // with a head the session gave no points to, the roller's only.
    ZYLTPProgramBuilder builder;
    const ZYLTPRoller *roller = builder.AddRoller(QStringLiteral("R"), 10.0, 10.0);
    ZYLTPRollLayupProcedure *procedure = builder.AddRollLayupProcedure(QStringLiteral("P"), QString());
    const ZYLTPMachineConfiguration *headless = builder.AddMachineConfiguration(procedure, nullptr, roller);
    m_manager->GetCollisionPoints(*headless, points);
    QVERIFY(points.isEmpty());
    builder.AddMachineHead(QStringLiteral("H0"));
    const ZYLTPMachineHead *head1 = builder.AddMachineHead(QStringLiteral("H1"));
    const ZYLTPRoller *roller1 = builder.AddRoller(QStringLiteral("R1"), 10.0, 10.0);
    const ZYLTPMachineConfiguration *unknownHead = builder.AddMachineConfiguration(procedure, head1, roller1);
    m_manager->GetCollisionPoints(*unknownHead, points);
    QCOMPARE(points, Roller1Points);
}

void tst_ZYLEditTPGraphicsMgr::viewSettingsShowToolsAndSurfaces_data() {
    QTest::addColumn<bool>("surface");
    QTest::addColumn<bool>("plyBoundary");
    QTest::addColumn<bool>("head");
    QTest::addColumn<bool>("roller");
    QTest::newRow("everything") << true << true << true << true;
    QTest::newRow("nothing") << false << false << false << false;
    // Mixed rows catch one setting wired to another's node.
    QTest::newRow("surface and head") << true << false << true << false;
    QTest::newRow("ply boundary and roller") << false << true << false << true;
}

void tst_ZYLEditTPGraphicsMgr::viewSettingsShowToolsAndSurfaces() {
    QFETCH(bool, surface);
    QFETCH(bool, plyBoundary);
    QFETCH(bool, head);
    QFETCH(bool, roller);
    ZYLTPEditUISettings *settings = ZYLTPEditUISettings::GetInstance();
    settings->SetViewSurface(surface);
    settings->SetViewPlyBoundary(plyBoundary);
    settings->SetViewMachineHead(head);
    settings->SetViewRoller(roller);
    m_manager->UpdateUISettingGraphics();

    QVERIFY(SurfacesNode());
    QVERIFY(PlyBoundariesNode());
    QCOMPARE(SurfacesNode()->IsVisible(), surface);
    QCOMPARE(PlyBoundariesNode()->IsVisible(), plyBoundary);
    QCOMPARE(m_manager->GetMachineHeadVirtualNode()->IsVisible(), head);
    // Only the rollers of the first roller's id follow the setting.
    const auto rollers = m_manager->GetRollersVirtualNodes();
    QCOMPARE(rollers[0].second->IsVisible(), roller);
    QVERIFY(!rollers[1].second->IsVisible());

    // Rebuilt nodes start hidden whatever the settings say; without a node the visibility
    // setters do nothing.
    m_manager->SetSurfaces({});
    QVERIFY(!SurfacesNode()->IsVisible());
    QCOMPARE(SurfacesNode()->GetRep()->GetNumChildren(), 0);
    m_manager->RemoveNonEditToolPathGraphics();
    QVERIFY(!SurfacesNode());
    m_manager->SetSurfacesVisibility(true);
    m_manager->SetPlyBoundariesVisibility(true);
    QVERIFY(!SurfacesNode());
    m_session->LeaveEditEnvironment();
}

void tst_ZYLEditTPGraphicsMgr::leavingTearsTheEnvironmentDown() {
    QPointer<ZYLVisEnvironment> scene = Scene();
    QPointer<ZYLVisVirtualObject> head = m_manager->GetMachineHeadVirtualNode();
    QPointer<ZYLVisVirtualObject> roller = m_manager->GetRollersVirtualNodes().first().second;
    const int references = m_program->program->GetReferenceCount();
    QVERIFY(scene && head && roller);

    m_session->LeaveEditEnvironment();
    QVERIFY(scene.isNull());
    QVERIFY(head.isNull());
    QVERIFY(roller.isNull());
    QCOMPARE(m_manager->GetEditToolPathVisEnvironment(), nullptr);
    QCOMPARE(m_manager->GetToolPathProgram(), nullptr);
    QCOMPARE(m_manager->GetToolPathFeature(), nullptr);
    QVERIFY(m_manager->GetRollersVirtualNodes().isEmpty());
    QCOMPARE(m_program->program->GetReferenceCount(), references - 1);
    CollisionPoints points;
    m_manager->GetCollisionPoints(*m_program->configuration, points);
    QVERIFY(points.isEmpty());
    QCOMPARE(m_manager->GetStartEndLinks().size(), 0);
    QCOMPARE(m_manager->GetApproachLinkStartPoint(), nullptr);
}

void tst_ZYLEditTPGraphicsMgr::demoPlyShowsSurfaceAndBoundaries() {
    ZYLTPDemoGenerator::Parameters parameters;
    parameters.courses = 2;
    parameters.pointSpacing = 50.0;
    const ZYLGeoRef<ZYLTPProgram> demo = ZYLTPDemoGenerator::Create(parameters);
    QVERIFY(demo->GetPlySurface());
    QVERIFY(!demo->GetPlyBoundaries().isEmpty());
    QVERIFY(m_session->EnterEditEnvironment(demo.get()));

    // The host's manager checks collisions against the ply surface of the program shown.
    QCOMPARE(m_manager->GetUpdatedSurface(), demo->GetPlySurface());
    QVERIFY(SurfacesNode());
    QCOMPARE(SurfacesNode()->GetRep()->GetNumChildren(), 1);
    QVERIFY(SurfacesNode()->GetRep()->GetChild(0)->GetNumPrimitives() > 0);
    // One polyline per curve of every boundary, drawn through the surface.
    int curves = 0;
    for (const ZYLGeoAssembledCurveOnSurface *boundary : demo->GetPlyBoundaries())
        curves += boundary->GetNumCurves();
    const ZYLVisRep *ply = PlyBoundariesNode()->GetRep();
    QCOMPARE(ply->GetNumPrimitives(), curves);
    for (int i = 0; i < ply->GetNumPrimitives(); ++i)
        QVERIFY(!ply->GetOptions(i).IsDepthEnabled());
    QVERIFY(m_manager->GetMachineHeadVirtualNode());
    int rollers = 0;
    for (int id = 0; id < demo->GetNumTools(); ++id)
        rollers += qobject_cast<const ZYLTPRoller *>(demo->GetTool(id)) ? 1 : 0;
    QVERIFY(rollers > 0);
    QCOMPARE(m_manager->GetRollersVirtualNodes().size(), rollers);

    m_session->LeaveEditEnvironment();
    QCOMPARE(demo->GetReferenceCount(), 1);
}

QTEST_MAIN(tst_ZYLEditTPGraphicsMgr)
#include "tst_ZYLEditTPGraphicsMgr.moc"
