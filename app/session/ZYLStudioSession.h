// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLStudioSessionExport.h"

#include <QObject>
#include <QString>

#include <memory>

class ZYLFeatContainer;
class ZYLFeatEnvironment;

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
/// Next step, the concrete graphics manager: the module exports the abstract
/// `ZYLEditTPGraphicsMgr`, and the host's manager (with its `GetUpdatedSurface`) derives from
/// it, so its code must link the module, which the session must not do (it loads the module
/// as any host does). That class will live in a small bridge library that links the module
/// and that the session loads with `QLibrary` right after the module and unloads right
/// before it; the session reaches it through one `extern "C"` factory function resolved by
/// name, gives the manager the edit environment, the program and the feature, and enters
/// and leaves the edit environment while the module is loaded.
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

    /// Returns the folder the module is loaded from: ZYL_MODULE_DIR when set, else the folder
    /// of the session library.
    static QString GetModuleDirectory();
    /// Returns the path of the module library in `GetModuleDirectory()`.
    static QString GetModulePath();

signals:
    /// The module could not be loaded; `message` is the loader's.
    void ErrorOccurred(const QString &message);

private:
    void UnloadModule();

    struct Data;
    std::unique_ptr<Data> d;
};
