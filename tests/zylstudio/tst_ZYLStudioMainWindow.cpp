// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The studio's main window on a real session with the module loaded, drawn with OpenGL under
// Xvfb: a mouse click that selects a course, the mouse point in the length unit, undo and redo
// with the title's marker, recent files, and questions before losing edits.
#include "ZYLStudioHelpBrowser.h"
#include "ZYLStudioMainWindow.h"
#include "ZYLStudioRecentFiles.h"

#include "ZYLEditTPGraphicsMgr.h"
#include "ZYLStudioSession.h"
#include "ZYLStudioViewer.h"

#include "ZYLTPCourse.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPProgram.h"
#include "ZYLTPProgramFile.h"
#include "ZYLTPRollLayupProcedure.h"

#include "ZYLCmdAction.h"
#include "ZYLCmdController.h"
#include "ZYLCmdDialogHandler.h"
#include "ZYLFeatContainer.h"
#include "ZYLSysUnits.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisVirtualObject.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

namespace {

// Answers the next message box that becomes modal within `timeoutMs` by pressing `button`,
// and keeps its text, without blocking the code under test that opened it.
class MessageBoxAnswerer : public QObject {
public:
    explicit MessageBoxAnswerer(QMessageBox::StandardButton button) : m_button(button) {
        auto *timer = new QTimer(this);
        timer->setInterval(20);
        connect(timer, &QTimer::timeout, this, [this, timer] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box)
                return;
            timer->stop();
            m_text = box->text();
            m_title = box->windowTitle();
            ++m_count;
            if (QAbstractButton *button = box->button(m_button))
                button->click();
            else
                box->reject();
        });
        timer->start();
    }
    int Count() const { return m_count; }
    const QString &Text() const { return m_text; }
    const QString &Title() const { return m_title; }

private:
    QMessageBox::StandardButton m_button;
    int m_count = 0;
    QString m_text;
    QString m_title;
};

// Pixels of two pictures of equal size that differ.
int DifferentPixels(const QImage &a, const QImage &b) {
    if (a.size() != b.size())
        return -1;
    const QImage x = a.convertToFormat(QImage::Format_RGB32);
    const QImage y = b.convertToFormat(QImage::Format_RGB32);
    int count = 0;
    for (int row = 0; row < x.height(); ++row) {
        const auto *p = reinterpret_cast<const QRgb *>(x.constScanLine(row));
        const auto *q = reinterpret_cast<const QRgb *>(y.constScanLine(row));
        for (int column = 0; column < x.width(); ++column)
            count += p[column] != q[column];
    }
    return count;
}

} // namespace

class tst_ZYLStudioMainWindow : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void clickSelectsTheCourseUnderTheMouse();
    void mousePointFollowsTheLengthUnit();
    void undoAndRedoUpdateViewSummaryAndTitle();
    void saveAsNamesTheWindowAndTheRecentFiles();
    void goneRecentFileIsRemovedWithAMessage();
    void unsavedEditsAreAskedAbout_data();
    void unsavedEditsAreAskedAbout();
    void helpOpensTheGuideAtTheCommand_data();
    void helpOpensTheGuideAtTheCommand();

private:
    ZYLEditTPGraphicsMgr *Manager() const;
    ZYLTPRollLayupProcedure *Procedure() const;
    QAction *Action(const char *name) const;
    QAction *ViewAction(const QString &mode) const;
    QImage Render() const;
    // Removes a course in a transaction of its own and redraws, as an editing command does.
    void RemoveCourse(int index);

    QTemporaryDir m_dir;
    std::unique_ptr<ZYLStudioSession> m_session;
    std::unique_ptr<ZYLStudioMainWindow> m_window;
};

void tst_ZYLStudioMainWindow::initTestCase() {
    QVERIFY(m_dir.isValid());
    m_session = std::make_unique<ZYLStudioSession>();
    QVERIFY2(m_session->Start(), qPrintable(m_session->GetErrorString()));
    m_window = std::make_unique<ZYLStudioMainWindow>(m_session.get());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QVERIFY2(m_window->GetOpenGLError().isEmpty(), qPrintable(m_window->GetOpenGLError()));
    QVERIFY(m_window->OpenDemo());
}

