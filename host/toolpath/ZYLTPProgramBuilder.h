// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLCompTowMask.h"
#include "ZYLTPCourseLink.h"
#include "ZYLTPOnPartTrajectory.h"

#include "ZYLMathAxis.h"
#include "ZYLMathPoint.h"
#include "ZYLMathVector.h"

#include <QCoreApplication>
#include <QList>
#include <QStringList>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

class ZYLGeoAssembledCurveOnSurface;
class ZYLGeoSurface;
class ZYLTPBreakRange;
class ZYLTPCourse;
class ZYLTPInspectionProcedure;
class ZYLTPMachineConfiguration;
class ZYLTPMachineHead;
class ZYLTPProgram;
struct ZYLTPProcessRules;
class ZYLTPResource;
class ZYLTPRollLayupProcedure;
class ZYLTPRoller;
class ZYLTPTool;
class ZYLTPTowCourse;

/// Builds a whole tool path program quickly, without a transaction: a program under
/// construction belongs to no history. Each `Add...` and `Set...` validates its input and
/// throws `ZYLSysException` (`ZYLSysOutOfBoundsException` for a value out of range, with the
/// message the model's own setter gives) leaving the program as it was; what was added
/// before stays. `TakeProgram()` hands the program over; a builder destroyed without handing
/// it over deletes it.
///
/// Values are bounded by what a real program holds, as in the model's setters: coordinates
/// (tips, frame origins, collision point centres, inspection paths, the ply surface's control
/// points or origin, and its parameters) within ±1e6 mm, lengths, distances and radii in
/// [0, 1e6] mm, feed rates up to 1e6 mm/min, forces up to 1e6 N; a value beyond is refused
/// with `ZYLSysOutOfBoundsException`.
///
/// Everything a program file holds can be set here, so that loading a file needs no
/// transaction: procedure parameters (`SetProcedureParameters`), link parameters (`AddLink`,
/// `AddCustomLink`), and course frames stored bit for bit (`FrameMode::AsGiven`).
///
/// ```cpp
/// ZYLTPProgramBuilder b;
/// auto *roller = b.AddRoller("Roller 1", 100, 60);
/// auto *proc = b.AddRollLayupProcedure("Ply 1", "");
/// auto *config = b.AddMachineConfiguration(proc, nullptr, roller);
/// ZYLTPProgramBuilder::CourseData data;  // tips, normals, runs, parameters
/// auto *course = b.AddTowCourse(proc, config, std::move(data));
/// ZYLTPProgram *program = b.TakeProgram();
/// ```
class ZYLTOOLPATH_EXPORT ZYLTPProgramBuilder {
    Q_DECLARE_TR_FUNCTIONS(ZYLTPProgramBuilder)
public:
    ZYLTPProgramBuilder();
    ~ZYLTPProgramBuilder();
    ZYLTPProgramBuilder(const ZYLTPProgramBuilder &) = delete;
    ZYLTPProgramBuilder &operator=(const ZYLTPProgramBuilder &) = delete;

    /// Returns the program under construction (null once taken).
    ZYLTPProgram *GetProgram() const;
    /// Hands the program over (no reference added: see `ZYLGeoGeometry`).
    ZYLTPProgram *TakeProgram();

    // Geometry of the ply; the program takes a reference on each.
    void SetPlySurface(const ZYLGeoSurface *surface);
    /// Sets the program's process rules; throws as `ZYLTPProcessRules::Check`.
    void SetProcessRules(const ZYLTPProcessRules &rules);
    void AddPlyBoundary(ZYLGeoAssembledCurveOnSurface *boundary);

