// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCourse.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPBreakRange.h"
#include "ZYLTPCheck.h"
#include "ZYLTPCoursePoints.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPMachineHead.h"
#include "ZYLTPModelRevision.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPTowCourse.h"
#include "ZYLTPTowPoint.h"
#include "ZYLTPTowTrajectory.h"

#include "ZYLFeatMakeRoom.h"
#include "ZYLFeatRecorder.h"
#include "ZYLSysException.h"

#include <algorithm>
#include <numeric>

ZYLTPCourse::ZYLTPCourse(ZYLTPRollLayupProcedure *procedure, const ZYLTPMachineConfiguration *configuration)
    : m_procedure(procedure), m_configuration(configuration), m_points(std::make_unique<ZYLTPCoursePoints>())
{
}

ZYLTPCourse::~ZYLTPCourse() = default;

ZYLTPBreakRange::~ZYLTPBreakRange() = default;

const ZYLTPProgram *ZYLTPCourse::GetProgram() const
{
    return m_procedure->GetProgram();
}

int ZYLTPCourse::GetNumPoints() const
{
    return m_points->GetNumPoints();
}

const ZYLTPOnPartPoint *ZYLTPCourse::GetPoint(int i) const
{
    const int n = GetNumPoints();
    if (i < 0 || i >= n)
        return nullptr;
    auto &views = m_points->views;
    // The slot table is allocated on the first request only, so that a course nobody looks at
    // point by point costs nothing but its arrays.
    if (views.empty())
        views.resize(size_t(n));
    std::unique_ptr<ZYLTPOnPartPoint> &view = views[size_t(i)];
    if (!view) {
        if (qobject_cast<const ZYLTPTowCourse *>(this))
            view.reset(new ZYLTPTowPoint(this, m_points.get(), i));
        else
            view.reset(new ZYLTPOnPartPoint(this, m_points.get(), i));
    }
    return view.get();
}

int ZYLTPCourse::GetPointIndex(const ZYLTPOnPartPoint *point) const
{
    if (!point || point->GetCourse() != this)
        return -1;
    const int i = point->GetIndex();
    // A view of replaced point data names this course but is no longer one of its points.
    const auto &views = m_points->views;
    if (i < 0 || size_t(i) >= views.size() || views[size_t(i)].get() != point)
        return -1;
    return i;
}

ZYLMathAxis ZYLTPCourse::GetUntiltedFrame(const ZYLTPCoursePoints &points, int i)
{
    const ZYLMathVector &laying = points.directions[size_t(i)];
    return ZYLMathAxis(points.tips[size_t(i)], laying, points.normals[size_t(i)].Cross(laying));
}

void ZYLTPCourse::ReplacePointData(std::unique_ptr<ZYLTPCoursePoints> points)
{
    ZYLFeatRecorder::SetValue(m_points, std::move(points));
    ZYLTPModelRevision::Record();
}

ZYLMathAxis ZYLTPCourse::GetPointFrame(int i, bool toolFrame) const
{
    const ZYLMathAxis frame = GetUntiltedFrame(*m_points, i);
    if (!toolFrame)
        return frame;
    const ZYLTPOnPartTrajectory *trajectory = GetTrajectoryOfPoint(i);
    return TiltFrame(frame, trajectory->GetForwardTilt(), trajectory->GetSideTilt());
}

ZYLMathAxis ZYLTPCourse::TiltFrame(const ZYLMathAxis &untilted, double forward, double side)
{
    ZYLMathAxis frame = untilted;
    const ZYLMathPoint &tip = untilted.GetOrigin();
    if (side != 0.0)
        frame = frame.Rotated(tip, untilted.GetFirstDirection(), side);
    if (forward != 0.0)
        frame = frame.Rotated(tip, untilted.GetSecondDirection(), forward);
    return frame;
}

const ZYLTPTrajectory *ZYLTPCourse::GetTrajectory(int i) const
{
    return i >= 0 && i < GetNumTrajectories() ? m_trajectories[size_t(i)].get() : nullptr;
}

int ZYLTPCourse::GetTrajectoryIndex(const ZYLTPTrajectory *trajectory) const
{
    if (!trajectory || trajectory->GetCourse() != this)
        return -1;
    if (auto *onPart = qobject_cast<const ZYLTPOnPartTrajectory *>(trajectory)) {
        // On-part trajectories are sorted by their first point: find it without a scan.
        const int k = FindOnPartTrajectory(onPart->GetFirstPointIndex());
        if (k >= 0 && m_trajectories[size_t(k)].get() == trajectory)
            return k;
        return -1;
    }
    for (int k = 0; k < GetNumTrajectories(); ++k) {
        if (m_trajectories[size_t(k)].get() == trajectory)
            return k;
    }
    return -1;
}

