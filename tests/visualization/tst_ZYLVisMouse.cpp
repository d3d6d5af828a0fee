// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The mouse entry points of the scene: events and their action types under the interaction
// flags, hover pre-selection, click selection through the filter, mouse points and snapping.

#include "ZYLVisTestScene.h"

#include <QSignalSpy>
#include <QTest>

namespace {
// Three objects side by side along x: A at x = 0, B at x = 5, C at x = 10 (squares at z = 0).
struct MouseScene : TestScene {
    MouseScene()
    {
        a = Add(squareRep(-0.5, -0.5, 0), "A");
        b = Add(squareRep(4.5, -0.5, 0), "B");
        c = Add(squareRep(9.5, -0.5, 0), "C");
    }
    ZYLVisVirtualObject *a, *b, *c;
};

// "type:label" per event, label "-" for no object.
QStringList describe(const QSignalSpy &spy)
{
    QStringList events;
    for (const QList<QVariant> &args : spy) {
        const ZYLVisMouseEvent event = args.at(0).value<ZYLVisMouseEvent>();
        const ZYLVisObject *object = event.GetContext().GetVisObject();
        events << QStringLiteral("%1:%2").arg(int(event.GetActionType())).arg(object ? object->GetLabel() : "-");
    }
    return events;
}
}

class tst_ZYLVisMouse : public QObject {
    Q_OBJECT

private slots:
    void eventsFollowInteractionFlags_data();
    void eventsFollowInteractionFlags();
    void invalidFlagsAreRefused();
    void clickChangesSelection_data();
    void clickChangesSelection();
    void mousePointOnObjectOrNearSceneCentre();
    void snapping_data();
    void snapping();
};

void tst_ZYLVisMouse::eventsFollowInteractionFlags_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<QStringList>("expected");
    const QStringList moves{"8:A", "1:A", "16:A", "8:B", "1:B", "1:B", "16:B", "1:-"};
    QTest::newRow("both with snapping") << 19 << (moves + QStringList{"2:B", "2:-", "16:-"});
}

void tst_ZYLVisMouse::eventsFollowInteractionFlags()
{
    QFETCH(int, flags);
    QFETCH(QStringList, expected);
    MouseScene scene;
    scene.env.SetMouseInteraction(flags);
    scene.env.SetMouseSnapGeometryTypes(ZYLVisEnvironment::SnapAll);
    QSignalSpy spy(&scene.env, &ZYLVisEnvironment::MouseEvent);
    scene.env.MouseMove(rayDown(0, 0));
    scene.env.MouseMove(rayDown(5, 0));
    scene.env.MouseMove(rayDown(5.2, 0.1)); // still over B: no entry or exit
    scene.env.MouseMove(rayDown(2.5, 0));
    scene.env.MouseClick(rayDown(5, 0));
    scene.env.MouseClick(rayDown(2.5, 0));
    scene.env.MouseLeave();
    QCOMPARE(describe(spy), expected);
}

void tst_ZYLVisMouse::invalidFlagsAreRefused()
{
    ZYLVisEnvironment env;
    env.SetMouseInteraction(3);
    env.SetMouseSnapGeometryTypes(127);
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, env.SetMouseInteraction(4));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, env.SetMouseInteraction(-1));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, env.SetMouseSnapGeometryTypes(128));
    QCOMPARE(env.GetMouseInteraction().toInt(), 3);
    QCOMPARE(env.GetMouseSnapGeometryTypes().toInt(), 127);
}

void tst_ZYLVisMouse::clickChangesSelection_data()
{
    // Filter: "none", "single" (replaces), "multiple" (adds), "rejectsB" (single, B not pickable).
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("before");
    QTest::addColumn<double>("x");
    QTest::addColumn<bool>("ctrl");
    QTest::addColumn<QString>("after");
    QTest::newRow("multiple adds") << "multiple" << "A" << 5.0 << false << "AB";
    QTest::newRow("ctrl removes selected") << "single" << "AB" << 0.0 << true << "B";
    QTest::newRow("ctrl adds unselected") << "single" << "A" << 10.0 << true << "AC";
    QTest::newRow("filtered object is nothing") << "rejectsB" << "A" << 5.0 << false << "";
}

