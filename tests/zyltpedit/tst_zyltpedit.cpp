// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// zyltp collisions and zyltp edit on a small demo program: known collisions, edits in the
// order given, the written programs read back, and refused edits that write nothing.
#include "ZYLTPCourse.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPProgramFile.h"
#include "ZYLTPRollLayupProcedure.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

namespace {

struct Outcome {
    int exitCode;
    QString out;
    QString err;
};

Outcome Run(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(ZYLTP_EXECUTABLE), arguments);
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
        return {-1, {}, QStringLiteral("did not finish normally")};
    return {process.exitCode(), QString::fromLocal8Bit(process.readAllStandardOutput()),
            QString::fromLocal8Bit(process.readAllStandardError())};
}

QByteArray Read(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const ZYLTPRollLayupProcedure *Layup(const ZYLTPProgram &program)
{
    return qobject_cast<const ZYLTPRollLayupProcedure *>(program.GetProcedure(0));
}

} // namespace

class tst_zyltpedit : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void collisionsOptions_data();
    void collisionsOptions();
    void breakAllLimitsTheCourseLength();
    void relinkJoinsAllInLayingOrder();
    void refusedEditsWriteNothing_data();
    void refusedEditsWriteNothing();

private:
    QString Path(const QString &name) const { return m_dir.filePath(name); }
    QTemporaryDir m_dir;
    QString m_demo;
    QString m_hopeless;
};

void tst_zyltpedit::initTestCase()
{
    QVERIFY(m_dir.isValid());
    // 12 courses of 40 tow points: the fourth is tilted to the side at tow points 21 to 23
    // (points 22 to 24 counted from 1 with the roll-in point), where the roller's fork comes
    // within 10 mm of the panel.
    m_demo = Path(QStringLiteral("demo.zyltp.json"));
    const Outcome made = Run({QStringLiteral("demo"), QStringLiteral("--courses"), QStringLiteral("12"),
                              QStringLiteral("--points-per-course"), QStringLiteral("40"), QStringLiteral("-o"), m_demo});
    QVERIFY2(made.exitCode == 0, qPrintable(made.err));
    // The same with a head sphere under the tool tip, which no tilt can lift out of the part.
    QByteArray text = Read(m_demo);
    const QByteArray top("[0,0,330,90]");
    QVERIFY(text.contains(top));
    text.replace(top, "[0,0,-30,5]");
    m_hopeless = Path(QStringLiteral("hopeless.zyltp.json"));
    QFile out(m_hopeless);
    QVERIFY(out.open(QIODevice::WriteOnly));
    out.write(text);
}

void tst_zyltpedit::collisionsOptions_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("pattern"); // in stdout when the run reports no error, else in stderr
    QTest::newRow("everything within 10 m") << QStringList{QStringLiteral("--tolerance"), QStringLiteral("10000")} << 1
                                            << QStringLiteral("504 colliding laying points among 504 checked");
    QTest::newRow("negative tolerance") << QStringList{QStringLiteral("--tolerance"), QStringLiteral("-1")} << 2
                                        << QStringLiteral("must not be negative");
    QTest::newRow("CSV into a missing folder") << QStringList{QStringLiteral("--csv"), QStringLiteral("@missing/x.csv")}
                                               << 1 << QStringLiteral("Cannot write");
    QTest::newRow("help") << QStringList{QStringLiteral("--help")} << 0
                          << QStringLiteral("Exit codes: 0 no collision found, 1 collisions found");
}

void tst_zyltpedit::collisionsOptions()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, pattern);
    QStringList all{QStringLiteral("collisions")};
    if (!arguments.contains(QStringLiteral("@missing")))
        all << m_demo;
    for (const QString &a : arguments)
        all << QString(a).replace(QStringLiteral("@missing"), Path(QStringLiteral("missing")));
    const Outcome outcome = Run(all);
    QCOMPARE(outcome.exitCode, exitCode);
    const bool inOut = exitCode == 0 || (exitCode == 1 && outcome.err.isEmpty());
    QVERIFY2((inOut ? outcome.out : outcome.err).contains(pattern), qPrintable(outcome.out + outcome.err));
}

void tst_zyltpedit::breakAllLimitsTheCourseLength()
{
    const QString out = Path(QStringLiteral("broken.zyltp.json"));
    // 30 cm, given in another unit than the display's.
    const Outcome edited = Run({QStringLiteral("edit"), m_demo, QStringLiteral("-o"), out, QStringLiteral("--break-all"),
                                QStringLiteral("11.811in")});
    QVERIFY2(edited.exitCode == 0, qPrintable(edited.err));
    const ZYLTPProgramFile::LoadResult before = ZYLTPProgramFile::Load(m_demo);
    const ZYLTPProgramFile::LoadResult after = ZYLTPProgramFile::Load(out);
    QVERIFY2(after.program, qPrintable(after.error));
    const ZYLTPRollLayupProcedure *layup = Layup(*after.program);
    QVERIFY(layup->GetNumCourses() > Layup(*before.program)->GetNumCourses());
    double longest = 0.0;
    for (int i = 0; i < layup->GetNumCourses(); ++i) {
        longest = std::max(longest, layup->GetCourseByIndex(i)->GetLength());
        QCOMPARE(layup->GetCourseByIndex(i)->GetNumBreakRanges(), 0);
    }
    QVERIFY2(longest <= 300.0 + 1e-3, qPrintable(QString::number(longest)));
}

