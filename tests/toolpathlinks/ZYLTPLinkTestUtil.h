// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

// Helpers of the link tests: the standard test program with its courses linked, snapshots
// of a program's bytes and of a link's point objects, and tolerant comparisons.

#include "../toolpath/ZYLTPTestProgram.h"

#include "ZYLTPCourseLink.h"
#include "ZYLTPOffPartPoint.h"
#include "ZYLTPProgramFile.h"

#include <QByteArray>
#include <QList>
#include <QMetaType>

Q_DECLARE_METATYPE(ZYLMathVector)

/// The test program with approach -> 0 -> 1 -> ... -> retract, the course links made with
/// `strategy` (built, so no history).
struct ZYLTPLinkedTestProgram : ZYLTPTestProgram {
    explicit ZYLTPLinkedTestProgram(int numCourses = 3,
                                    ZYLTPCourseLink::OffPartMotionStrategy strategy = ZYLTPCourseLink::Linear)
        : ZYLTPTestProgram(numCourses)
    {
        builder.AddLink(procedure, nullptr, courses[0], ZYLTPCourseLink::Linear);
        for (int i = 0; i + 1 < numCourses; ++i)
            links << builder.AddLink(procedure, courses[i], courses[i + 1], strategy);
        builder.AddLink(procedure, courses.back(), nullptr, ZYLTPCourseLink::Linear);
    }
    QByteArray Bytes() const { return ZYLTPProgramFile::Serialize(*program); }
    /// Links between courses, in laying order.
    QList<ZYLTPCourseLink *> links;
};

inline QList<const ZYLTPOffPartPoint *> ZYLTPPointsOf(const ZYLTPCourseLink *link)
{
    QList<const ZYLTPOffPartPoint *> points;
    for (int i = 0; i < link->GetNumPoints(); ++i)
        points << link->GetPoint(i);
    return points;
}

inline bool ZYLTPNear(const ZYLMathVector &a, const ZYLMathVector &b, double tolerance = 1e-9)
{
    return (a - b).GetLength() <= tolerance;
}

inline bool ZYLTPNear(const ZYLMathPoint &a, const ZYLMathPoint &b, double tolerance = 1e-9)
{
    return a.GetDistanceTo(b) <= tolerance;
}

inline bool ZYLTPNear(const ZYLMathAxis &a, const ZYLMathAxis &b, double tolerance = 1e-9)
{
    return a.IsEqual(b, tolerance, tolerance);
}