void tst_ZYLStudioMainWindow::init() {
    // Each test starts on the unmodified demo ply with the default view modes.
    if (!m_session->GetProgram() || !m_session->GetProgramFileName().isEmpty() || m_session->IsModified()) {
        MessageBoxAnswerer discard(QMessageBox::Discard);
        QVERIFY(m_window->OpenDemo());
    }
    for (const char *mode : {"ViewCourse", "ViewLayingPointsWithToolAxis", "ViewCourseLinksWithPointsOnly",
                             "ViewLinkPointsOnly"}) {
        QAction *action = ViewAction(QString::fromLatin1(mode));
        if (action && !action->isChecked())
            action->trigger();
    }
    m_window->GetViewer()->SetStandardView(ZYLStudioViewer::StandardView::Top);
    QTRY_VERIFY(m_session->GetEditEnvironment());
}

void tst_ZYLStudioMainWindow::cleanupTestCase() {
    m_window.reset();
    m_session.reset();
}

ZYLEditTPGraphicsMgr *tst_ZYLStudioMainWindow::Manager() const {
    return qobject_cast<ZYLEditTPGraphicsMgr *>(m_session->GetGraphicsManager());
}

ZYLTPRollLayupProcedure *tst_ZYLStudioMainWindow::Procedure() const {
    return qobject_cast<ZYLTPRollLayupProcedure *>(m_session->GetProgram()->GetProcedure(0));
}

QAction *tst_ZYLStudioMainWindow::Action(const char *name) const {
    return m_window->findChild<QAction *>(QString::fromLatin1(name));
}

QAction *tst_ZYLStudioMainWindow::ViewAction(const QString &mode) const {
    return ZYLCmdController::GetController()->GetAction(QByteArrayLiteral("ZYLToolPathViewCmd.") + mode.toLatin1());
}

QImage tst_ZYLStudioMainWindow::Render() const {
    return m_window->GetViewer()->RenderToImage(QSize(480, 320));
}

void tst_ZYLStudioMainWindow::RemoveCourse(int index) {
    ZYLFeatContainer *container = m_session->GetContainer();
    container->OpenTransaction(QStringLiteral("Remove course"));
    Procedure()->RemoveCourse(Procedure()->GetCourseByIndex(index));
    container->CommitTransaction();
    Manager()->UpdateAllGraphics(Manager()->GetCurrentOptions());
}

void tst_ZYLStudioMainWindow::clickSelectsTheCourseUnderTheMouse() {
    ZYLStudioViewer *viewer = m_window->GetViewer();
    ZYLEditTPGraphicsMgr *manager = Manager();
    ZYLVisEnvironment *scene = m_session->GetEditEnvironment();
    // The plies cross, so most places show several courses: only the target stays in view.
    ZYLTPRollLayupProcedure *procedure = Procedure();
    const ZYLTPCourse *target = procedure->GetCourseByIndex(procedure->GetNumCourses() / 2);
    ZYLVisVirtualObject *targetNode = manager->GetCourseVirtualNode(target);
    QVERIFY(targetNode);
    const QList<ZYLVisVirtualObject *> nodes = manager->GetToolPathVirtualNodes(ZYLEditTPGraphicsMgr::CourseNodes);
    QList<ZYLVisVirtualObject *> others = nodes;
    others.removeAll(targetNode);
    manager->SetVirtualNodesVisibility(false, others);
    manager->SetVirtualNodesSelectable(true, nodes);
    scene->SetVisualizationSelection({});

    const int middle = target->GetNumPoints() / 2;
    const QPointF onCourse = viewer->Project(target->GetPoint(middle)->GetTipPoint());
    const QPointF along = viewer->Project(target->GetPoint(middle + 10)->GetTipPoint()) - onCourse;
    QVERIFY(QLineF(QPointF(), along).length() > 1.0);
    // Well beside the course's band of tows (a few dozen millimetres wide).
    const QPointF beside = onCourse + QLineF(QPointF(), along).normalVector().unitVector().p2() * 60.0;
    QVERIFY(viewer->rect().contains(onCourse.toPoint()) && viewer->rect().contains(beside.toPoint()));

    QTest::mouseClick(viewer, Qt::LeftButton, Qt::NoModifier, beside.toPoint());
    const QSet<ZYLVisObject *> missed = scene->GetVisualizationSelection();
    QTest::mouseClick(viewer, Qt::LeftButton, Qt::NoModifier, onCourse.toPoint());
    const QSet<ZYLVisObject *> hit = scene->GetVisualizationSelection();
    manager->SetVirtualNodesSelectable(false, nodes);
    manager->SetVirtualNodesVisibility(true, others);
    scene->SetVisualizationSelection({});

    QVERIFY(missed.isEmpty());
    QCOMPARE(hit, (QSet<ZYLVisObject *>{targetNode}));
}

