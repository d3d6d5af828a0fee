// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPProgramBuilder.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPBreakRange.h"
#include "ZYLTPCheck.h"
#include "ZYLTPCoursePoints.h"
#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPInspectionProcedure.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPModelRevision.h"
#include "ZYLTPProgram.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPRoller.h"
#include "ZYLTPTowCourse.h"
#include "ZYLTPTowTrajectory.h"

#include "ZYLGeoAssembledCurveOnSurface.h"
#include "ZYLGeoBSplineSurface.h"
#include "ZYLGeoPlane.h"
#include "ZYLSysException.h"

#include <algorithm>
#include <cmath>

namespace {
void CheckValues(const ZYLTPOnPartTrajectory::Values &values)
{
    ZYLTPCheck::Tilt(values.forwardTilt);
    ZYLTPCheck::Tilt(values.sideTilt);
    ZYLTPCheck::FeedRate(values.feedRate);
    ZYLTPCheck::Force(values.compactionForce);
}

// Laying directions from the tips (central differences), in the tangent planes.
std::vector<ZYLMathVector> ComputeDirections(const std::vector<ZYLMathPoint> &tips,
                                             const std::vector<ZYLMathVector> &normals)
{
    const size_t n = tips.size();
    std::vector<ZYLMathVector> directions(n);
    for (size_t i = 0; i < n; ++i) {
        const ZYLMathVector chord = tips[std::min(i + 1, n - 1)] - tips[i > 0 ? i - 1 : 0];
        const ZYLMathVector tangent = chord - normals[i] * normals[i].Dot(chord);
        const std::optional<ZYLMathVector> unit = tangent.Normalized();
        if (!unit)
            throw ZYLSysException(ZYLTPProgramBuilder::tr("Course point %1 has no laying direction").arg(i));
        directions[i] = *unit;
    }
    return directions;
}

// A surface lies within the bounds of a program when its parameters do and, for a B-spline,
// its control points (their hull holds it) or, for a plane, its origin and extents. Other
// surfaces are measured, which builds their search index.
void CheckSurfaceBounds(const ZYLGeoSurface &surface)
{
    const ZYLGeoSurface::Domain domain = surface.GetDomain();
    for (double parameter : {domain.uMin, domain.uMax, domain.vMin, domain.vMax})
        ZYLTPCheck::Coordinate(parameter);
    if (const auto *spline = dynamic_cast<const ZYLGeoBSplineSurface *>(&surface)) {
        for (int i = 0; i < spline->GetNumControlPointsU(); ++i)
            for (int j = 0; j < spline->GetNumControlPointsV(); ++j)
                ZYLTPCheck::Point(spline->GetControlPoint(i, j));
    } else if (const auto *plane = dynamic_cast<const ZYLGeoPlane *>(&surface)) {
        ZYLTPCheck::Point(plane->GetFrame().GetOrigin());
    } else {
        const ZYLMathBoundingBox box = surface.GetBoundingBox();
        ZYLTPCheck::Point(box.GetMin());
        ZYLTPCheck::Point(box.GetMax());
    }
}

bool IsUnit(const ZYLMathVector &v)
{
    return std::fabs(v.GetLength() - 1.0) <= ZYLTPProgramBuilder::FrameTolerance;
}

// Frames stored as given must already be what the course's frames need.
void CheckFramesAsGiven(const std::vector<ZYLMathVector> &normals, const std::vector<ZYLMathVector> &directions)
{
    if (directions.size() != normals.size())
        throw ZYLSysException(ZYLTPProgramBuilder::tr("Frames taken as given need one direction per tow point"));
    for (size_t i = 0; i < normals.size(); ++i) {
        if (!IsUnit(normals[i]) || !IsUnit(directions[i]))
            throw ZYLSysException(ZYLTPProgramBuilder::tr("Course point %1: the tool axis and the direction must be "
                                                          "unit vectors").arg(i));
        if (std::fabs(normals[i].Dot(directions[i])) > ZYLTPProgramBuilder::FrameTolerance)
            throw ZYLSysException(ZYLTPProgramBuilder::tr("Course point %1: the direction is not perpendicular to the "
                                                          "tool axis").arg(i));
    }
}

// Normalises the normals and makes the directions (given or computed from the tips) unit
// and orthogonal to them.
void OrthonormalizeFrames(const std::vector<ZYLMathPoint> &tips, std::vector<ZYLMathVector> &normals,
                          std::vector<ZYLMathVector> &directions)
{
    for (size_t i = 0; i < normals.size(); ++i) {
        const std::optional<ZYLMathVector> normal = normals[i].Normalized();
        if (!normal)
            throw ZYLSysException(ZYLTPProgramBuilder::tr("Course point %1 has no valid tip or normal").arg(i));
        normals[i] = *normal;
    }
    if (directions.empty())
        directions = ComputeDirections(tips, normals);
    for (size_t i = 0; i < normals.size(); ++i) {
        const ZYLMathVector &n = normals[i];
        const std::optional<ZYLMathVector> d = (directions[i] - n * n.Dot(directions[i])).Normalized();
        if (!d)
            throw ZYLSysException(ZYLTPProgramBuilder::tr("Course point %1 has no laying direction").arg(i));
        directions[i] = *d;
    }
}

// Copies `values` into `out` between one extra entry in front and one behind.
template<class T>
void Framed(std::vector<T> &out, const T &first, const std::vector<T> &values, const T &last)
{
    out.reserve(values.size() + 2);
    out.push_back(first);
    out.insert(out.end(), values.begin(), values.end());
    out.push_back(last);
}
} // namespace

