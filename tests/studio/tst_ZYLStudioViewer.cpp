// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioViewer.h"

#include "ZYLVisEnvironment.h"
#include "ZYLVisEnvironmentBatchContext.h"
#include "ZYLVisGizmo.h"
#include "ZYLVisPointPrimitive.h"
#include "ZYLVisPolylinePrimitive.h"
#include "ZYLVisRepGraphics.h"
#include "ZYLVisSegmentPrimitive.h"
#include "ZYLVisTrianglePrimitive.h"
#include "ZYLVisVirtualObject.h"

#include <QApplication>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

using Projection = ZYLStudioViewer::Projection;
using StandardView = ZYLStudioViewer::StandardView;
Q_DECLARE_METATYPE(ZYLStudioViewer::Projection)
Q_DECLARE_METATYPE(ZYLStudioViewer::StandardView)
Q_DECLARE_METATYPE(ZYLMathPoint)

namespace {
const QColor background(30, 30, 30);
const QColor red(200, 30, 30);
const QColor blue(30, 60, 220);
const QColor green(40, 190, 60);

enum class Shape { Points, Polyline, Segments, Square };

ZYLVisOptions optionsOf(const QColor &color, int priority = 0, bool depth = true)
{
    ZYLVisOptions options;
    options.SetColor(color);
    options.SetPointSize(9.0);
    options.SetLineThickness(3.0);
    options.SetPriority(priority);
    options.SetDepthEnabled(depth);
    return options;
}

/// A shape centred at `c`: a dot, a polyline or segments crossing it, or a square of side 10
/// in the plane z = c.z.
ZYLVisRep *shapeRep(Shape shape, const ZYLMathPoint &c, const ZYLVisOptions &options)
{
    const ZYLMathVector dx(5, 0, 0), dy(0, 5, 0);
    ZYLVisPrimitive *primitive = nullptr;
    switch (shape) {
    case Shape::Points:
        primitive = new ZYLVisPointPrimitive(std::vector<ZYLMathPoint>{c});
        break;
    case Shape::Polyline:
        primitive = new ZYLVisPolylinePrimitive(std::vector<ZYLMathPoint>{c - dx, c, c + dx});
        break;
    case Shape::Segments:
        primitive = new ZYLVisSegmentPrimitive(std::vector<ZYLMathPoint>{c - dy, c + dy, c - dx, c + dx});
        break;
    case Shape::Square:
        primitive = new ZYLVisTrianglePrimitive({c.X() - 5, c.Y() - 5, c.Z(), c.X() + 5, c.Y() - 5, c.Z(), c.X() + 5,
                                                 c.Y() + 5, c.Z(), c.X() - 5, c.Y() + 5, c.Z()},
                                                {0, 1, 2, 0, 2, 3});
        break;
    }
    return new ZYLVisRepGraphics({primitive}, options);
}

/// A scene whose objects the test owns; each object owns the rep handed to it, except reps
/// shared by several objects, which the keeper holds. Objects go first, the environment last.
struct Scene {
    ZYLVisEnvironment env;
    QObject keeper;
    std::vector<std::unique_ptr<ZYLVisVirtualObject>> objects;

    /// Keeps a rep that several objects share (a rep with a parent stays with its parent).
    ZYLVisRep *Keep(ZYLVisRep *rep)
    {
        rep->setParent(&keeper);
        return rep;
    }
    ZYLVisVirtualObject *Add(ZYLVisRep *rep)
    {
        objects.push_back(std::make_unique<ZYLVisVirtualObject>(&env));
        objects.back()->SetRep(rep);
        env.AddVirtualObject(objects.back().get());
        return objects.back().get();
    }
    ZYLVisVirtualObject *Add(Shape shape, const ZYLMathPoint &c, const QColor &color, int priority = 0,
                             bool depth = true)
    {
        return Add(shapeRep(shape, c, optionsOf(color, priority, depth)));
    }
};

/// A shown viewer of 200 × 160 pixels looking down at the origin from 100 mm.
struct View {
    ZYLStudioViewer viewer;

