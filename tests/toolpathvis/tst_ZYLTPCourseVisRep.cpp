// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// What a course representation draws for each option value, on a straight course along +x
// whose first run lays tows 0-3 over 30 mm and whose second run lays tows 0-2 over 70 mm, so
// that tow 3 is one short piece (30 mm < 50 mm).

#include "ZYLTPVisTestProgram.h"
#include "ZYLTPVisTestSupport.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPBreakRangeVisRep.h"
#include "ZYLTPCourseVisRep.h"
#include "ZYLTPLinkVisRep.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPRetractTrajectory.h"

#include "ZYLVisTrianglePrimitive.h"

#include <QTest>

#include <algorithm>
#include <limits>
#include <memory>

using O = ZYLTPVisualizationOptions;

namespace {

constexpr double W = 6.35;
constexpr int NumLanes = 4;
// Tow points run from x = 0 to x = 100; the tow change is at x = 30.
constexpr double ChangeX = 30.0;
constexpr double LastTowX = 100.0;

double EdgeY(int edge)
{
    return (edge - 0.5 * NumLanes) * W;
}

// Whether the test course lays `lane` at x, and whether that tow piece is short.
bool Laid(int lane, double x)
{
    return lane < 3 || (lane == 3 && x < ChangeX);
}

bool Short(int lane, double x)
{
    return lane == 3 && x < ChangeX;
}

struct Triangle {
    ZYLMathPoint a, b, c;
    ZYLMathPoint Centroid() const
    {
        return {(a.X() + b.X() + c.X()) / 3, (a.Y() + b.Y() + c.Y()) / 3, (a.Z() + b.Z() + c.Z()) / 3};
    }
    ZYLMathVector Normal() const { return (b - a).Cross(c - a); }
    double Area() const { return 0.5 * Normal().GetLength(); }
};

QList<Triangle> TrianglesOf(const QList<const ZYLVisPrimitive *> &primitives)
{
    QList<Triangle> triangles;
    for (const ZYLVisPrimitive *primitive : primitives) {
        const auto *mesh = dynamic_cast<const ZYLVisTrianglePrimitive *>(primitive);
        if (!mesh)
            continue;
        for (int t = 0; t < mesh->GetNumElements(); ++t)
            triangles.append({mesh->GetTriangleVertex(t, 0), mesh->GetTriangleVertex(t, 1), mesh->GetTriangleVertex(t, 2)});
    }
    return triangles;
}

// Straight pieces of segment and polyline primitives as (start, end) pairs.
QList<std::pair<ZYLMathPoint, ZYLMathPoint>> SegmentsOf(const QList<const ZYLVisPrimitive *> &primitives)
{
    QList<std::pair<ZYLMathPoint, ZYLMathPoint>> segments;
    for (const ZYLVisPrimitive *primitive : primitives) {
        const bool joined = primitive->GetKind() == ZYLVisPrimitive::Kind::Polyline;
        if (!joined && primitive->GetKind() != ZYLVisPrimitive::Kind::Segments)
            continue;
        for (int i = 0; i + 1 < primitive->GetNumVertices(); i += joined ? 1 : 2)
            segments.append({primitive->GetVertex(i), primitive->GetVertex(i + 1)});
    }
    return segments;
}

} // namespace

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

    void layingVectors_data()
    {
        QTest::addColumn<int>("vectors");
        QTest::addColumn<QList<int>>("directions");
        QTest::newRow("none") << int(O::NoVectors) << QList<int>{};
        QTest::newRow("tool axis") << int(O::ToolAxis) << QList<int>{2};
        QTest::newRow("tool axis and laying direction") << int(O::ToolAxisAndLayingDirection) << QList<int>{0, 2};
        QTest::newRow("all axes") << int(O::AllAxes) << QList<int>{0, 1, 2};
    }
    void layingVectors()
    {
        QFETCH(int, vectors);
        QFETCH(QList<int>, directions);
        O options = m_base;
        options.SetTipPointEnabled(true);
        options.SetLayingVectorsToDisplay(O::VectorsToDisplay(vectors));
        options.SetVectorLength(15.0);
        const auto rep = Build(options);

        const int n = m_course->GetNumPoints();
        const auto points = ZYLTPVisPrimitivesOfKind(*rep, ZYLVisPrimitive::Kind::Points);
        QCOMPARE(points.size(), 1);
        QCOMPARE(points[0]->GetNumVertices(), n);
        QCOMPARE(ZYLTPVisPrimitivesOfKind(*rep, ZYLVisPrimitive::Kind::Segments).size(), directions.size());

        const O::VectorsToDisplay bits[] = {O::LayingDirection, O::SideDirection, O::ToolAxis};
        for (int direction = 0; direction < 3; ++direction) {
            const auto found = ZYLTPVisPrimitivesWith(
                *rep, options.GetGraphicAttributes(O::GetVectorElement(bits[direction])));
            if (!directions.contains(direction)) {
                QVERIFY(found.isEmpty());
                continue;
            }
            QCOMPARE(found.size(), 1);
            const auto segments = SegmentsOf(found);
            QCOMPARE(segments.size(), n);
            for (int i = 0; i < n; ++i) {
                // The first run is tilted forward, so the tool axis leans away from +z there.
                const ZYLMathAxis frame = m_course->GetPoint(i)->GetAxis(true);
                QVERIFY(ZYLTPVisNear(segments[i].first, frame.GetOrigin()));
                QVERIFY(ZYLTPVisNear(segments[i].second, frame.GetOrigin() + frame.GetDirection(direction) * 15.0));
            }
        }
    }

    void tipPointsOffHideTheLayingVectors()
    {
        O options = m_base;
        options.SetLayingVectorsToDisplay(O::AllAxes);
        QCOMPARE(Build(options)->GetNumPrimitives(), 0);
        options.SetTipPointEnabled(true);
        QCOMPARE(Build(options)->GetNumPrimitives(), 4);
    }

    void towFill_data()
    {
        QTest::addColumn<int>("display");
        QTest::addColumn<double>("bandArea");
        QTest::addColumn<double>("shortArea");
        // Lanes of the non-short pieces: 3 lanes over 100 mm; the short piece: 1 lane over 30 mm.
        QTest::newRow("no fill") << int(O::NoTowFill) << 0.0 << 0.0;
        QTest::newRow("short tows only") << int(O::ShortTowsOnly) << 0.0 << 30.0 * W;
        QTest::newRow("all tows") << int(O::AllTows) << 330.0 * W << 0.0;
        QTest::newRow("all tows, short highlighted") << int(O::AllTowsShortHighlighted) << 300.0 * W << 30.0 * W;
        QTest::newRow("unknown value") << 3 << 0.0 << 0.0;
    }
    void towFill()
    {
        QFETCH(int, display);
        QFETCH(double, bandArea);
        QFETCH(double, shortArea);
        O options = m_base;
        options.SetShortTowDisplay(O::ShortTowDisplay(display));
        const auto rep = Build(options);

        const auto band = TrianglesOf(ZYLTPVisPrimitivesWith(*rep, options.GetCourseBandGraphicAttributes()));
        const auto shortTows = TrianglesOf(ZYLTPVisPrimitivesWith(*rep, options.GetGraphicAttributes(O::ShortTowElement)));
        QCOMPARE(ZYLTPVisPrimitivesOfKind(*rep, ZYLVisPrimitive::Kind::Triangles).size(),
                 (bandArea > 0 ? 1 : 0) + (shortArea > 0 ? 1 : 0));

        const auto check = [](const QList<Triangle> &triangles, double area, bool wantShort) {
            double sum = 0.0;
            for (const Triangle &t : triangles) {
                const ZYLMathPoint c = t.Centroid();
                const int lane = int(std::floor(c.Y() / W + 0.5 * NumLanes));
                if (!Laid(lane, c.X()) || Short(lane, c.X()) != wantShort)
                    return false;
                // Counter-clockwise seen from the surface normal (+z).
                if (!(t.Normal().Z() > 0.0))
                    return false;
                sum += t.Area();
            }
            return ZYLTPVisNear(sum, area, 1e-6);
        };
        QVERIFY(check(band, bandArea, false));
        QVERIFY(check(shortTows, shortArea, true));
    }

    void bandFollowsTheTowMasks_data()
    {
        QTest::addColumn<quint64>("mask");
        QTest::addColumn<int>("numStrips");
        QTest::addColumn<int>("headTows"); // 0: the head knows no count
        QTest::newRow("one tow") << quint64(0x1) << 1 << 0;
        QTest::newRow("neighbours merge") << quint64(0x7) << 1 << 0;
        QTest::newRow("gap") << quint64(0x5) << 2 << 0;
        QTest::newRow("high tow only") << quint64(0x20) << 1 << 0;
        // The head's 16 lanes are centred on the tips: tows 1-4 lie wholly on one side.
        QTest::newRow("tows 1-4 of a 16-tow head") << quint64(0xF) << 1 << 16;
        QTest::newRow("tows 13-16 of a 16-tow head") << quint64(0xF000) << 1 << 16;
        QTest::newRow("gap, 16-tow head") << quint64(0x0500) << 2 << 16;
    }
    void bandFollowsTheTowMasks()
    {
        QFETCH(quint64, mask);
        QFETCH(int, numStrips);
        QFETCH(int, headTows);
        if (headTows > 0)
            m_program->configuration = m_program->builder.AddMachineConfiguration(
                m_program->procedure, m_program->builder.AddMachineHead(QStringLiteral("Head"), headTows),
                m_program->roller);
        const ZYLTPTowCourse *course = m_program->AddCourse(100.0, {{5, mask}});
        O options = m_base;
        options.SetShortTowDisplay(O::AllTows);
        QList<ZYLVisOptions> out;
        const ZYLTPCourseVisRep rep(course, 0, options, out);
        const auto triangles = TrianglesOf(ZYLTPVisPrimitivesWith(rep, options.GetCourseBandGraphicAttributes()));
        // A straight course needs no point between the ends of a span: one quad per strip.
        QCOMPARE(triangles.size(), numStrips * 2);
        const int lastTow = ZYLCompTowMask(mask).GetLastTow();
        const int lanes = headTows > 0 ? headTows : lastTow + 1;
        for (const Triangle &t : triangles) {
            const int lane = int(std::floor((t.Centroid().Y() - 100.0) / W + 0.5 * lanes));
            QVERIFY2(mask & (quint64(1) << lane), qPrintable(QStringLiteral("lane %1 drawn").arg(lane)));
        }
        // The lanes are centred on the tips: the band reaches from the lowest laid tow's outer
        // edge to the highest laid tow's.
        const ZYLMathBoundingBox box = rep.GetBoundingBox();
        const int firstTow = qCountTrailingZeroBits(mask);
        QVERIFY(ZYLTPVisNear(box.GetMin().Y() - 100.0, (firstTow - 0.5 * lanes) * W));
        QVERIFY(ZYLTPVisNear(box.GetMax().Y() - 100.0, (lastTow + 1 - 0.5 * lanes) * W));
    }

    void towEdges_data()
    {
        QTest::addColumn<int>("display");
        QTest::addColumn<QList<int>>("firstRunEdges");
        QTest::addColumn<QList<int>>("secondRunEdges");
        QTest::newRow("none") << int(O::NoTowEdges) << QList<int>{} << QList<int>{};
        QTest::newRow("outer") << int(O::OuterTowEdges) << QList<int>{0, 4} << QList<int>{0, 3};
        QTest::newRow("inner") << int(O::InnerTowEdges) << QList<int>{1, 2, 3} << QList<int>{1, 2};
        QTest::newRow("all") << int(O::AllTowEdges) << QList<int>{0, 1, 2, 3, 4} << QList<int>{0, 1, 2, 3};
    }
    void towEdges()
    {
        QFETCH(int, display);
        QFETCH(QList<int>, firstRunEdges);
        QFETCH(QList<int>, secondRunEdges);
        O options = m_base;
        options.SetTowEdgeDisplay(O::TowEdgesDisplay(display));
        const auto rep = Build(options);
        const auto segments = SegmentsOf(ZYLTPVisPrimitivesWith(*rep, options.GetGraphicAttributes(O::TowEdgeElement)));

        // Each edge runs along the whole of its span, and nowhere else.
        double lengthAt[2][NumLanes + 1] = {};
        for (const auto &[a, b] : segments) {
            QVERIFY(ZYLTPVisNear(a.Y(), b.Y()));
            const int edge = int(std::lround(a.Y() / W + 0.5 * NumLanes));
            QVERIFY(ZYLTPVisNear(a.Y(), EdgeY(edge)));
            lengthAt[a.X() < ChangeX ? 0 : 1][edge] += a.GetDistanceTo(b);
        }
        for (int edge = 0; edge <= NumLanes; ++edge) {
            QVERIFY(ZYLTPVisNear(lengthAt[0][edge], firstRunEdges.contains(edge) ? ChangeX : 0.0, 1e-6));
            QVERIFY(ZYLTPVisNear(lengthAt[1][edge], secondRunEdges.contains(edge) ? LastTowX - ChangeX : 0.0, 1e-6));
        }
    }

    void bandOfACurvedCourseStaysOnItsPoints_data()
    {
        QTest::addColumn<double>("radius");
        QTest::addColumn<bool>("thinned");
        // A 10 mm chord strays 0.0006 mm from a 20 m circle but 0.08 mm from a 150 mm one.
        QTest::newRow("gentle") << 20000.0 << true;
        QTest::newRow("tight") << 150.0 << false;
    }
    void bandOfACurvedCourseStaysOnItsPoints()
    {
        QFETCH(double, radius);
        QFETCH(bool, thinned);
        const int numPoints = 60;
        const ZYLTPTowCourse *course = m_program->AddArcCourse(radius, numPoints, 0x3);
        O options = m_base;
        options.SetTowEdgeDisplay(O::OuterTowEdges);
        QList<ZYLVisOptions> out;
        const ZYLTPCourseVisRep rep(course, 0, options, out);
        const auto edges = ZYLTPVisPrimitivesWith(rep, options.GetGraphicAttributes(O::TowEdgeElement));
        QCOMPARE(edges.size(), 2);
        // Fewer vertices than points where the course allows it, and every point's edge
        // position within a hundredth of a millimetre of the drawn edge.
        for (int e = 0; e < 2; ++e) {
            const ZYLVisPrimitive *edge = edges[e];
            QCOMPARE(edge->GetNumVertices() < numPoints, thinned);
            const double offset = e == 0 ? -W : W;
            for (int i = 1; i <= numPoints; ++i) {
                const ZYLMathAxis frame = course->GetPoint(i)->GetAxis(false);
                const ZYLMathPoint p = frame.GetOrigin() + frame.GetSecondDirection() * offset;
                double nearest = std::numeric_limits<double>::infinity();
                for (int k = 0; k + 1 < edge->GetNumVertices(); ++k) {
                    const ZYLMathPoint a = edge->GetVertex(k);
                    const ZYLMathVector ab = edge->GetVertex(k + 1) - a;
                    const double t = std::clamp((p - a).Dot(ab) / ab.GetSquaredLength(), 0.0, 1.0);
                    nearest = std::min(nearest, p.GetDistanceTo(a + ab * t));
                }
                QVERIFY2(nearest <= 0.01 + 1e-9, qPrintable(QStringLiteral("point %1 is %2 mm off").arg(i).arg(nearest)));
            }
        }
    }

    void towEnds_data()
    {
        QTest::addColumn<int>("display");
        QTest::addColumn<QList<QList<double>>>("ends");  // x, first edge, last edge
        const QList<double> addAll{0.0, 0, 4};
        const QList<double> cutTow3{ChangeX, 3, 4};
        const QList<double> cutTows0To2{LastTowX, 0, 3};
        QTest::newRow("none") << int(O::NoHeadProfiles) << QList<QList<double>>{};
        QTest::newRow("adds") << int(O::HeadProfilesAtAdds) << QList<QList<double>>{addAll};
        QTest::newRow("cuts") << int(O::HeadProfilesAtCuts) << QList<QList<double>>{cutTow3, cutTows0To2};
        QTest::newRow("adds and cuts") << int(O::HeadProfilesAtAddsAndCuts)
                                       << QList<QList<double>>{addAll, cutTow3, cutTows0To2};
    }
    void towEnds()
    {
        QFETCH(int, display);
        QFETCH(QList<QList<double>>, ends);
        O options = m_base;
        options.SetTowHeadProfileDisplay(O::HeadProfilesDisplay(display));
        const auto rep = Build(options);
        const auto segments = SegmentsOf(ZYLTPVisPrimitivesWith(*rep, options.GetGraphicAttributes(O::HeadProfileElement)));
        QCOMPARE(segments.size(), ends.size());
        for (const QList<double> &end : ends) {
            const ZYLMathPoint a(end[0], EdgeY(int(end[1])), 0.0);
            const ZYLMathPoint b(end[0], EdgeY(int(end[2])), 0.0);
            const bool found = std::any_of(segments.begin(), segments.end(), [&](const auto &s) {
                return ZYLTPVisNear(s.first, a) && ZYLTPVisNear(s.second, b);
            });
            QVERIFY2(found, qPrintable(QStringLiteral("tow end at x = %1").arg(end[0])));
        }
    }

    void courseLines_data()
    {
        QTest::addColumn<int>("element");
        QTest::addColumn<QList<ZYLMathPoint>>("vertices");
        QList<ZYLMathPoint> towPoints;
        for (int i = 0; i <= 10; ++i)
            towPoints.append({10.0 * i, 0.0, 0.0});
        QTest::newRow("laying trajectory") << int(O::LayingTrajectoryElement) << towPoints;
        QTest::newRow("roll-in and roll-out")
            << int(O::RollInOutElement)
            << QList<ZYLMathPoint>{{-10, 0, 0}, {0, 0, 0}, {LastTowX, 0, 0}, {LastTowX + 10, 0, 0}};
        QTest::newRow("approach and retract")
            << int(O::ApproachRetractElement)
            << QList<ZYLMathPoint>{{-10, 0, 20}, {-10, 0, 0}, {LastTowX + 10, 0, 0}, {LastTowX + 10, 0, 20}};
    }
    void courseLines()
    {
        QFETCH(int, element);
        QFETCH(QList<ZYLMathPoint>, vertices);
        O options = m_base;
        switch (element) {
        case O::LayingTrajectoryElement:
            options.SetLayingTrajectoryEnabled(true);
            break;
        case O::RollInOutElement:
            options.SetRollInOutEnabled(true);
            break;
        default:
            options.SetApproachRetractEnabled(true);
        }
        const auto rep = Build(options);
        QCOMPARE(rep->GetNumPrimitives(), 1);
        QCOMPARE(rep->GetOptions(0), options.GetGraphicAttributes(O::GraphicElement(element)));
        const ZYLVisPrimitive *primitive = rep->GetPrimitive(0);
        QCOMPARE(primitive->GetKind(), element == O::LayingTrajectoryElement ? ZYLVisPrimitive::Kind::Polyline
                                                                            : ZYLVisPrimitive::Kind::Segments);
        QCOMPARE(primitive->GetNumVertices(), vertices.size());
        for (int i = 0; i < vertices.size(); ++i)
            QVERIFY2(ZYLTPVisNear(primitive->GetVertex(i), vertices[i], 1e-6), qPrintable(QString::number(i)));
    }

    void boundingBoxMatchesTheCourse()
    {
        O options = m_base;
        options.SetShortTowDisplay(O::AllTows);
        ZYLMathBoundingBox box = Build(options)->GetBoundingBox();
        QVERIFY(ZYLTPVisNear(box.GetMin(), ZYLMathPoint(0.0, EdgeY(0), 0.0), 1e-9));
        QVERIFY(ZYLTPVisNear(box.GetMax(), ZYLMathPoint(LastTowX, EdgeY(NumLanes), 0.0), 1e-9));

        options.SetTipPointEnabled(true);
        options.SetLayingVectorsToDisplay(O::NoVectors);
        options.SetApproachRetractEnabled(true);
        box = Build(options)->GetBoundingBox();
        QVERIFY(ZYLTPVisNear(box.GetMin(), ZYLMathPoint(-10.0, EdgeY(0), 0.0), 1e-6));
        QVERIFY(ZYLTPVisNear(box.GetMax(), ZYLMathPoint(LastTowX + 10.0, EdgeY(NumLanes), 20.0), 1e-6));
    }

    void outListHoldsTheOptionsOfEachPrimitive()
    {
        QList<ZYLVisOptions> out;
        O options = ZYLTPVisDistinctOptions();
        options.SetLayingVectorsToDisplay(O::AllAxes);
        const auto rep = Build(options, &out);
        QCOMPARE(out.size(), rep->GetNumPrimitives());
        QVERIFY(rep->GetNumPrimitives() > 5);
        for (int i = 0; i < out.size(); ++i)
            QCOMPARE(out[i], rep->GetOptions(i));
    }

    void castsAndAccessors()
    {
        const auto rep = Build(ZYLTPVisDistinctOptions());
        const ZYLVisRep *base = rep.get();
        QCOMPARE(qobject_cast<const ZYLTPCourseVisRep *>(base), rep.get());
        QVERIFY(!qobject_cast<const ZYLTPLinkVisRep *>(base));
        QVERIFY(!qobject_cast<const ZYLTPBreakRangeVisRep *>(base));
        QCOMPARE(rep->GetCourse(), m_course);
        QCOMPARE(rep->GetCourseIndex(), 3);

        QList<ZYLVisOptions> out;
        const ZYLTPCourseVisRep empty(nullptr, 7, ZYLTPVisDistinctOptions(), out);
        QCOMPARE(empty.GetNumPrimitives(), 0);
        QVERIFY(out.isEmpty());
        QCOMPARE(empty.GetCourseIndex(), 7);
    }
};

QTEST_GUILESS_MAIN(tst_ZYLTPCourseVisRep)
#include "tst_ZYLTPCourseVisRep.moc"
