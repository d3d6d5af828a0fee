// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Editing a course as a whole: turning it round, breaking it in two, placing break ranges.
#include "ZYLTPCourse.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPAtomicEdit.h"
#include "ZYLTPBreakRange.h"
#include "ZYLTPCoursePoints.h"
#include "ZYLTPModelRevision.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPTowCourse.h"
#include "ZYLTPTowTrajectory.h"

#include "ZYLFeatChange.h"
#include "ZYLFeatMakeRoom.h"
#include "ZYLFeatRecorder.h"
#include "ZYLSysException.h"

#include <algorithm>
#include <cmath>

namespace {

// Reverses the elements [first, last) of a list. Reversing is its own inverse, so undo and
// redo do the same, and swapping owners of objects cannot fail.
template<class E>
class ReverseRangeChange final : public ZYLFeatChange {
public:
    ReverseRangeChange(std::vector<E> &list, size_t first, size_t last) : m_list(&list), m_first(first), m_last(last)
    {
    }
    void Undo() override { Reverse(); }
    void Redo() override { Reverse(); }

private:
    void Reverse() { std::reverse(m_list->begin() + qsizetype(m_first), m_list->begin() + qsizetype(m_last)); }
    std::vector<E> *m_list;
    size_t m_first;
    size_t m_last;
};

// Moves the element at `index` of one list to the end of another, the same object, and back
// on undo. Room is made before anything moves, so each direction either fails untouched or
// completes.
template<class E>
class TransferChange final : public ZYLFeatChange {
public:
    TransferChange(std::vector<E> &from, size_t index, std::vector<E> &to) : m_from(&from), m_to(&to), m_index(index) {}
    void Redo() override
    {
        ZYLFeatMakeRoom(*m_to);
        m_to->push_back(std::move((*m_from)[m_index]));
        m_from->erase(m_from->begin() + qsizetype(m_index));
    }
    void Undo() override
    {
        ZYLFeatMakeRoom(*m_from);
        m_from->insert(m_from->begin() + qsizetype(m_index), std::move(m_to->back()));
        m_to->pop_back();
    }

private:
    std::vector<E> *m_from;
    std::vector<E> *m_to;
    size_t m_index;
};

template<class E>
void RecordTransfer(std::vector<E> &from, size_t index, std::vector<E> &to)
{
    ZYLFeatRecorder::Record(std::make_unique<TransferChange<E>>(from, index, to));
}

// The opposite of a value, with zero kept as it is: no -0 appears in saved data, and turning
// twice still gives back every value bit for bit.
double Opposite(double value)
{
    return value == 0.0 ? value : -value;
}

ZYLMathVector Opposite(const ZYLMathVector &v)
{
    return ZYLMathVector(Opposite(v.X()), Opposite(v.Y()), Opposite(v.Z()));
}

// Tow t of a band of `width` tows is tow width - 1 - t once the band is seen from the other
// side; bits at or above the width are left where they are.
quint64 MirrorBits(quint64 bits, int width)
{
    const quint64 band = width >= 64 ? ~quint64(0) : (quint64(1) << width) - 1;
    quint64 mirrored = bits & ~band;
    for (int t = 0; t < width; ++t) {
        if ((bits >> t) & 1u)
            mirrored |= quint64(1) << (width - 1 - t);
    }
    return mirrored;
}

QList<double> MirrorRates(QList<double> rates, int width)
{
    // An empty list stands for full rate everywhere, which mirrors onto itself.
    const int n = std::min(width, int(rates.size()));
    for (int t = 0; t < n / 2; ++t)
        std::swap(rates[t], rates[n - 1 - t]);
    return rates;
}

// Appends point `i` of `from` (tip, normal, laying direction) to `to`, optionally with its tip
// moved `offset` mm along its laying direction.
void AppendPoint(ZYLTPCoursePoints &to, const ZYLTPCoursePoints &from, size_t i, double offset = 0.0)
{
    // The same expression as when the roll-in and roll-out distances are set, so that both
    // ways of placing an end point give the same bits.
    to.tips.push_back(offset == 0.0 ? from.tips[i] : from.tips[i] + from.directions[i] * offset);
    to.normals.push_back(from.normals[i]);
    to.directions.push_back(from.directions[i]);
}

void AppendPoints(ZYLTPCoursePoints &to, const ZYLTPCoursePoints &from, size_t first, size_t last)
{
    to.tips.insert(to.tips.end(), from.tips.begin() + qsizetype(first), from.tips.begin() + qsizetype(last));
    to.normals.insert(to.normals.end(), from.normals.begin() + qsizetype(first), from.normals.begin() + qsizetype(last));
    to.directions.insert(to.directions.end(), from.directions.begin() + qsizetype(first),
                         from.directions.begin() + qsizetype(last));
}

ZYLTPOnPartTrajectory *OnPartAt(const std::vector<std::unique_ptr<ZYLTPTrajectory>> &list, int k)
{
    return static_cast<ZYLTPOnPartTrajectory *>(list[size_t(k)].get());
}

ZYLTPOffPartTrajectory *OffPartAt(const std::vector<std::unique_ptr<ZYLTPTrajectory>> &list, size_t k)
{
    return static_cast<ZYLTPOffPartTrajectory *>(list[k].get());
}

} // namespace

