// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The runner's lifecycle: order of the command's operations, transactions committed and rolled
// back through a real container, panels shown and hidden, errors reported, objects deleted.
#include "ZYLCmdAction.h"
#include "ZYLCmdActionPublisher.h"
#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdController.h"
#include "ZYLCmdDialogHandler.h"
#include "ZYLCmdTestCommands.h"
#include "ZYLCmdTestEnvironment.h"
#include "ZYLFeatContainer.h"
#include "ZYLFeatObject.h"

#include <QPushButton>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

const QString kOriginalName = QStringLiteral("original");

// How a test ends the running dialog command.
enum class Ending { OkButton, CancelButton, CloseButton, ControllerAccept, ControllerReject, CloseWindow };

QDialogButtonBox *FrameButtons() {
    QWidget *frame = ZYLCmdController::GetController()->GetDialogHandler()->GetWidget();
    return frame ? frame->findChild<QDialogButtonBox *>() : nullptr;
}

void PressButton(QDialogButtonBox::StandardButton button) {
    QDialogButtonBox *box = FrameButtons();
    QVERIFY(box);
    QVERIFY(box->button(button));
    box->button(button)->click();
}

void DeleteDeferred() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class tst_ZYLCmdRunner : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void dialogLifecycle_data();
    void dialogLifecycle();
    void plainCommandCommittedAfterGainFocus();
    void helpButtonDoesNothing();
    void frameTitleAndButtons();

    void exceptionRollsBack_data();
    void exceptionRollsBack();
    void constructorException();
    void cleanupFalseSkipsPostApply();

    void secondTriggerCancelsFirst();
    void interruptionCommitsWhenAsked();
    void commandEndsItselfInsideItsOperation_data();
    void commandEndsItselfInsideItsOperation();

    void neverShownUntilShowDialog();
    void shownAfterDelay();
    void propertiesCopied();
    void runsWithoutEnvironment();

private:
    void Publish(const QByteArray &action, const QByteArray &commandClass,
                 const QHash<QString, QVariant> &properties = {});
    ZYLCmdTestScript &script() { return ZYLCmdTestScript::Get(); }

    std::unique_ptr<ZYLCmdTestEnvironment> m_environment;
    ZYLFeatObject *m_feature = nullptr;
    std::vector<std::unique_ptr<ZYLCmdActionPublisher>> m_publishers;
    std::unique_ptr<ZYLCmdCommandPublisher<ZYLCmdTestPlainCmd>> m_plain;
    std::unique_ptr<ZYLCmdCommandPublisher<ZYLCmdTestDialogCmd>> m_dialog;
    std::unique_ptr<ZYLCmdCommandPublisher<ZYLCmdTestHiddenCmd>> m_hidden;
    std::unique_ptr<ZYLCmdCommandPublisher<ZYLCmdTestKeepCmd>> m_keep;
};

void tst_ZYLCmdRunner::initTestCase() {
    m_plain = std::make_unique<ZYLCmdCommandPublisher<ZYLCmdTestPlainCmd>>();
    m_dialog = std::make_unique<ZYLCmdCommandPublisher<ZYLCmdTestDialogCmd>>();
    m_hidden = std::make_unique<ZYLCmdCommandPublisher<ZYLCmdTestHiddenCmd>>();
    m_keep = std::make_unique<ZYLCmdCommandPublisher<ZYLCmdTestKeepCmd>>();
    Publish("Plain", "ZYLCmdTestPlainCmd", {{QStringLiteral("mode"), QStringLiteral("ViewSurface")}});
    Publish("Dialog", "ZYLCmdTestDialogCmd", {{QStringLiteral("mode"), QStringLiteral("edit")}});
    Publish("Hidden", "ZYLCmdTestHiddenCmd");
    Publish("Keep", "ZYLCmdTestKeepCmd");
}

void tst_ZYLCmdRunner::init() {
    m_environment = std::make_unique<ZYLCmdTestEnvironment>();
    m_feature = m_environment->AddFeature(kOriginalName);
    script().Reset();
    script().feature = m_feature;
}

void tst_ZYLCmdRunner::cleanup() {
    ZYLCmdController::GetController()->Reject();
    DeleteDeferred();
    QCOMPARE(ZYLCmdController::GetController()->GetCurrentCommand(), nullptr);
    m_environment.reset();
}

