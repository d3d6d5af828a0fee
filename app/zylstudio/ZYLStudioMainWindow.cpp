// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioMainWindow.h"

#include "ZYLStudioProcessChecks.h"
#include "ZYLStudioProcessDock.h"
#include "ZYLStudioProcessRulesDialog.h"
#include "ZYLStudioRecentFiles.h"
#include "ZYLStudioSteeringLegend.h"

#include "ZYLStudioCamera.h"
#include "ZYLStudioCommandPanel.h"
#include "ZYLStudioHelpBrowser.h"
#include "ZYLStudioSession.h"
#include "ZYLStudioToolBars.h"
#include "ZYLStudioUnitsDialog.h"
#include "ZYLStudioViewer.h"
#include "ZYLStudioWheelGuard.h"

#include "ZYLTPCourse.h"
#include "ZYLTPCoursePoints.h"
#include "ZYLTPCourseVisRep.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"

#include "ZYLCmdCommand.h"
#include "ZYLCmdController.h"
#include "ZYLCmdDialogHandler.h"
#include "ZYLFeatContainer.h"
#include "ZYLMathPoint.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisVirtualObject.h"
#include "ZYLSysException.h"
#include "ZYLSysUnits.h"
#include "ZYLSysValue.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QOpenGLContext>
#include <QPointer>
#include <QProgressDialog>
#include <QStatusBar>
#include <QTimer>

#include <cstdio>
#include <exception>
#include <optional>

#ifndef ZYL_STUDIO_VERSION
#define ZYL_STUDIO_VERSION "0.0.0"
#endif

namespace {

const QString ProgramSuffix = QStringLiteral(".zyltp.json");

// Steps of the progress dialog: fine enough for a smooth bar, coarse enough that a million
// points do not repaint it needlessly.
constexpr int ProgressSteps = 1000;
// Loads shorter than this show no progress dialog at all.
constexpr int ProgressDelayMs = 400;

struct StandardViewEntry {
    ZYLStudioViewer::StandardView view;
    const char *objectName;
    const char *text;
};

const StandardViewEntry StandardViews[] = {
    {ZYLStudioViewer::StandardView::Isometric, "actionViewIsometric", QT_TRANSLATE_NOOP("ZYLStudioMainWindow", "&Isometric")},
    {ZYLStudioViewer::StandardView::Top, "actionViewTop", QT_TRANSLATE_NOOP("ZYLStudioMainWindow", "&Top")},
    {ZYLStudioViewer::StandardView::Bottom, "actionViewBottom", QT_TRANSLATE_NOOP("ZYLStudioMainWindow", "&Bottom")},
    {ZYLStudioViewer::StandardView::Front, "actionViewFront", QT_TRANSLATE_NOOP("ZYLStudioMainWindow", "&Front")},
    {ZYLStudioViewer::StandardView::Back, "actionViewBack", QT_TRANSLATE_NOOP("ZYLStudioMainWindow", "B&ack")},
    {ZYLStudioViewer::StandardView::Left, "actionViewLeft", QT_TRANSLATE_NOOP("ZYLStudioMainWindow", "&Left")},
    {ZYLStudioViewer::StandardView::Right, "actionViewRight", QT_TRANSLATE_NOOP("ZYLStudioMainWindow", "&Right")},
};

// Qt reads "[*]" in a title as the modified marker; a file name may contain it literally.
QString EscapeTitle(QString text) {
    return text.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

// Runs a history operation of the container; failures come back as a message.
template <class Operation>
QString Guarded(Operation &&operation) {
    try {
        operation();
        return {};
    } catch (const ZYLSysException &e) {
        return e.GetMessage();
    } catch (const std::exception &e) {
        return QString::fromLocal8Bit(e.what());
    }
}

} // namespace

struct ZYLStudioMainWindow::Data {
    ZYLStudioSession *session = nullptr;
    ZYLStudioViewer *viewer = nullptr;
    ZYLStudioToolBars *toolBars = nullptr;
    ZYLStudioCommandPanel *commandPanel = nullptr;
    ZYLStudioRecentFiles *recentFiles = nullptr;
    bool messageBoxes = true;

