// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// What the program builder offers for loading files: frames taken as given, procedure and
// link parameters with the model's checks, and plain tools.
#include "ZYLTPCourse.h"
#include "ZYLTPCoursePoints.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPProgram.h"
#include "ZYLTPProgramBuilder.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPRoller.h"
#include "ZYLTPTool.h"
#include "ZYLTPTowCourse.h"

#include "ZYLFeatContainer.h"
#include "ZYLSysException.h"
#include "ZYLSysOutOfBoundsException.h"

#include <QTest>

#include <cmath>
#include <functional>
#include <limits>

Q_DECLARE_METATYPE(ZYLTPProgramBuilder::FrameMode)

namespace {

using Builder = ZYLTPProgramBuilder;

// A straight course of `n` tow points along x, normals +z scaled by `scale`.
Builder::CourseData Straight(int n, double scale)
{
    Builder::CourseData data;
    for (int i = 0; i < n; ++i) {
        data.tips.emplace_back(10.0 * i, 0.0, 0.0);
        data.normals.emplace_back(0.0, 0.0, scale);
        data.directions.emplace_back(1.0, 0.0, 0.0);
    }
    Builder::TowRun run;
    run.numPoints = n;
    run.towMask = ZYLCompTowMask(0b11);
    data.runs = {run};
    return data;
}

struct Fixture {
    Fixture()
    {
        roller = builder.AddRoller(QStringLiteral("Roller"), 50.0, 60.0);
        procedure = builder.AddRollLayupProcedure(QStringLiteral("Ply"), QString());
        configuration = builder.AddMachineConfiguration(procedure, nullptr, roller);
    }
    // The message of a model setter for a value it refuses (empty when it accepts it).
    QString SetterMessage(const std::function<void()> &edit)
    {
        ZYLFeatContainer container;
        container.OpenTransaction(QStringLiteral("probe"));
        QString message;
        try {
            edit();
        } catch (const ZYLSysException &e) {
            message = e.GetMessage();
        }
        container.AbortTransaction();
        return message;
    }

    Builder builder;
    ZYLTPRoller *roller = nullptr;
    ZYLTPRollLayupProcedure *procedure = nullptr;
    const ZYLTPMachineConfiguration *configuration = nullptr;
};

using Parameters = Builder::ProcedureParameters;
using ProcedureSetter = void (ZYLTPRollLayupProcedure::*)(double);
struct NumberParameter {
    double Parameters::*member;
    ProcedureSetter setter;
    double refused;
};
const NumberParameter kNumberParameters[] = {
    {&Parameters::layingFeedRate, &ZYLTPRollLayupProcedure::SetLayingFeedrate, 0.0},
    {&Parameters::addingFeedRate, &ZYLTPRollLayupProcedure::SetAddingFeedrate, -1.0},
    {&Parameters::cuttingFeedRate, &ZYLTPRollLayupProcedure::SetCuttingFeedrate, std::nan("")},
    {&Parameters::rapidFeedRate, &ZYLTPRollLayupProcedure::SetRapidFeedRate, 0.0},
    {&Parameters::rapidApproach, &ZYLTPRollLayupProcedure::SetRapidApproach, -0.5},
    {&Parameters::rapidRetract, &ZYLTPRollLayupProcedure::SetRapidRetract, -3.0},
    {&Parameters::safetyClearance, &ZYLTPRollLayupProcedure::SetSafetyClearance, std::numeric_limits<double>::infinity()},
    {&Parameters::addCutDistance, &ZYLTPRollLayupProcedure::SetAddCutDistance, -1e-9},
};

} // namespace

class tst_ZYLTPProgramBuilder : public QObject {
    Q_OBJECT
private slots:
    void frames_data();
    void frames();
    void refusedFramesAddNothing_data();
    void refusedFramesAddNothing();
    void procedureParameterRefusedWithTheSettersMessage_data();
    void procedureParameterRefusedWithTheSettersMessage();
    void linkParameters();
    void rapidDistancesOnlyForLinearCourseLinks_data();
    void rapidDistancesOnlyForLinearCourseLinks();
    void plainTool();
    void headTowCountRefused_data();
    void headTowCountRefused();
    void courseWidthInTows_data();
    void courseWidthInTows();
};

