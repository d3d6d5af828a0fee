// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLMathAxis.h"

#include <QCoreApplication>
#include <QList>
#include <QObject>
#include <QString>

#include <memory>
#include <vector>

class ZYLTPCourse;
class ZYLTPOffPartPoint;
class ZYLTPRollLayupProcedure;

/// The off-part motion between two courses of a roll layup procedure, or, for the
/// procedure's own links (`ZYLTPProcedureLink`), from the machine's home frame onto the
/// first course (approach link: `GetFromCourse()` null) or from the last course back home
/// (retract link: `GetToCourse()` null). Links are owned by their procedure and made by
/// `ZYLTPRollLayupProcedure::LinkCourses` or the program builder.
///
/// A course link runs from the far end of the from-course's retract trajectory to the far
/// end of the to-course's approach trajectory (the home frame stands for a missing course).
/// Its points are derived from its parameters and those courses' frames whenever the model
/// has changed. Derived motion always has `GetSegmentCount(detail) + 3` points (start,
/// lifted, the traverse, end), so point objects keep their addresses until the detail
/// changes. Custom links store their interior points; their first and last points are
/// derived like those of every other link, so they follow the courses they join.
///
/// Strategies (`OffPartMotionStrategy`): 0 "Linear" (`ZYLTPLinearCourseLink`), 1 "Safety
/// plane" (`ZYLTPSafetyPlaneCourseLink`), 2 "Custom" (`ZYLTPCustomCourseLink`). Details
/// (`OffPartMotionDetail`): 0 "Coarse", 1 "Normal", 2 "Fine": how finely straight moves are
/// divided (1, 4 or 16 segments).
///
/// Time: the length at the procedure's rapid feed rate.
class ZYLTOOLPATH_EXPORT ZYLTPCourseLink : public QObject {
    Q_OBJECT
public:
    // Values come from files, scripts and combo boxes and are range-checked where they are
    // used, so these enums have a fixed underlying type: any int is a value, not undefined.
    enum OffPartMotionStrategy : int { Linear = 0, SafetyPlane = 1, Custom = 2 };
    Q_ENUM(OffPartMotionStrategy)
    enum OffPartMotionDetail : int { Coarse = 0, Normal = 1, Fine = 2 };
    Q_ENUM(OffPartMotionDetail)

    ~ZYLTPCourseLink() override;

    ZYLTPRollLayupProcedure *GetProcedure() const { return m_procedure; }
    const ZYLTPCourse *GetFromCourse() const { return m_from; }
    const ZYLTPCourse *GetToCourse() const { return m_to; }
    /// Returns the strategy the link follows (procedure links report Linear).
    virtual OffPartMotionStrategy GetStrategy() const = 0;

    int GetNumPoints() const;
    /// Returns point i, null outside [0, GetNumPoints()).
    const ZYLTPOffPartPoint *GetPoint(int i) const;
    /// Returns the position of `point` in the link, or -1.
    int GetPointIndex(const ZYLTPOffPartPoint *point) const;
    /// Returns the length of the polyline through the points (mm).
    double GetLength() const;
    /// Returns the time of the motion at the procedure's rapid feed rate (s).
    double GetTimeEstimate() const;
    /// Returns the height by which the ends of the motion are lifted beyond the rapid
    /// distances to keep its straight traverse clear of the ply surface (0 without a surface,
    /// when clear anyway, and for links that do not lift), mm.
    double GetClearanceLift() const;
    /// Which ends of a straight traverse may rise to clear the part: both, or only the one on
    /// a course when the other is the home frame.
    enum LiftedEnds { LiftBoth, LiftStart, LiftEnd };

    OffPartMotionDetail GetPointsDetail() const { return m_detail; }
    /// Sets the detail; records; throws `ZYLSysOutOfBoundsException` for a value that is
    /// not a detail.
    void SetPointsDetail(OffPartMotionDetail detail);
    /// Recomputes the link's points now (they are otherwise recomputed on the next read
    /// after a change of the model).
    void Update();

    static QList<OffPartMotionStrategy> GetAllOffPartMotionStrategies();
    static QString GetOffPartMotionStrategyLabel(OffPartMotionStrategy strategy);
    static QList<OffPartMotionDetail> GetAllOffPartMotionDetails();
    static QString GetOffPartMotionDetailLabel(OffPartMotionDetail detail);
    /// Returns the number of segments a straight move is divided into for a detail.
    static int GetSegmentCount(OffPartMotionDetail detail);

protected:
    ZYLTPCourseLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from, const ZYLTPCourse *to);
    /// Computes the frames of the motion.
    virtual std::vector<ZYLMathAxis> ComputeFrames() const = 0;
    /// Frame where the link starts (far end of the from-course's retract trajectory) and
    /// ends (far end of the to-course's approach trajectory); the procedure's home frame
    /// for a side without a course.
    ZYLMathAxis GetStartFrame() const;
    ZYLMathAxis GetEndFrame() const;
    /// Returns the point objects, brought up to date first. For links that edit their own
    /// point list (custom links): they keep it as long as `ComputeFrames()`, which must then
    /// return one frame per point object once the objects exist.
    std::vector<std::unique_ptr<ZYLTPOffPartPoint>> &GetPointObjects() const;
    /// Appends to `frames` the straight move from a to b in `segments` segments (a excluded,
    /// b included), keeping a's directions. a and b may be elements of `frames`.
    static void AppendStraight(std::vector<ZYLMathAxis> &frames, ZYLMathAxis a, ZYLMathPoint b, int segments);
    /// Returns the motion that lifts from `start` by `lift` along its tool axis, moves
    /// straight (in `segments` segments) to `drop` above `end` along its tool axis, and
    /// goes down to `end`.
    /// Returns the motion start, up (1 segment), across to above (`segments`), down to end.
    static std::vector<ZYLMathAxis> UpAcrossDown(const ZYLMathAxis &start, const ZYLMathPoint &up,
                                                 const ZYLMathPoint &above, const ZYLMathAxis &end, int segments);
    static std::vector<ZYLMathAxis> StraightMotion(const ZYLMathAxis &start, const ZYLMathAxis &end, double lift,
                                                   double drop, int segments);

    /// Returns the extra height by which `ends` of the straight traverse from `start` lifted by
    /// `retract` to `end` lifted by `approach` (along their tool axes) must rise so that, a
    /// fraction s of the way across, it keeps (1 - s) · retract + s · approach from the ply
    /// surface on the side the head works on. Kept with what it was found for, so an unchanged
    /// link asks the surface nothing again.
    double ComputeClearanceLift(const ZYLMathAxis &start, const ZYLMathAxis &end, double retract, double approach,
                                LiftedEnds ends) const;

private:
    friend class ZYLTPRollLayupProcedure;
    friend class ZYLTPProgramBuilder;
    void Refresh() const;
    // The clearance lift and what it was found for.
    struct LiftCache {
        bool valid = false;
        const void *surface = nullptr;
        ZYLMathAxis start;
        ZYLMathAxis end;
        double retract = 0.0;
        double approach = 0.0;
        LiftedEnds ends = LiftBoth;
        double lift = 0.0;
    };
    mutable LiftCache m_lift;
    ZYLTPRollLayupProcedure *m_procedure;
    const ZYLTPCourse *m_from;
    const ZYLTPCourse *m_to;
    OffPartMotionDetail m_detail = Normal;
    mutable quint64 m_revision = 0;
    mutable std::vector<std::unique_ptr<ZYLTPOffPartPoint>> m_points;
    mutable std::vector<std::unique_ptr<ZYLTPOffPartPoint>> m_retired;
};
