// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The studio's background process checks on a real session: what they find is what the
// model's check finds, edits of the rules rerun them and undo brings the old outcome back,
// cancelling drops a run, and the colouring switch is remembered.
#include "ZYLStudioProcessChecks.h"
#include "ZYLStudioProcessRulesDialog.h"
#include "ZYLStudioSession.h"

#include "ZYLTPCourseVisRep.h"
#include "ZYLTPProcessCheck.h"
#include "ZYLTPProcessColoring.h"
#include "ZYLTPProgram.h"
#include "ZYLTPProgramFile.h"

#include "ZYLCmnUnitSpinBox.h"
#include "ZYLFeatContainer.h"
#include "ZYLVisEnvironment.h"
#include "ZYLVisVirtualObject.h"

#include <QTest>

class tst_ZYLStudioProcessChecks : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void findsWhatTheModelFinds();
    void rulesEditRerunsAndUndoes();
    void cancelDropsTheRun();
    void coloringIsRemembered();

private:
    static QStringList Describe(const ZYLTPProcessCheck &check);
    int RedCourses() const;
    ZYLStudioSession m_session;
    std::unique_ptr<ZYLStudioProcessChecks> m_checks;
};

QStringList tst_ZYLStudioProcessChecks::Describe(const ZYLTPProcessCheck &check)
{
    QStringList lines;
    for (const ZYLTPProcessCheck::Violation &v : check.GetViolations())
        lines << QStringLiteral("%1 %2 %3-%4 %5").arg(v.kind).arg(v.course).arg(v.firstPoint).arg(v.lastPoint).arg(v.value);
    return lines;
}

void tst_ZYLStudioProcessChecks::initTestCase()
{
    QVERIFY2(m_session.Start(), qPrintable(m_session.GetErrorString()));
    QVERIFY(m_session.OpenDemo(true));
    m_checks = std::make_unique<ZYLStudioProcessChecks>(&m_session);
    QVERIFY(m_checks->WaitForIdle(30000));
}

void tst_ZYLStudioProcessChecks::findsWhatTheModelFinds()
{
    QVERIFY(m_checks->GetCheck());
    const QStringList found = Describe(*m_checks->GetCheck());
    QCOMPARE(found, Describe(ZYLTPProcessCheck::Run(*m_session.GetProgram())));
    QVERIFY(found.size() >= 4);
}

void tst_ZYLStudioProcessChecks::rulesEditRerunsAndUndoes()
{
    const QByteArray saved = ZYLTPProgramFile::Serialize(*m_session.GetProgram());
    const QStringList before = Describe(*m_checks->GetCheck());
    ZYLStudioProcessRulesDialog dialog(m_session.GetProgram(), m_session.GetContainer());
    dialog.findChild<ZYLCmnUnitSpinBox *>(QStringLiteral("minRadiusSpin"))->setValue(100.0);
    dialog.findChild<ZYLCmnUnitSpinBox *>(QStringLiteral("minCourseSpin"))->setValue(0.0);
    dialog.accept();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QVERIFY(m_checks->WaitForIdle(30000));
    const ZYLTPProcessCheck &after = *m_checks->GetCheck();
    QCOMPARE(after.GetRules().minSteeringRadius, 100.0);
    QCOMPARE(after.CountViolations(ZYLTPProcessCheck::SteeringRadius), 0);
    QCOMPARE(after.CountViolations(ZYLTPProcessCheck::CourseLength), 0);
    QVERIFY(after.CountViolations(ZYLTPProcessCheck::CutLength) > 0);

    m_session.GetContainer()->Undo();
    QVERIFY(m_checks->WaitForIdle(30000));
    QCOMPARE(Describe(*m_checks->GetCheck()), before);
    QCOMPARE(ZYLTPProgramFile::Serialize(*m_session.GetProgram()), saved);
}

void tst_ZYLStudioProcessChecks::cancelDropsTheRun()
{
    const auto previous = m_checks->GetCheck();
    m_checks->Schedule();
    QVERIFY(m_checks->IsRunning());
    m_checks->Cancel();
    QVERIFY(!m_checks->IsRunning());
    QTest::qWait(200);
    QCOMPARE(m_checks->GetCheck(), previous);
}

// Returns the number of course nodes of the scene drawn with the colour of tight stretches.
int tst_ZYLStudioProcessChecks::RedCourses() const
{
    int count = 0;
    const QRgb red = ZYLTPProcessColoring::GetBinColor(0).rgb();
    for (ZYLVisVirtualObject *object : m_session.GetEditEnvironment()->GetVirtualObjects()) {
        const auto *rep = qobject_cast<const ZYLTPCourseVisRep *>(object->GetRep());
        for (int k = 0; rep && k < rep->GetNumPrimitives(); ++k) {
            if (rep->GetOptions(k).GetColor().rgb() == red) {
                ++count;
                break;
            }
        }
    }
    return count;
}

void tst_ZYLStudioProcessChecks::coloringIsRemembered()
{
    QVERIFY(!ZYLTPProcessColoring::GetCheck());
    QCOMPARE(RedCourses(), 0);
    m_checks->SetColoringEnabled(true);
    QCOMPARE(ZYLTPProcessColoring::GetCheck(), m_checks->GetCheck());
    // The courses with S-bends, and they alone, turn red; gentler rules recolour them.
    const int bent = RedCourses();
    QVERIFY(bent > 0 && bent <= m_checks->GetCheck()->CountViolations(ZYLTPProcessCheck::SteeringRadius));
    m_session.GetContainer()->OpenTransaction(QStringLiteral("Rules"));
    ZYLTPProcessRules gentle;
    gentle.minSteeringRadius = 100.0;
    m_session.GetProgram()->SetProcessRules(gentle);
    m_session.GetContainer()->CommitTransaction();
    QVERIFY(m_checks->WaitForIdle(30000));
    QCOMPARE(RedCourses(), 0);
    m_session.GetContainer()->Undo();
    QVERIFY(m_checks->WaitForIdle(30000));
    QCOMPARE(RedCourses(), bent);
    QVERIFY(ZYLStudioProcessChecks(&m_session).IsColoringEnabled());
    m_checks->SetColoringEnabled(false);
    QVERIFY(!ZYLTPProcessColoring::GetCheck());
    QVERIFY(!ZYLStudioProcessChecks(&m_session).IsColoringEnabled());
}

QTEST_MAIN(tst_ZYLStudioProcessChecks)
#include "tst_ZYLStudioProcessChecks.moc"
