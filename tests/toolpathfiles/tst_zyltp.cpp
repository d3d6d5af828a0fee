// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

// The zyltp tool as a user runs it: exit codes and messages.
class tst_zyltp : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void exitCodes_data();
    void exitCodes();
    void infoShowsTheProgram();

private:
    struct Outcome {
        int exitCode;
        QString out;
        QString err;
    };
    static Outcome Run(const QStringList &arguments);
    QTemporaryDir m_dir;
    QString m_valid;
    QString m_damaged;
};

tst_zyltp::Outcome tst_zyltp::Run(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(ZYLTP_EXECUTABLE), arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return {-1, {}, QStringLiteral("did not finish normally")};
    return {process.exitCode(), QString::fromLocal8Bit(process.readAllStandardOutput()),
            QString::fromLocal8Bit(process.readAllStandardError())};
}

void tst_zyltp::initTestCase()
{
    QVERIFY(m_dir.isValid());
    m_valid = m_dir.filePath(QStringLiteral("valid.zyltp.json"));
    const Outcome made = Run({QStringLiteral("demo"), QStringLiteral("--courses"), QStringLiteral("6"),
                              QStringLiteral("--points-per-course"), QStringLiteral("40"), QStringLiteral("--tows"),
                              QStringLiteral("12"), QStringLiteral("--seed"), QStringLiteral("4"), QStringLiteral("-o"),
                              m_valid});
    QVERIFY2(made.exitCode == 0, qPrintable(made.err));
    QFile file(m_valid);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QString text = QString::fromUtf8(file.readAll());
    // The fourth tow point of the second course gets a tool axis that is not a unit vector.
    qsizetype at = text.indexOf(QStringLiteral("\"courses\":["));
    at = text.indexOf(QStringLiteral("\"configuration\""), text.indexOf(QStringLiteral("\"configuration\""), at) + 1);
    for (int k = 0; k < 4; ++k)
        at = text.indexOf(QStringLiteral("\"tool_axis\":["), at + 1);
    QVERIFY(at > 0);
    // [2,0,0] replaces the axis; the original numbers move into a member the loader skips.
    text.replace(at, 13, QStringLiteral("\"tool_axis\":[2,0,0],\"was\":["));
    m_damaged = m_dir.filePath(QStringLiteral("damaged.zyltp.json"));
    QFile out(m_damaged);
    QVERIFY(out.open(QIODevice::WriteOnly));
    out.write(text.toUtf8());
}

