// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Redraw notifications: none for objects outside the scene, and a batch outliving its
// environment ends quietly.

#include "ZYLVisTestScene.h"

#include <QSignalSpy>
#include <QTest>

#include <optional>

class tst_ZYLVisEnvironmentBatchContext : public QObject {
    Q_OBJECT

private slots:
    void objectsOutsideTheSceneAreSilent();
    void environmentDestroyedDuringBatch();
};

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

QTEST_GUILESS_MAIN(tst_ZYLVisEnvironmentBatchContext)
#include "tst_ZYLVisEnvironmentBatchContext.moc"