    // Machine resources; ids are positions in the program's lists.
    /// Adds a head whose tow count is not known (its courses take their width from their
    /// tow masks).
    ZYLTPMachineHead *AddMachineHead(const QString &name);
    /// Adds a head feeding `numTows` tows side by side (1 to `ZYLTPMachineHead::MaxNumTows`);
    /// throws `ZYLSysOutOfBoundsException` for another count, adding nothing.
    ZYLTPMachineHead *AddMachineHead(const QString &name, int numTows);
    /// Adds a roller (width and diameter > 0 mm).
    ZYLTPRoller *AddRoller(const QString &name, double width, double diameter);
    /// Adds a plain tool, neither a roller nor a head (a scanner, a cutter): a name and,
    /// through `SetCollisionPoints`, collision points. Its id is its place in the tool list,
    /// shared with the rollers.
    ZYLTPTool *AddTool(const QString &name);
    /// Sets a resource's collision points (centre in its tool frame, radius >= 0 mm).
    void SetCollisionPoints(ZYLTPResource *resource, const QList<std::pair<ZYLMathPoint, double>> &points);

    // Procedures
    ZYLTPRollLayupProcedure *AddRollLayupProcedure(const QString &name, const QString &description);
    ZYLTPInspectionProcedure *AddInspectionProcedure(const QString &name, const QString &description,
                                                     const ZYLTPTool *scanner, std::vector<ZYLMathPoint> path,
                                                     double scanFeedRate);
    /// The parameters of a roll layup procedure, with the model's defaults (ranges as in the
    /// procedure's setters): feed rates > 0 mm/min, distances >= 0 mm, any home frame, a
    /// default strategy among `ZYLTPCourseLink::OffPartMotionStrategy`.
    struct ProcedureParameters {
        double layingFeedRate = 6000.0;
        double addingFeedRate = 3000.0;
        double cuttingFeedRate = 3000.0;
        double rapidFeedRate = 20000.0;
        double rapidApproach = 50.0;
        double rapidRetract = 50.0;
        double safetyClearance = 100.0;
        double addCutDistance = 10.0;
        ZYLMathAxis homeFrame;
        ZYLTPCourseLink::OffPartMotionStrategy defaultStrategy = ZYLTPCourseLink::Linear;
    };
    /// Throws `ZYLSysOutOfBoundsException` for the first parameter out of its range (in the
    /// order of the struct), with the message of the procedure's setter for it.
    static void CheckProcedureParameters(const ProcedureParameters &parameters);
    /// Sets all parameters of a procedure at once; changes nothing when one is out of range.
    /// Links made afterwards take the rapid approach and retract distances as defaults.
    void SetProcedureParameters(ZYLTPRollLayupProcedure *procedure, const ProcedureParameters &parameters);
    /// Adds a machine configuration to a procedure; the tool must not be null, both must be
    /// this program's.
    ZYLTPMachineConfiguration *AddMachineConfiguration(ZYLTPRollLayupProcedure *procedure,
                                                       const ZYLTPMachineHead *head, const ZYLTPTool *tool);

    /// One run of tow points with constant values, in laying order.
    struct TowRun {
        int numPoints = 0;
        ZYLCompTowMask towMask;
        ZYLTPOnPartTrajectory::Values values;
        ZYLCompTowMask forcedMask;
        QList<double> forcedRates;
    };
    /// How `AddTowCourse` takes the frames of the tow points.
    enum class FrameMode {
        /// Normals are normalised; directions (given or computed) are made unit and orthogonal
        /// to the normals.
        Orthonormalize,
        /// Normals and directions are stored bit for bit, as a saved course needs to read back
        /// exactly. Every direction must be given, and each normal and direction must be unit
        /// and the two orthogonal to within `FrameTolerance`.
        AsGiven
    };
    /// Tolerance on unit lengths and orthogonality of frames taken as given: far above the
    /// rounding of saved numbers, far below any real fault.
    static constexpr double FrameTolerance = 1e-6;

