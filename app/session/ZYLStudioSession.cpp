// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioSession.h"

#include "ZYLStudioGraphicsBridge.h"

#include "ZYLTPDemoGenerator.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPProgram.h"
#include "ZYLTPProgramFile.h"
#include "ZYLTPRoller.h"

#include "ZYLCmdCommand.h"
#include "ZYLCmdController.h"
#include "ZYLFeatContainer.h"
#include "ZYLFeatContainerManager.h"
#include "ZYLFeatContainerProvider.h"
#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLFeatGeometry.h"
#include "ZYLGeoBody.h"
#include "ZYLGeoRef.h"
#include "ZYLSysRegisterInit.h"
#include "ZYLSysResourceManager.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisOptions.h"
#include "ZYLVisRepGraphics.h"
#include "ZYLVisSegmentPrimitive.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QLoggingCategory>

#include <cmath>
#include <numbers>
#include <vector>

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

// Draws a machine head or a roller as a wire model in its tool frame (origin at the tool
// tip, x the laying direction, y the side direction, z the tool axis away from the part).
class ToolModelProvider final : public ZYLFeatContainerProvider {
public:
    ToolModelProvider(std::vector<ZYLMathPoint> edges, const QColor &colour) : m_edges(std::move(edges)) {
        m_options.SetColor(colour);
        m_options.SetLineThickness(2.0);
    }
    ZYLVisRep *CreateRep(ZYLFeatContainer *) const override {
        return new ZYLVisRepGraphics({new ZYLVisSegmentPrimitive(m_edges)}, m_options);
    }

private:
    std::vector<ZYLMathPoint> m_edges;
    ZYLVisOptions m_options;
};

// A roller of the given width and diameter standing on the tip, turning about the side axis.
std::vector<ZYLMathPoint> RollerEdges(double width, double diameter) {
    constexpr int sides = 32;
    const double radius = diameter / 2.0;
    std::vector<ZYLMathPoint> edges;
    auto rim = [&](int i, double y) {
        const double angle = 2.0 * std::numbers::pi * i / sides;
        return ZYLMathPoint(radius * std::sin(angle), y, radius - radius * std::cos(angle));
    };
    for (int i = 0; i < sides; ++i) {
        for (double y : {-width / 2.0, width / 2.0}) {
            edges.push_back(rim(i, y));
            edges.push_back(rim(i + 1, y));
        }
        if (i % 4 == 0) {
            edges.push_back(rim(i, -width / 2.0));
            edges.push_back(rim(i, width / 2.0));
        }
    }
    return edges;
}

// The head body: a box above the roller, joined to the roller's axle by a post.
std::vector<ZYLMathPoint> HeadEdges(double rollerWidth, double rollerDiameter) {
    const double halfX = std::max(rollerDiameter, 80.0);
    const double halfY = std::max(rollerWidth, 80.0);
    const double bottom = rollerDiameter + 40.0;
    const double top = bottom + 3.0 * halfX;
    std::vector<ZYLMathPoint> edges;
    const double xs[2] = {-halfX, halfX};
    const double ys[2] = {-halfY, halfY};
    const double zs[2] = {bottom, top};
    // The twelve edges of the box: along x, along y, along z.
    for (double y : ys)
        for (double z : zs)
            edges.insert(edges.end(), {ZYLMathPoint(xs[0], y, z), ZYLMathPoint(xs[1], y, z)});
    for (double x : xs)
        for (double z : zs)
            edges.insert(edges.end(), {ZYLMathPoint(x, ys[0], z), ZYLMathPoint(x, ys[1], z)});
    for (double x : xs)
        for (double y : ys)
            edges.insert(edges.end(), {ZYLMathPoint(x, y, zs[0]), ZYLMathPoint(x, y, zs[1])});
    edges.insert(edges.end(), {ZYLMathPoint(0.0, 0.0, rollerDiameter / 2.0), ZYLMathPoint(0.0, 0.0, bottom)});
    return edges;
}

std::unique_ptr<ZYLFeatContainer> ToolContainer(std::vector<ZYLMathPoint> edges, const QColor &colour) {
    auto container = std::make_unique<ZYLFeatContainer>();
    ZYLFeatContainerManager::GetManager()->SetProvider(container.get(),
                                                       std::make_unique<ToolModelProvider>(std::move(edges), colour));
    return container;
}

} // namespace

struct ZYLStudioSession::Data {
    std::unique_ptr<ZYLFeatContainer> container;
    std::unique_ptr<ZYLFeatEnvironment> environment;
    QLibrary module;
    const bool *loadedFlag = nullptr;
    QString errorString;

    QLibrary bridgeLibrary;
    std::unique_ptr<ZYLStudioGraphicsBridge> bridge;

    // What the edit environment shows besides the program, kept while it is entered.
    struct Edit {
        ZYLGeoRef<ZYLFeatObject> feature;
        ZYLGeoRef<ZYLFeatGeometry> surface;
        std::unique_ptr<ZYLFeatContainer> head;
        std::vector<std::unique_ptr<ZYLFeatContainer>> rollers;
    };
    std::unique_ptr<Edit> edit;

