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
#include <QRegularExpression>
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

// The lines naming colliding points, "Course c, point p", in the order listed.
QStringList Places(const QString &out)
{
    QStringList places;
    const QRegularExpression place(QStringLiteral("^(Course \\d+, point \\d+):"), QRegularExpression::MultilineOption);
    for (auto it = place.globalMatch(out); it.hasNext();)
        places << it.next().captured(1);
    return places;
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
    void collisionsListsTheTiltedStretch();
    void collisionsOptions_data();
    void collisionsOptions();
    void collisionsNamesTheResource();
    void editsApplyInTheOrderGiven_data();
    void editsApplyInTheOrderGiven();
    void reverseOrderTwiceGivesTheSameBytes();
    void breakAllLimitsTheCourseLength();
    void relinkJoinsAllInLayingOrder();
    void avoidCollisionsClearsThem();
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

void tst_zyltpedit::collisionsListsTheTiltedStretch()
{
    const QString csv = Path(QStringLiteral("collisions.csv"));
    const Outcome outcome = Run({QStringLiteral("collisions"), m_demo, QStringLiteral("--csv"), csv});
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(Places(outcome.out), (QStringList{QStringLiteral("Course 4, point 22"), QStringLiteral("Course 4, point 23"),
                                               QStringLiteral("Course 4, point 24")}));
    // Each line gives the tilts in degrees and the roller of the course's machine.
    QCOMPARE(outcome.out.count(QStringLiteral("forward tilt 0.000°, side tilt 25.783°: roller 0\n")), 3);
    QVERIFY2(outcome.out.endsWith(QStringLiteral("3 colliding laying points among 504 checked at 10.000 mm\n")),
             qPrintable(outcome.out));
    const QList<QByteArray> rows = Read(csv).trimmed().split('\n');
    QCOMPARE(rows.size(), 4);
    QCOMPARE(rows[0], QByteArray("procedure,course,point,x_mm,y_mm,z_mm,forward_tilt_rad,side_tilt_rad,resources"));
    for (int k = 1; k <= 3; ++k) {
        const QList<QByteArray> fields = rows[k].split(',');
        QCOMPARE(fields.size(), 9);
        QCOMPARE(fields[1], QByteArray("4"));
        QCOMPARE(fields[2].toInt(), 21 + k);
        QCOMPARE(fields[7].toDouble(), 0.45);
        QCOMPARE(fields[8], QByteArray("roller 0"));
    }
}

void tst_zyltpedit::collisionsOptions_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("pattern"); // in stdout when the run reports no error, else in stderr
    QTest::newRow("half an inch") << QStringList{QStringLiteral("--tolerance"), QStringLiteral("0.5in")} << 1
                                  << QStringLiteral("3 colliding laying points among 504 checked at 12.700 mm");
    QTest::newRow("everything within 10 m") << QStringList{QStringLiteral("--tolerance"), QStringLiteral("10000")} << 1
                                            << QStringLiteral("504 colliding laying points among 504 checked");
    QTest::newRow("negative tolerance") << QStringList{QStringLiteral("--tolerance"), QStringLiteral("-1")} << 2
                                        << QStringLiteral("must not be negative");
    QTest::newRow("missing file") << QStringList{QStringLiteral("@missing")} << 1 << QStringLiteral("Cannot read");
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

void tst_zyltpedit::collisionsNamesTheResource()
{
    const Outcome outcome = Run({QStringLiteral("collisions"), m_hopeless});
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(Places(outcome.out).size(), 504);
    // Every point has the head's sphere in the part; the tilted stretch has the roller too.
    QCOMPARE(outcome.out.count(QStringLiteral(": head 0\n")), 501);
    QCOMPARE(outcome.out.count(QStringLiteral(": head 0, roller 0\n")), 3);
}

void tst_zyltpedit::editsApplyInTheOrderGiven_data()
{
    QTest::addColumn<QStringList>("edits");
    QTest::addColumn<QStringList>("places");
    // The fourth course (index 3) sits at the odd laying position 3 before the order is
    // reversed and at the even position 8 after it. Reversed, its tilted stretch of path
    // runs from the other end: a trajectory spans from its first point to the next one's,
    // so the three tilted segments start at points 18 to 20 of 42.
    QTest::newRow("odd courses, then the order")
        << QStringList{QStringLiteral("--reverse-odd"), QStringLiteral("--reverse-order")}
        << QStringList{QStringLiteral("Course 9, point 18"), QStringLiteral("Course 9, point 19"),
                       QStringLiteral("Course 9, point 20")};
    QTest::newRow("the order, then odd courses")
        << QStringList{QStringLiteral("--reverse-order"), QStringLiteral("--reverse-odd")}
        << QStringList{QStringLiteral("Course 9, point 22"), QStringLiteral("Course 9, point 23"),
                       QStringLiteral("Course 9, point 24")};
    QTest::newRow("all courses") << QStringList{QStringLiteral("--reverse-all")}
                                 << QStringList{QStringLiteral("Course 4, point 18"), QStringLiteral("Course 4, point 19"),
                                                QStringLiteral("Course 4, point 20")};
}

void tst_zyltpedit::editsApplyInTheOrderGiven()
{
    QFETCH(QStringList, edits);
    QFETCH(QStringList, places);
    const QString out = Path(QStringLiteral("ordered.zyltp.json"));
    const Outcome edited = Run(QStringList{QStringLiteral("edit"), m_demo, QStringLiteral("-o"), out} + edits);
    QVERIFY2(edited.exitCode == 0, qPrintable(edited.err));
    QVERIFY(edited.out.startsWith(QStringLiteral("Wrote %1 after %2").arg(out, edits.join(QStringLiteral(", ")))));
    QCOMPARE(Places(Run({QStringLiteral("collisions"), out}).out), places);
}

void tst_zyltpedit::reverseOrderTwiceGivesTheSameBytes()
{
    const QString out = Path(QStringLiteral("twice.zyltp.json"));
    const Outcome edited = Run({QStringLiteral("edit"), m_demo, QStringLiteral("--reverse-order"), QStringLiteral("-o"), out,
                                QStringLiteral("--reverse-order")});
    QVERIFY2(edited.exitCode == 0, qPrintable(edited.err));
    QCOMPARE(Read(out), Read(m_demo));
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

void tst_zyltpedit::avoidCollisionsClearsThem()
{
    const QString out = Path(QStringLiteral("avoided.zyltp.json"));
    const Outcome edited = Run({QStringLiteral("edit"), m_demo, QStringLiteral("-o"), out,
                                QStringLiteral("--avoid-collisions"), QStringLiteral("10")});
    QVERIFY2(edited.exitCode == 0, qPrintable(edited.err));
    const Outcome checked = Run({QStringLiteral("collisions"), out});
    QCOMPARE(checked.exitCode, 0);
    QCOMPARE(checked.out, QStringLiteral("No colliding laying point among 504 checked at 10.000 mm\n"));
    // Stricter than the edit asked for, the corrected points are close to the limit again:
    // the tilt was changed no more than needed.
    const Outcome stricter = Run({QStringLiteral("collisions"), out, QStringLiteral("--tolerance"), QStringLiteral("10.5")});
    QCOMPARE(Places(stricter.out).size(), 3);
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
