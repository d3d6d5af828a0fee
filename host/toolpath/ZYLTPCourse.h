// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLMathAxis.h"

#include <QCoreApplication>
#include <QObject>
#include <QList>
#include <QStringList>

#include <memory>
#include <utility>
#include <vector>

struct ZYLTPCoursePoints;
class ZYLTPApproachTrajectory;
class ZYLTPBreakRange;
class ZYLTPCourseLink;
class ZYLGeoSurface;
class ZYLTPMachineConfiguration;
class ZYLTPOnPartPoint;
class ZYLTPOnPartTrajectory;
class ZYLTPProgram;
class ZYLTPRetractTrajectory;
class ZYLTPRollLayupProcedure;
class ZYLTPTrajectory;

/// A course of a roll layup procedure: one pass of the head over the part.
///
/// Points. `GetNumPoints()`/`GetPoint(i)` list the on-part points in laying order: the
/// roll-in point (index 0, where the roller touches down, the roll-in distance before the
/// first tow point along the laying direction of that point), the tow points, and the
/// roll-out point (the last index, `GetRollOutPoint()`, the roll-out distance after the last
/// tow point along its laying direction). A course has at least two tow points. Point data
/// live in arrays owned by the course (`ZYLTPCoursePoints`); the point objects are views
/// created on first request and kept until the model replaces the point data. Changing the
/// roll-in or roll-out distance moves that one point; no index shifts.
///
/// Trajectories, in index order: approach, roll-in, tow trajectories, roll-out, retract (see
/// `ZYLTPTrajectory`). Each on-part trajectory covers a contiguous run of points.
///
/// Range operations take half-open point ranges [start, end): `end` is the first point not
/// changed, so `end = GetRollOutPoint()` covers every tow point, and a null `end` runs to the
/// end of the course (roll-out point included). A null `start`, `start` after `end`, or
/// points of another course throw `ZYLSysException` and change nothing. They split the
/// on-part trajectories at the range ends (the pieces outside the range keep the trajectory
/// objects, the pieces inside are new objects), set the values on the covered trajectories,
/// then merge neighbouring tow trajectories that became equal (the one that existed before
/// the edit keeps its identity); everything is recorded, so undo gives back the very same trajectory objects.
///
/// Lengths and times are computed from the points and the feed rates, never stored:
/// - `GetLength()`: the whole on-part path, roll-in point to roll-out point (mm);
/// - `ComputePointLength(p)`: arc length from the roll-in point (0 for it, `GetLength()` for
///   the roll-out point);
/// - `GetOnPartTimeEstimate()`: the sum over the on-part trajectories of length / feed rate,
///   except that along the course the first `GetAddCutDistance()` mm after each tow add run
///   at the add feed rate and the last `GetAddCutDistance()` mm before each tow cut at the
///   cut feed rate, across trajectory boundaries (a tow is added where a tow trajectory lays
///   a tow the previous one did not, cut where the next one stops laying it; the first tow
///   trajectory adds all its tows, the last cuts all; add wins where the zones overlap) (s).
///
/// Feed rates: the course's laying feed rate is the rate of its on-part motion; setting it
/// sets every on-part trajectory of the course to it (replacing rates set over ranges). The
/// add and cut feed rates apply around tow adds and cuts as above. All feed rates > 0 mm/min.
///
/// Links: `GetApproachLink()` is the link leading onto the course (the procedure's approach
/// link for the first course of the chain that has it), `GetRetractLink()` the link leaving
/// it (the retract link for the last); null when there is none.
///
/// Every setter records its change through the feature recorder (a transaction must be open)
/// and throws `ZYLSysOutOfBoundsException` for a value outside its range, changing nothing.
class ZYLTOOLPATH_EXPORT ZYLTPCourse : public QObject {
    Q_OBJECT
public:
    ~ZYLTPCourse() override;

