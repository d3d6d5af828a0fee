// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The session's open program: opening files and the demo, refusing bad files without losing
// anything, saving, closing, and telling whether the program differs from its saved state.
#include "ZYLStudioSession.h"

#include "ZYLEditTPGraphicsMgr.h"

#include "ZYLTPCourse.h"
#include "ZYLTPProgram.h"
#include "ZYLTPProgramBuilder.h"
#include "ZYLTPProgramFile.h"
#include "ZYLTPRollLayupProcedure.h"

#include "ZYLCmdAction.h"
#include "ZYLCmdController.h"
#include "ZYLFeatContainer.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisVirtualObject.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class tst_ZYLStudioSession : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void demoEntersTheEditEnvironmentWithTheFlags();
    void refusedFileKeepsProgramHistoryAndScene_data();
    void refusedFileKeepsProgramHistoryAndScene();
    void cancelledLoadChangesNothingAndReportsNothing();
    void modifiedFollowsSaveEditsUndoAndRedo();
    void openingAnotherProgramStartsAFreshHistory();
    void failedSaveKeepsFileNameAndModified();
    void closeLeavesTheEnvironment();
    void bareProgramsSurviveEveryViewAction_data();
    void bareProgramsSurviveEveryViewAction();

private:
    // Sets the first course's laying feed rate in a transaction of its own.
    void EditFeedRate(double feedRate);
    QString SaveDemoCopy(const QString &name);

    QTemporaryDir m_dir;
    std::unique_ptr<ZYLStudioSession> m_session;
};

void tst_ZYLStudioSession::initTestCase() {
    QVERIFY(m_dir.isValid());
}

void tst_ZYLStudioSession::init() {
    m_session = std::make_unique<ZYLStudioSession>();
    QVERIFY2(m_session->Start(), qPrintable(m_session->GetErrorString()));
}

void tst_ZYLStudioSession::cleanup() {
    m_session.reset();
}

void tst_ZYLStudioSession::EditFeedRate(double feedRate) {
    auto *procedure = qobject_cast<ZYLTPRollLayupProcedure *>(m_session->GetProgram()->GetProcedure(0));
    QVERIFY(procedure);
    ZYLFeatContainer *container = m_session->GetContainer();
    container->OpenTransaction(QStringLiteral("Feed rate"));
    procedure->GetCourseByIndex(0)->SetLayingFeedRate(feedRate);
    container->CommitTransaction();
}

QString tst_ZYLStudioSession::SaveDemoCopy(const QString &name) {
    const QString fileName = m_dir.filePath(name);
    // The session under test holds the demo too: saving from it would change its file name.
    const QString error = ZYLTPProgramFile::Save(*m_session->GetProgram(), fileName);
    return error.isEmpty() ? fileName : QString();
}

void tst_ZYLStudioSession::demoEntersTheEditEnvironmentWithTheFlags() {
    ZYLStudioSession::EditFlags flags;
    flags.layupDirection = true;
    flags.feedTowsIndividually = false;
    flags.feedTowsAtSeparateRates = true;
    m_session->SetEditFlags(flags);
    QSignalSpy changed(m_session.get(), &ZYLStudioSession::ProgramChanged);

    QVERIFY(m_session->OpenDemo());
    QCOMPARE(changed.count(), 1);
    QVERIFY(m_session->GetProgram());
    QVERIFY(m_session->GetProgramFileName().isEmpty());
    QVERIFY(!m_session->IsModified());
    QVERIFY(m_session->IsInEditEnvironment());

    auto *manager = qobject_cast<ZYLEditTPGraphicsMgr *>(m_session->GetGraphicsManager());
    QVERIFY(manager);
    QCOMPARE(manager->GetToolPathProgram(), m_session->GetProgram());
    QCOMPARE(manager->GetLayupDirection(), true);
    QCOMPARE(manager->CanFeedTowsIndividually(), false);
    QCOMPARE(manager->CanFeedTowsAtSeparateRates(), true);
}

void tst_ZYLStudioSession::refusedFileKeepsProgramHistoryAndScene_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("located");
    QTest::newRow("missing") << QByteArray() << QString();
    QTest::newRow("not json") << QByteArray("{ \"format\": ") << QString();
    QTest::newRow("other format") << QByteArray(R"({"format": "spreadsheet", "version": 1})")
                                  << QStringLiteral("format");
    QTest::newRow("newer version") << QByteArray(R"({"format": "zyltp-program", "version": 99})")
                                   << QStringLiteral("version");
}

