// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The studio's command line: what it starts, and the usage errors it refuses.
#include "ZYLStudioCommandLine.h"

#include <QTest>

using Action = ZYLStudioCommandLine::Action;
Q_DECLARE_METATYPE(ZYLStudioCommandLine::Action)

class tst_ZYLStudioCommandLine : public QObject {
    Q_OBJECT
private slots:
    void parses_data();
    void parses();
    void helpListsEveryOption();
    void versionNamesTheStudio();
};

void tst_ZYLStudioCommandLine::parses_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<Action>("action");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("screenshot");
    QTest::addColumn<QString>("error"); // a word the error text must contain

    QTest::newRow("nothing: the demo") << QStringList{} << Action::Run << QString() << QString() << QString();
    QTest::newRow("a file") << QStringList{"ply.zyltp.json"} << Action::Run << "ply.zyltp.json" << QString()
                            << QString();
    QTest::newRow("a missing file is for the studio to report")
        << QStringList{"/no/such/ply.zyltp.json"} << Action::Run << "/no/such/ply.zyltp.json" << QString()
        << QString();
    QTest::newRow("screenshot of the demo") << QStringList{"--screenshot", "out.png"} << Action::Run << QString()
                                            << "out.png" << QString();
    QTest::newRow("screenshot after the file") << QStringList{"a.zyltp.json", "--screenshot=shots/b.PNG"}
                                               << Action::Run << "a.zyltp.json" << "shots/b.PNG" << QString();
    QTest::newRow("help") << QStringList{"--help"} << Action::ShowHelp << QString() << QString() << QString();
    QTest::newRow("short help wins over a file")
        << QStringList{"x.zyltp.json", "-h"} << Action::ShowHelp << QString() << QString() << QString();
    QTest::newRow("version") << QStringList{"--version"} << Action::ShowVersion << QString() << QString()
                             << QString();
    QTest::newRow("short version") << QStringList{"-v"} << Action::ShowVersion << QString() << QString() << QString();
    QTest::newRow("two files") << QStringList{"a.zyltp.json", "b.zyltp.json"} << Action::Error << QString()
                               << QString() << "one";
    QTest::newRow("unknown option") << QStringList{"--fast"} << Action::Error << QString() << QString() << "fast";
    QTest::newRow("screenshot without a name") << QStringList{"--screenshot"} << Action::Error << QString()
                                               << QString() << "screenshot";
    QTest::newRow("screenshot in no picture format")
        << QStringList{"--screenshot", "shot.zyltp"} << Action::Error << QString() << QString() << "shot.zyltp";
    QTest::newRow("screenshot without suffix") << QStringList{"--screenshot", "shot"} << Action::Error << QString()
                                               << QString() << "shot";
    QTest::newRow("screenshot into a folder name") << QStringList{"--screenshot", "shots/"} << Action::Error
                                                   << QString() << QString() << "name";
    QTest::newRow("empty file name") << QStringList{""} << Action::Error << QString() << QString() << "empty";
}

void tst_ZYLStudioCommandLine::parses() {
    QFETCH(QStringList, arguments);
    QFETCH(Action, action);
    QFETCH(QString, file);
    QFETCH(QString, screenshot);
    QFETCH(QString, error);
    arguments.prepend(QStringLiteral("zylstudio"));

    const ZYLStudioCommandLine commandLine = ZYLStudioCommandLine::Parse(arguments, QStringLiteral("1.2.3"));
    QCOMPARE(commandLine.GetAction(), action);
    QCOMPARE(commandLine.GetFileName(), file);
    QCOMPARE(commandLine.GetScreenshotFileName(), screenshot);
    if (action == Action::Error)
        QVERIFY2(commandLine.GetErrorText().contains(error, Qt::CaseInsensitive), qPrintable(commandLine.GetErrorText()));
    else
        QVERIFY2(commandLine.GetErrorText().isEmpty(), qPrintable(commandLine.GetErrorText()));
}

void tst_ZYLStudioCommandLine::helpListsEveryOption() {
    const ZYLStudioCommandLine commandLine =
        ZYLStudioCommandLine::Parse({QStringLiteral("zylstudio"), QStringLiteral("--help")}, QStringLiteral("1.2.3"));
    const QString help = commandLine.GetHelpText();
    for (const char *word : {"--screenshot", "--help", "--version", "FILE", "demo"})
        QVERIFY2(help.contains(QLatin1String(word)), word);
}

void tst_ZYLStudioCommandLine::versionNamesTheStudio() {
    const ZYLStudioCommandLine commandLine =
        ZYLStudioCommandLine::Parse({QStringLiteral("zylstudio"), QStringLiteral("-v")}, QStringLiteral("1.2.3"));
    QCOMPARE(commandLine.GetVersionText(), QStringLiteral("zylstudio 1.2.3"));
}

QTEST_GUILESS_MAIN(tst_ZYLStudioCommandLine)
#include "tst_ZYLStudioCommandLine.moc"
