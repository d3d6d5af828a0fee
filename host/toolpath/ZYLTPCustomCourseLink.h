// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCourseLink.h"
#include "ZYLTPOffPartPoint.h"

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
    // Point edits. Each records its change, recomputes what depends on the points and
    // throws `ZYLSysException`, changing nothing, for points of another link or a range whose
    // end comes before its start. Ranges [from, to] include both ends.
    /// Moves the points of [from, to] by `displacement`.
    void TranslateRange(const ZYLTPOffPartPoint *from, const ZYLTPOffPartPoint *to, const ZYLMathVector &displacement);
    /// Turns the frames of [from, to] about their origins so that `axis` points along
    /// `direction` (by the smallest rotation).
    void AlignRange(const ZYLTPOffPartPoint *from, const ZYLTPOffPartPoint *to, ZYLTPOffPartPoint::Axis axis,
                    const ZYLMathVector &direction);
    /// Inserts `count` (>= 1) points evenly between `point` and its predecessor (successor),
    /// their frames turning as `interpolation` says.
    void InsertPointsBefore(const ZYLTPOffPartPoint *point, int count, VectorInterpolation interpolation);
    void InsertPointsAfter(const ZYLTPOffPartPoint *point, int count, VectorInterpolation interpolation);
    /// Re-spaces the points strictly between `from` and `to` evenly on the straight line
    /// between them, their frames turning as `interpolation` says.
    void InterpolateRange(const ZYLTPOffPartPoint *from, const ZYLTPOffPartPoint *to,
                          VectorInterpolation interpolation);
    /// Removes `point`; the first and last points (on the courses) cannot be removed.
    void RemovePoint(const ZYLTPOffPartPoint *point);

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
