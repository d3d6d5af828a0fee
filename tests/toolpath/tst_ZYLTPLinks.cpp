// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Link strategies: the geometry each strategy gives a link between two courses.
#include "ZYLTPTestProgram.h"

#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPSafetyPlaneCourseLink.h"

#include <QTest>

using LinkList = QList<QPair<int, int>>;

class tst_ZYLTPLinks : public QObject {
    Q_OBJECT
private slots:
    void strategies();
};

namespace {
} // namespace

void tst_ZYLTPLinks::strategies()
{
    QCOMPARE(ZYLTPCourseLink::GetAllOffPartMotionStrategies().size(), 3);
    QCOMPARE(ZYLTPCourseLink::GetOffPartMotionStrategyLabel(ZYLTPCourseLink::Linear), QStringLiteral("Linear"));
    QCOMPARE(ZYLTPCourseLink::GetOffPartMotionStrategyLabel(ZYLTPCourseLink::SafetyPlane), QStringLiteral("Safety plane"));
    QCOMPARE(ZYLTPCourseLink::GetOffPartMotionDetailLabel(ZYLTPCourseLink::Fine), QStringLiteral("Fine"));
    QCOMPARE(ZYLTPCustomCourseLink::GetAllVectorInterpolation().size(), 3);
    QCOMPARE(ZYLTPCustomCourseLink::GetVectorInterpolationString(ZYLTPCustomCourseLink::SphericalInterpolation),
             QStringLiteral("Spherical"));
    ZYLTPTestProgram t(3);
    ZYLTPRollLayupProcedure *p = t.procedure;
    const ZYLTPCourseLink::OffPartMotionStrategy custom = ZYLTPCourseLink::Custom;
    t.Open();
    p->SetDefaultStrategy(ZYLTPCourseLink::SafetyPlane);
    auto *safety = qobject_cast<ZYLTPSafetyPlaneCourseLink *>(p->LinkCourses(t.courses[0], t.courses[1], nullptr));
    auto *own = qobject_cast<ZYLTPCustomCourseLink *>(p->LinkCourses(t.courses[1], t.courses[2], &custom));
    t.Commit();
    QVERIFY(safety);
    QVERIFY(own);
    // Without a surface the part's box is that of the laying points (z = 0): the plane lies at
    // the clearance of 100 mm, above both ends at z = 20.
    QVERIFY((safety->GetPoint(1)->GetTipPoint() - ZYLMathPoint(110, 0, 100)).GetLength() < 1e-9);
    QVERIFY(qAbs(safety->GetLength() - (80 + 130 + 80)) < 1e-9);
    // A new custom link starts from the straight motion.
    QCOMPARE(own->GetNumPoints(), 7);
    QVERIFY(qAbs(own->GetLength() - 230.0) < 1e-9);
}

QTEST_GUILESS_MAIN(tst_ZYLTPLinks)
#include "tst_ZYLTPLinks.moc"
