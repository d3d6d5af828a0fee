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

    QTest::newRow("two files") << QStringList{"a.zyltp.json", "b.zyltp.json"} << Action::Error << QString()
                               << QString() << "one";
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
