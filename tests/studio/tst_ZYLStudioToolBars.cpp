// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The tool bars on the module's own actions, with the module loaded at run time by the
// session as the studio loads it: grouping and order, view modes and toggles in step with
// the module's view settings, a menu section, unloading and reloading.
#include "ZYLStudioToolBars.h"

#include "ZYLStudioSession.h"

#include "ZYLCmdAction.h"
#include "ZYLCmdController.h"
#include "ZYLSysSettings.h"

#include <QActionGroup>
#include <QLibrary>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QToolBar>

#include <memory>

namespace {

// Keys of the non-separator actions of a widget (texts of actions that are not published).
QByteArrayList Keys(const QList<QAction *> &actions) {
    QByteArrayList keys;
    for (const QAction *action : actions) {
        if (const auto *published = qobject_cast<const ZYLCmdAction *>(action))
            keys.append(published->GetKey());
        else if (!action->isSeparator())
            keys.append(action->text().toUtf8());
    }
    return keys;
}

QByteArrayList ViewKeys(const QStringList &modes) {
    QByteArrayList keys;
    for (const QString &mode : modes)
        keys.append("ZYLToolPathViewCmd." + mode.toLatin1());
    return keys;
}

QAction *Action(const QString &mode) {
    return ZYLCmdController::GetController()->GetAction("ZYLToolPathViewCmd." + mode.toLatin1());
}

int Count(const ZYLStudioToolBars &bars) {
    int count = 0;
    for (const QToolBar *toolBar : bars.GetToolBars())
        count += int(Keys(toolBar->actions()).size());
    return count;
}

// The module's view settings, asked from the library the session loaded (the same file name
// shares the session's handle, so the module can still be unloaded).
ZYLSysSettings *ModuleViewSettings() {
    QLibrary module(ZYLStudioSession::GetModulePath());
    auto accessor = reinterpret_cast<QObject *(*)()>(module.resolve("_ZN19ZYLTPEditUISettings11GetInstanceEv"));
    return accessor ? qobject_cast<ZYLSysSettings *>(accessor()) : nullptr;
}

const QStringList CourseModes{"ViewCourse", "ViewCoursePolyline", "ViewCourseAndPolyline", "HideCourse"};
const QStringList LayingPointModes{"ViewLayingPointsWithToolAxis", "ViewLayingPointsWithToolAndLayingAxes",
                                   "ViewLayingPointsWithAllAxes", "HideLayingPoints"};
const QStringList LinkModes{"ViewCourseLinksWithPointsOnly", "ViewCourseLinksWithRollerAxis",
                            "ViewCourseLinksWithAllAxes", "HideCourseLinks"};
const QStringList LinkingPointModes{"ViewLinkPointsOnly", "ViewLinkPointsWithToolAxis",
                                    "ViewLinkingPointsWithToolAndLayingAxes", "ViewLinkingPointsWithAllAxes",
                                    "HideLinkingPoints"};
const QStringList Toggles{"ViewSurface", "ViewPlyBoundary", "ViewHead", "ViewRoller"};
const QByteArrayList ViewSection = ViewKeys(CourseModes + LayingPointModes + LinkModes + LinkingPointModes + Toggles);

} // namespace

class tst_ZYLStudioToolBars : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void actionsInPublicationOrderAndGroups();
    void viewModeGroupFollowsSettings_data();
    void viewModeGroupFollowsSettings();
    void toggleFollowsSettings_data();
    void toggleFollowsSettings();
    void unloadingRemovesAndLoadingBringsBack();

private:
    std::unique_ptr<ZYLStudioSession> m_session;
    std::unique_ptr<QMainWindow> m_window;
    ZYLStudioToolBars *m_bars = nullptr;
    QPointer<ZYLSysSettings> m_settings;
};

void tst_ZYLStudioToolBars::init() {
    m_session = std::make_unique<ZYLStudioSession>();
    QVERIFY2(m_session->Start(), qPrintable(m_session->GetErrorString()));
    m_settings = ModuleViewSettings();
    QVERIFY(m_settings);
    m_settings->RevertToDefaults();
    m_window = std::make_unique<QMainWindow>();
    m_bars = new ZYLStudioToolBars(m_window.get());
    QTRY_COMPARE(Count(*m_bars), 28);
}

void tst_ZYLStudioToolBars::cleanup() {
    m_window.reset();
    m_session.reset();
}

void tst_ZYLStudioToolBars::actionsInPublicationOrderAndGroups() {
    const QList<QToolBar *> toolBars = m_bars->GetToolBars();
    QCOMPARE(toolBars.size(), 3);
    QCOMPARE(Keys(toolBars[0]->actions()),
             QByteArrayList({"ZYLTPEditCourseCmd.Edit", "ZYLTPEditCourseLayingPointsCmd.Edit",
                             "ZYLTPEditLinkingPointsCmd.Edit", "ZYLTPEditLinksCmd.Edit"}));
    QCOMPARE(Keys(toolBars[1]->actions()), QByteArrayList({"ZYLTPCollisionInspectorCmd.View",
                                                           "ZYLTPContextualViewCmd.View", "ZYLTPDetailedInfoCmd.View"}));
    QCOMPARE(Keys(toolBars[2]->actions()), ViewSection);
    for (QToolBar *toolBar : toolBars)
        QCOMPARE(toolBar->parent(), m_window.get());
    for (QAction *action : toolBars[0]->actions() + toolBars[1]->actions())
        QVERIFY(!action->isCheckable());
    // Separators part the view groups; the published look is kept.
    QVERIFY(toolBars[2]->actions().at(CourseModes.size())->isSeparator());
    QCOMPARE(Action("ViewSurface")->toolTip(), QStringLiteral("Show/Hide surface"));
    QVERIFY(!Action("ViewSurface")->icon().isNull());
}

