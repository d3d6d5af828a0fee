// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Registration, publication and bad input of the controller; the dialog handler's buttons.
#include "ZYLCmdAction.h"
#include "ZYLCmdActionPublisher.h"
#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdController.h"
#include "ZYLCmdDialogHandler.h"
#include "ZYLCmdTestCommands.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisFunctionFilter.h"
#include "ZYLVisVirtualObject.h"

#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <memory>

Q_DECLARE_METATYPE(const QMetaObject *)

namespace {

std::unique_ptr<ZYLCmdActionPublisher> MakePublisher(const QByteArray &name, const QByteArray &commandClass) {
    return std::make_unique<ZYLCmdActionPublisher>(name, commandClass, QString(), QString::fromLatin1(name),
                                                   QStringLiteral("tip"), nullptr, ZYLCmdAction::AnySelection,
                                                   QHash<QString, QVariant>());
}

} // namespace

class tst_ZYLCmdController : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void registrationRefused_data();
    void registrationRefused();
    void unregisterUnknownClassIsQuiet();
    void triggerRefused_data();
    void triggerRefused();

    void duplicateKeyRefused();
    void acceptsSelection_data();
    void acceptsSelection();

    void standardButtonEnabling();

private:
    ZYLCmdTestScript &script() { return ZYLCmdTestScript::Get(); }
};

// Runs before QApplication exists, as static objects of a library do.
static ZYLCmdController *s_earlyController = ZYLCmdController::GetController();

void tst_ZYLCmdController::init() {
    script().Reset();
}

void tst_ZYLCmdController::cleanup() {
    ZYLCmdController::GetController()->Reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void tst_ZYLCmdController::registrationRefused_data() {
    QTest::addColumn<const QMetaObject *>("commandClass");
    QTest::addColumn<QString>("warning");
    QTest::newRow("null") << static_cast<const QMetaObject *>(nullptr) << "null command class";
    QTest::newRow("not a command") << &ZYLCmdTestNotACmd::staticMetaObject << "not a ZYLCmdCommand";
    QTest::newRow("second registration") << &ZYLCmdTestPlainCmd::staticMetaObject << "already registered";
}

void tst_ZYLCmdController::registrationRefused() {
    QFETCH(const QMetaObject *, commandClass);
    QFETCH(QString, warning);
    ZYLCmdController *controller = ZYLCmdController::GetController();
    ZYLCmdCommandPublisher<ZYLCmdTestPlainCmd> first;
    const QList<const QMetaObject *> before = controller->GetRegisteredCommands();
    QSignalSpy changed(controller, &ZYLCmdController::CommandsChanged);

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QRegularExpression::escape(warning)));
    controller->RegisterCommand(commandClass);
    QCOMPARE(controller->GetRegisteredCommands(), before);
    QCOMPARE(changed.count(), 0);
}

void tst_ZYLCmdController::unregisterUnknownClassIsQuiet() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    QSignalSpy changed(controller, &ZYLCmdController::CommandsChanged);
    {
        // The publisher of a refused class unregisters it again without any effect.
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("no invokable constructor"));
        ZYLCmdCommandPublisher<ZYLCmdTestNoCtorCmd> refused;
    }
    QCOMPARE(changed.count(), 0);
    QVERIFY(controller->GetRegisteredCommands().isEmpty());
}

void tst_ZYLCmdController::triggerRefused_data() {
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QString>("warning");
    QTest::newRow("empty key") << QByteArray() << "no action is published";
    QTest::newRow("class not registered") << QByteArray("ZYLCmdTestDialogCmd.Unregistered") << "not registered";
}

void tst_ZYLCmdController::triggerRefused() {
    QFETCH(QByteArray, key);
    QFETCH(QString, warning);
    ZYLCmdController *controller = ZYLCmdController::GetController();
    ZYLCmdCommandPublisher<ZYLCmdTestPlainCmd> plain;
    const auto action = MakePublisher("Unregistered", "ZYLCmdTestDialogCmd");
    QSignalSpy started(controller, &ZYLCmdController::CommandStarted);

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(warning));
    QVERIFY(!controller->Trigger(key));
    QCOMPARE(started.count(), 0);
    QVERIFY(script().log.isEmpty());
}

void tst_ZYLCmdController::duplicateKeyRefused() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    auto first = MakePublisher("Twice", "ZYLCmdTestPlainCmd");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("already published under ZYLCmdTestPlainCmd.Twice"));
    auto second = MakePublisher("Twice", "ZYLCmdTestPlainCmd");
    QVERIFY(first->IsPublished());
    QVERIFY(!second->IsPublished());
    QCOMPARE(controller->GetActions().size(), 1);
    // Withdrawing the refused one leaves the first in place.
    second.reset();
    QCOMPARE(controller->GetAction("ZYLCmdTestPlainCmd.Twice"), first->GetAction());
}

