// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The command panel: the dialog frame of a running command in the dock, OK as the command
// sets it, showing and hiding with the run, and cancelling with and without edits.
#include "ZYLStudioCommandPanel.h"

#include "ZYLCmdActionPublisher.h"
#include "ZYLCmdCommandPublisher.h"
#include "ZYLCmdController.h"
#include "ZYLCmdDialogCommand.h"
#include "ZYLCmdDialogHandler.h"
#include "ZYLFeatContainer.h"
#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLFeatObject.h"

#include <QApplication>
#include <QCheckBox>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

// A dialog command whose panel has a check box that enables OK, as editing panels do once
// their input is valid.
class ShapeEditCmd : public ZYLCmdDialogCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "Shape edit")
public:
    Q_INVOKABLE explicit ShapeEditCmd(QObject *parent)
        : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {}

    QWidget *CreateContentWidget(QWidget *parent) override {
        auto *panel = new QWidget(parent);
        panel->setObjectName(QStringLiteral("shapePanel"));
        auto *valid = new QCheckBox(QStringLiteral("Valid"), panel);
        valid->setObjectName(QStringLiteral("validBox"));
        ZYLCmdDialogHandler *handler = ZYLCmdController::GetController()->GetDialogHandler();
        handler->SetStandardButtonEnabled(this, QDialogButtonBox::Ok, false);
        connect(valid, &QCheckBox::toggled, this, [this, handler](bool on) {
            handler->SetStandardButtonEnabled(this, QDialogButtonBox::Ok, on);
        });
        return panel;
    }
};

// A command without a panel, accepted as soon as it started.
class QuickCmd : public ZYLCmdCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "Quick")
public:
    Q_INVOKABLE explicit QuickCmd(QObject *parent) : ZYLCmdCommand(parent, CancelWhenInterrupted, OwnTransaction) {}
};

const QByteArray ShapeKey = QByteArrayLiteral("ShapeEditCmd.Edit");
const QByteArray QuickKey = QByteArrayLiteral("QuickCmd.Run");

// Answers the next message box that becomes the active modal widget with `button` and
// keeps its text; `answered` tells whether one came.
class MessageBoxAnswer : public QObject {
public:
    explicit MessageBoxAnswer(QMessageBox::StandardButton button) : m_button(button) {
        m_timer.setInterval(10);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box)
                return;
            m_timer.stop();
            answered = true;
            text = box->text();
            box->button(m_button)->click();
        });
        m_timer.start();
    }
    bool answered = false;
    QString text;

private:
    QMessageBox::StandardButton m_button;
    QTimer m_timer;
};

} // namespace

class tst_ZYLStudioCommandPanel : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void frameOfTheRunningCommandIsInTheDock();
    void okFollowsTheCommand();
    void commandWithoutPanelLeavesTheDockHidden();
    void cancelWithoutEditsAsksNothing();
    void cancelWithEdits_data();
    void cancelWithEdits();
    void closingTheDockCancels_data();
    void closingTheDockCancels();
    void destroyedDockGivesTheFrameBack();

private:
    void StartShapeEdit();
    void AddEdit();
    QPushButton *OkButton() const;

    std::unique_ptr<ZYLCmdCommandPublisher<ShapeEditCmd>> m_shapeClass;
    std::unique_ptr<ZYLCmdCommandPublisher<QuickCmd>> m_quickClass;
    std::unique_ptr<ZYLCmdActionPublisher> m_shapeAction;
    std::unique_ptr<ZYLCmdActionPublisher> m_quickAction;
    std::unique_ptr<ZYLFeatContainer> m_container;
    std::unique_ptr<ZYLFeatEnvironment> m_environment;
    std::unique_ptr<QMainWindow> m_window;
    ZYLStudioCommandPanel *m_panel = nullptr;
};

void tst_ZYLStudioCommandPanel::initTestCase() {
    m_shapeClass = std::make_unique<ZYLCmdCommandPublisher<ShapeEditCmd>>();
    m_quickClass = std::make_unique<ZYLCmdCommandPublisher<QuickCmd>>();
    m_shapeAction = std::make_unique<ZYLCmdActionPublisher>("Edit", "ShapeEditCmd", QString(), QStringLiteral("Shape"),
                                                            QString(), nullptr, ZYLCmdAction::AnySelection,
                                                            QHash<QString, QVariant>());
    m_quickAction = std::make_unique<ZYLCmdActionPublisher>("Run", "QuickCmd", QString(), QStringLiteral("Quick"),
                                                            QString(), nullptr, ZYLCmdAction::AnySelection,
                                                            QHash<QString, QVariant>());
}