ZYLTPProgramBuilder::ZYLTPProgramBuilder() : m_program(new ZYLTPProgram) {}

ZYLTPProgramBuilder::~ZYLTPProgramBuilder()
{
    delete m_program;
}

ZYLTPProgram *ZYLTPProgramBuilder::GetProgram() const
{
    return m_program;
}

ZYLTPProgram *ZYLTPProgramBuilder::TakeProgram()
{
    ZYLTPModelRevision::Bump();
    return std::exchange(m_program, nullptr);
}

void ZYLTPProgramBuilder::SetPlySurface(const ZYLGeoSurface *surface)
{
    if (surface) {
        CheckSurfaceBounds(*surface);
        surface->AddReference();
    }
    if (m_program->m_surface)
        m_program->m_surface->RemoveReference();
    m_program->m_surface = surface;
    ZYLTPModelRevision::Bump();
}

void ZYLTPProgramBuilder::SetProcessRules(const ZYLTPProcessRules &rules)
{
    ZYLTPProcessRules::Check(rules);
    m_program->m_rules = rules;
}

void ZYLTPProgramBuilder::AddPlyBoundary(ZYLGeoAssembledCurveOnSurface *boundary)
{
    if (!boundary)
        throw ZYLSysException(tr("A ply boundary cannot be null"));
    boundary->AddReference();
    m_program->m_boundaries.append(boundary);
}

ZYLTPMachineHead *ZYLTPProgramBuilder::AddMachineHead(const QString &name)
{
    auto *head = new ZYLTPMachineHead(m_program, m_program->GetNumMachineHeads(), name, 0);
    m_program->m_heads.emplace_back(head);
    return head;
}

ZYLTPMachineHead *ZYLTPProgramBuilder::AddMachineHead(const QString &name, int numTows)
{
    // 0 is not a count here: a caller that gives one means a real head.
    if (numTows < 1 || numTows > ZYLTPMachineHead::MaxNumTows)
        throw ZYLSysOutOfBoundsException(numTows, 1, ZYLTPMachineHead::MaxNumTows);
    ZYLTPMachineHead *head = AddMachineHead(name);
    head->m_numTows = numTows;
    return head;
}

ZYLTPRoller *ZYLTPProgramBuilder::AddRoller(const QString &name, double width, double diameter)
{
    ZYLTPCheck::Size(width);
    ZYLTPCheck::Size(diameter);
    auto *roller = new ZYLTPRoller(m_program, m_program->GetNumTools(), name, width, diameter);
    m_program->m_tools.emplace_back(roller);
    return roller;
}

ZYLTPTool *ZYLTPProgramBuilder::AddTool(const QString &name)
{
    auto *tool = new ZYLTPTool(m_program, m_program->GetNumTools(), name);
    m_program->m_tools.emplace_back(tool);
    return tool;
}

