// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLTPProcessRules.h"

#include "ZYLCompTowMask.h"
#include "ZYLMathPoint.h"
#include "ZYLMathVector.h"

#include <QCoreApplication>
#include <QString>

#include <atomic>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

class ZYLTPProgram;

/// Checks the tow courses of a program against its process rules (`ZYLTPProcessRules`) and
/// keeps the outcome: a list of violations and, per tow point, the signed steering radius.
///
/// - Steering radius: the radius of the course centreline within the surface (the inverse of
///   its geodesic curvature). At each tow point the tips within one tow width of arc length
///   on either side (at least three points) are put into the tangent plane of the point and
///   fitted, by least squares, with the conic y = a(x² + y²) + bx + c, which holds circles
///   and straight lines exactly: a circle of radius R gives R, a geodesic gives no
///   curvature at all. Positive radii turn towards the side direction (surface normal ×
///   laying direction). A point whose window has fewer than three distinct points (a
///   course of two tow points, repeated points) has no radius; no violation is made there.
///   The roll-in and roll-out points have none either. Each run of consecutive points
///   tighter than the limit is one violation, its value the smallest radius in the run.
/// - Add length: a tow must stay fed from where it is added to where it is cut for at least
///   the minimum add length (the tows of a course's first tow stretch are added there, those
///   of its last cut at the last tow point). Cut length: from a cut to the next add of the
///   same tow. Tows that start and end at the same places make one violation.
/// - Course length: from the first tow stretch that lays a tow to the end of the last one.
///
/// Running is split so that it can happen off the thread that edits the model: `Capture`
/// copies what the checks read (on the model's thread, about 50 bytes per point), `Run`
/// works on the copy alone.
class ZYLTOOLPATH_EXPORT ZYLTPProcessCheck {
    Q_DECLARE_TR_FUNCTIONS(ZYLTPProcessCheck)
public:
    enum Kind : int { SteeringRadius, AddLength, CutLength, CourseLength };

    /// A broken rule over the points [firstPoint, lastPoint] of course `course` (position in
    /// the laying order) of procedure `procedure`: `value` is the radius or length found and
    /// `limit` the rule's (mm); `tows` the tows concerned (for add and cut lengths).
    struct Violation {
        Kind kind = SteeringRadius;
        int procedure = 0;
        int course = 0;
        int firstPoint = 0;
        int lastPoint = 0;
        ZYLCompTowMask tows;
        double value = 0.0;
        double limit = 0.0;
    };

    /// What the checks read of one tow course: its points (roll-in and roll-out included)
    /// and its tow stretches (first point, raw tow mask) in laying order.
    struct CourseInput {
        /// Identifies the course (`FindCurvatures`); never read through.
        const void *key = nullptr;
        int procedure = 0;
        int course = 0;
        std::vector<ZYLMathPoint> tips;
        std::vector<ZYLMathVector> normals;
        std::vector<std::pair<int, quint64>> stretches;
    };
    struct Input {
        ZYLTPProcessRules rules;
        std::vector<CourseInput> courses;
    };

    /// Copies what the checks read of every tow course of `program`, in laying order, with
    /// `rules`.
    static Input Capture(const ZYLTPProgram &program, const ZYLTPProcessRules &rules);
    /// Runs every check on `input`; stops early, returning an empty check with
    /// `IsCancelled()`, once `cancel` is set.
    static ZYLTPProcessCheck Run(const Input &input, const std::atomic_bool *cancel = nullptr);
    /// Captures `program` with its own rules and runs the checks.
    static ZYLTPProcessCheck Run(const ZYLTPProgram &program);

    /// Fills `curvatures` (one entry per point) with the signed geodesic curvature (1/mm) at
    /// the points [first, last] of a polyline on a surface, fitted over `window` mm on either
    /// side; other entries, and points without a radius, get NaN.
    static void ComputeCurvatures(const std::vector<ZYLMathPoint> &tips, const std::vector<ZYLMathVector> &normals,
                                  int first, int last, double window, std::vector<float> &curvatures);

    bool IsCancelled() const { return m_cancelled; }
    const ZYLTPProcessRules &GetRules() const { return m_rules; }
    const std::vector<Violation> &GetViolations() const { return m_violations; }
    /// Returns the number of violations of `kind`.
    int CountViolations(Kind kind) const;
    /// Returns the number of tow courses and of tow points checked.
    int GetNumCourses() const { return int(m_courses.size()); }
    qint64 GetNumPoints() const { return m_numPoints; }
    /// Returns the position among the checked courses of the course at laying position
    /// `course` of procedure `procedure`, or -1.
    int FindCourse(int procedure, int course) const;
    /// Returns the curvature values of checked course `i` (see `ComputeCurvatures`).
    const std::vector<float> &GetCurvatures(int i) const { return m_courses[size_t(i)].curvatures; }
    /// The colours of a course's points by steering radius: per point
    /// `ZYLTPProcessColoring::GetBin` + 1 (0 where there is no radius), and the points whose
    /// colour differs from the previous point's, in order.
    struct Colours {
        std::vector<quint8> perPoint;
        std::vector<int> changes;
    };
    /// Returns the colours of the course captured with `key`, or null.
    const Colours *FindColours(const void *key) const;
    /// Returns the signed steering radius at point `point` of checked course `i` (mm;
    /// infinite where straight), or nothing where there is none.
    std::optional<double> GetSteeringRadius(int i, int point) const;

    /// Returns the translated name of a kind ("Steering radius", ...).
    static QString KindName(Kind kind);
    /// Returns the untranslated key of a kind ("steering_radius", ...), as in reports.
    static const char *KindKey(Kind kind);

private:
    struct CourseResult {
        int procedure = 0;
        int course = 0;
        std::vector<float> curvatures;
        Colours colours;
    };
    void CheckCourse(const CourseInput &course);
    void CheckSteering(const CourseInput &course, const std::vector<float> &curvatures, int first, int last);
    void CheckTows(const CourseInput &course, const std::vector<double> &arc, int last);

    ZYLTPProcessRules m_rules;
    std::vector<Violation> m_violations;
    std::vector<CourseResult> m_courses;
    std::unordered_map<const void *, int> m_byKey;
    qint64 m_numPoints = 0;
    bool m_cancelled = false;
};
