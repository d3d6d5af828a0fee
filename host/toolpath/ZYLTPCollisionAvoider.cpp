// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPCollisionAvoider.h"

#include "ZYLTPCheck.h"
#include "ZYLTPCollisionChecker.h"
#include "ZYLTPCourse.h"
#include "ZYLTPCoursePoints.h"
#include "ZYLTPOnPartTrajectory.h"
#include "ZYLTPRollLayupProcedure.h"

#include "ZYLFeatRecorder.h"
#include "ZYLFeatTransaction.h"
#include "ZYLFeatTransactionContext.h"
#include "ZYLSysMessageQueue.h"
#include "ZYLSysValue.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

bool WithinLimits(const ZYLTPCollisionAvoider::Tilt &t)
{
    return std::fabs(t.forward) <= ZYLTPCheck::MaxTilt && std::fabs(t.side) <= ZYLTPCheck::MaxTilt;
}

ZYLTPCollisionAvoider::Tilt ClampToLimits(ZYLTPCollisionAvoider::Tilt t)
{
    t.forward = std::clamp(t.forward, -ZYLTPCheck::MaxTilt, ZYLTPCheck::MaxTilt);
    t.side = std::clamp(t.side, -ZYLTPCheck::MaxTilt, ZYLTPCheck::MaxTilt);
    return t;
}

// Rounds `value` away from `from` onto the grid of the tilt quantum; a change below half a
// quantum is no change.
double RoundAway(double from, double value)
{
    constexpr double q = ZYLTPCollisionAvoider::TiltQuantum;
    if (std::fabs(value - from) < 0.5 * q)
        return from;
    return value > from ? std::ceil(value / q) * q : std::floor(value / q) * q;
}

} // namespace

ZYLTPCollisionAvoider::ZYLTPCollisionAvoider(const ZYLTPCourse &course, ZYLTPCollisionChecker &checker,
                                             double distance)
    : m_course(course), m_checker(checker), m_distance(distance)
{
}

bool ZYLTPCollisionAvoider::IsClear(const ZYLMathAxis &untilted, const Tilt &tilt, double distance)
{
    return !m_checker.Collides(ZYLTPCourse::TiltFrame(untilted, tilt.forward, tilt.side), distance);
}

double ZYLTPCollisionAvoider::GetClearance(const ZYLMathAxis &untilted, const Tilt &tilt)
{
    return m_checker.GetClearance(ZYLTPCourse::TiltFrame(untilted, tilt.forward, tilt.side));
}

double ZYLTPCollisionAvoider::FindClearingChange(const ZYLMathAxis &untilted, const Tilt &from, double angle,
                                                 double limit)
{
    const double c = std::cos(angle), s = std::sin(angle);
    const auto at = [&](double rho) { return Tilt{from.forward + rho * c, from.side + rho * s}; };
    const double needed = m_distance + Margin;
    double cleared = Infinity;
    double blocked = 0.0;
    for (int k = 1;; ++k) {
        const double rho = k * SearchStep;
        if (rho >= limit)
            break;
        const Tilt t = at(rho);
        if (!WithinLimits(t))
            break;
        if (IsClear(untilted, t, needed)) {
            cleared = rho;
            break;
        }
        blocked = rho;
    }
    if (cleared == Infinity)
        return Infinity;
    // The clearing step is about as good as the step size; bisection brings it to 1e-5 rad.
    while (cleared - blocked > 1e-5) {
        const double mid = 0.5 * (blocked + cleared);
        (IsClear(untilted, at(mid), needed) ? cleared : blocked) = mid;
    }
    return cleared;
}