void ZYLTPProgramBuilder::SetCollisionPoints(ZYLTPResource *resource,
                                             const QList<std::pair<ZYLMathPoint, double>> &points)
{
    if (!resource || resource->GetProgram() != m_program)
        throw ZYLSysException(tr("The resource does not belong to the program"));
    for (const auto &point : points) {
        ZYLTPCheck::Length(point.second);
        if (!point.first.IsFinite())
            throw ZYLSysException(tr("A collision point is not finite"));
        ZYLTPCheck::Point(point.first);
    }
    resource->m_collisionPoints = points;
}

ZYLTPRollLayupProcedure *ZYLTPProgramBuilder::AddRollLayupProcedure(const QString &name, const QString &description)
{
    auto *procedure = new ZYLTPRollLayupProcedure(m_program, name, description);
    m_program->m_procedures.emplace_back(procedure);
    return procedure;
}

ZYLTPInspectionProcedure *ZYLTPProgramBuilder::AddInspectionProcedure(const QString &name, const QString &description,
                                                                      const ZYLTPTool *scanner,
                                                                      std::vector<ZYLMathPoint> path,
                                                                      double scanFeedRate)
{
    ZYLTPCheck::FeedRate(scanFeedRate);
    for (const ZYLMathPoint &point : path)
        ZYLTPCheck::Point(point);
    if (scanner && scanner->GetProgram() != m_program)
        throw ZYLSysException(tr("The scanner does not belong to the program"));
    auto *procedure =
        new ZYLTPInspectionProcedure(m_program, name, description, scanner, std::move(path), scanFeedRate);
    m_program->m_procedures.emplace_back(procedure);
    return procedure;
}

void ZYLTPProgramBuilder::CheckProcedure(const ZYLTPRollLayupProcedure *procedure) const
{
    if (!procedure || procedure->GetProgram() != m_program)
        throw ZYLSysException(tr("The procedure does not belong to the program"));
}

void ZYLTPProgramBuilder::CheckProcedureParameters(const ProcedureParameters &parameters)
{
    for (double feedRate : {parameters.layingFeedRate, parameters.addingFeedRate, parameters.cuttingFeedRate,
                            parameters.rapidFeedRate})
        ZYLTPCheck::FeedRate(feedRate);
    for (double length : {parameters.rapidApproach, parameters.rapidRetract, parameters.safetyClearance,
                          parameters.addCutDistance})
        ZYLTPCheck::Length(length);
    ZYLTPCheck::Point(parameters.homeFrame.GetOrigin());
    if (parameters.defaultStrategy < ZYLTPCourseLink::Linear || parameters.defaultStrategy > ZYLTPCourseLink::Custom)
        throw ZYLSysOutOfBoundsException(parameters.defaultStrategy, ZYLTPCourseLink::Linear, ZYLTPCourseLink::Custom);
}

void ZYLTPProgramBuilder::SetProcedureParameters(ZYLTPRollLayupProcedure *procedure,
                                                 const ProcedureParameters &parameters)
{
    CheckProcedure(procedure);
    CheckProcedureParameters(parameters);
    procedure->m_layingFeedRate = parameters.layingFeedRate;
    procedure->m_addingFeedRate = parameters.addingFeedRate;
    procedure->m_cuttingFeedRate = parameters.cuttingFeedRate;
    procedure->m_rapidFeedRate = parameters.rapidFeedRate;
    procedure->m_rapidApproach = parameters.rapidApproach;
    procedure->m_rapidRetract = parameters.rapidRetract;
    procedure->m_safetyClearance = parameters.safetyClearance;
    procedure->m_addCutDistance = parameters.addCutDistance;
    procedure->m_homeFrame = parameters.homeFrame;
    procedure->m_defaultStrategy = parameters.defaultStrategy;
    ZYLTPModelRevision::Bump();
}

ZYLTPMachineConfiguration *ZYLTPProgramBuilder::AddMachineConfiguration(ZYLTPRollLayupProcedure *procedure,
                                                                        const ZYLTPMachineHead *head,
                                                                        const ZYLTPTool *tool)
{
    CheckProcedure(procedure);
    if (!tool || tool->GetProgram() != m_program || (head && head->GetProgram() != m_program))
        throw ZYLSysException(tr("A machine configuration needs a tool (and head) of the program"));
    auto *configuration = new ZYLTPMachineConfiguration(head, tool);
    procedure->m_configurations.emplace_back(configuration);
    return configuration;
}