void tst_ZYLTPProgramBuilder::frames_data()
{
    QTest::addColumn<Builder::FrameMode>("mode");
    QTest::newRow("as given") << Builder::FrameMode::AsGiven;
    QTest::newRow("orthonormalized") << Builder::FrameMode::Orthonormalize;
}

void tst_ZYLTPProgramBuilder::frames()
{
    QFETCH(Builder::FrameMode, mode);
    Fixture f;
    // Normals 1e-9 off unit length, directions slightly slanted: within the tolerance.
    Builder::CourseData data = Straight(5, 1.0 + 1e-9);
    data.directions[2] = ZYLMathVector(1.0, 0.0, 1e-8);
    data.frameMode = mode;
    const std::vector<ZYLMathVector> normals = data.normals;
    const std::vector<ZYLMathVector> directions = data.directions;
    const ZYLTPTowCourse *course = f.builder.AddTowCourse(f.procedure, f.configuration, data);
    const ZYLTPCoursePoints &points = course->GetPointData();
    QCOMPARE(points.GetNumPoints(), 7);
    for (size_t i = 0; i < normals.size(); ++i) {
        if (mode == Builder::FrameMode::AsGiven) {
            QVERIFY(points.normals[i + 1] == normals[i]);
            QVERIFY(points.directions[i + 1] == directions[i]);
        } else {
            QVERIFY(std::fabs(points.normals[i + 1].GetLength() - 1.0) < 1e-15);
            QVERIFY(std::fabs(points.normals[i + 1].Dot(points.directions[i + 1])) < 1e-15);
        }
    }
    // Roll-in and roll-out points continue the end frames, whichever the mode.
    QVERIFY(points.normals.front() == points.normals[1]);
    QVERIFY(points.directions.back() == points.directions[5]);
    QCOMPARE(points.tips.front().X(), -data.rollIn);
    QCOMPARE(points.tips.back().X(), 40.0 + data.rollOut);
}

void tst_ZYLTPProgramBuilder::refusedFramesAddNothing_data()
{
    QTest::addColumn<Builder::FrameMode>("mode");
    QTest::addColumn<int>("fault");
    QTest::addColumn<QString>("message");
    const auto given = Builder::FrameMode::AsGiven;
    QTest::newRow("no directions") << given << 0 << QStringLiteral("one direction per tow point");
    QTest::newRow("long normal") << given << 1 << QStringLiteral("Course point 3: the tool axis and the direction");
    QTest::newRow("slanted direction") << given << 2 << QStringLiteral("Course point 3: the direction is not perpendicular");
    QTest::newRow("NaN direction") << given << 3 << QStringLiteral("Course point 3: the tool axis and the direction");
    QTest::newRow("zero normal, orthonormalized") << Builder::FrameMode::Orthonormalize << 4
                                                  << QStringLiteral("Course point 3 has no valid tip or normal");
}

void tst_ZYLTPProgramBuilder::refusedFramesAddNothing()
{
    QFETCH(Builder::FrameMode, mode);
    QFETCH(int, fault);
    QFETCH(QString, message);
    Fixture f;
    f.builder.AddTowCourse(f.procedure, f.configuration, Straight(4, 1.0));
    Builder::CourseData data = Straight(6, 1.0);
    data.frameMode = mode;
    switch (fault) {
    case 0:
        data.directions.clear();
        break;
    case 1:
        data.normals[3] = ZYLMathVector(0.0, 0.0, 1.01);
        break;
    case 2:
        data.directions[3] = ZYLMathVector(1.0, 0.0, 1e-3).Normalized().value();
        break;
    case 3:
        data.directions[3] = ZYLMathVector(std::nan(""), 0.0, 0.0);
        break;
    default:
        data.normals[3] = ZYLMathVector(0.0, 0.0, 0.0);
        break;
    }
    QString error;
    try {
        f.builder.AddTowCourse(f.procedure, f.configuration, data);
    } catch (const ZYLSysException &e) {
        error = e.GetMessage();
    }
    QVERIFY2(error.contains(message), qPrintable(error));
    QCOMPARE(f.procedure->GetNumCourses(), 1);
    QCOMPARE(f.procedure->GetLayingOrder(), QList<int>{0});
}

