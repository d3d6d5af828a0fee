// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Picking on the CPU: which object a ray finds among points, polylines, segments and
// triangles, with frames, priorities, growing radii, and against a brute-force reference.

#include "ZYLVisTestScene.h"

#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <numbers>

class tst_ZYLVisPicking : public QObject {
    Q_OBJECT

private slots:
    void nearestOfOverlapping_data();
    void nearestOfOverlapping();
    void positionFrame();
    void priorityWinsAtSimilarDepth_data();
    void priorityWinsAtSimilarDepth();
    void radiusGrowsAlongRay_data();
    void radiusGrowsAlongRay();
    void linesReportPointOnGeometry_data();
    void linesReportPointOnGeometry();
    void trianglesHitFromBothSidesOnlyInside_data();
    void trianglesHitFromBothSidesOnlyInside();
    void nothingBehindTheOrigin();
    void changedAndDeletedRepsArePickedAfresh();
    void matchesBruteForce();
};

void tst_ZYLVisPicking::nearestOfOverlapping_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<QString>("expected");
    QTest::newRow("both pickable") << "" << "top";
    QTest::newRow("top hidden") << "hide" << "bottom";
    QTest::newRow("top unselectable") << "unselectable" << "bottom";
    QTest::newRow("top filtered out") << "filter" << "bottom";
    QTest::newRow("top without rep") << "norep" << "bottom";
    QTest::newRow("top removed") << "remove" << "bottom";
}

void tst_ZYLVisPicking::nearestOfOverlapping()
{
    QFETCH(QString, change);
    QFETCH(QString, expected);
    TestScene scene;
    // Added bottom first, so that scene order does not decide.
    ZYLVisVirtualObject *bottom = scene.Add(squareRep(0, 0, 0), "bottom");
    ZYLVisVirtualObject *top = scene.Add(squareRep(0, 0, 5), "top");
    scene.Add(squareRep(3, 0, 10), "aside");
    if (change == "hide")
        top->SetVisibility(false);
    else if (change == "unselectable")
        top->SetSelectability(false);
    else if (change == "filter")
        scene.env.SetSelectionFilter(
            new ZYLVisFunctionFilter(false, [top](const ZYLVisObject *o) { return o != top; }));
    else if (change == "norep")
        top->SetRep(nullptr);
    else if (change == "remove")
        scene.env.RemoveVirtualObject(top);

    const ZYLVisPickResult hit = scene.env.Pick(rayDown(0.5, 0.5));
    QVERIFY(hit.IsHit());
    QCOMPARE(hit.object->GetLabel(), expected);
    QCOMPARE(hit.depth, expected == "top" ? 95.0 : 100.0);
    QCOMPARE(hit.object == bottom, expected == "bottom");
}

void tst_ZYLVisPicking::positionFrame()
{
    TestScene scene;
    ZYLVisVirtualObject *object = scene.Add(pointRep({{1, 0, 0}}));
    // Origin at (10, 0, 2), turned a quarter about z: local x is global y.
    const ZYLMathAxis frame(ZYLMathPoint(10, 0, 2), ZYLMathVector(0, 1, 0), ZYLMathVector(-1, 0, 0));
    object->SetPosition(&frame);

    QVERIFY(!scene.env.Pick(rayDown(1, 0)).IsHit());
    const ZYLVisPickResult hit = scene.env.Pick(rayDown(10, 1));
    QCOMPARE(hit.object, object);
    QVERIFY((hit.point - ZYLMathPoint(10, 1, 2)).GetLength() < 1e-12);
    QCOMPARE(hit.depth, 98.0);
    QVERIFY((object->GetBoundingBox(true).GetCenter() - ZYLMathPoint(10, 1, 2)).GetLength() < 1e-12);

    // Back to the world frame.
    object->SetPosition(nullptr);
    QVERIFY(!scene.env.Pick(rayDown(10, 1)).IsHit());
    QCOMPARE(scene.env.Pick(rayDown(1, 0)).object, object);
}

void tst_ZYLVisPicking::priorityWinsAtSimilarDepth_data()
{
    QTest::addColumn<double>("pointZ");
    QTest::addColumn<int>("pointPriority");
    QTest::addColumn<bool>("pointDepth");
    QTest::addColumn<bool>("pointWins");
    // Radius 0.1: hits within 0.2 of the nearest depth count as at the same depth.
    QTest::newRow("highlight just below surface") << -0.15 << 10 << true << true;
    QTest::newRow("highlight far below surface") << -0.5 << 10 << true << false;
    QTest::newRow("equal priority, below") << -0.15 << 0 << true << false;
    QTest::newRow("secondary highlight just below") << -0.1 << 1 << true << true;
    // Drawn on top (no depth test) wins whatever its depth and the other's priority.
    QTest::newRow("overlay far below") << -20.0 << -10 << false << true;
}

