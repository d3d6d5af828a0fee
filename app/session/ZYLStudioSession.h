// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLStudioSessionExport.h"

#include "ZYLGeoRef.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class ZYLFeatContainer;
class ZYLFeatEnvironment;
class ZYLTPProgram;
class ZYLVisEnvironment;

/// The host's side of the tool path edit environment, shared by the studio and the tests: it
/// starts the host services, loads the tool path module at run time and takes it all down
/// again, the way a host of the module does.
///
/// Starting takes three steps, in this order; `Start()` runs them all:
///  1. `StartHost()`: installs the icon theme, makes sure the command controller exists, and
///     creates a feature container with its `ZYLFeatEnvironment`, made the current
///     environment of `ZYLFeatEnvironmentManager`.
///  2. `LoadModule()`: loads the module library (`GetModulePath()`) with `QLibrary`. Its
///     static objects register the module's command classes and publish its actions with
///     the controller, which must exist by then. The session resolves the module's flag
///     `_ZYLToolPathUILoaded` by name; a library that cannot be loaded or lacks the flag is
///     reported with the loader's message (`GetErrorString()`, a warning, `ErrorOccurred`).
///  3. `InitializeHost()`: runs the host's initialisation callbacks
///     (`ZYLSysRunInitCallbacks`), which read the persisted settings back and let the
///     module's callback set its flag.
///
/// `Shutdown()`, also run by the destructor, goes back in reverse: it cancels the running
/// command, unloads the module (its static objects withdraw its actions and command
/// classes), clears the current environment and deletes environment and container. The
/// controller is process-wide and stays. A module is only unloaded after the host's
/// initialisation, because until then the host holds the module's callback, whose code
/// lives in the module; `Shutdown()` therefore completes the initialisation first if it has
/// not happened.
///
/// The module is looked for in the folder named by the environment variable ZYL_MODULE_DIR,
/// or else in the folder of this session library (the build puts all libraries side by side).
///
/// The graphics manager. The module exports the abstract `ZYLEditTPGraphicsMgr`; the host's
/// manager derives from it, so it lives in a small bridge library (`GetBridgePath()`) that
/// links the module. `LoadModule()` loads the bridge right after the module and creates the
/// manager through the bridge's factory (`ZYLStudioGraphicsBridge`); unloading deletes the
/// manager and unloads the bridge right before the module. A missing bridge is reported
/// like a missing module.
///
/// The edit environment. `EnterEditEnvironment(program)` makes a new scene, hands it to the
/// manager together with the program, a feature standing for the tool path, the ply surface
/// (as a `ZYLFeatGeometry`), the ply boundaries, the machine head and the rollers (each a
/// feature container whose provider draws a simple model of it, sized from the roller's
/// width and diameter), the collision points of every head and roller by id and the three
/// feed flags; the manager then enters the environment and builds the tool path graphics
/// with the current view settings. `LeaveEditEnvironment()` removes the tool path graphics
/// and leaves, which cancels the running command and deletes the scene. `Shutdown()` leaves
/// before it unloads.
///
/// The open program. The session holds at most one program: `OpenProgram` loads a program
/// file, `OpenDemo` makes the embedded demo ply, and both then enter the program's edit
/// environment with the session's `EditFlags`. A file that cannot be loaded leaves the open
/// program, its environment and its undo history as they were; the located message of the
/// loader is `GetErrorString()` and goes out with `ErrorOccurred`. Replacing or closing the
/// program leaves the edit environment first and clears the undo history, whose entries
/// refer to the old program's objects. Edits are made in transactions of `GetContainer()`;
/// `IsModified()` compares the undo history with the one at the last open or save (undoing
/// back to it makes the program unmodified again; an edit made after undoing past it makes
/// that state unreachable), and `ModifiedChanged` reports changes of it.
///
/// GUI thread only; a QApplication must exist for the actions and panels.
class ZYLSTUDIOSESSION_EXPORT ZYLStudioSession : public QObject {
    Q_OBJECT
public:
    explicit ZYLStudioSession(QObject *parent = nullptr);
    /// Runs `Shutdown()`.
    ~ZYLStudioSession() override;

    /// Runs `StartHost()`, `LoadModule()` and `InitializeHost()`. Returns false, after the
    /// host services have started, when the module could not be loaded.
    bool Start();
    /// Starts the host services (see the class description). Does nothing when they run.
    void StartHost();
    /// Loads the module; starts the host services first if need be. Returns true when the
    /// module is loaded (also when it already was), false with `GetErrorString()` set when
    /// it cannot be loaded or does not export its flag (the library is then unloaded again).
    bool LoadModule();
    /// Runs the host's initialisation callbacks; later calls have nothing left to run.
    void InitializeHost();
    /// Ends everything `Start()` began, in reverse (see the class description). Does nothing
    /// when nothing runs; the session can be started again afterwards.
    void Shutdown();

