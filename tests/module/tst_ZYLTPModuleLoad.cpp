// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The tool path module as its host sees it: loaded at run time through the session, it
// registers its command classes and publishes its actions in catalogue order, exports only
// its interface, and takes everything back when it is unloaded.
#include "ZYLStudioSession.h"

#include "ZYLCmdAction.h"
#include "ZYLCmdCommand.h"
#include "ZYLCmdController.h"
#include "ZYLCmdDialogCommand.h"
#include "ZYLCmdDialogHandler.h"
#include "ZYLFeatContainer.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLSysRegisterInit.h"

#include <QDir>
#include <QPointer>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <dlfcn.h>

#include <memory>

namespace {

struct CatalogueRow {
    const char *commandClass;
    const char *actionName;
    const char *iconId;
    const char *label;
    const char *tooltip;
    const char *mode; // null: no properties
};

// The published actions, in the order in which the host must receive them.
const QList<CatalogueRow> &Catalogue() {
    static const QList<CatalogueRow> rows{
        {"ZYLTPCollisionInspectorCmd", "View", "collision-table", "Collision", "View Collision Information", nullptr},
        {"ZYLTPContextualViewCmd", "View", "tool-path-contextual", "Contextual", "View Contextual Toolpath", nullptr},
        {"ZYLTPDetailedInfoCmd", "View", "info-detailed", "Detailed", "View Detailed Info", nullptr},
        {"ZYLTPEditCourseCmd", "Edit", "courses-edit", "Edit Course", "Edits course", "edit"},
        {"ZYLTPEditCourseLayingPointsCmd", "Edit", "laying-points-edit", "Laying Points",
         "Edits the laying points of a course", "edit"},
        {"ZYLTPEditLinkingPointsCmd", "Edit", "linking-points-edit", "Linking Points", "Edit linking points", "edit"},
        {"ZYLTPEditLinksCmd", "Edit", "links-edit", "Links", "Edit links", "edit"},
        {"ZYLToolPathViewCmd", "ViewCourse", "display-tool-path-course", "Toolpath (Course)", "View tool path course",
         "ViewCourse"},
        {"ZYLToolPathViewCmd", "ViewCoursePolyline", "tool-path-polyline-view", "Toolpath (Polyline)",
         "View tool path course polyline", "ViewCoursePolyline"},
        {"ZYLToolPathViewCmd", "ViewCourseAndPolyline", "tool-path-course-and-polyline-view",
         "Toolpath (Course And Polyline)", "View tool path course and polyline", "ViewCourseAndPolyline"},
        {"ZYLToolPathViewCmd", "HideCourse", "courses-hidden", "Hide Toolpath", "Hide toolpath", "HideCourse"},
        {"ZYLToolPathViewCmd", "ViewLayingPointsWithToolAxis", "laying-points-tool-axis", "Laying Points (Tool Axis)",
         "View laying points with tool axis", "ViewLayingPointsWithToolAxis"},
        {"ZYLToolPathViewCmd", "ViewLayingPointsWithToolAndLayingAxes", "laying-points-tool-laying-axes",
         "Laying Points (Tool Axis + Laying Direction)", "View laying points with tool and laying axes",
         "ViewLayingPointsWithToolAndLayingAxes"},
        {"ZYLToolPathViewCmd", "ViewLayingPointsWithAllAxes", "laying-points-all-axes", "Laying Points (All Axes)",
         "View tool path course and polyline", "ViewLayingPointsWithAllAxes"},
        {"ZYLToolPathViewCmd", "HideLayingPoints", "laying-pints-hidden", "Hide Laying Points", "Hide laying points",
         "HideLayingPoints"},
        {"ZYLToolPathViewCmd", "ViewCourseLinksWithPointsOnly", "links-points", "Links (Points Only)",
         "Show links with points only", "ViewCourseLinksWithPointsOnly"},
        {"ZYLToolPathViewCmd", "ViewCourseLinksWithRollerAxis", "links-tool-axis", "Links (Tool Axis)",
         "Show links with roller axis", "ViewCourseLinksWithRollerAxis"},
        {"ZYLToolPathViewCmd", "ViewCourseLinksWithAllAxes", "links-all-axes", "Links (All Axes)",
         "Show links with all axes", "ViewCourseLinksWithAllAxes"},
        {"ZYLToolPathViewCmd", "HideCourseLinks", "links-hidden", "Hide Course Links", "Hide course links",
         "HideCourseLinks"},
        {"ZYLToolPathViewCmd", "ViewLinkPointsOnly", "linking-points", "Linking Points Only",
         "View linking points only", "ViewLinkPointsOnly"},
        {"ZYLToolPathViewCmd", "ViewLinkPointsWithToolAxis", "linking-points-tool-axes", "Linking Points (Tool Axis)",
         "View laying points with tool axis", "ViewLinkPointsWithToolAxis"},
        {"ZYLToolPathViewCmd", "ViewLinkingPointsWithToolAndLayingAxes", "linking-points-tool-laying-axes",
         "Linking Points (Tool Axis + Laying Direction)", "View linking points with tool and laying axes",
         "ViewLinkingPointsWithToolAndLayingAxes"},
        {"ZYLToolPathViewCmd", "ViewLinkingPointsWithAllAxes", "linking-points-all-axes", "Linking Points (All Axes)",
         "View tool path course and polyline", "ViewLinkingPointsWithAllAxes"},
        {"ZYLToolPathViewCmd", "HideLinkingPoints", "linking-points-hidden", "Hide Linking Points",
         "Hide linking points", "HideLinkingPoints"},
        {"ZYLToolPathViewCmd", "ViewSurface", "surface-hidden", "Surface", "Show/Hide surface", "ViewSurface"},
        {"ZYLToolPathViewCmd", "ViewPlyBoundary", "ply-boundary-in-edit-tool-path-off", "Ply Boundary",
         "Show/Hide ply boundary", "ViewPlyBoundary"},
        {"ZYLToolPathViewCmd", "ViewHead", "head-off", "Machine Head", "Show/Hide machine head", "ViewHead"},
        {"ZYLToolPathViewCmd", "ViewRoller", "roller-off", "Roller", "Show/Hide roller", "ViewRoller"},
    };
    return rows;
}

QByteArray KeyOf(const CatalogueRow &row) {
    return QByteArray(row.commandClass) + '.' + row.actionName;
}

struct CommandClass {
    const char *name;
    const char *label;
    bool isDialog;
};

// The registered command classes, in registration order.
const QList<CommandClass> &CommandClasses() {
    static const QList<CommandClass> classes{
        {"ZYLTPCollisionInspectorCmd", "View Collision Infomation", true},
        {"ZYLTPContextualViewCmd", "View contextual tool path", true},
        {"ZYLTPDetailedInfoCmd", "View detailed info", true},
        {"ZYLTPEditCourseCmd", "Edit course", true},
        {"ZYLTPEditCourseLayingPointsCmd", "Machine", true},
        {"ZYLTPEditLinkingPointsCmd", "Edit Linking points", true},
        {"ZYLTPEditLinksCmd", "Edit Links", true},
        {"ZYLToolPathViewCmd", "View toolpath", false},
    };
    return classes;
}

QList<QByteArray> PublishedKeys() {
    QList<QByteArray> keys;
    for (const ZYLCmdAction *action : ZYLCmdController::GetController()->GetActions())
        keys.append(action->GetKey());
    return keys;
}

QList<QByteArray> RegisteredClassNames() {
    QList<QByteArray> names;
    for (const QMetaObject *meta : ZYLCmdController::GetController()->GetRegisteredCommands())
        names.append(meta->className());
    return names;
}

// Whether the dynamic linker still has the library mapped (QLibrary only knows its own count).
bool IsMapped(const QString &path) {
    void *handle = dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_NOLOAD);
    if (handle)
        dlclose(handle);
    return handle != nullptr;
}

