// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Gizmo drags: translation along and rotation about the axes of its frame, only for enabled
// interactions, with PositionChanged for drags and not for SetPosition, which shows a hidden gizmo again.

#include "ZYLVisGizmo.h"

#include "ZYLVisTestScene.h"

#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <numbers>

namespace {
constexpr double size = 10.0;

// A frame away from the world axes, so that a mix-up of local and global axes shows.
ZYLMathAxis tiltedFrame()
{
    return ZYLMathAxis(ZYLMathPoint(5, -3, 2), ZYLMathVector(1, 1, 0), ZYLMathVector(-1, 1, 1));
}

// A ray looking along `view` that passes through `target`.
ZYLVisPickRay rayThrough(const ZYLMathPoint &target, const ZYLMathVector &view)
{
    return ZYLVisPickRay(target - view * 200.0, view, 0.01);
}

// A gizmo of size 10 at the tilted frame, with the given interactions.
struct TiltedGizmo {
    explicit TiltedGizmo(int enabled)
    {
        gizmo.SetSize(size);
        gizmo.SetEnabledInteraction(enabled);
        gizmo.SetPosition(start);
    }
    ZYLVisEnvironment env;
    ZYLVisGizmo gizmo{&env};
    const ZYLMathAxis start = tiltedFrame();
};

bool sameFrame(const ZYLMathAxis &a, const ZYLMathAxis &b)
{
    return a.IsEqual(b, 1e-9, 1e-9);
}
}

class tst_ZYLVisGizmo : public QObject {
    Q_OBJECT

private slots:
    void rotateAboutEnabledAxis_data();
    void rotateAboutEnabledAxis();
    void invalidSettingsAreRefused();
    void repHasOneHandlePerInteraction();
};

void tst_ZYLVisGizmo::rotateAboutEnabledAxis_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<int>("enabled");
    QTest::addColumn<bool>("turns");
    QTest::newRow("about z, all") << 2 << 119 << true;
    QTest::newRow("about x, translations only") << 0 << 7 << false;
}

void tst_ZYLVisGizmo::rotateAboutEnabledAxis()
{
    QFETCH(int, axis);
    QFETCH(int, enabled);
    QFETCH(bool, turns);
    TiltedGizmo rig(enabled);
    ZYLVisGizmo &gizmo = rig.gizmo;
    const ZYLMathAxis &start = rig.start;
    QSignalSpy spy(&gizmo, &ZYLVisGizmo::PositionChanged);

    const ZYLMathPoint &g = start.GetOrigin();
    const ZYLMathVector &a = start.GetDirection(axis);
    const ZYLMathVector &u = start.GetDirection((axis + 1) % 3);
    const ZYLMathVector &w = start.GetDirection((axis + 2) % 3);
    const double ring = 0.75 * size;
    const auto onRing = [&](double angle) { return g + (u * std::cos(angle) + w * std::sin(angle)) * ring; };
    // Grab the ring between two arrows, looking along the axis, and turn it by 30 degrees.
    const double grab = std::numbers::pi / 4;
    const double turn = std::numbers::pi / 6;
    QCOMPARE(gizmo.BeginDrag(rayThrough(onRing(grab), a)), turns);
    if (turns)
        QCOMPARE(gizmo.GetDraggedHandle(), 16 << axis);
    gizmo.Drag(rayThrough(onRing(grab + turn), a));
    gizmo.EndDrag();

    const ZYLMathAxis expected = turns ? start.Rotated(g, a, turn) : start;
    QVERIFY(sameFrame(gizmo.GetPosition(), expected));
    QCOMPARE(spy.count(), turns ? 1 : 0);
    if (turns) {
        // The turn is about the axis through the origin: origin and axis stay.
        QVERIFY((gizmo.GetPosition().GetOrigin() - g).GetLength() < 1e-9);
        QVERIFY((gizmo.GetPosition().GetDirection(axis) - a).GetLength() < 1e-9);
    }
}

void tst_ZYLVisGizmo::invalidSettingsAreRefused()
{
    ZYLVisEnvironment env;
    ZYLVisGizmo gizmo(&env);
    gizmo.SetEnabledInteraction(55);
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, gizmo.SetEnabledInteraction(8));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, gizmo.SetEnabledInteraction(128));
    QCOMPARE(gizmo.GetEnabledInteraction(), 55);
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, gizmo.SetSize(0.0));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, gizmo.SetSize(std::nan("")));
    QCOMPARE(gizmo.GetSize(), 100.0);
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, ZYLVisGizmo(nullptr));
}

void tst_ZYLVisGizmo::repHasOneHandlePerInteraction()
{
    ZYLVisEnvironment env;
    ZYLVisGizmo gizmo(&env);
    gizmo.SetEnabledInteraction(55);
    const ZYLVisRep *rep = gizmo.GetRep();
    int arrows = 0, rings = 0;
    for (const ZYLVisRep::Item &item : rep->GetAllPrimitives()) {
        arrows += item.primitive->GetKind() == ZYLVisPrimitive::Kind::Segments;
        rings += item.primitive->GetKind() == ZYLVisPrimitive::Kind::Polyline;
        QVERIFY(!item.options->IsDepthEnabled());
    }
    QCOMPARE(arrows, 3);
    QCOMPARE(rings, 2);
    // The arrows reach the size along the axes.
    QCOMPARE(rep->GetBoundingBox().GetMax().X(), 100.0);
    gizmo.SetEnabledInteraction(ZYLVisGizmo::AllInteractions);
    QCOMPARE(int(gizmo.GetRep()->GetAllPrimitives().size()), 6);
}

QTEST_GUILESS_MAIN(tst_ZYLVisGizmo)
#include "tst_ZYLVisGizmo.moc"
