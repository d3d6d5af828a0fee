// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPProcessCheck.h"

#include <QMainWindow>
#include <QString>

#include <memory>

class ZYLStudioProcessChecks;
class ZYLStudioRecentFiles;
class ZYLStudioSession;
class ZYLStudioViewer;
class ZYLMathPoint;

/// The studio's main window on a started `ZYLStudioSession`: the 3-D view of the open
/// program's edit environment in the centre, the module's actions on tool bars, the running
/// command's panel in a dock, menus, and a status bar.
///
/// View. The central `ZYLStudioViewer` shows the session's `GetEditEnvironment()`; it is set
/// again and fitted to the scene whenever the session opens another program, and cleared
/// when the program is closed.
///
/// Menus (action object names in brackets, for tests and scripts):
///  - File: Open… (`actionOpen`), Open Recent (`menuOpenRecent`), Save (`actionSave`),
///    Save As… (`actionSaveAs`), Close (`actionClose`), Quit (`actionQuit`).
///  - Edit: Undo (`actionUndo`), Redo (`actionRedo`), named after the container's entry:
///    "Undo <name>", "Redo <name>".
///  - View: Fit All (`actionFitAll`), the seven standard views (`actionViewTop`, ...), the
///    projection (`actionPerspective`, `actionOrthographic`), then the view modes and toggles
///    of the tool bars.
///  - Tools: Units… (`actionUnits`), Process Rules… (`actionProcessRules`,
///    `ZYLStudioProcessRulesDialog`; disabled while a command runs). Help: User Guide
///    (`actionUserGuide`, F1: `ZYLStudioHelpBrowser` from the top) and About (`actionAbout`)
///    with the version. The Help button of a command's panel opens the guide at the section
///    on that command.
///
/// Process checks (`ZYLStudioProcessChecks`, `GetProcessChecks()`): the program is checked
/// in the background after every edit; the "Process Checks" dock (`processDock`,
/// `ZYLStudioProcessDock`, shown and hidden from the View menu) lists the violations, and a
/// click on one frames its stretch in the view and selects its course. The View action
/// "Color by steering radius" (`actionColorBySteeringRadius`, persisted) colours the course
/// bands by steering radius, with a legend over the view (`steeringLegend`).
///
/// Status bar: a summary of the program (courses, laying points and links of its roll layup
/// procedures; `GetSummaryText()`), kept up to date after every edit, undo and redo, and the
/// model point under the mouse in the user's display length unit (`GetMousePointText()`),
/// shown again in the new unit when the user changes it.
///
/// Fields: while the window lives, the wheel over a spin box or combo box without the focus
/// scrolls the panel instead of changing the value (`ZYLStudioWheelGuard`).
///
/// Title: "<file name or 'Demo ply'>[*] — zylstudio", with the modified marker following the
/// session's `ModifiedChanged`; just "zylstudio" while no program is open.
///
/// Files. Opening loads with a progress dialog that can cancel the load (the session then
/// keeps what was open); a file that cannot be opened is reported with the loader's located
/// message and the open program stays. Save writes to the program's file, and asks for a
/// name when there is none (the demo ply); Save As asks for a name and adds ".zyltp.json"
/// when the name has no suffix. Opened and saved files go to the top of Open Recent
/// (`ZYLStudioRecentFiles`); a recent file that has gone is taken out of the list with a
/// message. Program files dropped on the window are opened too. Before unsaved edits would
/// be lost (Open, a recent file, a drop, Close, Quit, closing the window) the window asks
/// whether to save them, discard them or stay.
///
/// Commands. While a command runs, Undo, Redo and the File actions but Quit are disabled
/// (the command's transaction is open). Closing the window or opening a file in another way
/// (a drop, `OpenProgramFile`) cancels the running command first through the command panel,
/// which asks before discarding the command's edits; declining keeps everything as it was.
///
/// Errors are shown in message boxes; with `SetMessageBoxesEnabled(false)` (a run without a
/// user, such as a screenshot) they go to the standard error stream instead and loads show no
/// progress dialog.
class ZYLStudioMainWindow : public QMainWindow {
    Q_OBJECT
public:
    /// Makes the window on `session` (borrowed; it must outlive the window and be started).
    explicit ZYLStudioMainWindow(ZYLStudioSession *session, QWidget *parent = nullptr);
    ~ZYLStudioMainWindow() override;

    ZYLStudioViewer *GetViewer() const;
    ZYLStudioProcessChecks *GetProcessChecks() const;
    ZYLStudioRecentFiles *GetRecentFiles() const;

    /// Chooses message boxes (default) or the standard error stream for errors.
    void SetMessageBoxesEnabled(bool enabled);
    bool AreMessageBoxesEnabled() const;

    /// Opens a program file: cancels a running command and offers to save unsaved edits
    /// first, then loads with progress. Returns true when the file is open; false when the
    /// user stayed, cancelled the load, or the file could not be opened (reported).
    bool OpenProgramFile(const QString &fileName);
    /// Opens the embedded demo ply with its deliberate process faults, like
    /// `OpenProgramFile`. Returns true when it is open.
    bool OpenDemo();
    /// Saves the program to its file, or asks for one (`SaveProgramAs`) when it has none.
    /// Returns true when it was saved.
    bool SaveProgram();
    /// Saves the program to `fileName`; an empty name asks the user for one. Returns true when
    /// it was saved; a failure is reported and changes nothing.
    bool SaveProgramAs(const QString &fileName = QString());
    /// Closes the program after the questions `OpenProgramFile` asks. Returns true when no
    /// program is open any more.
    bool CloseProgram();

    /// Returns the program summary of the status bar ("No program" when none is open).
    QString GetSummaryText() const;
    /// Returns the mouse point text of the status bar (empty until the mouse has been over
    /// the scene).
    QString GetMousePointText() const;
    /// Returns "X <x>  Y <y>  Z <z>" in the user's display length unit.
    static QString FormatPoint(const ZYLMathPoint &point);

    /// Returns why the 3-D view cannot draw (no OpenGL context, or one older than 3.3), or an
    /// empty string when it can. Meaningful once the window has been shown.
    QString GetOpenGLError() const;

    /// Returns the version shown by About and `--version`.
    static QString GetVersion();

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void CreateActions();
    void CreateMenus();
    void CreateProcessChecks();
    // Frames the stretch of a violation and selects its course.
    void ShowViolation(const ZYLTPProcessCheck::Violation &violation);
    void setupConnections();

    // Reacts to the session.
    void OnProgramChanged();
    void UpdateTitle();
    void UpdateActions();
    void UpdateSummary();
    void UpdateRecentMenu();
    void ShowMousePoint();

    // Menu actions.
    void OnOpenActionTriggered();
    void OnRecentFileActionTriggered(const QString &fileName);
    // Undoes (redoes) one step unless a command runs; reports a failure.
    void StepHistory(bool undo);
    void OnUnitsActionTriggered();
    void OnAboutActionTriggered();
    // Shows the guide at `heading` (ZYLStudioHelpBrowser), made on first use.
    void ShowHelp(const QString &heading);

    // Returns true when no command runs any more (the user may decline to cancel it).
    bool FinishRunningCommand();
    bool IsCommandRunning() const;
    // Returns true when there are no unsaved edits any more or the user discards them.
    bool MaybeSave();
    // Loads a file with progress, without questions; reports failures.
    bool LoadProgramFile(const QString &fileName);
    void ReportError(const QString &title, const QString &message);

    struct Data;
    std::unique_ptr<Data> d;
};