    QAction *openAction = nullptr;
    QAction *saveAction = nullptr;
    QAction *saveAsAction = nullptr;
    QAction *closeAction = nullptr;
    QAction *quitAction = nullptr;
    QAction *undoAction = nullptr;
    QAction *redoAction = nullptr;
    QAction *fitAllAction = nullptr;
    QList<QAction *> standardViewActions;
    QAction *perspectiveAction = nullptr;
    QAction *orthographicAction = nullptr;
    QAction *unitsAction = nullptr;
    QAction *userGuideAction = nullptr;
    QAction *aboutAction = nullptr;
    ZYLStudioHelpBrowser *helpBrowser = nullptr;
    QMenu *recentMenu = nullptr;
    QMenu *viewMenu = nullptr;

    ZYLStudioProcessChecks *processChecks = nullptr;
    ZYLStudioProcessDock *processDock = nullptr;
    ZYLStudioSteeringLegend *steeringLegend = nullptr;
    QAction *colorAction = nullptr;
    QAction *processRulesAction = nullptr;

    QLabel *summaryLabel = nullptr;
    QLabel *pointLabel = nullptr;
    std::optional<ZYLMathPoint> mousePoint;
};

ZYLStudioMainWindow::ZYLStudioMainWindow(ZYLStudioSession *session, QWidget *parent)
    : QMainWindow(parent), d(std::make_unique<Data>()) {
    d->session = session;
    d->recentFiles = new ZYLStudioRecentFiles(this);
    setObjectName(QStringLiteral("ZYLStudioMainWindow"));
    setAcceptDrops(true);
    // Scrolling a panel must not turn the field that passes under the mouse.
    qApp->installEventFilter(new ZYLStudioWheelGuard(this));

    d->viewer = new ZYLStudioViewer(this);
    d->viewer->setObjectName(QStringLiteral("viewer"));
    setCentralWidget(d->viewer);

    d->commandPanel = new ZYLStudioCommandPanel(this);
    d->commandPanel->setObjectName(QStringLiteral("commandPanel"));
    addDockWidget(Qt::RightDockWidgetArea, d->commandPanel);
    d->commandPanel->hide();

    CreateActions();
    CreateMenus();
    CreateProcessChecks();
    d->toolBars = new ZYLStudioToolBars(this);
    d->toolBars->AddViewMenuSection(d->viewMenu);

    d->summaryLabel = new QLabel(this);
    d->summaryLabel->setObjectName(QStringLiteral("summaryLabel"));
    d->pointLabel = new QLabel(this);
    d->pointLabel->setObjectName(QStringLiteral("pointLabel"));
    statusBar()->addWidget(d->summaryLabel, 1);
    statusBar()->addPermanentWidget(d->pointLabel);

    setupConnections();
    resize(1280, 800);
    OnProgramChanged();
}

ZYLStudioMainWindow::~ZYLStudioMainWindow() {
    // The scene belongs to the session, which may outlive the view or go first.
    d->viewer->SetEnvironment(nullptr);
}

void ZYLStudioMainWindow::CreateActions() {
    auto make = [this](const char *objectName, const QString &text, const QKeySequence &shortcut = {}) {
        auto *action = new QAction(text, this);
        action->setObjectName(QString::fromLatin1(objectName));
        action->setShortcut(shortcut);
        return action;
    };
    d->openAction = make("actionOpen", tr("&Open…"), QKeySequence::Open);
    d->openAction->setStatusTip(tr("Opens a tool path program"));
    d->saveAction = make("actionSave", tr("&Save"), QKeySequence::Save);
    d->saveAction->setStatusTip(tr("Saves the program to its file"));
    d->saveAsAction = make("actionSaveAs", tr("Save &As…"), QKeySequence::SaveAs);
    d->saveAsAction->setStatusTip(tr("Saves the program to another file"));
    d->closeAction = make("actionClose", tr("&Close"), QKeySequence::Close);
    d->closeAction->setStatusTip(tr("Closes the program"));
    d->quitAction = make("actionQuit", tr("&Quit"), QKeySequence::Quit);
    d->quitAction->setMenuRole(QAction::QuitRole);

    d->undoAction = make("actionUndo", tr("&Undo"), QKeySequence::Undo);
    d->redoAction = make("actionRedo", tr("&Redo"), QKeySequence::Redo);

    d->fitAllAction = make("actionFitAll", tr("&Fit All"), QKeySequence(Qt::Key_F));
    d->fitAllAction->setStatusTip(tr("Shows the whole scene"));
    for (const StandardViewEntry &entry : StandardViews) {
        QAction *action = make(entry.objectName, tr(entry.text));
        const ZYLStudioViewer::StandardView view = entry.view;
        connect(action, &QAction::triggered, this, [this, view] { d->viewer->SetStandardView(view); });
        d->standardViewActions.append(action);
    }
    auto *projection = new QActionGroup(this);
    d->perspectiveAction = make("actionPerspective", tr("&Perspective"));
    d->orthographicAction = make("actionOrthographic", tr("&Orthographic"));
    for (QAction *action : {d->perspectiveAction, d->orthographicAction}) {
        action->setCheckable(true);
        projection->addAction(action);
    }

    d->unitsAction = make("actionUnits", tr("&Units…"));
    d->unitsAction->setStatusTip(tr("Chooses the units values are shown in"));
    d->userGuideAction = make("actionUserGuide", tr("&User Guide"), QKeySequence::HelpContents);
    d->aboutAction = make("actionAbout", tr("&About zylstudio"));
    d->aboutAction->setMenuRole(QAction::AboutRole);
}

void ZYLStudioMainWindow::CreateMenus() {
    QMenu *file = menuBar()->addMenu(tr("&File"));
    file->setObjectName(QStringLiteral("menuFile"));
    file->addAction(d->openAction);
    d->recentMenu = file->addMenu(tr("Open &Recent"));
    d->recentMenu->setObjectName(QStringLiteral("menuOpenRecent"));
    file->addSeparator();
    file->addAction(d->saveAction);
    file->addAction(d->saveAsAction);
    file->addSeparator();
    file->addAction(d->closeAction);
    file->addSeparator();
    file->addAction(d->quitAction);

    QMenu *edit = menuBar()->addMenu(tr("&Edit"));
    edit->setObjectName(QStringLiteral("menuEdit"));
    edit->addAction(d->undoAction);
    edit->addAction(d->redoAction);

    d->viewMenu = menuBar()->addMenu(tr("&View"));
    d->viewMenu->setObjectName(QStringLiteral("menuView"));
    d->viewMenu->addAction(d->fitAllAction);
    QMenu *standard = d->viewMenu->addMenu(tr("&Standard Views"));
    standard->setObjectName(QStringLiteral("menuStandardViews"));
    standard->addActions(d->standardViewActions);
    d->viewMenu->addSeparator();
    d->viewMenu->addAction(d->perspectiveAction);
    d->viewMenu->addAction(d->orthographicAction);
    d->viewMenu->addSeparator();

    QMenu *tools = menuBar()->addMenu(tr("&Tools"));
    tools->setObjectName(QStringLiteral("menuTools"));
    tools->addAction(d->unitsAction);

    QMenu *help = menuBar()->addMenu(tr("&Help"));
    help->setObjectName(QStringLiteral("menuHelp"));
    help->addAction(d->userGuideAction);
    help->addAction(d->aboutAction);
}

void ZYLStudioMainWindow::setupConnections() {
    connect(d->openAction, &QAction::triggered, this, &ZYLStudioMainWindow::OnOpenActionTriggered);
    connect(d->saveAction, &QAction::triggered, this, [this] { SaveProgram(); });
    connect(d->saveAsAction, &QAction::triggered, this, [this] { SaveProgramAs(); });
    connect(d->closeAction, &QAction::triggered, this, [this] { CloseProgram(); });
    connect(d->quitAction, &QAction::triggered, this, &QWidget::close);
    connect(d->undoAction, &QAction::triggered, this, [this] { StepHistory(true); });
    connect(d->redoAction, &QAction::triggered, this, [this] { StepHistory(false); });
    connect(d->fitAllAction, &QAction::triggered, d->viewer, &ZYLStudioViewer::FitAll);
    connect(d->perspectiveAction, &QAction::triggered, this,
            [this] { d->viewer->SetProjection(ZYLStudioViewer::Projection::Perspective); });
    connect(d->orthographicAction, &QAction::triggered, this,
            [this] { d->viewer->SetProjection(ZYLStudioViewer::Projection::Orthographic); });
    connect(d->unitsAction, &QAction::triggered, this, &ZYLStudioMainWindow::OnUnitsActionTriggered);
    connect(d->aboutAction, &QAction::triggered, this, &ZYLStudioMainWindow::OnAboutActionTriggered);
    connect(d->userGuideAction, &QAction::triggered, this,
            [this] { ShowHelp(QString()); });
    connect(ZYLCmdController::GetController()->GetDialogHandler(), &ZYLCmdDialogHandler::HelpRequested, this,
            [this](ZYLCmdCommand *command) { ShowHelp(ZYLStudioHelpBrowser::GetCommandSection(command->metaObject()->className())); });

    connect(d->recentMenu, &QMenu::aboutToShow, this, &ZYLStudioMainWindow::UpdateRecentMenu);
    connect(d->recentFiles, &ZYLStudioRecentFiles::Changed, this, &ZYLStudioMainWindow::UpdateRecentMenu);

    connect(d->session, &ZYLStudioSession::ProgramChanged, this, &ZYLStudioMainWindow::OnProgramChanged);
    // Every commit, undo and redo moves the history; the summary counts may change with it.
    connect(d->session, &ZYLStudioSession::HistoryChanged, this, [this] {
        UpdateActions();
        UpdateSummary();
    });
    connect(d->session, &ZYLStudioSession::ModifiedChanged, this, &ZYLStudioMainWindow::UpdateTitle);
    connect(d->commandPanel, &ZYLStudioCommandPanel::CommandRunningChanged, this,
            &ZYLStudioMainWindow::UpdateActions);

    connect(d->viewer, &ZYLStudioViewer::MousePointChanged, this, [this](const ZYLMathPoint &point) {
        d->mousePoint = point;
        ShowMousePoint();
    });
    connect(ZYLSysUnits::GetInstance(), &ZYLSysUnits::CurrentUnitChanged, this, [this](int magnitude) {
        if (magnitude == ZYLSysValue::Length)
            ShowMousePoint();
    });
}

ZYLStudioViewer *ZYLStudioMainWindow::GetViewer() const {
    return d->viewer;
}

ZYLStudioProcessChecks *ZYLStudioMainWindow::GetProcessChecks() const {
    return d->processChecks;
}

void ZYLStudioMainWindow::CreateProcessChecks() {
    d->processChecks = new ZYLStudioProcessChecks(d->session, this);
    d->processDock = new ZYLStudioProcessDock(d->processChecks, this);
    d->processDock->setObjectName(QStringLiteral("processDock"));
    addDockWidget(Qt::BottomDockWidgetArea, d->processDock);
    d->steeringLegend = new ZYLStudioSteeringLegend(d->viewer);
    d->steeringLegend->setObjectName(QStringLiteral("steeringLegend"));
    d->steeringLegend->move(12, 12);

    d->colorAction = new QAction(tr("Color by &steering radius"), this);
    d->colorAction->setObjectName(QStringLiteral("actionColorBySteeringRadius"));
    d->colorAction->setStatusTip(tr("Colours the course bands by the steering radius of the tows"));
    d->colorAction->setCheckable(true);
    d->colorAction->setChecked(d->processChecks->IsColoringEnabled());
    d->viewMenu->addAction(d->colorAction);
    d->viewMenu->addAction(d->processDock->toggleViewAction());
    d->viewMenu->addSeparator();
    d->processRulesAction = new QAction(tr("&Process Rules…"), this);
    d->processRulesAction->setObjectName(QStringLiteral("actionProcessRules"));
    d->processRulesAction->setStatusTip(tr("Sets the limits the process checks apply to the program"));
    menuBar()->findChild<QMenu *>(QStringLiteral("menuTools"))->addAction(d->processRulesAction);

    auto updateLegend = [this] {
        const auto check = d->processChecks->GetCheck();
        d->steeringLegend->SetLimit(check ? check->GetRules().minSteeringRadius : 0.0);
        d->steeringLegend->setVisible(d->processChecks->IsColoringEnabled());
    };
    connect(d->colorAction, &QAction::toggled, d->processChecks, &ZYLStudioProcessChecks::SetColoringEnabled);
    connect(d->processChecks, &ZYLStudioProcessChecks::ColoringEnabledChanged, this, [this, updateLegend](bool on) {
        d->colorAction->setChecked(on);
        updateLegend();
    });
    connect(d->processChecks, &ZYLStudioProcessChecks::CheckChanged, this, updateLegend);
    connect(d->processDock, &ZYLStudioProcessDock::ViolationActivated, this, &ZYLStudioMainWindow::ShowViolation);
    connect(d->processRulesAction, &QAction::triggered, this, [this] {
        if (ZYLTPProgram *program = d->session->GetProgram())
            ZYLStudioProcessRulesDialog(program, d->session->GetContainer(), this).exec();
    });
    updateLegend();
}

void ZYLStudioMainWindow::ShowViolation(const ZYLTPProcessCheck::Violation &violation) {
    const ZYLTPProgram *program = d->session->GetProgram();
    const auto *layup =
        program ? qobject_cast<const ZYLTPRollLayupProcedure *>(program->GetProcedure(violation.procedure)) : nullptr;
    const ZYLTPCourse *course = layup ? layup->GetCourseByPosition(violation.course) : nullptr;
    // A violation of an older state of the program (the next check is on its way).
    if (!course || violation.lastPoint >= course->GetNumPoints())
        return;
    ZYLMathBoundingBox box;
    for (int i = violation.firstPoint; i <= violation.lastPoint; ++i)
        box.Add(course->GetPointData().tips[size_t(i)]);
    // Some of the course around the stretch, so that it is seen where it lies.
    box.Inflate(150.0);
    ZYLStudioCamera camera = d->viewer->GetCamera();
    camera.Fit(box, QSizeF(d->viewer->size()));
    d->viewer->SetCamera(camera);
    ZYLVisEnvironment *scene = d->session->GetEditEnvironment();
    for (ZYLVisVirtualObject *object : scene ? scene->GetVirtualObjects() : QList<ZYLVisVirtualObject *>()) {
        const auto *rep = qobject_cast<const ZYLTPCourseVisRep *>(object->GetRep());
        if (rep && rep->GetCourse() == course) {
            scene->SetVisualizationSelection({object});
            break;
        }
    }
}

ZYLStudioRecentFiles *ZYLStudioMainWindow::GetRecentFiles() const {
    return d->recentFiles;
}

void ZYLStudioMainWindow::SetMessageBoxesEnabled(bool enabled) {
    d->messageBoxes = enabled;
}

bool ZYLStudioMainWindow::AreMessageBoxesEnabled() const {
    return d->messageBoxes;
}

QString ZYLStudioMainWindow::GetVersion() {
    return QStringLiteral(ZYL_STUDIO_VERSION);
}

// ---------------------------------------------------------------------------------------
// Following the session

void ZYLStudioMainWindow::OnProgramChanged() {
    ZYLVisEnvironment *scene = d->session->GetEditEnvironment();
    d->viewer->SetEnvironment(scene);
    if (scene)
        d->viewer->FitAll();
    // The point under the mouse belonged to the previous scene.
    d->mousePoint.reset();
    ShowMousePoint();
    UpdateTitle();
    UpdateSummary();
    UpdateActions();
}

void ZYLStudioMainWindow::UpdateTitle() {
    if (!d->session->GetProgram()) {
        setWindowTitle(QStringLiteral("zylstudio"));
        setWindowModified(false);
        return;
    }
    const QString file = d->session->GetProgramFileName();
    const QString name = file.isEmpty() ? tr("Demo ply") : QFileInfo(file).fileName();
    setWindowTitle(tr("%1[*] — zylstudio").arg(EscapeTitle(name)));
    setWindowModified(d->session->IsModified());
}

void ZYLStudioMainWindow::UpdateActions() {
    const bool running = IsCommandRunning();
    const bool program = d->session->GetProgram() != nullptr;
    ZYLFeatContainer *container = d->session->GetContainer();
    // While a command runs its transaction is open: the history cannot move, and a file
    // operation would save or drop edits the user has not accepted yet.
    const bool canUndo = !running && container && container->CanUndo() && !container->HasOpenTransaction();
    const bool canRedo = !running && container && container->CanRedo() && !container->HasOpenTransaction();
    d->undoAction->setEnabled(canUndo);
    d->redoAction->setEnabled(canRedo);
    d->undoAction->setText(canUndo ? tr("&Undo %1").arg(container->GetUndoName()) : tr("&Undo"));
    d->redoAction->setText(canRedo ? tr("&Redo %1").arg(container->GetRedoName()) : tr("&Redo"));

    d->openAction->setEnabled(!running);
    d->recentMenu->setEnabled(!running && !d->recentFiles->GetFiles().isEmpty());
    d->saveAction->setEnabled(!running && program);
    d->saveAsAction->setEnabled(!running && program);
    d->closeAction->setEnabled(!running && program);
    d->processRulesAction->setEnabled(!running && program && container && !container->HasOpenTransaction());

    const bool perspective = d->viewer->GetProjection() == ZYLStudioViewer::Projection::Perspective;
    d->perspectiveAction->setChecked(perspective);
    d->orthographicAction->setChecked(!perspective);
}

QString ZYLStudioMainWindow::GetSummaryText() const {
    const ZYLTPProgram *program = d->session->GetProgram();
    if (!program)
        return tr("No program");
    qint64 courses = 0;
    qint64 points = 0;
    qint64 links = 0;
    for (int i = 0; i < program->GetNumProcedures(); ++i) {
        const auto *procedure = qobject_cast<const ZYLTPRollLayupProcedure *>(program->GetProcedure(i));
        if (!procedure)
            continue;
        courses += procedure->GetNumCourses();
        links += procedure->GetNumLinks();
        for (int c = 0; c < procedure->GetNumCourses(); ++c)
            points += procedure->GetCourseByIndex(c)->GetNumPoints();
    }
    return tr("Courses: %L1   Laying points: %L2   Links: %L3").arg(courses).arg(points).arg(links);
}

void ZYLStudioMainWindow::UpdateSummary() {
    d->summaryLabel->setText(GetSummaryText());
}

QString ZYLStudioMainWindow::FormatPoint(const ZYLMathPoint &point) {
    auto length = [](double value) { return ZYLSysValue(ZYLSysValue::Length, value).ToString(); };
    return tr("X %1   Y %2   Z %3").arg(length(point.X()), length(point.Y()), length(point.Z()));
}

QString ZYLStudioMainWindow::GetMousePointText() const {
    return d->mousePoint ? FormatPoint(*d->mousePoint) : QString();
}

void ZYLStudioMainWindow::ShowMousePoint() {
    d->pointLabel->setText(GetMousePointText());
}

void ZYLStudioMainWindow::UpdateRecentMenu() {
    d->recentMenu->clear();
    const QStringList files = d->recentFiles->GetFiles();
    for (int i = 0; i < files.size(); ++i) {
        const QString &file = files.at(i);
        QString name = QFileInfo(file).fileName();
        name.replace(QLatin1Char('&'), QLatin1String("&&"));
        QAction *action = d->recentMenu->addAction(i < 9 ? QStringLiteral("&%1 %2").arg(i + 1).arg(name) : name);
        action->setData(file);
        action->setToolTip(QDir::toNativeSeparators(file));
        action->setStatusTip(QDir::toNativeSeparators(file));
        connect(action, &QAction::triggered, this, [this, file] { OnRecentFileActionTriggered(file); });
    }
    if (!files.isEmpty()) {
        d->recentMenu->addSeparator();
        QAction *clear = d->recentMenu->addAction(tr("&Clear Menu"));
        clear->setObjectName(QStringLiteral("actionClearRecent"));
        connect(clear, &QAction::triggered, d->recentFiles, &ZYLStudioRecentFiles::Clear);
    }
    d->recentMenu->setEnabled(!IsCommandRunning() && !files.isEmpty());
}

// ---------------------------------------------------------------------------------------
// Files

bool ZYLStudioMainWindow::IsCommandRunning() const {
    return d->commandPanel->IsCommandRunning();
}

bool ZYLStudioMainWindow::FinishRunningCommand() {
    return !IsCommandRunning() || d->commandPanel->CancelRunningCommand(this);
}

bool ZYLStudioMainWindow::MaybeSave() {
    if (!d->session->IsModified())
        return true;
    const QMessageBox::StandardButton answer = QMessageBox::question(
        this, tr("Unsaved Changes"), tr("The program has changes that are not saved. Save them first?"),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Save)
        return SaveProgram();
    return answer == QMessageBox::Discard;
}

void ZYLStudioMainWindow::ReportError(const QString &title, const QString &message) {
    if (d->messageBoxes) {
        QMessageBox::critical(this, title, message);
    } else {
        std::fprintf(stderr, "zylstudio: %s\n", qPrintable(message));
        std::fflush(stderr);
    }
}

void ZYLStudioMainWindow::OnOpenActionTriggered() {
    if (!FinishRunningCommand() || !MaybeSave())
        return;
    const QString current = d->session->GetProgramFileName();
    const QString folder = current.isEmpty() ? QString() : QFileInfo(current).absolutePath();
    const QString file = QFileDialog::getOpenFileName(
        this, tr("Open Tool Path Program"), folder,
        tr("Tool path programs (*%1);;All files (*)").arg(ProgramSuffix));
    if (!file.isEmpty())
        LoadProgramFile(file);
}

void ZYLStudioMainWindow::OnRecentFileActionTriggered(const QString &fileName) {
    if (!QFileInfo::exists(fileName)) {
        d->recentFiles->Remove(fileName);
        ReportError(tr("Open Recent"), tr("%1 no longer exists; it has been removed from the recent files.")
                                           .arg(QDir::toNativeSeparators(fileName)));
        return;
    }
    if (!FinishRunningCommand() || !MaybeSave())
        return;
    LoadProgramFile(fileName);
}

bool ZYLStudioMainWindow::OpenProgramFile(const QString &fileName) {
    if (!FinishRunningCommand() || !MaybeSave())
        return false;
    return LoadProgramFile(fileName);
}

bool ZYLStudioMainWindow::LoadProgramFile(const QString &fileName) {
    std::unique_ptr<QProgressDialog> progress;
    ZYLStudioSession::Progress callback;
    if (d->messageBoxes) {
        progress = std::make_unique<QProgressDialog>(
            tr("Opening %1…").arg(QFileInfo(fileName).fileName()), tr("Cancel"), 0, ProgressSteps, this);
        progress->setWindowTitle(tr("Open Program"));
        progress->setWindowModality(Qt::WindowModal);
        progress->setMinimumDuration(ProgressDelayMs);
        progress->setAutoClose(false);
        progress->setAutoReset(false);
        // A window-modal dialog processes events in setValue, so the Cancel button works
        // while the session reads.
        callback = [dialog = progress.get()](double fraction) {
            dialog->setValue(qBound(0, int(fraction * ProgressSteps), ProgressSteps - 1));
            return !dialog->wasCanceled();
        };
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool opened = d->session->OpenProgram(fileName, callback);
    QApplication::restoreOverrideCursor();
    const bool cancelled = progress && progress->wasCanceled();
    progress.reset();
    if (opened) {
        d->recentFiles->Add(fileName);
        statusBar()->showMessage(tr("Opened %1").arg(QDir::toNativeSeparators(fileName)), 5000);
        return true;
    }
    const QString error = d->session->GetErrorString();
    if (!error.isEmpty())
        ReportError(tr("Open Program"), error);
    else if (cancelled)
        statusBar()->showMessage(tr("Opening cancelled"), 5000);
    return false;
}

bool ZYLStudioMainWindow::OpenDemo() {
    if (!FinishRunningCommand() || !MaybeSave())
        return false;
    // The studio's demo shows each kind of process violation.
    if (d->session->OpenDemo(true))
        return true;
    ReportError(tr("Open Demo"), d->session->GetErrorString());
    return false;
}

bool ZYLStudioMainWindow::SaveProgram() {
    if (!d->session->GetProgram() || IsCommandRunning())
        return false;
    const QString file = d->session->GetProgramFileName();
    return SaveProgramAs(file);
}

bool ZYLStudioMainWindow::SaveProgramAs(const QString &fileName) {
    if (!d->session->GetProgram() || IsCommandRunning())
        return false;
    QString target = fileName;
    if (target.isEmpty()) {
        const QString current = d->session->GetProgramFileName();
        const QString proposal =
            current.isEmpty() ? QDir::home().filePath(tr("demo-ply") + ProgramSuffix) : current;
        target = QFileDialog::getSaveFileName(this, tr("Save Tool Path Program"), proposal,
                                              tr("Tool path programs (*%1)").arg(ProgramSuffix));
        if (target.isEmpty())
            return false;
        if (QFileInfo(target).suffix().isEmpty())
            target += ProgramSuffix;
    }
    if (!d->session->SaveProgram(target)) {
        ReportError(tr("Save Program"), d->session->GetErrorString());
        return false;
    }
    d->recentFiles->Add(target);
    // The title shows the new file name even though the modified state may not have changed.
    UpdateTitle();
    statusBar()->showMessage(tr("Saved %1").arg(QDir::toNativeSeparators(target)), 5000);
    return true;
}

bool ZYLStudioMainWindow::CloseProgram() {
    if (!FinishRunningCommand() || !MaybeSave())
        return false;
    d->session->CloseProgram();
    return d->session->GetProgram() == nullptr;
}

// ---------------------------------------------------------------------------------------
// Edit, tools, help

void ZYLStudioMainWindow::StepHistory(bool undo) {
    ZYLFeatContainer *container = d->session->GetContainer();
    if (!container || IsCommandRunning())
        return;
    const QString error = Guarded([container, undo] { undo ? container->Undo() : container->Redo(); });
    if (!error.isEmpty())
        ReportError(undo ? tr("Undo") : tr("Redo"), error);
}

void ZYLStudioMainWindow::OnUnitsActionTriggered() {
    ZYLStudioUnitsDialog dialog(this);
    dialog.exec();
}

void ZYLStudioMainWindow::ShowHelp(const QString &heading)
{
    if (!d->helpBrowser)
        d->helpBrowser = new ZYLStudioHelpBrowser(this);
    d->helpBrowser->ShowSection(heading);
}

void ZYLStudioMainWindow::OnAboutActionTriggered() {
    QMessageBox::about(this, tr("About zylstudio"),
                       tr("<h3>zylstudio %1</h3>"
                          "<p>Views and edits the tool path of a ply for automated fibre placement: "
                          "its courses, links and laying points.</p>"
                          "<p>Built with Qt %2.</p>")
                           .arg(GetVersion(), QString::fromLatin1(qVersion())));
}

// ---------------------------------------------------------------------------------------
// Window events

void ZYLStudioMainWindow::closeEvent(QCloseEvent *event) {
    if (FinishRunningCommand() && MaybeSave())
        event->accept();
    else
        event->ignore();
}

void ZYLStudioMainWindow::dragEnterEvent(QDragEnterEvent *event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() == 1 && urls.first().isLocalFile())
        event->acceptProposedAction();
}

void ZYLStudioMainWindow::dropEvent(QDropEvent *event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() != 1 || !urls.first().isLocalFile())
        return;
    event->acceptProposedAction();
    // Questions and the progress dialog must not run inside the drop: the drag source waits.
    const QString file = urls.first().toLocalFile();
    QTimer::singleShot(0, this, [this, file] { OpenProgramFile(file); });
}

QString ZYLStudioMainWindow::GetOpenGLError() const {
    const QOpenGLContext *context = d->viewer->context();
    if (!context || !context->isValid())
        return tr("The 3-D view could not get an OpenGL context. zylstudio needs OpenGL 3.3 (core profile); "
                  "update the graphics driver, or run with LIBGL_ALWAYS_SOFTWARE=1 for software rendering.");
    const QSurfaceFormat format = context->format();
    if (format.version() < qMakePair(3, 3))
        return tr("The 3-D view got OpenGL %1.%2, but zylstudio needs OpenGL 3.3 (core profile); "
                  "update the graphics driver, or run with LIBGL_ALWAYS_SOFTWARE=1 for software rendering.")
            .arg(format.majorVersion())
            .arg(format.minorVersion());
    return {};
}
