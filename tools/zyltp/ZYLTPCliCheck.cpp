// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCliCheck.h"

#include "ZYLTPProcedure.h"
#include "ZYLTPRollLayupProcedure.h"

#include <QCoreApplication>

namespace {
QString Tr(const char *text) { return QCoreApplication::translate("zyltp", text); }
} // namespace

QString ZYLTPCliCheck::GetSummary() const
{
    return Tr("Validates tool path program files: exit code 0 when every file is valid, 1 with the place of "
              "the first fault of each bad file on stderr.");
}

int ZYLTPCliCheck::Run(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("files"), Tr("Program files to check."), Tr("FILE..."));
    int exitCode = Ok;
    if (!Parse(parser, arguments, GetSummary(), &exitCode))
        return exitCode;
    const QStringList files = parser.positionalArguments();
    if (files.isEmpty()) {
        PrintError(Tr("zyltp check: no file given"));
        return Usage;
    }
    for (const QString &file : files) {
        const ZYLGeoRef<ZYLTPProgram> program = LoadProgram(file);
        if (!program) {
            exitCode = Failed;
            continue;
        }
        int courses = 0;
        for (int i = 0; i < program->GetNumProcedures(); ++i)
            if (const auto *p = qobject_cast<const ZYLTPRollLayupProcedure *>(program->GetProcedure(i)))
                courses += p->GetNumCourses();
        Print(Tr("%1: valid (%2 procedures, %3 courses)").arg(file).arg(program->GetNumProcedures()).arg(courses));
    }
    return exitCode;
}
