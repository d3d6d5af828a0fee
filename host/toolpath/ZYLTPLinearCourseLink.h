// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCourseLink.h"

/// A straight link: it lifts along the tool axis by the rapid retract distance, moves
/// straight to the rapid approach distance above the next course's start (along its tool
/// axis), and goes down to it. Distances >= 0 mm; new links take the procedure's.
class ZYLTOOLPATH_EXPORT ZYLTPLinearCourseLink : public ZYLTPCourseLink {
    Q_OBJECT
public:
    ~ZYLTPLinearCourseLink() override;
    OffPartMotionStrategy GetStrategy() const override { return Linear; }

    double GetRapidApproach() const { return m_rapidApproach; }
    double GetRapidRetract() const { return m_rapidRetract; }
    /// Set the distances (>= 0 mm); record; throw `ZYLSysOutOfBoundsException` below 0.
    void SetRapidApproach(double distance);
    void SetRapidRetract(double distance);

private:
    friend class ZYLTPRollLayupProcedure;
    friend class ZYLTPProgramBuilder;
    ZYLTPLinearCourseLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from, const ZYLTPCourse *to);
    std::vector<ZYLMathAxis> ComputeFrames() const override;
    double m_rapidApproach;
    double m_rapidRetract;
};
