// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPProgramBuilder.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPBreakRange.h"
#include "ZYLTPCheck.h"
#include "ZYLTPCoursePoints.h"
#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPInspectionProcedure.h"
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
#include "ZYLGeoSurface.h"
#include "ZYLSysException.h"

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
    if (surface)
        surface->AddReference();
    if (m_program->m_surface)
        m_program->m_surface->RemoveReference();
    m_program->m_surface = surface;
    ZYLTPModelRevision::Bump();
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
    auto *head = new ZYLTPMachineHead(m_program, m_program->GetNumMachineHeads(), name);
    m_program->m_heads.emplace_back(head);
    return head;
}

ZYLTPRoller *ZYLTPProgramBuilder::AddRoller(const QString &name, double width, double diameter)
{
    ZYLTPCheck::Range(width, 0.0, ZYLTPCheck::Infinity, false, false, ZYLSysValue::Length);
    ZYLTPCheck::Range(diameter, 0.0, ZYLTPCheck::Infinity, false, false, ZYLSysValue::Length);
    auto *roller = new ZYLTPRoller(m_program, m_program->GetNumTools(), name, width, diameter);
    m_program->m_tools.emplace_back(roller);
    return roller;
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

void ZYLTPProgramBuilder::SetProcedureParameters(ZYLTPRollLayupProcedure *procedure,
                                                 const ProcedureParameters &parameters)
{
    CheckProcedure(procedure);
    for (double feedRate : {parameters.layingFeedRate, parameters.addingFeedRate, parameters.cuttingFeedRate,
                            parameters.rapidFeedRate})
        ZYLTPCheck::FeedRate(feedRate);
    for (double length : {parameters.rapidApproach, parameters.rapidRetract, parameters.safetyClearance,
                          parameters.addCutDistance})
        ZYLTPCheck::Length(length);
    if (parameters.defaultStrategy < ZYLTPCourseLink::Linear || parameters.defaultStrategy > ZYLTPCourseLink::Custom)
        throw ZYLSysOutOfBoundsException(parameters.defaultStrategy, ZYLTPCourseLink::Linear, ZYLTPCourseLink::Custom);
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
    for (size_t i = 0; i < towPoints; ++i) {
        const std::optional<ZYLMathVector> normal = data.normals[i].Normalized();
        if (!data.tips[i].IsFinite() || !normal)
            throw ZYLSysException(tr("Course point %1 has no valid tip or normal").arg(i));
        data.normals[i] = *normal;
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
    std::vector<ZYLMathVector> directions =
        data.directions.empty() ? ComputeDirections(data.tips, data.normals) : std::move(data.directions);
    for (size_t i = 0; i < towPoints; ++i) {
        // Given directions are made orthogonal to the normals, as the frames need.
        const ZYLMathVector &n = data.normals[i];
        const std::optional<ZYLMathVector> d = (directions[i] - n * n.Dot(directions[i])).Normalized();
        if (!d)
            throw ZYLSysException(tr("Course point %1 has no laying direction").arg(i));
        directions[i] = *d;
    }

    std::unique_ptr<ZYLTPTowCourse> course(new ZYLTPTowCourse(procedure, configuration));
    ZYLTPCoursePoints &points = *course->m_points;
    const size_t n = towPoints + 2;
    points.tips.reserve(n);
    points.normals.reserve(n);
    points.directions.reserve(n);
    points.tips.push_back(data.tips.front() - directions.front() * data.rollIn);
    points.normals.push_back(data.normals.front());
    points.directions.push_back(directions.front());
    points.tips.insert(points.tips.end(), data.tips.begin(), data.tips.end());
    points.normals.insert(points.normals.end(), data.normals.begin(), data.normals.end());
    points.directions.insert(points.directions.end(), directions.begin(), directions.end());
    points.tips.push_back(data.tips.back() + directions.back() * data.rollOut);
    points.normals.push_back(data.normals.back());
    points.directions.push_back(directions.back());
    points.ComputeArcLengths(data.rollOut);

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

ZYLTPCourseLink *ZYLTPProgramBuilder::AddLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from,
                                              const ZYLTPCourse *to, ZYLTPCourseLink::OffPartMotionStrategy strategy)
{
    CheckLinkPlace(procedure, from, to);
    if (strategy < ZYLTPCourseLink::Linear || strategy > ZYLTPCourseLink::Custom)
        throw ZYLSysOutOfBoundsException(strategy, ZYLTPCourseLink::Linear, ZYLTPCourseLink::Custom);
    ZYLTPCourseLink *link = procedure->AttachLink(procedure->MakeLink(from, to, strategy), false);
    ZYLTPModelRevision::Bump();
    return link;
}

ZYLTPCourseLink *ZYLTPProgramBuilder::AddCustomLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from,
                                                    const ZYLTPCourse *to, std::vector<ZYLMathAxis> frames)
{
    if (!from || !to)
        throw ZYLSysException(tr("A custom link joins two courses"));
    if (frames.size() < 2)
        throw ZYLSysException(tr("A custom link needs at least two points"));
    CheckLinkPlace(procedure, from, to);
    ZYLTPCourseLink *link = procedure->AttachLink(
        std::unique_ptr<ZYLTPCourseLink>(new ZYLTPCustomCourseLink(procedure, from, to, std::move(frames))), false);
    ZYLTPModelRevision::Bump();
    return link;
}