void ZYLTPProgramBuilder::CheckCourseTows(const ZYLTPMachineConfiguration &configuration, const CourseData &data)
{
    if (data.numTows < 0 || data.numTows > ZYLTPMachineHead::MaxNumTows)
        throw ZYLSysOutOfBoundsException(data.numTows, 0, ZYLTPMachineHead::MaxNumTows);
    const ZYLTPMachineHead *head = configuration.GetHead();
    const int headTows = head ? head->GetNumTows() : 0;
    if (headTows > 0 && data.numTows > headTows)
        throw ZYLSysException(tr("The course is %1 tows wide, its head feeds only %2").arg(data.numTows).arg(headTows));
    // Tows are mirrored across the width on reversal and drawn in lanes of it, so a tow
    // outside it has no place.
    const int width = headTows > 0 ? headTows : data.numTows;
    if (width == 0)
        return;
    for (const TowRun &run : data.runs) {
        const int last = std::max(run.towMask.GetLastTow(), run.forcedMask.GetLastTow());
        if (last >= width)
            throw ZYLSysException(headTows > 0 ? tr("The course uses tow %1, its head feeds only %2 tows").arg(last + 1).arg(width)
                                               : tr("The course uses tow %1, it is only %2 tows wide").arg(last + 1).arg(width));
    }
}

ZYLTPTowCourse *ZYLTPProgramBuilder::AddTowCourse(ZYLTPRollLayupProcedure *procedure,
                                                  const ZYLTPMachineConfiguration *configuration, CourseData data)
{
    CheckProcedure(procedure);
    const auto &configurations = procedure->m_configurations;
    if (std::none_of(configurations.begin(), configurations.end(),
                     [configuration](const auto &c) { return c.get() == configuration; }))
        throw ZYLSysException(tr("The machine configuration does not belong to the procedure"));
    const size_t towPoints = data.tips.size();
    if (towPoints < 2)
        throw ZYLSysException(tr("A course needs at least two tow points"));
    if (data.normals.size() != towPoints || (!data.directions.empty() && data.directions.size() != towPoints))
        throw ZYLSysException(tr("A course needs one normal (and direction) per tow point"));
    for (size_t i = 0; i < towPoints; ++i)
    {
        if (!data.tips[i].IsFinite())
            throw ZYLSysException(tr("Course point %1 has no valid tip or normal").arg(i));
        ZYLTPCheck::Point(data.tips[i]);
    }
    int covered = 0;
    for (const TowRun &run : data.runs) {
        if (run.numPoints < 1)
            throw ZYLSysException(tr("A tow run needs at least one point"));
        CheckValues(run.values);
        ZYLTPTowTrajectory::NormalizedRates(run.forcedRates);
        covered += run.numPoints;
    }
    if (covered != int(towPoints))
        throw ZYLSysException(tr("The tow runs cover %1 points, the course has %2").arg(covered).arg(towPoints));
    CheckCourseTows(*configuration, data);
    CheckValues(data.rollInValues);
    CheckValues(data.rollOutValues);
    ZYLTPCheck::Length(data.rollIn);
    ZYLTPCheck::Length(data.rollOut);
    ZYLTPCheck::FeedRate(data.layingFeedRate);
    ZYLTPCheck::FeedRate(data.addFeedRate);
    ZYLTPCheck::FeedRate(data.cutFeedRate);
    ZYLTPCheck::ApproachAngle(data.approachAngle);
    ZYLTPCheck::ApproachAngle(data.retractAngle);
    ZYLTPCheck::Length(data.approachLength);
    ZYLTPCheck::Length(data.retractLength);
    if (data.frameMode == FrameMode::AsGiven)
        CheckFramesAsGiven(data.normals, data.directions);
    else
        OrthonormalizeFrames(data.tips, data.normals, data.directions);
    const std::vector<ZYLMathVector> &normals = data.normals;
    const std::vector<ZYLMathVector> &directions = data.directions;

    std::unique_ptr<ZYLTPTowCourse> course(new ZYLTPTowCourse(procedure, configuration));
    ZYLTPCoursePoints &points = *course->m_points;
    // The roll-in and roll-out points continue the first and last tow points along their
    // laying directions, with their frames.
    Framed(points.tips, data.tips.front() - directions.front() * data.rollIn, data.tips,
           data.tips.back() + directions.back() * data.rollOut);
    Framed(points.normals, normals.front(), normals, normals.back());
    Framed(points.directions, directions.front(), directions, directions.back());
    points.ComputeArcLengths(data.rollOut);
    const size_t n = points.tips.size();

    ZYLTPTowCourse *raw = course.get();
    auto &trajectories = course->m_trajectories;
    trajectories.reserve(data.runs.size() + 4);
    trajectories.emplace_back(new ZYLTPApproachTrajectory(raw, data.approachAngle, data.approachLength));
    trajectories.push_back(std::make_unique<ZYLTPOnPartTrajectory>(raw, 0, 1, data.rollInValues));
    int first = 1;
    for (const TowRun &run : data.runs) {
        trajectories.push_back(std::make_unique<ZYLTPTowTrajectory>(raw, first, run.numPoints, run.values, run.towMask,
                                                                    run.forcedMask, run.forcedRates));
        first += run.numPoints;
    }
    trajectories.push_back(std::make_unique<ZYLTPOnPartTrajectory>(raw, int(n - 1), 1, data.rollOutValues));
    trajectories.emplace_back(new ZYLTPRetractTrajectory(raw, data.retractAngle, data.retractLength));

    course->m_rollIn = data.rollIn;
    course->m_rollOut = data.rollOut;
    course->m_layingFeedRate = data.layingFeedRate;
    course->m_addFeedRate = data.addFeedRate;
    course->m_cutFeedRate = data.cutFeedRate;
    course->m_prefix = data.prefix;
    course->m_suffix = data.suffix;
    course->m_numTows = data.numTows;

    procedure->m_order.push_back(int(procedure->m_courses.size()));
    procedure->m_courses.push_back(std::move(course));
    ZYLTPModelRevision::Bump();
    return raw;
}

