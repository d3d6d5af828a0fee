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

    void highlightsStandOut_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::newRow("red") << red;
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

};

QTEST_MAIN(tst_ZYLStudioViewer)
#include "tst_ZYLStudioViewer.moc"
