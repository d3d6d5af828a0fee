// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once
// What the benchmarks share: the size of the demo program from the command line and the
// process's memory.

#include "ZYLTPDemoGenerator.h"

#include <QFile>
#include <QList>
#include <QStringList>

/// Resident and peak resident memory of this process, MB (from /proc; -1 where unknown).
struct ZYLBenchMemory {
    double resident = -1.0;
    double peak = -1.0;
};

inline ZYLBenchMemory ZYLBenchReadMemory()
{
    ZYLBenchMemory memory;
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return memory;
    for (const QByteArray &line : status.readAll().split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() < 2)
            continue;
        if (fields[0] == "VmRSS:")
            memory.resident = fields[1].toDouble() / 1024.0;
        else if (fields[0] == "VmHWM:")
            memory.peak = fields[1].toDouble() / 1024.0;
    }
    return memory;
}

/// The demo program of the million-point workload (500 courses of 2000 points, 16 tows), or
/// of the courses and points per course given as the first two arguments after the program.
inline ZYLTPDemoGenerator::Parameters ZYLBenchDemoParameters(const QStringList &arguments)
{
    ZYLTPDemoGenerator::Parameters parameters;
    parameters.courses = arguments.size() > 1 ? arguments.at(1).toInt() : 500;
    parameters.pointsPerCourse = arguments.size() > 2 ? arguments.at(2).toInt() : 2000;
    parameters.tows = 16;
    return parameters;
}
