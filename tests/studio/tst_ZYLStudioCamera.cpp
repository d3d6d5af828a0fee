// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioCamera.h"

#include <QTest>

#include <cmath>

using Camera = ZYLStudioCamera;
Q_DECLARE_METATYPE(ZYLStudioCamera::Projection)
Q_DECLARE_METATYPE(ZYLStudioCamera::StandardView)
Q_DECLARE_METATYPE(ZYLMathVector)

namespace {
const QSizeF viewport(400.0, 250.0);

ZYLMathBoundingBox sceneBox()
{
    return ZYLMathBoundingBox(ZYLMathPoint(-40.0, -10.0, 0.0), ZYLMathPoint(60.0, 30.0, 20.0));
}

Camera makeCamera(Camera::Projection projection, Camera::StandardView view)
{
    Camera camera;
    camera.SetProjection(projection);
    camera.SetStandardView(view);
    camera.SetSceneBox(sceneBox());
    camera.Fit(sceneBox(), viewport);
    return camera;
}

void addProjectionRows()
{
    QTest::addColumn<Camera::Projection>("projection");
    QTest::addColumn<Camera::StandardView>("view");
    const std::pair<const char *, Camera::StandardView> views[] = {
        {"top", Camera::StandardView::Top},     {"bottom", Camera::StandardView::Bottom},
        {"front", Camera::StandardView::Front}, {"left", Camera::StandardView::Left},
        {"iso", Camera::StandardView::Isometric}};
    for (const auto &[name, view] : views) {
        QTest::addRow("perspective %s", name) << Camera::Projection::Perspective << view;
        QTest::addRow("orthographic %s", name) << Camera::Projection::Orthographic << view;
    }
}
} // namespace

class tst_ZYLStudioCamera : public QObject {
    Q_OBJECT

private slots:
    void rayThroughProjectedPoint_data() { addProjectionRows(); }
    void rayThroughProjectedPoint()
    {
        QFETCH(Camera::Projection, projection);
        QFETCH(Camera::StandardView, view);
        const Camera camera = makeCamera(projection, view);
        for (const ZYLMathPoint &p : {ZYLMathPoint(-40.0, -10.0, 0.0), ZYLMathPoint(60.0, 30.0, 20.0),
                                      ZYLMathPoint(10.0, 5.0, 7.0)}) {
            const ZYLVisPickRay ray = camera.GetRay(camera.Project(p, viewport), viewport, 4.0);
            QVERIFY2(ray.GetDistanceTo(p) < 1e-9 * camera.GetDistance(), qPrintable(QString::number(ray.GetDistanceTo(p))));
            // Geometry of the scene lies in front of the ray's origin.
            QVERIFY(ray.GetParameterOf(p) > 0.0);
        }
        // At the target's depth the pick radius covers four pixels of screen.
        const QPointF centre(200.0, 125.0);
        const ZYLVisPickRay ray = camera.GetRay(centre, viewport, 4.0);
        const double depth = ray.GetParameterOf(camera.GetTarget());
        const ZYLMathPoint atRadius = ray.GetPointAt(depth) + camera.GetRightDirection() * ray.GetRadiusAt(depth);
        QCOMPARE_LT(std::abs(camera.Project(atRadius, viewport).x() - centre.x() - 4.0), 1e-6);
    }

    void zoomKeepsCursorPoint_data()
    {
        QTest::addColumn<Camera::Projection>("projection");
        QTest::addColumn<double>("factor");
        QTest::newRow("perspective in") << Camera::Projection::Perspective << 0.5;
        QTest::newRow("perspective out") << Camera::Projection::Perspective << 3.0;
        QTest::newRow("orthographic in") << Camera::Projection::Orthographic << 0.5;
    }
    void zoomKeepsCursorPoint()
    {
        QFETCH(Camera::Projection, projection);
        QFETCH(double, factor);
        Camera camera = makeCamera(projection, Camera::StandardView::Isometric);
        const QPointF cursor(320.0, 60.0);
        const ZYLVisPickRay ray = camera.GetRay(cursor, viewport, 0.0);
        const ZYLMathPoint underCursor = ray.GetPointAt(ray.GetParameterOf(camera.GetTarget()));
        const double distance = camera.GetDistance();
        camera.Zoom(factor, cursor, viewport);
        const QPointF after = camera.Project(underCursor, viewport);
        QCOMPARE_LT(std::hypot(after.x() - cursor.x(), after.y() - cursor.y()), 1e-6);
        QCOMPARE_LT(std::abs(camera.GetDistance() - factor * distance), 1e-9 * distance);
    }