// The module's flag, looked up by name as a host does; null while the module is not mapped.
bool *LoadedFlag(const QString &path) {
    void *handle = dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_NOLOAD);
    if (!handle)
        return nullptr;
    auto *flag = static_cast<bool *>(dlsym(handle, "_ZYLToolPathUILoaded"));
    dlclose(handle);
    return flag;
}

// The exported dynamic symbols of a library, demangled, as "type name" lines.
QStringList ReadExportedSymbols(const QString &path, QString *error) {
    QProcess nm;
    nm.start(QStringLiteral("nm"),
             {QStringLiteral("-D"), QStringLiteral("--defined-only"), QStringLiteral("-C"), path});
    if (!nm.waitForFinished(60000) || nm.exitStatus() != QProcess::NormalExit || nm.exitCode() != 0) {
        *error = nm.errorString() + QString::fromLocal8Bit(nm.readAllStandardError());
        return {};
    }
    QStringList symbols;
    static const QRegularExpression line(QStringLiteral("^[0-9a-fA-F]*\\s+(\\S)\\s+(.+)$"));
    for (const QString &text : QString::fromLocal8Bit(nm.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts)) {
        const QRegularExpressionMatch match = line.match(text);
        if (match.hasMatch())
            symbols.append(match.captured(1) + u' ' + match.captured(2));
    }
    return symbols;
}

