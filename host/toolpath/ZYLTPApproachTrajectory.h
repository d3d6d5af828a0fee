// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPOffPartTrajectory.h"

/// The motion onto the part before the roll-in point: it arrives along the laying direction
/// of the roll-in point, inclined by the approach angle, and ends at the roll-in point. Its
/// points: the approach start, then the roll-in point.
class ZYLTOOLPATH_EXPORT ZYLTPApproachTrajectory : public ZYLTPOffPartTrajectory {
    Q_OBJECT
public:
    ~ZYLTPApproachTrajectory() override;

private:
    friend class ZYLTPProgramBuilder;
    friend class ZYLTPCourse;
    ZYLTPApproachTrajectory(const ZYLTPCourse *course, double angle, double length);
    ZYLMathAxis GetPartFrame() const override;
    double GetSense() const override { return -1.0; }
    bool FarEndFirst() const override { return true; }
};
