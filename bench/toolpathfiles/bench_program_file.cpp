// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Builds a demo program (500 courses x 2000 points by default: a million laying points),
// saves and loads it, and prints the times, the file size and the peak memory.
// Usage: bench_program_file [courses] [points-per-course]
#include "ZYLBenchSupport.h"

#include "ZYLTPDemoGenerator.h"
#include "ZYLTPProgramFile.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>

namespace {

double PeakMegabytes() { return ZYLBenchReadMemory().peak; }
double CurrentMegabytes() { return ZYLBenchReadMemory().resident; }

} // namespace

int main(int argc, char *argv[])
{
    const ZYLTPDemoGenerator::Parameters parameters = ZYLBenchDemoParameters(argc, argv);
    QCoreApplication app(argc, argv);

    QElapsedTimer timer;
    timer.start();
    ZYLGeoRef<ZYLTPProgram> program = ZYLTPDemoGenerator::Create(parameters);
    std::printf("build    %8.3f s   %d courses x %d points   rss %.0f MB\n", timer.elapsed() / 1000.0,
                parameters.courses, parameters.pointsPerCourse, CurrentMegabytes());

    QTemporaryDir dir;
    const QString fileName = dir.filePath(QStringLiteral("bench.zyltp.json"));
    const double beforeSave = PeakMegabytes();
    timer.restart();
    const QString error = ZYLTPProgramFile::Save(*program, fileName);
    if (!error.isEmpty()) {
        std::fprintf(stderr, "save failed: %s\n", qPrintable(error));
        return 1;
    }
    const double fileMb = QFileInfo(fileName).size() / 1048576.0;
    std::printf("save     %8.3f s   file %.1f MB   peak %.0f MB (before %.0f MB)\n", timer.elapsed() / 1000.0, fileMb,
                PeakMegabytes(), beforeSave);

    const double modelRss = CurrentMegabytes();
    program.reset();
    const double freedRss = CurrentMegabytes();
    timer.restart();
    const ZYLTPProgramFile::LoadResult loaded = ZYLTPProgramFile::Load(fileName);
    if (!loaded.program) {
        std::fprintf(stderr, "load failed: %s\n", qPrintable(loaded.error));
        return 1;
    }
    std::printf("load     %8.3f s   peak %.0f MB (rss with model %.0f MB, without %.0f MB, model ~%.0f MB)\n",
                timer.elapsed() / 1000.0, PeakMegabytes(), CurrentMegabytes(), freedRss, modelRss - freedRss);
    return 0;
}