    void panFollowsMouse()
    {
        Camera camera = makeCamera(Camera::Projection::Perspective, Camera::StandardView::Isometric);
        const ZYLMathPoint target = camera.GetTarget();
        const QPointF before = camera.Project(target, viewport);
        camera.Pan(25.0, -10.0, viewport);
        const QPointF after = camera.Project(target, viewport);
        QCOMPARE_LT(std::abs(after.x() - before.x() - 25.0), 1e-6);
        QCOMPARE_LT(std::abs(after.y() - before.y() + 10.0), 1e-6);
    }

    void orbitTurnsAboutTarget()
    {
        Camera camera = makeCamera(Camera::Projection::Perspective, Camera::StandardView::Front);
        const ZYLMathPoint target = camera.GetTarget();
        // Half the viewport height of horizontal drag is a quarter turn about the up direction.
        camera.Orbit(0.5 * viewport.height(), 0.0, viewport);
        QCOMPARE_LT((camera.GetTarget() - target).GetLength(), 1e-9);
        QCOMPARE_LT(std::abs(camera.GetViewDirection().Dot(ZYLMathVector(0.0, 1.0, 0.0))), 1e-9);
        QCOMPARE_LT(std::abs(camera.GetUpDirection().Z() - 1.0), 1e-9);
        QCOMPARE_LT(std::abs(camera.GetRightDirection().Dot(camera.GetViewDirection())), 1e-9);
        // Then a vertical drag tilts the camera over the top: it stays orthonormal.
        camera.Orbit(0.0, 0.25 * viewport.height(), viewport);
        QCOMPARE_LT(std::abs(camera.GetUpDirection().Dot(camera.GetViewDirection())), 1e-9);
        QCOMPARE_LT(std::abs(camera.GetViewDirection().GetLength() - 1.0), 1e-9);
        QCOMPARE_LT(std::abs(std::abs(camera.GetViewDirection().Z()) - std::sqrt(0.5)), 1e-9);
    }

    void fitShowsWholeBox_data()
    {
        QTest::addColumn<Camera::Projection>("projection");
        QTest::addColumn<QSizeF>("size");
        QTest::newRow("perspective wide") << Camera::Projection::Perspective << QSizeF(400.0, 150.0);
        QTest::newRow("perspective tall") << Camera::Projection::Perspective << QSizeF(150.0, 400.0);
        QTest::newRow("orthographic wide") << Camera::Projection::Orthographic << QSizeF(400.0, 150.0);
        QTest::newRow("orthographic tall") << Camera::Projection::Orthographic << QSizeF(150.0, 400.0);
    }
    void fitShowsWholeBox()
    {
        QFETCH(Camera::Projection, projection);
        QFETCH(QSizeF, size);
        Camera camera;
        camera.SetProjection(projection);
        camera.SetTarget(ZYLMathPoint(5000.0, 0.0, 0.0));
        camera.SetDistance(1.0);
        const ZYLMathBoundingBox box = sceneBox();
        camera.SetSceneBox(box);
        camera.Fit(box, size);
        double largest = 0.0;
        const auto [nearPlane, farPlane] = camera.GetClipRange();
        for (int corner = 0; corner < 8; ++corner) {
            const ZYLMathPoint p((corner & 1 ? box.GetMax() : box.GetMin()).X(), (corner & 2 ? box.GetMax() : box.GetMin()).Y(),
                                 (corner & 4 ? box.GetMax() : box.GetMin()).Z());
            const QPointF pixel = camera.Project(p, size);
            QVERIFY(pixel.x() >= 0.0 && pixel.x() <= size.width());
            QVERIFY(pixel.y() >= 0.0 && pixel.y() <= size.height());
            largest = std::max({largest, std::abs(pixel.x() / size.width() - 0.5), std::abs(pixel.y() / size.height() - 0.5)});
            const double depth = -camera.GetEyeFrame().ToLocal(p).Z();
            QVERIFY(depth > nearPlane && depth < farPlane);
        }
        // Not lost in the middle either.
        QCOMPARE_GT(largest, 0.25);
    }

