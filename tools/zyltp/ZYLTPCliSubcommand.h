// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPProgram.h"

#include "ZYLGeoRef.h"
#include "ZYLMathPoint.h"

#include <QCommandLineParser>
#include <QList>
#include <QString>
#include <QStringList>

#include <utility>

class ZYLTPCourse;

/// A subcommand of the zyltp tool ("demo", "info", "check", "collisions", "edit"): its name,
/// a one-line summary and what it does. New subcommands derive from it and are listed in
/// main.cpp.
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
    /// Returns what the exit codes mean, for --help.
    virtual QString GetExitCodes() const;

    /// Reads a length typed by the user: a number in the user's length unit or with a unit
    /// suffix ("10", "0.5in", "12 mm"). Returns false, with the reason in `error`, for text
    /// that is not a length.
    static bool ReadLength(const QString &text, double *millimetres, QString *error);
    /// Returns the collision points the machine of a course carries, as the studio hands
    /// them to the editing module: the head's (if any), then the tool's.
    static QList<std::pair<ZYLMathPoint, double>> GetCollisionPoints(const ZYLTPCourse &course);

protected:
    /// Sets up the parser with the description, --help and the exit code text, and parses
    /// `arguments`. Returns true when the subcommand should go on; otherwise the run is over
    /// (help shown or a usage error reported on stderr) with `*exitCode` set.
    bool Parse(QCommandLineParser &parser, const QStringList &arguments, const QString &description,
               int *exitCode) const;
    /// Loads a program file; on failure reports "<file>: <located message>" on stderr and
    /// returns null.
    static ZYLGeoRef<ZYLTPProgram> LoadProgram(const QString &file);
    /// Writes a line to stdout or stderr.
    static void Print(const QString &line);
    static void PrintError(const QString &line);
};