void tst_ZYLTPProgramBuilder::procedureParameterRefusedWithTheSettersMessage_data()
{
    QTest::addColumn<int>("parameter");
    const char *const names[] = {"laying feed rate 0", "adding feed rate < 0", "cutting feed rate NaN",
                                 "rapid feed rate 0", "rapid approach < 0", "rapid retract < 0",
                                 "safety clearance infinite", "add/cut distance < 0"};
    for (int i = 0; i < int(std::size(kNumberParameters)); ++i)
        QTest::newRow(names[i]) << i;
}

void tst_ZYLTPProgramBuilder::procedureParameterRefusedWithTheSettersMessage()
{
    QFETCH(int, parameter);
    const NumberParameter &p = kNumberParameters[parameter];
    Fixture f;
    Parameters set;
    set.layingFeedRate = 4321.0;
    set.safetyClearance = 12.0;
    set.defaultStrategy = ZYLTPCourseLink::Custom;
    f.builder.SetProcedureParameters(f.procedure, set);

    Parameters refused = set;
    refused.rapidRetract = 99.0;
    refused.*p.member = p.refused;
    QString error;
    try {
        Builder::CheckProcedureParameters(refused);
    } catch (const ZYLSysOutOfBoundsException &e) {
        error = e.GetMessage();
    }
    QVERIFY(!error.isEmpty());
    QCOMPARE(error, f.SetterMessage([&] { (f.procedure->*p.setter)(p.refused); }));
    QVERIFY_THROWS_EXCEPTION(ZYLSysOutOfBoundsException, f.builder.SetProcedureParameters(f.procedure, refused));
    // Nothing of the refused set was applied.
    QCOMPARE(f.procedure->GetLayingFeedrate(), 4321.0);
    QCOMPARE(f.procedure->GetSafetyClearance(), 12.0);
    QCOMPARE(f.procedure->GetRapidRetract(), set.rapidRetract);
    QCOMPARE(f.procedure->GetDefaultStrategy(), ZYLTPCourseLink::Custom);
}

void tst_ZYLTPProgramBuilder::linkParameters()
{
    Fixture f;
    Parameters set;
    set.rapidApproach = 31.0;
    set.rapidRetract = 32.0;
    f.builder.SetProcedureParameters(f.procedure, set);
    const ZYLTPCourse *a = f.builder.AddTowCourse(f.procedure, f.configuration, Straight(3, 1.0));
    const ZYLTPCourse *b = f.builder.AddTowCourse(f.procedure, f.configuration, Straight(3, 1.0));
    const ZYLTPCourse *c = f.builder.AddTowCourse(f.procedure, f.configuration, Straight(3, 1.0));

    // A refused distance gives the setter's message and adds no link.
    Builder::LinkParameters refused;
    refused.rapidRetract = -2.0;
    QString error;
    try {
        f.builder.AddLink(f.procedure, a, b, ZYLTPCourseLink::Linear, refused);
    } catch (const ZYLSysOutOfBoundsException &e) {
        error = e.GetMessage();
    }
    QCOMPARE(f.procedure->GetNumLinks(), 0);
    const auto *probe = qobject_cast<ZYLTPLinearCourseLink *>(
        f.builder.AddLink(f.procedure, a, b, ZYLTPCourseLink::Linear));
    QCOMPARE(error, f.SetterMessage([&] { const_cast<ZYLTPLinearCourseLink *>(probe)->SetRapidRetract(-2.0); }));
    // Unset distances are the procedure's; the detail defaults to Normal.
    QCOMPARE(probe->GetRapidApproach(), 31.0);
    QCOMPARE(probe->GetRapidRetract(), 32.0);
    QCOMPARE(probe->GetPointsDetail(), ZYLTPCourseLink::Normal);

    Builder::LinkParameters given;
    given.detail = ZYLTPCourseLink::Fine;
    given.rapidApproach = 0.0;
    given.rapidRetract = 7.5;
    const auto *linear =
        qobject_cast<const ZYLTPLinearCourseLink *>(f.builder.AddLink(f.procedure, b, c, ZYLTPCourseLink::Linear, given));
    QVERIFY(linear);
    QCOMPARE(linear->GetRapidApproach(), 0.0);
    QCOMPARE(linear->GetRapidRetract(), 7.5);
    QCOMPARE(linear->GetPointsDetail(), ZYLTPCourseLink::Fine);
}