// The module's exported symbols, read once per run.
QStringList ExportedSymbols(const QString &path, QString *error) {
    static QString readError;
    static const QStringList symbols = ReadExportedSymbols(path, &readError);
    *error = readError;
    return symbols;
}

// The classes whose members the module exports.
const QStringList ExportedClasses{QStringLiteral("ZYLEditTPGraphicsMgr"), QStringLiteral("ZYLTPEditUISettings"),
                                  QStringLiteral("ZYLTPEditCourseLayingPointsCmd"),
                                  QStringLiteral("ZYLTPEditLinkingPointsCmd"), QStringLiteral("ZYLTPEditLinksCmd")};

} // namespace

class tst_ZYLTPModuleLoad : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void cleanup();

    // Runs first: it needs the host not yet initialised.
    void loadedFlagIsSetByTheInitCallback();
    void publishesExactlyTheCatalogue();
    void registersExactlyTheCommandClasses();
    void viewCommandEndsAtOnce_data();
    void viewCommandEndsAtOnce();
    void exportsItsInterface_data();
    void exportsItsInterface();
    void exportsNothingElse();
    void loadFailureIsReported();
    // Runs last: it unloads the module, then loads it again.
    void unloadWithdrawsEverything();

private:
    ZYLStudioSession *m_session = nullptr;
};

void tst_ZYLTPModuleLoad::initTestCase() {
    m_session = new ZYLStudioSession(this);
    m_session->StartHost();
    QVERIFY2(m_session->LoadModule(), qPrintable(m_session->GetErrorString()));
    QVERIFY(m_session->IsModuleLoaded());
    QCOMPARE(ZYLFeatEnvironmentManager::GetManager()->GetCurrentEnvironment(), m_session->GetEnvironment());
}

void tst_ZYLTPModuleLoad::cleanupTestCase() {
    m_session->Shutdown();
}

void tst_ZYLTPModuleLoad::cleanup() {
    // A failed check must not leave a command running into the next test.
    ZYLCmdController::GetController()->Reject();
}

void tst_ZYLTPModuleLoad::loadedFlagIsSetByTheInitCallback() {
    if (ZYLSysIsInitialized())
        QSKIP("The host was initialised by an earlier test of this run.");
    bool *flag = LoadedFlag(ZYLStudioSession::GetModulePath());
    QVERIFY(flag);
    // Holding what the registration returned: true for a queued callback.
    QVERIFY(*flag);
    QVERIFY(m_session->IsModuleReady());
    // Cleared here so that only the module's callback can set it again.
    *flag = false;
    QVERIFY(!m_session->IsModuleReady());
    QCOMPARE(ZYLSysRunInitCallbacks(), 1);
    QVERIFY(*flag);
    QVERIFY(m_session->IsModuleReady());
}

// Every field of every action in one line, so that one comparison checks the whole catalogue
// and names the first action that differs.
void tst_ZYLTPModuleLoad::publishesExactlyTheCatalogue() {
    QStringList expected, published;
    for (const CatalogueRow &row : Catalogue())
        expected << QStringList{QString::fromLatin1(KeyOf(row)), row.iconId, row.label, row.label, row.tooltip,
                                row.mode ? QStringLiteral("mode=") + row.mode : QString(), "0 0"}
                        .join(u'|');
    ZYLCmdController *controller = ZYLCmdController::GetController();
    for (const ZYLCmdAction *action : controller->GetActions()) {
        // The key is the command class and the name, and finds the action again.
        QCOMPARE(action->GetKey(), action->GetCommandClass() + '.' + action->GetName());
        QCOMPARE(controller->GetAction(action->GetKey()), action);
        QStringList properties;
        for (auto it = action->GetProperties().cbegin(); it != action->GetProperties().cend(); ++it)
            properties << it.key() + u'=' + it.value().toString();
        published << QStringList{QString::fromLatin1(action->GetKey()), action->GetIconId(), action->GetLabel(),
                                 action->text(), action->GetTooltip(), properties.join(u','),
                                 QStringLiteral("%1 %2").arg(quintptr(action->GetSelectionFilter()))
                                     .arg(int(action->GetFilterBehavior()))}
                         .join(u'|');
    }
    QCOMPARE(published, expected);
}

