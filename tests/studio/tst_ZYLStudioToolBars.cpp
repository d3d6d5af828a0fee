// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The studio's tool bars on the module's published actions, with the module loaded at run
// time by the session as the studio loads it: grouping and order, view modes and toggles in
// step with the module's view settings, a menu section, and unloading and reloading.
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

// Non-separator actions of a widget, in order.
QList<QAction *> Commands(const QWidget *widget) {
    QList<QAction *> actions = widget->actions();
    actions.removeIf([](const QAction *action) { return action->isSeparator(); });
    return actions;
}

QByteArrayList Keys(const QList<QAction *> &actions) {
    QByteArrayList keys;
    for (const QAction *action : actions) {
        const auto *published = qobject_cast<const ZYLCmdAction *>(action);
        keys.append(published ? published->GetKey() : action->text().toUtf8());
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

int TotalCommands(const ZYLStudioToolBars &bars) {
    int total = 0;
    for (const QToolBar *toolBar : bars.GetToolBars())
        total += int(Commands(toolBar).size());
    return total;
}

// The module's view settings object, asked from the module library the session loaded (the
// same QLibrary file name shares the session's handle, so the module stays unloadable).
ZYLSysSettings *ModuleViewSettings() {
    QLibrary module(ZYLStudioSession::GetModulePath());
    if (!module.isLoaded())
        return nullptr;
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

} // namespace

class tst_ZYLStudioToolBars : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void actionsInPublicationOrderAndGroups();
    void viewModeGroupFollowsSettings_data();
    void viewModeGroupFollowsSettings();
    void unknownStoredModeChecksNothing();
    void togglesFollowSettings_data();
    void togglesFollowSettings();
    void unloadingRemovesAndLoadingBringsBack();
    void menuSectionFollowsTheToolBars();

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
    QTRY_COMPARE(TotalCommands(*m_bars), 28);
}

void tst_ZYLStudioToolBars::cleanup() {
    m_window.reset();
    m_session.reset();
}

void tst_ZYLStudioToolBars::actionsInPublicationOrderAndGroups() {
    const QList<QToolBar *> toolBars = m_bars->GetToolBars();
    QCOMPARE(toolBars.size(), 3);
    for (QToolBar *toolBar : toolBars)
        QCOMPARE(toolBar->parent(), m_window.get());

    QCOMPARE(Keys(Commands(toolBars[0])),
             QByteArrayList({"ZYLTPEditCourseCmd.Edit", "ZYLTPEditCourseLayingPointsCmd.Edit",
                             "ZYLTPEditLinkingPointsCmd.Edit", "ZYLTPEditLinksCmd.Edit"}));
    QCOMPARE(Keys(Commands(toolBars[1])), QByteArrayList({"ZYLTPCollisionInspectorCmd.View",
                                                          "ZYLTPContextualViewCmd.View", "ZYLTPDetailedInfoCmd.View"}));
    QCOMPARE(Keys(Commands(toolBars[2])),
             ViewKeys(CourseModes + LayingPointModes + LinkModes + LinkingPointModes + Toggles));

    // Every tool bar keeps the publication order.
    const QList<ZYLCmdAction *> published = ZYLCmdController::GetController()->GetActions();
    for (QToolBar *toolBar : toolBars) {
        int last = -1;
        for (QAction *action : Commands(toolBar)) {
            const int position = int(published.indexOf(qobject_cast<ZYLCmdAction *>(action)));
            QVERIFY(position > last);
            last = position;
        }
    }
    // The published look is kept.
    QAction *surface = Action("ViewSurface");
    QCOMPARE(surface->toolTip(), QStringLiteral("Show/Hide surface"));
    QVERIFY(!surface->icon().isNull());
    // Edit and inspection commands are plain buttons; separators part the view groups.
    for (QAction *action : Commands(toolBars[0]) + Commands(toolBars[1]))
        QVERIFY(!action->isCheckable());
    const QList<QAction *> view = toolBars[2]->actions();
    QVERIFY(view[CourseModes.size()]->isSeparator());
    QVERIFY(!view.first()->isSeparator());
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

    auto checkedMode = [group]() -> QString {
        QAction *checked = group->checkedAction();
        return checked ? qobject_cast<ZYLCmdAction *>(checked)->GetProperties().value("mode").toString() : QString();
    };
    const QString defaultMode = m_settings->property(key.constData()).toString();
    QCOMPARE(checkedMode(), defaultMode);

    // Set through the settings object, every mode in turn.
    for (const QString &mode : modes) {
        QVERIFY(m_settings->setProperty(key.constData(), mode));
        QCOMPARE(checkedMode(), mode);
    }
    m_settings->RevertToDefaults();
    QCOMPARE(checkedMode(), defaultMode);

    // Triggered by the user: the command stores the mode and the group shows it.
    const QString last = modes.last();
    Action(last)->trigger();
    QCOMPARE(m_settings->property(key.constData()).toString(), last);
    QCOMPARE(checkedMode(), last);
    // Triggering the checked mode again keeps it checked.
    Action(last)->trigger();
    QCOMPARE(checkedMode(), last);
    QVERIFY(Action(last)->isChecked());
}

void tst_ZYLStudioToolBars::unknownStoredModeChecksNothing() {
    QActionGroup *group = Action("ViewCourse")->actionGroup();
    QVERIFY(group->checkedAction());
    QVERIFY(m_settings->setProperty("viewCourseMode", QStringLiteral("NoSuchMode")));
    QVERIFY(!group->checkedAction());
    // The other groups are untouched.
    QCOMPARE(Action("ViewLayingPointsWithToolAxis")->actionGroup()->checkedAction(),
             Action("ViewLayingPointsWithToolAxis"));
}

void tst_ZYLStudioToolBars::togglesFollowSettings_data() {
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("surface") << QStringLiteral("ViewSurface") << QByteArray("viewSurface");
    QTest::newRow("ply boundary") << QStringLiteral("ViewPlyBoundary") << QByteArray("viewPlyBoundary");
    QTest::newRow("machine head") << QStringLiteral("ViewHead") << QByteArray("viewMachineHead");
    QTest::newRow("roller") << QStringLiteral("ViewRoller") << QByteArray("viewRoller");
}

void tst_ZYLStudioToolBars::togglesFollowSettings() {
    QFETCH(QString, mode);
    QFETCH(QByteArray, key);
    QAction *toggle = Action(mode);
    QVERIFY(toggle->isCheckable());
    QVERIFY(!toggle->actionGroup());
    QCOMPARE(toggle->isChecked(), m_settings->property(key.constData()).toBool());

    for (bool on : {true, false, true}) {
        QVERIFY(m_settings->setProperty(key.constData(), on));
        QCOMPARE(toggle->isChecked(), on);
    }
    // Only this toggle is on.
    for (const QString &other : Toggles)
        QCOMPARE(Action(other)->isChecked(), other == mode);

    // The command stores the state the trigger gave the action.
    toggle->trigger();
    QVERIFY(!toggle->isChecked());
    QCOMPARE(m_settings->property(key.constData()).toBool(), false);
    toggle->trigger();
    QVERIFY(toggle->isChecked());
    QCOMPARE(m_settings->property(key.constData()).toBool(), true);

    m_settings->RevertToDefaults();
    QCOMPARE(toggle->isChecked(), m_settings->property(key.constData()).toBool());
    QVERIFY(!toggle->isChecked());
}

void tst_ZYLStudioToolBars::unloadingRemovesAndLoadingBringsBack() {
    QVERIFY(m_settings->setProperty("viewLayingPointsMode", QStringLiteral("HideLayingPoints")));
    QVERIFY(m_settings->setProperty("viewRoller", true));

    m_session->Shutdown();
    // The module's statics went with it, its settings object included.
    QVERIFY(!m_settings);
    QCOMPARE(TotalCommands(*m_bars), 0);
    QCoreApplication::processEvents();
    QCOMPARE(TotalCommands(*m_bars), 0);

    QVERIFY(m_session->Start());
    QTRY_COMPARE(TotalCommands(*m_bars), 28);
    m_settings = ModuleViewSettings();
    QVERIFY(m_settings);
    // The new actions show what the module persisted before it was unloaded.
    QVERIFY(Action("HideLayingPoints")->isChecked());
    QVERIFY(Action("ViewRoller")->isChecked());
    QVERIFY(m_settings->setProperty("viewLayingPointsMode", QStringLiteral("ViewLayingPointsWithAllAxes")));
    QVERIFY(Action("ViewLayingPointsWithAllAxes")->isChecked());
    QVERIFY(!Action("HideLayingPoints")->isChecked());
}

void tst_ZYLStudioToolBars::menuSectionFollowsTheToolBars() {
    QMenu menu;
    menu.addAction(QStringLiteral("Before"));
    m_bars->AddViewMenuSection(&menu);
    m_bars->AddViewMenuSection(&menu);
    menu.addAction(QStringLiteral("After"));
    const QByteArrayList section = ViewKeys(CourseModes + LayingPointModes + LinkModes + LinkingPointModes + Toggles);
    const QByteArrayList full = QByteArrayList{"Before"} + section + QByteArrayList{"After"};
    QCOMPARE(Keys(Commands(&menu)), full);

    // Shared actions: a change of the settings shows in the menu too.
    QVERIFY(m_settings->setProperty("viewCourseMode", QStringLiteral("HideCourse")));
    QVERIFY(Commands(&menu).at(1 + CourseModes.indexOf("HideCourse"))->isChecked());

    m_session->Shutdown();
    QCOMPARE(Keys(Commands(&menu)), QByteArrayList({"Before", "After"}));
    QVERIFY(m_session->Start());
    QTRY_COMPARE(Keys(Commands(&menu)), full);
}

QTEST_MAIN(tst_ZYLStudioToolBars)
#include "tst_ZYLStudioToolBars.moc"
