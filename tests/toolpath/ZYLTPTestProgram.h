// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

// Small hand-built programs with known geometry for the tool path tests: straight courses
// along x on the plane z = 0 (normal +z), tow points `spacing` mm apart.

#include "ZYLTPCourse.h"
#include "ZYLTPProgram.h"
#include "ZYLTPProgramBuilder.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPRoller.h"
#include "ZYLTPTowCourse.h"

#include "ZYLFeatContainer.h"
#include "ZYLFeatTransaction.h"

#include <QList>

#include <initializer_list>
#include <utility>

struct ZYLTPTestRun {
    int numPoints;
    quint64 tows;
};

inline ZYLTPProgramBuilder::CourseData ZYLTPStraightCourse(double y, double spacing, std::initializer_list<ZYLTPTestRun> runs,
                                                           double feedRate = 600.0)
{
    ZYLTPProgramBuilder::CourseData data;
    int points = 0;
    for (const ZYLTPTestRun &run : runs) {
        ZYLTPProgramBuilder::TowRun towRun;
        towRun.numPoints = run.numPoints;
        towRun.towMask = ZYLCompTowMask(run.tows);
        towRun.values.feedRate = feedRate;
        data.runs.push_back(towRun);
        points += run.numPoints;
    }
    for (int i = 0; i < points; ++i) {
        data.tips.emplace_back(i * spacing, y, 0.0);
        data.normals.emplace_back(0.0, 0.0, 1.0);
    }
    data.rollInValues.feedRate = feedRate;
    data.rollOutValues.feedRate = feedRate;
    data.layingFeedRate = feedRate;
    data.addFeedRate = 300.0;
    data.cutFeedRate = 200.0;
    data.rollIn = 10.0;
    data.rollOut = 10.0;
    data.approachAngle = M_PI / 2;
    data.retractAngle = M_PI / 2;
    data.approachLength = 20.0;
    data.retractLength = 20.0;
    return data;
}

/// A program of `numCourses` courses of 11 tow points 10 mm apart (one run of tows 1-4), laid
/// 50 mm apart in y, with a container to run transactions in.
struct ZYLTPTestProgram {
    explicit ZYLTPTestProgram(int numCourses = 3)
    {
        roller = builder.AddRoller(QStringLiteral("Roller 1"), 50.0, 60.0);
        procedure = builder.AddRollLayupProcedure(QStringLiteral("Ply 1"), QStringLiteral("First ply"));
        ZYLTPProgramBuilder::ProcedureParameters parameters;
        parameters.addCutDistance = 10.0;
        builder.SetProcedureParameters(procedure, parameters);
        configuration = builder.AddMachineConfiguration(procedure, nullptr, roller);
        for (int i = 0; i < numCourses; ++i)
            courses << builder.AddTowCourse(procedure, configuration, ZYLTPStraightCourse(50.0 * i, 10.0, {{11, 0xF}}));
        program = builder.GetProgram();
    }
    ~ZYLTPTestProgram()
    {
        if (container.HasOpenTransaction())
            container.AbortTransaction();
        container.ClearHistory();
    }
    void Open() { container.OpenTransaction(QStringLiteral("Edit")); }
    void Commit() { container.CommitTransaction(); }

    ZYLTPProgramBuilder builder;
    ZYLTPProgram *program = nullptr;
    ZYLTPRoller *roller = nullptr;
    ZYLTPRollLayupProcedure *procedure = nullptr;
    ZYLTPMachineConfiguration *configuration = nullptr;
    QList<ZYLTPTowCourse *> courses;
    ZYLFeatContainer container;
};