void tst_ZYLStudioSession::refusedFileKeepsProgramHistoryAndScene() {
    QFETCH(QByteArray, content);
    QFETCH(QString, located);
    const QString fileName = m_dir.filePath(QStringLiteral("bad-%1.zyltp.json").arg(QTest::currentDataTag()));
    if (!content.isEmpty()) {
        QFile file(fileName);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QVERIFY(m_session->OpenDemo());
    EditFeedRate(1234.0);
    const ZYLTPProgram *program = m_session->GetProgram();
    const ZYLVisEnvironment *scene = m_session->GetEditEnvironment();
    QSignalSpy errors(m_session.get(), &ZYLStudioSession::ErrorOccurred);
    QSignalSpy changed(m_session.get(), &ZYLStudioSession::ProgramChanged);

    QVERIFY(!m_session->OpenProgram(fileName));
    QCOMPARE(errors.count(), 1);
    const QString message = m_session->GetErrorString();
    QCOMPARE(errors.first().first().toString(), message);
    QVERIFY2(message.contains(QFileInfo(fileName).fileName()), qPrintable(message));
    if (!located.isEmpty())
        QVERIFY2(message.contains(located), qPrintable(message));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(m_session->GetProgram(), program);
    QCOMPARE(m_session->GetEditEnvironment(), scene);
    QVERIFY(m_session->IsModified());
    QCOMPARE(m_session->GetContainer()->GetUndoName(), QStringLiteral("Feed rate"));
}

void tst_ZYLStudioSession::cancelledLoadChangesNothingAndReportsNothing() {
    QVERIFY(m_session->OpenDemo());
    const QString fileName = SaveDemoCopy(QStringLiteral("cancel.zyltp.json"));
    QVERIFY(!fileName.isEmpty());
    const ZYLTPProgram *program = m_session->GetProgram();
    QSignalSpy errors(m_session.get(), &ZYLStudioSession::ErrorOccurred);
    int calls = 0;
    QVERIFY(!m_session->OpenProgram(fileName, [&calls](double) { return ++calls < 2; }));
    QVERIFY(calls >= 2);
    QCOMPARE(errors.count(), 0);
    QVERIFY(m_session->GetErrorString().isEmpty());
    QCOMPARE(m_session->GetProgram(), program);
}

void tst_ZYLStudioSession::modifiedFollowsSaveEditsUndoAndRedo() {
    QVERIFY(m_session->OpenDemo());
    QSignalSpy modified(m_session.get(), &ZYLStudioSession::ModifiedChanged);
    EditFeedRate(1500.0);
    QVERIFY(m_session->IsModified());
    QCOMPARE(modified.count(), 1);
    QCOMPARE(modified.last().first().toBool(), true);

    const QString fileName = m_dir.filePath(QStringLiteral("saved.zyltp.json"));
    QVERIFY2(m_session->SaveProgram(fileName), qPrintable(m_session->GetErrorString()));
    QVERIFY(!m_session->IsModified());
    QCOMPARE(m_session->GetProgramFileName(), QFileInfo(fileName).absoluteFilePath());

    // Undoing past the save and back again returns to the saved state.
    m_session->GetContainer()->Undo();
    QVERIFY(m_session->IsModified());
    m_session->GetContainer()->Redo();
    QVERIFY(!m_session->IsModified());
    QCOMPARE(modified.count(), 4);

    // A new edit after undoing past the save can never get back to it.
    m_session->GetContainer()->Undo();
    EditFeedRate(1700.0);
    m_session->GetContainer()->Undo();
    QVERIFY(m_session->IsModified());
}

void tst_ZYLStudioSession::openingAnotherProgramStartsAFreshHistory() {
    QVERIFY(m_session->OpenDemo());
    const QString fileName = SaveDemoCopy(QStringLiteral("other.zyltp.json"));
    EditFeedRate(1800.0);
    const ZYLTPProgram *demo = m_session->GetProgram();
    QSignalSpy changed(m_session.get(), &ZYLStudioSession::ProgramChanged);

    QVERIFY2(m_session->OpenProgram(fileName), qPrintable(m_session->GetErrorString()));
    QCOMPARE(changed.count(), 1);
    QVERIFY(m_session->GetProgram() != demo);
    QCOMPARE(m_session->GetProgramFileName(), QFileInfo(fileName).absoluteFilePath());
    QVERIFY(!m_session->GetContainer()->CanUndo());
    QVERIFY(!m_session->IsModified());
    auto *manager = qobject_cast<ZYLEditTPGraphicsMgr *>(m_session->GetGraphicsManager());
    QCOMPARE(manager->GetToolPathProgram(), m_session->GetProgram());
    // The file holds the program as it was before the edit.
    auto *procedure = qobject_cast<ZYLTPRollLayupProcedure *>(m_session->GetProgram()->GetProcedure(0));
    QVERIFY(procedure->GetCourseByIndex(0)->GetLayingFeedRate() != 1800.0);
}

void tst_ZYLStudioSession::failedSaveKeepsFileNameAndModified() {
    QVERIFY(m_session->OpenDemo());
    const QString fileName = SaveDemoCopy(QStringLiteral("kept.zyltp.json"));
    QVERIFY(m_session->OpenProgram(fileName));
    EditFeedRate(1900.0);
    QSignalSpy errors(m_session.get(), &ZYLStudioSession::ErrorOccurred);
    QVERIFY(!m_session->SaveProgram(m_dir.filePath(QStringLiteral("no/such/folder/x.zyltp.json"))));
    QCOMPARE(errors.count(), 1);
    QVERIFY(!m_session->GetErrorString().isEmpty());
    QCOMPARE(m_session->GetProgramFileName(), QFileInfo(fileName).absoluteFilePath());
    QVERIFY(m_session->IsModified());
}

void tst_ZYLStudioSession::closeLeavesTheEnvironment() {
    QVERIFY(m_session->OpenDemo());
    EditFeedRate(2000.0);
    QSignalSpy changed(m_session.get(), &ZYLStudioSession::ProgramChanged);
    m_session->CloseProgram();
    QCOMPARE(changed.count(), 1);
    QVERIFY(!m_session->GetProgram());
    QVERIFY(!m_session->IsInEditEnvironment());
    QVERIFY(!m_session->IsModified());
    QVERIFY(!m_session->GetContainer()->CanUndo());
    QVERIFY(!m_session->SaveProgram(m_dir.filePath(QStringLiteral("none.zyltp.json"))));
    // Closing again is harmless and announces nothing.
    m_session->CloseProgram();
    QCOMPARE(changed.count(), 1);
}

void tst_ZYLStudioSession::bareProgramsSurviveEveryViewAction_data() {
    QTest::addColumn<bool>("withProcedure");
    QTest::newRow("empty program") << false;
    QTest::newRow("procedure without courses, surface or tools") << true;
}

// What the manager and the view command must cope with: nothing to draw.
void tst_ZYLStudioSession::bareProgramsSurviveEveryViewAction() {
    QFETCH(bool, withProcedure);
    ZYLTPProgramBuilder builder;
    if (withProcedure)
        builder.AddRollLayupProcedure(QStringLiteral("Ply"), QString());
    ZYLGeoRef<ZYLTPProgram> program(builder.TakeProgram());
    QVERIFY(m_session->EnterEditEnvironment(program.get()));
    auto *manager = qobject_cast<ZYLEditTPGraphicsMgr *>(m_session->GetGraphicsManager());
    QVERIFY(manager);
    QCOMPARE(manager->GetMachineHeadVirtualNode(), nullptr);

    int triggered = 0;
    const QList<ZYLCmdAction *> actions = ZYLCmdController::GetController()->GetActions();
    for (ZYLCmdAction *action : actions) {
        if (!action->GetKey().startsWith("ZYLToolPathViewCmd."))
            continue;
        action->trigger();
        ++triggered;
    }
    QCOMPARE(triggered, 21);
    QVERIFY(m_session->IsInEditEnvironment());
    m_session->LeaveEditEnvironment();
}

QTEST_MAIN(tst_ZYLStudioSession)
#include "tst_ZYLStudioSession.moc"
