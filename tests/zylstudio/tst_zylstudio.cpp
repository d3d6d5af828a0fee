// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The zylstudio executable run as a user runs it, on the test's display: a file that cannot
// be opened, the command line, and a display without OpenGL 3.3.
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTest>

#ifndef ZYL_STUDIO_EXECUTABLE
#error "ZYL_STUDIO_EXECUTABLE must name the zylstudio executable"
#endif

namespace {

struct Run {
    int exitCode = -1;
    QString out;
    QString err;
};

Run Start(const QStringList &arguments, const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment()) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(ZYL_STUDIO_EXECUTABLE), arguments);
    Run run;
    if (!process.waitForFinished(180000)) {
        process.kill();
        process.waitForFinished();
        run.err = QStringLiteral("zylstudio did not finish");
        return run;
    }
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    run.out = QString::fromLocal8Bit(process.readAllStandardOutput());
    run.err = QString::fromLocal8Bit(process.readAllStandardError());
    return run;
}

} // namespace

class tst_zylstudio : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void screenshotOfAFileThatCannotBeOpened_data();
    void screenshotOfAFileThatCannotBeOpened();
    void commandLine_data();
    void commandLine();
    void withoutOpenGL33();

private:
    QTemporaryDir m_dir;
};

void tst_zylstudio::initTestCase() {
    QVERIFY(m_dir.isValid());
    QVERIFY2(QFile::exists(QStringLiteral(ZYL_STUDIO_EXECUTABLE)), ZYL_STUDIO_EXECUTABLE);
}

void tst_zylstudio::screenshotOfAFileThatCannotBeOpened_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("damaged") << QByteArray(R"({"format": "zyltp-program", "version": 1, "procedures": [)");
    QTest::newRow("missing") << QByteArray();
}

void tst_zylstudio::screenshotOfAFileThatCannotBeOpened() {
    QFETCH(QByteArray, content);
    const QString file = m_dir.filePath(QStringLiteral("%1.zyltp.json").arg(QTest::currentDataTag()));
    if (!content.isEmpty()) {
        QFile out(file);
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(content);
    }
    const QString shot = m_dir.filePath(QStringLiteral("bad-%1.png").arg(QTest::currentDataTag()));
    const Run run = Start({file, QStringLiteral("--screenshot"), shot});
    QCOMPARE(run.exitCode, 1);
    // The located message names the file; the studio still came up, on an empty session.
    QVERIFY2(run.err.contains(QFileInfo(file).fileName()), qPrintable(run.err));
    QVERIFY(QImage(shot).width() > 0);
}

void tst_zylstudio::commandLine_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("out");
    QTest::addColumn<QString>("err");
    QTest::newRow("version") << QStringList{"--version"} << 0 << "zylstudio " ZYL_STUDIO_VERSION << QString();
    QTest::newRow("help") << QStringList{"--help"} << 0 << "--screenshot" << QString();
    QTest::newRow("unknown option") << QStringList{"--fast"} << 2 << QString() << "fast";
    QTest::newRow("picture format") << QStringList{"--screenshot", "x.txt"} << 2 << QString() << "x.txt";
    // View modes are known once the module is loaded; the refusal lists the real ones.
    QTest::newRow("unknown view mode") << QStringList{"--view", "ViewCourse", "--view", "ViewEverything", "--screenshot",
                                                      "never.png"}
                                       << 2 << QString() << "ViewEverything; the modes are: ViewCourse, ";
}

void tst_zylstudio::commandLine() {
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, out);
    QFETCH(QString, err);
    // Help and version need no display; the picture that cannot be written needs one.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (exitCode == 0)
        environment.remove(QStringLiteral("DISPLAY"));
    const Run run = Start(arguments, environment);
    QCOMPARE(run.exitCode, exitCode);
    QVERIFY2(run.out.contains(out), qPrintable(run.out));
    QVERIFY2(run.err.contains(err), qPrintable(run.err));
}

void tst_zylstudio::withoutOpenGL33() {
    // Mesa then offers at most OpenGL 3.0, as an old driver would.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("MESA_GL_VERSION_OVERRIDE"), QStringLiteral("3.0"));
    environment.insert(QStringLiteral("MESA_GLSL_VERSION_OVERRIDE"), QStringLiteral("130"));
    const QString shot = m_dir.filePath(QStringLiteral("nogl.png"));
    const Run run = Start({QStringLiteral("--screenshot"), shot}, environment);
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.err.contains(QStringLiteral("OpenGL 3.3")), qPrintable(run.err));
    QVERIFY(!QFile::exists(shot));
}

QTEST_GUILESS_MAIN(tst_zylstudio)
#include "tst_zylstudio.moc"
