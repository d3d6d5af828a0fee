// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPProcessCheck.h"

#include "ZYLTPCoursePoints.h"
#include "ZYLTPProcedure.h"
#include "ZYLTPProcessColoring.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPTowCourse.h"
#include "ZYLTPTowTrajectory.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace {

constexpr float NoValue = std::numeric_limits<float>::quiet_NaN();

// Cumulative arc length of the tips from point `first`.
std::vector<double> ArcLengths(const std::vector<ZYLMathPoint> &tips, int first, int last)
{
    std::vector<double> arc(tips.size(), 0.0);
    for (int i = first + 1; i <= last; ++i)
        arc[size_t(i)] = arc[size_t(i - 1)] + (tips[size_t(i)] - tips[size_t(i - 1)]).GetLength();
    return arc;
}

// The signed curvature of the conic y = a(x² + y²) + bx + c fitted to the tips [lo, hi] in
// the tangent plane at point i, in units of 1/scale; NaN when the points do not fix it.
float FitCurvature(const std::vector<ZYLMathPoint> &tips, const ZYLMathVector &normal, int i, int lo, int hi,
                   double scale)
{
    ZYLMathVector t = tips[size_t(hi)] - tips[size_t(lo)];
    t -= normal * normal.Dot(t);
    const double chord = t.GetLength();
    if (!(chord > 1e-9 * scale))
        return NoValue;
    // Coordinates scaled to the window keep the normal equations well conditioned.
    t *= 1.0 / (chord * scale);
    const ZYLMathVector b = normal.Cross(t);
    double r4 = 0, r2x = 0, r2 = 0, x2 = 0, sx = 0, n = 0, r2y = 0, xy = 0, sy = 0;
    const ZYLMathPoint &origin = tips[size_t(i)];
    for (int j = lo; j <= hi; ++j) {
        const ZYLMathVector d = tips[size_t(j)] - origin;
        const double x = d.Dot(t), y = d.Dot(b);
        const double rr = x * x + y * y;
        r4 += rr * rr;
        r2x += rr * x;
        r2 += rr;
        x2 += x * x;
        sx += x;
        n += 1.0;
        r2y += rr * y;
        xy += x * y;
        sy += y;
    }
    // Cramer's rule on the 3 × 3 normal equations [r4 r2x r2; r2x x2 sx; r2 sx n].
    const double c0 = x2 * n - sx * sx, c1 = r2x * n - sx * r2, c2 = r2x * sx - x2 * r2;
    const double det = r4 * c0 - r2x * c1 + r2 * c2;
    // Fewer than three distinct points leave the system singular up to rounding.
    if (!(det > 1e-10 * r4 * x2 * n))
        return NoValue;
    const double a = (r2y * c0 - r2x * (xy * n - sx * sy) + r2 * (xy * sx - x2 * sy)) / det;
    const double bb = (r4 * (xy * n - sx * sy) - r2y * c1 + r2 * (r2x * sy - xy * r2)) / det;
    const double c = (r4 * (x2 * sy - sx * xy) - r2x * (r2x * sy - r2 * xy) + r2y * c2) / det;
    const double q = bb * bb + 1.0 - 4.0 * a * c;
    if (!(q > 0.0))
        return NoValue;
    return float(2.0 * a / std::sqrt(q) / scale);
}

} // namespace

void ZYLTPProcessCheck::ComputeCurvatures(const std::vector<ZYLMathPoint> &tips,
                                          const std::vector<ZYLMathVector> &normals, int first, int last,
                                          double window, std::vector<float> &curvatures)
{
    curvatures.assign(tips.size(), NoValue);
    if (first < 0 || last >= int(tips.size()) || last - first < 2 || normals.size() != tips.size())
        return;
    const std::vector<double> arc = ArcLengths(tips, first, last);
    int lo = first, hi = first;
    for (int i = first; i <= last; ++i) {
        while (arc[size_t(i)] - arc[size_t(lo)] > window)
            ++lo;
        while (hi < last && arc[size_t(hi + 1)] - arc[size_t(i)] <= window)
            ++hi;
        hi = std::max(hi, i);
        // Points spaced wider than the window still get their neighbours: three at least.
        int a = std::min(lo, i - 1), b = std::max(hi, i + 1);
        if (a < first) {
            a = first;
            b = std::max(b, first + 2);
        }
        if (b > last) {
            b = last;
            a = std::min(a, last - 2);
        }
        // The tangent plane of the window's middle point distorts the window least; at the
        // course's ends that is not the point itself.
        const int m = (a + b) / 2;
        curvatures[size_t(i)] =
            FitCurvature(tips, normals[size_t(m)], m, a, b, std::max(window, arc[size_t(b)] - arc[size_t(a)]));
    }
}

