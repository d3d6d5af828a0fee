// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Selection and pre-selection of the scene: exact signal contents, silence when nothing
// changes, refused objects, and objects leaving the scene.

#include "ZYLVisTestScene.h"

#include <QMetaType>
#include <QSignalSpy>
#include <QTest>

class tst_ZYLVisSelection : public QObject {
    Q_OBJECT

private slots:
    void metaTypeIsNamed();
    void addAndRemoveReportExactSets();
    void replaceReportsDifference_data();
    void replaceReportsDifference();
    void refusesNullAndForeignObjects();
    void programmaticSelectionIgnoresSelectabilityAndFilter();
    void removingSelectedObjectDeselects();
    void deletingSelectedObjectDeselectsWhileStillVirtual();
    void removeAllEmitsOnce();
    void hidingLeavesPreselectionButNotSelection();
    void selectionSignalsAreNotDelayedByBatches();
    void environmentDeletedBeforeObjects();
};

void tst_ZYLVisSelection::metaTypeIsNamed()
{
    ZYLVisEnvironment env;
    const QMetaType type = QMetaType::fromName("QSet<ZYLVisObject*>");
    QVERIFY(type.isValid());
    QCOMPARE(type, QMetaType::fromType<ObjectSet>());
}

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

void tst_ZYLVisSelection::replaceReportsDifference_data()
{
    QTest::addColumn<QList<int>>("before");
    QTest::addColumn<QList<int>>("target");
    QTest::addColumn<QList<int>>("added");
    QTest::addColumn<QList<int>>("removed");
    QTest::addColumn<bool>("preselection");
    for (bool pre : {false, true}) {
        const char *kind = pre ? "pre-selection" : "selection";
        QTest::addRow("%s: clear", kind) << QList<int>{0, 1} << QList<int>{} << QList<int>{} << QList<int>{0, 1} << pre;
        QTest::addRow("%s: overlap", kind) << QList<int>{0, 1} << QList<int>{1, 2} << QList<int>{2} << QList<int>{0} << pre;
        QTest::addRow("%s: same", kind) << QList<int>{0, 2} << QList<int>{2, 0} << QList<int>{} << QList<int>{} << pre;
        QTest::addRow("%s: from empty", kind) << QList<int>{} << QList<int>{0, 1, 2} << QList<int>{0, 1, 2}
                                              << QList<int>{} << pre;
        QTest::addRow("%s: empty to empty", kind) << QList<int>{} << QList<int>{} << QList<int>{} << QList<int>{} << pre;
    }
}

void tst_ZYLVisSelection::replaceReportsDifference()
{
    QFETCH(QList<int>, before);
    QFETCH(QList<int>, target);
    QFETCH(QList<int>, added);
    QFETCH(QList<int>, removed);
    QFETCH(bool, preselection);
    TestScene scene;
    QList<ZYLVisObject *> objects;
    for (int i = 0; i < 3; ++i)
        objects.append(scene.Add(pointRep({{double(i), 0, 0}})));
    const auto set = [&](const QList<int> &indices) {
        ObjectSet result;
        for (int i : indices)
            result.insert(objects[i]);
        return result;
    };
    const auto replace = [&](const ObjectSet &s) {
        preselection ? scene.env.SetPreSelectedObjects(s) : scene.env.SetVisualizationSelection(s);
    };
    replace(set(before));
    QSignalSpy spy(&scene.env, preselection ? &ZYLVisEnvironment::VisualizationPreselectionChanged
                                            : &ZYLVisEnvironment::VisualizationSelectionChanged);
    QSignalSpy other(&scene.env, preselection ? &ZYLVisEnvironment::VisualizationSelectionChanged
                                              : &ZYLVisEnvironment::VisualizationPreselectionChanged);
    replace(set(target));
    const bool changed = !added.isEmpty() || !removed.isEmpty();
    QCOMPARE(spy.count(), changed ? 1 : 0);
    if (changed) {
        QCOMPARE(spy.at(0).at(0).value<ObjectSet>(), set(added));
        QCOMPARE(spy.at(0).at(1).value<ObjectSet>(), set(removed));
    }
    QCOMPARE(other.count(), 0);
    QCOMPARE(preselection ? scene.env.GetPreSelectedObjects() : scene.env.GetVisualizationSelection(), set(target));
}