ZYLTPBreakRange *ZYLTPProgramBuilder::AddBreakRange(ZYLTPCourse *course, double start, double end)
{
    if (!course || course->GetProgram() != m_program)
        throw ZYLSysException(tr("The course does not belong to the program"));
    ZYLTPCheck::Range(start, 0.0, course->GetLength(), true, true, ZYLSysValue::Length);
    ZYLTPCheck::Range(end, start, course->GetLength(), true, true, ZYLSysValue::Length);
    auto *range = new ZYLTPBreakRange(course, start, end);
    course->m_breakRanges.emplace_back(range);
    return range;
}

void ZYLTPProgramBuilder::SetLayingOrder(ZYLTPRollLayupProcedure *procedure, const QList<int> &order)
{
    CheckProcedure(procedure);
    const int n = procedure->GetNumCourses();
    std::vector<int> position(size_t(n), -1);
    for (int p = 0; p < order.size(); ++p) {
        const int index = order[p];
        if (order.size() != n || index < 0 || index >= n || position[size_t(index)] >= 0)
            throw ZYLSysException(tr("The laying order must list each of the %1 course indexes once").arg(n));
        position[size_t(index)] = p;
    }
    for (const auto &link : procedure->m_links) {
        const ZYLTPCourse *from = link->GetFromCourse();
        const ZYLTPCourse *to = link->GetToCourse();
        const auto pos = [&](const ZYLTPCourse *c) { return position[size_t(procedure->GetCourseIndex(c))]; };
        const bool kept = from && to ? pos(to) == pos(from) + 1 : (from ? pos(from) == n - 1 : pos(to) == 0);
        if (!kept)
            throw ZYLSysException(tr("The laying order separates linked courses"));
    }
    procedure->m_order.assign(order.begin(), order.end());
    ZYLTPModelRevision::Bump();
}