const ZYLTPApproachTrajectory *ZYLTPCourse::GetApproachTrajectory() const
{
    return static_cast<const ZYLTPApproachTrajectory *>(m_trajectories.front().get());
}

const ZYLTPOnPartTrajectory *ZYLTPCourse::GetRollInTrajectory() const
{
    return static_cast<const ZYLTPOnPartTrajectory *>(m_trajectories[FirstOnPart].get());
}

const ZYLTPOnPartTrajectory *ZYLTPCourse::GetRollOutTrajectory() const
{
    return static_cast<const ZYLTPOnPartTrajectory *>(m_trajectories[m_trajectories.size() - 2].get());
}

const ZYLTPRetractTrajectory *ZYLTPCourse::GetRetractTrajectory() const
{
    return static_cast<const ZYLTPRetractTrajectory *>(m_trajectories.back().get());
}

int ZYLTPCourse::FindOnPartTrajectory(int pointIndex) const
{
    if (pointIndex < 0 || pointIndex >= GetNumPoints())
        return -1;
    // Binary search over the on-part trajectories (between approach and retract) for the last
    // one starting at or before the point.
    int lo = FirstOnPart;
    int hi = GetNumTrajectories() - 2;
    while (lo < hi) {
        const int mid = (lo + hi + 1) / 2;
        if (static_cast<const ZYLTPOnPartTrajectory *>(m_trajectories[size_t(mid)].get())->m_first <= pointIndex)
            lo = mid;
        else
            hi = mid - 1;
    }
    return lo;
}

const ZYLTPOnPartTrajectory *ZYLTPCourse::GetTrajectoryOfPoint(int i) const
{
    const int k = FindOnPartTrajectory(i);
    return k < 0 ? nullptr : static_cast<const ZYLTPOnPartTrajectory *>(m_trajectories[size_t(k)].get());
}

const ZYLTPBreakRange *ZYLTPCourse::GetBreakRange(int i) const
{
    return i >= 0 && i < GetNumBreakRanges() ? m_breakRanges[size_t(i)].get() : nullptr;
}

double ZYLTPCourse::GetLength() const
{
    return m_rollIn + m_points->arcLengths.back();
}

double ZYLTPCourse::ComputePointLength(const ZYLTPOnPartPoint *point) const
{
    const int i = GetPointIndex(point);
    if (i < 0)
        throw ZYLSysException(tr("The point is not a point of this course"));
    return i == 0 ? 0.0 : m_rollIn + m_points->arcLengths[size_t(i)];
}

double ZYLTPCourse::GetAddCutDistance() const
{
    return m_procedure->GetAddCutDistance();
}

double ZYLTPCourse::GetOnPartTimeEstimate() const
{
    const double addCut = GetAddCutDistance();
    const int firstTow = FirstOnPart + 1;
    const int lastTow = GetNumTrajectories() - 3;
    const auto maskOf = [this, firstTow, lastTow](int k) {
        if (k < firstTow || k > lastTow)
            return quint64(0);
        auto *t = qobject_cast<const ZYLTPTowTrajectory *>(m_trajectories[size_t(k)].get());
        return t ? t->GetTowMask().GetRawValue() : quint64(0);
    };
    const auto startOf = [this](int k) {
        return m_points->arcLengths[size_t(static_cast<const ZYLTPOnPartTrajectory *>(m_trajectories[size_t(k)].get())
                                               ->GetFirstPointIndex())];
    };
    // Zones along the course (arc length from the first tow point): addCut mm after each point
    // where a tow starts and before each point where one stops, across trajectory boundaries.
    std::vector<std::pair<double, double>> addZones;
    std::vector<std::pair<double, double>> cutZones;
    for (int k = firstTow; k <= lastTow; ++k) {
        const double start = startOf(k);
        const double end = start + m_trajectories[size_t(k)]->GetLength();
        if (maskOf(k) & ~maskOf(k - 1))
            addZones.emplace_back(start, start + addCut);
        if (maskOf(k) & ~maskOf(k + 1))
            cutZones.emplace_back(end - addCut, end);
    }
    const auto inZone = [](const std::vector<std::pair<double, double>> &zones, double x) {
        return std::any_of(zones.begin(), zones.end(), [x](const auto &z) { return x > z.first && x < z.second; });
    };
    double minutes = GetRollInTrajectory()->GetLength() / GetRollInTrajectory()->GetFeedRate()
                     + GetRollOutTrajectory()->GetLength() / GetRollOutTrajectory()->GetFeedRate();
    for (int k = firstTow; k <= lastTow; ++k) {
        const ZYLTPTrajectory *trajectory = m_trajectories[size_t(k)].get();
        const double start = startOf(k);
        const double end = start + trajectory->GetLength();
        // Cut the trajectory at every zone end inside it; each piece runs at one rate, add
        // before cut before the trajectory's own.
        std::vector<double> cuts{start, end};
        for (const auto *zones : {&addZones, &cutZones}) {
            for (const auto &[a, b] : *zones) {
                for (double x : {a, b}) {
                    if (x > start && x < end)
                        cuts.push_back(x);
                }
            }
        }
        std::sort(cuts.begin(), cuts.end());
        for (size_t i = 1; i < cuts.size(); ++i) {
            const double length = cuts[i] - cuts[i - 1];
            const double middle = 0.5 * (cuts[i] + cuts[i - 1]);
            const double rate = inZone(addZones, middle)
                                    ? m_addFeedRate
                                    : (inZone(cutZones, middle) ? m_cutFeedRate : trajectory->GetFeedRate());
            minutes += length / rate;
        }
    }
    return minutes * 60.0;
}