void tst_ZYLCmdRunner::Publish(const QByteArray &action, const QByteArray &commandClass,
                               const QHash<QString, QVariant> &properties) {
    m_publishers.push_back(std::make_unique<ZYLCmdActionPublisher>(
        action, commandClass, QString(), QString::fromLatin1(action), QString(), nullptr,
        ZYLCmdAction::AnySelection, properties));
}

void tst_ZYLCmdRunner::dialogLifecycle_data() {
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<int>("ending");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QStringList>("endLog");

    const QStringList accepted{"DialogCmd.LoseFocus", "DialogCmd.Commit[open]", "DialogCmd.Cleanup[closed]",
                               "DialogCmd.PostApply"};
    const QStringList cancelled{"DialogCmd.LoseFocus", "DialogCmd.Cleanup[closed]"};
    QTest::newRow("ok button") << QByteArray("ZYLCmdTestDialogCmd.Dialog") << int(Ending::OkButton) << true
                               << QStringList{"DialogCmd.Click(Ok)"} + accepted;
    QTest::newRow("cancel button") << QByteArray("ZYLCmdTestDialogCmd.Dialog") << int(Ending::CancelButton) << false
                                   << QStringList{"DialogCmd.Click(Cancel)"} + cancelled;
    QTest::newRow("close button") << QByteArray("ZYLCmdTestKeepCmd.Keep") << int(Ending::CloseButton) << false
                                  << QStringList{"KeepCmd.Click(Close)", "KeepCmd.LoseFocus",
                                                 "KeepCmd.Cleanup[closed]"};
    QTest::newRow("controller accept") << QByteArray("ZYLCmdTestDialogCmd.Dialog") << int(Ending::ControllerAccept)
                                       << true << accepted;
    QTest::newRow("controller reject") << QByteArray("ZYLCmdTestDialogCmd.Dialog") << int(Ending::ControllerReject)
                                       << false << cancelled;
    QTest::newRow("frame window closed") << QByteArray("ZYLCmdTestDialogCmd.Dialog") << int(Ending::CloseWindow)
                                         << false << cancelled;
}

void tst_ZYLCmdRunner::dialogLifecycle() {
    QFETCH(QByteArray, key);
    QFETCH(int, ending);
    QFETCH(bool, accepted);
    QFETCH(QStringList, endLog);

    ZYLCmdController *controller = ZYLCmdController::GetController();
    ZYLCmdDialogHandler *handler = controller->GetDialogHandler();
    QSignalSpy shown(handler, &ZYLCmdDialogHandler::PanelShown);
    QSignalSpy hidden(handler, &ZYLCmdDialogHandler::PanelHidden);
    QSignalSpy finished(controller, &ZYLCmdController::CommandFinished);
    script().editIn = QStringLiteral("GainFocus");

    QVERIFY(controller->Trigger(key));
    const QString prefix = key.startsWith("ZYLCmdTestKeep") ? QStringLiteral("KeepCmd.") : QStringLiteral("DialogCmd.");
    QStringList startLog;
    for (const char *step : {"ctor", "Initialize", "CreateContentWidget", "Load", "GainFocus"})
        startLog << prefix + QLatin1String(step);
    QCOMPARE(script().log, startLog);
    QPointer<ZYLCmdCommand> command = controller->GetCurrentCommand();
    QVERIFY(command);
    QPointer<QWidget> panel = static_cast<ZYLCmdDialogCommand *>(command.data())->GetContentWidget();
    QVERIFY(panel);
    QCOMPARE(shown.count(), 1);
    QVERIFY(handler->GetWidget()->isVisible());
    QVERIFY(panel->isVisible());
    QCOMPARE(m_feature->GetName(), QStringLiteral("edited in GainFocus"));
    QVERIFY(m_environment->GetContainer()->HasOpenTransaction());

    script().log.clear();
    switch (Ending(ending)) {
    case Ending::OkButton:
        PressButton(QDialogButtonBox::Ok);
        break;
    case Ending::CancelButton:
        PressButton(QDialogButtonBox::Cancel);
        break;
    case Ending::CloseButton:
        PressButton(QDialogButtonBox::Close);
        break;
    case Ending::ControllerAccept:
        QVERIFY(controller->Accept());
        break;
    case Ending::ControllerReject:
        QVERIFY(controller->Reject());
        break;
    case Ending::CloseWindow:
        QVERIFY(!handler->GetWidget()->close());
        break;
    }
    QCOMPARE(script().log, endLog);
    QCOMPARE(controller->GetCurrentCommand(), nullptr);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(1).toBool(), accepted);
    QCOMPARE(hidden.count(), 1);
    QVERIFY(!handler->GetWidget()->isVisible());
    QVERIFY(!m_environment->GetContainer()->HasOpenTransaction());
    QCOMPARE(m_feature->GetName(), accepted ? QStringLiteral("edited in GainFocus") : kOriginalName);
    QCOMPARE(m_environment->GetContainer()->GetUndoCount(), accepted ? 1 : 0);
    if (accepted)
        QCOMPARE(m_environment->GetContainer()->GetUndoName(), command->GetLabel());

    // Deleted later, the panel first.
    QVERIFY(command);
    script().log.clear();
    DeleteDeferred();
    QVERIFY(!command);
    QVERIFY(!panel);
    QCOMPARE(script().log, (QStringList{"Panel.dtor", "Cmd.dtor"}));
}

