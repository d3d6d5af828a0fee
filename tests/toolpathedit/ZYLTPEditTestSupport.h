// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

// Helpers of the course editing tests: programs with varied courses, the program's bytes,
// and the list of model objects a panel may hold pointers to.

#include "../toolpath/ZYLTPTestProgram.h"

#include "ZYLTPBreakRange.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPOffPartPoint.h"
#include "ZYLTPOnPartPoint.h"
#include "ZYLTPProgramFile.h"
#include "ZYLTPTowTrajectory.h"

#include <QByteArray>
#include <QList>

#include <cmath>

/// A course on a cylinder of radius 200 mm about the y axis: uneven point spacing, turning
/// normals, runs laying tows 0-3, 0-7 and 2-5 with tilts, a forced state on the middle run,
/// roll-in 7, roll-out 13, approach and retract unlike each other.
inline ZYLTPProgramBuilder::CourseData ZYLTPCurvedCourse(double y)
{
    ZYLTPProgramBuilder::CourseData data = ZYLTPStraightCourse(y, 1.0, {{5, 0x0F}, {6, 0xFF}, {5, 0x3C}});
    for (size_t i = 0; i < data.tips.size(); ++i) {
        const double angle = 0.037 * double(i) + 0.004 * std::sin(double(i));
        data.tips[i] = ZYLMathPoint(200.0 * std::sin(angle), y + 0.37 * double(i), 200.0 * std::cos(angle) - 200.0);
        data.normals[i] = ZYLMathVector(std::sin(angle), 0.0, std::cos(angle));
    }
    data.runs[0].values.forwardTilt = 0.1;
    data.runs[1].values.sideTilt = -0.2;
    data.runs[1].forcedMask = ZYLCompTowMask(0x81);
    data.runs[1].forcedRates = {0.5, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 0.25};
    data.runs[2].values.forwardTilt = -0.05;
    data.runs[2].values.compactionForce = 120.0;
    data.rollIn = 7.0;
    data.rollOut = 13.0;
    data.approachAngle = 0.3;
    data.approachLength = 25.0;
    data.retractAngle = 0.7;
    data.retractLength = 40.0;
    data.prefix = QStringList{QStringLiteral("M101")};
    data.suffix = QStringList{QStringLiteral("M102"), QStringLiteral("M103")};
    return data;
}

inline QByteArray ZYLTPBytes(const ZYLTPProgram *program)
{
    return ZYLTPProgramFile::Serialize(*program);
}

/// Every course, point view, trajectory, break range and link of a procedure, in a fixed
/// order (asking for the points creates their views).
inline QList<const QObject *> ZYLTPModelObjects(const ZYLTPRollLayupProcedure *procedure)
{
    QList<const QObject *> objects;
    for (int c = 0; c < procedure->GetNumCourses(); ++c) {
        const ZYLTPCourse *course = procedure->GetCourseByIndex(c);
        objects << course;
        for (int i = 0; i < course->GetNumPoints(); ++i)
            objects << course->GetPoint(i);
        for (int k = 0; k < course->GetNumTrajectories(); ++k)
            objects << course->GetTrajectory(k);
        for (int r = 0; r < course->GetNumBreakRanges(); ++r)
            objects << course->GetBreakRange(r);
    }
    for (int l = 0; l < procedure->GetNumLinks(); ++l)
        objects << procedure->GetLinkByIndex(l);
    return objects;
}

/// The tow trajectories of a course in order, as (first point, number of points, tow mask).
struct ZYLTPRun {
    int first;
    int count;
    quint64 mask;
    bool operator==(const ZYLTPRun &) const = default;
};
Q_DECLARE_METATYPE(QList<ZYLTPRun>)

inline QList<ZYLTPRun> ZYLTPRunsOf(const ZYLTPCourse *course)
{
    QList<ZYLTPRun> runs;
    for (int k = 0; k < course->GetNumTrajectories(); ++k) {
        if (auto *tow = qobject_cast<const ZYLTPTowTrajectory *>(course->GetTrajectory(k)))
            runs.append({tow->GetFirstPointIndex(), tow->GetNumPoints(), tow->GetTowMask().GetRawValue()});
    }
    return runs;
}

inline char *toString(const ZYLTPRun &run)
{
    return qstrdup(QByteArray("{" + QByteArray::number(run.first) + ", " + QByteArray::number(run.count) + ", 0x"
                              + QByteArray::number(run.mask, 16) + "}")
                       .constData());
}

inline bool ZYLTPNear(double a, double b, double tolerance = 1e-9)
{
    return std::abs(a - b) <= tolerance;
}

inline bool ZYLTPNear(const QList<double> &a, const QList<double> &b, double tolerance = 1e-9)
{
    if (a.size() != b.size())
        return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (!ZYLTPNear(a[i], b[i], tolerance))
            return false;
    }
    return true;
}
