// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Representations and primitives: ownership of nested representations and primitives,
// refused input that leaves the caller's objects untouched, and the arrays renderers upload.

#include "ZYLVisRepSet.h"

#include "ZYLVisTestScene.h"

#include <QPointer>
#include <QTest>

#include <memory>

class tst_ZYLVisRep : public QObject {
    Q_OBJECT

private slots:
    void setOwnsAndDeletesChildren();
    void graphicsRefusesBadPrimitiveLists_data();
    void graphicsRefusesBadPrimitiveLists();
    void allPrimitivesDepthFirstWithOptions();
    void triangleInputIsChecked_data();
    void triangleInputIsChecked();
    void badPrimitiveInputIsRefused();
    void optionsRefuseUnusableValues();
    void pickRayRefusesBadInput_data();
    void pickRayRefusesBadInput();
};

void tst_ZYLVisRep::setOwnsAndDeletesChildren()
{
    QPointer<ZYLVisRep> a = pointRep({{0, 0, 0}});
    QPointer<ZYLVisRep> b = pointRep({{4, 5, 6}});
    QPointer<ZYLVisRep> inner = new ZYLVisRepSet({b.data(), nullptr});
    auto set = std::make_unique<ZYLVisRepSet>(QList<ZYLVisRep *>{a.data(), inner.data()});
    QCOMPARE(set->GetNumChildren(), 2);
    QCOMPARE(inner->GetNumChildren(), 1);
    QVERIFY(a->IsOwned() && inner->IsOwned() && b->IsOwned());
    QCOMPARE(set->GetBoundingBox(), ZYLMathBoundingBox(ZYLMathPoint(0, 0, 0), ZYLMathPoint(4, 5, 6)));
    set.reset();
    QVERIFY(!a && !b && !inner);
}

void tst_ZYLVisRep::graphicsRefusesBadPrimitiveLists_data()
{
    QTest::addColumn<QString>("fault");
    QTest::newRow("fewer options") << "fewer";
    QTest::newRow("primitive twice") << "twice";
}

void tst_ZYLVisRep::graphicsRefusesBadPrimitiveLists()
{
    QFETCH(QString, fault);
    auto points = std::make_unique<ZYLVisPointPrimitive>(std::vector<ZYLMathPoint>{{0, 0, 0}});
    auto line = std::make_unique<ZYLVisPolylinePrimitive>(std::vector<ZYLMathPoint>{{0, 0, 0}, {1, 0, 0}});
    std::unique_ptr<ZYLVisRep> other;
    QList<ZYLVisPrimitive *> primitives{points.get(), line.get()};
    QList<ZYLVisOptions> options{testOptions(), testOptions()};
    if (fault == "fewer") {
        options.removeLast();
    } else if (fault == "twice") {
        primitives.append(points.get());
        options.append(testOptions());
    } else {
        auto *taken = new ZYLVisPointPrimitive(std::vector<ZYLMathPoint>{{2, 0, 0}});
        other.reset(testRep(taken));
        primitives.append(taken);
        options.append(testOptions());
    }
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, ZYLVisRepGraphics(primitives, options));
    QVERIFY(!points->IsOwned() && !line->IsOwned());
}

void tst_ZYLVisRep::allPrimitivesDepthFirstWithOptions()
{
    ZYLVisRep *first = new ZYLVisRepGraphics(
        {new ZYLVisPointPrimitive(std::vector<ZYLMathPoint>{{0, 0, 0}}), nullptr,
         new ZYLVisPolylinePrimitive(std::vector<ZYLMathPoint>{{0, 0, 0}, {1, 0, 0}})},
        QList<ZYLVisOptions>{testOptions(1), testOptions(2), testOptions(3)});
    ZYLVisRep *second = pointRep({{5, 0, 0}}, 4);
    ZYLVisRepSet set({new ZYLVisRepSet({first}), second});
    QList<int> priorities;
    for (const ZYLVisRep::Item &item : set.GetAllPrimitives())
        priorities.append(item.options->GetPriority());
    // The null primitive is skipped together with its options.
    QCOMPARE(priorities, (QList<int>{1, 3, 4}));
    QCOMPARE(first->GetNumPrimitives(), 2);
    QCOMPARE(first->GetPrimitive(1)->GetKind(), ZYLVisPrimitive::Kind::Polyline);
    QVERIFY(!first->GetPrimitive(2));
}