    explicit View(Scene &scene, Projection projection = Projection::Orthographic)
    {
        viewer.resize(200, 160);
        viewer.SetBackgroundColors(background, background);
        viewer.SetEnvironment(&scene.env);
        ZYLStudioCamera camera;
        camera.SetProjection(projection);
        camera.SetStandardView(StandardView::Top);
        camera.SetDistance(100.0);
        viewer.SetCamera(camera);
        viewer.show();
    }
    QImage Image() { return viewer.RenderToImage(viewer.size()); }
    QColor ColorAt(const QImage &image, const ZYLMathPoint &p)
    {
        const QPointF pixel = viewer.Project(p);
        return image.pixelColor(int(std::floor(pixel.x())), int(std::floor(pixel.y())));
    }
    void Send(QEvent::Type type, const QPointF &pos, Qt::MouseButton button, Qt::MouseButtons buttons,
              Qt::KeyboardModifiers modifiers = {})
    {
        QMouseEvent event(type, pos, viewer.mapToGlobal(pos), button, buttons, modifiers);
        QApplication::sendEvent(&viewer, &event);
    }
    void Click(const QPointF &pos, Qt::KeyboardModifiers modifiers = {})
    {
        Send(QEvent::MouseButtonPress, pos, Qt::LeftButton, Qt::LeftButton, modifiers);
        Send(QEvent::MouseButtonRelease, pos, Qt::LeftButton, Qt::NoButton, modifiers);
    }
    void Drag(const QPointF &from, const QPointF &to, Qt::MouseButton button)
    {
        Send(QEvent::MouseButtonPress, from, button, button);
        for (int step = 1; step <= 4; ++step)
            Send(QEvent::MouseMove, from + (to - from) * (step / 4.0), Qt::NoButton, button);
        Send(QEvent::MouseButtonRelease, to, button, Qt::NoButton);
    }
};

bool isNear(const QColor &a, const QColor &b, int tolerance = 4)
{
    return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance
           && std::abs(a.blue() - b.blue()) <= tolerance;
}

QByteArray describe(const QColor &actual, const QColor &expected)
{
    return QStringLiteral("got %1, expected %2").arg(actual.name(), expected.name()).toUtf8();
}

#define VERIFY_COLOR(actual, expected)                                                                                 \
    do {                                                                                                               \
        const QColor a_ = (actual), e_ = (expected);                                                                  \
        QVERIFY2(isNear(a_, e_), describe(a_, e_).constData());                                                        \
    } while (false)
} // namespace

class tst_ZYLStudioViewer : public QObject {
    Q_OBJECT

private slots:
    void drawsShapeInItsColour_data()
    {
        QTest::addColumn<Shape>("shape");
        QTest::addColumn<Projection>("projection");
        const std::pair<const char *, Shape> shapes[] = {{"points", Shape::Points},
                                                         {"polyline", Shape::Polyline},
                                                         {"segments", Shape::Segments},
                                                         {"triangles", Shape::Square}};
        for (const auto &[name, shape] : shapes) {
            QTest::addRow("%s orthographic", name) << shape << Projection::Orthographic;
            QTest::addRow("%s perspective", name) << shape << Projection::Perspective;
        }
    }
    void drawsShapeInItsColour()
    {
        QFETCH(Shape, shape);
        QFETCH(Projection, projection);
        Scene scene;
        const ZYLMathPoint c(10.0, 5.0, 0.0);
        scene.Add(shape, c, red);
        View view(scene, projection);
        const QImage image = view.Image();
        QCOMPARE(image.size(), QSize(200, 160));
        VERIFY_COLOR(view.ColorAt(image, c), red);
        VERIFY_COLOR(view.ColorAt(image, ZYLMathPoint(-20.0, -10.0, 0.0)), background);
    }

    void backgroundIsGradient()
    {
        Scene scene;
        View view(scene);
        const QColor top(10, 20, 200), bottom(220, 210, 10);
        view.viewer.SetBackgroundColors(top, bottom);
        const QImage image = view.viewer.RenderToImage(QSize(64, 300));
        QCOMPARE(image.size(), QSize(64, 300));
        VERIFY_COLOR(image.pixelColor(32, 0), top);
        VERIFY_COLOR(image.pixelColor(32, 299), bottom);
        VERIFY_COLOR(image.pixelColor(32, 150), QColor(115, 115, 105));
    }