void tst_ZYLVisMouse::clickChangesSelection()
{
    QFETCH(QString, filter);
    QFETCH(QString, before);
    QFETCH(double, x);
    QFETCH(bool, ctrl);
    QFETCH(QString, after);
    MouseScene scene;
    const auto set = [&](const QString &labels) {
        ObjectSet s;
        for (ZYLVisObject *o : {scene.a, scene.b, scene.c}) {
            if (labels.contains(o->GetLabel()))
                s.insert(o);
        }
        return s;
    };
    if (filter != "none") {
        ZYLVisVirtualObject *b = scene.b;
        scene.env.SetSelectionFilter(new ZYLVisFunctionFilter(
            filter == "multiple", [=](const ZYLVisObject *o) { return filter != "rejectsB" || o != b; }));
    }
    scene.env.SetVisualizationSelection(set(before));
    QSignalSpy spy(&scene.env, &ZYLVisEnvironment::VisualizationSelectionChanged);
    scene.env.MouseClick(rayDown(x, 0), ctrl ? Qt::ControlModifier : Qt::NoModifier);
    QCOMPARE(scene.env.GetVisualizationSelection(), set(after));
    QCOMPARE(spy.count(), before == after ? 0 : 1);
    if (spy.count() == 1) {
        QCOMPARE(spy.at(0).at(0).value<ObjectSet>(), set(after) - set(before));
        QCOMPARE(spy.at(0).at(1).value<ObjectSet>(), set(before) - set(after));
    }
}

void tst_ZYLVisMouse::mousePointOnObjectOrNearSceneCentre()
{
    MouseScene scene;
    scene.env.SetMouseInteraction(ZYLVisEnvironment::DeliverClicks | ZYLVisEnvironment::DeliverMoves);
    QSignalSpy spy(&scene.env, &ZYLVisEnvironment::MouseEvent);
    const ZYLVisPickRay slanted(ZYLMathPoint(5.2, 0.1, 10), ZYLMathVector(0, 0.01, -1), 0.1);
    scene.env.MouseMove(slanted);
    const ZYLVisMouseContext onObject = spy.last().at(0).value<ZYLVisMouseEvent>().GetContext();
    QCOMPARE(onObject.GetVisObject(), scene.b);
    QVERIFY((onObject.GetMousePoint() - ZYLMathPoint(5.2, 0.2, 0)).GetLength() < 1e-9);
    QVERIFY((onObject.GetViewDirection() - slanted.GetDirection()).GetLength() < 1e-15);
    QVERIFY(!onObject.IsSnapped());

    // Over nothing: the ray point nearest the scene's centre (5, 0, 0).
    scene.env.MouseClick(ZYLVisPickRay(ZYLMathPoint(5, 3, 50), ZYLMathVector(0, 0, -1)), Qt::ShiftModifier);
    const ZYLVisMouseEvent click = spy.last().at(0).value<ZYLVisMouseEvent>();
    QCOMPARE(click.GetActionType(), ZYLVisMouseEvent::Clicked);
    QCOMPARE(click.GetModifiers(), Qt::ShiftModifier);
    QVERIFY(!click.GetContext().GetVisObject());
    QVERIFY((click.GetContext().GetMousePoint() - ZYLMathPoint(5, 3, 0)).GetLength() < 1e-9);
}

void tst_ZYLVisMouse::snapping_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<int>("types");
    QTest::addColumn<double>("x");
    QTest::addColumn<bool>("snapped");
    QTest::addColumn<double>("expectedX");
    // A polyline (0,0,0)-(10,0,0)-(10,10,0) and, on an unselectable object, a dot at (20, 0, 0)
    // and the segment (30,0,0)-(40,0,0). Rays come down at (x, 0.05) with radius 0.5.
    QTest::newRow("only points: no polyline vertex") << 18 << 1 << 9.7 << false << 9.7;
    QTest::newRow("dot of unselectable object") << 18 << 1 << 20.3 << true << 20.0;
    QTest::newRow("segment end") << 18 << 4 << 39.8 << true << 40.0;
}

void tst_ZYLVisMouse::snapping()
{
    QFETCH(int, flags);
    QFETCH(int, types);
    QFETCH(double, x);
    QFETCH(bool, snapped);
    QFETCH(double, expectedX);
    TestScene scene;
    scene.Add(testRep(new ZYLVisPolylinePrimitive({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}})));
    ZYLVisVirtualObject *dot = scene.Add(pointRep({{20, 0, 0}}));
    dot->SetSelectability(false);
    ZYLVisVirtualObject *segment = scene.Add(testRep(new ZYLVisSegmentPrimitive({{30, 0, 0}, {40, 0, 0}})));
    segment->SetSelectability(false);
    scene.env.SetMouseInteraction(flags);
    scene.env.SetMouseSnapGeometryTypes(types);
    QSignalSpy spy(&scene.env, &ZYLVisEnvironment::MouseEvent);
    scene.env.MouseMove(rayDown(x, 0.05, 0.5));
    const ZYLVisMouseContext context = spy.last().at(0).value<ZYLVisMouseEvent>().GetContext();
    QCOMPARE(context.IsSnapped(), snapped);
    QCOMPARE_LT(std::abs(context.GetMousePoint().X() - expectedX), 1e-9);
    if (snapped)
        QCOMPARE_LT(std::abs(context.GetMousePoint().Y()), 1e-12);
}

QTEST_GUILESS_MAIN(tst_ZYLVisMouse)
#include "tst_ZYLVisMouse.moc"
