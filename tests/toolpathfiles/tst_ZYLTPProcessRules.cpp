// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPDemoGenerator.h"
#include "ZYLTPProcessCheck.h"
#include "ZYLTPProgramFile.h"

#include "ZYLFeatContainer.h"
#include "ZYLSysOutOfBoundsException.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// Process rules in program files and through their setter, and `zyltp process` as a user
// runs it, against the same check run in process.
class tst_ZYLTPProcessRules : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void rulesInFile_data();
    void rulesInFile();
    void setterRefusesAndUndoes();
    void zyltpProcess_data();
    void zyltpProcess();

private:
    QTemporaryDir m_dir;
    ZYLGeoRef<ZYLTPProgram> m_demo;
    QString m_file;
};

void tst_ZYLTPProcessRules::initTestCase()
{
    ZYLTPDemoGenerator::Parameters p;
    p.courses = 20;
    p.processFaults = true;
    m_demo = ZYLTPDemoGenerator::Create(p);
    m_file = m_dir.filePath(QStringLiteral("faults.zyltp.json"));
    QCOMPARE(ZYLTPProgramFile::Save(*m_demo, m_file), QString());
}

void tst_ZYLTPProcessRules::rulesInFile_data()
{
    QTest::addColumn<QByteArray>("member"); // replaces the file's end "}\n"; empty: none
    QTest::addColumn<QString>("error");     // part of the load error; empty: loads
    QTest::addColumn<double>("minCut");
    QTest::newRow("none: defaults") << QByteArray() << QString() << 100.0;
    QTest::newRow("set") << QByteArray(R"(,"process_rules":{"tow_width":12.7,"min_steering_radius":2000,)"
                                       R"("min_cut_length":80,"min_add_length":90,"min_course_length":0}})")
                         << QString() << 80.0;
    QTest::newRow("zero radius") << QByteArray(R"(,"process_rules":{"tow_width":6,"min_steering_radius":0,)"
                                               R"("min_cut_length":80,"min_add_length":90,"min_course_length":0}})")
                                 << QStringLiteral("process_rules.min_steering_radius: Value 0") << 0.0;
    QTest::newRow("negative length") << QByteArray(R"(,"process_rules":{"tow_width":6,"min_steering_radius":9,)"
                                                   R"("min_cut_length":-1,"min_add_length":90,"min_course_length":0}})")
                                     << QStringLiteral("process_rules.min_cut_length: Value -1") << 0.0;
    QTest::newRow("missing member") << QByteArray(R"(,"process_rules":{"tow_width":6}})")
                                    << QStringLiteral("process_rules.min_steering_radius: missing") << 0.0;
}

void tst_ZYLTPProcessRules::rulesInFile()
{
    QFETCH(QByteArray, member);
    QFETCH(QString, error);
    QFETCH(double, minCut);
    const QByteArray original = ZYLTPProgramFile::Serialize(*m_demo);
    QVERIFY(!original.contains("process_rules"));
    QByteArray bytes = original;
    if (!member.isEmpty())
        bytes.replace(bytes.size() - 2, 1, member);
    const ZYLTPProgramFile::LoadResult loaded = ZYLTPProgramFile::Parse(bytes);
    if (!error.isEmpty()) {
        QVERIFY2(!loaded.program && loaded.error.contains(error), qPrintable(loaded.error));
        return;
    }
    QVERIFY2(loaded.program, qPrintable(loaded.error));
    QCOMPARE(loaded.program->GetProcessRules().minCutLength, minCut);
    // Saved again byte for byte: with the member where it was given, without it otherwise.
    QCOMPARE(ZYLTPProgramFile::Serialize(*loaded.program), bytes);
}

void tst_ZYLTPProcessRules::setterRefusesAndUndoes()
{
    ZYLFeatContainer container;
    ZYLTPProcessRules bad;
    bad.towWidth = -2.0;
    ZYLTPProcessRules good;
    good.minAddLength = 40.0;
    container.OpenTransaction(QStringLiteral("Rules"));
    QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, m_demo->SetProcessRules(bad));
    m_demo->SetProcessRules(good);
    container.CommitTransaction();
    QCOMPARE(m_demo->GetProcessRules(), good);
    QVERIFY(ZYLTPProgramFile::Serialize(*m_demo).contains(R"("min_add_length":40)"));
    container.Undo();
    QCOMPARE(m_demo->GetProcessRules(), ZYLTPProcessRules());
    container.ClearHistory();
}

void tst_ZYLTPProcessRules::zyltpProcess_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<double>("minRadius"); // the radius rule the run should apply
    QTest::newRow("program's rules") << QStringList() << 1 << 1350.0;
    QTest::newRow("gentler radius") << QStringList{"--min-radius", "500", "--min-add", "0", "--min-cut", "0",
                                                   "--min-course", "0"} << 0 << 500.0;
    QTest::newRow("zero radius") << QStringList{"--min-radius", "0"} << 2 << 0.0;
    QTest::newRow("negative cut") << QStringList{"--min-cut", "-5"} << 2 << 0.0;
}

void tst_ZYLTPProcessRules::zyltpProcess()
{
    QFETCH(QStringList, options);
    QFETCH(int, exitCode);
    QFETCH(double, minRadius);
    const QString csv = m_dir.filePath(QStringLiteral("violations.csv"));
    QFile::remove(csv);
    QProcess process;
    process.start(QStringLiteral(ZYLTP_EXECUTABLE),
                  QStringList{QStringLiteral("process"), m_file, QStringLiteral("--csv"), csv} + options);
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitCode(), exitCode);
    if (exitCode == 2)
        return;
    ZYLTPProcessRules rules;
    rules.minSteeringRadius = minRadius;
    if (exitCode == 0)
        rules.minAddLength = rules.minCutLength = rules.minCourseLength = 0.0;
    const ZYLTPProcessCheck check = ZYLTPProcessCheck::Run(ZYLTPProcessCheck::Capture(*m_demo, rules));
    QFile file(csv);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    QCOMPARE(lines.size(), qsizetype(check.GetViolations().size()) + 2);
    // Every kind of violation is in the demo's faults, each reported once per stretch.
    for (int kind = 0; exitCode == 1 && kind < 4; ++kind)
        QVERIFY(check.CountViolations(ZYLTPProcessCheck::Kind(kind)) > 0);
    for (size_t i = 0; i < check.GetViolations().size(); ++i) {
        const ZYLTPProcessCheck::Violation &v = check.GetViolations()[i];
        QVERIFY2(lines[qsizetype(i) + 1].startsWith(QStringLiteral("%1,%2,%3,%4,%5,")
                                                         .arg(v.procedure + 1).arg(v.course + 1)
                                                         .arg(QLatin1String(ZYLTPProcessCheck::KindKey(v.kind)))
                                                         .arg(v.firstPoint + 1).arg(v.lastPoint + 1).toUtf8()),
                 lines[qsizetype(i) + 1].constData());
    }
}

QTEST_GUILESS_MAIN(tst_ZYLTPProcessRules)
#include "tst_ZYLTPProcessRules.moc"
