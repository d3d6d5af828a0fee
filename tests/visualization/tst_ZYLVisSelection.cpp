// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Selection and pre-selection of the scene: exact signal contents, silence when nothing
// changes, refused objects, and objects leaving the scene.

#include "ZYLVisTestScene.h"

#include <QSignalSpy>
#include <QTest>

class tst_ZYLVisSelection : public QObject {
    Q_OBJECT

private slots:
    void addAndRemoveReportExactSets();
    void removeAllEmitsOnce();
    void hidingLeavesPreselectionButNotSelection();
    void environmentDeletedBeforeObjects();
};

void tst_ZYLVisSelection::addAndRemoveReportExactSets()
{
    TestScene scene;
    ZYLVisVirtualObject *a = scene.Add(pointRep({{0, 0, 0}}));
    ZYLVisVirtualObject *b = scene.Add(pointRep({{1, 0, 0}}));
    QSignalSpy spy(&scene.env, &ZYLVisEnvironment::VisualizationSelectionChanged);

    QVERIFY(scene.env.AddToSelection(a));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).value<ObjectSet>(), ObjectSet{a});
    QCOMPARE(spy.at(0).at(1).value<ObjectSet>(), ObjectSet{});

    QVERIFY(!scene.env.AddToSelection(a));
    scene.env.SelectObject(a);
    QCOMPARE(spy.count(), 1);

    scene.env.SelectObject(b);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(1).at(0).value<ObjectSet>(), ObjectSet{b});
    QCOMPARE(scene.env.GetVisualizationSelection(), (ObjectSet{a, b}));

    scene.env.RemoveFromSelection(a);
    QCOMPARE(spy.count(), 3);
    QCOMPARE(spy.at(2).at(0).value<ObjectSet>(), ObjectSet{});
    QCOMPARE(spy.at(2).at(1).value<ObjectSet>(), ObjectSet{a});
    scene.env.RemoveFromSelection(a);
    QCOMPARE(spy.count(), 3);
    QCOMPARE(scene.env.GetVisualizationSelection(), ObjectSet{b});
}

void tst_ZYLVisSelection::removeAllEmitsOnce()
{
    TestScene scene;
    ZYLVisVirtualObject *a = scene.Add(pointRep({{0, 0, 0}}));
    ZYLVisVirtualObject *b = scene.Add(pointRep({{1, 0, 0}}));
    scene.Add(pointRep({{2, 0, 0}}));
    scene.env.SetVisualizationSelection({a, b});
    scene.env.SetPreSelectedObjects({b});
    QSignalSpy selection(&scene.env, &ZYLVisEnvironment::VisualizationSelectionChanged);
    QSignalSpy preselection(&scene.env, &ZYLVisEnvironment::VisualizationPreselectionChanged);
    QSignalSpy changed(&scene.env, &ZYLVisEnvironment::Changed);
    scene.env.RemoveAllVirtualObjects();
    QCOMPARE(selection.count(), 1);
    QCOMPARE(selection.at(0).at(1).value<ObjectSet>(), (ObjectSet{a, b}));
    QCOMPARE(preselection.count(), 1);
    QCOMPARE(changed.count(), 1);
    QVERIFY(scene.env.GetVirtualObjects().isEmpty());
    QVERIFY(!a->IsInScene());
    // Nothing left: a second call is silent.
    scene.env.RemoveAllVirtualObjects();
    QCOMPARE(changed.count(), 1);
}

void tst_ZYLVisSelection::hidingLeavesPreselectionButNotSelection()
{
    TestScene scene;
    ZYLVisVirtualObject *a = scene.Add(pointRep({{0, 0, 0}}));
    ZYLVisVirtualObject *b = scene.Add(pointRep({{1, 0, 0}}));
    scene.env.SetVisualizationSelection({a, b});
    scene.env.SetPreSelectedObjects({a, b});
    QSignalSpy selection(&scene.env, &ZYLVisEnvironment::VisualizationSelectionChanged);
    QSignalSpy preselection(&scene.env, &ZYLVisEnvironment::VisualizationPreselectionChanged);
    a->SetVisibility(false);
    b->SetSelectability(false);
    QCOMPARE(preselection.count(), 2);
    QCOMPARE(preselection.at(0).at(1).value<ObjectSet>(), ObjectSet{a});
    QCOMPARE(preselection.at(1).at(1).value<ObjectSet>(), ObjectSet{b});
    QCOMPARE(selection.count(), 0);
    QCOMPARE(scene.env.GetVisualizationSelection(), (ObjectSet{a, b}));
}

void tst_ZYLVisSelection::environmentDeletedBeforeObjects()
{
    auto env = std::make_unique<ZYLVisEnvironment>();
    auto rep = std::unique_ptr<ZYLVisRep>(pointRep({{0, 0, 0}}));
    auto object = std::make_unique<ZYLVisVirtualObject>(env.get());
    object->SetRep(rep.release());
    env->AddVirtualObject(object.get());
    env->AddToSelection(object.get());
    env.reset();
    QVERIFY(!object->GetEnvironment());
    QVERIFY(!object->IsInScene());
    // Still usable without an environment, and deletable.
    object->SetVisibility(false);
    object->SetRep(nullptr);
    object.reset();
}

QTEST_GUILESS_MAIN(tst_ZYLVisSelection)
#include "tst_ZYLVisSelection.moc"
