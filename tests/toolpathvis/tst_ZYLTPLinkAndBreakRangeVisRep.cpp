// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// A break range representation draws nothing for a missing range, and casts to its kind.

#include "ZYLTPVisTestProgram.h"
#include "ZYLTPVisTestSupport.h"

#include "ZYLTPBreakRange.h"
#include "ZYLTPBreakRangeVisRep.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPCourseVisRep.h"
#include "ZYLTPLinkVisRep.h"
#include "ZYLTPOffPartPoint.h"

#include <QTest>

#include <memory>

using O = ZYLTPVisualizationOptions;

class tst_ZYLTPLinkAndBreakRangeVisRep : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<ZYLTPVisTestProgram> m_program;
    const ZYLTPCourseLink *m_link = nullptr;
    O m_base;

private slots:
    void init()
    {
        m_program = std::make_unique<ZYLTPVisTestProgram>();
        ZYLTPTowCourse *first = m_program->AddCourse(0.0, {{11, 0xF}});
        ZYLTPTowCourse *second = m_program->AddCourse(50.0, {{11, 0xF}});
        m_link = m_program->builder.AddLink(m_program->procedure, first, second, ZYLTPCourseLink::Linear);
        m_base = ZYLTPVisNothingDrawn(ZYLTPVisDistinctOptions());
    }

    void breakRangeCastsAndNull()
    {
        ZYLTPBreakRange *range = m_program->builder.AddBreakRange(m_program->courses[1], 20.0, 30.0);
        QList<ZYLVisOptions> out;
        const ZYLTPBreakRangeVisRep rep(range, ZYLTPVisDistinctOptions(), out);
        const ZYLVisRep *base = &rep;
        QCOMPARE(qobject_cast<const ZYLTPBreakRangeVisRep *>(base), &rep);
        QVERIFY(!qobject_cast<const ZYLTPCourseVisRep *>(base));
        QVERIFY(!qobject_cast<const ZYLTPLinkVisRep *>(base));
        QCOMPARE(out.size(), rep.GetNumPrimitives());
        const ZYLTPBreakRangeVisRep empty(nullptr, ZYLTPVisDistinctOptions(), out);
        QCOMPARE(empty.GetNumPrimitives(), 0);
    }
};

QTEST_GUILESS_MAIN(tst_ZYLTPLinkAndBreakRangeVisRep)
#include "tst_ZYLTPLinkAndBreakRangeVisRep.moc"