void tst_ZYLVisSelection::refusesNullAndForeignObjects()
{
    TestScene scene;
    TestScene elsewhere;
    ZYLVisVirtualObject *member = scene.Add(pointRep({{0, 0, 0}}));
    ZYLVisVirtualObject *notAdded = scene.Make(pointRep({{1, 0, 0}}));
    ZYLVisVirtualObject *foreign = elsewhere.Add(pointRep({{2, 0, 0}}));
    QSignalSpy spy(&scene.env, &ZYLVisEnvironment::VisualizationSelectionChanged);

    QVERIFY(!scene.env.AddToSelection(nullptr));
    QVERIFY(!scene.env.AddToSelection(notAdded));
    QVERIFY(!scene.env.AddToSelection(foreign));
    scene.env.RemoveFromSelection(nullptr);
    scene.env.SetPreSelectedObjects({notAdded, foreign, nullptr});
    QCOMPARE(spy.count(), 0);
    QVERIFY(scene.env.GetPreSelectedObjects().isEmpty());

    scene.env.SetVisualizationSelection({member, foreign, nullptr});
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).value<ObjectSet>(), ObjectSet{member});

    QVERIFY_THROWS_EXCEPTION(ZYLSysException, scene.env.AddVirtualObject(foreign));
    QVERIFY(!scene.env.GetVirtualObjects().contains(foreign));
    QVERIFY(elsewhere.env.GetVirtualObjects().contains(foreign));
}

void tst_ZYLVisSelection::programmaticSelectionIgnoresSelectabilityAndFilter()
{
    TestScene scene;
    ZYLVisVirtualObject *object = scene.Add(pointRep({{0, 0, 0}}));
    object->SetSelectability(false);
    object->SetVisibility(false);
    scene.env.SetSelectionFilter(new ZYLVisFunctionFilter(false, [](const ZYLVisObject *) { return false; }));
    QVERIFY(scene.env.AddToSelection(object));
    scene.env.SetPreSelectedObjects({object});
    QCOMPARE(scene.env.GetPreSelectedObjects(), ObjectSet{object});
}

void tst_ZYLVisSelection::removingSelectedObjectDeselects()
{
    TestScene scene;
    ZYLVisVirtualObject *a = scene.Add(pointRep({{0, 0, 0}}));
    ZYLVisVirtualObject *b = scene.Add(pointRep({{1, 0, 0}}));
    scene.env.SetVisualizationSelection({a, b});
    scene.env.SetPreSelectedObjects({a});
    QSignalSpy selection(&scene.env, &ZYLVisEnvironment::VisualizationSelectionChanged);
    QSignalSpy preselection(&scene.env, &ZYLVisEnvironment::VisualizationPreselectionChanged);
    // The scene is already without the object when the signal comes.
    int objectsSeen = -1;
    connect(&scene.env, &ZYLVisEnvironment::VisualizationSelectionChanged, this,
            [&] { objectsSeen = int(scene.env.GetVirtualObjects().size()); });

    scene.env.RemoveVirtualObject(a);
    QCOMPARE(selection.count(), 1);
    QCOMPARE(selection.at(0).at(1).value<ObjectSet>(), ObjectSet{a});
    QCOMPARE(preselection.count(), 1);
    QCOMPARE(preselection.at(0).at(1).value<ObjectSet>(), ObjectSet{a});
    QCOMPARE(objectsSeen, 1);
    QCOMPARE(scene.env.GetVisualizationSelection(), ObjectSet{b});

    // Removing again, or an object that is not selected, says nothing; the object can come
    // back and be selected again.
    scene.env.RemoveVirtualObject(a);
    QCOMPARE(selection.count(), 1);
    scene.env.AddVirtualObject(a);
    QVERIFY(scene.env.AddToSelection(a));
}

void tst_ZYLVisSelection::deletingSelectedObjectDeselectsWhileStillVirtual()
{
    TestScene scene;
    ZYLVisVirtualObject *a = scene.Add(pointRep({{0, 0, 0}}));
    scene.Add(pointRep({{1, 0, 0}}));
    scene.env.AddToSelection(a);
    bool castWorked = false;
    ObjectSet removed;
    connect(&scene.env, &ZYLVisEnvironment::VisualizationSelectionChanged, this,
            [&](const ObjectSet &, const ObjectSet &r) {
                removed = r;
                castWorked = r.size() == 1 && qobject_cast<ZYLVisVirtualObject *>(*r.begin());
            });
    scene.Delete(a);
    QCOMPARE(removed, ObjectSet{a});
    QVERIFY(castWorked);
    QVERIFY(scene.env.GetVisualizationSelection().isEmpty());
    QCOMPARE(scene.env.GetVirtualObjects().size(), 1);
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

void tst_ZYLVisSelection::selectionSignalsAreNotDelayedByBatches()
{
    TestScene scene;
    ZYLVisVirtualObject *a = scene.Add(pointRep({{0, 0, 0}}));
    QSignalSpy selection(&scene.env, &ZYLVisEnvironment::VisualizationSelectionChanged);
    QSignalSpy changed(&scene.env, &ZYLVisEnvironment::Changed);
    {
        ZYLVisEnvironmentBatchContext outer(&scene.env);
        ZYLVisEnvironmentBatchContext inner(&scene.env);
        scene.env.AddToSelection(a);
        QCOMPARE(selection.count(), 1);
        scene.env.AddToSelection(a);
        scene.env.SetVisualizationSelection({a});
        QCOMPARE(selection.count(), 1);
        QCOMPARE(changed.count(), 0);
    }
    QCOMPARE(changed.count(), 1);
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