void tst_ZYLStudioMainWindow::mousePointFollowsTheLengthUnit() {
    ZYLStudioViewer *viewer = m_window->GetViewer();
    const QPoint centre = viewer->rect().center();
    QTest::mouseMove(viewer, centre);
    QTest::mouseMove(viewer, centre + QPoint(3, 2));
    QLabel *label = m_window->findChild<QLabel *>(QStringLiteral("pointLabel"));
    QTRY_VERIFY(!m_window->GetMousePointText().isEmpty());
    QCOMPARE(label->text(), m_window->GetMousePointText());
    QVERIFY2(label->text().contains(QStringLiteral(" mm")), qPrintable(label->text()));

    ZYLSysUnits *units = ZYLSysUnits::GetInstance();
    QVERIFY(units->SetCurrentUnit(ZYLSysValue::Length, ZYLSysValue::Inch));
    const QString inches = label->text();
    units->RevertToDefaults();
    QVERIFY2(inches.contains(QStringLiteral(" in")) && !inches.contains(QStringLiteral(" mm")), qPrintable(inches));
}

void tst_ZYLStudioMainWindow::undoAndRedoUpdateViewSummaryAndTitle() {
    ZYLTPRollLayupProcedure *procedure = Procedure();
    const int courses = procedure->GetNumCourses();
    const QString summary = m_window->GetSummaryText();
    const int nodes = int(Manager()->GetToolPathVirtualNodes(ZYLEditTPGraphicsMgr::CourseNodes).size());
    QAction *undo = Action("actionUndo");
    QAction *redo = Action("actionRedo");
    QVERIFY(!undo->isEnabled());
    const QImage original = Render();

    RemoveCourse(courses / 2);
    QVERIFY(m_window->isWindowModified());
    QVERIFY(undo->isEnabled());
    QCOMPARE(undo->text(), QStringLiteral("&Undo Remove course"));
    QVERIFY(m_window->GetSummaryText() != summary);
    QVERIFY(m_window->GetSummaryText().contains(QStringLiteral("Courses: %1 ").arg(courses - 1)));
    const QImage removed = Render();
    QVERIFY(DifferentPixels(original, removed) > 0);

    undo->trigger();
    QCOMPARE(procedure->GetNumCourses(), courses);
    QVERIFY(!m_window->isWindowModified());
    QCOMPARE(m_window->GetSummaryText(), summary);
    QCOMPARE(int(Manager()->GetToolPathVirtualNodes(ZYLEditTPGraphicsMgr::CourseNodes).size()), nodes);
    QCOMPARE(DifferentPixels(original, Render()), 0);
    QVERIFY(redo->isEnabled());
    QCOMPARE(redo->text(), QStringLiteral("&Redo Remove course"));
    QVERIFY(!undo->isEnabled());

    redo->trigger();
    QCOMPARE(procedure->GetNumCourses(), courses - 1);
    QVERIFY(m_window->isWindowModified());
    QCOMPARE(DifferentPixels(removed, Render()), 0);
}

void tst_ZYLStudioMainWindow::saveAsNamesTheWindowAndTheRecentFiles() {
    RemoveCourse(0);
    const QString file = m_dir.filePath(QStringLiteral("saved[*].zyltp.json"));
    QVERIFY(m_window->SaveProgramAs(file));
    QVERIFY(QFile::exists(file));
    QVERIFY(!m_window->isWindowModified());
    // A literal "[*]" in the file name is not taken for the modified marker.
    QCOMPARE(m_window->windowTitle(), QStringLiteral("saved[*][*].zyltp.json[*] — zylstudio"));
    QCOMPARE(m_window->GetRecentFiles()->GetFiles().value(0), QFileInfo(file).absoluteFilePath());

    // Opened again from the file, the program has the course less.
    const int courses = Procedure()->GetNumCourses();
    QVERIFY(m_window->OpenProgramFile(file));
    QCOMPARE(Procedure()->GetNumCourses(), courses);
    QCOMPARE(m_session->GetProgramFileName(), QFileInfo(file).absoluteFilePath());
}

