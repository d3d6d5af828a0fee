// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCliProcess.h"

#include "ZYLTPProcessCheck.h"

#include "ZYLSysException.h"
#include "ZYLSysValue.h"

#include <QCoreApplication>
#include <QSaveFile>

namespace {

QString Tr(const char *text) { return QCoreApplication::translate("zyltp", text); }

QString ShowLength(double value) { return ZYLSysValue(ZYLSysValue::Length, value).ToString(); }

// The options that override a rule, with the member each one sets.
struct RuleOption {
    const char *name;
    double ZYLTPProcessRules::*member;
};
constexpr RuleOption RuleOptions[] = {{"min-radius", &ZYLTPProcessRules::minSteeringRadius},
                                      {"min-cut", &ZYLTPProcessRules::minCutLength},
                                      {"min-add", &ZYLTPProcessRules::minAddLength},
                                      {"min-course", &ZYLTPProcessRules::minCourseLength}};

} // namespace

QString ZYLTPCliProcess::GetSummary() const
{
    return Tr("Checks the tow courses against the process rules (steering radius, tow add and cut lengths, "
              "course length) and lists the violations, with a summary line.");
}

QString ZYLTPCliProcess::GetExitCodes() const
{
    return Tr("Exit codes: 0 no violation found, 1 violations found or the file cannot be read or written, "
              "2 usage error.");
}

int ZYLTPCliProcess::Run(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("file"), Tr("Program file to check."), Tr("FILE"));
    const QCommandLineOption csvOption(QStringLiteral("csv"),
                                       Tr("Also writes the violations to a CSV file (mm)."), Tr("OUT"));
    parser.addOption(csvOption);
    QList<QCommandLineOption> ruleOptions;
    const char *const descriptions[] = {
        QT_TRANSLATE_NOOP("zyltp", "Smallest steering radius, instead of the program's rule (length, display unit or "
                                   "with a unit suffix)."),
        QT_TRANSLATE_NOOP("zyltp", "Shortest stretch a cut tow stays cut, instead of the program's rule."),
        QT_TRANSLATE_NOOP("zyltp", "Shortest stretch an added tow stays fed, instead of the program's rule."),
        QT_TRANSLATE_NOOP("zyltp", "Shortest laid course, instead of the program's rule.")};
    for (size_t k = 0; k < std::size(RuleOptions); ++k) {
        ruleOptions.append(QCommandLineOption(QString::fromLatin1(RuleOptions[k].name), Tr(descriptions[k]), Tr("MM")));
        parser.addOption(ruleOptions.back());
    }
    int exitCode = Ok;
    if (!Parse(parser, arguments, GetSummary(), &exitCode))
        return exitCode;
    if (parser.positionalArguments().size() != 1) {
        PrintError(Tr("zyltp process: give exactly one file"));
        return Usage;
    }
    const QString file = parser.positionalArguments().front();
    const ZYLGeoRef<ZYLTPProgram> loaded = LoadProgram(file);
    if (!loaded)
        return Failed;

    ZYLTPProcessRules rules = loaded->GetProcessRules();
    for (size_t k = 0; k < std::size(RuleOptions); ++k) {
        if (!parser.isSet(ruleOptions[qsizetype(k)]))
            continue;
        QString error;
        double value = 0.0;
        if (!ReadLength(parser.value(ruleOptions[qsizetype(k)]), &value, &error)) {
            PrintError(Tr("zyltp process: --%1: %2").arg(QLatin1String(RuleOptions[k].name), error));
            return Usage;
        }
        ZYLTPProcessRules changed = rules;
        changed.*RuleOptions[k].member = value;
        try {
            ZYLTPProcessRules::Check(changed);
        } catch (const ZYLSysException &e) {
            PrintError(Tr("zyltp process: --%1: %2").arg(QLatin1String(RuleOptions[k].name), e.GetMessage()));
            return Usage;
        }
        rules = changed;
    }

    const ZYLTPProcessCheck check = ZYLTPProcessCheck::Run(ZYLTPProcessCheck::Capture(*loaded, rules));
    QByteArray csv("procedure,course,kind,first_point,last_point,tows,value_mm,limit_mm\n");
    const bool manyProcedures =
        std::any_of(check.GetViolations().begin(), check.GetViolations().end(),
                    [&](const ZYLTPProcessCheck::Violation &v) { return v.procedure != check.GetViolations()[0].procedure; });
    for (const ZYLTPProcessCheck::Violation &v : check.GetViolations()) {
        QString place = manyProcedures ? Tr("Procedure %1, course %2").arg(v.procedure + 1).arg(v.course + 1)
                                       : Tr("Course %1").arg(v.course + 1);
        place += Tr(", points %1-%2").arg(v.firstPoint + 1).arg(v.lastPoint + 1);
        if (v.kind == ZYLTPProcessCheck::AddLength || v.kind == ZYLTPProcessCheck::CutLength)
            place += Tr(", tows %1").arg(v.tows.GetString());
        Print(Tr("%1: %2 %3 < %4")
                  .arg(place, ZYLTPProcessCheck::KindName(v.kind).toLower(), ShowLength(v.value), ShowLength(v.limit)));
        csv += QByteArray::number(v.procedure + 1) + ',' + QByteArray::number(v.course + 1) + ','
               + ZYLTPProcessCheck::KindKey(v.kind) + ',' + QByteArray::number(v.firstPoint + 1) + ','
               + QByteArray::number(v.lastPoint + 1) + ",\"" + v.tows.GetString().toUtf8() + "\","
               + QByteArray::number(v.value, 'g', 10) + ',' + QByteArray::number(v.limit, 'g', 10) + '\n';
    }
    const qsizetype found = qsizetype(check.GetViolations().size());
    const QString checked = Tr("%1 tow courses, %2 tow points").arg(check.GetNumCourses()).arg(check.GetNumPoints());
    if (found == 0) {
        Print(Tr("No process violation in %1").arg(checked));
    } else {
        QStringList kinds;
        for (auto kind : {ZYLTPProcessCheck::SteeringRadius, ZYLTPProcessCheck::AddLength,
                          ZYLTPProcessCheck::CutLength, ZYLTPProcessCheck::CourseLength})
            kinds << QStringLiteral("%1 %2").arg(check.CountViolations(kind)).arg(ZYLTPProcessCheck::KindName(kind).toLower());
        Print(Tr("%1 process violations in %2: %3").arg(found).arg(checked, kinds.join(QStringLiteral(", "))));
    }
    Print(Tr("Rules: tow width %1, steering radius >= %2, cut length >= %3, add length >= %4, course length >= %5")
              .arg(ShowLength(rules.towWidth), ShowLength(rules.minSteeringRadius), ShowLength(rules.minCutLength),
                   ShowLength(rules.minAddLength), ShowLength(rules.minCourseLength)));

    if (parser.isSet(csvOption)) {
        QSaveFile out(parser.value(csvOption));
        if (!out.open(QIODevice::WriteOnly) || out.write(csv) != csv.size() || !out.commit()) {
            PrintError(Tr("zyltp process: Cannot write %1: %2").arg(out.fileName(), out.errorString()));
            return Failed;
        }
    }
    return found == 0 ? Ok : Failed;
}
