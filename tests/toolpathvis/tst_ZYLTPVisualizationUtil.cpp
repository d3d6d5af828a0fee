// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Vector primitives of a list of points, and collision point spheres.

#include "ZYLTPVisTestSupport.h"

#include "ZYLTPVisRepFactory.h"
#include "ZYLTPVisualizationUtil.h"

#include "ZYLVisTrianglePrimitive.h"

#include <QTest>

#include <memory>

using O = ZYLTPVisualizationOptions;

class tst_ZYLTPVisualizationUtil : public QObject {
    Q_OBJECT

private slots:
    void vectorPrimitivesOfNoPoint()
    {
        QList<ZYLVisPrimitive *> primitives;
        QList<ZYLVisOptions> primitiveOptions;
        ZYLTPVisualizationUtil::CreateVectorPrimitives({}, O::AllAxes, O(), primitives, primitiveOptions);
        ZYLTPVisualizationUtil::CreateVectorPrimitives({nullptr}, O::AllAxes, O(), primitives, primitiveOptions);
        QVERIFY(primitives.isEmpty());
        QVERIFY(primitiveOptions.isEmpty());
    }

    void collisionSphere_data()
    {
        QTest::addColumn<double>("radius");
        QTest::addColumn<int>("segments");
        QTest::addColumn<int>("bands");
        QTest::newRow("marker") << 12.5 << 8 << 8;
    }
    void collisionSphere()
    {
        QFETCH(double, radius);
        QFETCH(int, segments);
        QFETCH(int, bands);
        const ZYLMathPoint centre(10.0, -20.0, 30.0);
        const std::unique_ptr<ZYLVisRep> rep(ZYLTPVisRepFactory::CreateCollisionPointRep(centre, radius, segments));
        QCOMPARE(rep->GetNumPrimitives(), 1);
        QCOMPARE(rep->GetOptions(0), ZYLTPVisRepFactory::GetCollisionPointAttributes());
        const auto *sphere = dynamic_cast<const ZYLVisTrianglePrimitive *>(rep->GetPrimitive(0));
        QVERIFY(sphere);
        // Two caps of one triangle per sector and two triangles per sector on the other bands,
        // with twice as many sectors as bands.
        const int sectors = 2 * bands;
        QCOMPARE(sphere->GetNumElements(), sectors * (2 + 2 * (bands - 2)));
        for (const ZYLMathPoint &vertex : sphere->GetVertices())
            QVERIFY(ZYLTPVisNear(vertex.GetDistanceTo(centre), radius, 1e-9));
        // Every triangle faces outwards.
        for (int t = 0; t < sphere->GetNumElements(); ++t) {
            const ZYLMathPoint a = sphere->GetTriangleVertex(t, 0);
            const ZYLMathVector n = (sphere->GetTriangleVertex(t, 1) - a).Cross(sphere->GetTriangleVertex(t, 2) - a);
            QVERIFY(n.Dot(a - centre) > 0.0);
        }
        const ZYLMathBoundingBox box = rep->GetBoundingBox();
        QVERIFY(ZYLTPVisNear(box.GetMin(), centre - ZYLMathVector(radius, radius, radius), 1e-9));
        QVERIFY(ZYLTPVisNear(box.GetMax(), centre + ZYLMathVector(radius, radius, radius), 1e-9));
    }

    void collisionPointWithoutRadius_data()
    {
        QTest::addColumn<double>("radius");
        QTest::newRow("not a number") << qQNaN();
    }
    void collisionPointWithoutRadius()
    {
        QFETCH(double, radius);
        const ZYLMathPoint centre(1.0, 2.0, 3.0);
        const std::unique_ptr<ZYLVisRep> rep(ZYLTPVisRepFactory::CreateCollisionPointRep(centre, radius, 8));
        QCOMPARE(rep->GetNumPrimitives(), 1);
        QCOMPARE(rep->GetPrimitive(0)->GetKind(), ZYLVisPrimitive::Kind::Points);
        QCOMPARE(rep->GetPrimitive(0)->GetNumVertices(), 1);
        QCOMPARE(rep->GetPrimitive(0)->GetVertex(0), centre);
    }
};

QTEST_GUILESS_MAIN(tst_ZYLTPVisualizationUtil)
#include "tst_ZYLTPVisualizationUtil.moc"
