// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCourseLink.h"

/// A link over a safety plane: straight up (world z) to the plane lying the procedure's
/// safety clearance above the part's bounding box, across in that plane, and straight down
/// to the next course's start.
class ZYLTOOLPATH_EXPORT ZYLTPSafetyPlaneCourseLink : public ZYLTPCourseLink {
    Q_OBJECT
public:
    ~ZYLTPSafetyPlaneCourseLink() override;
    OffPartMotionStrategy GetStrategy() const override { return SafetyPlane; }

private:
    friend class ZYLTPRollLayupProcedure;
    friend class ZYLTPProgramBuilder;
    ZYLTPSafetyPlaneCourseLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from, const ZYLTPCourse *to);
    std::vector<ZYLMathAxis> ComputeFrames() const override;
};
