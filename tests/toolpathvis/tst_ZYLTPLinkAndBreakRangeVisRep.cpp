// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// What link and break range representations draw: the link's motion, points and end vectors
// by option; the stretch of a course a break range covers.

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

    QList<ZYLMathAxis> LinkFrames() const
    {
        QList<ZYLMathAxis> frames;
        for (int i = 0; i < m_link->GetNumPoints(); ++i)
            frames.append(m_link->GetPoint(i)->GetAxis(true));
        return frames;
    }

private slots:
    void init()
    {
        m_program = std::make_unique<ZYLTPVisTestProgram>();
        ZYLTPTowCourse *first = m_program->AddCourse(0.0, {{11, 0xF}});
        ZYLTPTowCourse *second = m_program->AddCourse(50.0, {{11, 0xF}});
        m_link = m_program->builder.AddLink(m_program->procedure, first, second, ZYLTPCourseLink::Linear);
        m_base = ZYLTPVisNothingDrawn(ZYLTPVisDistinctOptions());
    }

    void linkMotionAndPoints_data()
    {
        QTest::addColumn<bool>("trajectory");
        QTest::addColumn<bool>("points");
        QTest::addColumn<int>("vectors");
        QTest::addColumn<int>("numVectorKinds");
        QTest::newRow("nothing") << false << false << int(O::AllAxes) << 0;
        QTest::newRow("motion only") << true << false << int(O::AllAxes) << 0;
        QTest::newRow("points only") << false << true << int(O::NoVectors) << 0;
        QTest::newRow("points with tool axis") << false << true << int(O::ToolAxis) << 1;
        QTest::newRow("both, tool axis and laying direction") << true << true << int(O::ToolAxisAndLayingDirection) << 2;
        QTest::newRow("both, all axes") << true << true << int(O::AllAxes) << 3;
    }
    void linkMotionAndPoints()
    {
        QFETCH(bool, trajectory);
        QFETCH(bool, points);
        QFETCH(int, vectors);
        QFETCH(int, numVectorKinds);
        O options = m_base;
        options.SetLinkingTrajectoriesEnabled(trajectory);
        options.SetLinkingPointsEnabled(points);
        options.SetLinkingVectorsToDisplay(O::VectorsToDisplay(vectors));
        QList<ZYLVisOptions> out;
        const ZYLTPLinkVisRep rep(m_link, options, out);
        const QList<ZYLMathAxis> frames = LinkFrames();
        QVERIFY(frames.size() >= 2);

        const auto lines = ZYLTPVisPrimitivesWith(rep, options.GetLinkLineGraphicAttributes());
        QCOMPARE(lines.size(), trajectory ? 1 : 0);
        if (trajectory) {
            QCOMPARE(lines[0]->GetKind(), ZYLVisPrimitive::Kind::Polyline);
            QCOMPARE(lines[0]->GetNumVertices(), frames.size());
            for (int i = 0; i < frames.size(); ++i)
                QVERIFY(ZYLTPVisNear(lines[0]->GetVertex(i), frames[i].GetOrigin()));
        }
        const auto dots = ZYLTPVisPrimitivesWith(rep, options.GetLinkingPointGraphicAttributes());
        QCOMPARE(dots.size(), points ? 1 : 0);
        if (points)
            QCOMPARE(dots[0]->GetNumVertices(), frames.size());
        const auto segments = ZYLTPVisPrimitivesOfKind(rep, ZYLVisPrimitive::Kind::Segments);
        QCOMPARE(segments.size(), numVectorKinds);
        for (const ZYLVisPrimitive *segment : segments) {
            // Plain vectors: one segment per point, starting at the point.
            QCOMPARE(segment->GetNumElements(), frames.size());
            for (int i = 0; i < frames.size(); ++i)
                QVERIFY(ZYLTPVisNear(segment->GetVertex(2 * i), frames[i].GetOrigin()));
        }
        QCOMPARE(out.size(), rep.GetNumPrimitives());
    }

    void linkEndPointVectorsAreArrowsAtBothEnds_data()
    {
        QTest::addColumn<int>("vectors");
        QTest::addColumn<QList<int>>("directions");
        QTest::newRow("none") << int(O::NoVectors) << QList<int>{};
        QTest::newRow("tool axis") << int(O::ToolAxis) << QList<int>{2};
        QTest::newRow("all axes") << int(O::AllAxes) << QList<int>{0, 1, 2};
    }
    void linkEndPointVectorsAreArrowsAtBothEnds()
    {
        QFETCH(int, vectors);
        QFETCH(QList<int>, directions);
        O options = m_base;
        options.SetLinkEndPointsVectorsToDisplay(O::VectorsToDisplay(vectors));
        QList<ZYLVisOptions> out;
        const ZYLTPLinkVisRep rep(m_link, options, out);
        QCOMPARE(rep.GetNumPrimitives(), directions.size());
        const QList<ZYLMathAxis> frames = LinkFrames();
        const O::VectorsToDisplay bits[] = {O::LayingDirection, O::SideDirection, O::ToolAxis};
        for (int direction : directions) {
            const auto found = ZYLTPVisPrimitivesWith(rep, options.GetGraphicAttributes(O::GetVectorElement(bits[direction])));
            QCOMPARE(found.size(), 1);
            // Shaft and four head strokes at each of the two ends.
            QCOMPARE(found[0]->GetNumElements(), 10);
            for (const ZYLMathAxis &end : {frames.first(), frames.last()}) {
                const ZYLMathPoint tip = end.GetOrigin() + end.GetDirection(direction) * options.GetVectorLength();
                bool shaft = false;
                for (int s = 0; s < found[0]->GetNumElements(); ++s) {
                    shaft = shaft || (ZYLTPVisNear(found[0]->GetVertex(2 * s), end.GetOrigin())
                                      && ZYLTPVisNear(found[0]->GetVertex(2 * s + 1), tip));
                }
                QVERIFY(shaft);
            }
        }
    }

    void linkCastsAndNull()
    {
        QList<ZYLVisOptions> out;
        const ZYLTPLinkVisRep rep(m_link, ZYLTPVisDistinctOptions(), out);
        const ZYLVisRep *base = &rep;
        QCOMPARE(qobject_cast<const ZYLTPLinkVisRep *>(base), &rep);
        QVERIFY(!qobject_cast<const ZYLTPCourseVisRep *>(base));
        QVERIFY(!qobject_cast<const ZYLTPBreakRangeVisRep *>(base));
        QCOMPARE(rep.GetCourseLink(), m_link);
        const ZYLTPLinkVisRep empty(nullptr, ZYLTPVisDistinctOptions(), out);
        QCOMPARE(empty.GetNumPrimitives(), 0);
        QVERIFY(!empty.GetCourseLink());
    }

    void breakRangeStretch_data()
    {
        // The course's tow points run from x = 0 to 100, its roll-in point is at x = -10: arc
        // length a from the roll-in point is at x = a - 10.
        QTest::addColumn<double>("start");
        QTest::addColumn<double>("end");
        QTest::addColumn<QList<double>>("xs");
        QTest::newRow("between points") << 25.0 << 45.0 << QList<double>{15, 20, 30, 35};
        QTest::newRow("on points") << 20.0 << 40.0 << QList<double>{10, 20, 30};
        QTest::newRow("within one segment") << 12.0 << 18.0 << QList<double>{2, 8};
        QTest::newRow("through the roll-in") << 0.0 << 15.0 << QList<double>{-10, 0, 5};
        QTest::newRow("whole course") << 0.0 << 120.0
                                      << QList<double>{-10, 0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110};
    }
    void breakRangeStretch()
    {
        QFETCH(double, start);
        QFETCH(double, end);
        QFETCH(QList<double>, xs);
        ZYLTPBreakRange *range = m_program->builder.AddBreakRange(m_program->courses[0], start, end);
        O options = m_base;
        QList<ZYLVisOptions> out;
        const ZYLTPBreakRangeVisRep rep(range, options, out);
        QCOMPARE(rep.GetBreakRange(), range);
        QCOMPARE(rep.GetNumPrimitives(), 2);
        for (int i = 0; i < 2; ++i)
            QCOMPARE(rep.GetOptions(i), options.GetBreakRangeGraphicAttributes());

        const ZYLVisPrimitive *line = rep.GetPrimitive(0);
        QCOMPARE(line->GetKind(), ZYLVisPrimitive::Kind::Polyline);
        QCOMPARE(line->GetNumVertices(), xs.size());
        for (int i = 0; i < xs.size(); ++i)
            QVERIFY2(ZYLTPVisNear(line->GetVertex(i), ZYLMathPoint(xs[i], 0.0, 0.0), 1e-9), qPrintable(QString::number(i)));

        // Ticks across the four tow lanes at both ends.
        const ZYLVisPrimitive *ticks = rep.GetPrimitive(1);
        QCOMPARE(ticks->GetKind(), ZYLVisPrimitive::Kind::Segments);
        const double half = 2 * options.GetTowWidth();
        QVERIFY(ZYLTPVisNear(ticks->GetVertex(0), ZYLMathPoint(xs.first(), -half, 0.0)));
        QVERIFY(ZYLTPVisNear(ticks->GetVertex(1), ZYLMathPoint(xs.first(), half, 0.0)));
        QVERIFY(ZYLTPVisNear(ticks->GetVertex(2), ZYLMathPoint(xs.last(), -half, 0.0)));
        QVERIFY(ZYLTPVisNear(ticks->GetVertex(3), ZYLMathPoint(xs.last(), half, 0.0)));

        const ZYLMathBoundingBox box = rep.GetBoundingBox();
        QVERIFY(ZYLTPVisNear(box.GetMin(), ZYLMathPoint(xs.first(), -half, 0.0)));
        QVERIFY(ZYLTPVisNear(box.GetMax(), ZYLMathPoint(xs.last(), half, 0.0)));
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
