// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The session's open program: the demo enters the edit environment with the session's flags,
// and a failed save keeps the file name and the modified state.
#include "ZYLStudioSession.h"

#include "ZYLEditTPGraphicsMgr.h"

#include "ZYLTPCourse.h"
#include "ZYLTPProgramFile.h"
#include "ZYLTPRollLayupProcedure.h"

#include "ZYLFeatContainer.h"

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
    void failedSaveKeepsFileNameAndModified();

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

QTEST_MAIN(tst_ZYLStudioSession)
#include "tst_ZYLStudioSession.moc"