void tst_ZYLCmdController::acceptsSelection_data() {
    QTest::addColumn<int>("behavior");
    QTest::addColumn<bool>("withFilter");
    QTest::addColumn<int>("selected");
    QTest::addColumn<bool>("accepted");
    // The filter accepts only the first of two objects.
    QTest::newRow("any, rejected object") << int(ZYLCmdAction::AnySelection) << true << 2 << true;
    QTest::newRow("required, accepted object") << int(ZYLCmdAction::RequireFilteredSelection) << true << 1 << true;
    QTest::newRow("required, one rejected") << int(ZYLCmdAction::RequireFilteredSelection) << true << 2 << false;
    QTest::newRow("required, no filter") << int(ZYLCmdAction::RequireFilteredSelection) << false << 2 << true;
    QTest::newRow("required, no filter, empty") << int(ZYLCmdAction::RequireFilteredSelection) << false << 0
                                                << false;
}

void tst_ZYLCmdController::acceptsSelection() {
    QFETCH(int, behavior);
    QFETCH(bool, withFilter);
    QFETCH(int, selected);
    QFETCH(bool, accepted);
    ZYLVisEnvironment environment;
    ZYLVisVirtualObject goodObject(&environment);
    ZYLVisVirtualObject badObject(&environment);
    ZYLVisObject *good = &goodObject;
    ZYLVisObject *bad = &badObject;
    ZYLVisSelectionFilter *filter =
        withFilter ? new ZYLVisFunctionFilter(false, [good](const ZYLVisObject *object) { return object == good; })
                   : nullptr;
    ZYLCmdAction action("A", "ZYLCmdTestPlainCmd", QString(), QString(), QString(), filter,
                        ZYLCmdAction::FilterBehavior(behavior), {});
    QSet<ZYLVisObject *> selection;
    if (selected >= 1)
        selection.insert(good);
    if (selected >= 2)
        selection.insert(bad);
    QCOMPARE(action.AcceptsSelection(selection), accepted);
}

void tst_ZYLCmdController::standardButtonEnabling() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    ZYLCmdDialogHandler *handler = controller->GetDialogHandler();
    ZYLCmdCommandPublisher<ZYLCmdTestDialogCmd> dialog;
    auto action = MakePublisher("Dialog", "ZYLCmdTestDialogCmd");
    QVERIFY(controller->Trigger("ZYLCmdTestDialogCmd.Dialog"));
    ZYLCmdCommand *running = controller->GetCurrentCommand();
    auto *box = handler->GetWidget()->findChild<QDialogButtonBox *>();
    QVERIFY(box);
    QVERIFY(box->button(QDialogButtonBox::Ok)->isEnabled());

    handler->SetStandardButtonEnabled(running, QDialogButtonBox::Ok, false);
    QVERIFY(!box->button(QDialogButtonBox::Ok)->isEnabled());
    QVERIFY(!handler->IsStandardButtonEnabled(running, QDialogButtonBox::Ok));
    QVERIFY(box->button(QDialogButtonBox::Cancel)->isEnabled());

    // A command that is not running changes nothing, nor does a button the frame lacks.
    ZYLCmdTestPlainCmd stranger(nullptr);
    handler->SetStandardButtonEnabled(&stranger, QDialogButtonBox::Ok, true);
    handler->SetStandardButtonEnabled(running, QDialogButtonBox::Apply, false);
    QVERIFY(!box->button(QDialogButtonBox::Ok)->isEnabled());
    QVERIFY(!box->button(QDialogButtonBox::Apply));

    handler->SetStandardButtonEnabled(running, QDialogButtonBox::Ok, true);
    QVERIFY(box->button(QDialogButtonBox::Ok)->isEnabled());
    handler->SetStandardButtonEnabled(running, QDialogButtonBox::Ok, false);

    // The next run starts with enabled buttons, and the ended command has no say any more.
    QVERIFY(controller->Reject());
    QVERIFY(controller->Trigger("ZYLCmdTestDialogCmd.Dialog"));
    QVERIFY(box->button(QDialogButtonBox::Ok)->isEnabled());
    handler->SetStandardButtonEnabled(running, QDialogButtonBox::Ok, false);
    QVERIFY(box->button(QDialogButtonBox::Ok)->isEnabled());

    // A panel may set the buttons while it is being built, before it is in the frame.
    QVERIFY(controller->Reject());
    script().disableOkIn = QStringLiteral("CreateContentWidget");
    QVERIFY(controller->Trigger("ZYLCmdTestDialogCmd.Dialog"));
    QVERIFY(!box->button(QDialogButtonBox::Ok)->isEnabled());
    QVERIFY(box->button(QDialogButtonBox::Cancel)->isEnabled());
}

QTEST_MAIN(tst_ZYLCmdController)
#include "tst_ZYLCmdController.moc"
