// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPTrajectory.h"

class ZYLTPOnPartPoint;

/// A trajectory on the part: a contiguous run of its course's points, `GetFirstPointIndex()`
/// to `GetFirstPointIndex() + GetNumPoints() - 1`, along which the process values are
/// constant: forward and side tilt (rad, within ±1.55), feed rate (mm/min, > 0) and
/// compaction force (N, >= 0). The roll-in and roll-out trajectories of a course are of this
/// class and cover one point each; tow trajectories (`ZYLTPTowTrajectory`) cover the rest.
///
/// Values are changed through the course's range operations (`ZYLTPCourse::SetRangeTilt`,
/// `SetRangeFeedRate`, `ZYLTPTowCourse::SetPinchState`), which split and merge trajectories.
///
/// Length: the roll-in trajectory's length is the roll-in distance (its point to the first
/// tow point), the roll-out trajectory's the roll-out distance (the last tow point to its
/// point); a tow trajectory runs from its first point to the first point of the next tow
/// trajectory, or to the last tow point for the last one. The lengths of a course's on-part
/// trajectories add up to the course's length.
class ZYLTOOLPATH_EXPORT ZYLTPOnPartTrajectory : public ZYLTPTrajectory {
    Q_OBJECT
public:
    ~ZYLTPOnPartTrajectory() override;

    int GetNumPoints() const override { return m_count; }
    const ZYLTPPoint *GetPoint(int i) const override;
    /// Returns the on-part point i of the trajectory (null outside the range).
    const ZYLTPOnPartPoint *GetOnPartPoint(int i) const;
    /// Returns the index in the course's point list of the trajectory's first point.
    int GetFirstPointIndex() const { return m_first; }
    double GetLength() const override;
    double GetFeedRate() const override { return m_feedRate; }
    double GetForwardTilt() const { return m_forwardTilt; }
    double GetSideTilt() const { return m_sideTilt; }
    double GetCompactionForce() const { return m_compactionForce; }

    /// The values that are constant along an on-part trajectory.
    struct Values {
        double forwardTilt = 0.0;
        double sideTilt = 0.0;
        double feedRate = 1000.0;
        double compactionForce = 0.0;
        bool operator==(const Values &) const = default;
    };
    Values GetValues() const { return {m_forwardTilt, m_sideTilt, m_feedRate, m_compactionForce}; }
    /// Returns whether `other` has the same values (and, for tow trajectories, the same tow
    /// state), so that the two could be one trajectory.
    virtual bool HasSameValues(const ZYLTPOnPartTrajectory &other) const;
    /// Returns a new trajectory of the same class and values, covering `count` points from
    /// `first` (used when a range operation splits a trajectory).
    virtual std::unique_ptr<ZYLTPOnPartTrajectory> Clone(int first, int count) const;

    /// Creates a trajectory of `course` over `count` points from `first` with `values`.
    /// Values are the caller's to check.
    ZYLTPOnPartTrajectory(const ZYLTPCourse *course, int first, int count, const Values &values);

private:
    friend class ZYLTPCourse;
    int m_first;
    int m_count;
    double m_forwardTilt;
    double m_sideTilt;
    double m_feedRate;
    double m_compactionForce;
};