    void standardViews_data()
    {
        QTest::addColumn<Camera::StandardView>("view");
        QTest::addColumn<ZYLMathVector>("direction");
        QTest::addColumn<ZYLMathVector>("up");
        const ZYLMathVector x(1, 0, 0), y(0, 1, 0), z(0, 0, 1);
        QTest::newRow("top") << Camera::StandardView::Top << -z << y;
        QTest::newRow("bottom") << Camera::StandardView::Bottom << z << y;
        QTest::newRow("front") << Camera::StandardView::Front << y << z;
        QTest::newRow("back") << Camera::StandardView::Back << -y << z;
        QTest::newRow("left") << Camera::StandardView::Left << x << z;
        QTest::newRow("right") << Camera::StandardView::Right << -x << z;
        QTest::newRow("isometric") << Camera::StandardView::Isometric << ZYLMathVector(-1, 1, -1) / std::sqrt(3.0)
                                   << ZYLMathVector(-1, 1, 2) / std::sqrt(6.0);
    }
    void standardViews()
    {
        QFETCH(Camera::StandardView, view);
        QFETCH(ZYLMathVector, direction);
        QFETCH(ZYLMathVector, up);
        Camera camera;
        camera.SetStandardView(view);
        QCOMPARE_LT((camera.GetViewDirection() - direction).GetLength(), 1e-12);
        QCOMPARE_LT((camera.GetUpDirection() - up).GetLength(), 1e-12);
        // Right-handed: right × up points back at the eye.
        QCOMPARE_LT((camera.GetRightDirection().Cross(camera.GetUpDirection()) + direction).GetLength(), 1e-12);
    }

    void modelViewKeepsPrecisionFarFromOrigin()
    {
        // A ply metres away from the machine origin, seen from 10 mm: the float matrix must not
        // lose the micrometres that a float world coordinate of 3 m cannot hold.
        const ZYLMathPoint place(3000.123, -2500.456, 800.0);
        Camera camera;
        camera.SetStandardView(Camera::StandardView::Top);
        camera.SetTarget(place);
        camera.SetDistance(10.0);
        const ZYLMathAxis frame(place, ZYLMathVector(0, 1, 0), ZYLMathVector(-1, 0, 0));
        const ZYLMathPoint local(0.001, 0.002, 0.0);
        const QVector3D eye = camera.GetModelViewMatrix(frame).map(QVector3D(0.001f, 0.002f, 0.0f));
        const ZYLMathPoint expected = camera.GetEyeFrame().ToLocal(frame.ToGlobal(local));
        QCOMPARE_LT(std::abs(eye.x() - expected.X()), 1e-6);
        QCOMPARE_LT(std::abs(eye.y() - expected.Y()), 1e-6);
        QCOMPARE_LT(std::abs(eye.z() - expected.Z()), 1e-5);
        // Coordinates relative to a local origin map as the shifted point.
        const ZYLMathPoint origin(100.0, 0.0, 0.0);
        const QVector3D shifted = camera.GetModelViewMatrix(frame, origin).map(QVector3D(0.001f, 0.002f, 0.0f));
        const ZYLMathPoint expectedShifted = camera.GetEyeFrame().ToLocal(frame.ToGlobal(origin + local.ToVector()));
        QCOMPARE_LT(std::abs(shifted.y() - expectedShifted.Y()), 1e-5);
    }
};

QTEST_APPLESS_MAIN(tst_ZYLStudioCamera)
#include "tst_ZYLStudioCamera.moc"