    void hiddenObjectIsNotDrawn()
    {
        Scene scene;
        const ZYLMathPoint c(0.0, 0.0, 0.0);
        ZYLVisVirtualObject *object = scene.Add(Shape::Points, c, red);
        View view(scene);
        object->SetVisibility(false);
        VERIFY_COLOR(view.ColorAt(view.Image(), c), background);
        object->SetVisibility(true);
        VERIFY_COLOR(view.ColorAt(view.Image(), c), red);
        // Hiding kept the buffers: showing again uploaded nothing.
        QCOMPARE(view.viewer.GetUploadCount(), 1u);
    }

    void priorityAndDepth_data()
    {
        QTest::addColumn<int>("bluePriority");
        QTest::addColumn<double>("blueZ");
        QTest::addColumn<bool>("blueDepth");
        QTest::addColumn<QColor>("expected");
        // Blue is added before red, so drawing in scene order alone would show red.
        QTest::newRow("higher priority on top at the same place") << 10 << 0.0 << true << blue;
        QTest::newRow("higher priority on top of nearer geometry") << 1 << -5.0 << true << blue;
        QTest::newRow("same priority: nearer wins") << 0 << -5.0 << true << red;
        QTest::newRow("no depth test: drawn through") << 0 << -5.0 << false << blue;
        QTest::newRow("lower priority stays below") << -1 << 5.0 << true << red;
    }
    void priorityAndDepth()
    {
        QFETCH(int, bluePriority);
        QFETCH(double, blueZ);
        QFETCH(bool, blueDepth);
        QFETCH(QColor, expected);
        Scene scene;
        scene.Add(Shape::Square, ZYLMathPoint(0, 0, blueZ), blue, bluePriority, blueDepth);
        scene.Add(Shape::Square, ZYLMathPoint(0, 0, 0), red);
        View view(scene, Projection::Perspective);
        VERIFY_COLOR(view.ColorAt(view.Image(), ZYLMathPoint(0, 0, 0)), expected);
    }

    void transparentOverOpaqueBlends()
    {
        Scene scene;
        scene.Add(Shape::Square, ZYLMathPoint(0, 0, 0), red);
        ZYLVisOptions glass = optionsOf(blue);
        glass.SetTransparency(0.5);
        scene.Add(shapeRep(Shape::Square, ZYLMathPoint(0, 0, 1), glass));
        View view(scene);
        VERIFY_COLOR(view.ColorAt(view.Image(), ZYLMathPoint(0, 0, 0)), QColor(115, 45, 125));
    }

    void positionFrameMovesPixels_data()
    {
        QTest::addColumn<ZYLMathAxis>("frame");
        QTest::addColumn<ZYLMathPoint>("world");
        QTest::newRow("translated") << ZYLMathAxis(ZYLMathPoint(0, -12, 0), ZYLMathVector(1, 0, 0), ZYLMathVector(0, 1, 0))
                                    << ZYLMathPoint(15, -12, 0);
        QTest::newRow("turned about z") << ZYLMathAxis(ZYLMathPoint(), ZYLMathVector(0, 1, 0), ZYLMathVector(-1, 0, 0))
                                        << ZYLMathPoint(0, 15, 0);
        // Geometry far from its own origin, brought back by the frame: floats must not round it.
        QTest::newRow("far from the origin")
            << ZYLMathAxis(ZYLMathPoint(-4e5, 3e5, 0), ZYLMathVector(1, 0, 0), ZYLMathVector(0, 1, 0))
            << ZYLMathPoint(15.3, -0.2, 0);
    }
    void positionFrameMovesPixels()
    {
        QFETCH(ZYLMathAxis, frame);
        QFETCH(ZYLMathPoint, world);
        Scene scene;
        const ZYLMathPoint local = frame.ToLocal(world);
        ZYLVisVirtualObject *object = scene.Add(Shape::Points, local, red);
        View view(scene);
        const ZYLMathPoint unmoved(15, 0, 0);
        const bool startsInView = local == unmoved;
        if (startsInView)
            VERIFY_COLOR(view.ColorAt(view.Image(), unmoved), red);
        object->SetPosition(&frame);
        const QImage image = view.Image();
        VERIFY_COLOR(view.ColorAt(image, world), red);
        VERIFY_COLOR(view.ColorAt(image, ZYLMathPoint(-15, 0, 0)), background);
        if (startsInView)
            VERIFY_COLOR(view.ColorAt(image, unmoved), background);
    }

