// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

// Small hand-built programs for the display tests: straight courses along +x on the plane
// z = 0 with normal +z, tow points 10 mm apart from x = 0, roll-in and roll-out 10 mm, approach
// and retract 20 mm straight up. The side direction of every point is then +y, so the
// tow lanes of a course of n lanes run from y - n/2 * w to y + n/2 * w.

#include "ZYLTPCourse.h"
#include "ZYLTPProgram.h"
#include "ZYLTPProgramBuilder.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPRoller.h"
#include "ZYLTPTowCourse.h"

#include <QList>

#include <cmath>
#include <utility>
#include <vector>

/// One run of tow points: its number of points and tow mask.
struct ZYLTPVisTestRun {
    int numPoints;
    quint64 tows;
    double forwardTilt = 0.0;
};

struct ZYLTPVisTestProgram {
    static constexpr double Spacing = 10.0;
    static constexpr double RollIn = 10.0;
    static constexpr double RollOut = 10.0;

    ZYLTPVisTestProgram()
    {
        roller = builder.AddRoller(QStringLiteral("Roller"), 50.0, 60.0);
        procedure = builder.AddRollLayupProcedure(QStringLiteral("Ply"), QString());
        configuration = builder.AddMachineConfiguration(procedure, nullptr, roller);
    }

    /// Adds a course at `y` made of the runs, in order.
    ZYLTPTowCourse *AddCourse(double y, const std::vector<ZYLTPVisTestRun> &runs)
    {
        ZYLTPProgramBuilder::CourseData data;
        int points = 0;
        for (const ZYLTPVisTestRun &run : runs) {
            ZYLTPProgramBuilder::TowRun towRun;
            towRun.numPoints = run.numPoints;
            towRun.towMask = ZYLCompTowMask(run.tows);
            towRun.values.forwardTilt = run.forwardTilt;
            data.runs.push_back(towRun);
            points += run.numPoints;
        }
        for (int i = 0; i < points; ++i) {
            data.tips.emplace_back(i * Spacing, y, 0.0);
            data.normals.emplace_back(0.0, 0.0, 1.0);
        }
        data.rollIn = RollIn;
        data.rollOut = RollOut;
        data.approachAngle = M_PI / 2;
        data.retractAngle = M_PI / 2;
        data.approachLength = 20.0;
        data.retractLength = 20.0;
        ZYLTPTowCourse *course = builder.AddTowCourse(procedure, configuration, std::move(data));
        courses.append(course);
        return course;
    }

    ZYLTPProgramBuilder builder;
    ZYLTPRoller *roller = nullptr;
    ZYLTPRollLayupProcedure *procedure = nullptr;
    ZYLTPMachineConfiguration *configuration = nullptr;
    QList<ZYLTPTowCourse *> courses;
};
