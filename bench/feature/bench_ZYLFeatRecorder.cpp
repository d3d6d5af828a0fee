// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Timing and memory of recording, undo and redo at the scale of a large ply (a million
// laying points). Built with the tests, never run by CTest.
#include "ZYLBenchArguments.h"

#include "ZYLFeatContainer.h"
#include "ZYLFeatRecorder.h"

#include <QElapsedTimer>

#include <malloc.h>

#include <cstdio>
#include <vector>

namespace {

constexpr int kPoints = 1000000;

// Bytes allocated, counting the large blocks malloc maps separately.
std::size_t HeapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void Report(const char *what, int count, qint64 ns)
{
    const double s = double(ns) * 1e-9;
    std::printf("%-44s %8d: %7.3f s, %7.2f M/s\n", what, count, s, count / s * 1e-6);
}

} // namespace

int main(int argc, char **argv)
{
    ZYLBenchReadArguments(argc, argv);
    std::vector<double> tilts(kPoints, 0.0);
    ZYLFeatContainer container;
    QElapsedTimer timer;

    // One change per point: the worst way to record a bulk edit.
    const std::size_t heapBefore = HeapInUse();
    timer.start();
    container.OpenTransaction("tilt each");
    for (int i = 0; i < kPoints; ++i)
        ZYLFeatRecorder::SetValue(tilts[std::size_t(i)], 0.5);
    container.CommitTransaction();
    Report("SetValue, one change per point", kPoints, timer.nsecsElapsed());
    std::printf("%-44s %8d: %7.1f bytes per change\n", "  memory held by the history", kPoints,
                double(HeapInUse() - heapBefore) / kPoints);
    timer.start();
    container.Undo();
    Report("  undo", kPoints, timer.nsecsElapsed());
    timer.start();
    container.Redo();
    Report("  redo", kPoints, timer.nsecsElapsed());
    container.ClearHistory();

    // A drag: the same field set again and again merges into one change.
    double width = 0.0;
    timer.start();
    container.OpenTransaction("drag");
    for (int i = 1; i <= kPoints; ++i)
        ZYLFeatRecorder::SetValue(width, double(i));
    container.CommitTransaction();
    Report("SetValue, one field set repeatedly (merged)", kPoints, timer.nsecsElapsed());

    // The whole array at once: one change, the old buffer kept without a copy.
    std::vector<double> edited(kPoints, 1.0);
    const std::size_t heapBeforeSwap = HeapInUse();
    timer.start();
    container.OpenTransaction("tilt all");
    ZYLFeatRecorder::SetValue(tilts, std::move(edited));
    container.CommitTransaction();
    const qint64 swapNs = timer.nsecsElapsed();
    std::printf("%-44s %8d: %7.3f ms, %+.1f MB held beyond the arrays\n", "SetValue of the whole array", kPoints,
                double(swapNs) * 1e-6, (double(HeapInUse()) - double(heapBeforeSwap)) / 1e6);
    timer.start();
    container.Undo();
    container.Redo();
    std::printf("%-44s %8d: %7.3f ms\n", "  undo and redo", kPoints, double(timer.nsecsElapsed()) * 1e-6);

    // A run of a thousand points inside the million: only the run is kept.
    timer.start();
    for (int i = 0; i < 1000; ++i) {
        container.OpenTransaction("range");
        ZYLFeatRecorder::SetRange(tilts, std::size_t(i) * 1000, std::vector<double>(1000, double(i)));
        container.CommitTransaction();
    }
    Report("SetRange of 1000 points, one transaction each", 1000, timer.nsecsElapsed());

    // Many small commands, then the Edit menu walking the history.
    container.SetHistoryLimit(100000);
    timer.start();
    for (int i = 0; i < 100000; ++i) {
        container.OpenTransaction("small");
        ZYLFeatRecorder::SetValue(tilts[std::size_t(i)], -1.0);
        container.CommitTransaction();
    }
    Report("Small transactions committed", 100000, timer.nsecsElapsed());
    timer.start();
    while (container.CanUndo())
        container.Undo();
    Report("  undone one by one", container.GetRedoCount(), timer.nsecsElapsed());
    return 0;
}