    ZYLTPRollLayupProcedure *GetProcedure() const { return m_procedure; }
    const ZYLTPProgram *GetProgram() const;

    // Points
    int GetNumPoints() const;
    /// Returns point i (null outside [0, GetNumPoints())); the view is created on first
    /// request.
    const ZYLTPOnPartPoint *GetPoint(int i) const;
    const ZYLTPOnPartPoint *GetRollInPoint() const { return GetPoint(0); }
    const ZYLTPOnPartPoint *GetRollOutPoint() const { return GetPoint(GetNumPoints() - 1); }
    /// Returns the index of `point` in this course, or -1 for a point of another course or null.
    int GetPointIndex(const ZYLTPOnPartPoint *point) const;
    /// Returns the untilted frame of point i (first laying direction, second side direction,
    /// third surface normal) and its tool frame (see `ZYLTPOnPartPoint`). i must be valid.
    ZYLMathAxis GetPointFrame(int i, bool toolFrame) const;
    /// Returns the untilted frame of point i of `points`.
    static ZYLMathAxis GetUntiltedFrame(const ZYLTPCoursePoints &points, int i);
    /// Returns the tool frame of an untilted frame under forward and side tilts (radians; see
    /// `ZYLTPOnPartPoint`): turned by the side tilt about the laying direction, then by the
    /// forward tilt about the untilted side direction, about the tip.
    static ZYLMathAxis TiltFrame(const ZYLMathAxis &untilted, double forward, double side);
    /// Returns the point data arrays.
    const ZYLTPCoursePoints &GetPointData() const { return *m_points; }

    // Trajectories
    int GetNumTrajectories() const { return int(m_trajectories.size()); }
    const ZYLTPTrajectory *GetTrajectory(int i) const;
    int GetTrajectoryIndex(const ZYLTPTrajectory *trajectory) const;
    const ZYLTPApproachTrajectory *GetApproachTrajectory() const;
    const ZYLTPOnPartTrajectory *GetRollInTrajectory() const;
    const ZYLTPOnPartTrajectory *GetRollOutTrajectory() const;
    const ZYLTPRetractTrajectory *GetRetractTrajectory() const;
    /// Returns the on-part trajectory covering point i (null for an invalid index).
    const ZYLTPOnPartTrajectory *GetTrajectoryOfPoint(int i) const;

    // Break ranges
    int GetNumBreakRanges() const { return int(m_breakRanges.size()); }
    const ZYLTPBreakRange *GetBreakRange(int i) const;

    // Lengths and estimates
    double GetLength() const;
    /// Returns the arc length from the roll-in point to `point`; throws `ZYLSysException` for
    /// a point of another course or null.
    double ComputePointLength(const ZYLTPOnPartPoint *point) const;
    double GetOnPartTimeEstimate() const;

    // Roll-in and roll-out distances, >= 0 mm; each setter moves the roll-in (roll-out) point
    double GetRollIn() const { return m_rollIn; }
    void SetRollIn(double distance);
    double GetRollOut() const { return m_rollOut; }
    void SetRollOut(double distance);

    // Feed rates, > 0 mm/min
    double GetLayingFeedRate() const { return m_layingFeedRate; }
    void SetLayingFeedRate(double feedRate);
    double GetAddFeedRate() const { return m_addFeedRate; }
    void SetAddFeedRate(double feedRate);
    double GetCutFeedRate() const { return m_cutFeedRate; }
    void SetCutFeedRate(double feedRate);
    /// Returns the distance after a tow add and before a tow cut run at the add and cut feed
    /// rates (mm; the procedure's value).
    double GetAddCutDistance() const;

    // Post-processor instructions, written before and after the course (any lines); recorded
    const QStringList &GetPrefixInstructions() const { return m_prefix; }
    void SetPrefixInstructions(const QStringList &instructions);
    const QStringList &GetSuffixInstructions() const { return m_suffix; }
    void SetSuffixInstructions(const QStringList &instructions);

