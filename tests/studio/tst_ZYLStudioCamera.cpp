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

} // namespace

class tst_ZYLStudioCamera : public QObject {
    Q_OBJECT

private slots:
    void standardViews_data()
    {
        QTest::addColumn<Camera::StandardView>("view");
        QTest::addColumn<ZYLMathVector>("direction");
        QTest::addColumn<ZYLMathVector>("up");
        const ZYLMathVector x(1, 0, 0), y(0, 1, 0), z(0, 0, 1);
        QTest::newRow("bottom") << Camera::StandardView::Bottom << z << y;
        QTest::newRow("front") << Camera::StandardView::Front << y << z;
        QTest::newRow("back") << Camera::StandardView::Back << -y << z;
        QTest::newRow("left") << Camera::StandardView::Left << x << z;
        QTest::newRow("right") << Camera::StandardView::Right << -x << z;
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

};

QTEST_APPLESS_MAIN(tst_ZYLStudioCamera)
#include "tst_ZYLStudioCamera.moc"