void ZYLTPCourse::MoveEndPoint(bool rollIn, double distance)
{
    ZYLTPCoursePoints &p = *m_points;
    const size_t n = p.tips.size();
    // The end point lies on the tangent of the nearest tow point, along its laying direction.
    const size_t point = rollIn ? 0 : n - 1;
    const size_t towPoint = rollIn ? 1 : n - 2;
    const ZYLMathVector step = p.directions[towPoint] * (rollIn ? -distance : distance);
    ZYLFeatRecorder::SetRange(p.tips, qsizetype(point), {p.tips[towPoint] + step});
    if (!rollIn)
        ZYLFeatRecorder::SetRange(p.arcLengths, qsizetype(point), {p.arcLengths[towPoint] + distance});
}

void ZYLTPCourse::SetRollIn(double distance)
{
    ZYLTPCheck::Length(distance);
    if (distance == m_rollIn)
        return;
    ZYLFeatRecorder::SetValue(m_rollIn, distance);
    MoveEndPoint(true, distance);
    ZYLTPModelRevision::Record();
}

void ZYLTPCourse::SetRollOut(double distance)
{
    ZYLTPCheck::Length(distance);
    if (distance == m_rollOut)
        return;
    ZYLFeatRecorder::SetValue(m_rollOut, distance);
    MoveEndPoint(false, distance);
    ZYLTPModelRevision::Record();
}

void ZYLTPCourse::SetLayingFeedRate(double feedRate)
{
    ZYLTPCheck::FeedRate(feedRate);
    ZYLFeatRecorder::RequireTransaction("Setting a feed rate");
    ZYLFeatRecorder::SetValue(m_layingFeedRate, feedRate);
    for (int k = FirstOnPart; k < GetNumTrajectories() - 1; ++k)
        ZYLFeatRecorder::SetValue(static_cast<ZYLTPOnPartTrajectory *>(m_trajectories[size_t(k)].get())->m_feedRate,
                                  feedRate);
    MergeEqualNeighbours(FirstOnPart, GetNumTrajectories() - 2, {});
    ZYLTPModelRevision::Record();
}

void ZYLTPCourse::SetAddFeedRate(double feedRate)
{
    ZYLTPCheck::FeedRate(feedRate);
    if (feedRate == m_addFeedRate)
        return;
    ZYLFeatRecorder::SetValue(m_addFeedRate, feedRate);
    ZYLTPModelRevision::Record();
}

void ZYLTPCourse::SetCutFeedRate(double feedRate)
{
    ZYLTPCheck::FeedRate(feedRate);
    if (feedRate == m_cutFeedRate)
        return;
    ZYLFeatRecorder::SetValue(m_cutFeedRate, feedRate);
    ZYLTPModelRevision::Record();
}

void ZYLTPCourse::SetPrefixInstructions(const QStringList &instructions)
{
    ZYLFeatRecorder::SetValue(m_prefix, instructions);
}

void ZYLTPCourse::SetSuffixInstructions(const QStringList &instructions)
{
    ZYLFeatRecorder::SetValue(m_suffix, instructions);
}