void tst_zyltp::exitCodes_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("stdoutPattern");
    QTest::addColumn<QString>("stderrPattern");
    QTest::newRow("valid file") << QStringList{QStringLiteral("check"), QStringLiteral("@valid")} << 0
                                << QStringLiteral("valid \\(2 procedures, 6 courses\\)") << QStringLiteral("^$");
    QTest::newRow("damaged file") << QStringList{QStringLiteral("check"), QStringLiteral("@damaged")} << 1
                                  << QStringLiteral("^$")
                                  << QStringLiteral("damaged.zyltp.json: procedures\\[0\\]\\.courses\\[1\\]\\.points\\[3\\]"
                                                    "\\.tool_axis: not a unit vector");
    QTest::newRow("one bad of two") << QStringList{QStringLiteral("check"), QStringLiteral("@valid"), QStringLiteral("@damaged")}
                                    << 1 << QStringLiteral("valid") << QStringLiteral("not a unit vector");
    QTest::newRow("missing file") << QStringList{QStringLiteral("check"), QStringLiteral("@missing")} << 1
                                  << QStringLiteral("^$") << QStringLiteral("Cannot read");
    QTest::newRow("info of a damaged file") << QStringList{QStringLiteral("info"), QStringLiteral("@damaged")} << 1
                                            << QStringLiteral("^$") << QStringLiteral("not a unit vector");
    QTest::newRow("no subcommand") << QStringList{} << 2 << QStringLiteral("^$") << QStringLiteral("Usage: zyltp");
    QTest::newRow("unknown subcommand") << QStringList{QStringLiteral("frobnicate")} << 2 << QStringLiteral("^$")
                                        << QStringLiteral("unknown subcommand");
    QTest::newRow("check without file") << QStringList{QStringLiteral("check")} << 2 << QStringLiteral("^$")
                                        << QStringLiteral("no file");
    QTest::newRow("unknown option") << QStringList{QStringLiteral("check"), QStringLiteral("--bogus"), QStringLiteral("@valid")}
                                    << 2 << QStringLiteral("^$") << QStringLiteral("bogus");
    QTest::newRow("demo without output") << QStringList{QStringLiteral("demo")} << 2 << QStringLiteral("^$")
                                         << QStringLiteral("-o FILE");
    QTest::newRow("demo with bad count") << QStringList{QStringLiteral("demo"), QStringLiteral("--courses"),
                                                        QStringLiteral("many"), QStringLiteral("-o"), QStringLiteral("@out")}
                                         << 2 << QStringLiteral("^$") << QStringLiteral("--courses");
    QTest::newRow("demo with 20 tows") << QStringList{QStringLiteral("demo"), QStringLiteral("--tows"), QStringLiteral("20"),
                                                      QStringLiteral("-o"), QStringLiteral("@out")}
                                       << 2 << QStringLiteral("^$") << QStringLiteral("tows");
    QTest::newRow("demo into a missing folder")
        << QStringList{QStringLiteral("demo"), QStringLiteral("-o"), QStringLiteral("@missing/x.zyltp.json")} << 1
        << QStringLiteral("^$") << QStringLiteral("Cannot write");
    for (const QString &sub : {QStringLiteral("demo"), QStringLiteral("info"), QStringLiteral("check")})
        QTest::newRow(qPrintable(sub + QStringLiteral(" help"))) << QStringList{sub, QStringLiteral("--help")} << 0
                                                                 << QStringLiteral("Usage: zyltp %1(.|\\n)*Exit codes: 0").arg(sub)
                                                                 << QStringLiteral("^$");
    QTest::newRow("help") << QStringList{QStringLiteral("--help")} << 0 << QStringLiteral("demo(.|\\n)*info(.|\\n)*check")
                          << QStringLiteral("^$");
}

void tst_zyltp::exitCodes()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, stdoutPattern);
    QFETCH(QString, stderrPattern);
    for (QString &a : arguments) {
        a.replace(QStringLiteral("@valid"), m_valid);
        a.replace(QStringLiteral("@damaged"), m_damaged);
        a.replace(QStringLiteral("@missing"), m_dir.filePath(QStringLiteral("missing")));
        a.replace(QStringLiteral("@out"), m_dir.filePath(QStringLiteral("out.zyltp.json")));
    }
    const Outcome outcome = Run(arguments);
    QVERIFY2(QRegularExpression(stdoutPattern).match(outcome.out).hasMatch(), qPrintable(outcome.out));
    QVERIFY2(QRegularExpression(stderrPattern).match(outcome.err).hasMatch(), qPrintable(outcome.err));
    QCOMPARE(outcome.exitCode, exitCode);
}

void tst_zyltp::infoShowsTheProgram()
{
    const Outcome outcome = Run({QStringLiteral("info"), m_valid});
    QCOMPARE(outcome.exitCode, 0);
    // 6 courses of 40 tow points, each with its roll-in and roll-out point.
    QVERIFY2(outcome.out.contains(QRegularExpression(QStringLiteral("Courses:\\s+6\\n"))), qPrintable(outcome.out));
    QVERIFY2(outcome.out.contains(QRegularExpression(QStringLiteral("Laying points:\\s+252\\n"))), qPrintable(outcome.out));
    QVERIFY2(outcome.out.contains(QRegularExpression(QStringLiteral("Links:\\s+7\\n"))), qPrintable(outcome.out));
    QVERIFY(outcome.out.contains(QRegularExpression(QStringLiteral("Total time:\\s+[0-9.]+ s"))));
    QVERIFY(outcome.out.contains(QRegularExpression(QStringLiteral("Overall course length:\\s+[0-9.]+ mm"))));
}

QTEST_GUILESS_MAIN(tst_zyltp)
#include "tst_zyltp.moc"
