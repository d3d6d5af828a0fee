// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

/// A subcommand of the zyltp tool ("demo", "info", "check"): its name, a one-line summary
/// and what it does. New subcommands derive from it and are listed in main.cpp.
class ZYLTPCliSubcommand {
public:
    /// Exit codes of every subcommand.
    enum ExitCode { Ok = 0, Failed = 1, Usage = 2 };

    virtual ~ZYLTPCliSubcommand() = default;
    virtual QString GetName() const = 0;
    virtual QString GetSummary() const = 0;
    /// Runs the subcommand; `arguments` holds the program path followed by the subcommand's
    /// own arguments (its name left out). Returns the exit code.
    virtual int Run(const QStringList &arguments) = 0;

protected:
    /// Sets up the parser with the description, --help and the exit code text, and parses
    /// `arguments`. Returns true when the subcommand should go on; otherwise the run is over
    /// (help shown or a usage error reported on stderr) with `*exitCode` set.
    bool Parse(QCommandLineParser &parser, const QStringList &arguments, const QString &description,
               int *exitCode) const;
    /// Writes a line to stdout or stderr.
    static void Print(const QString &line);
    static void PrintError(const QString &line);
};