    // Range operations (see the class comment)
    /// Sets forward and side tilt (each within ±1.55 rad) over [start, end).
    void SetRangeTilt(const ZYLTPOnPartPoint *start, const ZYLTPOnPartPoint *end, double forward, double side);
    /// Sets the feed rate (> 0 mm/min) over [start, end).
    void SetRangeFeedRate(const ZYLTPOnPartPoint *start, const ZYLTPOnPartPoint *end, double feedRate);

    // Editing
    /// Turns the course round: it is then laid from its old end to its old start, the same
    /// tows over the same stretches with the tool in the same physical pose.
    /// - Points: in reverse order, as new point data (views of the old data stay with the
    ///   edit, so undo gives them back); each untilted frame's laying and side directions
    ///   flip, the normal stays.
    /// - On-part trajectories: the same objects in reverse order. Values belong to the
    ///   stretch between a trajectory's first point and the next one's, so each keeps its
    ///   stretch: the old roll-out trajectory becomes the roll-in one and the other way
    ///   round, and the first and last tow trajectories gain and lose one point. A last tow
    ///   trajectory that covers only the last tow point lays nothing and has no stretch to
    ///   keep; it stays the last one (over the new last tow point), so that turning twice
    ///   gives it back.
    /// - Tilts change sign, so that the tool axis keeps its physical direction over each
    ///   stretch (tilts are usually set to clear collisions, which depend on the pose, not on
    ///   the travel direction).
    /// - Tows: with the side direction flipped, tow t is then tow n - 1 - t (n =
    ///   `ZYLTPTowCourse::GetNumTows()`: the head's tow count, or else the width fixed by the
    ///   first reversal): tow masks, forced masks
    ///   and forced rates are mirrored; feed rates and compaction forces are kept.
    /// - Roll-in and roll-out distances swap, and so do the approach and retract angles and
    ///   lengths.
    /// - Break ranges map to [L - end, L - start] and their list is reversed, so that they
    ///   stay in laying order.
    /// With `keepLinks` the course's incoming and outgoing links stay and join its new ends
    /// (links follow the ends of the courses they join); otherwise they are removed.
    /// Reversing twice gives back the same course. Recorded, in the open transaction;
    /// throws `ZYLSysException`, changing nothing, when none is open or the course has been
    /// removed from its procedure.
    void Reverse(bool keepLinks = true);
    /// Splits the course at `breakRange`, one of its own break ranges, into this course and a
    /// new one of the same class, machine configuration, feed rates and instructions, placed
    /// right after it in the stored list (later indexes shift by one) and in the laying
    /// order, and returns the new course.
    /// - The split point is the tow point nearest the middle of the range (the earlier one
    ///   on a tie). This course ends there, the new one starts there: both lay it.
    /// - This course keeps its approach, roll-in and roll-out distance, and gets a new
    ///   roll-out trajectory and a new retract trajectory with the values of its old ones; the
    ///   new course takes over the old roll-out and retract trajectories and gets a new
    ///   approach and roll-in trajectory with the values of this course's and the roll-in
    ///   distance of this course.
    /// - A trajectory running across the split point is cut there; its piece after the point
    ///   is a new trajectory with the same values; trajectories after the point move to the
    ///   new course. Tilts, masks and rates are kept on both sides.
    /// - Break ranges: `breakRange` is removed; the ranges whose middle lies after the split
    ///   point move to the new course, shifted to its arc lengths; the others stay. Ranges
    ///   are clipped to the course they end up in.
    /// - Links: the link leaving this course (course or retract link) then leaves the new
    ///   course. If there was one, a new link of the procedure's default strategy joins this
    ///   course to the new one, so that the chain stays whole; without one, the two are left
    ///   unlinked.
    /// Throws `ZYLSysException`, changing nothing, for a null range, a range of another
    /// course, a course removed from its procedure, or a split point that would leave either
    /// piece with fewer than two tow points.
    /// Recorded; undo gives back the same objects.
    ZYLTPCourse *Break(const ZYLTPBreakRange *breakRange);
    /// Corrects the tool frames of the points [from, to) (null `to`: to the end of the
    /// course) by tilting the tool, so that no collision point of the machine comes closer
    /// than `distance` to `surface` on the side `direction` picks (see
    /// `ZYLTPOnPartPoint::DetectCollision`). Posts a message of type 2 to the open message
    /// queue for each point it cannot clear.
    void AvoidCollisions(const ZYLGeoSurface *surface, bool direction, double distance,
                         const QList<std::pair<ZYLMathPoint, double>> &collisionPoints,
                         const ZYLTPOnPartPoint *from, const ZYLTPOnPartPoint *to);

