// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Memory and build time of a large tool path program: 500 courses of 2000 tow points built
// with the program builder, measured from the process's resident memory, first without any
// point view, then with every point view created, then the cost of reading every point.

#include "ZYLBenchArguments.h"

#include "ZYLTPCourse.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPProgram.h"
#include "ZYLTPProgramBuilder.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPRoller.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cmath>
#include <cstdio>
#include <unistd.h>

namespace {
// Resident memory in bytes, from /proc/self/statm (second field, in pages).
double ResidentBytes()
{
    std::FILE *file = std::fopen("/proc/self/statm", "r");
    long size = 0;
    long resident = 0;
    if (file) {
        if (std::fscanf(file, "%ld %ld", &size, &resident) != 2)
            resident = 0;
        std::fclose(file);
    }
    return double(resident) * double(sysconf(_SC_PAGESIZE));
}
} // namespace

int main(int argc, char **argv)
{
    ZYLBenchReadArguments(argc, argv);
    QCoreApplication app(argc, argv);
    const int numCourses = 500;
    const int numPoints = 2000;
    const double laying = double(numCourses) * numPoints;

    const double base = ResidentBytes();
    QElapsedTimer timer;
    timer.start();
    ZYLTPProgramBuilder builder;
    auto *roller = builder.AddRoller(QStringLiteral("Roller"), 100.0, 60.0);
    auto *procedure = builder.AddRollLayupProcedure(QStringLiteral("Ply"), QString());
    auto *configuration = builder.AddMachineConfiguration(procedure, nullptr, roller);
    for (int c = 0; c < numCourses; ++c) {
        ZYLTPProgramBuilder::CourseData data;
        data.tips.reserve(numPoints);
        data.normals.reserve(numPoints);
        // A gently curved strip: z follows a sine along x, normals from its slope.
        for (int i = 0; i < numPoints; ++i) {
            const double x = i * 1.0;
            const double slope = 0.02 * std::cos(x * 0.01);
            data.tips.emplace_back(x, c * 6.35, 2.0 * std::sin(x * 0.01));
            data.normals.emplace_back(-slope, 0.0, 1.0);
        }
        // Tows drop in steps along the course: a few trajectories per course.
        for (int run = 0; run < 4; ++run) {
            ZYLTPProgramBuilder::TowRun towRun;
            towRun.numPoints = numPoints / 4;
            towRun.towMask = ZYLCompTowMask(0xFFFFu >> run);
            data.runs.push_back(towRun);
        }
        builder.AddTowCourse(procedure, configuration, std::move(data));
    }
    const double buildSeconds = timer.nsecsElapsed() * 1e-9;
    const double withoutViews = ResidentBytes();

    timer.restart();
    qsizetype touched = 0;
    for (int c = 0; c < procedure->GetNumCourses(); ++c) {
        const ZYLTPCourse *course = procedure->GetCourseByIndex(c);
        for (int i = 0; i < course->GetNumPoints(); ++i)
            touched += course->GetPoint(i) != nullptr;
    }
    const double viewSeconds = timer.nsecsElapsed() * 1e-9;
    const double withViews = ResidentBytes();

    timer.restart();
    double sum = 0.0;
    for (int c = 0; c < procedure->GetNumCourses(); ++c) {
        const ZYLTPCourse *course = procedure->GetCourseByIndex(c);
        for (int i = 0; i < course->GetNumPoints(); ++i)
            sum += course->GetPoint(i)->GetAxis(true).GetThirdDirection().Z();
    }
    const double frameSeconds = timer.nsecsElapsed() * 1e-9;

    // Link motion is derived: the first read after a change computes it, later reads use the
    // cache until the model revision moves on.
    builder.AddLink(procedure, nullptr, procedure->GetCourseByPosition(0), ZYLTPCourseLink::Linear);
    for (int p = 0; p + 1 < procedure->GetNumCourses(); ++p)
        builder.AddLink(procedure, procedure->GetCourseByPosition(p), procedure->GetCourseByPosition(p + 1),
                        ZYLTPCourseLink::Linear);
    builder.AddLink(procedure, procedure->GetCourseByPosition(numCourses - 1), nullptr, ZYLTPCourseLink::Linear);
    double linkLength = 0.0;
    timer.restart();
    for (int i = 0; i < procedure->GetNumLinks(); ++i)
        linkLength += procedure->GetLinkByIndex(i)->GetLength();
    const double linkComputeSeconds = timer.nsecsElapsed() * 1e-9;
    timer.restart();
    for (int i = 0; i < procedure->GetNumLinks(); ++i)
        linkLength += procedure->GetLinkByIndex(i)->GetLength();
    const double linkCachedSeconds = timer.nsecsElapsed() * 1e-9;

    timer.restart();
    const double time = procedure->GetTotalTimeEstimate();
    const double estimateSeconds = timer.nsecsElapsed() * 1e-9;

    std::printf("program: %d courses x %d tow points = %.0f laying points (%lld point views)\n", numCourses,
                numPoints, laying, static_cast<long long>(touched));
    std::printf("build with the builder: %.2f s, %.2f M points/s\n", buildSeconds, laying / buildSeconds * 1e-6);
    std::printf("resident memory without point views: %.1f MB, %.1f bytes per laying point\n",
                (withoutViews - base) / 1e6, (withoutViews - base) / laying);
    std::printf("resident memory with every point view: %.1f MB, %.1f bytes per laying point\n",
                (withViews - base) / 1e6, (withViews - base) / laying);
    std::printf("creating every point view: %.3f s\n", viewSeconds);
    std::printf("tool frame of every point: %.3f s, %.2f M frames/s (checksum %.3f)\n", frameSeconds,
                laying / frameSeconds * 1e-6, sum);
    std::printf("%d links: first read (computing the motion) %.2f ms, cached read %.3f ms (length %.0f mm)\n",
                procedure->GetNumLinks(), linkComputeSeconds * 1e3, linkCachedSeconds * 1e3, linkLength / 2);
    std::printf("total time estimate (%.0f s): %.3f s\n", time, estimateSeconds);
    return 0;
}