    void keepsMicrometresFarFromOrigin()
    {
        // A dot 400 m from its own origin seen from 0.3 mm (a pixel is about a micrometre):
        // floats of 4e5 and 3e5 are 31 µm apart and would draw the dot at the world origin.
        Scene scene;
        const ZYLMathAxis frame(ZYLMathPoint(-4e5, 3e5, 0), ZYLMathVector(1, 0, 0), ZYLMathVector(0, 1, 0));
        const ZYLMathPoint world(0.015, -0.012, 0);
        ZYLVisVirtualObject *object = scene.Add(Shape::Points, frame.ToLocal(world), red);
        object->SetPosition(&frame);
        View view(scene);
        ZYLStudioCamera camera = view.viewer.GetCamera();
        camera.SetDistance(0.3);
        view.viewer.SetCamera(camera);
        const QImage image = view.Image();
        VERIFY_COLOR(view.ColorAt(image, world), red);
        VERIFY_COLOR(view.ColorAt(image, ZYLMathPoint()), background);
    }

    void replacedRepRedrawsAndFreesOld()
    {
        Scene scene;
        const ZYLMathPoint c(0, 0, 0);
        ZYLVisVirtualObject *object = scene.Add(Shape::Square, c, red);
        View view(scene);
        VERIFY_COLOR(view.ColorAt(view.Image(), c), red);
        object->SetRep(shapeRep(Shape::Square, c, optionsOf(blue)));
        VERIFY_COLOR(view.ColorAt(view.Image(), c), blue);
        QCOMPARE(view.viewer.GetUploadCount(), 2u);
        QCOMPARE(view.viewer.GetCachedRepCount(), 1);
        // A rep deleted while set leaves nothing drawn, and its buffers go.
        delete object->GetRep();
        VERIFY_COLOR(view.ColorAt(view.Image(), c), background);
        QCOMPARE(view.viewer.GetCachedRepCount(), 0);
    }

    void clickSelectsThroughEnvironment_data()
    {
        QTest::addColumn<Projection>("projection");
        QTest::addColumn<double>("offsetPixels");
        QTest::addColumn<bool>("selected");
        for (auto [name, projection] : {std::pair{"orthographic", Projection::Orthographic},
                                        std::pair{"perspective", Projection::Perspective}}) {
            QTest::addRow("%s on the point", name) << projection << 0.0 << true;
            QTest::addRow("%s three pixels off", name) << projection << 3.0 << true;
            QTest::addRow("%s twelve pixels off", name) << projection << 12.0 << false;
        }
    }
    void clickSelectsThroughEnvironment()
    {
        QFETCH(Projection, projection);
        QFETCH(double, offsetPixels);
        QFETCH(bool, selected);
        Scene scene;
        const ZYLMathPoint c(12, -6, 3);
        scene.Add(Shape::Points, ZYLMathPoint(-12, 6, 0), green);
        ZYLVisVirtualObject *object = scene.Add(Shape::Points, c, red);
        View view(scene, projection);
        view.Click(view.viewer.Project(c) + QPointF(offsetPixels, 0.0));
        QCOMPARE(scene.env.GetVisualizationSelection().contains(object), selected);
        QCOMPARE(scene.env.GetVisualizationSelection().size(), selected ? 1 : 0);
        if (!selected)
            return;
        VERIFY_COLOR(view.ColorAt(view.Image(), c), view.viewer.GetDisplayColor(red, true, false));
        QVERIFY(!isNear(view.viewer.GetDisplayColor(red, true, false), red, 20));
        // Ctrl toggles the object out of the selection.
        view.Click(view.viewer.Project(c), Qt::ControlModifier);
        QVERIFY(scene.env.GetVisualizationSelection().isEmpty());
    }

