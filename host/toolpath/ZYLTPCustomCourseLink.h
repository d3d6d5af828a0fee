// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCourseLink.h"
#include "ZYLTPOffPartPoint.h"

/// A link whose points are stored (hand-edited motion). New custom links start as the
/// straight motion of a linear link with the procedure's rapid distances;
/// `ZYLTPRollLayupProcedure::ConvertLinkToCustom` makes one from the current points of any
/// course link.
///
/// Ends. Only the interior points are the user's. The first and last points always sit where
/// the link starts and ends (the far end of the from-course's retract, the far end of the
/// to-course's approach; the home frame for a side without a course) and are recomputed, like
/// the points of derived links, whenever the model changes: reversing or breaking a course or
/// changing its roll-in, roll-out, approach or retract moves them with it. When the link is
/// turned round (its from-course becomes its to-course, as reversing the laying order does),
/// the stored interior points are read in the opposite order, so the motion still runs from
/// the new start to the new end. Point objects keep their addresses across recomputation;
/// edits insert and remove the very objects, and undo puts them back.
///
/// The points detail (`SetPointsDetail`) is kept but does not change stored motion.
class ZYLTOOLPATH_EXPORT ZYLTPCustomCourseLink : public ZYLTPCourseLink {
    Q_OBJECT
public:
    /// How the frames of points made between two frames of a custom link (inserted or
    /// interpolated points) turn from the one to the other: 0 "Linear" (directions blended
    /// linearly, then made orthonormal again, the first direction kept and the second made
    /// orthogonal to it; where the blend degenerates, as for opposite directions half-way,
    /// the spherical frame is taken), 1 "Spherical" (turning at a constant angular rate about
    /// one axis, the shorter way), 2 "Constant" (every new point keeps the directions of the
    /// earlier of the two frames in the link's order). Stored as int item data by the link
    /// editor.
    enum VectorInterpolation : int { LinearInterpolation = 0, SphericalInterpolation = 1, ConstantInterpolation = 2 };
    Q_ENUM(VectorInterpolation)

    ~ZYLTPCustomCourseLink() override;

    /// Returns the interpolation kinds in the order they are offered, and their labels.
    static QList<VectorInterpolation> GetAllVectorInterpolation();
    static QString GetVectorInterpolationString(VectorInterpolation interpolation);
    OffPartMotionStrategy GetStrategy() const override { return Custom; }
    // Point edits. Each records its change, recomputes what depends on the points and
    // throws `ZYLSysException`, changing nothing, for a null point, points of another link,
    // a range whose end comes before its start, an interpolation kind that does not exist or
    // no open transaction. Ranges [from, to] include both ends. An edit that would change
    // nothing (a zero displacement, frames already aligned, no point between from and to,
    // zero points to insert) records nothing.
    /// Moves the points of [from, to] by `displacement` (finite). The first and last points
    /// cannot be moved: a range holding one is refused.
    void TranslateRange(const ZYLTPOffPartPoint *from, const ZYLTPOffPartPoint *to, const ZYLMathVector &displacement);
    /// Turns the frames of [from, to] about their origins so that `axis` points along
    /// `direction` (by the smallest rotation; when the axis points exactly the opposite way,
    /// by a half turn about the third direction for the first axis and about the first
    /// direction otherwise, so that aligning the first, then the second axis to a frame's
    /// gives that frame). A zero or non-finite direction and an axis outside 0..2 are refused,
    /// as is a range holding the first or last point.
    void AlignRange(const ZYLTPOffPartPoint *from, const ZYLTPOffPartPoint *to, ZYLTPOffPartPoint::Axis axis,
                    const ZYLMathVector &direction);
    /// Inserts `count` (>= 0; 0 inserts nothing) points evenly between `point` and its
    /// predecessor (successor), their frames turning as `interpolation` says. There is no
    /// point before the first one nor after the last: inserting there is refused.
    void InsertPointsBefore(const ZYLTPOffPartPoint *point, int count, VectorInterpolation interpolation);
    void InsertPointsAfter(const ZYLTPOffPartPoint *point, int count, VectorInterpolation interpolation);
    /// Re-spaces the points strictly between `from` and `to` evenly on the straight line
    /// between them, their frames turning from `from`'s to `to`'s as `interpolation` says.
    /// `from` and `to` themselves stay, so they may be the first and last points.
    void InterpolateRange(const ZYLTPOffPartPoint *from, const ZYLTPOffPartPoint *to,
                          VectorInterpolation interpolation);
    /// Removes `point`; the first and last points (on the courses) cannot be removed.
    void RemovePoint(const ZYLTPOffPartPoint *point);

    /// Returns the frames of the points in order: the stored interior frames between the
    /// current first and last frames (what a program file keeps).
    const std::vector<ZYLMathAxis> &GetFrames() const;

private:
    friend class ZYLTPRollLayupProcedure;
    friend class ZYLTPProgramBuilder;
    ZYLTPCustomCourseLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from, const ZYLTPCourse *to,
                          std::vector<ZYLMathAxis> frames);
    std::vector<ZYLMathAxis> ComputeFrames() const override;
    /// Whether the link has been turned round since its frames were stored.
    bool IsTurnedRound() const;
    /// Stores the frames in the link's present direction (recorded), before an edit.
    void StoreInPresentDirection();
    int IndexOf(const ZYLTPOffPartPoint *point) const;
    std::pair<int, int> ResolveRange(const ZYLTPOffPartPoint *from, const ZYLTPOffPartPoint *to) const;
    void CheckInterior(int first, int last, const char *what) const;
    void InsertBetween(int before, int count, VectorInterpolation interpolation);

    // Stored frames, in the direction from m_storedFrom to m_storedTo; the first and last
    // are replaced by the link's present ends when the points are computed.
    std::vector<ZYLMathAxis> m_frames;
    const ZYLTPCourse *m_storedFrom;
    const ZYLTPCourse *m_storedTo;
    mutable std::vector<ZYLMathAxis> m_current;
};
