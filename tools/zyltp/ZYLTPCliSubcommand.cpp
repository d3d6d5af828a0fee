// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCliSubcommand.h"

#include <QCoreApplication>

#include <cstdio>

bool ZYLTPCliSubcommand::Parse(QCommandLineParser &parser, const QStringList &arguments, const QString &description,
                               int *exitCode) const
{
    parser.setApplicationDescription(
        description + QStringLiteral("\n\nExit codes: 0 success, 1 bad file or failed operation, 2 usage error."));
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")},
                                  QCoreApplication::translate("zyltp", "Shows this help."));
    parser.addOption(help);
    if (!parser.parse(arguments)) {
        PrintError(QStringLiteral("zyltp %1: %2").arg(GetName(), parser.errorText()));
        *exitCode = Usage;
        return false;
    }
    if (parser.isSet(help)) {
        // helpText() names the program by the executable; the subcommand belongs with it.
        QString text = parser.helpText();
        text.replace(QStringLiteral("Usage: %1").arg(arguments.value(0)),
                     QStringLiteral("Usage: zyltp %1").arg(GetName()));
        std::fputs(text.toLocal8Bit().constData(), stdout);
        *exitCode = Ok;
        return false;
    }
    return true;
}

void ZYLTPCliSubcommand::Print(const QString &line)
{
    std::fputs((line + QLatin1Char('\n')).toLocal8Bit().constData(), stdout);
}

void ZYLTPCliSubcommand::PrintError(const QString &line)
{
    std::fputs((line + QLatin1Char('\n')).toLocal8Bit().constData(), stderr);
}