void tst_ZYLVisPicking::priorityWinsAtSimilarDepth()
{
    QFETCH(double, pointZ);
    QFETCH(int, pointPriority);
    QFETCH(bool, pointDepth);
    QFETCH(bool, pointWins);
    TestScene scene;
    ZYLVisVirtualObject *surface = scene.Add(squareRep(0, 0, 0));
    ZYLVisVirtualObject *point = scene.Add(pointRep({{0.5, 0.5, pointZ}}, pointPriority, pointDepth));
    QCOMPARE(scene.env.Pick(rayDown(0.5, 0.5)).object, pointWins ? point : surface);
}

void tst_ZYLVisPicking::radiusGrowsAlongRay_data()
{
    QTest::addColumn<double>("z");
    QTest::addColumn<double>("offset");
    QTest::addColumn<bool>("hit");
    // radius(t) = 0.1 + 0.01 t with t = 100 - z.
    QTest::newRow("deep, inside cone") << 50.0 << 0.55 << true;
    QTest::newRow("shallow, outside cone") << 70.0 << 0.55 << false;
    QTest::newRow("shallow, inside cone") << 70.0 << 0.35 << true;
    QTest::newRow("at origin, only base radius") << 100.0 << 0.11 << false;
}

void tst_ZYLVisPicking::radiusGrowsAlongRay()
{
    QFETCH(double, z);
    QFETCH(double, offset);
    QFETCH(bool, hit);
    for (int kind = 0; kind < 2; ++kind) {
        TestScene scene;
        // A dot, and a segment crossing the ray's side at the same offset.
        ZYLVisRep *rep = kind == 0 ? pointRep({{offset, 0, z}})
                                   : testRep(new ZYLVisSegmentPrimitive({{offset, -5, z}, {offset, 5, z}}));
        scene.Add(rep);
        QCOMPARE(scene.env.Pick(rayDown(0, 0, 0.1, 0.01)).IsHit(), hit);
    }
}

void tst_ZYLVisPicking::linesReportPointOnGeometry_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("polyline") << 0;
    QTest::newRow("segments") << 1;
}

void tst_ZYLVisPicking::linesReportPointOnGeometry()
{
    QFETCH(int, kind);
    TestScene scene;
    const std::vector<ZYLMathPoint> points{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {20, 10, 0}};
    ZYLVisPrimitive *primitive = kind == 0 ? static_cast<ZYLVisPrimitive *>(new ZYLVisPolylinePrimitive(points))
                                           : new ZYLVisSegmentPrimitive(points);
    scene.Add(testRep(primitive));
    // Near the second leg of the polyline, which segments do not have.
    const ZYLVisPickResult second = scene.env.Pick(rayDown(10.05, 4));
    QCOMPARE(second.IsHit(), kind == 0);
    if (kind == 0) {
        QCOMPARE(second.element, 1);
        QVERIFY((second.point - ZYLMathPoint(10, 4, 0)).GetLength() < 1e-12);
        QCOMPARE_LT(std::abs(second.distanceToRay - 0.05), 1e-12);
    }
    const ZYLVisPickResult third = scene.env.Pick(rayDown(15, 10.08));
    QCOMPARE(third.element, kind == 0 ? 2 : 1);
    QVERIFY((third.point - ZYLMathPoint(15, 10, 0)).GetLength() < 1e-12);
    QVERIFY(!scene.env.Pick(rayDown(5, 0.2)).IsHit());
}

void tst_ZYLVisPicking::trianglesHitFromBothSidesOnlyInside_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<bool>("hit");
    QTest::newRow("centre") << 0.5 << 0.5 << true;
    QTest::newRow("on the shared diagonal") << 0.3 << 0.3 << true;
    QTest::newRow("corner") << 0.999 << 0.999 << true;
    QTest::newRow("just outside") << 1.01 << 0.5 << false;
    QTest::newRow("far outside") << -3.0 << 0.5 << false;
}

void tst_ZYLVisPicking::trianglesHitFromBothSidesOnlyInside()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(bool, hit);
    TestScene scene;
    scene.Add(squareRep(0, 0, 2));
    // Triangles have no pick radius: only the ray through them counts.
    const ZYLVisPickResult fromAbove = scene.env.Pick(rayDown(x, y, 0.5));
    const ZYLVisPickResult fromBelow =
        scene.env.Pick(ZYLVisPickRay(ZYLMathPoint(x, y, -8), ZYLMathVector(0, 0, 1), 0.5));
    QCOMPARE(fromAbove.IsHit(), hit);
    QCOMPARE(fromBelow.IsHit(), hit);
    if (hit) {
        QVERIFY((fromAbove.point - ZYLMathPoint(x, y, 2)).GetLength() < 1e-12);
        QCOMPARE(fromAbove.depth, 98.0);
        QCOMPARE(fromBelow.depth, 10.0);
    }
}

