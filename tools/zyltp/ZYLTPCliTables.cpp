// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCliTables.h"

#include "ZYLTPDetailedTableCsvWriter.h"
#include "ZYLTPDetailedTableFilter.h"
#include "ZYLTPDetailedTableModel.h"

#include <QCoreApplication>

#include <array>
#include <optional>

namespace {

using Model = ZYLTPDetailedTableModel;

QString Tr(const char *text) { return QCoreApplication::translate("zyltp", text); }

const std::array<QString, 4> &TableNames()
{
    static const std::array<QString, 4> names{QStringLiteral("operation"), QStringLiteral("course"),
                                              QStringLiteral("points"), QStringLiteral("links")};
    return names;
}

// "ply.zyltp.json" gives "ply-points.csv" beside it.
QString DefaultOutput(const QString &file, const QString &table)
{
    QString base = file;
    for (const QLatin1String suffix : {QLatin1String(".zyltp.json"), QLatin1String(".json")}) {
        if (base.endsWith(suffix, Qt::CaseInsensitive)) {
            base.chop(suffix.size());
            break;
        }
    }
    return base + QLatin1Char('-') + table + QStringLiteral(".csv");
}

// The message the panel shows for a refused filter.
QString FilterMessage(const ZYLTPDetailedTableFilter &filter)
{
    switch (filter.GetError()) {
    case ZYLTPDetailedTableFilter::NoProperty: return Tr("Please select a property.");
    case ZYLTPDetailedTableFilter::NoCondition: return Tr("Please select a condition.");
    case ZYLTPDetailedTableFilter::NoValue: return Tr("Please input value.");
    case ZYLTPDetailedTableFilter::NoNumber: return Tr("Please input number value.");
    case ZYLTPDetailedTableFilter::InvalidValue: return Tr("Invalid value:") + filter.GetMessage();
    case ZYLTPDetailedTableFilter::NoError: break;
    }
    return {};
}

} // namespace

QString ZYLTPCliTables::GetSummary() const
{
    return Tr("Writes the detailed tables of a program file (operation, course, laying points, links) as CSV "
              "files, as the studio's detailed info panel saves them; optionally one table filtered on one "
              "column.");
}

int ZYLTPCliTables::Run(const QStringList &arguments)
{
    // "--filter COLUMN CONDITION VALUE" takes three values, which the parser cannot: they are
    // taken out first.
    QStringList rest = arguments;
    std::optional<QStringList> filterArguments;
    const qsizetype at = rest.indexOf(QStringLiteral("--filter"));
    if (at > 0) {
        if (at + 3 >= rest.size()) {
            PrintError(Tr("zyltp tables: --filter needs COLUMN CONDITION VALUE"));
            return Usage;
        }
        filterArguments = rest.mid(at + 1, 3);
        rest.remove(at, 4);
    }
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("file"), Tr("Program file."), Tr("FILE"));
    const QCommandLineOption table(QStringLiteral("table"),
                                   Tr("Writes only this table: operation, course, points or links."),
                                   Tr("TABLE"));
    const QCommandLineOption filter(
        QStringLiteral("filter"),
        Tr("Keeps the rows whose COLUMN (its header, e.g. \"Feed rate\") meets CONDITION (e.g. \"greater than\", "
           "or its number 0-9) with VALUE (a number in the display unit or with a unit, a tow list, a text); "
           "needs --table course, points or links."),
        Tr("COLUMN CONDITION VALUE"));
    const QCommandLineOption output(QStringList{QStringLiteral("o"), QStringLiteral("output")},
                                    Tr("Writes the table to OUT (\".csv\" is appended unless present); needs "
                                       "--table. Default: FILE-<table>.csv beside the file."),
                                    Tr("OUT"));
    parser.addOption(table);
    parser.addOption(filter);
    parser.addOption(output);
    int exitCode = Ok;
    if (!Parse(parser, rest, GetSummary(), &exitCode))
        return exitCode;
    if (parser.positionalArguments().size() != 1) {
        PrintError(Tr("zyltp tables: give exactly one file"));
        return Usage;
    }
    const QString file = parser.positionalArguments().front();
    QList<Model::Table> tables{Model::Operation, Model::Course, Model::LayingPoints, Model::LinkingMotion};
    if (parser.isSet(table)) {
        const qsizetype index = std::find(TableNames().begin(), TableNames().end(), parser.value(table))
                                - TableNames().begin();
        if (index >= qsizetype(TableNames().size())) {
            PrintError(Tr("zyltp tables: unknown table \"%1\" (operation, course, points or links)")
                           .arg(parser.value(table)));
            return Usage;
        }
        tables = {Model::Table(index)};
    } else if (filterArguments || parser.isSet(output)) {
        PrintError(Tr("zyltp tables: --filter and -o need --table"));
        return Usage;
    }
    std::optional<int> condition;
    if (filterArguments) {
        condition = ZYLTPDetailedTableFilter::FindCondition(filterArguments->at(1));
        if (!condition) {
            PrintError(Tr("zyltp tables: unknown condition \"%1\"").arg(filterArguments->at(1)));
            return Usage;
        }
    }

    const ZYLGeoRef<ZYLTPProgram> program = LoadProgram(file);
    if (!program)
        return Failed;
    for (const Model::Table t : tables) {
        const Model model(t, program.get());
        std::vector<int> rows;
        rows.reserve(size_t(model.rowCount()));
        if (filterArguments) {
            const ZYLTPDetailedTableFilter f =
                ZYLTPDetailedTableFilter::Create(model, filterArguments->at(0), condition, filterArguments->at(2));
            if (f.GetError() != ZYLTPDetailedTableFilter::NoError) {
                PrintError(QStringLiteral("zyltp tables: %1").arg(FilterMessage(f)));
                return Usage;
            }
            for (int row = 0; row < model.rowCount(); ++row) {
                if (f.Accepts(model, row))
                    rows.push_back(row);
            }
        } else {
            for (int row = 0; row < model.rowCount(); ++row)
                rows.push_back(row);
        }
        QList<int> columns;
        for (int column = 0; column < model.columnCount(); ++column)
            columns.append(column);
        ZYLTPDetailedTableCsvWriter writer(model, std::move(rows), columns);
        // As the panel shows them: the laying points table without row headers.
        writer.SetHeadersShown(true, t != Model::LayingPoints);
        const QString name = parser.isSet(output) ? ZYLTPDetailedTableCsvWriter::CompleteFileName(parser.value(output))
                                                  : DefaultOutput(file, TableNames()[size_t(t)]);
        if (writer.Write(name) != ZYLTPDetailedTableCsvWriter::Written) {
            PrintError(Tr("zyltp tables: unable to save to %1: %2").arg(name, writer.GetError()));
            return Failed;
        }
        Print(name);
    }
    return Ok;
}
