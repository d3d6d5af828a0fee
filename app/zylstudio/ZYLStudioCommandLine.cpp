// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioCommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QImageWriter>

namespace {

QString Tr(const char *text) { return QCoreApplication::translate("ZYLStudioCommandLine", text); }

} // namespace

ZYLStudioCommandLine ZYLStudioCommandLine::Parse(const QStringList &arguments, const QString &version) {
    ZYLStudioCommandLine result;
    result.m_version = version;

    QCommandLineParser parser;
    parser.setApplicationDescription(
        Tr("Views and edits the tool path of a ply. Without FILE the embedded demo ply is opened."));
    const QCommandLineOption help = parser.addHelpOption();
    // Not addVersionOption(): that one reads the version from the application object, which
    // a caller without one (the tests) would not have set.
    const QCommandLineOption versionOption(QStringList{QStringLiteral("v"), QStringLiteral("version")},
                                           Tr("Displays version information."));
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        Tr("Renders the window once the program is shown, saves the picture to <file> and quits."),
        Tr("file"));
    const QCommandLineOption view(
        QStringLiteral("view"),
        Tr("Triggers the view action <mode> (such as ViewCourseAndPolyline) once the program is shown; repeatable."),
        Tr("mode"));
    parser.addOption(versionOption);
    parser.addOption(view);
    parser.addOption(screenshot);
    parser.addPositionalArgument(QStringLiteral("FILE"), Tr("Tool path program to open (*.zyltp.json)."),
                                 Tr("[FILE]"));
    result.m_helpText = parser.helpText();

    // An empty list has not even the program name; the parser would take the first word for it.
    if (!parser.parse(arguments.isEmpty() ? QStringList{QStringLiteral("zylstudio")} : arguments)) {
        result.m_action = Action::Error;
        result.m_errorText = parser.errorText();
        return result;
    }
    if (parser.isSet(help)) {
        result.m_action = Action::ShowHelp;
        return result;
    }
    if (parser.isSet(versionOption)) {
        result.m_action = Action::ShowVersion;
        return result;
    }

    const QStringList files = parser.positionalArguments();
    if (files.size() > 1) {
        result.m_action = Action::Error;
        result.m_errorText = Tr("Only one program file can be opened; %1 were given.").arg(files.size());
        return result;
    }
    if (!files.isEmpty()) {
        if (files.first().isEmpty()) {
            result.m_action = Action::Error;
            result.m_errorText = Tr("The program file name is empty.");
            return result;
        }
        result.m_fileName = files.first();
    }

    result.m_viewModes = parser.values(view);

    if (parser.isSet(screenshot)) {
        const QString target = parser.value(screenshot);
        const QByteArray format = QFileInfo(target).suffix().toLower().toLatin1();
        if (target.isEmpty() || QFileInfo(target).fileName().isEmpty()) {
            result.m_action = Action::Error;
            result.m_errorText = Tr("The screenshot needs a file name.");
            return result;
        }
        if (format.isEmpty() || !QImageWriter::supportedImageFormats().contains(format)) {
            result.m_action = Action::Error;
            result.m_errorText =
                Tr("Cannot write a screenshot to %1: the name must end in a picture format such as .png.")
                    .arg(target);
            return result;
        }
        result.m_screenshotFileName = target;
    }
    return result;
}

QString ZYLStudioCommandLine::GetVersionText() const {
    return QStringLiteral("zylstudio %1").arg(m_version);
}