    /// A course to add. `tips` and `normals` hold the tow points (at least 2); `directions`
    /// may be empty (then computed from the tips, projected onto the tangent planes) unless
    /// `frameMode` is `AsGiven`. The runs cover the tow points exactly. Roll-in and roll-out
    /// trajectories take `rollInValues` and `rollOutValues`.
    ///
    /// `numTows` is the width of the course in tows, for a course whose head does not know
    /// its count (a course reversed before it was saved keeps its width that way): 0 lets the
    /// width follow the tow masks; otherwise 1 to 64, and no tow or forced mask may use a tow
    /// beyond it. When the head knows its count, that count is the width and no mask may use a
    /// tow beyond it either; `numTows` must then not exceed it.
    struct CourseData {
        std::vector<ZYLMathPoint> tips;
        std::vector<ZYLMathVector> normals;
        std::vector<ZYLMathVector> directions;
        std::vector<TowRun> runs;
        ZYLTPOnPartTrajectory::Values rollInValues;
        ZYLTPOnPartTrajectory::Values rollOutValues;
        double rollIn = 10.0;
        double rollOut = 10.0;
        double layingFeedRate = 6000.0;
        double addFeedRate = 3000.0;
        double cutFeedRate = 3000.0;
        double approachAngle = 0.5;
        double approachLength = 20.0;
        double retractAngle = 0.5;
        double retractLength = 20.0;
        QStringList prefix;
        QStringList suffix;
        FrameMode frameMode = FrameMode::Orthonormalize;
        int numTows = 0;
    };
    /// Adds a tow course at the end of the stored list and of the laying order. A course that
    /// uses a tow beyond the head's count (or beyond `numTows`) is refused with
    /// `ZYLSysException`: it could be neither drawn nor reversed sensibly.
    ZYLTPTowCourse *AddTowCourse(ZYLTPRollLayupProcedure *procedure, const ZYLTPMachineConfiguration *configuration,
                                 CourseData data);
    /// Adds a break range [start, end] (arc lengths from the roll-in point, within the course).
    ZYLTPBreakRange *AddBreakRange(ZYLTPCourse *course, double start, double end);
    /// Sets the laying order of a procedure (a permutation); existing links must stay
    /// consecutive.
    void SetLayingOrder(ZYLTPRollLayupProcedure *procedure, const QList<int> &order);
    /// The parameters of a link: the detail of its derived motion and, for a linear link
    /// between two courses only, its rapid approach and retract distances (>= 0 mm; unset:
    /// the procedure's at the time the link is added).
    struct LinkParameters {
        ZYLTPCourseLink::OffPartMotionDetail detail = ZYLTPCourseLink::Normal;
        std::optional<double> rapidApproach;
        std::optional<double> rapidRetract;
    };
    /// Throws `ZYLSysOutOfBoundsException` for the first parameter out of its range, with the
    /// message of the link's setter for it.
    static void CheckLinkParameters(const LinkParameters &parameters);
    /// Adds a link with the checks of `ZYLTPRollLayupProcedure::LinkCourses`; the courses
    /// must already be consecutive in the laying order (first, last for procedure links).
    /// Rapid distances for any link but a linear one between two courses are refused.
    ZYLTPCourseLink *AddLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from, const ZYLTPCourse *to,
                             ZYLTPCourseLink::OffPartMotionStrategy strategy, const LinkParameters &parameters);
    /// Same, with the default parameters.
    ZYLTPCourseLink *AddLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from, const ZYLTPCourse *to,
                             ZYLTPCourseLink::OffPartMotionStrategy strategy);
    /// Adds a custom link with its stored frames (at least 2), taken bit for bit; only the
    /// detail of the parameters applies.
    ZYLTPCourseLink *AddCustomLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from,
                                   const ZYLTPCourse *to, std::vector<ZYLMathAxis> frames,
                                   const LinkParameters &parameters);
    /// Same, with the default parameters.
    ZYLTPCourseLink *AddCustomLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from,
                                   const ZYLTPCourse *to, std::vector<ZYLMathAxis> frames);

private:
    void CheckProcedure(const ZYLTPRollLayupProcedure *procedure) const;
    static void CheckCourseTows(const ZYLTPMachineConfiguration &configuration, const CourseData &data);
    void CheckLinkPlace(const ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from, const ZYLTPCourse *to) const;
    ZYLTPCourseLink *Attach(ZYLTPRollLayupProcedure *procedure, std::unique_ptr<ZYLTPCourseLink> link,
                            const LinkParameters &parameters);
    ZYLTPProgram *m_program;
};
