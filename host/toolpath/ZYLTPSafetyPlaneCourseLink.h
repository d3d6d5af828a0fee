// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCourseLink.h"

/// A link over a safety plane: straight up (world z) to the plane lying the procedure's
/// safety clearance above the part's bounding box, across in that plane, and straight down
/// to the next course's start.
///
/// Clearance. The plane lies at least the safety clearance above the part's bounding box
/// (the ply surface's box), so every point of the motion between the two vertical moves keeps
/// at least that clearance from the surface. The vertical moves themselves assume that
/// nothing of the part lies above a course's ends, as on a mould seen from above; over an
/// overhang a straight link is the safer choice.
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