    /// Returns whether the module library is loaded by this session.
    bool IsModuleLoaded() const;
    /// Returns the module's flag `_ZYLToolPathUILoaded`: true once the module is loaded and
    /// the host initialised. False while no module is loaded.
    bool IsModuleReady() const;
    /// Returns the message of the last failure to load the module, or an empty string.
    QString GetErrorString() const;

    /// Returns the feature container of the session while the host services run, else null.
    ZYLFeatContainer *GetContainer() const;
    /// Returns the session's environment (the current one) while the host services run, else
    /// null.
    ZYLFeatEnvironment *GetEnvironment() const;

    /// The three machine capabilities the editing commands need; they come from the host's
    /// machine setup, not from the program.
    struct EditFlags {
        /// The side the head works from (handed to collision checks negated).
        bool layupDirection = false;
        bool feedTowsIndividually = true;
        bool feedTowsAtSeparateRates = false;
    };
    /// Sets the flags handed to the manager on entering the edit environment; they take
    /// effect on the next `EnterEditEnvironment`.
    void SetEditFlags(const EditFlags &flags);
    EditFlags GetEditFlags() const;

    /// Called now and then while a program file loads with the fraction read (0 to 1);
    /// returning false cancels the load.
    using Progress = std::function<bool(double)>;
    /// Opens the program file `fileName` and enters its edit environment (see the class
    /// description). Returns false, with the open program untouched, when the module cannot
    /// be loaded or the file cannot (`GetErrorString()` then holds the located message) or
    /// when `progress` cancelled the load (`GetErrorString()` then empty).
    bool OpenProgram(const QString &fileName, const Progress &progress = {});
    /// Opens the embedded demo ply (no file name) and enters its edit environment; with
    /// `processFaults`, the ply with its deliberate process faults
    /// (`ZYLTPDemoGenerator::Parameters::processFaults`). Returns false when the module
    /// cannot be loaded.
    bool OpenDemo(bool processFaults = false);
    /// Saves the open program to `fileName` (atomically); on success the program takes that
    /// file name and is no longer modified. Returns false with `GetErrorString()` set when
    /// there is no program or the file cannot be written (the previous file stays).
    bool SaveProgram(const QString &fileName);
    /// Leaves the edit environment, clears the undo history and releases the program.
    void CloseProgram();
    /// Returns the open program, or null.
    ZYLTPProgram *GetProgram() const;
    /// Returns the file of the open program; empty for the demo and when none is open.
    QString GetProgramFileName() const;
    /// Returns whether the open program differs from its state at the last open or save.
    bool IsModified() const;

    /// Enters the edit environment of `program` (see the class description), leaving the
    /// current one first; loads the module if need be. Returns false, doing nothing, for a
    /// null program or when module or bridge cannot be loaded.
    bool EnterEditEnvironment(const ZYLTPProgram *program);
    /// Leaves the edit environment; nothing when not in one.
    void LeaveEditEnvironment();
    /// Returns whether the edit environment is entered.
    bool IsInEditEnvironment() const;
    /// Returns the scene of the edit environment while it is entered, else null.
    ZYLVisEnvironment *GetEditEnvironment() const;
    /// Returns the graphics manager (a `ZYLEditTPGraphicsMgr`) while the module is loaded,
    /// else null.
    QObject *GetGraphicsManager() const;

    /// Returns the folder the module is loaded from: ZYL_MODULE_DIR when set, else the folder
    /// of the session library.
    static QString GetModuleDirectory();
    /// Returns the path of the module library in `GetModuleDirectory()`.
    static QString GetModulePath();
    /// Returns the path of the graphics bridge library in `GetModuleDirectory()`.
    static QString GetBridgePath();

signals:
    /// The module or a program file could not be loaded, or a program not saved; `message`
    /// is the loader's (or writer's).
    void ErrorOccurred(const QString &message);
    /// Another program was opened, or the program closed.
    void ProgramChanged();
    void ModifiedChanged(bool modified);
    /// The container's history moved: a commit, an undo or a redo (after `ModifiedChanged`).
    void HistoryChanged();

private:
    void SetProgram(ZYLGeoRef<ZYLTPProgram> program, const QString &fileName);
    void MarkSaved();
    void UpdateModified();
    bool LoadBridge();
    void UnloadBridge();
    void UnloadModule();

    struct Data;
    std::unique_ptr<Data> d;
};
