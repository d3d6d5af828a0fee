// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCourseLink.h"

/// A link whose points are stored (hand-edited motion). New custom links start as the
/// straight motion of a linear link with the procedure's rapid distances.
class ZYLTOOLPATH_EXPORT ZYLTPCustomCourseLink : public ZYLTPCourseLink {
    Q_OBJECT
public:
    ~ZYLTPCustomCourseLink() override;
    OffPartMotionStrategy GetStrategy() const override { return Custom; }
    /// Returns the stored frames.
    const std::vector<ZYLMathAxis> &GetFrames() const { return m_frames; }

private:
    friend class ZYLTPRollLayupProcedure;
    friend class ZYLTPProgramBuilder;
    ZYLTPCustomCourseLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from, const ZYLTPCourse *to,
                          std::vector<ZYLMathAxis> frames);
    std::vector<ZYLMathAxis> ComputeFrames() const override { return m_frames; }
    std::vector<ZYLMathAxis> m_frames;
};