void tst_ZYLVisRep::triangleInputIsChecked_data()
{
    QTest::addColumn<std::vector<double>>("xyz");
    QTest::addColumn<std::vector<int>>("indices");
    QTest::addColumn<std::vector<double>>("normals");
    QTest::addColumn<bool>("valid");
    const std::vector<double> square{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0};
    QTest::newRow("coordinates not in threes") << std::vector<double>{0, 0, 0, 1} << std::vector<int>{} << std::vector<double>{}
                                               << false;
    QTest::newRow("indices not in threes") << square << std::vector<int>{0, 1} << std::vector<double>{} << false;
    QTest::newRow("negative index") << square << std::vector<int>{0, -1, 2} << std::vector<double>{} << false;
    QTest::newRow("normals do not match") << square << std::vector<int>{0, 1, 2} << std::vector<double>(9, 0.0) << false;
}

void tst_ZYLVisRep::triangleInputIsChecked()
{
    QFETCH(std::vector<double>, xyz);
    QFETCH(std::vector<int>, indices);
    QFETCH(std::vector<double>, normals);
    QFETCH(bool, valid);
    if (!valid) {
        QVERIFY_THROWS_EXCEPTION(ZYLSysException, ZYLVisTrianglePrimitive(xyz, indices, normals));
        return;
    }
    const ZYLVisTrianglePrimitive triangles(xyz, indices, normals);
    QCOMPARE(triangles.GetNumElements(), int(indices.size() / 3));
    QCOMPARE(triangles.GetIndices().size(), indices.size());
    QCOMPARE(triangles.GetNormalArray().size(), xyz.size());
    // Normals are unit length whether given or computed.
    const std::vector<float> &n = triangles.GetNormalArray();
    for (size_t i = 0; i < n.size(); i += 3)
        QCOMPARE_LT(std::abs(n[i] * n[i] + n[i + 1] * n[i + 1] + n[i + 2] * n[i + 2] - 1.0f), 1e-6f);
}

void tst_ZYLVisRep::badPrimitiveInputIsRefused()
{
    QVERIFY_THROWS_EXCEPTION(ZYLSysException,
                             ZYLVisSegmentPrimitive(std::vector<ZYLMathPoint>{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException,
                             ZYLVisPointPrimitive(std::vector<ZYLMathPoint>{{0, std::nan(""), 0}}));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, ZYLVisPolylinePrimitive(static_cast<const ZYLGeoCurve *>(nullptr)));
}

void tst_ZYLVisRep::optionsRefuseUnusableValues()
{
    ZYLVisOptions options;
    options.SetLineThickness(3.0);
    options.SetTransparency(0.25);
    options.SetColor(QColor(10, 20, 30, 40));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, options.SetLineThickness(-1.0));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, options.SetPointSize(std::nan("")));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, options.SetTransparency(1.5));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, options.SetColor(QColor()));
    QCOMPARE(options.GetLineThickness(), 3.0);
    QCOMPARE(options.GetTransparency(), 0.25);
    // Transparency is its own setting: the colour's alpha does not leak into it.
    QCOMPARE(options.GetColor(), QColor(10, 20, 30));
    ZYLVisOptions copy = options;
    QVERIFY(copy == options);
    copy.SetDepthEnabled(false);
    QVERIFY(copy != options);
}

void tst_ZYLVisRep::pickRayRefusesBadInput_data()
{
    QTest::addColumn<ZYLMathVector>("direction");
    QTest::addColumn<double>("radius");
    QTest::addColumn<double>("slope");
    QTest::newRow("infinite direction") << ZYLMathVector(INFINITY, 0, 0) << 0.0 << 0.0;
    QTest::newRow("NaN radius") << ZYLMathVector(0, 0, 1) << double(NAN) << 0.0;
}

void tst_ZYLVisRep::pickRayRefusesBadInput()
{
    QFETCH(ZYLMathVector, direction);
    QFETCH(double, radius);
    QFETCH(double, slope);
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, ZYLVisPickRay(ZYLMathPoint(), direction, radius, slope));
    // A valid ray gets a unit direction.
    const ZYLVisPickRay ray(ZYLMathPoint(), ZYLMathVector(0, 3, 4), 0.5, 0.1);
    QCOMPARE(ray.GetDirection(), ZYLMathVector(0, 0.6, 0.8));
    QCOMPARE(ray.GetRadiusAt(10), 1.5);
    QCOMPARE(ray.GetRadiusAt(-10), 0.5);
}

QTEST_GUILESS_MAIN(tst_ZYLVisRep)
#include "tst_ZYLVisRep.moc"
