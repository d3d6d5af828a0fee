// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The studio on a ply of 500 courses × 2,000 laying points (1M points) made by the demo
// generator: time from start (host services, module, window) to the first frame of the
// opened program, the repaint after an orbit, and resident memory. Run under Xvfb for
// software OpenGL:
//   xvfb-run -a -s "-screen 0 1600x1000x24" bench_studio [courses points-per-course]
#include "ZYLBenchSupport.h"

#include "ZYLStudioMainWindow.h"

#include "ZYLStudioSession.h"
#include "ZYLStudioViewer.h"

#include "ZYLTPDemoGenerator.h"
#include "ZYLTPProgramFile.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

namespace {

// Resident and peak resident memory of this process in MB.
std::pair<double, double> ResidentMegabytes() {
    const ZYLBenchMemory memory = ZYLBenchReadMemory();
    return {memory.resident, memory.peak};
}

// Asks for a frame, lets the event loop draw it and waits until the (software) GPU has
// finished it; returns milliseconds, or -1 when no frame came within `timeoutMs`.
double TimeFrame(ZYLStudioViewer &viewer, int timeoutMs = 60000) {
    QElapsedTimer timer;
    timer.start();
    const quint64 before = viewer.GetFrameCount();
    viewer.update();
    while (viewer.GetFrameCount() == before) {
        if (timer.elapsed() > timeoutMs)
            return -1.0;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    }
    viewer.makeCurrent();
    viewer.context()->functions()->glFinish();
    viewer.doneCurrent();
    return timer.nsecsElapsed() / 1e6;
}

// Writes the demo program of the given size to `file`; returns an error text.
QString MakeProgram(const QString &file, int courses, int pointsPerCourse) {
    ZYLTPDemoGenerator::Parameters parameters;
    parameters.courses = courses;
    parameters.pointsPerCourse = pointsPerCourse;
    ZYLGeoRef<ZYLTPProgram> program = ZYLTPDemoGenerator::Create(parameters);
    return ZYLTPProgramFile::Save(*program, file);
}

} // namespace

int main(int argc, char **argv) {
    // "--make FILE COURSES POINTS": the child that writes the program, so that the memory
    // measured below is the studio's alone.
    if (argc == 5 && std::strcmp(argv[1], "--make") == 0) {
        QCoreApplication app(argc, argv);
        const QString error = MakeProgram(QString::fromLocal8Bit(argv[2]), std::atoi(argv[3]), std::atoi(argv[4]));
        if (!error.isEmpty())
            std::printf("cannot write the program: %s\n", qPrintable(error));
        return error.isEmpty() ? 0 : 1;
    }
    const ZYLTPDemoGenerator::Parameters size = ZYLBenchDemoParameters(argc, argv);
    const int courses = size.courses;
    const int pointsPerCourse = size.pointsPerCourse;
    QApplication app(argc, argv);

    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("large.zyltp.json"));
    QElapsedTimer timer;
    timer.start();
    if (QProcess::execute(QCoreApplication::applicationFilePath(),
                          {QStringLiteral("--make"), file, QString::number(courses), QString::number(pointsPerCourse)})
        != 0)
        return 1;
    std::printf("program: %d courses x %d points (%.1f MB file) made in %.2f s (not part of the start)\n", courses,
                pointsPerCourse, QFileInfo(file).size() / 1e6, timer.nsecsElapsed() / 1e9);
    const double rssBefore = ResidentMegabytes().first;

    // Start as zylstudio does with the file on its command line.
    timer.restart();
    ZYLStudioSession session;
    if (!session.Start()) {
        std::printf("the module could not be loaded: %s\n", qPrintable(session.GetErrorString()));
        return 1;
    }
    const double started = timer.nsecsElapsed() / 1e9;
    ZYLStudioMainWindow window(&session);
    window.SetMessageBoxesEnabled(false);
    window.show();
    if (!QTest::qWaitForWindowExposed(&window)) {
        std::printf("the window was not exposed\n");
        return 1;
    }
    const double shown = timer.nsecsElapsed() / 1e9;
    if (!window.GetOpenGLError().isEmpty()) {
        std::printf("%s\n", qPrintable(window.GetOpenGLError()));
        return 1;
    }
    if (!window.OpenProgramFile(file))
        return 1;
    const double opened = timer.nsecsElapsed() / 1e9;
    ZYLStudioViewer &viewer = *window.GetViewer();
    if (TimeFrame(viewer) < 0.0) {
        std::printf("no frame was drawn\n");
        return 1;
    }
    const double firstFrame = timer.nsecsElapsed() / 1e9;
    std::printf("start to first frame: %.2f s (goal <= 10 s)\n", firstFrame);
    std::printf("  host services and module %.2f s, window shown %.2f s, program opened %.2f s, first frame %.2f s\n",
                started, shown - started, opened - shown, firstFrame - opened);
    viewer.makeCurrent();
    std::printf("OpenGL: %s, %s; window %d x %d, view %d x %d\n",
                reinterpret_cast<const char *>(viewer.context()->functions()->glGetString(GL_VERSION)),
                reinterpret_cast<const char *>(viewer.context()->functions()->glGetString(GL_RENDERER)),
                window.width(), window.height(), viewer.width(), viewer.height());
    viewer.doneCurrent();
    std::printf("%s\n", qPrintable(window.GetSummaryText()));

    std::vector<double> orbits;
    for (int i = 0; i < 10; ++i) {
        ZYLStudioCamera camera = viewer.GetCamera();
        camera.Orbit(12.0, 4.0, QSizeF(viewer.size()));
        viewer.SetCamera(camera);
        orbits.push_back(TimeFrame(viewer));
    }
    std::sort(orbits.begin(), orbits.end());
    double sum = 0.0;
    for (double t : orbits)
        sum += t;
    std::printf("repaint after an orbit: mean %.0f ms, median %.0f ms, max %.0f ms over %zu (goal <= 1000 ms)\n",
                sum / double(orbits.size()), orbits[orbits.size() / 2], orbits.back(), orbits.size());
    std::printf("vertices drawn per frame: %lld\n", static_cast<long long>(viewer.GetDrawnVertexCount()));

    const auto [rss, peak] = ResidentMegabytes();
    std::printf("resident memory: %.0f MB now, %.0f MB peak (%.0f MB before the start)\n", rss, peak, rssBefore);
    return 0;
}