void tst_ZYLCmdRunner::plainCommandCommittedAfterGainFocus() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    QSignalSpy finished(controller, &ZYLCmdController::CommandFinished);
    QSignalSpy shown(controller->GetDialogHandler(), &ZYLCmdDialogHandler::PanelShown);
    script().editIn = QStringLiteral("GainFocus");

    QVERIFY(controller->Trigger("ZYLCmdTestPlainCmd.Plain"));
    DeleteDeferred();
    QCOMPARE(script().log, (QStringList{"PlainCmd.ctor", "PlainCmd.Initialize", "PlainCmd.Load",
                                        "PlainCmd.GainFocus", "PlainCmd.LoseFocus", "PlainCmd.Commit[open]",
                                        "PlainCmd.Cleanup[closed]", "PlainCmd.PostApply", "PlainCmd.dtor"}));
    QCOMPARE(controller->GetCurrentCommand(), nullptr);
    QCOMPARE(finished.count(), 1);
    QVERIFY(finished.at(0).at(1).toBool());
    QCOMPARE(shown.count(), 0);
    QCOMPARE(m_environment->GetContainer()->GetUndoName(), QStringLiteral("Plain test"));
}

void tst_ZYLCmdRunner::helpButtonDoesNothing() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    QVERIFY(controller->Trigger("ZYLCmdTestKeepCmd.Keep"));
    script().log.clear();
    PressButton(QDialogButtonBox::Help);
    QCOMPARE(script().log, QStringList{"KeepCmd.Click(Help)"});
    QVERIFY(controller->GetCurrentCommand());
    QVERIFY(m_environment->GetContainer()->HasOpenTransaction());
}

void tst_ZYLCmdRunner::frameTitleAndButtons() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    QVERIFY(controller->Trigger("ZYLCmdTestDialogCmd.Dialog"));
    QCOMPARE(controller->GetDialogHandler()->GetWidget()->windowTitle(), QStringLiteral("Dialog test"));
    QCOMPARE(FrameButtons()->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QVERIFY(controller->Trigger("ZYLCmdTestKeepCmd.Keep"));
    QCOMPARE(controller->GetDialogHandler()->GetWidget()->windowTitle(), QStringLiteral("Keep test"));
    QCOMPARE(FrameButtons()->standardButtons(), QDialogButtonBox::Close | QDialogButtonBox::Help);
    // Only the running command's panel is in the frame.
    DeleteDeferred();
    QCOMPARE(controller->GetDialogHandler()->GetWidget()->findChildren<ZYLCmdTestPanel *>().size(), 1);
}

