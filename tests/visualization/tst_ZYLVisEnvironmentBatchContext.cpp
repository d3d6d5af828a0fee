// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Redraw notifications: one Changed per change outside batches, exactly one at the end of the
// outermost batch, none for changes that do not affect the picture.

#include "ZYLVisTestScene.h"

#include <QSignalSpy>
#include <QTest>

#include <optional>

class tst_ZYLVisEnvironmentBatchContext : public QObject {
    Q_OBJECT

private slots:
    void eachChangeOutsideBatch_data();
    void eachChangeOutsideBatch();
    void nestedBatchesRedrawOnce();
    void emptyBatchIsSilent();
    void objectsOutsideTheSceneAreSilent();
    void environmentDestroyedDuringBatch();
    void sceneBoundingBoxOfVisibleObjects();
};

void tst_ZYLVisEnvironmentBatchContext::eachChangeOutsideBatch_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<int>("redraws");
    QTest::addColumn<bool>("counted");
    QTest::newRow("same rep again") << "rep again" << 1 << true;
    QTest::newRow("other rep") << "rep" << 1 << true;
    QTest::newRow("no rep") << "null rep" << 1 << true;
    QTest::newRow("position") << "position" << 1 << true;
    QTest::newRow("same position") << "same position" << 0 << false;
    QTest::newRow("hide") << "hide" << 1 << true;
    QTest::newRow("show while shown") << "show" << 0 << false;
    QTest::newRow("selectability") << "unselectable" << 0 << false;
    QTest::newRow("label") << "label" << 0 << false;
    QTest::newRow("select") << "select" << 1 << false;
    QTest::newRow("remove") << "remove" << 1 << false;
}

void tst_ZYLVisEnvironmentBatchContext::eachChangeOutsideBatch()
{
    QFETCH(QString, change);
    QFETCH(int, redraws);
    QFETCH(bool, counted);
    TestScene scene;
    ZYLVisVirtualObject *object = scene.Add(pointRep({{0, 0, 0}}));
    const ZYLMathAxis moved(ZYLMathPoint(1, 2, 3), ZYLMathVector(1, 0, 0), ZYLMathVector(0, 1, 0));
    object->SetPosition(&moved);
    auto other = std::unique_ptr<ZYLVisRep>(pointRep({{1, 1, 1}}));
    QSignalSpy spy(&scene.env, &ZYLVisEnvironment::Changed);
    const quint64 before = object->GetChangeCount();

    if (change == "rep again")
        object->SetRep(object->GetRep());
    else if (change == "rep")
        object->SetRep(other.release());
    else if (change == "null rep")
        object->SetRep(nullptr);
    else if (change == "position")
        object->SetPosition(nullptr);
    else if (change == "same position")
        object->SetPosition(&moved);
    else if (change == "hide")
        object->SetVisibility(false);
    else if (change == "show")
        object->SetVisibility(true);
    else if (change == "unselectable")
        object->SetSelectability(false);
    else if (change == "label")
        object->SetLabel("x");
    else if (change == "select")
        scene.env.AddToSelection(object);
    else if (change == "remove")
        scene.env.RemoveVirtualObject(object);

    QCOMPARE(spy.count(), redraws);
    QCOMPARE(object->GetChangeCount() > before, counted);
}

void tst_ZYLVisEnvironmentBatchContext::nestedBatchesRedrawOnce()
{
    TestScene scene;
    QSignalSpy spy(&scene.env, &ZYLVisEnvironment::Changed);
    {
        ZYLVisEnvironmentBatchContext outer(&scene.env);
        ZYLVisVirtualObject *a = scene.Add(pointRep({{0, 0, 0}}));
        {
            ZYLVisEnvironmentBatchContext inner(&scene.env);
            a->SetVisibility(false);
            scene.Add(pointRep({{1, 0, 0}}));
        }
        QCOMPARE(spy.count(), 0);
        QVERIFY(scene.env.IsInBatch());
        ZYLVisEnvironmentBatchContext second(&scene.env);
        a->SetRep(nullptr);
    }
    QCOMPARE(spy.count(), 1);
    QVERIFY(!scene.env.IsInBatch());
    // After the batch, changes redraw at once again.
    scene.Add(pointRep({{2, 0, 0}}));
    QCOMPARE(spy.count(), 2);
}

void tst_ZYLVisEnvironmentBatchContext::emptyBatchIsSilent()
{
    TestScene scene;
    ZYLVisVirtualObject *object = scene.Add(pointRep({{0, 0, 0}}));
    QSignalSpy spy(&scene.env, &ZYLVisEnvironment::Changed);
    {
        ZYLVisEnvironmentBatchContext outer(&scene.env);
        ZYLVisEnvironmentBatchContext inner(&scene.env);
        object->SetVisibility(true);
        object->SetLabel("unchanged picture");
        scene.env.RemoveFromSelection(object);
    }
    ZYLVisEnvironmentBatchContext none(nullptr);
    QCOMPARE(spy.count(), 0);
}

void tst_ZYLVisEnvironmentBatchContext::objectsOutsideTheSceneAreSilent()
{
    TestScene scene;
    ZYLVisVirtualObject *object = scene.Make(pointRep({{0, 0, 0}}));
    QSignalSpy spy(&scene.env, &ZYLVisEnvironment::Changed);
    object->SetVisibility(false);
    object->SetRep(nullptr);
    QCOMPARE(spy.count(), 0);
    scene.env.AddVirtualObject(object);
    scene.env.AddVirtualObject(object);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(scene.env.GetVirtualObjects().size(), 1);
}

void tst_ZYLVisEnvironmentBatchContext::environmentDestroyedDuringBatch()
{
    auto env = std::make_unique<ZYLVisEnvironment>();
    std::unique_ptr<ZYLVisEnvironment> next;
    std::optional<ZYLVisEnvironmentBatchContext> own;
    {
        ZYLVisEnvironmentBatchContext batch(env.get());
        env.reset();
        // Often made where the destroyed one was: a context that kept a plain pointer would
        // end this one's batch when it ends.
        next = std::make_unique<ZYLVisEnvironment>();
        own.emplace(next.get());
    }
    QVERIFY(next->IsInBatch());
    own.reset();
    QVERIFY(!next->IsInBatch());
}

void tst_ZYLVisEnvironmentBatchContext::sceneBoundingBoxOfVisibleObjects()
{
    TestScene scene;
    scene.Add(pointRep({{0, 0, 0}, {1, 1, 1}}));
    ZYLVisVirtualObject *far = scene.Add(pointRep({{0, 0, 0}}));
    const ZYLMathAxis frame(ZYLMathPoint(10, 0, 0), ZYLMathVector(1, 0, 0), ZYLMathVector(0, 1, 0));
    far->SetPosition(&frame);
    QCOMPARE(scene.env.GetBoundingBox(), ZYLMathBoundingBox(ZYLMathPoint(0, 0, 0), ZYLMathPoint(10, 1, 1)));
    far->SetVisibility(false);
    QCOMPARE(scene.env.GetBoundingBox(), ZYLMathBoundingBox(ZYLMathPoint(0, 0, 0), ZYLMathPoint(1, 1, 1)));
}

QTEST_GUILESS_MAIN(tst_ZYLVisEnvironmentBatchContext)
#include "tst_ZYLVisEnvironmentBatchContext.moc"