    void highlightsStandOut_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::newRow("red") << red;
        QTest::newRow("orange like the highlight") << QColor(240, 130, 10);
        QTest::newRow("white") << QColor(Qt::white);
        QTest::newRow("black") << QColor(Qt::black);
    }
    void highlightsStandOut()
    {
        QFETCH(QColor, color);
        ZYLStudioViewer viewer;
        viewer.SetHighlightColor(QColor(255, 140, 0));
        const QColor selected = viewer.GetDisplayColor(color, true, false);
        const QColor preselected = viewer.GetDisplayColor(color, false, true);
        const QColor both = viewer.GetDisplayColor(color, true, true);
        QVERIFY2(!isNear(selected, color, 40), describe(selected, color).constData());
        QVERIFY2(!isNear(preselected, color, 40), describe(preselected, color).constData());
        QVERIFY2(!isNear(both, selected, 40), describe(both, selected).constData());
        QVERIFY(!isNear(selected, preselected, 20));
    }

    void moveHighlightsAndReportsPoint_data()
    {
        QTest::addColumn<bool>("deliverMoves");
        QTest::newRow("point from the view") << false;
        QTest::newRow("point from the environment") << true;
    }
    void moveHighlightsAndReportsPoint()
    {
        QFETCH(bool, deliverMoves);
        Scene scene;
        scene.env.SetMouseInteraction(deliverMoves ? ZYLVisEnvironment::DeliverMoves : ZYLVisEnvironment::NoMouseInteraction);
        const ZYLMathPoint c(-8, 4, 2);
        ZYLVisVirtualObject *object = scene.Add(Shape::Points, c, blue);
        View view(scene, Projection::Perspective);
        QSignalSpy points(&view.viewer, &ZYLStudioViewer::MousePointChanged);
        view.Send(QEvent::MouseMove, view.viewer.Project(c) + QPointF(1.0, 1.0), Qt::NoButton, Qt::NoButton);
        QCOMPARE(scene.env.GetPreSelectedObjects(), QSet<ZYLVisObject *>{object});
        QCOMPARE(points.count(), 1);
        QCOMPARE_LT((points.at(0).at(0).value<ZYLMathPoint>() - c).GetLength(), 0.5);
        VERIFY_COLOR(view.ColorAt(view.Image(), c), view.viewer.GetDisplayColor(blue, false, true));
        QVERIFY(!isNear(view.viewer.GetDisplayColor(blue, false, true), blue, 20));
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&view.viewer, &leave);
        QVERIFY(scene.env.GetPreSelectedObjects().isEmpty());
    }

    void dragsOrbitPanAndGizmo()
    {
        Scene scene;
        ZYLVisVirtualObject *object = scene.Add(Shape::Points, ZYLMathPoint(0, 20, 0), red);
        View view(scene);
        // A left drag over empty space orbits and selects nothing.
        view.Drag({40, 40}, {90, 40}, Qt::LeftButton);
        QCOMPARE_GT((view.viewer.GetCamera().GetViewDirection() - ZYLMathVector(0, 0, -1)).GetLength(), 0.1);
        QVERIFY(scene.env.GetVisualizationSelection().isEmpty());
        // A middle drag pans: the target moves, the direction stays.
        const ZYLStudioCamera before = view.viewer.GetCamera();
        view.Drag({100, 80}, {130, 80}, Qt::MiddleButton);
        QCOMPARE_GT((view.viewer.GetCamera().GetTarget() - before.GetTarget()).GetLength(), 1.0);
        QCOMPARE_LT((view.viewer.GetCamera().GetViewDirection() - before.GetViewDirection()).GetLength(), 1e-12);

        // A left drag that starts on the x arrow of a gizmo moves the gizmo along x.
        view.viewer.SetStandardView(StandardView::Top);
        ZYLVisGizmo gizmo(&scene.env);
        gizmo.SetEnabledInteraction(ZYLVisGizmo::TranslateX | ZYLVisGizmo::TranslateY);
        gizmo.SetSize(10.0);
        view.viewer.FitAll();
        const ZYLStudioCamera camera = view.viewer.GetCamera();
        const QImage withGizmo = view.Image();
        QVERIFY(!isNear(view.ColorAt(withGizmo, ZYLMathPoint(8, 0, 0)), background, 20));
        gizmo.Show(false);
        VERIFY_COLOR(view.ColorAt(view.Image(), ZYLMathPoint(8, 0, 0)), background);
        gizmo.Show(true);
        view.Drag(view.viewer.Project(ZYLMathPoint(8, 0, 0)), view.viewer.Project(ZYLMathPoint(14, 0, 0)), Qt::LeftButton);
        QCOMPARE_LT((gizmo.GetPosition().GetOrigin() - ZYLMathPoint(6, 0, 0)).GetLength(), 0.2);
        QCOMPARE_LT((view.viewer.GetCamera().GetViewDirection() - camera.GetViewDirection()).GetLength(), 1e-12);
        QVERIFY(!scene.env.GetVisualizationSelection().contains(object));
    }

    void wheelZoomsTowardsCursor()
    {
        Scene scene;
        scene.Add(Shape::Points, ZYLMathPoint(), red);
        View view(scene, Projection::Perspective);
        const QPointF cursor(150, 40);
        const ZYLVisPickRay ray = view.viewer.GetRay(cursor);
        const ZYLMathPoint underCursor = ray.GetPointAt(ray.GetParameterOf(view.viewer.GetCamera().GetTarget()));
        QWheelEvent wheel(cursor, view.viewer.mapToGlobal(cursor), {}, QPoint(0, 240), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&view.viewer, &wheel);
        QCOMPARE_LT(view.viewer.GetCamera().GetDistance(), 80.0);
        const QPointF after = view.viewer.Project(underCursor);
        QCOMPARE_LT(std::hypot(after.x() - cursor.x(), after.y() - cursor.y()), 1e-6);
    }

    void fitAllShowsWholeScene_data()
    {
        QTest::addColumn<Projection>("projection");
        QTest::addColumn<StandardView>("view");
        for (auto [name, projection] : {std::pair{"orthographic", Projection::Orthographic},
                                        std::pair{"perspective", Projection::Perspective}}) {
            QTest::addRow("%s top", name) << projection << StandardView::Top;
            QTest::addRow("%s front", name) << projection << StandardView::Front;
            QTest::addRow("%s isometric", name) << projection << StandardView::Isometric;
        }
    }
    void fitAllShowsWholeScene()
    {
        QFETCH(Projection, projection);
        QFETCH(StandardView, view);
        Scene scene;
        const std::vector<ZYLMathPoint> points{{-3000, -500, 0}, {5000, 2000, 400}, {1000, 0, -300}, {4000, -800, 100}};
        for (const ZYLMathPoint &p : points)
            scene.Add(Shape::Points, p, green);
        View shown(scene, projection);
        shown.viewer.SetStandardView(view);
        const QImage image = shown.Image();
        for (const ZYLMathPoint &p : points) {
            const QPointF pixel = shown.viewer.Project(p);
            QVERIFY(pixel.x() > 4 && pixel.x() < 196 && pixel.y() > 4 && pixel.y() < 156);
            VERIFY_COLOR(shown.ColorAt(image, p), green);
        }
    }

    void uploadsOncePerRep()
    {
        Scene scene;
        ZYLVisRep *shared = scene.Keep(shapeRep(Shape::Polyline, ZYLMathPoint(), optionsOf(red)));
        std::vector<ZYLVisVirtualObject *> sharing;
        for (int i = 0; i < 3; ++i) {
            sharing.push_back(scene.Add(nullptr));
            sharing.back()->SetRep(shared);
            const ZYLMathAxis frame(ZYLMathPoint(0, 10.0 * i, 0), ZYLMathVector(1, 0, 0), ZYLMathVector(0, 1, 0));
            sharing.back()->SetPosition(&frame);
        }
        scene.Add(Shape::Square, ZYLMathPoint(-20, 0, 0), blue);
        View view(scene);
        (void)view.Image();
        QCOMPARE(view.viewer.GetUploadCount(), 2u);
        for (int i = 0; i < 3; ++i) {
            ZYLStudioCamera camera = view.viewer.GetCamera();
            camera.Orbit(10.0, 5.0, QSizeF(200, 160));
            view.viewer.SetCamera(camera);
            sharing[size_t(i)]->SetVisibility(i % 2 == 0);
            (void)view.Image();
        }
        QCOMPARE(view.viewer.GetUploadCount(), 2u);
        QCOMPARE(view.viewer.GetCachedRepCount(), 2);
        // Once no object of the scene uses the shared rep, its buffers are freed.
        for (ZYLVisVirtualObject *object : sharing)
            scene.env.RemoveVirtualObject(object);
        (void)view.Image();
        QCOMPARE(view.viewer.GetCachedRepCount(), 1);
    }

    void thinsDenseGeometryToPixels_data()
    {
        QTest::addColumn<Shape>("shape");
        QTest::addColumn<double>("distance");
        QTest::addColumn<bool>("thinned");
        QTest::newRow("polyline seen whole") << Shape::Polyline << 100.0 << true;
        QTest::newRow("polyline close up") << Shape::Polyline << 0.1 << false;
        QTest::newRow("points seen whole") << Shape::Points << 100.0 << true;
        QTest::newRow("points close up") << Shape::Points << 0.1 << false;
    }
    void thinsDenseGeometryToPixels()
    {
        QFETCH(Shape, shape);
        QFETCH(double, distance);
        QFETCH(bool, thinned);
        // 10,001 vertices a micrometre apart along x: far below a pixel when seen whole.
        std::vector<ZYLMathPoint> vertices;
        for (int i = 0; i <= 10000; ++i)
            vertices.emplace_back(-5.0 + 0.001 * i, 0.0, 0.0);
        const ZYLVisOptions options = optionsOf(red);
        ZYLVisPrimitive *primitive = shape == Shape::Points
                                         ? static_cast<ZYLVisPrimitive *>(new ZYLVisPointPrimitive(vertices))
                                         : new ZYLVisPolylinePrimitive(vertices);
        Scene scene;
        scene.Add(new ZYLVisRepGraphics({primitive}, options));
        View view(scene, Projection::Perspective);
        ZYLStudioCamera camera = view.viewer.GetCamera();
        camera.SetDistance(distance);
        view.viewer.SetCamera(camera);
        const QImage image = view.Image();
        if (thinned)
            QCOMPARE_LT(view.viewer.GetDrawnVertexCount(), 10001 / 8);
        else
            QCOMPARE(view.viewer.GetDrawnVertexCount(), 10001);
        // Thinned or not, the whole length is drawn.
        for (double x : {-4.9, -2.0, 0.0, 3.0, 4.9}) {
            const ZYLMathPoint p(distance < 1.0 ? x * 0.004 : x, 0.0, 0.0);
            VERIFY_COLOR(view.ColorAt(image, p), red);
        }
    }

    void skipsPrimitivesOutsideView()
    {
        Scene scene;
        scene.Add(Shape::Polyline, ZYLMathPoint(0, 0, 0), red);      // 3 vertices, in view
        scene.Add(Shape::Polyline, ZYLMathPoint(500, 0, 0), blue);   // off to the right
        scene.Add(Shape::Polyline, ZYLMathPoint(0, 0, 500), blue);   // behind the eye
        // A square far larger than the view, around it: partly visible, so drawn.
        ZYLVisTrianglePrimitive *floor = new ZYLVisTrianglePrimitive(
            {-1000, -1000, -50, 1000, -1000, -50, 1000, 1000, -50, -1000, 1000, -50}, {0, 1, 2, 0, 2, 3});
        scene.Add(new ZYLVisRepGraphics({floor}, optionsOf(green)));
        View view(scene, Projection::Perspective);
        const QImage image = view.Image();
        QCOMPARE(view.viewer.GetDrawnVertexCount(), 3 + 6);
        VERIFY_COLOR(view.ColorAt(image, ZYLMathPoint(20, 20, -50)), green);
        VERIFY_COLOR(view.ColorAt(image, ZYLMathPoint(0, 0, 0)), red);
    }

    void drawsCoarserWhileZooming()
    {
        // 193 vertices a seventh of a pixel apart: thinned by 8 when still, by 32 while zooming.
        std::vector<ZYLMathPoint> vertices;
        for (int i = 0; i <= 192; ++i)
            vertices.emplace_back(-5.0 + 0.05 * i, 0.0, 0.0);
        Scene scene;
        scene.Add(new ZYLVisRepGraphics({new ZYLVisPolylinePrimitive(vertices)}, optionsOf(red)));
        View view(scene);
        QVERIFY(QTest::qWaitForWindowExposed(&view.viewer));
        (void)view.Image();
        const qint64 still = view.viewer.GetDrawnVertexCount();
        const QPointF cursor(100, 80);
        QWheelEvent wheel(cursor, view.viewer.mapToGlobal(cursor), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&view.viewer, &wheel);
        QVERIFY(view.viewer.IsInteracting());
        (void)view.Image();
        // Zoomed out a little: still thinner by the interactive factor.
        QCOMPARE_LT(view.viewer.GetDrawnVertexCount(), still / 2);
        // Once the wheel rests, the view is drawn in full detail again.
        QTRY_VERIFY(!view.viewer.IsInteracting());
        (void)view.Image();
        QCOMPARE_GE(view.viewer.GetDrawnVertexCount(), still * 8 / 10);
    }

    void repaintsOncePerBatch()
    {
        Scene scene;
        std::vector<ZYLVisVirtualObject *> objects;
        for (int i = 0; i < 4; ++i)
            objects.push_back(scene.Add(Shape::Points, ZYLMathPoint(10.0 * i, 0, 0), red));
        View view(scene);
        QVERIFY(QTest::qWaitForWindowExposed(&view.viewer));
        QTRY_VERIFY(view.viewer.GetFrameCount() > 0);
        QTest::qWait(50);
        const quint64 frames = view.viewer.GetFrameCount();
        {
            ZYLVisEnvironmentBatchContext batch(&scene.env);
            for (ZYLVisVirtualObject *object : objects) {
                const ZYLMathAxis frame(ZYLMathPoint(0, 5, 0), ZYLMathVector(1, 0, 0), ZYLMathVector(0, 1, 0));
                object->SetPosition(&frame);
                object->SetVisibility(false);
            }
            QApplication::processEvents();
        }
        QTRY_COMPARE(view.viewer.GetFrameCount(), frames + 1);
        QTest::qWait(100);
        QCOMPARE(view.viewer.GetFrameCount(), frames + 1);
        // A mouse move that changes nothing in the scene draws nothing.
        view.Send(QEvent::MouseMove, {20, 20}, Qt::NoButton, Qt::NoButton);
        QTest::qWait(100);
        QCOMPARE(view.viewer.GetFrameCount(), frames + 1);
    }

    void replacesEnvironment()
    {
        Scene first, second;
        first.Add(Shape::Square, ZYLMathPoint(-10, 0, 0), red);
        first.Add(Shape::Points, ZYLMathPoint(10, 0, 0), red);
        second.Add(Shape::Square, ZYLMathPoint(10, 0, 0), blue);
        View view(first);
        (void)view.Image();
        QCOMPARE(view.viewer.GetCachedRepCount(), 2);
        view.viewer.SetEnvironment(&second.env);
        const QImage image = view.Image();
        VERIFY_COLOR(view.ColorAt(image, ZYLMathPoint(10, 0, 0)), blue);
        VERIFY_COLOR(view.ColorAt(image, ZYLMathPoint(-10, 0, 0)), background);
        QCOMPARE(view.viewer.GetCachedRepCount(), 1);
        // Mouse input now goes to the new environment only.
        view.Click(view.viewer.Project(ZYLMathPoint(10, 0, 0)));
        QCOMPARE(second.env.GetVisualizationSelection().size(), 1);
        QVERIFY(first.env.GetVisualizationSelection().isEmpty());
    }

    void followsEnvironmentDestruction()
    {
        auto env = std::make_unique<ZYLVisEnvironment>();
        ZYLStudioViewer viewer;
        viewer.resize(64, 64);
        viewer.SetEnvironment(env.get());
        env.reset();
        QCOMPARE(viewer.GetEnvironment(), nullptr);
        QCOMPARE(viewer.RenderToImage(QSize(32, 32)).size(), QSize(32, 32));
    }
};

QTEST_MAIN(tst_ZYLStudioViewer)
#include "tst_ZYLStudioViewer.moc"