    // Links and machine
    const ZYLTPCourseLink *GetApproachLink() const { return m_inLink; }
    const ZYLTPCourseLink *GetRetractLink() const { return m_outLink; }
    const ZYLTPMachineConfiguration &GetMachineConfiguration() const { return *m_configuration; }

protected:
    ZYLTPCourse(ZYLTPRollLayupProcedure *procedure, const ZYLTPMachineConfiguration *configuration);

    /// Applies `apply` to every on-part trajectory of [startIndex, endIndex) after splitting
    /// at the range ends, then merges equal tow neighbours; all recorded. `apply` records its
    /// own value changes.
    template<class Apply>
    void EditRange(int startIndex, int endIndex, Apply apply);
    /// Resolves a half-open point range to indexes; throws for bad ranges.
    std::pair<int, int> ResolveRange(const ZYLTPOnPartPoint *start, const ZYLTPOnPartPoint *end) const;
    /// Index of the first tow trajectory in the trajectory list.
    static constexpr int FirstOnPart = 1;

private:
    friend class ZYLTPProgramBuilder;
    friend class ZYLTPRollLayupProcedure;
    friend class ZYLTPOnPartPoint;
    friend class ZYLTPTowCourse;
    // Replaces the whole point data, views included, in one recorded change (for edits that
    // rebuild the points, such as reversing or breaking): undo brings back the old arrays with
    // their very views. The trajectories must be made to cover the new points in the same
    // transaction.
    void ReplacePointData(std::unique_ptr<ZYLTPCoursePoints> points);
    const ZYLTPTrajectory *SplitAt(int pointIndex, bool keepBack);
    void MergeEqualNeighbours(int fromTrajectory, int toTrajectory,
                              const std::vector<const ZYLTPTrajectory *> &created);
    void MoveEndPoint(bool rollIn, double distance);
    int FindOnPartTrajectory(int pointIndex) const;
    // Editing the course as a whole (ZYLTPCourseEdit.cpp).
    void CheckInProcedure() const;
    std::unique_ptr<ZYLTPCourse> CreateSibling() const;
    int FindNearestTowPoint(double arcLength) const;
    std::vector<std::pair<double, double>> PlanBreakRanges(double length, double &smallestLength) const;
    void SetBreakRanges(const std::vector<std::pair<double, double>> &ranges);

    ZYLTPRollLayupProcedure *m_procedure;
    const ZYLTPMachineConfiguration *m_configuration;
    std::unique_ptr<ZYLTPCoursePoints> m_points;
    std::vector<std::unique_ptr<ZYLTPTrajectory>> m_trajectories;
    std::vector<std::unique_ptr<ZYLTPBreakRange>> m_breakRanges;
    double m_rollIn = 0.0;
    double m_rollOut = 0.0;
    double m_layingFeedRate = 1000.0;
    double m_addFeedRate = 1000.0;
    double m_cutFeedRate = 1000.0;
    QStringList m_prefix;
    QStringList m_suffix;
    const ZYLTPCourseLink *m_inLink = nullptr;
    const ZYLTPCourseLink *m_outLink = nullptr;
};