std::optional<ZYLTPCollisionAvoider::Tilt> ZYLTPCollisionAvoider::FindClearingTilt(const ZYLMathAxis &untilted,
                                                                                     const Tilt &from)
{
    // The direction in which the clearance grows fastest is where the answer usually lies;
    // trying it first makes the best change known early, which cuts the other rays short.
    constexpr double h = 1e-3;
    const auto clearance = [&](double df, double ds) {
        return GetClearance(untilted, ClampToLimits({from.forward + df, from.side + ds}));
    };
    const double gf = clearance(h, 0.0) - clearance(-h, 0.0);
    const double gs = clearance(0.0, h) - clearance(0.0, -h);
    const double start = gf == 0.0 && gs == 0.0 ? 0.0 : std::atan2(gs, gf);

    constexpr double spacing = 2.0 * std::numbers::pi / SearchDirections;
    double best = Infinity, bestAngle = start;
    for (int j = 0; j < SearchDirections; ++j) {
        // 0, +1, −1, +2, −2, ... rays away from the gradient.
        const int offset = (j + 1) / 2 * (j % 2 ? 1 : -1);
        const double angle = start + offset * spacing;
        const double rho = FindClearingChange(untilted, from, angle, best);
        if (rho < best) {
            best = rho;
            bestAngle = angle;
        }
    }
    if (best == Infinity)
        return std::nullopt;
    for (double delta = 0.5 * spacing; delta > 1e-3; delta *= 0.5) {
        const double centre = bestAngle;
        for (double angle : {centre - delta, centre + delta}) {
            const double rho = FindClearingChange(untilted, from, angle, best);
            if (rho < best) {
                best = rho;
                bestAngle = angle;
            }
        }
    }
    const Tilt found{from.forward + best * std::cos(bestAngle), from.side + best * std::sin(bestAngle)};
    return Round(untilted, from, found);
}

ZYLTPCollisionAvoider::Tilt ZYLTPCollisionAvoider::Round(const ZYLMathAxis &untilted, const Tilt &from,
                                                         const Tilt &found)
{
    const Tilt rounded = ClampToLimits({RoundAway(from.forward, found.forward), RoundAway(from.side, found.side)});
    return IsClear(untilted, rounded, m_distance + Margin) ? rounded : found;
}

void ZYLTPCollisionAvoider::Smooth(const std::vector<Tilt> &original, const std::vector<std::optional<Tilt>> &pins,
                                   const std::vector<double> &lengths, std::vector<Tilt> *result) const
{
    const size_t n = original.size();
    std::vector<double> lower(n), upper(n);
    for (double Tilt::*angle : {&Tilt::forward, &Tilt::side}) {
        // lower[i] = max over pins k of (pin − rate·|len_i − len_k|), upper[i] = min of
        // (pin + rate·|len_i − len_k|): one sweep each way carries the cones along.
        const auto pinned = [&](size_t i) { return pins[i] && (*pins[i]).*angle != original[i].*angle; };
        double lo = -Infinity, hi = Infinity;
        for (size_t i = 0; i < n; ++i) {
            if (i > 0) {
                lo -= MaxTiltRate * (lengths[i] - lengths[i - 1]);
                hi += MaxTiltRate * (lengths[i] - lengths[i - 1]);
            }
            if (pinned(i)) {
                lo = std::max(lo, (*pins[i]).*angle);
                hi = std::min(hi, (*pins[i]).*angle);
            }
            lower[i] = lo;
            upper[i] = hi;
        }
        lo = -Infinity;
        hi = Infinity;
        for (size_t i = n; i-- > 0;) {
            if (i + 1 < n) {
                lo -= MaxTiltRate * (lengths[i + 1] - lengths[i]);
                hi += MaxTiltRate * (lengths[i + 1] - lengths[i]);
            }
            if (pinned(i)) {
                lo = std::max(lo, (*pins[i]).*angle);
                hi = std::min(hi, (*pins[i]).*angle);
            }
            lower[i] = std::max(lower[i], lo);
            upper[i] = std::min(upper[i], hi);
        }
        for (size_t i = 0; i < n; ++i) {
            const double own = original[i].*angle;
            double value;
            if (lower[i] <= upper[i]) {
                value = std::clamp(own, lower[i], upper[i]);
            } else if (pinned(i)) {
                // Pins too far apart for the rate: a pinned point keeps at least its own
                // correction, whatever its neighbours ask.
                value = (*pins[i]).*angle < own ? upper[i] : lower[i];
            } else {
                value = 0.5 * (lower[i] + upper[i]);
            }
            (*result)[i].*angle = std::clamp(value, -ZYLTPCheck::MaxTilt, ZYLTPCheck::MaxTilt);
        }
    }
}

