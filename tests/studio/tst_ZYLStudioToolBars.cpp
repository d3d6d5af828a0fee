// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The tool bars on the module's own actions, with the module loaded at run time by the
// session as the studio loads it: unloading removes them and loading brings them back.
#include "ZYLStudioToolBars.h"

#include "ZYLStudioSession.h"

#include "ZYLCmdAction.h"
#include "ZYLCmdController.h"
#include "ZYLSysSettings.h"

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