void tst_ZYLTPProgramBuilder::rapidDistancesOnlyForLinearCourseLinks_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("safety plane") << 0;
    QTest::newRow("approach link") << 1;
    QTest::newRow("custom") << 2;
}

void tst_ZYLTPProgramBuilder::rapidDistancesOnlyForLinearCourseLinks()
{
    QFETCH(int, kind);
    Fixture f;
    const ZYLTPCourse *a = f.builder.AddTowCourse(f.procedure, f.configuration, Straight(3, 1.0));
    const ZYLTPCourse *b = f.builder.AddTowCourse(f.procedure, f.configuration, Straight(3, 1.0));
    Builder::LinkParameters parameters;
    parameters.rapidApproach = 5.0;
    const auto add = [&] {
        if (kind == 0)
            f.builder.AddLink(f.procedure, a, b, ZYLTPCourseLink::SafetyPlane, parameters);
        else if (kind == 1)
            f.builder.AddLink(f.procedure, nullptr, a, ZYLTPCourseLink::Linear, parameters);
        else
            f.builder.AddCustomLink(f.procedure, a, b, {ZYLMathAxis(), ZYLMathAxis(ZYLMathPoint(0, 0, 10), ZYLMathVector(1, 0, 0), ZYLMathVector(0, 1, 0))},
                                    parameters);
    };
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, add());
    QCOMPARE(f.procedure->GetNumLinks(), 0);
    QVERIFY(!f.procedure->GetApproachLink());
    // Without distances the same link is made, with its detail.
    parameters.rapidApproach.reset();
    parameters.detail = ZYLTPCourseLink::Coarse;
    add();
    QCOMPARE(f.procedure->GetNumLinks(), 1);
    QCOMPARE(f.procedure->GetLinkByIndex(0)->GetPointsDetail(), ZYLTPCourseLink::Coarse);
}

void tst_ZYLTPProgramBuilder::plainTool()
{
    Fixture f;
    ZYLTPTool *scanner = f.builder.AddTool(QStringLiteral("Scanner"));
    // Neither a roller nor a head, placed in the tool list after the roller.
    QVERIFY(!qobject_cast<ZYLTPRoller *>(scanner));
    QCOMPARE(scanner->GetId(), 1);
    QCOMPARE(f.builder.GetProgram()->GetTool(1), scanner);
    const ZYLTPMachineConfiguration *cutting = f.builder.AddMachineConfiguration(f.procedure, nullptr, scanner);
    f.builder.AddTowCourse(f.procedure, cutting, Straight(3, 1.0));
    QCOMPARE(f.procedure->GetTools(), (QList<const ZYLTPResource *>{f.roller, scanner}));
}

void tst_ZYLTPProgramBuilder::headTowCountRefused_data()
{
    QTest::addColumn<int>("numTows");
    QTest::newRow("none") << 0;
    QTest::newRow("65") << 65;
    QTest::newRow("negative") << -3;
}

