// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Picking on the CPU: position frames, priorities at similar depths, nothing behind the ray's
// origin, and representations that change or go away.

#include "ZYLVisTestScene.h"

#include <QTest>

#include <cmath>
#include <numbers>

class tst_ZYLVisPicking : public QObject {
    Q_OBJECT

private slots:
    void positionFrame();
    void priorityWinsAtSimilarDepth_data();
    void priorityWinsAtSimilarDepth();
    void nothingBehindTheOrigin();
    void changedAndDeletedRepsArePickedAfresh();
};

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
    QTest::newRow("highlight far below surface") << -0.5 << 10 << true << false;
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

}

QTEST_GUILESS_MAIN(tst_ZYLVisPicking)
#include "tst_ZYLVisPicking.moc"