    // The open program, its file and the history state it was opened or saved at.
    ZYLGeoRef<ZYLTPProgram> program;
    QString programFile;
    quint64 savedState = 0;
    bool modified = false;
    EditFlags flags;

    void ReportError(ZYLStudioSession *session, const QString &message) {
        errorString = message;
        qCWarning(lcZYLStudioSession).noquote() << errorString;
        emit session->ErrorOccurred(errorString);
    }
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
    connect(d->container.get(), &ZYLFeatContainer::HistoryChanged, this, [this] {
        UpdateModified();
        emit HistoryChanged();
    });
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
        d->ReportError(this, tr("The tool path module could not be loaded: %1").arg(d->module.errorString()));
        return false;
    }
    auto flag = reinterpret_cast<const bool *>(d->module.resolve(ModuleFlagName));
    if (!flag) {
        const QString message = tr("%1 is not the tool path module: it does not export %2.")
                                    .arg(d->module.fileName(), QString::fromLatin1(ModuleFlagName));
        d->module.unload();
        d->ReportError(this, message);
        return false;
    }
    d->loadedFlag = flag;
    if (!LoadBridge()) {
        // Without the host's graphics manager the module cannot show anything; it goes too.
        const QString message = d->errorString;
        UnloadModule();
        d->errorString = message;
        return false;
    }
    return true;
}

bool ZYLStudioSession::LoadBridge() {
    d->bridgeLibrary.setFileName(GetBridgePath());
    if (!d->bridgeLibrary.load()) {
        d->ReportError(this, tr("The graphics bridge could not be loaded: %1").arg(d->bridgeLibrary.errorString()));
        return false;
    }
    const char *factoryName = ZYLStudioGraphicsBridge::FactoryName;
    auto factory = reinterpret_cast<ZYLStudioGraphicsBridge::Factory>(d->bridgeLibrary.resolve(factoryName));
    if (!factory) {
        const QString message = tr("%1 is not the graphics bridge: it does not export %2.")
                                    .arg(d->bridgeLibrary.fileName(), QString::fromLatin1(factoryName));
        d->bridgeLibrary.unload();
        d->ReportError(this, message);
        return false;
    }
    d->bridge.reset(factory());
    return true;
}

void ZYLStudioSession::UnloadBridge() {
    LeaveEditEnvironment();
    if (!d->bridge)
        return;
    // The bridge's code must still be there to delete its manager.
    d->bridge.reset();
    if (!d->bridgeLibrary.unload())
        qCWarning(lcZYLStudioSession).noquote()
            << "The graphics bridge stays loaded:" << d->bridgeLibrary.errorString();
}

bool ZYLStudioSession::EnterEditEnvironment(const ZYLTPProgram *program) {
    if (!program || !LoadModule())
        return false;
    LeaveEditEnvironment();

    auto edit = std::make_unique<Data::Edit>();
    ZYLStudioGraphicsBridge::EditContext context;
    context.program = program;
    edit->feature = ZYLGeoRef<ZYLFeatObject>(new ZYLFeatObject(tr("Tool path")));
    context.feature = edit->feature.get();
    if (const ZYLGeoSurface *surface = program->GetPlySurface()) {
        auto *body = new ZYLGeoBody;
        body->AddSurface(surface);
        edit->surface = ZYLGeoRef<ZYLFeatGeometry>(new ZYLFeatGeometry(body, tr("Ply surface")));
        context.surfaces.append(edit->surface.get());
    }
    context.plyBoundaries = program->GetPlyBoundaries();

    // The head is drawn above the first roller, sized after it.
    double rollerWidth = 50.0;
    double rollerDiameter = 60.0;
    for (int id = 0; id < program->GetNumTools(); ++id) {
        const auto *roller = qobject_cast<const ZYLTPRoller *>(program->GetTool(id));
        if (!roller)
            continue;
        if (edit->rollers.empty()) {
            rollerWidth = roller->GetWidth();
            rollerDiameter = roller->GetDiameter();
        }
        edit->rollers.push_back(
            ToolContainer(RollerEdges(roller->GetWidth(), roller->GetDiameter()), QColor(230, 140, 30)));
        context.rollers.append({id, edit->rollers.back().get()});
        context.rollerCollisionPoints.append({id, roller->GetCollisionPoints()});
    }
    for (int id = 0; id < program->GetNumMachineHeads(); ++id) {
        if (const ZYLTPMachineHead *head = program->GetMachineHead(id))
            context.headCollisionPoints.append({id, head->GetCollisionPoints()});
    }
    if (program->GetNumMachineHeads() > 0) {
        edit->head = ToolContainer(HeadEdges(rollerWidth, rollerDiameter), QColor(70, 90, 120));
        context.head = edit->head.get();
    }

    context.layupDirection = d->flags.layupDirection;
    context.feedTowsIndividually = d->flags.feedTowsIndividually;
    context.feedTowsAtSeparateRates = d->flags.feedTowsAtSeparateRates;
    context.environment = new ZYLVisEnvironment;
    d->edit = std::move(edit);
    d->bridge->EnterEditEnvironment(context);
    return true;
}