void ZYLTPProgramBuilder::CheckLinkPlace(const ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from,
                                         const ZYLTPCourse *to) const
{
    CheckProcedure(procedure);
    procedure->CheckNewLink(from, to);
    const int last = procedure->GetNumCourses() - 1;
    const bool consecutive = from && to ? procedure->GetCoursePosition(to) == procedure->GetCoursePosition(from) + 1
                                        : (from ? procedure->GetCoursePosition(from) == last
                                                : procedure->GetCoursePosition(to) == 0);
    if (!consecutive)
        throw ZYLSysException(tr("Linked courses must be consecutive in the laying order"));
}

void ZYLTPProgramBuilder::CheckLinkParameters(const LinkParameters &parameters)
{
    if (parameters.detail < ZYLTPCourseLink::Coarse || parameters.detail > ZYLTPCourseLink::Fine)
        throw ZYLSysOutOfBoundsException(parameters.detail, ZYLTPCourseLink::Coarse, ZYLTPCourseLink::Fine);
    for (const std::optional<double> &distance : {parameters.rapidApproach, parameters.rapidRetract})
        if (distance)
            ZYLTPCheck::Length(*distance);
}

// Gives a new link its parameters and adds it to the procedure; the caller has checked them
// and the link's place.
ZYLTPCourseLink *ZYLTPProgramBuilder::Attach(ZYLTPRollLayupProcedure *procedure, std::unique_ptr<ZYLTPCourseLink> link,
                                             const LinkParameters &parameters)
{
    link->m_detail = parameters.detail;
    if (auto *linear = qobject_cast<ZYLTPLinearCourseLink *>(link.get())) {
        linear->m_rapidApproach = parameters.rapidApproach.value_or(linear->m_rapidApproach);
        linear->m_rapidRetract = parameters.rapidRetract.value_or(linear->m_rapidRetract);
    }
    ZYLTPCourseLink *attached = procedure->AttachLink(std::move(link), false);
    ZYLTPModelRevision::Bump();
    return attached;
}

ZYLTPCourseLink *ZYLTPProgramBuilder::AddLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from,
                                              const ZYLTPCourse *to, ZYLTPCourseLink::OffPartMotionStrategy strategy,
                                              const LinkParameters &parameters)
{
    CheckLinkPlace(procedure, from, to);
    if (strategy < ZYLTPCourseLink::Linear || strategy > ZYLTPCourseLink::Custom)
        throw ZYLSysOutOfBoundsException(strategy, ZYLTPCourseLink::Linear, ZYLTPCourseLink::Custom);
    CheckLinkParameters(parameters);
    const bool linear = from && to && strategy == ZYLTPCourseLink::Linear;
    if (!linear && (parameters.rapidApproach || parameters.rapidRetract))
        throw ZYLSysException(tr("Only a linear link between two courses has rapid approach and retract distances"));
    return Attach(procedure, procedure->MakeLink(from, to, strategy), parameters);
}

ZYLTPCourseLink *ZYLTPProgramBuilder::AddLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from,
                                              const ZYLTPCourse *to, ZYLTPCourseLink::OffPartMotionStrategy strategy)
{
    return AddLink(procedure, from, to, strategy, LinkParameters());
}

ZYLTPCourseLink *ZYLTPProgramBuilder::AddCustomLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from,
                                                    const ZYLTPCourse *to, std::vector<ZYLMathAxis> frames)
{
    return AddCustomLink(procedure, from, to, std::move(frames), LinkParameters());
}

ZYLTPCourseLink *ZYLTPProgramBuilder::AddCustomLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from,
                                                    const ZYLTPCourse *to, std::vector<ZYLMathAxis> frames,
                                                    const LinkParameters &parameters)
{
    if (!from || !to)
        throw ZYLSysException(tr("A custom link joins two courses"));
    if (frames.size() < 2)
        throw ZYLSysException(tr("A custom link needs at least two points"));
    for (const ZYLMathAxis &frame : frames)
        ZYLTPCheck::Point(frame.GetOrigin());
    CheckLinkPlace(procedure, from, to);
    CheckLinkParameters(parameters);
    if (parameters.rapidApproach || parameters.rapidRetract)
        throw ZYLSysException(tr("Only a linear link between two courses has rapid approach and retract distances"));
    return Attach(procedure,
                  std::unique_ptr<ZYLTPCourseLink>(new ZYLTPCustomCourseLink(procedure, from, to, std::move(frames))),
                  parameters);
}