ZYLTPProcessCheck::Input ZYLTPProcessCheck::Capture(const ZYLTPProgram &program, const ZYLTPProcessRules &rules)
{
    Input input;
    input.rules = rules;
    for (int p = 0; p < program.GetNumProcedures(); ++p) {
        const auto *layup = qobject_cast<const ZYLTPRollLayupProcedure *>(program.GetProcedure(p));
        for (int c = 0; layup && c < layup->GetNumCourses(); ++c) {
            const auto *course = qobject_cast<const ZYLTPTowCourse *>(layup->GetCourseByPosition(c));
            if (!course)
                continue;
            CourseInput in;
            in.key = course;
            in.procedure = p;
            in.course = c;
            in.tips = course->GetPointData().tips;
            in.normals = course->GetPointData().normals;
            for (int k = 0; k < course->GetNumTrajectories(); ++k)
                if (const auto *tow = qobject_cast<const ZYLTPTowTrajectory *>(course->GetTrajectory(k)))
                    in.stretches.emplace_back(tow->GetFirstPointIndex(), tow->GetTowMask().GetRawValue());
            input.courses.push_back(std::move(in));
        }
    }
    return input;
}

ZYLTPProcessCheck ZYLTPProcessCheck::Run(const ZYLTPProgram &program)
{
    return Run(Capture(program, program.GetProcessRules()));
}

ZYLTPProcessCheck ZYLTPProcessCheck::Run(const Input &input, const std::atomic_bool *cancel)
{
    ZYLTPProcessCheck check;
    check.m_rules = input.rules;
    check.m_courses.reserve(input.courses.size());
    for (const CourseInput &course : input.courses) {
        if (cancel && cancel->load(std::memory_order_relaxed)) {
            ZYLTPProcessCheck cancelled;
            cancelled.m_rules = input.rules;
            cancelled.m_cancelled = true;
            return cancelled;
        }
        check.CheckCourse(course);
        if (course.key)
            check.m_byKey.emplace(course.key, check.GetNumCourses() - 1);
    }
    return check;
}

void ZYLTPProcessCheck::CheckCourse(const CourseInput &course)
{
    // Tow points only: the roll-in and roll-out points are extrapolated, not laid.
    const int first = 1, last = int(course.tips.size()) - 2;
    CourseResult result{course.procedure, course.course, {}, {}};
    ComputeCurvatures(course.tips, course.normals, first, last, m_rules.towWidth, result.curvatures);
    m_numPoints += std::max(0, last - first + 1);
    // Computed here, off the thread that draws, so that colouring costs the drawing little.
    std::vector<quint8> &colours = result.colours.perPoint;
    colours.resize(result.curvatures.size());
    for (size_t i = 0; i < colours.size(); ++i) {
        colours[i] = quint8(ZYLTPProcessColoring::GetBin(result.curvatures[i], m_rules.minSteeringRadius) + 1);
        if (i > 0 && colours[i] != colours[i - 1])
            result.colours.changes.push_back(int(i));
    }
    const size_t before = m_violations.size();
    CheckSteering(course, result.curvatures, first, last);
    if (last >= first)
        CheckTows(course, ArcLengths(course.tips, first, last), last);
    std::stable_sort(m_violations.begin() + qsizetype(before), m_violations.end(),
                     [](const Violation &a, const Violation &b) { return a.firstPoint < b.firstPoint; });
    m_courses.push_back(std::move(result));
}

void ZYLTPProcessCheck::CheckSteering(const CourseInput &course, const std::vector<float> &curvatures, int first,
                                      int last)
{
    const double limit = 1.0 / m_rules.minSteeringRadius;
    for (int i = first; i <= last; ++i) {
        if (!(std::fabs(curvatures[size_t(i)]) > limit))
            continue;
        Violation v{SteeringRadius, course.procedure, course.course, i, i, {}, 0.0, m_rules.minSteeringRadius};
        double tightest = 0.0;
        for (; i <= last && std::fabs(curvatures[size_t(i)]) > limit; ++i)
            tightest = std::max(tightest, double(std::fabs(curvatures[size_t(i)])));
        v.lastPoint = i - 1;
        v.value = 1.0 / tightest;
        m_violations.push_back(v);
    }
}

