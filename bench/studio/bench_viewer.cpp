// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Frame times of the 3-D view on a ply of 500 courses × 2,000 laying points, each course drawn
// as its points and the polyline through them (1M points, 1M line vertices). Run under
// xvfb-run with QT_QPA_PLATFORM=xcb for software OpenGL:
//   xvfb-run -a -s "-screen 0 1920x1080x24" bench_viewer [width height]

#include "ZYLBenchArguments.h"

#include "ZYLStudioViewer.h"

#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"
#include "ZYLVisPointPrimitive.h"
#include "ZYLVisPolylinePrimitive.h"
#include "ZYLVisRepGraphics.h"
#include "ZYLVisVirtualObject.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

namespace {
constexpr int courseCount = 500;
constexpr int pointsPerCourse = 2000;
constexpr int measuredFrames = 20;

/// Laying points of course i on a doubly curved panel of 3 m × 2 m, in mm.
std::vector<ZYLMathPoint> coursePoints(int course)
{
    std::vector<ZYLMathPoint> points;
    points.reserve(pointsPerCourse);
    const double y = 4.0 * course;
    for (int i = 0; i < pointsPerCourse; ++i) {
        const double x = 1.5 * i;
        points.emplace_back(x, y, 80.0 * std::sin(x / 900.0) * std::cos(y / 700.0));
    }
    return points;
}

/// Asks for a frame, lets the event loop draw it and waits until the (software) GPU has
/// finished it; returns milliseconds, or -1 when no frame came within 10 s.
double timeFrame(ZYLStudioViewer &viewer)
{
    QElapsedTimer timer;
    timer.start();
    const quint64 before = viewer.GetFrameCount();
    viewer.update();
    while (viewer.GetFrameCount() == before) {
        if (timer.elapsed() > 10000)
            return -1.0;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    }
    viewer.makeCurrent();
    viewer.context()->functions()->glFinish();
    viewer.doneCurrent();
    return timer.nsecsElapsed() / 1e6;
}

void report(const char *what, std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    double sum = 0.0;
    for (double t : times)
        sum += t;
    std::printf("%-34s mean %7.1f ms  median %7.1f ms  min %7.1f ms  max %7.1f ms  (%zu frames)\n", what,
                sum / double(times.size()), times[times.size() / 2], times.front(), times.back(), times.size());
}
} // namespace

