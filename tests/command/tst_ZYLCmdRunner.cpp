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
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

const QString kOriginalName = QStringLiteral("original");

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

    void helpButtonDoesNothing();

    void exceptionRollsBack_data();
    void exceptionRollsBack();
    void constructorException();
    void cleanupFalseSkipsPostApply();

    void interruptionCommitsWhenAsked();

    void neverShownUntilShowDialog();
    void shownAfterDelay();

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

void tst_ZYLCmdRunner::helpButtonDoesNothing() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    QVERIFY(controller->Trigger("ZYLCmdTestKeepCmd.Keep"));
    script().log.clear();
    PressButton(QDialogButtonBox::Help);
    QCOMPARE(script().log, QStringList{"KeepCmd.Click(Help)"});
    QVERIFY(controller->GetCurrentCommand());
    QVERIFY(m_environment->GetContainer()->HasOpenTransaction());
}

void tst_ZYLCmdRunner::exceptionRollsBack_data() {
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QString>("throwIn");
    QTest::addColumn<QString>("editIn");
    QTest::addColumn<bool>("focused");

    const QByteArray dialog("ZYLCmdTestDialogCmd.Dialog");
    QTest::newRow("Commit") << dialog << "Commit" << "GainFocus" << true;
    QTest::newRow("CreateContentWidget") << dialog << "CreateContentWidget" << "Initialize" << false;
    QTest::newRow("Initialize") << dialog << "Initialize" << "Initialize" << false;
    QTest::newRow("Load") << dialog << "Load" << "Initialize" << false;
    QTest::newRow("LoseFocus") << dialog << "LoseFocus" << "GainFocus" << true;
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

QTEST_MAIN(tst_ZYLCmdRunner)
#include "tst_ZYLCmdRunner.moc"
