// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCliEdit.h"

#include "ZYLTPCourse.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPProgramFile.h"
#include "ZYLTPRollLayupProcedure.h"

#include "ZYLFeatContainer.h"
#include "ZYLFeatTransactionContext.h"
#include "ZYLSysException.h"
#include "ZYLSysMessageQueue.h"

#include <QCoreApplication>
#include <QHash>

#include <functional>
#include <vector>

namespace {

QString Tr(const char *text) { return QCoreApplication::translate("zyltp", text); }

// One edit of the command line: its option as typed and what it does to one procedure.
struct Step {
    QString option;
    std::function<void(ZYLTPProgram &, ZYLTPRollLayupProcedure &)> apply;
};

void Relink(ZYLTPRollLayupProcedure &layup, ZYLTPCourseLink::OffPartMotionStrategy strategy)
{
    layup.RemoveAllLinks();
    const int n = layup.GetNumCourses();
    if (n == 0)
        return;
    // Linking in laying order keeps the order: each link joins a course to the one after it.
    layup.LinkCourses(nullptr, layup.GetCourseByPosition(0), &strategy);
    for (int p = 0; p + 1 < n; ++p)
        layup.LinkCourses(layup.GetCourseByPosition(p), layup.GetCourseByPosition(p + 1), &strategy);
    layup.LinkCourses(layup.GetCourseByPosition(n - 1), nullptr, &strategy);
}

void BreakAll(ZYLTPRollLayupProcedure &layup, double length)
{
    layup.BreakAllCourses(length);
    // A break hands the ranges after it to the new piece, placed right after the course in
    // the stored list, so one pass over the growing list meets every range.
    for (int index = 0; index < layup.GetNumCourses(); ++index) {
        ZYLTPCourse *course = layup.GetCourseByIndex(index);
        while (course->GetNumBreakRanges() > 0) {
            const int before = course->GetNumBreakRanges();
            course->Break(course->GetBreakRange(0));
            if (course->GetNumBreakRanges() >= before)
                throw ZYLSysException(Tr("Breaking course %1 left its break range in place").arg(index + 1));
        }
    }
}

void AvoidAll(const ZYLTPProgram &program, ZYLTPRollLayupProcedure &layup, double distance)
{
    const ZYLGeoSurface *surface = program.GetPlySurface();
    if (!surface)
        throw ZYLSysException(Tr("The program has no ply surface to avoid collisions with"));
    for (int p = 0; p < layup.GetNumCourses(); ++p) {
        ZYLTPCourse *course = layup.GetCourseByPosition(p);
        const QList<std::pair<ZYLMathPoint, double>> spheres = ZYLTPCliSubcommand::GetCollisionPoints(*course);
        if (!spheres.isEmpty())
            course->AvoidCollisions(surface, true, distance, spheres, course->GetPoint(0), nullptr);
    }
}

} // namespace

QString ZYLTPCliEdit::GetSummary() const
{
    return Tr("Applies edits to every roll layup procedure of a program, in the order given, and writes the "
              "result: reverse courses, reverse the laying order, break courses to a length, relink, avoid "
              "collisions. Lengths are in the display unit or carry a unit suffix (\"10\", \"0.5in\"). Each edit "
              "is one transaction; when one is refused, nothing is written.");
}

QString ZYLTPCliEdit::GetExitCodes() const
{
    return Tr("Exit codes: 0 written, 1 bad file, refused edit (error messages of collision avoidance included) "
              "or failed write, 2 usage error.");
}