void tst_ZYLVisPicking::nothingBehindTheOrigin()
{
    TestScene scene;
    scene.Add(pointRep({{0, 0, 150}}));
    scene.Add(squareRep(-0.5, -0.5, 120));
    QVERIFY(!scene.env.Pick(rayDown(0, 0, 1.0)).IsHit());
}

void tst_ZYLVisPicking::changedAndDeletedRepsArePickedAfresh()
{
    TestScene scene;
    ZYLVisVirtualObject *object = scene.Add(nullptr);
    object->SetRep(pointRep({{0, 0, 0}}));
    QCOMPARE(scene.env.Pick(rayDown(0, 0)).object, object);
    object->SetRep(pointRep({{5, 0, 0}}));
    QVERIFY(!scene.env.Pick(rayDown(0, 0)).IsHit());
    QCOMPARE(scene.env.Pick(rayDown(5, 0)).object, object);

    // A representation deleted by someone else is dropped by the object: nothing to draw or
    // pick.
    const quint64 changes = object->GetChangeCount();
    delete object->GetRep();
    QVERIFY(!object->GetRep());
    QVERIFY(object->GetChangeCount() > changes);
    QVERIFY(!scene.env.Pick(rayDown(5, 0)).IsHit());
    // A new representation, possibly at the old address, is indexed afresh.
    object->SetRep(pointRep({{7, 0, 0}}));
    QVERIFY(!scene.env.Pick(rayDown(5, 0)).IsHit());
    QCOMPARE(scene.env.Pick(rayDown(7, 0)).object, object);
}

namespace {
// An independent reference: every element tested directly, segments by ternary search on
// the (convex) distance to the ray.
struct ReferenceHit {
    double depth = 0;
    double distance = 0;
};

bool referencePoint(const ZYLVisPickRay &ray, const ZYLMathPoint &p, ReferenceHit &hit)
{
    const double t = ray.GetParameterOf(p);
    const double dist = ray.GetDistanceTo(p);
    if (t < 0 || dist > ray.GetRadius())
        return false;
    hit = {t, dist};
    return true;
}

bool referenceSegment(const ZYLVisPickRay &ray, const ZYLMathPoint &a, const ZYLMathPoint &b, ReferenceHit &hit)
{
    const auto distanceAt = [&](double s) {
        const ZYLMathPoint p = ZYLMathPoint::Interpolate(a, b, s);
        const double t = std::max(0.0, ray.GetParameterOf(p));
        return p.GetDistanceTo(ray.GetPointAt(t));
    };
    double lo = 0, hi = 1;
    for (int i = 0; i < 60; ++i) {
        const double m1 = lo + (hi - lo) / 3, m2 = hi - (hi - lo) / 3;
        if (distanceAt(m1) < distanceAt(m2))
            hi = m2;
        else
            lo = m1;
    }
    const ZYLMathPoint p = ZYLMathPoint::Interpolate(a, b, 0.5 * (lo + hi));
    const double dist = distanceAt(0.5 * (lo + hi));
    if (dist > ray.GetRadius())
        return false;
    hit = {std::max(0.0, ray.GetParameterOf(p)), dist};
    return true;
}

// Plane intersection, then inside test by the signs of three sub-areas.
bool referenceTriangle(const ZYLVisPickRay &ray, const ZYLMathPoint &a, const ZYLMathPoint &b, const ZYLMathPoint &c,
                       ReferenceHit &hit)
{
    const ZYLMathVector n = (b - a).Cross(c - a);
    const double dn = n.Dot(ray.GetDirection());
    if (std::abs(dn) < 1e-12)
        return false;
    const double t = n.Dot(a - ray.GetOrigin()) / dn;
    if (t < 0)
        return false;
    const ZYLMathPoint p = ray.GetPointAt(t);
    const double s1 = n.Dot((b - a).Cross(p - a)), s2 = n.Dot((c - b).Cross(p - b)), s3 = n.Dot((a - c).Cross(p - c));
    if (s1 < 0 || s2 < 0 || s3 < 0)
        return false;
    hit = {t, 0};
    return true;
}
}