// Each class as the controller makes it, with a parent and nothing else, described in one line.
void tst_ZYLTPModuleLoad::registersExactlyTheCommandClasses() {
    QStringList expected, registered;
    for (const CommandClass &commandClass : CommandClasses())
        expected << QStringLiteral("%1|%2|%3|1 0")
                        .arg(QLatin1String(commandClass.name), QLatin1String(commandClass.label))
                        .arg(commandClass.isDialog);
    for (const QMetaObject *meta : ZYLCmdController::GetController()->GetRegisteredCommands()) {
        const int labelIndex = meta->indexOfClassInfo("label");
        QVERIFY(labelIndex >= meta->classInfoOffset());
        QObject parent;
        std::unique_ptr<QObject> instance(meta->newInstance(Q_ARG(QObject *, &parent)));
        auto *command = qobject_cast<ZYLCmdCommand *>(instance.get());
        QVERIFY2(command, meta->className());
        QCOMPARE(command->parent(), &parent);
        QCOMPARE(command->GetLabel(), QString::fromLatin1(meta->classInfo(labelIndex).value()));
        registered << QStringLiteral("%1|%2|%3|%4 %5")
                          .arg(QLatin1String(meta->className()), QLatin1String(meta->classInfo(labelIndex).value()))
                          .arg(meta->inherits(&ZYLCmdDialogCommand::staticMetaObject))
                          .arg(int(command->GetConcurrencyBehavior()))
                          .arg(int(command->GetTransactionBehavior()));
    }
    QCOMPARE(registered, expected);
}

void tst_ZYLTPModuleLoad::viewCommandEndsAtOnce_data() {
    QTest::addColumn<QByteArray>("key");
    for (const CatalogueRow &row : Catalogue()) {
        if (qstrcmp(row.commandClass, "ZYLToolPathViewCmd") == 0)
            QTest::newRow(row.actionName) << KeyOf(row);
    }
}

void tst_ZYLTPModuleLoad::viewCommandEndsAtOnce() {
    QFETCH(QByteArray, key);
    ZYLCmdController *controller = ZYLCmdController::GetController();
    ZYLFeatContainer *container = m_session->GetContainer();
    const int undoSteps = container->GetUndoCount();
    QSignalSpy finished(controller, &ZYLCmdController::CommandFinished);

    QVERIFY(controller->Trigger(key));

    QCOMPARE(finished.count(), 1);
    const QPointer<QObject> command = finished.at(0).at(0).value<ZYLCmdCommand *>();
    QVERIFY(command);
    QVERIFY(finished.at(0).at(1).toBool());
    QCOMPARE(command->property("mode").toString(), QString::fromLatin1(key.mid(key.indexOf('.') + 1)));
    QCOMPARE(controller->GetCurrentCommand(), nullptr);
    QVERIFY(!controller->GetDialogHandler()->IsPanelShown());
    QCOMPARE(container->GetUndoCount(), undoSteps);
}

void tst_ZYLTPModuleLoad::exportsItsInterface_data() {
    QTest::addColumn<QString>("symbol");
    QTest::newRow("flag") << QStringLiteral("_ZYLToolPathUILoaded");
    for (const char *name :
         {"ZYLTPEditUISettings", "ZYLTPEditCourseLayingPointsCmd", "ZYLTPEditLinkingPointsCmd", "ZYLTPEditLinksCmd"}) {
        const QString c = QString::fromLatin1(name);
        for (const QString &member :
             {c + QStringLiteral("::staticMetaObject"), c + QStringLiteral("::metaObject() const"),
              c + QStringLiteral("::qt_metacast(char const*)"),
              c + QStringLiteral("::qt_metacall(QMetaObject::Call, int, void**)"), QStringLiteral("vtable for ") + c,
              QStringLiteral("typeinfo for ") + c, QStringLiteral("%1::~%1()").arg(c)})
            QTest::newRow(qPrintable(member)) << member;
    }
    QTest::newRow("settings instance") << QStringLiteral("ZYLTPEditUISettings::GetInstance()");
    QTest::newRow("settings constructor")
        << QStringLiteral("ZYLTPEditUISettings::ZYLTPEditUISettings(QByteArray const&)");
    QTest::newRow("settings revert") << QStringLiteral("ZYLTPEditUISettings::RevertToDefaults()");
    QTest::newRow("settings getter") << QStringLiteral("ZYLTPEditUISettings::GetViewLinkPointsMode() const");
    QTest::newRow("settings setter") << QStringLiteral("ZYLTPEditUISettings::SetViewRoller(bool)");
    for (const char *name : {"ZYLTPEditCourseLayingPointsCmd", "ZYLTPEditLinkingPointsCmd", "ZYLTPEditLinksCmd"}) {
        const QString c = QString::fromLatin1(name);
        for (const QString &member : {c + QStringLiteral("::_Publisher"), QStringLiteral("%1::%1(QObject*)").arg(c),
                                      c + QStringLiteral("::CreateContentWidget(QWidget*)")})
            QTest::newRow(qPrintable(member)) << member;
    }
}