void tst_ZYLStudioMainWindow::goneRecentFileIsRemovedWithAMessage() {
    const QString file = m_dir.filePath(QStringLiteral("gone.zyltp.json"));
    QVERIFY(ZYLTPProgramFile::Save(*m_session->GetProgram(), file).isEmpty());
    ZYLStudioRecentFiles *recent = m_window->GetRecentFiles();
    recent->Add(file);
    QVERIFY(QFile::remove(file));
    QMenu *menu = m_window->findChild<QMenu *>(QStringLiteral("menuOpenRecent"));
    QVERIFY(menu->isEnabled());
    emit menu->aboutToShow();
    QAction *entry = nullptr;
    for (QAction *action : menu->actions())
        if (action->data().toString() == QFileInfo(file).absoluteFilePath())
            entry = action;
    QVERIFY(entry);
    const ZYLTPProgram *program = m_session->GetProgram();

    MessageBoxAnswerer answerer(QMessageBox::Ok);
    entry->trigger();
    QCOMPARE(answerer.Count(), 1);
    QVERIFY2(answerer.Text().contains(QStringLiteral("gone.zyltp.json")), qPrintable(answerer.Text()));
    QVERIFY(!recent->GetFiles().contains(QFileInfo(file).absoluteFilePath()));
    QCOMPARE(m_session->GetProgram(), program);
}

void tst_ZYLStudioMainWindow::unsavedEditsAreAskedAbout_data() {
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("closed");
    QTest::newRow("discard closes it") << int(QMessageBox::Discard) << true;
    QTest::newRow("cancel keeps it") << int(QMessageBox::Cancel) << false;
}

void tst_ZYLStudioMainWindow::unsavedEditsAreAskedAbout() {
    QFETCH(int, answer);
    QFETCH(bool, closed);
    RemoveCourse(1);
    const ZYLTPProgram *program = m_session->GetProgram();
    MessageBoxAnswerer answerer(static_cast<QMessageBox::StandardButton>(answer));

    QCOMPARE(m_window->CloseProgram(), closed);
    QCOMPARE(answerer.Count(), 1);
    QCOMPARE(answerer.Title(), QStringLiteral("Unsaved Changes"));
    if (closed) {
        QVERIFY(!m_session->GetProgram());
        QVERIFY(!m_window->GetViewer()->GetEnvironment());
        QCOMPARE(m_window->windowTitle(), QStringLiteral("zylstudio"));
        QCOMPARE(m_window->GetSummaryText(), QStringLiteral("No program"));
        QVERIFY(!Action("actionSave")->isEnabled());
    } else {
        QCOMPARE(m_session->GetProgram(), program);
        QVERIFY(m_window->isWindowModified());
    }
}

QTEST_MAIN(tst_ZYLStudioMainWindow)
#include "tst_ZYLStudioMainWindow.moc"

void tst_ZYLStudioMainWindow::helpOpensTheGuideAtTheCommand_data() {
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QString>("section");
    QTest::newRow("user guide") << QByteArray() << QString();
    QTest::newRow("contextual view") << QByteArrayLiteral("ZYLTPContextualViewCmd.View") << QStringLiteral("Contextual view");
    QTest::newRow("detailed info") << QByteArrayLiteral("ZYLTPDetailedInfoCmd.View") << QStringLiteral("Detailed info");
}

void tst_ZYLStudioMainWindow::helpOpensTheGuideAtTheCommand() {
    QFETCH(QByteArray, command);
    QFETCH(QString, section);
    if (command.isEmpty()) {
        Action("actionUserGuide")->trigger();
    } else {
        ZYLCmdController *controller = ZYLCmdController::GetController();
        QVERIFY(controller->Trigger(command));
        auto *buttons = controller->GetDialogHandler()->GetWidget()->findChild<QDialogButtonBox *>();
        QVERIFY(buttons && buttons->button(QDialogButtonBox::Help));
        buttons->button(QDialogButtonBox::Help)->click();
        // Help leaves the command running.
        QVERIFY(controller->GetCurrentCommand());
        buttons->button(QDialogButtonBox::Close)->click();
        QTRY_VERIFY(!controller->GetCurrentCommand());
    }
    auto *help = m_window->findChild<ZYLStudioHelpBrowser *>();
    QVERIFY(help && help->isVisible());
    QCOMPARE(help->GetShownSection(), section);
    help->close();
}