void tst_ZYLVisPicking::matchesBruteForce()
{
    QRandomGenerator random(20240611);
    const auto uniform = [&](double lo, double hi) { return lo + (hi - lo) * random.generateDouble(); };
    const auto randomPoint = [&](double extent) {
        return ZYLMathPoint(uniform(-extent, extent), uniform(-extent, extent), uniform(-extent, extent));
    };

    TestScene scene;
    struct Shape {
        int kind; // 0 points, 1 polyline, 2 triangles
        std::vector<ZYLMathPoint> global;
    };
    std::vector<Shape> shapes;
    for (int i = 0; i < 30; ++i) {
        const int kind = i % 3;
        const ZYLMathAxis frame(randomPoint(10), ZYLMathVector(uniform(-1, 1), uniform(-1, 1), uniform(-1, 1)),
                                ZYLMathVector(uniform(-1, 1), uniform(-1, 1), uniform(-1, 1)));
        std::vector<ZYLMathPoint> local;
        const int count = kind == 2 ? 60 : 400;
        ZYLMathPoint walker = randomPoint(5);
        for (int k = 0; k < count; ++k) {
            walker += ZYLMathVector(uniform(-1, 1), uniform(-1, 1), uniform(-1, 1));
            local.push_back(kind == 2 ? randomPoint(8) : walker);
        }
        ZYLVisPrimitive *primitive = nullptr;
        if (kind == 0) {
            primitive = new ZYLVisPointPrimitive(local);
        } else if (kind == 1) {
            primitive = new ZYLVisPolylinePrimitive(local);
        } else {
            std::vector<double> xyz;
            std::vector<int> indices;
            for (const ZYLMathPoint &p : local)
                xyz.insert(xyz.end(), {p.X(), p.Y(), p.Z()});
            for (int k = 0; k + 2 < count; k += 3)
                indices.insert(indices.end(), {k, k + 1, k + 2});
            primitive = new ZYLVisTrianglePrimitive(xyz, indices);
        }
        ZYLVisVirtualObject *object = scene.Add(testRep(primitive));
        object->SetPosition(&frame);
        Shape shape{kind, {}};
        for (const ZYLMathPoint &p : local)
            shape.global.push_back(frame.ToGlobal(p));
        shapes.push_back(std::move(shape));
    }

    int hits = 0;
    for (int query = 0; query < 120; ++query) {
        const ZYLVisPickRay ray(randomPoint(30) + ZYLMathVector(0, 0, 60), ZYLMathVector(uniform(-0.3, 0.3), uniform(-0.3, 0.3), -1),
                                uniform(0.05, 0.4));
        bool any = false;
        double nearest = 1e300;
        std::vector<ReferenceHit> all;
        for (const Shape &shape : shapes) {
            ReferenceHit hit;
            const auto consider = [&](bool ok) {
                if (ok) {
                    all.push_back(hit);
                    nearest = std::min(nearest, hit.depth);
                    any = true;
                }
            };
            if (shape.kind == 0) {
                for (const ZYLMathPoint &p : shape.global)
                    consider(referencePoint(ray, p, hit));
            } else if (shape.kind == 1) {
                for (size_t k = 0; k + 1 < shape.global.size(); ++k)
                    consider(referenceSegment(ray, shape.global[k], shape.global[k + 1], hit));
            } else {
                for (size_t k = 0; k + 2 < shape.global.size(); k += 3)
                    consider(referenceTriangle(ray, shape.global[k], shape.global[k + 1], shape.global[k + 2], hit));
            }
        }
        const ZYLVisPickResult result = scene.env.Pick(ray);
        QCOMPARE(result.IsHit(), any);
        if (!any)
            continue;
        ++hits;
        // Same ranking as documented: nearest depth band, then nearest to the ray.
        const double band = 2 * ray.GetRadius() + 1e-9 * (1 + nearest);
        ReferenceHit best{1e300, 1e300};
        for (const ReferenceHit &h : all) {
            if (h.depth <= nearest + band && (h.distance < best.distance || (h.distance == best.distance && h.depth < best.depth)))
                best = h;
        }
        QVERIFY2(std::abs(result.depth - best.depth) < 1e-6 && std::abs(result.distanceToRay - best.distance) < 1e-6,
                 qPrintable(QStringLiteral("query %1: depth %2 vs %3, distance %4 vs %5")
                                .arg(query)
                                .arg(result.depth)
                                .arg(best.depth)
                                .arg(result.distanceToRay)
                                .arg(best.distance)));
    }
    // The scene is dense enough that a good share of the rays hit something.
    QCOMPARE_GT(hits, 25);
}

QTEST_GUILESS_MAIN(tst_ZYLVisPicking)
#include "tst_ZYLVisPicking.moc"
