// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCourseLink.h"

/// A link whose points are stored (hand-edited motion). New custom links start as the
/// straight motion of a linear link with the procedure's rapid distances.
class ZYLTOOLPATH_EXPORT ZYLTPCustomCourseLink : public ZYLTPCourseLink {
    Q_OBJECT
public:
    /// How the frames of points made between two frames of a custom link (inserted or
    /// interpolated points) turn from the one to the other: 0 "Linear" (directions blended
    /// linearly, then made orthonormal again), 1 "Spherical" (turning at a constant angular
    /// rate about one axis), 2 "Constant" (every new point keeps the first frame's
    /// directions). Stored as int item data by the link editor.
    enum VectorInterpolation { LinearInterpolation = 0, SphericalInterpolation = 1, ConstantInterpolation = 2 };
    Q_ENUM(VectorInterpolation)

    ~ZYLTPCustomCourseLink() override;

    /// Returns the interpolation kinds in the order they are offered, and their labels.
    static QList<VectorInterpolation> GetAllVectorInterpolation();
    static QString GetVectorInterpolationString(VectorInterpolation interpolation);
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