void tst_ZYLTPModuleLoad::exportsItsInterface() {
    QFETCH(QString, symbol);
    QString error;
    const QStringList symbols = ExportedSymbols(ZYLStudioSession::GetModulePath(), &error);
    QVERIFY2(!symbols.isEmpty(), qPrintable(error));
    bool found = false;
    for (const QString &exported : symbols)
        found = found || exported.mid(2) == symbol;
    QVERIFY2(found, qPrintable(symbol));
}

void tst_ZYLTPModuleLoad::exportsNothingElse() {
    QString error;
    const QStringList symbols = ExportedSymbols(ZYLStudioSession::GetModulePath(), &error);
    QVERIFY2(!symbols.isEmpty(), qPrintable(error));
    const QRegularExpression member(QStringLiteral("^(?:vtable for |typeinfo for |typeinfo name for )?(?:%1)(?:::|$)")
                                        .arg(ExportedClasses.join(u'|')));
    const QStringList runtime{QStringLiteral("_ZYLToolPathUILoaded"), QStringLiteral("_init"),  QStringLiteral("_fini"),
                              QStringLiteral("__bss_start"),          QStringLiteral("_edata"), QStringLiteral("_end")};
    for (const QString &symbol : symbols) {
        const QString name = symbol.mid(2);
        // GNU unique symbols would keep the module mapped after it is unloaded.
        QVERIFY2(symbol.at(0) != u'u', qPrintable(symbol));
        QVERIFY2(member.match(name).hasMatch() || runtime.contains(name),
                 qPrintable(QStringLiteral("stray export: ") + symbol));
    }
}

void tst_ZYLTPModuleLoad::loadFailureIsReported() {
    QTemporaryDir empty;
    QVERIFY(empty.isValid());
    qputenv("ZYL_MODULE_DIR", QFile::encodeName(empty.path()));
    ZYLStudioSession other;
    QSignalSpy errors(&other, &ZYLStudioSession::ErrorOccurred);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("could not be loaded")));
    const bool loaded = other.LoadModule();
    qunsetenv("ZYL_MODULE_DIR");
    QVERIFY(!loaded);
    QVERIFY(!other.IsModuleLoaded());
    QVERIFY(!other.IsModuleReady());
    QCOMPARE(errors.count(), 1);
    // The loader's own message names the missing file.
    QVERIFY2(other.GetErrorString().contains(QDir(empty.path()).filePath(QStringLiteral("libZYLToolPathUI.so"))),
             qPrintable(other.GetErrorString()));
    QCOMPARE(errors.at(0).at(0).toString(), other.GetErrorString());
    // The module loaded by the first session is untouched.
    QCOMPARE(PublishedKeys().size(), Catalogue().size());
    other.Shutdown();
    // Shutting the second session down gave the current environment back to nobody; the
    // remaining tests need the first session's.
    ZYLFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(m_session->GetEnvironment());
}

void tst_ZYLTPModuleLoad::unloadWithdrawsEverything() {
    ZYLCmdController *controller = ZYLCmdController::GetController();
    const QString path = ZYLStudioSession::GetModulePath();
    QVERIFY(controller->Trigger("ZYLTPEditLinksCmd.Edit"));
    QPointer<ZYLCmdCommand> running = controller->GetCurrentCommand();
    QVERIFY(running);
    QSignalSpy finished(controller, &ZYLCmdController::CommandFinished);

    m_session->Shutdown();

    QCOMPARE(finished.count(), 1);
    QVERIFY(!finished.at(0).at(1).toBool());
    QVERIFY(!running);
    QVERIFY(PublishedKeys().isEmpty());
    QVERIFY(RegisteredClassNames().isEmpty());
    QVERIFY(!m_session->IsModuleLoaded());
    QVERIFY(!IsMapped(path));
    QCOMPARE(ZYLFeatEnvironmentManager::GetManager()->GetCurrentEnvironment(), nullptr);
    QCOMPARE(m_session->GetContainer(), nullptr);

    // A second start loads and publishes again; the host is initialised by now, so the
    // module's callback runs as it registers.
    QVERIFY2(m_session->Start(), qPrintable(m_session->GetErrorString()));
    QVERIFY(m_session->IsModuleReady());
    QCOMPARE(PublishedKeys().size(), Catalogue().size());
    QCOMPARE(RegisteredClassNames().size(), CommandClasses().size());
}

QTEST_MAIN(tst_ZYLTPModuleLoad)
#include "tst_ZYLTPModuleLoad.moc"