void tst_ZYLStudioToolBars::viewModeGroupFollowsSettings_data() {
    QTest::addColumn<QStringList>("modes");
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("courses") << CourseModes << QByteArray("viewCourseMode");
    QTest::newRow("laying points") << LayingPointModes << QByteArray("viewLayingPointsMode");
    QTest::newRow("course links") << LinkModes << QByteArray("viewCourseLinksMode");
    QTest::newRow("linking points") << LinkingPointModes << QByteArray("viewLinkPointsMode");
}

void tst_ZYLStudioToolBars::viewModeGroupFollowsSettings() {
    QFETCH(QStringList, modes);
    QFETCH(QByteArray, key);
    QActionGroup *group = Action(modes.first())->actionGroup();
    QVERIFY(group);
    QCOMPARE(group->exclusionPolicy(), QActionGroup::ExclusionPolicy::Exclusive);
    QCOMPARE(Keys(group->actions()), ViewKeys(modes));
    auto checked = [group] {
        QList<QAction *> actions = group->actions();
        actions.removeIf([](const QAction *action) { return !action->isChecked(); });
        return Keys(actions);
    };
    const QString defaultMode = m_settings->property(key).toString();
    QCOMPARE(checked(), ViewKeys({defaultMode}));

    for (const QString &mode : modes) {
        QVERIFY(m_settings->setProperty(key, mode));
        QCOMPARE(checked(), ViewKeys({mode}));
    }
    QVERIFY(m_settings->setProperty(key, QStringLiteral("NoSuchMode")));
    QCOMPARE(checked(), QByteArrayList());
    m_settings->RevertToDefaults();
    QCOMPARE(checked(), ViewKeys({defaultMode}));

    // Triggered by the user: the command stores the mode, the group shows it, also twice.
    for (int time = 0; time < 2; ++time) {
        Action(modes.last())->trigger();
        QCOMPARE(m_settings->property(key).toString(), modes.last());
        QCOMPARE(checked(), ViewKeys({modes.last()}));
    }
}

void tst_ZYLStudioToolBars::toggleFollowsSettings_data() {
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("surface") << QStringLiteral("ViewSurface") << QByteArray("viewSurface");
    QTest::newRow("ply boundary") << QStringLiteral("ViewPlyBoundary") << QByteArray("viewPlyBoundary");
    QTest::newRow("machine head") << QStringLiteral("ViewHead") << QByteArray("viewMachineHead");
    QTest::newRow("roller") << QStringLiteral("ViewRoller") << QByteArray("viewRoller");
}

void tst_ZYLStudioToolBars::toggleFollowsSettings() {
    QFETCH(QString, mode);
    QFETCH(QByteArray, key);
    QAction *toggle = Action(mode);
    QVERIFY(toggle->isCheckable() && !toggle->actionGroup());
    QVERIFY(m_settings->setProperty(key, true));
    for (const QString &other : Toggles)
        QCOMPARE(Action(other)->isChecked(), other == mode);
    QVERIFY(m_settings->setProperty(key, false));
    QVERIFY(!toggle->isChecked());

    // The command stores the state the trigger gave the action.
    for (bool expected : {true, false}) {
        toggle->trigger();
        QCOMPARE(toggle->isChecked(), expected);
        QCOMPARE(m_settings->property(key).toBool(), expected);
    }
    QVERIFY(m_settings->setProperty(key, true));
    m_settings->RevertToDefaults();
    QCOMPARE(toggle->isChecked(), m_settings->property(key).toBool());
}

void tst_ZYLStudioToolBars::unloadingRemovesAndLoadingBringsBack() {
    QMenu menu;
    menu.addAction(QStringLiteral("Before"));
    m_bars->AddViewMenuSection(&menu);
    m_bars->AddViewMenuSection(&menu);
    menu.addAction(QStringLiteral("After"));
    const QByteArrayList full = QByteArrayList{"Before"} + ViewSection + QByteArrayList{"After"};
    QCOMPARE(Keys(menu.actions()), full);
    QVERIFY(m_settings->setProperty("viewLayingPointsMode", QStringLiteral("HideLayingPoints")));
    QVERIFY(m_settings->setProperty("viewRoller", true));

    m_session->Shutdown();
    // The module is really gone: its settings object went with its statics.
    QVERIFY(!m_settings);
    QCOMPARE(Count(*m_bars), 0);
    QCOMPARE(Keys(menu.actions()), QByteArrayList({"Before", "After"}));

    QVERIFY(m_session->Start());
    QTRY_COMPARE(Count(*m_bars), 28);
    QCOMPARE(Keys(menu.actions()), full);
    // The new actions show the new settings object (a new graphics manager resets the view
    // modes, the switches persist) and follow it.
    m_settings = ModuleViewSettings();
    QVERIFY(m_settings);
    const QString layingMode = m_settings->property("viewLayingPointsMode").toString();
    QVERIFY(Action(layingMode)->isChecked());
    QCOMPARE(Action("HideLayingPoints")->isChecked(), layingMode == "HideLayingPoints");
    QVERIFY(Action("ViewRoller")->isChecked());
    QVERIFY(m_settings->setProperty("viewRoller", false));
    QVERIFY(!Action("ViewRoller")->isChecked());
    QVERIFY(m_settings->setProperty("viewLayingPointsMode", QStringLiteral("ViewLayingPointsWithAllAxes")));
    QVERIFY(Action("ViewLayingPointsWithAllAxes")->isChecked());
}

QTEST_MAIN(tst_ZYLStudioToolBars)
#include "tst_ZYLStudioToolBars.moc"