void tst_ZYLTPProgramBuilder::headTowCountRefused()
{
    QFETCH(int, numTows);
    Fixture f;
    f.builder.AddMachineHead(QStringLiteral("Kept"), 12);
    try {
        f.builder.AddMachineHead(QStringLiteral("Head"), numTows);
        QFAIL("the count was accepted");
    } catch (const ZYLSysOutOfBoundsException &e) {
        QVERIFY2(e.GetMessage().contains(QStringLiteral("[1, 64]")), qPrintable(e.GetMessage()));
    }
    QCOMPARE(f.builder.GetProgram()->GetNumMachineHeads(), 1);
    // The next head still takes the next id.
    QCOMPARE(f.builder.AddMachineHead(QStringLiteral("Next"), 64)->GetId(), 1);
}

void tst_ZYLTPProgramBuilder::courseWidthInTows_data()
{
    QTest::addColumn<int>("headTows"); // 0: a head that knows no count
    QTest::addColumn<int>("numTows");  // the width given with the course
    QTest::addColumn<quint64>("towMask");
    QTest::addColumn<quint64>("forcedMask");
    QTest::addColumn<int>("width");    // 0: refused
    QTest::addColumn<QString>("message");
    QTest::newRow("masks span") << 0 << 0 << quint64(0x3) << quint64(0) << 2 << QString();
    QTest::newRow("given width") << 0 << 6 << quint64(0x3) << quint64(0) << 6 << QString();
    QTest::newRow("16-tow head, tows 1-4") << 16 << 0 << quint64(0xF) << quint64(0) << 16 << QString();
    QTest::newRow("head wins over a narrower width") << 16 << 4 << quint64(0xF) << quint64(0) << 16 << QString();
    QTest::newRow("tow beyond the head") << 8 << 0 << quint64(0x1FF) << quint64(0) << 0
                                         << QStringLiteral("The course uses tow 9, its head feeds only 8 tows");
    QTest::newRow("forced tow beyond the head") << 8 << 0 << quint64(0x3) << quint64(0x100) << 0
                                                << QStringLiteral("The course uses tow 9, its head feeds only 8 tows");
    QTest::newRow("width beyond the head") << 8 << 9 << quint64(0x3) << quint64(0) << 0
                                           << QStringLiteral("The course is 9 tows wide, its head feeds only 8");
    QTest::newRow("tow beyond the given width") << 0 << 4 << quint64(0x1F) << quint64(0) << 0
                                                << QStringLiteral("The course uses tow 5, it is only 4 tows wide");
    QTest::newRow("width of 65") << 0 << 65 << quint64(0x3) << quint64(0) << 0 << QStringLiteral("Value 65");
}

void tst_ZYLTPProgramBuilder::courseWidthInTows()
{
    QFETCH(int, headTows);
    QFETCH(int, numTows);
    QFETCH(quint64, towMask);
    QFETCH(quint64, forcedMask);
    QFETCH(int, width);
    QFETCH(QString, message);
    Fixture f;
    const ZYLTPMachineHead *head = headTows > 0 ? f.builder.AddMachineHead(QStringLiteral("Head"), headTows)
                                                : f.builder.AddMachineHead(QStringLiteral("Head"));
    const ZYLTPMachineConfiguration *configuration = f.builder.AddMachineConfiguration(f.procedure, head, f.roller);
    Builder::CourseData data = Straight(3, 1.0);
    data.numTows = numTows;
    data.runs[0].towMask = ZYLCompTowMask(towMask);
    data.runs[0].forcedMask = ZYLCompTowMask(forcedMask);
    if (width > 0) {
        QCOMPARE(f.builder.AddTowCourse(f.procedure, configuration, data)->GetNumTows(), width);
        return;
    }
    try {
        f.builder.AddTowCourse(f.procedure, configuration, data);
        QFAIL("the course was accepted");
    } catch (const ZYLSysException &e) {
        QVERIFY2(e.GetMessage().startsWith(message), qPrintable(e.GetMessage()));
    }
    QCOMPARE(f.procedure->GetNumCourses(), 0);
    QVERIFY(f.procedure->GetLayingOrder().isEmpty());
}

QTEST_GUILESS_MAIN(tst_ZYLTPProgramBuilder)
#include "tst_ZYLTPProgramBuilder.moc"