void tst_zyltpedit::relinkJoinsAllInLayingOrder()
{
    const QString out = Path(QStringLiteral("relinked.zyltp.json"));
    const Outcome edited = Run({QStringLiteral("edit"), m_demo, QStringLiteral("-o"), out, QStringLiteral("--relink"),
                                QStringLiteral("safety-plane")});
    QVERIFY2(edited.exitCode == 0, qPrintable(edited.err));
    const ZYLTPProgramFile::LoadResult loaded = ZYLTPProgramFile::Load(out);
    QVERIFY2(loaded.program, qPrintable(loaded.error));
    const ZYLTPRollLayupProcedure *layup = Layup(*loaded.program);
    const int n = layup->GetNumCourses();
    QCOMPARE(layup->GetNumLinks(), n + 1);
    QVERIFY(layup->GetApproachLink());
    QCOMPARE(layup->GetApproachLink()->GetToCourse(), layup->GetCourseByPosition(0));
    QVERIFY(layup->GetRetractLink());
    QCOMPARE(layup->GetRetractLink()->GetFromCourse(), layup->GetCourseByPosition(n - 1));
    for (int p = 0; p + 1 < n; ++p) {
        const ZYLTPCourseLink *link = layup->GetCourseByPosition(p)->GetRetractLink();
        QVERIFY(link);
        QCOMPARE(link->GetToCourse(), layup->GetCourseByPosition(p + 1));
        QCOMPARE(link->GetStrategy(), ZYLTPCourseLink::SafetyPlane);
    }
    // The laying order is that of the original.
    QCOMPARE(layup->GetLayingOrder(), Layup(*ZYLTPProgramFile::Load(m_demo).program)->GetLayingOrder());
}

void tst_zyltpedit::refusedEditsWriteNothing_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message");
    const QString demo = QStringLiteral("@demo"), out = QStringLiteral("-o"), target = QStringLiteral("@out");
    QTest::newRow("length too short to break at")
        << QStringList{demo, out, target, QStringLiteral("--reverse-all"), QStringLiteral("--break-all"), QStringLiteral("1")}
        << 1 << QStringLiteral("--break-all: Value 1 mm is out of range");
    QTest::newRow("collisions no tilt clears")
        << QStringList{QStringLiteral("@hopeless"), out, target, QStringLiteral("--avoid-collisions"), QStringLiteral("10")}
        << 1 << QStringLiteral("--avoid-collisions: Course 1, point 1:");
    QTest::newRow("unknown strategy") << QStringList{demo, out, target, QStringLiteral("--relink"), QStringLiteral("curvy")}
                                      << 2 << QStringLiteral("linear or safety-plane");
    QTest::newRow("unreadable length") << QStringList{demo, out, target, QStringLiteral("--break-all"), QStringLiteral("ten")}
                                       << 2 << QStringLiteral("Cannot read \"ten\"");
    QTest::newRow("no edit") << QStringList{demo, out, target} << 2 << QStringLiteral("no edit given");
    QTest::newRow("no output") << QStringList{demo, QStringLiteral("--reverse-all")} << 2 << QStringLiteral("-o OUT");
    QTest::newRow("missing input") << QStringList{QStringLiteral("@missing"), out, target, QStringLiteral("--reverse-all")}
                                   << 1 << QStringLiteral("Cannot read");
}

void tst_zyltpedit::refusedEditsWriteNothing()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, message);
    const QString target = Path(QStringLiteral("target.zyltp.json"));
    const QByteArray sentinel("left alone");
    {
        QFile file(target);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(sentinel);
    }
    QStringList all{QStringLiteral("edit")};
    for (const QString &a : arguments) {
        all << QString(a)
                   .replace(QStringLiteral("@demo"), m_demo)
                   .replace(QStringLiteral("@hopeless"), m_hopeless)
                   .replace(QStringLiteral("@missing"), Path(QStringLiteral("missing.zyltp.json")))
                   .replace(QStringLiteral("@out"), target);
    }
    const Outcome outcome = Run(all);
    QCOMPARE(outcome.exitCode, exitCode);
    QVERIFY2(outcome.err.contains(message), qPrintable(outcome.err));
    QVERIFY(outcome.out.isEmpty());
    QCOMPARE(Read(target), sentinel);
}

QTEST_GUILESS_MAIN(tst_zyltpedit)
#include "tst_zyltpedit.moc"
