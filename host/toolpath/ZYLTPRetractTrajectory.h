// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPOffPartTrajectory.h"

/// The motion off the part after the roll-out point: it leaves along the laying direction of
/// the roll-out point, inclined by the retract angle. Its points: the roll-out point, then the
/// retract end.
class ZYLTOOLPATH_EXPORT ZYLTPRetractTrajectory : public ZYLTPOffPartTrajectory {
    Q_OBJECT
public:
    ~ZYLTPRetractTrajectory() override;

private:
    friend class ZYLTPProgramBuilder;
    friend class ZYLTPCourse;
    ZYLTPRetractTrajectory(const ZYLTPCourse *course, double angle, double length);
    ZYLMathAxis GetPartFrame() const override;
    double GetSense() const override { return 1.0; }
    bool FarEndFirst() const override { return false; }
};