int ZYLTPCliEdit::Run(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("file"), Tr("Program file to edit."), Tr("FILE"));
    const QCommandLineOption output(QStringList{QStringLiteral("o"), QStringLiteral("output")},
                                    Tr("File to write (*.zyltp.json); may be FILE itself."), Tr("OUT"));
    const QCommandLineOption reverseAll(QStringLiteral("reverse-all"), Tr("Reverses every course."));
    const QCommandLineOption reverseOdd(QStringLiteral("reverse-odd"),
                                        Tr("Reverses the courses at odd laying positions (the 2nd, 4th, ...)."));
    const QCommandLineOption reverseOrder(QStringLiteral("reverse-order"),
                                          Tr("Reverses the laying order, turning the links round."));
    const QCommandLineOption breakAll(QStringLiteral("break-all"),
                                      Tr("Places break ranges so that no piece is longer than LENGTH and breaks "
                                         "every course at all its break ranges."),
                                      Tr("LENGTH"));
    const QCommandLineOption relink(QStringLiteral("relink"),
                                    Tr("Removes all links and links the approach, every course in laying order "
                                       "and the retract with STRATEGY: linear or safety-plane."),
                                    Tr("STRATEGY"));
    const QCommandLineOption avoid(QStringLiteral("avoid-collisions"),
                                   Tr("Tilts the tool wherever the head or roller comes closer than DIST to the "
                                      "ply surface."),
                                   Tr("DIST"));
    parser.addOptions({output, reverseAll, reverseOdd, reverseOrder, breakAll, relink, avoid});
    int exitCode = Ok;
    if (!Parse(parser, arguments, GetSummary(), &exitCode))
        return exitCode;
    if (parser.positionalArguments().size() != 1) {
        PrintError(Tr("zyltp edit: give exactly one file"));
        return Usage;
    }
    if (!parser.isSet(output)) {
        PrintError(Tr("zyltp edit: no output file given (-o OUT)"));
        return Usage;
    }

    // The edits in the order they were typed; values are read before the file is loaded, so
    // that a typing error costs no load.
    std::vector<Step> steps;
    QHash<QString, int> occurrences;
    for (const QString &name : parser.optionNames()) {
        const QString option = QStringLiteral("--") + name;
        if (name == QLatin1String("reverse-all")) {
            steps.push_back({option, [](ZYLTPProgram &, ZYLTPRollLayupProcedure &l) { l.ReverseAllCourses(); }});
        } else if (name == QLatin1String("reverse-odd")) {
            steps.push_back({option, [](ZYLTPProgram &, ZYLTPRollLayupProcedure &l) { l.ReverseOddCourses(); }});
        } else if (name == QLatin1String("reverse-order")) {
            steps.push_back({option, [](ZYLTPProgram &, ZYLTPRollLayupProcedure &l) { l.ReverseLayingOrder(); }});
        } else if (name == QLatin1String("relink")) {
            const QString value = parser.values(name).value(occurrences[name]++);
            ZYLTPCourseLink::OffPartMotionStrategy strategy;
            if (value == QLatin1String("linear")) {
                strategy = ZYLTPCourseLink::Linear;
            } else if (value == QLatin1String("safety-plane")) {
                strategy = ZYLTPCourseLink::SafetyPlane;
            } else {
                PrintError(Tr("zyltp edit: --relink takes linear or safety-plane, not \"%1\"").arg(value));
                return Usage;
            }
            steps.push_back({option, [strategy](ZYLTPProgram &, ZYLTPRollLayupProcedure &l) { Relink(l, strategy); }});
        } else if (name == QLatin1String("break-all") || name == QLatin1String("avoid-collisions")) {
            const QString value = parser.values(name).value(occurrences[name]++);
            double length = 0.0;
            QString error;
            if (!ReadLength(value, &length, &error)) {
                PrintError(Tr("zyltp edit: %1: %2").arg(option, error));
                return Usage;
            }
            if (name == QLatin1String("break-all"))
                steps.push_back({option, [length](ZYLTPProgram &, ZYLTPRollLayupProcedure &l) { BreakAll(l, length); }});
            else
                steps.push_back(
                    {option, [length](ZYLTPProgram &p, ZYLTPRollLayupProcedure &l) { AvoidAll(p, l, length); }});
        }
    }
    if (steps.empty()) {
        PrintError(Tr("zyltp edit: no edit given"));
        return Usage;
    }

    const QString file = parser.positionalArguments().front();
    const ZYLGeoRef<ZYLTPProgram> loaded = LoadProgram(file);
    if (!loaded)
        return Failed;
    ZYLTPProgram &program = *loaded;
    ZYLFeatContainer container;
    for (const Step &step : steps) {
        ZYLSysMessageQueue queue;
        try {
            ZYLFeatTransactionContext transaction(&container, step.option, true, ZYLFeatTransactionContext::NoAutoUpdate);
            for (int p = 0; p < program.GetNumProcedures(); ++p) {
                if (auto *layup = qobject_cast<ZYLTPRollLayupProcedure *>(program.GetProcedure(p)))
                    step.apply(program, *layup);
            }
            for (const ZYLSysMessageQueue::Message &message : queue.GetMessages())
                PrintError(QStringLiteral("zyltp edit: %1: %2").arg(step.option, message.first));
            if (queue.HasErrors())
                return Failed;
            transaction.FlagComplete();
        } catch (const ZYLSysException &e) {
            PrintError(Tr("zyltp edit: %1: %2").arg(step.option, e.GetMessage()));
            return Failed;
        }
    }
    const QString target = parser.value(output);
    const QString error = ZYLTPProgramFile::Save(program, target);
    if (!error.isEmpty()) {
        PrintError(Tr("zyltp edit: %1").arg(error));
        return Failed;
    }
    int courses = 0, links = 0;
    for (int p = 0; p < program.GetNumProcedures(); ++p) {
        if (const auto *layup = qobject_cast<const ZYLTPRollLayupProcedure *>(program.GetProcedure(p))) {
            courses += layup->GetNumCourses();
            links += layup->GetNumLinks();
        }
    }
    QStringList applied;
    for (const Step &step : steps)
        applied << step.option;
    Print(Tr("Wrote %1 after %2 (%3 courses, %4 links)")
              .arg(target, applied.join(QStringLiteral(", ")))
              .arg(courses)
              .arg(links));
    return Ok;
}