void tst_ZYLStudioCommandPanel::init() {
    m_container = std::make_unique<ZYLFeatContainer>();
    m_environment = std::make_unique<ZYLFeatEnvironment>(m_container.get());
    ZYLFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(m_environment.get());
    m_window = std::make_unique<QMainWindow>();
    m_panel = new ZYLStudioCommandPanel(m_window.get());
    m_window->addDockWidget(Qt::RightDockWidgetArea, m_panel);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void tst_ZYLStudioCommandPanel::cleanup() {
    ZYLCmdController::GetController()->Reject();
    m_window.reset();
    m_environment.reset();
    m_container.reset();
}

void tst_ZYLStudioCommandPanel::StartShapeEdit() {
    QVERIFY(ZYLCmdController::GetController()->Trigger(ShapeKey));
    QVERIFY(qobject_cast<ShapeEditCmd *>(ZYLCmdController::GetController()->GetCurrentCommand()));
}

void tst_ZYLStudioCommandPanel::AddEdit() {
    // Recorded in the command's open transaction, as a command's own edit would be.
    m_container->AddFeature(new ZYLFeatObject(QStringLiteral("Ply")));
    QCOMPARE(m_container->GetFeatures().size(), 1);
}

QPushButton *tst_ZYLStudioCommandPanel::OkButton() const {
    const auto boxes = m_panel->findChildren<QDialogButtonBox *>();
    for (QDialogButtonBox *box : boxes) {
        if (QPushButton *ok = box->button(QDialogButtonBox::Ok))
            return ok;
    }
    return nullptr;
}

void tst_ZYLStudioCommandPanel::frameOfTheRunningCommandIsInTheDock() {
    QSignalSpy running(m_panel, &ZYLStudioCommandPanel::CommandRunningChanged);
    QVERIFY(!m_panel->isVisible());
    QVERIFY(!m_panel->IsCommandRunning());

    StartShapeEdit();
    QVERIFY(m_panel->isVisible());
    QVERIFY(m_panel->IsCommandRunning());
    QCOMPARE(m_panel->windowTitle(), QStringLiteral("Shape edit"));
    QWidget *panelWidget = m_panel->findChild<QWidget *>(QStringLiteral("shapePanel"));
    QVERIFY(panelWidget);
    QVERIFY(panelWidget->isVisible());
    // Message boxes of commands are parented to the handler's widget, which is in the dock.
    QVERIFY(m_panel->isAncestorOf(ZYLCmdController::GetController()->GetDialogHandler()->GetWidget()));

    QVERIFY(ZYLCmdController::GetController()->Reject());
    QVERIFY(!m_panel->isVisible());
    QVERIFY(!m_panel->IsCommandRunning());
    QCOMPARE(running.size(), 2);
    QCOMPARE(running.at(0).at(0).toBool(), true);
    QCOMPARE(running.at(1).at(0).toBool(), false);
}

void tst_ZYLStudioCommandPanel::okFollowsTheCommand() {
    StartShapeEdit();
    QPushButton *ok = OkButton();
    QVERIFY(ok);
    QVERIFY(m_panel->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel));
    QVERIFY(!ok->isEnabled());
    auto *valid = m_panel->findChild<QCheckBox *>(QStringLiteral("validBox"));
    QVERIFY(valid);
    valid->setChecked(true);
    QVERIFY(ok->isEnabled());
    valid->setChecked(false);
    QVERIFY(!ok->isEnabled());
    valid->setChecked(true);

    AddEdit();
    ok->click();
    QVERIFY(!m_panel->IsCommandRunning());
    QVERIFY(!m_panel->isVisible());
    // Accepted: the edit is an undo step named after the command.
    QCOMPARE(m_container->GetFeatures().size(), 1);
    QCOMPARE(m_container->GetUndoName(), QStringLiteral("Shape edit"));
}

