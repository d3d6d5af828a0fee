// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Collision avoidance refuses to run outside a transaction and changes nothing then.
#include "ZYLTPCollisionTestUtil.h"

#include "ZYLTPProgramFile.h"

#include "ZYLSysException.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double Distance = 10.0;

// A sphere beside the roller, 15 mm clear of the plate with the tool upright; a side tilt of
// -0.3 rad brings it into the plate, one of about -0.226 rad leaves it 10 mm clear.
const ZYLTPSpheres Fork{{ZYLMathPoint(0.0, 20.0, 20.0), 5.0}};

// A test program on the plate whose course 0 has points 5..7 tilted into the plate.
struct Tilted {
    Tilted()
    {
        t.builder.SetPlySurface(plate.get());
        ZYLTPCourse *c = course();
        t.Open();
        c->SetRangeTilt(c->GetPoint(5), c->GetPoint(8), 0.0, -0.3);
        t.Commit();
        t.container.ClearHistory();
    }
    ZYLTPCourse *course() const { return t.courses[0]; }
    const ZYLTPOnPartPoint *point(int i) const { return i < 0 ? nullptr : course()->GetPoint(i); }

    ZYLGeoRef<ZYLGeoPlane> plate = ZYLTPTestPlate();
    ZYLTPTestProgram t{2};
};

} // namespace

class tst_ZYLTPCollisionAvoidance : public QObject {
    Q_OBJECT
private slots:
    void outsideTransactionRefused();
};

void tst_ZYLTPCollisionAvoidance::outsideTransactionRefused()
{
    Tilted s;
    const QByteArray before = ZYLTPProgramFile::Serialize(*s.t.program);
    QVERIFY_THROWS_EXCEPTION(ZYLSysException,
                             s.course()->AvoidCollisions(s.plate.get(), true, Distance, Fork, s.point(0), nullptr));
    QCOMPARE(ZYLTPProgramFile::Serialize(*s.t.program), before);
}

QTEST_GUILESS_MAIN(tst_ZYLTPCollisionAvoidance)
#include "tst_ZYLTPCollisionAvoidance.moc"