ZYLTPCollisionAvoider::Plan ZYLTPCollisionAvoider::MakePlan(int start, int end)
{
    Plan plan;
    plan.start = start;
    const int n = std::max(0, end - start);
    const ZYLTPCoursePoints &data = m_course.GetPointData();
    std::vector<ZYLMathAxis> frames;
    std::vector<Tilt> original;
    std::vector<double> lengths;
    frames.reserve(size_t(n));
    original.reserve(size_t(n));
    lengths.reserve(size_t(n));
    for (int i = start; i < end; ++i) {
        frames.push_back(ZYLTPCourse::GetUntiltedFrame(data, i));
        const ZYLTPOnPartTrajectory *trajectory = m_course.GetTrajectoryOfPoint(i);
        original.push_back({trajectory->GetForwardTilt(), trajectory->GetSideTilt()});
        // Lengths along the course: the roll-in point is the roll-in distance before the
        // first tow point, from which the stored arc lengths count.
        lengths.push_back(i == 0 ? 0.0 : m_course.GetRollIn() + data.arcLengths[size_t(i)]);
    }

    plan.tilts = original;
    std::vector<std::optional<Tilt>> pins(static_cast<size_t>(n));
    std::vector<bool> hopeless(size_t(n), false);
    for (int round = 0; round < MaxRounds; ++round) {
        bool changed = false;
        for (size_t i = 0; i < size_t(n); ++i) {
            if (hopeless[i] || IsClear(frames[i], plan.tilts[i], m_distance))
                continue;
            const std::optional<Tilt> found = FindClearingTilt(frames[i], plan.tilts[i]);
            if (!found) {
                hopeless[i] = true;
                continue;
            }
            pins[i] = found;
            changed = true;
        }
        if (!changed)
            break;
        Smooth(original, pins, lengths, &plan.tilts);
    }
    for (size_t i = 0; i < size_t(n); ++i) {
        if (!IsClear(frames[i], plan.tilts[i], m_distance))
            plan.uncleared.push_back(start + int(i));
    }
    return plan;
}

void ZYLTPCourse::AvoidCollisions(const ZYLGeoSurface *surface, bool direction, double distance,
                                  const QList<std::pair<ZYLMathPoint, double>> &collisionPoints,
                                  const ZYLTPOnPartPoint *from, const ZYLTPOnPartPoint *to)
{
    // Everything is checked and planned before the first change.
    ZYLTPCollisionChecker checker(surface, direction, collisionPoints);
    ZYLTPCollisionChecker::CheckTolerance(distance);
    // Plain variables, not a structured binding: the lambda below captures them, which clang
    // before 16 refuses for bindings.
    const std::pair<int, int> range = ResolveRange(from, to);
    const int start = range.first, end = range.second;
    ZYLFeatTransaction *transaction = ZYLFeatRecorder::RequireTransaction(QT_TR_NOOP("Avoiding collisions"));
    const ZYLTPCollisionAvoider::Plan plan = ZYLTPCollisionAvoider(*this, checker, distance).MakePlan(start, end);

    std::vector<std::pair<int, int>> runs;
    const auto changedAt = [&](int i) {
        const ZYLTPOnPartTrajectory *trajectory = GetTrajectoryOfPoint(i);
        return plan.tilts[size_t(i - start)]
               != ZYLTPCollisionAvoider::Tilt{trajectory->GetForwardTilt(), trajectory->GetSideTilt()};
    };
    for (int i = start; i < end;) {
        if (!changedAt(i)) {
            ++i;
            continue;
        }
        int j = i + 1;
        while (j < end && changedAt(j) && plan.tilts[size_t(j - start)] == plan.tilts[size_t(i - start)])
            ++j;
        runs.emplace_back(i, j);
        i = j;
    }
    if (!runs.empty()) {
        // A nested transaction of its own, so that a failure half-way takes back exactly the
        // tilts set so far.
        ZYLFeatTransactionContext context(transaction->GetContainer(), tr("Avoid collisions"), false,
                                          ZYLFeatTransactionContext::NoAutoUpdate);
        for (const auto &[first, last] : runs) {
            const ZYLTPCollisionAvoider::Tilt &tilt = plan.tilts[size_t(first - start)];
            SetRangeTilt(GetPoint(first), GetPoint(last), tilt.forward, tilt.side);
        }
        context.FlagComplete();
    }

    const int position = m_procedure ? m_procedure->GetCoursePosition(this) : -1;
    for (int i : plan.uncleared) {
        ZYLSysMessageQueue::Post(
            tr("Course %1, point %2: no tilt within ±%3 keeps the machine %4 away from the part")
                .arg(position + 1)
                .arg(i + 1)
                .arg(ZYLSysValue(ZYLSysValue::Angle, ZYLTPCheck::MaxTilt).ToString(),
                     ZYLSysValue(ZYLSysValue::Length, distance).ToString()),
            ZYLSysMessageQueue::Error);
    }
}