std::pair<int, int> ZYLTPCourse::ResolveRange(const ZYLTPOnPartPoint *start, const ZYLTPOnPartPoint *end) const
{
    const int s = GetPointIndex(start);
    if (s < 0)
        throw ZYLSysException(tr("The start of the range is not a point of this course"));
    const int e = end ? GetPointIndex(end) : GetNumPoints();
    if (e < 0)
        throw ZYLSysException(tr("The end of the range is not a point of this course"));
    if (s > e)
        throw ZYLSysException(tr("The start of the range (point %1) lies after its end (point %2)").arg(s).arg(e));
    return {s, e};
}

namespace {
ZYLTPOnPartTrajectory *OnPart(const std::unique_ptr<ZYLTPTrajectory> &t)
{
    return static_cast<ZYLTPOnPartTrajectory *>(t.get());
}
} // namespace

const ZYLTPTrajectory *ZYLTPCourse::SplitAt(int pointIndex, bool keepBack)
{
    // Splits so that a trajectory starts at pointIndex and returns the new piece (null when
    // nothing was split). The original object keeps the piece before the point, or with
    // keepBack the piece from the point on, so that the piece outside an edited range keeps
    // its identity.
    const int k = FindOnPartTrajectory(pointIndex);
    if (k < 0)
        return nullptr;
    ZYLTPOnPartTrajectory *trajectory = OnPart(m_trajectories[size_t(k)]);
    const int first = trajectory->m_first;
    if (first == pointIndex)
        return nullptr;
    const int end = first + trajectory->m_count;
    ZYLFeatMakeRoom(m_trajectories);
    std::unique_ptr<ZYLTPOnPartTrajectory> piece = keepBack ? trajectory->Clone(first, pointIndex - first)
                                                            : trajectory->Clone(pointIndex, end - pointIndex);
    const ZYLTPTrajectory *created = piece.get();
    ZYLFeatRecorder::Insert(m_trajectories, keepBack ? k : k + 1, std::move(piece));
    if (keepBack) {
        ZYLFeatRecorder::SetValue(trajectory->m_first, pointIndex);
        ZYLFeatRecorder::SetValue(trajectory->m_count, end - pointIndex);
    } else {
        ZYLFeatRecorder::SetValue(trajectory->m_count, pointIndex - first);
    }
    return created;
}

void ZYLTPCourse::MergeEqualNeighbours(int fromTrajectory, int toTrajectory,
                                       const std::vector<const ZYLTPTrajectory *> &created)
{
    // Only tow trajectories merge: roll-in and roll-out stay single-point trajectories. Of two
    // equal neighbours the one that existed before the edit survives (the first when both
    // did), so an edit that changes nothing in the end gives back the original objects.
    const auto isNew = [&created](const ZYLTPTrajectory *t) {
        return std::find(created.begin(), created.end(), t) != created.end();
    };
    const int firstTow = FirstOnPart + 1;
    int k = std::max(fromTrajectory, firstTow);
    int last = std::min(toTrajectory, GetNumTrajectories() - 3);
    while (k < last) {
        ZYLTPOnPartTrajectory *a = OnPart(m_trajectories[size_t(k)]);
        ZYLTPOnPartTrajectory *b = OnPart(m_trajectories[size_t(k + 1)]);
        if (!a->HasSameValues(*b)) {
            ++k;
            continue;
        }
        const int count = a->m_count + b->m_count;
        if (isNew(a) && !isNew(b)) {
            ZYLFeatRecorder::SetValue(b->m_first, a->m_first);
            ZYLFeatRecorder::SetValue(b->m_count, count);
            ZYLFeatRecorder::Remove(m_trajectories, k);
        } else {
            ZYLFeatRecorder::SetValue(a->m_count, count);
            ZYLFeatRecorder::Remove(m_trajectories, k + 1);
        }
        --last;
    }
}

template<class Apply>
void ZYLTPCourse::EditRange(int startIndex, int endIndex, Apply apply)
{
    if (startIndex >= endIndex)
        return;
    ZYLFeatRecorder::RequireTransaction("Editing a range of points");
    std::vector<const ZYLTPTrajectory *> created;
    if (const ZYLTPTrajectory *piece = SplitAt(startIndex, false))
        created.push_back(piece);
    if (endIndex < GetNumPoints()) {
        if (const ZYLTPTrajectory *piece = SplitAt(endIndex, true))
            created.push_back(piece);
    }
    const int first = FindOnPartTrajectory(startIndex);
    const int last = FindOnPartTrajectory(endIndex - 1);
    for (int k = first; k <= last; ++k)
        apply(OnPart(m_trajectories[size_t(k)]));
    // Neighbours on both sides may now equal the edited trajectories.
    MergeEqualNeighbours(first - 1, last + 1, created);
    ZYLTPModelRevision::Record();
}