void ZYLStudioSession::LeaveEditEnvironment() {
    if (!d->edit)
        return;
    d->bridge->LeaveEditEnvironment();
    // The manager has deleted the nodes drawn from these by now.
    d->edit.reset();
}

bool ZYLStudioSession::IsInEditEnvironment() const {
    return d->edit != nullptr;
}

ZYLVisEnvironment *ZYLStudioSession::GetEditEnvironment() const {
    return d->edit ? d->bridge->GetEditEnvironment() : nullptr;
}

QObject *ZYLStudioSession::GetGraphicsManager() const {
    return d->bridge ? d->bridge->GetManager() : nullptr;
}

void ZYLStudioSession::InitializeHost() {
    ZYLSysRunInitCallbacks();
}

void ZYLStudioSession::SetEditFlags(const EditFlags &flags) {
    d->flags = flags;
}

ZYLStudioSession::EditFlags ZYLStudioSession::GetEditFlags() const {
    return d->flags;
}

bool ZYLStudioSession::OpenProgram(const QString &fileName, const Progress &progress) {
    if (!LoadModule())
        return false;
    d->errorString.clear();
    ZYLTPProgramFile::LoadResult loaded = ZYLTPProgramFile::Load(fileName, progress);
    if (!loaded.program) {
        if (!loaded.cancelled)
            d->ReportError(this, tr("%1 could not be opened:\n%2").arg(QDir::toNativeSeparators(fileName), loaded.error));
        return false;
    }
    SetProgram(std::move(loaded.program), QFileInfo(fileName).absoluteFilePath());
    return true;
}

bool ZYLStudioSession::OpenDemo(bool processFaults) {
    if (!LoadModule())
        return false;
    d->errorString.clear();
    SetProgram(ZYLTPDemoGenerator::CreateDefaultProgram(processFaults), QString());
    return true;
}

void ZYLStudioSession::SetProgram(ZYLGeoRef<ZYLTPProgram> program, const QString &fileName) {
    LeaveEditEnvironment();
    // The history's entries point into the program they edited.
    if (d->container)
        d->container->ClearHistory();
    const bool hadProgram = d->program.get() != nullptr;
    d->program = std::move(program);
    d->programFile = fileName;
    MarkSaved();
    if (d->program.get())
        EnterEditEnvironment(d->program.get());
    if (d->program.get() || hadProgram)
        emit ProgramChanged();
}

bool ZYLStudioSession::SaveProgram(const QString &fileName) {
    d->errorString.clear();
    if (!d->program) {
        d->ReportError(this, tr("There is no program to save."));
        return false;
    }
    const QString error = ZYLTPProgramFile::Save(*d->program, fileName);
    if (!error.isEmpty()) {
        d->ReportError(this, tr("%1 could not be saved:\n%2").arg(QDir::toNativeSeparators(fileName), error));
        return false;
    }
    d->programFile = QFileInfo(fileName).absoluteFilePath();
    MarkSaved();
    return true;
}

void ZYLStudioSession::CloseProgram() {
    SetProgram({}, QString());
}

ZYLTPProgram *ZYLStudioSession::GetProgram() const {
    return d->program.get();
}

QString ZYLStudioSession::GetProgramFileName() const {
    return d->programFile;
}

bool ZYLStudioSession::IsModified() const {
    return d->modified;
}

void ZYLStudioSession::MarkSaved() {
    d->savedState = d->container ? d->container->GetHistoryState() : 0;
    UpdateModified();
}

void ZYLStudioSession::UpdateModified() {
    const bool modified = d->program.get() && d->container && d->container->GetHistoryState() != d->savedState;
    if (modified == d->modified)
        return;
    d->modified = modified;
    emit ModifiedChanged(modified);
}

void ZYLStudioSession::Shutdown() {
    if (ZYLCmdController *controller = ZYLCmdController::GetController()) {
        if (ZYLCmdCommand *command = controller->GetCurrentCommand())
            command->Cancel();
    }
    // The history may hold changes made by the module's code: it goes before the module.
    LeaveEditEnvironment();
    if (d->container)
        d->container->ClearHistory();
    d->program = {};
    d->programFile.clear();
    UpdateModified();
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
    UnloadBridge();
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

QString ZYLStudioSession::GetBridgePath() {
#if defined(Q_OS_WIN)
    const QString fileName = QStringLiteral("ZYLStudioBridge.dll");
#else
    const QString fileName = QStringLiteral("libZYLStudioBridge.so");
#endif
    return QDir(GetModuleDirectory()).filePath(fileName);
}