void tst_ZYLCmdRunner::exceptionRollsBack_data() {
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QString>("throwIn");
    QTest::addColumn<QString>("editIn");
    QTest::addColumn<bool>("focused");

    const QByteArray dialog("ZYLCmdTestDialogCmd.Dialog");
    QTest::newRow("GainFocus") << dialog << "GainFocus" << "GainFocus" << false;
    QTest::newRow("Commit") << dialog << "Commit" << "GainFocus" << true;
    QTest::newRow("Commit after its own edit") << dialog << "Commit" << "Commit" << true;
    QTest::newRow("CreateContentWidget") << dialog << "CreateContentWidget" << "Initialize" << false;
    QTest::newRow("Initialize") << dialog << "Initialize" << "Initialize" << false;
    QTest::newRow("Load") << dialog << "Load" << "Initialize" << false;
    QTest::newRow("LoseFocus") << dialog << "LoseFocus" << "GainFocus" << true;
    QTest::newRow("plain Commit") << QByteArray("ZYLCmdTestPlainCmd.Plain") << "Commit" << "GainFocus" << true;
    QTest::newRow("plain GainFocus") << QByteArray("ZYLCmdTestPlainCmd.Plain") << "GainFocus" << "Initialize"
                                     << false;
}

void tst_ZYLCmdRunner::exceptionRollsBack() {
    QFETCH(QByteArray, key);
    QFETCH(QString, throwIn);
    QFETCH(QString, editIn);
    QFETCH(bool, focused);

    ZYLCmdController *controller = ZYLCmdController::GetController();
    ZYLCmdDialogHandler *handler = controller->GetDialogHandler();
    QSignalSpy errors(handler, &ZYLCmdDialogHandler::ErrorReported);
    QSignalSpy finished(controller, &ZYLCmdController::CommandFinished);
    script().throwIn = throwIn;
    script().editIn = editIn;

    QVERIFY(controller->Trigger(key));
    if (controller->GetCurrentCommand())
        QVERIFY(controller->Accept());

    QCOMPARE(errors.count(), 1);
    QCOMPARE(errors.at(0).at(0).toString(), key.startsWith("ZYLCmdTestPlain") ? "Plain test" : "Dialog test");
    QCOMPARE(errors.at(0).at(1).toString(), QStringLiteral("failure in ") + throwIn);
    QCOMPARE(finished.count(), 1);
    QVERIFY(!finished.at(0).at(1).toBool());
    QCOMPARE(controller->GetCurrentCommand(), nullptr);
    // Nothing half-applied: the edit made before the failure is gone, no undo step was added.
    QCOMPARE(m_feature->GetName(), kOriginalName);
    QVERIFY(!m_environment->GetContainer()->HasOpenTransaction());
    QCOMPARE(m_environment->GetContainer()->GetUndoCount(), 0);
    // Cleanup still ran, after the rollback, and LoseFocus only after a completed GainFocus.
    const QString prefix = key.startsWith("ZYLCmdTestPlain") ? "PlainCmd." : "DialogCmd.";
    QVERIFY2(script().log.contains(prefix + "Cleanup[closed]"), qPrintable(script().log.join(' ')));
    QCOMPARE(script().log.contains(prefix + "LoseFocus"), focused);
    QVERIFY(!script().log.contains(prefix + "PostApply"));
    QVERIFY(!handler->IsPanelShown());
    // Nothing leaked: the command and every panel it made are deleted.
    DeleteDeferred();
    QVERIFY(script().log.contains(key.startsWith("ZYLCmdTestPlain") ? "PlainCmd.dtor" : "Cmd.dtor"));
    QCOMPARE(script().log.count("Panel.dtor"), script().log.count(prefix + "CreateContentWidget"));
    QVERIFY(handler->GetWidget()->findChildren<ZYLCmdTestPanel *>().isEmpty());
}

void tst_ZYLCmdRunner::constructorException() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    QSignalSpy errors(controller->GetDialogHandler(), &ZYLCmdDialogHandler::ErrorReported);
    QSignalSpy started(controller, &ZYLCmdController::CommandStarted);
    script().throwIn = QStringLiteral("ctor");
    QVERIFY(!controller->Trigger("ZYLCmdTestDialogCmd.Dialog"));
    QCOMPARE(errors.count(), 1);
    QCOMPARE(errors.at(0).at(1).toString(), QStringLiteral("failure in ctor"));
    QCOMPARE(started.count(), 0);
    QCOMPARE(controller->GetCurrentCommand(), nullptr);
    QVERIFY(!m_environment->GetContainer()->HasOpenTransaction());
}

