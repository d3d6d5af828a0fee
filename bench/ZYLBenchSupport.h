// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once
// What the benchmarks share: the size of the demo program from the command line and the
// process's memory.

#include "ZYLBenchArguments.h"
#include "ZYLTPDemoGenerator.h"

#include <QFile>
#include <QList>

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

/// The demo program of the million-point workload (by default 500 courses of 2000 points, 16
/// tows), or of the courses and points per course given as the two optional arguments; other
/// arguments end the process with the usage line (`ZYLBenchReadArguments`).
inline ZYLTPDemoGenerator::Parameters ZYLBenchDemoParameters(int argc, char **argv, long courses = 500,
                                                              long pointsPerCourse = 2000)
{
    const std::vector<long> sizes = ZYLBenchReadArguments(
        argc, argv, {{"COURSES", courses}, {"POINTS_PER_COURSE", pointsPerCourse, 2}});
    ZYLTPDemoGenerator::Parameters parameters;
    parameters.courses = int(sizes[0]);
    parameters.pointsPerCourse = int(sizes[1]);
    parameters.tows = 16;
    return parameters;
}
