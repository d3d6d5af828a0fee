// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The command panel: cancelling a command with and without edits.
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
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

// A dialog command whose panel has a check box that enables OK, as an editing panel does
// once its input is valid.
class ShapeEditCmd : public ZYLCmdDialogCommand {
    Q_OBJECT
    Q_CLASSINFO("label", "Shape edit")
public:
    Q_INVOKABLE explicit ShapeEditCmd(QObject *parent) : ZYLCmdDialogCommand(parent, CancelWhenInterrupted, OwnTransaction) {}
    QWidget *CreateContentWidget(QWidget *parent) override {
        auto *valid = new QCheckBox(QStringLiteral("Valid"), parent);
        valid->setObjectName(QStringLiteral("validBox"));
        ZYLCmdDialogHandler *handler = ZYLCmdController::GetController()->GetDialogHandler();
        handler->SetStandardButtonEnabled(this, QDialogButtonBox::Ok, false);
        connect(valid, &QCheckBox::toggled, this,
                [this, handler](bool on) { handler->SetStandardButtonEnabled(this, QDialogButtonBox::Ok, on); });
        return valid;
    }
};

} // namespace

class tst_ZYLStudioCommandPanel : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void cancel_data();
    void cancel();

private:
    void StartShapeEdit() { QVERIFY(ZYLCmdController::GetController()->Trigger("ShapeEditCmd.Edit")); }
    // Recorded in the command's open transaction, as the command's own edit would be.
    void AddEdit() { m_container->AddFeature(new ZYLFeatObject(QStringLiteral("Ply"))); }

    std::unique_ptr<ZYLCmdCommandPublisher<ShapeEditCmd>> m_shapeClass;
    std::unique_ptr<ZYLCmdActionPublisher> m_shapeAction;
    std::unique_ptr<ZYLFeatContainer> m_container;
    std::unique_ptr<ZYLFeatEnvironment> m_environment;
    std::unique_ptr<QMainWindow> m_window;
    ZYLStudioCommandPanel *m_panel = nullptr;
    // Answers the message box that becomes the active modal widget (see cancel()).
    QTimer m_answer;
};

void tst_ZYLStudioCommandPanel::initTestCase() {
    m_shapeClass = std::make_unique<ZYLCmdCommandPublisher<ShapeEditCmd>>();
    const QHash<QString, QVariant> none;
    m_shapeAction = std::make_unique<ZYLCmdActionPublisher>("Edit", "ShapeEditCmd", QString(), QStringLiteral("Shape"),
                                                            QString(), nullptr, ZYLCmdAction::AnySelection, none);
    m_answer.setInterval(10);
}

void tst_ZYLStudioCommandPanel::init() {
    m_container = std::make_unique<ZYLFeatContainer>();
    m_environment = std::make_unique<ZYLFeatEnvironment>(m_container.get());
    ZYLFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(m_environment.get());
    m_window = std::make_unique<QMainWindow>();
    m_panel = new ZYLStudioCommandPanel(m_window.get());
    m_window->addDockWidget(Qt::RightDockWidgetArea, m_panel);
    m_window->show();
}

void tst_ZYLStudioCommandPanel::cleanup() {
    m_answer.stop();
    m_answer.disconnect();
    ZYLCmdController::GetController()->Reject();
    m_window.reset();
    m_environment.reset();
    m_container.reset();
}

void tst_ZYLStudioCommandPanel::cancel_data() {
    QTest::addColumn<bool>("byClosing");
    QTest::addColumn<bool>("edit");
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("cancelled");
    QTest::newRow("edits discarded") << false << true << int(QMessageBox::Yes) << true;
    QTest::newRow("dock closed, no edits") << true << false << int(QMessageBox::No) << true;
    QTest::newRow("dock closed, edits kept") << true << true << int(QMessageBox::No) << false;
}

void tst_ZYLStudioCommandPanel::cancel() {
    QFETCH(bool, byClosing);
    QFETCH(bool, edit);
    QFETCH(int, answer);
    QFETCH(bool, cancelled);
    StartShapeEdit();
    if (edit)
        AddEdit();
    QCOMPARE(ZYLStudioCommandPanel::HasEdits(ZYLCmdController::GetController()->GetCurrentCommand()), edit);

    QString question;
    connect(&m_answer, &QTimer::timeout, this, [this, &question, answer] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            m_answer.stop();
            question = box->text();
            box->button(QMessageBox::StandardButton(answer))->click();
        }
    });
    m_answer.start();
    if (byClosing)
        m_panel->close();
    else
        QCOMPARE(m_panel->CancelRunningCommand(m_window.get()), cancelled);
    QCOMPARE(question, edit ? QStringLiteral("Discard the edits of Shape edit?") : QString());
    QCOMPARE(m_panel->IsCommandRunning(), !cancelled);
    QCOMPARE(m_panel->isVisible(), !cancelled);
    // Cancelling rolls the edit back; keeping leaves it in the open transaction.
    QCOMPARE(m_container->GetFeatures().size(), edit && !cancelled ? 1 : 0);
}

QTEST_MAIN(tst_ZYLStudioCommandPanel)
#include "tst_ZYLStudioCommandPanel.moc"