void ZYLTPCourse::SetRangeTilt(const ZYLTPOnPartPoint *start, const ZYLTPOnPartPoint *end, double forward,
                               double side)
{
    ZYLTPCheck::Tilt(forward);
    ZYLTPCheck::Tilt(side);
    const auto [s, e] = ResolveRange(start, end);
    EditRange(s, e, [&](ZYLTPOnPartTrajectory *t) {
        ZYLFeatRecorder::SetValue(t->m_forwardTilt, forward);
        ZYLFeatRecorder::SetValue(t->m_sideTilt, side);
    });
}

void ZYLTPCourse::SetRangeFeedRate(const ZYLTPOnPartPoint *start, const ZYLTPOnPartPoint *end, double feedRate)
{
    ZYLTPCheck::FeedRate(feedRate);
    const auto [s, e] = ResolveRange(start, end);
    EditRange(s, e, [&](ZYLTPOnPartTrajectory *t) { ZYLFeatRecorder::SetValue(t->m_feedRate, feedRate); });
}

// ---------------------------------------------------------------------------------------------

ZYLTPTowCourse::ZYLTPTowCourse(ZYLTPRollLayupProcedure *procedure, const ZYLTPMachineConfiguration *configuration)
    : ZYLTPCourse(procedure, configuration)
{
}

ZYLTPTowCourse::~ZYLTPTowCourse() = default;

ZYLCompTowMask ZYLTPTowCourse::GetUsedMask() const
{
    ZYLCompTowMask used;
    for (int k = 0; k < GetNumTrajectories(); ++k) {
        if (auto *tow = qobject_cast<const ZYLTPTowTrajectory *>(GetTrajectory(k)))
            used = used | tow->GetTowMask();
    }
    return used;
}

int ZYLTPTowCourse::GetNumTows() const
{
    // The head's count wins: the builder makes sure no mask reaches beyond it.
    if (const ZYLTPMachineHead *head = GetMachineConfiguration().GetHead(); head && head->GetNumTows() > 0)
        return head->GetNumTows();
    return std::max({m_numTows, GetUsedMask().GetLastTow() + 1, 1});
}

QList<double> ZYLTPTowCourse::GetTowLengths() const
{
    QList<double> lengths(GetUsedMask().GetLastTow() + 1, 0.0);
    for (int k = 0; k < GetNumTrajectories(); ++k) {
        auto *tow = qobject_cast<const ZYLTPTowTrajectory *>(GetTrajectory(k));
        if (!tow)
            continue;
        const double length = tow->GetLength();
        const quint64 mask = tow->GetTowMask().GetRawValue();
        for (int t = 0; t < lengths.size(); ++t) {
            if ((mask >> t) & 1u)
                lengths[t] += length;
        }
    }
    return lengths;
}

double ZYLTPTowCourse::GetMaterialUsage() const
{
    const QList<double> lengths = GetTowLengths();
    return std::accumulate(lengths.begin(), lengths.end(), 0.0);
}

void ZYLTPTowCourse::SetPinchState(const ZYLTPTowPoint *start, const ZYLTPTowPoint *end,
                                   const ZYLCompTowMask &forced, const QList<double> &forcedRates)
{
    // A tow outside the course's band does not exist on the machine.
    if (forced.GetLastTow() >= GetNumTows())
        throw ZYLSysException(tr("Tow %1 cannot be forced: the course is %2 tows wide")
                                  .arg(forced.GetLastTow() + 1)
                                  .arg(GetNumTows()));
    QList<double> rates = ZYLTPTowTrajectory::NormalizedRates(forcedRates);
    if (std::all_of(rates.begin(), rates.end(), [](double r) { return r == 1.0; }))
        rates.clear();
    const auto [s, e] = ResolveRange(start, end);
    EditRange(s, e, [&](ZYLTPOnPartTrajectory *t) {
        if (auto *tow = qobject_cast<ZYLTPTowTrajectory *>(t)) {
            ZYLFeatRecorder::SetValue(tow->m_forcedMask, forced);
            ZYLFeatRecorder::SetValue(tow->m_forcedRates, rates);
        }
    });
}