void ZYLTPProcessCheck::CheckTows(const CourseInput &course, const std::vector<double> &arc, int last)
{
    int runStart[ZYLCompTowMask::MaxTows] = {};
    int cutAt[ZYLCompTowMask::MaxTows];
    std::fill(std::begin(cutAt), std::end(cutAt), -1);
    quint64 laid = 0, used = 0;
    int laidFrom = -1, laidTo = -1;
    // Adds or cuts within one change of the tow mask that share their other end make one
    // violation.
    auto report = [&](Kind kind, int from, int to, int tow, double limit) {
        const double length = arc[size_t(to)] - arc[size_t(from)];
        if (!(length < limit))
            return;
        for (auto it = m_violations.rbegin(); it != m_violations.rend() && it->course == course.course
             && it->procedure == course.procedure && it->lastPoint == to; ++it)
            if (it->kind == kind && it->firstPoint == from) {
                it->tows.Enable(tow);
                return;
            }
        ZYLCompTowMask tows;
        tows.Enable(tow);
        m_violations.push_back({kind, course.procedure, course.course, from, to, tows, length, limit});
    };
    auto change = [&](int at, quint64 mask) {
        for (quint64 cut = laid & ~mask; cut; cut &= cut - 1) {
            const int t = std::countr_zero(cut);
            report(AddLength, runStart[t], at, t, m_rules.minAddLength);
            cutAt[t] = at;
        }
        for (quint64 added = mask & ~laid; added; added &= added - 1) {
            const int t = std::countr_zero(added);
            if (cutAt[t] >= 0)
                report(CutLength, cutAt[t], at, t, m_rules.minCutLength);
            runStart[t] = at;
        }
        laid = mask;
    };
    for (const auto &[firstPoint, mask] : course.stretches) {
        // A stretch starting at the last tow point lays nothing.
        if (firstPoint >= last)
            break;
        change(firstPoint, mask);
        if (mask) {
            used |= mask;
            laidFrom = laidFrom < 0 ? firstPoint : laidFrom;
            laidTo = -1;
        } else if (laidTo < 0 && laidFrom >= 0) {
            laidTo = firstPoint;
        }
    }
    change(last, 0);
    if (laidFrom < 0)
        return;
    if (laidTo < 0)
        laidTo = last;
    const double length = arc[size_t(laidTo)] - arc[size_t(laidFrom)];
    if (length < m_rules.minCourseLength)
        m_violations.push_back({CourseLength, course.procedure, course.course, laidFrom, laidTo,
                                ZYLCompTowMask(used), length, m_rules.minCourseLength});
}

int ZYLTPProcessCheck::CountViolations(Kind kind) const
{
    return int(std::count_if(m_violations.begin(), m_violations.end(),
                             [kind](const Violation &v) { return v.kind == kind; }));
}

int ZYLTPProcessCheck::FindCourse(int procedure, int course) const
{
    // Courses are checked in stored order, so the list is sorted.
    const auto it = std::lower_bound(m_courses.begin(), m_courses.end(), std::pair(procedure, course),
                                     [](const CourseResult &r, const std::pair<int, int> &key) {
                                         return std::pair(r.procedure, r.course) < key;
                                     });
    return it != m_courses.end() && it->procedure == procedure && it->course == course ? int(it - m_courses.begin())
                                                                                        : -1;
}

const ZYLTPProcessCheck::Colours *ZYLTPProcessCheck::FindColours(const void *key) const
{
    const auto it = m_byKey.find(key);
    return it == m_byKey.end() ? nullptr : &m_courses[size_t(it->second)].colours;
}

std::optional<double> ZYLTPProcessCheck::GetSteeringRadius(int i, int point) const
{
    if (i < 0 || i >= GetNumCourses() || point < 0 || point >= int(GetCurvatures(i).size()))
        return std::nullopt;
    const float k = GetCurvatures(i)[size_t(point)];
    if (std::isnan(k))
        return std::nullopt;
    return k == 0.0f ? std::numeric_limits<double>::infinity() : 1.0 / double(k);
}

QString ZYLTPProcessCheck::KindName(Kind kind)
{
    switch (kind) {
    case SteeringRadius:
        return tr("Steering radius");
    case AddLength:
        return tr("Add length");
    case CutLength:
        return tr("Cut length");
    case CourseLength:
        return tr("Course length");
    }
    return {};
}

const char *ZYLTPProcessCheck::KindKey(Kind kind)
{
    static const char *const keys[] = {"steering_radius", "add_length", "cut_length", "course_length"};
    return keys[std::clamp(int(kind), 0, 3)];
}
