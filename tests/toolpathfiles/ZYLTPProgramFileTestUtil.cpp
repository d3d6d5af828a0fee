// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPProgramFileTestUtil.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPBreakRange.h"
#include "ZYLTPCourse.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPInspectionProcedure.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPOffPartPoint.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPProgram.h"
#include "ZYLTPProgramBuilder.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPRoller.h"
#include "ZYLTPTool.h"
#include "ZYLTPTowCourse.h"
#include "ZYLTPTowTrajectory.h"

#include "ZYLGeoAssembledCurveOnSurface.h"
#include "ZYLGeoCurve.h"
#include "ZYLGeoSurface.h"

#include <QTest>

#include <cmath>

namespace {

// Exact comparison: a program read back from its file holds the very same doubles.
#define ZYL_SAME_POINT(a, b)                                                                                           \
    do {                                                                                                               \
        const ZYLMathPoint pa_ = (a), pb_ = (b);                                                                       \
        QVERIFY2(pa_ == pb_, qPrintable(QStringLiteral("%1 differs").arg(QLatin1String(#a))));                        \
    } while (false)
#define ZYL_SAME_AXIS(a, b) QVERIFY2((a) == (b), #a " differs")

void CompareResource(const ZYLTPResource &a, const ZYLTPResource &b)
{
    QCOMPARE(b.GetId(), a.GetId());
    QCOMPARE(b.GetName(), a.GetName());
    QCOMPARE(b.GetCollisionPoints().size(), a.GetCollisionPoints().size());
    for (qsizetype i = 0; i < a.GetCollisionPoints().size(); ++i) {
        ZYL_SAME_POINT(a.GetCollisionPoints()[i].first, b.GetCollisionPoints()[i].first);
        QCOMPARE(b.GetCollisionPoints()[i].second, a.GetCollisionPoints()[i].second);
    }
    QCOMPARE(bool(qobject_cast<const ZYLTPTool *>(&b)), bool(qobject_cast<const ZYLTPTool *>(&a)));
    if (const auto *ha = qobject_cast<const ZYLTPMachineHead *>(&a))
        QCOMPARE(qobject_cast<const ZYLTPMachineHead *>(&b)->GetNumTows(), ha->GetNumTows());
    const auto *ra = qobject_cast<const ZYLTPRoller *>(&a);
    const auto *rb = qobject_cast<const ZYLTPRoller *>(&b);
    QCOMPARE(bool(rb), bool(ra));
    if (ra) {
        QCOMPARE(rb->GetWidth(), ra->GetWidth());
        QCOMPARE(rb->GetDiameter(), ra->GetDiameter());
    }
}

void CompareGeometry(const ZYLTPProgram &a, const ZYLTPProgram &b)
{
    QCOMPARE(bool(b.GetPlySurface()), bool(a.GetPlySurface()));
    if (const ZYLGeoSurface *sa = a.GetPlySurface()) {
        const ZYLGeoSurface *sb = b.GetPlySurface();
        const ZYLGeoSurface::Domain d = sa->GetDomain();
        QCOMPARE(sb->GetDomain().uMax, d.uMax);
        QCOMPARE(sb->GetDomain().vMax, d.vMax);
        for (int i = 0; i <= 4; ++i)
            for (int j = 0; j <= 4; ++j) {
                const double u = d.uMin + (d.uMax - d.uMin) * i / 4, v = d.vMin + (d.vMax - d.vMin) * j / 4;
                ZYL_SAME_POINT(sa->Evaluate(u, v), sb->Evaluate(u, v));
            }
    }
    QCOMPARE(b.GetPlyBoundaries().size(), a.GetPlyBoundaries().size());
    for (qsizetype k = 0; k < a.GetPlyBoundaries().size(); ++k) {
        const ZYLGeoAssembledCurveOnSurface *ba = a.GetPlyBoundaries()[k], *bb = b.GetPlyBoundaries()[k];
        QCOMPARE(bb->GetNumCurves(), ba->GetNumCurves());
        for (int c = 0; c < ba->GetNumCurves(); ++c) {
            const ZYLGeoCurve *ca = ba->GetCurve(c), *cb = bb->GetCurve(c);
            QCOMPARE(cb->GetEndParameter(), ca->GetEndParameter());
            for (int s = 0; s <= 20; ++s) {
                const double t = ca->GetStartParameter() + (ca->GetEndParameter() - ca->GetStartParameter()) * s / 20;
                ZYL_SAME_POINT(ca->Evaluate(t), cb->Evaluate(t));
            }
        }
    }
}

void CompareCourse(const ZYLTPRollLayupProcedure &pa, const ZYLTPCourse &a, const ZYLTPRollLayupProcedure &pb,
                   const ZYLTPCourse &b)
{
    QCOMPARE(b.GetNumPoints(), a.GetNumPoints());
    QCOMPARE(qobject_cast<const ZYLTPTowCourse *>(&b)->GetNumTows(), qobject_cast<const ZYLTPTowCourse *>(&a)->GetNumTows());
    for (int i = 0; i < a.GetNumPoints(); ++i) {
        ZYL_SAME_POINT(a.GetPoint(i)->GetTipPoint(), b.GetPoint(i)->GetTipPoint());
        ZYL_SAME_AXIS(a.GetPoint(i)->GetAxis(true), b.GetPoint(i)->GetAxis(true));
    }
    QCOMPARE(b.GetNumTrajectories(), a.GetNumTrajectories());
    for (int t = 0; t < a.GetNumTrajectories(); ++t) {
        const auto *ta = qobject_cast<const ZYLTPOnPartTrajectory *>(a.GetTrajectory(t));
        const auto *tb = qobject_cast<const ZYLTPOnPartTrajectory *>(b.GetTrajectory(t));
        QCOMPARE(bool(tb), bool(ta));
        QCOMPARE(b.GetTrajectory(t)->metaObject()->className(), a.GetTrajectory(t)->metaObject()->className());
        if (!ta)
            continue;
        QCOMPARE(tb->GetFirstPointIndex(), ta->GetFirstPointIndex());
        QCOMPARE(tb->GetNumPoints(), ta->GetNumPoints());
        QVERIFY(tb->GetValues() == ta->GetValues());
        if (const auto *wa = qobject_cast<const ZYLTPTowTrajectory *>(ta)) {
            const auto *wb = qobject_cast<const ZYLTPTowTrajectory *>(tb);
            QCOMPARE(wb->GetTowMask().GetRawValue(), wa->GetTowMask().GetRawValue());
            QCOMPARE(wb->GetForcedMask().GetRawValue(), wa->GetForcedMask().GetRawValue());
            QCOMPARE(wb->GetForcedRates(), wa->GetForcedRates());
        }
    }
    QCOMPARE(b.GetRollIn(), a.GetRollIn());
    QCOMPARE(b.GetRollOut(), a.GetRollOut());
    QCOMPARE(b.GetLayingFeedRate(), a.GetLayingFeedRate());
    QCOMPARE(b.GetAddFeedRate(), a.GetAddFeedRate());
    QCOMPARE(b.GetCutFeedRate(), a.GetCutFeedRate());
    QCOMPARE(b.GetApproachTrajectory()->GetAngle(), a.GetApproachTrajectory()->GetAngle());
    QCOMPARE(b.GetApproachTrajectory()->GetLength(), a.GetApproachTrajectory()->GetLength());
    QCOMPARE(b.GetRetractTrajectory()->GetAngle(), a.GetRetractTrajectory()->GetAngle());
    QCOMPARE(b.GetRetractTrajectory()->GetLength(), a.GetRetractTrajectory()->GetLength());
    QCOMPARE(b.GetPrefixInstructions(), a.GetPrefixInstructions());
    QCOMPARE(b.GetSuffixInstructions(), a.GetSuffixInstructions());
    QCOMPARE(b.GetNumBreakRanges(), a.GetNumBreakRanges());
    for (int r = 0; r < a.GetNumBreakRanges(); ++r) {
        QCOMPARE(b.GetBreakRange(r)->GetStart(), a.GetBreakRange(r)->GetStart());
        QCOMPARE(b.GetBreakRange(r)->GetEnd(), a.GetBreakRange(r)->GetEnd());
    }
    QCOMPARE(b.GetMachineConfiguration().GetTool()->GetId(), a.GetMachineConfiguration().GetTool()->GetId());
    QCOMPARE(pb.GetCoursePosition(&b), pa.GetCoursePosition(&a));
    QCOMPARE(b.GetLength(), a.GetLength());
}

void CompareLink(const ZYLTPRollLayupProcedure &pa, const ZYLTPCourseLink &a, const ZYLTPRollLayupProcedure &pb,
                 const ZYLTPCourseLink &b)
{
    QCOMPARE(b.metaObject()->className(), a.metaObject()->className());
    QCOMPARE(pb.GetCourseIndex(b.GetFromCourse()), pa.GetCourseIndex(a.GetFromCourse()));
    QCOMPARE(pb.GetCourseIndex(b.GetToCourse()), pa.GetCourseIndex(a.GetToCourse()));
    QCOMPARE(b.GetPointsDetail(), a.GetPointsDetail());
    if (const auto *la = qobject_cast<const ZYLTPLinearCourseLink *>(&a)) {
        const auto *lb = qobject_cast<const ZYLTPLinearCourseLink *>(&b);
        QCOMPARE(lb->GetRapidApproach(), la->GetRapidApproach());
        QCOMPARE(lb->GetRapidRetract(), la->GetRapidRetract());
    }
    QCOMPARE(b.GetNumPoints(), a.GetNumPoints());
    for (int i = 0; i < a.GetNumPoints(); ++i)
        ZYL_SAME_AXIS(a.GetPoint(i)->GetAxis(), b.GetPoint(i)->GetAxis());
}

void CompareRollLayup(const ZYLTPRollLayupProcedure &a, const ZYLTPRollLayupProcedure &b)
{
    QCOMPARE(b.GetLayingFeedrate(), a.GetLayingFeedrate());
    QCOMPARE(b.GetAddingFeedrate(), a.GetAddingFeedrate());
    QCOMPARE(b.GetCuttingFeedrate(), a.GetCuttingFeedrate());
    QCOMPARE(b.GetRapidFeedRate(), a.GetRapidFeedRate());
    QCOMPARE(b.GetRapidApproach(), a.GetRapidApproach());
    QCOMPARE(b.GetRapidRetract(), a.GetRapidRetract());
    QCOMPARE(b.GetSafetyClearance(), a.GetSafetyClearance());
    QCOMPARE(b.GetAddCutDistance(), a.GetAddCutDistance());
    ZYL_SAME_AXIS(a.GetHomeFrame(), b.GetHomeFrame());
    QCOMPARE(b.GetDefaultStrategy(), a.GetDefaultStrategy());
    QCOMPARE(b.GetNumMachineConfigurations(), a.GetNumMachineConfigurations());
    for (int i = 0; i < a.GetNumMachineConfigurations(); ++i) {
        const ZYLTPMachineConfiguration *ca = a.GetMachineConfiguration(i), *cb = b.GetMachineConfiguration(i);
        QCOMPARE(cb->GetHead() ? cb->GetHead()->GetId() : -1, ca->GetHead() ? ca->GetHead()->GetId() : -1);
        QCOMPARE(cb->GetTool()->GetId(), ca->GetTool()->GetId());
    }
    QCOMPARE(b.GetNumCourses(), a.GetNumCourses());
    QCOMPARE(b.GetLayingOrder(), a.GetLayingOrder());
    for (int i = 0; i < a.GetNumCourses(); ++i) {
        CompareCourse(a, *a.GetCourseByIndex(i), b, *b.GetCourseByIndex(i));
        if (QTest::currentTestFailed())
            return;
    }
    QCOMPARE(b.GetNumLinks(), a.GetNumLinks());
    for (int i = 0; i < a.GetNumLinks(); ++i) {
        CompareLink(a, *a.GetLinkByIndex(i), b, *b.GetLinkByIndex(i));
        if (QTest::currentTestFailed())
            return;
    }
    QCOMPARE(b.GetTotalTimeEstimate(), a.GetTotalTimeEstimate());
    QCOMPARE(b.GetTowLengths(), a.GetTowLengths());
}

// A course of `points` tow points on a gentle arc in the plane y = `y`, with normals scaled a
// little off unit length (by 1 + 1e-9 at most), as frames read from a file may be.
ZYLTPProgramBuilder::CourseData ArcCourse(double y, int points, double feedRate)
{
    ZYLTPProgramBuilder::CourseData data;
    for (int i = 0; i < points; ++i) {
        const double a = 0.01 * i;
        const double scale = 1.0 + 1e-9 * ((i % 3) - 1);
        data.tips.emplace_back(1000.0 * std::sin(a), y, 1000.0 * std::cos(a) - 1000.0);
        data.normals.emplace_back(std::sin(a) * scale, 0.0, std::cos(a) * scale);
        data.directions.emplace_back(std::cos(a), 0.0, -std::sin(a));
    }
    data.frameMode = ZYLTPProgramBuilder::FrameMode::AsGiven;
    ZYLTPProgramBuilder::TowRun plain;
    plain.numPoints = points / 2;
    plain.towMask = ZYLCompTowMask(0b1111);
    plain.values = {0.05, -0.02, feedRate, 120.0};
    ZYLTPProgramBuilder::TowRun pinched = plain;
    pinched.numPoints = points - plain.numPoints;
    pinched.towMask = ZYLCompTowMask(0b0110);
    pinched.forcedMask = ZYLCompTowMask(0b0010);
    pinched.forcedRates = {1.0, 0.75};
    pinched.values.compactionForce = 80.5;
    data.runs = {plain, pinched};
    data.rollInValues = {0.1, 0.0, 2500.0, 60.0};
    data.rollOutValues = {0.0, 0.15, 2600.0, 70.0};
    data.rollIn = 12.5;
    data.rollOut = 7.25;
    data.layingFeedRate = feedRate;
    data.addFeedRate = 2100.5;
    data.cutFeedRate = 1900.25;
    data.approachAngle = 0.7;
    data.approachLength = 25.5;
    data.retractAngle = 0.3;
    data.retractLength = 15.75;
    data.prefix = {QStringLiteral("M7 \"quoted\"")};
    data.suffix = {QStringLiteral("M8"), QStringLiteral("tab\tthere")};
    return data;
}

} // namespace

ZYLGeoRef<ZYLTPProgram> ZYLTPProgramFileTestUtil::EveryParameterProgram()
{
    ZYLTPProgramBuilder b;
    ZYLTPMachineHead *head = b.AddMachineHead(QStringLiteral("Head"));
    b.SetCollisionPoints(head, {{ZYLMathPoint(1.5, -2.0, 130.0), 45.5}});
    ZYLTPRoller *roller = b.AddRoller(QStringLiteral("Roller"), 42.5, 61.25);
    b.SetCollisionPoints(roller, {{ZYLMathPoint(-8.0, 20.0, 12.0), 8.0}, {ZYLMathPoint(8.0, -20.0, 12.0), 8.5}});
    ZYLTPTool *scanner = b.AddTool(QStringLiteral("Scanner"));
    b.SetCollisionPoints(scanner, {{ZYLMathPoint(0.25, -0.5, 30.0), 7.75}});
    ZYLTPTool *cutter = b.AddTool(QStringLiteral("Cutter"));

    ZYLTPRollLayupProcedure *procedure = b.AddRollLayupProcedure(QStringLiteral("Ply"), QStringLiteral("Everything set"));
    ZYLTPProgramBuilder::ProcedureParameters parameters;
    parameters.layingFeedRate = 5123.5;
    parameters.addingFeedRate = 2345.25;
    parameters.cuttingFeedRate = 1234.75;
    parameters.rapidFeedRate = 15000.5;
    parameters.rapidApproach = 33.5;
    parameters.rapidRetract = 44.25;
    parameters.safetyClearance = 77.125;
    parameters.addCutDistance = 12.5;
    parameters.homeFrame = ZYLMathAxis(ZYLMathPoint(10.0, 20.0, 900.0), ZYLMathVector(0.0, 1.0, 0.0),
                                       ZYLMathVector(-1.0, 0.0, 0.0));
    parameters.defaultStrategy = ZYLTPCourseLink::SafetyPlane;
    b.SetProcedureParameters(procedure, parameters);
    const ZYLTPMachineConfiguration *withRoller = b.AddMachineConfiguration(procedure, head, roller);
    const ZYLTPMachineConfiguration *withCutter = b.AddMachineConfiguration(procedure, nullptr, cutter);
    QList<ZYLTPTowCourse *> courses;
    for (int i = 0; i < 4; ++i)
        courses << b.AddTowCourse(procedure, i == 1 ? withCutter : withRoller, ArcCourse(60.0 * i, 9 + i, 4000.0 + i));
    b.AddBreakRange(courses[3], 20.0, 31.5);
    b.SetLayingOrder(procedure, {2, 0, 1, 3});

    ZYLTPProgramBuilder::LinkParameters fine;
    fine.detail = ZYLTPCourseLink::Fine;
    ZYLTPProgramBuilder::LinkParameters linear;
    linear.detail = ZYLTPCourseLink::Coarse;
    linear.rapidApproach = 5.5;
    linear.rapidRetract = 6.5;
    b.AddLink(procedure, nullptr, courses[2], ZYLTPCourseLink::Linear, fine);
    b.AddLink(procedure, courses[2], courses[0], ZYLTPCourseLink::Linear, linear);
    b.AddLink(procedure, courses[0], courses[1], ZYLTPCourseLink::SafetyPlane, fine);
    ZYLTPProgramBuilder::LinkParameters coarse;
    coarse.detail = ZYLTPCourseLink::Coarse;
    b.AddCustomLink(procedure, courses[1], courses[3],
                    {ZYLMathAxis(ZYLMathPoint(0, 0, 50), ZYLMathVector(1, 0, 0), ZYLMathVector(0, 1, 0)),
                     ZYLMathAxis(ZYLMathPoint(30, 90, 60), ZYLMathVector(0, 0.6, 0.8), ZYLMathVector(1, 0, 0)),
                     ZYLMathAxis(ZYLMathPoint(0, 180, 50), ZYLMathVector(1, 0, 0), ZYLMathVector(0, 1, 0))},
                    coarse);
    b.AddLink(procedure, courses[3], nullptr, ZYLTPCourseLink::Linear, fine);

    b.AddInspectionProcedure(QStringLiteral("Scan"), QStringLiteral("With a plain tool"), scanner,
                             {ZYLMathPoint(0, 0, 100), ZYLMathPoint(50, 10, 110)}, 2500.0);
    return ZYLGeoRef<ZYLTPProgram>(b.TakeProgram());
}

void ZYLTPProgramFileTestUtil::CompareProgram(const ZYLTPProgram &a, const ZYLTPProgram &b)
{
    QCOMPARE(b.GetNumMachineHeads(), a.GetNumMachineHeads());
    for (int i = 0; i < a.GetNumMachineHeads(); ++i) {
        CompareResource(*a.GetMachineHead(i), *b.GetMachineHead(i));
        if (QTest::currentTestFailed())
            return;
    }
    QCOMPARE(b.GetNumTools(), a.GetNumTools());
    for (int i = 0; i < a.GetNumTools(); ++i) {
        CompareResource(*a.GetTool(i), *b.GetTool(i));
        if (QTest::currentTestFailed())
            return;
    }
    CompareGeometry(a, b);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(b.GetNumProcedures(), a.GetNumProcedures());
    for (int i = 0; i < a.GetNumProcedures(); ++i) {
        const ZYLTPProcedure *pa = a.GetProcedure(i), *pb = b.GetProcedure(i);
        QCOMPARE(pb->metaObject()->className(), pa->metaObject()->className());
        QCOMPARE(pb->GetName(), pa->GetName());
        QCOMPARE(pb->GetDescription(), pa->GetDescription());
        if (const auto *la = qobject_cast<const ZYLTPRollLayupProcedure *>(pa))
            CompareRollLayup(*la, *qobject_cast<const ZYLTPRollLayupProcedure *>(pb));
        if (const auto *ia = qobject_cast<const ZYLTPInspectionProcedure *>(pa)) {
            const auto *ib = qobject_cast<const ZYLTPInspectionProcedure *>(pb);
            QCOMPARE(ib->GetScanFeedRate(), ia->GetScanFeedRate());
            QVERIFY(ib->GetPath() == ia->GetPath());
            QCOMPARE(ib->GetTools().front()->GetId(), ia->GetTools().front()->GetId());
        }
        if (QTest::currentTestFailed())
            return;
    }
}
