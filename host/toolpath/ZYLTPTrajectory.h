// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include <QObject>

#include <memory>

class ZYLTPCourse;
class ZYLTPPoint;

/// A stretch of a course's motion. A tow course's trajectories, in index order: approach
/// (`ZYLTPApproachTrajectory`), roll-in (`ZYLTPOnPartTrajectory`), one or more tow
/// trajectories (`ZYLTPTowTrajectory`), roll-out (`ZYLTPOnPartTrajectory`), retract
/// (`ZYLTPRetractTrajectory`). Trajectories are owned by their course.
class ZYLTOOLPATH_EXPORT ZYLTPTrajectory : public QObject {
    Q_OBJECT
public:
    ~ZYLTPTrajectory() override;

    /// Returns the course (the same as `GetCourse`).
    const ZYLTPCourse *GetParent() const { return m_course; }
    const ZYLTPCourse *GetCourse() const { return m_course; }
    /// Returns the number of points and point i (null outside [0, GetNumPoints())).
    virtual int GetNumPoints() const = 0;
    virtual const ZYLTPPoint *GetPoint(int i) const = 0;
    /// Returns the position of `point` within the trajectory, or -1 when it is not one of its
    /// points.
    int GetPointIndex(const ZYLTPPoint *point) const;
    /// Returns the length of the motion (mm).
    virtual double GetLength() const = 0;
    /// Returns the feed rate of the motion (mm/min).
    virtual double GetFeedRate() const = 0;
    /// Returns the time the motion takes at its feed rate (s).
    virtual double GetTimeEstimate() const;

protected:
    explicit ZYLTPTrajectory(const ZYLTPCourse *course) : m_course(course) {}

private:
    // Breaking a course hands trajectories over to the new piece.
    friend class ZYLTPCourse;
    const ZYLTPCourse *m_course;
};