void tst_ZYLStudioCommandPanel::commandWithoutPanelLeavesTheDockHidden() {
    QSignalSpy running(m_panel, &ZYLStudioCommandPanel::CommandRunningChanged);
    QSignalSpy visibility(m_panel, &QDockWidget::visibilityChanged);
    QVERIFY(ZYLCmdController::GetController()->Trigger(QuickKey));
    QCOMPARE(running.size(), 2);
    QVERIFY(!m_panel->IsCommandRunning());
    QVERIFY(!m_panel->isVisible());
    QCOMPARE(visibility.size(), 0);
}

void tst_ZYLStudioCommandPanel::cancelWithoutEditsAsksNothing() {
    MessageBoxAnswer answer(QMessageBox::No);
    QVERIFY(m_panel->CancelRunningCommand(m_window.get()));

    StartShapeEdit();
    QVERIFY(!ZYLStudioCommandPanel::HasEdits(ZYLCmdController::GetController()->GetCurrentCommand()));
    QVERIFY(m_panel->CancelRunningCommand(m_window.get()));
    QVERIFY(!ZYLCmdController::GetController()->GetCurrentCommand());
    QVERIFY(!m_panel->isVisible());
    QTest::qWait(30);
    QVERIFY(!answer.answered);
}

void tst_ZYLStudioCommandPanel::cancelWithEdits_data() {
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("cancelled");
    QTest::newRow("discard") << int(QMessageBox::Yes) << true;
    QTest::newRow("keep editing") << int(QMessageBox::No) << false;
}

void tst_ZYLStudioCommandPanel::cancelWithEdits() {
    QFETCH(int, button);
    QFETCH(bool, cancelled);
    StartShapeEdit();
    AddEdit();
    QVERIFY(ZYLStudioCommandPanel::HasEdits(ZYLCmdController::GetController()->GetCurrentCommand()));

    MessageBoxAnswer answer{QMessageBox::StandardButton(button)};
    QCOMPARE(m_panel->CancelRunningCommand(m_window.get()), cancelled);
    QVERIFY(answer.answered);
    QCOMPARE(answer.text, QStringLiteral("Discard the edits of Shape edit?"));
    QCOMPARE(m_panel->IsCommandRunning(), !cancelled);
    QCOMPARE(m_panel->isVisible(), !cancelled);
    // Discarding rolls the edit back; keeping leaves it in the open transaction.
    QCOMPARE(m_container->GetFeatures().size(), cancelled ? 0 : 1);
    QCOMPARE(m_container->HasOpenTransaction(), !cancelled);
}

void tst_ZYLStudioCommandPanel::closingTheDockCancels_data() {
    QTest::addColumn<bool>("edit");
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("closed");
    QTest::newRow("no edits") << false << int(QMessageBox::No) << true;
    QTest::newRow("edits discarded") << true << int(QMessageBox::Yes) << true;
    QTest::newRow("edits kept") << true << int(QMessageBox::No) << false;
}

void tst_ZYLStudioCommandPanel::closingTheDockCancels() {
    QFETCH(bool, edit);
    QFETCH(int, button);
    QFETCH(bool, closed);
    StartShapeEdit();
    if (edit)
        AddEdit();
    MessageBoxAnswer answer{QMessageBox::StandardButton(button)};
    m_panel->close();
    QCOMPARE(answer.answered, edit);
    QCOMPARE(m_panel->isVisible(), !closed);
    QCOMPARE(m_panel->IsCommandRunning(), !closed);
    QCOMPARE(m_container->GetFeatures().size(), edit && !closed ? 1 : 0);
}

void tst_ZYLStudioCommandPanel::destroyedDockGivesTheFrameBack() {
    ZYLCmdDialogHandler *handler = ZYLCmdController::GetController()->GetDialogHandler();
    QPointer<QWidget> frame = handler->GetWidget();
    QVERIFY(m_panel->isAncestorOf(frame));
    delete m_panel;
    m_panel = nullptr;
    QVERIFY(frame);
    QCOMPARE(handler->GetWidget(), frame.data());
    QVERIFY(!frame->parentWidget());

    // A new dock takes it and the next command runs in it.
    m_panel = new ZYLStudioCommandPanel(m_window.get());
    m_window->addDockWidget(Qt::LeftDockWidgetArea, m_panel);
    StartShapeEdit();
    QVERIFY(m_panel->isVisible());
    QVERIFY(m_panel->findChild<QWidget *>(QStringLiteral("shapePanel")));
}

QTEST_MAIN(tst_ZYLStudioCommandPanel)
#include "tst_ZYLStudioCommandPanel.moc"
