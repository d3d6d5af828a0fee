// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCliCollisions.h"

#include "ZYLTPCourse.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPOnPartTrajectory.h"
#include "ZYLTPResource.h"
#include "ZYLTPRoller.h"
#include "ZYLTPRollLayupProcedure.h"

#include "ZYLSysException.h"
#include "ZYLSysValue.h"

#include <QCoreApplication>
#include <QSaveFile>

#include <charconv>

namespace {

QString Tr(const char *text) { return QCoreApplication::translate("zyltp", text); }

constexpr double DefaultTolerance = 10.0;

// Shortest text that reads back to the same double, for the CSV file.
void AppendNumber(QByteArray &out, double value)
{
    char buffer[32];
    const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof(buffer), value);
    out.append(buffer, int(result.ptr - buffer));
}

QString ResourceName(const ZYLTPResource &resource)
{
    if (qobject_cast<const ZYLTPMachineHead *>(&resource))
        return Tr("head %1").arg(resource.GetId());
    if (qobject_cast<const ZYLTPRoller *>(&resource))
        return Tr("roller %1").arg(resource.GetId());
    return Tr("tool %1").arg(resource.GetId());
}

QString Show(ZYLSysValue::Magnitude magnitude, double value) { return ZYLSysValue(magnitude, value).ToString(); }

} // namespace

QString ZYLTPCliCollisions::GetSummary() const
{
    return Tr("Lists the laying points at which the machine's head or roller comes closer to the ply surface "
              "than a tolerance (default 10 mm), with a summary line.");
}

QString ZYLTPCliCollisions::GetExitCodes() const
{
    return Tr("Exit codes: 0 no collision found, 1 collisions found or the file cannot be read or written, "
              "2 usage error.");
}

int ZYLTPCliCollisions::Run(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("file"), Tr("Program file to check."), Tr("FILE"));
    const QCommandLineOption toleranceOption(
        QStringLiteral("tolerance"),
        Tr("Smallest distance between the collision points and the part, in the display unit or with a unit "
           "suffix (default 10 mm)."),
        Tr("DIST"));
    const QCommandLineOption csvOption(QStringLiteral("csv"),
                                       Tr("Also writes the colliding points to a CSV file (mm and rad)."), Tr("OUT"));
    parser.addOptions({toleranceOption, csvOption});
    int exitCode = Ok;
    if (!Parse(parser, arguments, GetSummary(), &exitCode))
        return exitCode;
    if (parser.positionalArguments().size() != 1) {
        PrintError(Tr("zyltp collisions: give exactly one file"));
        return Usage;
    }
    double tolerance = DefaultTolerance;
    if (parser.isSet(toleranceOption)) {
        QString error;
        if (!ReadLength(parser.value(toleranceOption), &tolerance, &error)) {
            PrintError(Tr("zyltp collisions: --tolerance: %1").arg(error));
            return Usage;
        }
        if (tolerance < 0.0) {
            PrintError(Tr("zyltp collisions: --tolerance must not be negative"));
            return Usage;
        }
    }

    const QString file = parser.positionalArguments().front();
    const ZYLGeoRef<ZYLTPProgram> loaded = LoadProgram(file);
    if (!loaded)
        return Failed;
    const ZYLTPProgram &program = *loaded;
    const ZYLGeoSurface *surface = program.GetPlySurface();
    if (!surface) {
        PrintError(Tr("%1: the program has no ply surface to check collisions against").arg(file));
        return Failed;
    }

    QByteArray csv("procedure,course,point,x_mm,y_mm,z_mm,forward_tilt_rad,side_tilt_rad,resources\n");
    qint64 checked = 0, found = 0;
    int layups = 0;
    for (int p = 0; p < program.GetNumProcedures(); ++p)
        layups += qobject_cast<const ZYLTPRollLayupProcedure *>(program.GetProcedure(p)) ? 1 : 0;
    for (int p = 0; p < program.GetNumProcedures(); ++p) {
        const auto *layup = qobject_cast<const ZYLTPRollLayupProcedure *>(program.GetProcedure(p));
        if (!layup)
            continue;
        for (int position = 0; position < layup->GetNumCourses(); ++position) {
            const ZYLTPCourse *course = layup->GetCourseByPosition(position);
            const QList<std::pair<ZYLMathPoint, double>> spheres = GetCollisionPoints(*course);
            if (spheres.isEmpty())
                continue;
            const ZYLTPMachineConfiguration &configuration = course->GetMachineConfiguration();
            for (int i = 0; i < course->GetNumPoints(); ++i, ++checked) {
                const ZYLTPOnPartPoint *point = course->GetPoint(i);
                if (!point->DetectCollision(surface, true, tolerance, spheres))
                    continue;
                ++found;
                // Which resources: the head's spheres and the tool's, each on its own.
                QStringList resources;
                for (const ZYLTPResource *resource : {static_cast<const ZYLTPResource *>(configuration.GetHead()),
                                                      static_cast<const ZYLTPResource *>(configuration.GetTool())}) {
                    if (resource && point->DetectCollision(surface, true, tolerance, resource->GetCollisionPoints()))
                        resources << ResourceName(*resource);
                }
                const ZYLMathPoint tip = point->GetTipPoint();
                const ZYLTPOnPartTrajectory *trajectory = point->GetOnPartTrajectory();
                const QString place = layups > 1 ? Tr("Procedure %1, course %2, point %3").arg(p + 1).arg(position + 1).arg(i + 1)
                                                 : Tr("Course %1, point %2").arg(position + 1).arg(i + 1);
                Print(Tr("%1: tip (%2, %3, %4), forward tilt %5, side tilt %6: %7")
                          .arg(place, Show(ZYLSysValue::Length, tip.X()), Show(ZYLSysValue::Length, tip.Y()),
                               Show(ZYLSysValue::Length, tip.Z()), Show(ZYLSysValue::Angle, trajectory->GetForwardTilt()),
                               Show(ZYLSysValue::Angle, trajectory->GetSideTilt()), resources.join(QStringLiteral(", "))));
                csv += QByteArray::number(p + 1) + ',' + QByteArray::number(position + 1) + ','
                       + QByteArray::number(i + 1);
                for (double value : {tip.X(), tip.Y(), tip.Z(), trajectory->GetForwardTilt(), trajectory->GetSideTilt()}) {
                    csv += ',';
                    AppendNumber(csv, value);
                }
                csv += ',' + resources.join(QLatin1Char(';')).toUtf8() + '\n';
            }
        }
    }
    const QString shownTolerance = Show(ZYLSysValue::Length, tolerance);
    if (found == 0)
        Print(Tr("No colliding laying point among %1 checked at %2").arg(checked).arg(shownTolerance));
    else
        Print(Tr("%1 colliding laying points among %2 checked at %3").arg(found).arg(checked).arg(shownTolerance));

    if (parser.isSet(csvOption)) {
        QSaveFile out(parser.value(csvOption));
        if (!out.open(QIODevice::WriteOnly) || out.write(csv) != csv.size() || !out.commit()) {
            PrintError(Tr("zyltp collisions: Cannot write %1: %2").arg(out.fileName(), out.errorString()));
            return Failed;
        }
    }
    return found == 0 ? Ok : Failed;
}
