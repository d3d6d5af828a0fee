// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// A course representation draws only what its options ask for, on a straight course along +x
// whose first run lays tows 0-3 over 30 mm and whose second run lays tows 0-2 over 70 mm.

#include "ZYLTPVisTestProgram.h"
#include "ZYLTPVisTestSupport.h"

#include "ZYLTPCourseVisRep.h"

#include <QTest>

#include <memory>

using O = ZYLTPVisualizationOptions;

class tst_ZYLTPCourseVisRep : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<ZYLTPVisTestProgram> m_program;
    const ZYLTPTowCourse *m_course = nullptr;
    O m_base;

    std::unique_ptr<ZYLTPCourseVisRep> Build(const O &options, QList<ZYLVisOptions> *out = nullptr)
    {
        QList<ZYLVisOptions> discarded;
        return std::make_unique<ZYLTPCourseVisRep>(m_course, 3, options, out ? *out : discarded);
    }

private slots:
    void init()
    {
        m_program = std::make_unique<ZYLTPVisTestProgram>();
        m_course = m_program->AddCourse(0.0, {{3, 0xF, 0.2}, {8, 0x7}});
        m_base = ZYLTPVisNothingDrawn(ZYLTPVisDistinctOptions());
    }

    void nothingAskedDrawsNothing()
    {
        const auto rep = Build(m_base);
        QCOMPARE(rep->GetNumPrimitives(), 0);
        QVERIFY(rep->GetBoundingBox().IsEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_ZYLTPCourseVisRep)
#include "tst_ZYLTPCourseVisRep.moc"
