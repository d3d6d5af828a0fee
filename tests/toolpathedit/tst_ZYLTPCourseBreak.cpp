// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Breaking a course is refused, with the program left byte for byte as it was, for ranges it
// cannot break at and outside a transaction.
#include "../toolpath/ZYLTPTestProgram.h"

#include "ZYLTPBreakRange.h"
#include "ZYLTPProgramFile.h"

#include "ZYLSysException.h"

#include <QTest>

class tst_ZYLTPCourseBreak : public QObject {
    Q_OBJECT
private slots:
    void refused_data();
    void refused();
};

void tst_ZYLTPCourseBreak::refused_data()
{
    // 0 null, 1 range of another course, 2-3 piece too short, 4 no transaction, 5 removed course
    QTest::addColumn<int>("kind");
    QTest::newRow("one tow point after") << 3;
    QTest::newRow("course removed") << 5;
}

void tst_ZYLTPCourseBreak::refused()
{
    QFETCH(int, kind);
    ZYLTPTestProgram t(2);
    t.builder.AddLink(t.procedure, t.courses[0], t.courses[1], ZYLTPCourseLink::Linear);
    const ZYLTPBreakRange *ranges[] = {nullptr, t.builder.AddBreakRange(t.courses[1], 40.0, 60.0),
                                       t.builder.AddBreakRange(t.courses[0], 0.0, 30.0),
                                       t.builder.AddBreakRange(t.courses[0], 104.0, 120.0),
                                       t.builder.AddBreakRange(t.courses[0], 40.0, 60.0),
                                       t.builder.AddBreakRange(t.courses[0], 40.0, 60.0)};
    if (kind != 4)
        t.Open();
    if (kind == 5)
        t.procedure->RemoveCourse(t.courses[0]);
    const QByteArray before = ZYLTPProgramFile::Serialize(*t.program);
    const int courses = t.procedure->GetNumCourses();
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, t.courses[0]->Break(ranges[kind]));
    QCOMPARE(ZYLTPProgramFile::Serialize(*t.program), before);
    QCOMPARE(t.procedure->GetNumCourses(), courses);
    if (kind == 5)
        QVERIFY_THROWS_EXCEPTION(ZYLSysException, t.courses[0]->Reverse(true));
}

QTEST_GUILESS_MAIN(tst_ZYLTPCourseBreak)
#include "tst_ZYLTPCourseBreak.moc"
