// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCliDemo.h"

#include "ZYLTPDemoGenerator.h"
#include "ZYLTPProgramFile.h"

#include "ZYLSysException.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <type_traits>

namespace {
QString Tr(const char *text) { return QCoreApplication::translate("zyltp", text); }
} // namespace

QString ZYLTPCliDemo::GetSummary() const
{
    return Tr("Makes a demonstration program on a doubly curved panel and saves it.");
}

int ZYLTPCliDemo::Run(const QStringList &arguments)
{
    QCommandLineParser parser;
    const QCommandLineOption courses(QStringLiteral("courses"), Tr("Number of courses (default 24)."), Tr("N"));
    const QCommandLineOption points(QStringLiteral("points-per-course"),
                                    Tr("Tow points per course (default: one every 5 mm)."), Tr("M"));
    const QCommandLineOption tows(QStringLiteral("tows"), Tr("Tows per course, 8 to 16 (default 8)."), Tr("T"));
    const QCommandLineOption seed(QStringLiteral("seed"), Tr("Seed of the random variations (default 1)."), Tr("S"));
    const QCommandLineOption output(QStringList{QStringLiteral("o"), QStringLiteral("output")},
                                    Tr("File to write (*.zyltp.json)."), Tr("FILE"));
    const QCommandLineOption faults(QStringLiteral("process-faults"),
                                    Tr("Breaks the process rules on purpose in a few courses (a tight bend, short "
                                       "tow runs, a short course)."));
    parser.addOptions({courses, points, tows, seed, faults, output});
    int exitCode = Ok;
    if (!Parse(parser, arguments, GetSummary(), &exitCode))
        return exitCode;
    if (!parser.positionalArguments().isEmpty()) {
        PrintError(Tr("zyltp demo: unexpected argument \"%1\"").arg(parser.positionalArguments().front()));
        return Usage;
    }
    if (!parser.isSet(output)) {
        PrintError(Tr("zyltp demo: no output file given (-o FILE)"));
        return Usage;
    }

    ZYLTPDemoGenerator::Parameters parameters;
    parameters.processFaults = parser.isSet(faults);
    // Reads an integer option; false (with the message printed) for text that is not one.
    auto readInt = [&](const QCommandLineOption &option, auto *target) {
        if (!parser.isSet(option))
            return true;
        bool ok = false;
        const qlonglong value = parser.value(option).toLongLong(&ok);
        if (!ok || value < 0) {
            PrintError(Tr("zyltp demo: --%1 needs a non-negative integer, not \"%2\"")
                           .arg(option.names().front(), parser.value(option)));
            return false;
        }
        *target = static_cast<std::remove_pointer_t<decltype(target)>>(value);
        return true;
    };
    if (!readInt(courses, &parameters.courses) || !readInt(points, &parameters.pointsPerCourse)
        || !readInt(tows, &parameters.tows) || !readInt(seed, &parameters.seed))
        return Usage;

    QElapsedTimer timer;
    timer.start();
    ZYLGeoRef<ZYLTPProgram> program;
    try {
        program = ZYLTPDemoGenerator::Create(parameters);
    } catch (const ZYLSysException &e) {
        PrintError(Tr("zyltp demo: %1").arg(e.GetMessage()));
        return Usage;
    }
    const qint64 built = timer.restart();
    const QString fileName = parser.value(output);
    const QString error = ZYLTPProgramFile::Save(*program, fileName);
    if (!error.isEmpty()) {
        PrintError(Tr("zyltp demo: %1").arg(error));
        return Failed;
    }
    Print(Tr("Wrote %1 (built in %2 ms, saved in %3 ms)").arg(fileName).arg(built).arg(timer.elapsed()));
    return Ok;
}