// ---------------------------------------------------------------------------------------------
// Reversing

void ZYLTPCourse::CheckInProcedure() const
{
    // A removed course lives on in the history for undo, but is no longer the model's.
    if (m_procedure->GetCourseIndex(this) < 0)
        throw ZYLSysException(tr("The course has been removed from its procedure"));
}

void ZYLTPCourse::Reverse(bool keepLinks)
{
    CheckInProcedure();
    ZYLFeatRecorder::RequireTransaction(QT_TR_NOOP("Reversing a course"));
    auto *towCourse = qobject_cast<ZYLTPTowCourse *>(this);
    const int width = towCourse ? towCourse->GetNumTows() : 0;
    const ZYLTPCoursePoints &old = *m_points;
    const int n = old.GetNumPoints();
    const int lastTowPoint = n - 2;

    auto points = std::make_unique<ZYLTPCoursePoints>();
    points->tips.assign(old.tips.rbegin(), old.tips.rend());
    points->normals.assign(old.normals.rbegin(), old.normals.rend());
    points->directions.reserve(size_t(n));
    for (auto it = old.directions.rbegin(); it != old.directions.rend(); ++it)
        points->directions.push_back(Opposite(*it));
    // The new roll-out distance is the old roll-in distance.
    points->ComputeArcLengths(m_rollIn);
    const double oldLength = GetLength();
    const double newLength = m_rollOut + points->arcLengths.back();

    // A trajectory's values hold over the stretch from its first point to the next one's
    // first point (segment s runs from point s to s + 1), except that the last tow
    // trajectory also covers the last tow point. Turned round, segment s is segment n - 2 - s,
    // so each trajectory keeps its segments [sa, sb] and covers the points from n - 2 - sb on.
    // A last tow trajectory over the last tow point alone lays no segment; nothing could hold
    // it at the new start (the first tow trajectory always lays the first segment), so it
    // stays last, which also makes turning twice give it back.
    const int lastTow = GetNumTrajectories() - 3;
    const bool pointOnlyLast = lastTow > FirstOnPart + 1 && OnPartAt(m_trajectories, lastTow)->m_count == 1;
    const int lastSegmentOwnerEnd = pointOnlyLast ? lastTowPoint - 1 : lastTowPoint;
    struct Cover {
        int first;
        int count;
    };
    std::vector<Cover> covers; // by old trajectory index, on-part ones only
    for (int k = FirstOnPart; k < GetNumTrajectories() - 1; ++k) {
        const ZYLTPOnPartTrajectory *t = OnPartAt(m_trajectories, k);
        if (k == FirstOnPart) {
            covers.push_back({n - 1, 1}); // the roll-in stretch becomes the roll-out one
        } else if (k == GetNumTrajectories() - 2) {
            covers.push_back({0, 1});
        } else if (pointOnlyLast && k == lastTow) {
            covers.push_back({lastTowPoint, 1});
        } else {
            const int sa = t->m_first;
            const int sb = std::min(t->m_first + t->m_count - 1, lastTowPoint - 1);
            const int first = lastTowPoint - sb;
            // The old first tow trajectory becomes the last one laying segments, which runs to
            // the last tow point (or to the one before a point-only last trajectory).
            const int count = k == FirstOnPart + 1 ? lastSegmentOwnerEnd - first + 1 : sb - sa + 1;
            covers.push_back({first, count});
        }
    }

    std::vector<std::pair<double, double>> ranges;
    std::vector<ZYLTPBreakRange::Mirror> mirrors;
    for (const auto &range : m_breakRanges) {
        const ZYLTPBreakRange::Mirror &memo = range->m_mirror;
        if (memo.courseLength == oldLength) {
            ranges.emplace_back(memo.start, memo.end);
        } else {
            ranges.emplace_back(std::clamp(newLength - range->m_end, 0.0, newLength),
                                std::clamp(newLength - range->m_start, 0.0, newLength));
        }
        mirrors.push_back({range->m_start, range->m_end, newLength});
    }

    ZYLTPAtomicEdit(QT_TR_NOOP("Reversing a course"), [&] {
        if (!keepLinks) {
            for (const ZYLTPCourseLink *link : {m_inLink, m_outLink}) {
                if (link)
                    m_procedure->RemoveLink(link);
            }
        }
        for (int k = FirstOnPart; k < GetNumTrajectories() - 1; ++k) {
            ZYLTPOnPartTrajectory *t = OnPartAt(m_trajectories, k);
            const Cover &cover = covers[size_t(k - FirstOnPart)];
            ZYLFeatRecorder::SetValue(t->m_first, cover.first);
            ZYLFeatRecorder::SetValue(t->m_count, cover.count);
            ZYLFeatRecorder::SetValue(t->m_forwardTilt, Opposite(t->m_forwardTilt));
            ZYLFeatRecorder::SetValue(t->m_sideTilt, Opposite(t->m_sideTilt));
            if (auto *tow = qobject_cast<ZYLTPTowTrajectory *>(t)) {
                ZYLFeatRecorder::SetValue(tow->m_towMask, ZYLCompTowMask(MirrorBits(tow->m_towMask.GetRawValue(), width)));
                ZYLFeatRecorder::SetValue(tow->m_forcedMask,
                                          ZYLCompTowMask(MirrorBits(tow->m_forcedMask.GetRawValue(), width)));
                ZYLFeatRecorder::SetValue(tow->m_forcedRates, MirrorRates(tow->m_forcedRates, width));
            }
        }
        ZYLFeatRecorder::Record(std::make_unique<ReverseRangeChange<std::unique_ptr<ZYLTPTrajectory>>>(
            m_trajectories, size_t(FirstOnPart), m_trajectories.size() - 1));
        // Reversed with the others it came right after the new roll-in trajectory.
        if (pointOnlyLast)
            ZYLFeatRecorder::Move(m_trajectories, FirstOnPart + 1, qsizetype(m_trajectories.size()) - 3);

        ZYLTPOffPartTrajectory *approach = OffPartAt(m_trajectories, 0);
        ZYLTPOffPartTrajectory *retract = OffPartAt(m_trajectories, m_trajectories.size() - 1);
        const double approachAngle = approach->m_angle;
        const double approachLength = approach->m_length;
        ZYLFeatRecorder::SetValue(approach->m_angle, retract->m_angle);
        ZYLFeatRecorder::SetValue(approach->m_length, retract->m_length);
        ZYLFeatRecorder::SetValue(retract->m_angle, approachAngle);
        ZYLFeatRecorder::SetValue(retract->m_length, approachLength);

        const double rollIn = m_rollIn;
        ZYLFeatRecorder::SetValue(m_rollIn, m_rollOut);
        ZYLFeatRecorder::SetValue(m_rollOut, rollIn);
        ReplacePointData(std::move(points));

        for (size_t r = 0; r < m_breakRanges.size(); ++r) {
            ZYLTPBreakRange *range = m_breakRanges[r].get();
            ZYLFeatRecorder::SetValue(range->m_start, ranges[r].first);
            ZYLFeatRecorder::SetValue(range->m_end, ranges[r].second);
            ZYLFeatRecorder::SetValue(range->m_mirror, mirrors[r]);
        }
        ZYLFeatRecorder::Record(std::make_unique<ReverseRangeChange<std::unique_ptr<ZYLTPBreakRange>>>(
            m_breakRanges, 0, m_breakRanges.size()));

        // Fixed from now on, so that turning back mirrors over the same width.
        if (towCourse)
            ZYLFeatRecorder::SetValue(towCourse->m_numTows, width);
        ZYLTPModelRevision::Record();
    });
}