int main(int argc, char **argv)
{
    const std::vector<long> size = ZYLBenchReadArguments(argc, argv, {{"WIDTH", 1280}, {"HEIGHT", 800}});
    const int width = int(size[0]);
    const int height = int(size[1]);
    QApplication app(argc, argv);

    ZYLVisEnvironment environment;
    std::vector<std::unique_ptr<ZYLVisVirtualObject>> courses;
    ZYLVisOptions pointOptions;
    pointOptions.SetColor(QColor(230, 120, 30));
    pointOptions.SetPointSize(4.0);
    ZYLVisOptions lineOptions;
    lineOptions.SetColor(QColor(40, 90, 200));
    lineOptions.SetLineThickness(1.0);
    QElapsedTimer timer;
    timer.start();
    {
        ZYLVisEnvironmentBatchContext batch(&environment);
        for (int c = 0; c < courseCount; ++c) {
            std::vector<ZYLMathPoint> points = coursePoints(c);
            auto *rep = new ZYLVisRepGraphics(
                {new ZYLVisPointPrimitive(points), new ZYLVisPolylinePrimitive(std::move(points))},
                QList<ZYLVisOptions>{pointOptions, lineOptions});
            courses.push_back(std::make_unique<ZYLVisVirtualObject>(&environment));
            courses.back()->SetRep(rep);
            environment.AddVirtualObject(courses.back().get());
        }
    }
    std::printf("scene: %d courses x %d points (%d points, %d line vertices) built in %.0f ms\n", courseCount,
                pointsPerCourse, courseCount * pointsPerCourse, courseCount * pointsPerCourse, timer.elapsed() * 1.0);

    ZYLStudioViewer viewer;
    viewer.resize(width, height);
    viewer.SetEnvironment(&environment);
    viewer.SetStandardView(ZYLStudioViewer::StandardView::Isometric);
    viewer.show();
    if (!QTest::qWaitForWindowExposed(&viewer)) {
        std::printf("the window was not exposed\n");
        return 1;
    }
    viewer.makeCurrent();
    std::printf("OpenGL: %s, %s; view %d x %d\n",
                reinterpret_cast<const char *>(viewer.context()->functions()->glGetString(GL_VERSION)),
                reinterpret_cast<const char *>(viewer.context()->functions()->glGetString(GL_RENDERER)), width,
                height);
    viewer.doneCurrent();
    // The window's first expose may already have drawn (and uploaded): start from a clean cache.
    const quint64 uploadsBefore = viewer.GetUploadCount();
    viewer.SetEnvironment(nullptr);
    std::vector<double> empty;
    for (int i = 0; i < 5; ++i)
        empty.push_back(timeFrame(viewer));
    report("empty frames (background only)", empty);
    viewer.SetEnvironment(&environment);

    const double first = timeFrame(viewer);
    std::printf("first frame (upload of %llu reps)  %7.1f ms, %lld vertices drawn\n",
                static_cast<unsigned long long>(viewer.GetUploadCount() - uploadsBefore), first,
                static_cast<long long>(viewer.GetDrawnVertexCount()));

    std::vector<double> still;
    for (int i = 0; i < measuredFrames; ++i) {
        ZYLStudioCamera camera = viewer.GetCamera();
        camera.Orbit(6.0, 2.0, QSizeF(viewer.size()));
        viewer.SetCamera(camera);
        still.push_back(timeFrame(viewer));
    }
    report("still frames, full detail", still);
    const qint64 fullVertices = viewer.GetDrawnVertexCount();

    // A left drag orbits; frames during the drag may be coarser.
    auto send = [&](QEvent::Type type, const QPointF &pos, Qt::MouseButton button, Qt::MouseButtons buttons) {
        QMouseEvent event(type, pos, viewer.mapToGlobal(pos), button, buttons, Qt::NoModifier);
        QApplication::sendEvent(&viewer, &event);
    };
    QPointF pos(0.5 * width, 0.5 * height);
    send(QEvent::MouseButtonPress, pos, Qt::LeftButton, Qt::LeftButton);
    std::vector<double> orbiting;
    for (int i = 0; i < measuredFrames; ++i) {
        pos += QPointF(6.0, 2.0);
        send(QEvent::MouseMove, pos, Qt::NoButton, Qt::LeftButton);
        orbiting.push_back(timeFrame(viewer));
    }
    report("orbit drag frames", orbiting);
    const qint64 dragVertices = viewer.GetDrawnVertexCount();
    send(QEvent::MouseButtonRelease, pos, Qt::LeftButton, Qt::NoButton);
    std::printf("vertices drawn: %lld still, %lld while dragging\n", static_cast<long long>(fullVertices),
                static_cast<long long>(dragVertices));

    // Wheel steps zoom towards the cursor, in and then out again.
    std::vector<double> zoomed;
    const QPointF cursor(0.3 * width, 0.6 * height);
    for (int i = 0; i < measuredFrames; ++i) {
        QWheelEvent wheel(cursor, viewer.mapToGlobal(cursor), {}, QPoint(0, i < measuredFrames / 2 ? 120 : -120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&viewer, &wheel);
        zoomed.push_back(timeFrame(viewer));
    }
    report("wheel zoom frames", zoomed);
    QTest::qWait(500); // let the view settle to full detail

    // Working close up: a twentieth of the ply in view, the rest off screen.
    {
        ZYLStudioCamera camera = viewer.GetCamera();
        camera.Zoom(0.05, QPointF(0.5 * width, 0.5 * height), QSizeF(viewer.size()));
        viewer.SetCamera(camera);
    }
    std::vector<double> closeUp;
    for (int i = 0; i < measuredFrames; ++i) {
        ZYLStudioCamera camera = viewer.GetCamera();
        camera.Pan(3.0, 1.0, QSizeF(viewer.size()));
        viewer.SetCamera(camera);
        closeUp.push_back(timeFrame(viewer));
    }
    report("close-up frames, full detail", closeUp);
    std::printf("vertices drawn close up: %lld\n", static_cast<long long>(viewer.GetDrawnVertexCount()));
    viewer.FitAll();

    // Mouse moves ask the environment to pick; a hit changes the pre-selection and redraws.
    std::vector<double> moves;
    for (int i = 0; i < measuredFrames; ++i) {
        const QPointF pos(width * (0.3 + 0.02 * i), height * 0.5);
        QElapsedTimer moveTimer;
        moveTimer.start();
        QMouseEvent move(QEvent::MouseMove, pos, viewer.mapToGlobal(pos), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&viewer, &move);
        moves.push_back(moveTimer.nsecsElapsed() / 1e6);
    }
    report("mouse move (pick, no redraw)", moves);
    std::printf("uploads in total: %llu (one per course expected: %d)\n",
                static_cast<unsigned long long>(viewer.GetUploadCount() - uploadsBefore), courseCount);
    return 0;
}
