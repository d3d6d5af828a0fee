// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCliInfo.h"

#include "ZYLTPCourse.h"
#include "ZYLTPInspectionProcedure.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPTool.h"
#include "ZYLTPMachineHead.h"

#include "ZYLSysValue.h"

#include <QCoreApplication>

namespace {

QString Tr(const char *text) { return QCoreApplication::translate("zyltp", text); }

// Values in the user's display units, as everywhere else in the application.
QString Show(ZYLSysValue::Magnitude magnitude, double value) { return ZYLSysValue(magnitude, value).ToString(); }

void Line(QStringList &out, const QString &label, const QString &value)
{
    out.append(QStringLiteral("  %1 %2").arg(label + QLatin1Char(':'), -26).arg(value));
}

void DescribeRollLayup(const ZYLTPRollLayupProcedure &p, QStringList &out)
{
    qint64 points = 0;
    for (int i = 0; i < p.GetNumCourses(); ++i)
        points += p.GetCourseByIndex(i)->GetNumPoints();
    Line(out, Tr("Courses"), QString::number(p.GetNumCourses()));
    Line(out, Tr("Laying points"), QString::number(points));
    Line(out, Tr("Links"), QString::number(p.GetNumLinks()));
    Line(out, Tr("Machine configurations"), QString::number(p.GetNumMachineConfigurations()));
    Line(out, Tr("Overall course length"), Show(ZYLSysValue::Length, p.GetOverallCourseLength()));
    Line(out, Tr("Material length"), Show(ZYLSysValue::Length, p.GetTotalMaterialLength()));
    Line(out, Tr("Laying time"), Show(ZYLSysValue::Time, p.GetLayingTimeEstimate()));
    Line(out, Tr("Linking time"), Show(ZYLSysValue::Time, p.GetLinkingTimeEstimate()));
    Line(out, Tr("Approach time"), Show(ZYLSysValue::Time, p.GetApproachTimeEstimate()));
    Line(out, Tr("Retract time"), Show(ZYLSysValue::Time, p.GetRetractTimeEstimate()));
    Line(out, Tr("Total time"), Show(ZYLSysValue::Time, p.GetTotalTimeEstimate()));
    Line(out, Tr("Laying feed rate"), Show(ZYLSysValue::FeedRate, p.GetLayingFeedrate()));
}

} // namespace

QString ZYLTPCliInfo::GetSummary() const
{
    return Tr("Summarises a tool path program file: procedures, courses, laying points, links, lengths and "
              "time estimates in the display units.");
}

int ZYLTPCliInfo::Run(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("file"), Tr("Program file to summarise."), Tr("FILE"));
    int exitCode = Ok;
    if (!Parse(parser, arguments, GetSummary(), &exitCode))
        return exitCode;
    if (parser.positionalArguments().size() != 1) {
        PrintError(Tr("zyltp info: give exactly one file"));
        return Usage;
    }
    const QString file = parser.positionalArguments().front();
    const ZYLGeoRef<ZYLTPProgram> loaded = LoadProgram(file);
    if (!loaded)
        return Failed;
    const ZYLTPProgram &program = *loaded;
    QStringList out;
    out.append(Tr("Program %1").arg(file));
    Line(out, Tr("Machine heads"), QString::number(program.GetNumMachineHeads()));
    Line(out, Tr("Tools"), QString::number(program.GetNumTools()));
    Line(out, Tr("Ply surface"), program.GetPlySurface() ? Tr("yes") : Tr("none"));
    Line(out, Tr("Ply boundaries"), QString::number(program.GetPlyBoundaries().size()));
    Line(out, Tr("Procedures"), QString::number(program.GetNumProcedures()));
    for (int i = 0; i < program.GetNumProcedures(); ++i) {
        const ZYLTPProcedure *procedure = program.GetProcedure(i);
        if (const auto *layup = qobject_cast<const ZYLTPRollLayupProcedure *>(procedure)) {
            out.append(Tr("Procedure %1: %2 (roll layup)").arg(i + 1).arg(procedure->GetName()));
            DescribeRollLayup(*layup, out);
        } else if (const auto *inspection = qobject_cast<const ZYLTPInspectionProcedure *>(procedure)) {
            out.append(Tr("Procedure %1: %2 (inspection)").arg(i + 1).arg(procedure->GetName()));
            Line(out, Tr("Path length"), Show(ZYLSysValue::Length, inspection->GetPathLength()));
            Line(out, Tr("Total time"), Show(ZYLSysValue::Time, inspection->GetTotalTimeEstimate()));
        }
    }
    for (const QString &line : out)
        Print(line);
    return Ok;
}