// ---------------------------------------------------------------------------------------------
// Breaking

std::unique_ptr<ZYLTPCourse> ZYLTPCourse::CreateSibling() const
{
    if (qobject_cast<const ZYLTPTowCourse *>(this))
        return std::unique_ptr<ZYLTPCourse>(new ZYLTPTowCourse(m_procedure, m_configuration));
    return std::unique_ptr<ZYLTPCourse>(new ZYLTPCourse(m_procedure, m_configuration));
}

int ZYLTPCourse::FindNearestTowPoint(double arcLength) const
{
    // Tow points are 1 to n - 2, at arc length roll-in + arcLengths[i] from the roll-in point.
    const std::vector<double> &arc = m_points->arcLengths;
    const double x = arcLength - m_rollIn;
    const auto begin = arc.begin() + 1;
    const auto end = arc.end() - 1;
    const auto above = std::lower_bound(begin, end, x);
    if (above == begin)
        return 1;
    if (above == end)
        return int(end - arc.begin()) - 1;
    const int i = int(above - arc.begin());
    // On a tie the earlier point wins.
    return x - arc[size_t(i - 1)] <= arc[size_t(i)] - x ? i - 1 : i;
}

ZYLTPCourse *ZYLTPCourse::Break(const ZYLTPBreakRange *breakRange)
{
    if (!breakRange)
        throw ZYLSysException(tr("No break range was given to break the course at"));
    const auto used = std::find_if(m_breakRanges.begin(), m_breakRanges.end(),
                                   [breakRange](const auto &r) { return r.get() == breakRange; });
    if (breakRange->GetCourse() != this || used == m_breakRanges.end())
        throw ZYLSysException(tr("The break range is not one of the course's own"));
    CheckInProcedure();
    ZYLFeatRecorder::RequireTransaction(QT_TR_NOOP("Breaking a course"));
    const ZYLTPCoursePoints &old = *m_points;
    const int n = old.GetNumPoints();
    const int lastTowPoint = n - 2;
    const int split = FindNearestTowPoint(0.5 * (breakRange->GetStart() + breakRange->GetEnd()));
    if (split < 2 || split > lastTowPoint - 1)
        throw ZYLSysException(tr("The course cannot be broken at tow point %1 of %2: each piece needs at least two "
                                 "tow points")
                                  .arg(split)
                                  .arg(lastTowPoint));

    // Everything new is made before the first change, so that a failure here changes nothing.
    // This course keeps points 0 to split and gets a new roll-out point after the split point.
    auto front = std::make_unique<ZYLTPCoursePoints>();
    AppendPoints(*front, old, 0, size_t(split) + 1);
    AppendPoint(*front, old, size_t(split), m_rollOut);
    front->ComputeArcLengths(m_rollOut);

    std::unique_ptr<ZYLTPCourse> piece = CreateSibling();
    ZYLTPCourse *back = piece.get();
    ZYLTPCoursePoints &backPoints = *back->m_points;
    AppendPoint(backPoints, old, size_t(split), -m_rollIn);
    AppendPoints(backPoints, old, size_t(split), size_t(n));
    backPoints.ComputeArcLengths(m_rollOut);
    back->m_rollIn = m_rollIn;
    back->m_rollOut = m_rollOut;
    back->m_layingFeedRate = m_layingFeedRate;
    back->m_addFeedRate = m_addFeedRate;
    back->m_cutFeedRate = m_cutFeedRate;
    back->m_prefix = m_prefix;
    back->m_suffix = m_suffix;
    auto *towCourse = qobject_cast<ZYLTPTowCourse *>(this);
    const int width = towCourse ? towCourse->GetNumTows() : 0;
    if (towCourse)
        static_cast<ZYLTPTowCourse *>(back)->m_numTows = width;

    // The trajectory laying the segment that ends at the split point stays here and ends
    // there; the one covering the split point, if it started before, goes on in the new course
    // as a copy from the split point; every trajectory after moves over.
    const int ending = FindOnPartTrajectory(split - 1);
    const int crossing = FindOnPartTrajectory(split);
    const int firstMoved = crossing == ending ? crossing + 1 : crossing;
    const ZYLTPOffPartTrajectory *approach = OffPartAt(m_trajectories, 0);
    const ZYLTPOffPartTrajectory *retract = OffPartAt(m_trajectories, m_trajectories.size() - 1);
    const int shift = split - 1; // a point index here minus its index in the new course
    auto &backList = back->m_trajectories;
    backList.reserve(m_trajectories.size() - size_t(firstMoved) + 3);
    backList.emplace_back(new ZYLTPApproachTrajectory(back, approach->m_angle, approach->m_length));
    backList.push_back(GetRollInTrajectory()->Clone(0, 1));
    if (crossing == ending) {
        const ZYLTPOnPartTrajectory *t = OnPartAt(m_trajectories, crossing);
        backList.push_back(t->Clone(1, t->m_first + t->m_count - split));
    }
    for (auto &t : backList)
        t->m_course = back;
    std::unique_ptr<ZYLTPTrajectory> newRollOut = GetRollOutTrajectory()->Clone(split + 1, 1);
    std::unique_ptr<ZYLTPTrajectory> newRetract(new ZYLTPRetractTrajectory(this, retract->m_angle, retract->m_length));

    const double splitArc = m_rollIn + old.arcLengths[size_t(split)];
    const double frontLength = m_rollIn + front->arcLengths.back();
    const double backLength = m_rollIn + backPoints.arcLengths.back();
    std::vector<bool> rangeMoves;
    for (const auto &range : m_breakRanges)
        rangeMoves.push_back(0.5 * (range->m_start + range->m_end) > splitArc);

    ZYLTPAtomicEdit(QT_TR_NOOP("Breaking a course"), [&] {
        m_procedure->InsertCourseAfter(this, std::move(piece));

        ZYLFeatRecorder::SetValue(OnPartAt(m_trajectories, ending)->m_count,
                                  split - OnPartAt(m_trajectories, ending)->m_first + 1);
        while (m_trajectories.size() > size_t(firstMoved)) {
            ZYLTPTrajectory *t = m_trajectories[size_t(firstMoved)].get();
            RecordTransfer(m_trajectories, size_t(firstMoved), backList);
            ZYLFeatRecorder::SetValue(t->m_course, back);
            if (auto *onPart = qobject_cast<ZYLTPOnPartTrajectory *>(t))
                ZYLFeatRecorder::SetValue(onPart->m_first, onPart->m_first - shift);
        }
        ZYLFeatMakeRoom(m_trajectories, 2);
        ZYLFeatRecorder::Insert(m_trajectories, qsizetype(m_trajectories.size()), std::move(newRollOut));
        ZYLFeatRecorder::Insert(m_trajectories, qsizetype(m_trajectories.size()), std::move(newRetract));
        ReplacePointData(std::move(front));

        // Ranges: the used one goes, later ones move over shifted to the new course's arc
        // lengths (the split point lies at its roll-in distance there), all are clipped to the
        // course they end up in and forget any earlier reversal.
        size_t r = 0;
        for (size_t i = 0; i < rangeMoves.size(); ++i) {
            ZYLTPBreakRange *range = m_breakRanges[r].get();
            if (range == breakRange) {
                ZYLFeatRecorder::Remove(m_breakRanges, qsizetype(r));
                continue;
            }
            const bool moves = rangeMoves[i];
            const double offset = moves ? splitArc - m_rollIn : 0.0;
            const double length = moves ? backLength : frontLength;
            ZYLFeatRecorder::SetValue(range->m_start, std::clamp(range->m_start - offset, 0.0, length));
            ZYLFeatRecorder::SetValue(range->m_end, std::clamp(range->m_end - offset, 0.0, length));
            ZYLFeatRecorder::SetValue(range->m_mirror, ZYLTPBreakRange::Mirror());
            if (moves) {
                RecordTransfer(m_breakRanges, r, back->m_breakRanges);
                ZYLFeatRecorder::SetValue(range->m_course, back);
            } else {
                ++r;
            }
        }

        if (towCourse)
            ZYLFeatRecorder::SetValue(towCourse->m_numTows, width);
        ZYLTPModelRevision::Record();
        // Last, once both courses have their final geometry: a new link may compute its
        // motion from their ends right away.
        m_procedure->RelinkBrokenCourse(this, back);
    });
    return back;
}

