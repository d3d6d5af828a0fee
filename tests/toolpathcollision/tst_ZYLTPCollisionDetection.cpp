// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Collision detection of a laying point refuses unusable input.
#include "ZYLTPCollisionTestUtil.h"

#include "ZYLSysException.h"

#include <QTest>

#include <cmath>
#include <limits>

class tst_ZYLTPCollisionDetection : public QObject {
    Q_OBJECT
private slots:
    void refusals_data();
    void refusals();
};

void tst_ZYLTPCollisionDetection::refusals_data()
{
    QTest::addColumn<bool>("withSurface");
    QTest::addColumn<double>("tolerance");
    QTest::addColumn<double>("radius");
    QTest::addColumn<double>("height");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("no surface") << false << 10.0 << 5.0 << 30.0;
    QTest::newRow("radius not a number") << true << 10.0 << nan << 30.0;
    QTest::newRow("centre not a number") << true << 10.0 << 5.0 << nan;
}

void tst_ZYLTPCollisionDetection::refusals()
{
    QFETCH(bool, withSurface);
    QFETCH(double, tolerance);
    QFETCH(double, radius);
    QFETCH(double, height);
    ZYLTPTestProgram t(1);
    const ZYLGeoRef<ZYLGeoPlane> plate = ZYLTPTestPlate();
    const ZYLTPSpheres spheres{{ZYLMathPoint(0.0, 0.0, height), radius}};
    const ZYLTPOnPartPoint *point = t.courses[0]->GetPoint(2);
    try {
        point->DetectCollision(withSurface ? plate.get() : nullptr, true, tolerance, spheres);
        QFAIL("no exception");
    } catch (const ZYLSysException &e) {
        QVERIFY(!e.GetMessage().isEmpty());
    }
}

namespace {
} // namespace

QTEST_GUILESS_MAIN(tst_ZYLTPCollisionDetection)
#include "tst_ZYLTPCollisionDetection.moc"
