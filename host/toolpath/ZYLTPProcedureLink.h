// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCourseLink.h"

/// The approach link (from the machine's home frame onto a course: from-course null) or the
/// retract link (from a course back home: to-course null) of a roll layup procedure. Its
/// motion: the approach link goes from home straight to the procedure's rapid approach
/// distance above (along the tool axis) the start of the course's approach, then down to
/// it; the retract link goes up by the rapid retract distance, then straight home. Over a
/// part the straight move would cross, the course's end rises further along its tool axis
/// (the home frame stays) until the move keeps clear of the ply surface, by the rapid
/// distance at the course falling to nothing at home (see `GetClearanceLift()`).
/// Procedure links are the procedure's own motion and are never turned into custom links:
/// `ZYLTPRollLayupProcedure::ConvertLinkToCustom` refuses them (the link editors offer only
/// links between two courses, and a program file keeps custom links between courses only).
class ZYLTOOLPATH_EXPORT ZYLTPProcedureLink : public ZYLTPCourseLink {
    Q_OBJECT
public:
    ~ZYLTPProcedureLink() override;
    OffPartMotionStrategy GetStrategy() const override { return Linear; }
    bool IsApproachLink() const { return GetFromCourse() == nullptr; }

private:
    friend class ZYLTPRollLayupProcedure;
    friend class ZYLTPProgramBuilder;
    ZYLTPProcedureLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from, const ZYLTPCourse *to);
    std::vector<ZYLMathAxis> ComputeFrames() const override;
};