// ---------------------------------------------------------------------------------------------
// Break ranges for a length

std::vector<std::pair<double, double>> ZYLTPCourse::PlanBreakRanges(double length, double &smallestLength) const
{
    const std::vector<double> &arc = m_points->arcLengths;
    const size_t lastTowPoint = arc.size() - 2;
    const double stretch = arc[lastTowPoint];
    double spacing = 0.0;
    for (size_t i = 2; i <= lastTowPoint; ++i)
        spacing = std::max(spacing, arc[i] - arc[i - 1]);
    const double ends = m_rollIn + m_rollOut;
    // A piece of the stretch longer than the largest spacing keeps two tow points after the
    // cuts snap to tow points; that bounds the number of pieces.
    const int maxPieces = spacing > 0.0 ? int(std::ceil(stretch / spacing)) - 1 : 0;
    const auto pieceLength = [&](int pieces) { return ends + stretch / pieces + spacing; };
    smallestLength = maxPieces >= 2 ? std::min(GetLength(), pieceLength(maxPieces)) : GetLength();
    if (maxPieces < 2 || pieceLength(maxPieces) > length)
        return {};
    // At least ceil(L / length) pieces, which the bound above already implies but for rounding.
    int pieces = std::min(maxPieces, std::max(2, int(std::ceil(GetLength() / length))));
    while (pieceLength(pieces) > length)
        ++pieces;
    const double piece = stretch / pieces;
    const double half = 0.5 * std::min(50.0, 0.1 * piece);
    std::vector<std::pair<double, double>> ranges;
    ranges.reserve(size_t(pieces - 1));
    for (int j = 1; j < pieces; ++j) {
        const double middle = m_rollIn + piece * j;
        ranges.emplace_back(middle - half, middle + half);
    }
    return ranges;
}

void ZYLTPCourse::SetBreakRanges(const std::vector<std::pair<double, double>> &ranges)
{
    for (qsizetype r = qsizetype(m_breakRanges.size()) - 1; r >= 0; --r)
        ZYLFeatRecorder::Remove(m_breakRanges, r);
    ZYLFeatMakeRoom(m_breakRanges, ranges.size());
    for (const auto &[start, end] : ranges)
        ZYLFeatRecorder::Insert(m_breakRanges, qsizetype(m_breakRanges.size()),
                                std::make_unique<ZYLTPBreakRange>(this, start, end));
    ZYLTPModelRevision::Record();
}
