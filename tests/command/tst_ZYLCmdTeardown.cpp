// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The controller outlives the application: a command still running when the QApplication is
// destroyed is cancelled while its panel exists, and no widget of the runner survives the
// application; actions published before any application exist once there is one. The test
// makes its own applications, so it runs without one from QTest.
#include "ZYLCmdAction.h"
#include "ZYLCmdActionPublisher.h"
#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdController.h"
#include "ZYLCmdDialogHandler.h"
#include "ZYLCmdTestCommands.h"

#include <QApplication>
#include <QPointer>
#include <QTest>

class tst_ZYLCmdTeardown : public QObject {
    Q_OBJECT

private slots:
    void applicationTeardownCancelsRunningCommand();
};

void tst_ZYLCmdTeardown::applicationTeardownCancelsRunningCommand() {
    // Publishers outlive the applications, as static objects of a library do.
    ZYLCmdCommandPublisher<ZYLCmdTestDialogCmd> registration;
    ZYLCmdActionPublisher action("Dialog", "ZYLCmdTestDialogCmd", QStringLiteral("courses-edit"),
                                 QStringLiteral("Dialog"), QString(), nullptr, ZYLCmdAction::AnySelection, {});
    ZYLCmdController *controller = ZYLCmdController::GetController();
    // No QAction without an application: the publication waits for one.
    QCOMPARE(controller->GetAction("ZYLCmdTestDialogCmd.Dialog"), nullptr);
    QVERIFY(controller->GetActions().isEmpty());
    QTest::ignoreMessage(QtWarningMsg, "Trigger ZYLCmdTestDialogCmd.Dialog: actions need a QGuiApplication");
    QVERIFY(!controller->Trigger("ZYLCmdTestDialogCmd.Dialog"));

    // Twice: the second application gets a new frame and the same care at its end.
    for (int round = 0; round < 2; ++round) {
        ZYLCmdTestScript::Get().Reset();
        QPointer<QWidget> frame;
        QPointer<QWidget> panel;
        QPointer<ZYLCmdCommand> command;
        {
            int argc = 1;
            char name[] = "tst_ZYLCmdTeardown";
            char *argv[] = {name, nullptr};
            QApplication application(argc, argv);
            QCOMPARE(controller->GetActions().size(), 1);
            QVERIFY(!controller->GetAction("ZYLCmdTestDialogCmd.Dialog")->icon().isNull());
            QVERIFY(controller->Trigger("ZYLCmdTestDialogCmd.Dialog"));
            command = controller->GetCurrentCommand();
            panel = static_cast<ZYLCmdDialogCommand *>(command.data())->GetContentWidget();
            frame = controller->GetDialogHandler()->GetWidget();
            QVERIFY(frame && frame->isVisible());
            QVERIFY(panel);
        }
        QCOMPARE(controller->GetCurrentCommand(), nullptr);
        QVERIFY(!frame);
        QVERIFY(!panel);
        QVERIFY(!command);
        const QStringList &log = ZYLCmdTestScript::Get().log;
        // Cancelled with the panel still alive, then everything deleted.
        QCOMPARE(log.mid(log.indexOf("DialogCmd.LoseFocus")),
                 (QStringList{"DialogCmd.LoseFocus", "DialogCmd.Cleanup", "Panel.dtor", "Cmd.dtor"}));
        QVERIFY(!controller->GetDialogHandler()->GetWidget());
    }
}

QTEST_APPLESS_MAIN(tst_ZYLCmdTeardown)
#include "tst_ZYLCmdTeardown.moc"
