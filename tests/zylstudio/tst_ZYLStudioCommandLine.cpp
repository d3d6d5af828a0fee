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
    QTest::newRow("screenshot of the demo") << QStringList{"--screenshot", "out.png"} << Action::Run << QString()
                                            << "out.png" << QString();
    QTest::newRow("screenshot after the file") << QStringList{"a.zyltp.json", "--screenshot=shots/b.PNG"}
                                               << Action::Run << "a.zyltp.json" << "shots/b.PNG" << QString();
    QTest::newRow("view modes in order") << QStringList{"--view", "HideCourse", "--view=ViewSurface", "--view", "HideCourse"}
                                         << Action::Run << QString() << QString() << QString();
    QTest::newRow("help") << QStringList{"--help"} << Action::ShowHelp << QString() << QString() << QString();
    QTest::newRow("version") << QStringList{"--version"} << Action::ShowVersion << QString() << QString()
                             << QString();
    QTest::newRow("two files") << QStringList{"a.zyltp.json", "b.zyltp.json"} << Action::Error << QString()
                               << QString() << "one";
    QTest::newRow("unknown option") << QStringList{"--fast"} << Action::Error << QString() << QString() << "fast";
    QTest::newRow("screenshot without a name") << QStringList{"--screenshot"} << Action::Error << QString()
                                               << QString() << "screenshot";
    QTest::newRow("screenshot in no picture format")
        << QStringList{"--screenshot", "shot.zyltp"} << Action::Error << QString() << QString() << "shot.zyltp";
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
    if (QTest::currentDataTag() == QByteArray("view modes in order"))
        QCOMPARE(commandLine.GetViewModes(), (QStringList{"HideCourse", "ViewSurface", "HideCourse"}));
    else
        QVERIFY(commandLine.GetViewModes().isEmpty());
    if (action == Action::Error)
        QVERIFY2(commandLine.GetErrorText().contains(error, Qt::CaseInsensitive), qPrintable(commandLine.GetErrorText()));
    else
        QVERIFY2(commandLine.GetErrorText().isEmpty(), qPrintable(commandLine.GetErrorText()));
}

QTEST_GUILESS_MAIN(tst_ZYLStudioCommandLine)
#include "tst_ZYLStudioCommandLine.moc"