void tst_ZYLCmdRunner::cleanupFalseSkipsPostApply() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    QSignalSpy finished(controller, &ZYLCmdController::CommandFinished);
    script().cleanupResult = false;
    script().editIn = QStringLiteral("GainFocus");
    QTest::ignoreMessage(QtWarningMsg, "ZYLCmdTestPlainCmd: Cleanup reported a failure");
    QVERIFY(controller->Trigger("ZYLCmdTestPlainCmd.Plain"));
    QVERIFY(!script().log.contains("PlainCmd.PostApply"));
    // The edits were committed before Cleanup; its result does not undo them.
    QVERIFY(finished.at(0).at(1).toBool());
    QCOMPARE(m_environment->GetContainer()->GetUndoCount(), 1);
}

void tst_ZYLCmdRunner::secondTriggerCancelsFirst() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    QSignalSpy finished(controller, &ZYLCmdController::CommandFinished);
    script().editIn = QStringLiteral("Initialize");
    QVERIFY(controller->Trigger("ZYLCmdTestDialogCmd.Dialog"));
    QPointer<ZYLCmdCommand> first = controller->GetCurrentCommand();
    script().log.clear();

    QVERIFY(controller->Trigger("ZYLCmdTestHiddenCmd.Hidden"));
    // The first one ended completely, rolled back, before the second was even created.
    QCOMPARE(script().log.mid(0, 3),
             (QStringList{"DialogCmd.LoseFocus", "DialogCmd.Cleanup[closed]", "HiddenCmd.ctor"}));
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).value<ZYLCmdCommand *>(), first.data());
    QVERIFY(!finished.at(0).at(1).toBool());
    QVERIFY(controller->GetCurrentCommand() != first);
    QCOMPARE(controller->GetCurrentCommand()->metaObject(), &ZYLCmdTestHiddenCmd::staticMetaObject);
    // The second command's own edit is the only one in the model.
    QCOMPARE(m_feature->GetName(), QStringLiteral("edited in Initialize"));
    QVERIFY(controller->Reject());
    QCOMPARE(m_feature->GetName(), kOriginalName);
    QCOMPARE(m_environment->GetContainer()->GetUndoCount(), 0);
}

void tst_ZYLCmdRunner::interruptionCommitsWhenAsked() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    QSignalSpy finished(controller, &ZYLCmdController::CommandFinished);
    script().editIn = QStringLiteral("GainFocus");
    QVERIFY(controller->Trigger("ZYLCmdTestKeepCmd.Keep"));
    script().editIn.clear();
    QVERIFY(controller->Trigger("ZYLCmdTestPlainCmd.Plain"));
    QCOMPARE(finished.count(), 2);
    QVERIFY(finished.at(0).at(1).toBool());
    QCOMPARE(m_feature->GetName(), QStringLiteral("edited in GainFocus"));
    QCOMPARE(m_environment->GetContainer()->GetUndoName(), QStringLiteral("Keep test"));
}

void tst_ZYLCmdRunner::commandEndsItselfInsideItsOperation_data() {
    QTest::addColumn<QString>("cancelIn");
    QTest::newRow("Initialize") << "Initialize";
    QTest::newRow("CreateContentWidget") << "CreateContentWidget";
    QTest::newRow("Load") << "Load";
    QTest::newRow("GainFocus") << "GainFocus";
}

void tst_ZYLCmdRunner::commandEndsItselfInsideItsOperation() {
    QFETCH(QString, cancelIn);
    ZYLCmdController *controller = ZYLCmdController::GetController();
    QSignalSpy finished(controller, &ZYLCmdController::CommandFinished);
    QSignalSpy errors(controller->GetDialogHandler(), &ZYLCmdDialogHandler::ErrorReported);
    script().cancelIn = cancelIn;
    script().editIn = QStringLiteral("Initialize");

    QVERIFY(controller->Trigger("ZYLCmdTestDialogCmd.Dialog"));
    QCOMPARE(finished.count(), 1);
    QCOMPARE(errors.count(), 0);
    QCOMPARE(controller->GetCurrentCommand(), nullptr);
    QCOMPARE(m_feature->GetName(), kOriginalName);
    // The runner stopped at the operation that ended the command.
    QCOMPARE(script().log.last(), QStringLiteral("DialogCmd.Cleanup[closed]"));
    QCOMPARE(script().log.count("DialogCmd.Cleanup[closed]"), 1);
    QVERIFY(!controller->GetDialogHandler()->IsPanelShown());
    // Still alive while its operation returns; deleted afterwards with what it made.
    QPointer<ZYLCmdCommand> command = finished.at(0).at(0).value<ZYLCmdCommand *>();
    QVERIFY(command);
    DeleteDeferred();
    QVERIFY(!command);
    QVERIFY(controller->GetDialogHandler()->GetWidget()->findChildren<ZYLCmdTestPanel *>().isEmpty());
}

