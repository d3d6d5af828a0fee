// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCliSubcommand.h"

#include "ZYLTPProgramFile.h"

#include "ZYLTPCourse.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPTool.h"

#include "ZYLSysException.h"
#include "ZYLSysValue.h"

#include <QCoreApplication>

#include <cstdio>

bool ZYLTPCliSubcommand::Parse(QCommandLineParser &parser, const QStringList &arguments, const QString &description,
                               int *exitCode) const
{
    parser.setApplicationDescription(description + QStringLiteral("\n\n") + GetExitCodes());
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

QString ZYLTPCliSubcommand::GetExitCodes() const
{
    return QCoreApplication::translate("zyltp", "Exit codes: 0 success, 1 bad file or failed operation, 2 usage error.");
}

bool ZYLTPCliSubcommand::ReadLength(const QString &text, double *millimetres, QString *error)
{
    ZYLSysValue value(ZYLSysValue::Length, 0.0);
    try {
        value.FromString(text.trimmed());
    } catch (const ZYLSysException &e) {
        *error = e.GetMessage();
        return false;
    }
    *millimetres = value.GetValue();
    return true;
}

QList<std::pair<ZYLMathPoint, double>> ZYLTPCliSubcommand::GetCollisionPoints(const ZYLTPCourse &course)
{
    const ZYLTPMachineConfiguration &configuration = course.GetMachineConfiguration();
    QList<std::pair<ZYLMathPoint, double>> points;
    if (configuration.GetHead())
        points += configuration.GetHead()->GetCollisionPoints();
    points += configuration.GetTool()->GetCollisionPoints();
    return points;
}

void ZYLTPCliSubcommand::Print(const QString &line)
{
    std::fputs((line + QLatin1Char('\n')).toLocal8Bit().constData(), stdout);
}

void ZYLTPCliSubcommand::PrintError(const QString &line)
{
    std::fputs((line + QLatin1Char('\n')).toLocal8Bit().constData(), stderr);
}

ZYLGeoRef<ZYLTPProgram> ZYLTPCliSubcommand::LoadProgram(const QString &file)
{
    ZYLTPProgramFile::LoadResult result = ZYLTPProgramFile::Load(file);
    if (!result.program)
        PrintError(QStringLiteral("%1: %2").arg(file, result.error));
    return std::move(result.program);
}
