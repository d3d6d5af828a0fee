// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The program builder's validation: what it refuses, and that a refusal leaves no program.
#include "ZYLTPTestProgram.h"

#include "ZYLSysException.h"

#include <QTest>

class tst_ZYLTPProgram : public QObject {
    Q_OBJECT
private slots:
    void builderRefuses_data();
    void builderRefuses();
};

void tst_ZYLTPProgram::builderRefuses_data()
{
    QTest::addColumn<int>("fault");
    QTest::newRow("one tow point") << 0;
    QTest::newRow("runs do not cover the points") << 1;
    QTest::newRow("normal missing") << 2;
    QTest::newRow("coincident points") << 7;
}

void tst_ZYLTPProgram::builderRefuses()
{
    QFETCH(int, fault);
    ZYLTPTestProgram t(1);
    ZYLTPProgramBuilder::CourseData data = ZYLTPStraightCourse(100, 10, {{5, 1}});
    switch (fault) {
    case 0:
        data = ZYLTPStraightCourse(100, 10, {{1, 1}});
        break;
    case 1:
        data.runs[0].numPoints = 4;
        break;
    case 2:
        data.normals.pop_back();
        break;
    case 3:
        data.runs[0].values.sideTilt = 1.6;
        break;
    case 4:
        data.rollOutValues.feedRate = 0.0;
        break;
    case 5:
        data.normals[2] = ZYLMathVector();
        break;
    case 6:
        data.runs[0].forcedRates = {0.5, 1.01};
        break;
    case 7:
        data.tips.assign(5, ZYLMathPoint(1, 1, 1));
        break;
    }
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, t.builder.AddTowCourse(t.procedure, t.configuration, data));
    QCOMPARE(t.procedure->GetNumCourses(), 1);
    QCOMPARE(t.procedure->GetLayingOrder(), QList<int>{0});
}

QTEST_GUILESS_MAIN(tst_ZYLTPProgram)
#include "tst_ZYLTPProgram.moc"