void tst_ZYLCmdRunner::neverShownUntilShowDialog() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    ZYLCmdDialogHandler *handler = controller->GetDialogHandler();
    QSignalSpy shown(handler, &ZYLCmdDialogHandler::PanelShown);
    QVERIFY(controller->Trigger("ZYLCmdTestHiddenCmd.Hidden"));
    auto *command = qobject_cast<ZYLCmdDialogCommand *>(controller->GetCurrentCommand());
    QVERIFY(command);
    QVERIFY(command->GetContentWidget());
    QTest::qWait(50);
    QCOMPARE(shown.count(), 0);
    QVERIFY(!handler->GetWidget()->isVisible());
    QVERIFY(!handler->IsPanelShown());

    command->ShowDialog();
    QCOMPARE(shown.count(), 1);
    QCOMPARE(shown.at(0).at(0).value<ZYLCmdCommand *>(), command);
    QVERIFY(handler->GetWidget()->isVisible());
    QVERIFY(command->GetContentWidget()->isVisible());
    // Asking again shows nothing new.
    command->ShowDialog();
    QCOMPARE(shown.count(), 1);
}

void tst_ZYLCmdRunner::shownAfterDelay() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    ZYLCmdDialogHandler *handler = controller->GetDialogHandler();
    QSignalSpy shown(handler, &ZYLCmdDialogHandler::PanelShown);
    script().showDelay = 30;
    QVERIFY(controller->Trigger("ZYLCmdTestDialogCmd.Dialog"));
    QCOMPARE(shown.count(), 0);
    QTRY_COMPARE(shown.count(), 1);
    QVERIFY(handler->GetWidget()->isVisible());

    // A command that ends before its delay is never shown.
    QVERIFY(controller->Reject());
    QVERIFY(controller->Trigger("ZYLCmdTestDialogCmd.Dialog"));
    QVERIFY(controller->Reject());
    QTest::qWait(80);
    QCOMPARE(shown.count(), 1);
}

void tst_ZYLCmdRunner::propertiesCopied() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    QVariant modeAtInitialize;
    QObject context;
    connect(controller, &ZYLCmdController::CommandStarted, &context,
            [&](ZYLCmdCommand *command) { modeAtInitialize = command->property("mode"); });
    QVERIFY(controller->Trigger("ZYLCmdTestPlainCmd.Plain"));
    QCOMPARE(modeAtInitialize.typeId(), QMetaType::QString);
    QCOMPARE(modeAtInitialize.toString(), QStringLiteral("ViewSurface"));

    QVERIFY(controller->Trigger("ZYLCmdTestDialogCmd.Dialog"));
    QCOMPARE(controller->GetCurrentCommand()->property("mode").toString(), QStringLiteral("edit"));
    QVERIFY(controller->Trigger("ZYLCmdTestHiddenCmd.Hidden"));
    QVERIFY(!controller->GetCurrentCommand()->property("mode").isValid());
}

void tst_ZYLCmdRunner::runsWithoutEnvironment() {
    m_environment.reset();
    script().feature = nullptr;
    ZYLCmdController *controller = ZYLCmdController::GetController();
    QSignalSpy finished(controller, &ZYLCmdController::CommandFinished);
    QVERIFY(controller->Trigger("ZYLCmdTestDialogCmd.Dialog"));
    QVERIFY(controller->GetCurrentCommand());
    QVERIFY(controller->Accept());
    QCOMPARE(finished.count(), 1);
    QVERIFY(finished.at(0).at(1).toBool());
}

QTEST_MAIN(tst_ZYLCmdRunner)
#include "tst_ZYLCmdRunner.moc"
