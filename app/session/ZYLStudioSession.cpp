// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioSession.h"

#include "ZYLCmdCommand.h"
#include "ZYLCmdController.h"
#include "ZYLFeatContainer.h"
#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLSysRegisterInit.h"
#include "ZYLSysResourceManager.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QLoggingCategory>

#if defined(Q_OS_UNIX)
#include <dlfcn.h>
#endif

namespace {

Q_LOGGING_CATEGORY(lcZYLStudioSession, "zyl.studio.session")

constexpr char ModuleFlagName[] = "_ZYLToolPathUILoaded";

// The folder of the shared library that holds this function: the session library, beside
// which the build places the module.
QString SessionLibraryDirectory() {
#if defined(Q_OS_UNIX)
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void *>(&SessionLibraryDirectory), &info) && info.dli_fname)
        return QFileInfo(QFile::decodeName(info.dli_fname)).absolutePath();
#endif
    return QCoreApplication::applicationDirPath();
}

} // namespace

struct ZYLStudioSession::Data {
    std::unique_ptr<ZYLFeatContainer> container;
    std::unique_ptr<ZYLFeatEnvironment> environment;
    QLibrary module;
    const bool *loadedFlag = nullptr;
    QString errorString;
};

ZYLStudioSession::ZYLStudioSession(QObject *parent) : QObject(parent), d(std::make_unique<Data>()) {}

ZYLStudioSession::~ZYLStudioSession() {
    Shutdown();
}

bool ZYLStudioSession::Start() {
    StartHost();
    if (!LoadModule())
        return false;
    InitializeHost();
    return true;
}

void ZYLStudioSession::StartHost() {
    if (d->environment)
        return;
    ZYLSysResourceManager::InstallIconTheme();
    // The module's static objects register with the controller while the library loads, so
    // it has to exist before then.
    ZYLCmdController::GetController();
    d->container = std::make_unique<ZYLFeatContainer>();
    d->environment = std::make_unique<ZYLFeatEnvironment>(d->container.get());
    ZYLFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(d->environment.get());
}

bool ZYLStudioSession::LoadModule() {
    if (IsModuleLoaded())
        return true;
    StartHost();
    d->errorString.clear();
    d->module.setFileName(GetModulePath());
    if (!d->module.load()) {
        d->errorString = tr("The tool path module could not be loaded: %1").arg(d->module.errorString());
    } else if (auto flag = reinterpret_cast<const bool *>(d->module.resolve(ModuleFlagName))) {
        d->loadedFlag = flag;
        return true;
    } else {
        d->errorString = tr("%1 is not the tool path module: it does not export %2.")
                             .arg(d->module.fileName(), QString::fromLatin1(ModuleFlagName));
        d->module.unload();
    }
    qCWarning(lcZYLStudioSession).noquote() << d->errorString;
    emit ErrorOccurred(d->errorString);
    return false;
}

void ZYLStudioSession::InitializeHost() {
    ZYLSysRunInitCallbacks();
}

void ZYLStudioSession::Shutdown() {
    if (ZYLCmdController *controller = ZYLCmdController::GetController()) {
        if (ZYLCmdCommand *command = controller->GetCurrentCommand())
            command->Cancel();
    }
    UnloadModule();
    if (d->environment) {
        ZYLFeatEnvironmentManager *manager = ZYLFeatEnvironmentManager::GetManager();
        if (manager && manager->GetCurrentEnvironment() == d->environment.get())
            manager->SetCurrentEnvironment(nullptr);
    }
    d->environment.reset();
    d->container.reset();
}

void ZYLStudioSession::UnloadModule() {
    if (!IsModuleLoaded())
        return;
    // The host keeps queued initialisation callbacks until it initialises; the module's would
    // then call into unmapped code.
    if (!ZYLSysIsInitialized())
        InitializeHost();
    d->loadedFlag = nullptr;
    if (!d->module.unload())
        qCWarning(lcZYLStudioSession).noquote() << "The tool path module stays loaded:" << d->module.errorString();
}

bool ZYLStudioSession::IsModuleLoaded() const {
    return d->loadedFlag != nullptr;
}

bool ZYLStudioSession::IsModuleReady() const {
    return d->loadedFlag && *d->loadedFlag;
}

QString ZYLStudioSession::GetErrorString() const {
    return d->errorString;
}

ZYLFeatContainer *ZYLStudioSession::GetContainer() const {
    return d->container.get();
}

ZYLFeatEnvironment *ZYLStudioSession::GetEnvironment() const {
    return d->environment.get();
}

QString ZYLStudioSession::GetModuleDirectory() {
    const QString overridden = qEnvironmentVariable("ZYL_MODULE_DIR");
    return overridden.isEmpty() ? SessionLibraryDirectory() : QDir(overridden).absolutePath();
}

QString ZYLStudioSession::GetModulePath() {
#if defined(Q_OS_WIN)
    const QString fileName = QStringLiteral("ZYLToolPathUI.dll");
#else
    const QString fileName = QStringLiteral("libZYLToolPathUI.so");
#endif
    return QDir(GetModuleDirectory()).filePath(fileName);
}
