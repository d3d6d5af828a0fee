// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Publishers as static objects of a library loaded and unloaded at run time: nothing of the
// library may stay behind in the controller once it is unmapped.
#include "ZYLCmdAction.h"
#include "ZYLCmdController.h"

#include <QLibrary>
#include <QSignalSpy>
#include <QTest>

#include <dlfcn.h>

namespace {

// Whether the dynamic linker still has the library mapped (QLibrary only knows its own count).
bool IsMapped(const QString &path) {
    void *handle = dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_NOLOAD);
    if (handle)
        dlclose(handle);
    return handle != nullptr;
}

QList<QByteArray> ActionKeys() {
    QList<QByteArray> keys;
    for (const ZYLCmdAction *action : ZYLCmdController::GetController()->GetActions())
        keys.append(action->GetKey());
    return keys;
}

} // namespace

class tst_ZYLCmdUnload : public QObject {
    Q_OBJECT

private slots:
    void init();
    void publishesWhileLoaded();

private:
    const QString m_path = QStringLiteral(ZYLCMD_TEST_PLUGIN);
};

void tst_ZYLCmdUnload::init() {
    QVERIFY(!IsMapped(m_path));
    QVERIFY(ActionKeys().isEmpty());
}

void tst_ZYLCmdUnload::publishesWhileLoaded() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    QSignalSpy actions(controller, &ZYLCmdController::ActionsChanged);
    QSignalSpy commands(controller, &ZYLCmdController::CommandsChanged);
    // Twice, so that a second load publishes again after the first unload withdrew.
    for (int round = 0; round < 2; ++round) {
        QLibrary library(m_path);
        QVERIFY2(library.load(), qPrintable(library.errorString()));
        QCOMPARE(ActionKeys(), (QList<QByteArray>{"ZYLCmdTestPluginCmd.Edit", "ZYLCmdTestPluginCmd.View"}));
        QVERIFY(controller->GetRegisteredCommand("ZYLCmdTestPluginCmd"));
        QCOMPARE(controller->GetAction("ZYLCmdTestPluginCmd.View")->text(), QStringLiteral("View"));
        QVERIFY(library.unload());
        QVERIFY(!IsMapped(m_path));
        QVERIFY(ActionKeys().isEmpty());
        QVERIFY(!controller->GetRegisteredCommand("ZYLCmdTestPluginCmd"));
    }
    QCOMPARE(actions.count(), 8);
    QCOMPARE(commands.count(), 4);
}

QTEST_MAIN(tst_ZYLCmdUnload)
#include "tst_ZYLCmdUnload.moc"
