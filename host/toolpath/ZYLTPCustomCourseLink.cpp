// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Custom links: stored interior motion between derived ends, the point edits, and the
// conversion of a procedure's link into one.
#include "ZYLTPCustomCourseLink.h"

#include "ZYLTPCourse.h"
#include "ZYLTPModelRevision.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPRollLayupProcedure.h"

#include "ZYLFeatChange.h"
#include "ZYLFeatMakeRoom.h"
#include "ZYLFeatRecorder.h"
#include "ZYLSysException.h"
#include "ZYLSysOutOfBoundsException.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace {

using Interpolation = ZYLTPCustomCourseLink::VectorInterpolation;

// The insertion of a run of elements into a list as one change, so that inserting many
// points costs one pass over the list instead of one per point. Room for the run is made
// before the change is applied, and the run keeps its capacity while in the list, so
// neither direction allocates once recorded.
template<class E>
class InsertRunChange final : public ZYLFeatChange {
public:
    InsertRunChange(std::vector<E> &list, size_t index, std::vector<E> run)
        : m_list(&list), m_index(index), m_count(run.size()), m_run(std::move(run))
    {
        ZYLFeatMakeRoom(list, m_count);
    }
    void Redo() override
    {
        m_list->insert(m_list->begin() + std::ptrdiff_t(m_index), std::make_move_iterator(m_run.begin()),
                       std::make_move_iterator(m_run.end()));
        m_run.clear();
    }
    void Undo() override
    {
        const auto first = m_list->begin() + std::ptrdiff_t(m_index);
        const auto last = first + std::ptrdiff_t(m_count);
        m_run.assign(std::make_move_iterator(first), std::make_move_iterator(last));
        m_list->erase(first, last);
    }

private:
    std::vector<E> *m_list;
    size_t m_index;
    size_t m_count;
    std::vector<E> m_run;
};

template<class E>
void RecordInsertRun(std::vector<E> &list, size_t index, std::vector<E> run)
{
    ZYLFeatRecorder::Record(std::make_unique<InsertRunChange<E>>(list, index, std::move(run)));
}

bool IsFinite(const ZYLMathVector &v)
{
    return std::isfinite(v.X()) && std::isfinite(v.Y()) && std::isfinite(v.Z());
}

// The frame `a` turned a fraction t of the shorter rotation that takes it to `b`.
ZYLMathAxis Slerp(const ZYLMathAxis &a, const ZYLMathAxis &b, double t)
{
    // The rotation from a to b in a's own coordinates: its columns are b's directions seen
    // from a. Its quaternion (largest-component branch for accuracy) gives axis and angle.
    const ZYLMathVector c[3] = {a.ToLocal(b.GetFirstDirection()), a.ToLocal(b.GetSecondDirection()),
                                a.ToLocal(b.GetThirdDirection())};
    const auto m = [&c](int row, int column) { return c[column][row]; };
    const double trace = m(0, 0) + m(1, 1) + m(2, 2);
    double w, x, y, z;
    if (trace > 0.0) {
        const double s = 2.0 * std::sqrt(trace + 1.0);
        w = s / 4;
        x = (m(2, 1) - m(1, 2)) / s;
        y = (m(0, 2) - m(2, 0)) / s;
        z = (m(1, 0) - m(0, 1)) / s;
    } else if (m(0, 0) > m(1, 1) && m(0, 0) > m(2, 2)) {
        const double s = 2.0 * std::sqrt(1.0 + m(0, 0) - m(1, 1) - m(2, 2));
        w = (m(2, 1) - m(1, 2)) / s;
        x = s / 4;
        y = (m(0, 1) + m(1, 0)) / s;
        z = (m(0, 2) + m(2, 0)) / s;
    } else if (m(1, 1) > m(2, 2)) {
        const double s = 2.0 * std::sqrt(1.0 + m(1, 1) - m(0, 0) - m(2, 2));
        w = (m(0, 2) - m(2, 0)) / s;
        x = (m(0, 1) + m(1, 0)) / s;
        y = s / 4;
        z = (m(1, 2) + m(2, 1)) / s;
    } else {
        const double s = 2.0 * std::sqrt(1.0 + m(2, 2) - m(0, 0) - m(1, 1));
        w = (m(1, 0) - m(0, 1)) / s;
        x = (m(0, 2) + m(2, 0)) / s;
        y = (m(1, 2) + m(2, 1)) / s;
        z = s / 4;
    }
    // q and -q are the same rotation; w >= 0 picks the shorter way round.
    const ZYLMathVector v = w < 0.0 ? ZYLMathVector(-x, -y, -z) : ZYLMathVector(x, y, z);
    const double angle = 2.0 * std::atan2(v.GetLength(), std::fabs(w));
    return a.Rotated(a.GetOrigin(), a.ToGlobal(v), t * angle);
}

// The frame a fraction t of the way from a to b: origin on the straight line, directions as
// the interpolation kind says.
ZYLMathAxis Blend(const ZYLMathAxis &a, const ZYLMathAxis &b, double t, Interpolation interpolation)
{
    ZYLMathAxis frame = a;
    if (interpolation == ZYLTPCustomCourseLink::SphericalInterpolation) {
        frame = Slerp(a, b, t);
    } else if (interpolation == ZYLTPCustomCourseLink::LinearInterpolation) {
        const auto blended = ZYLMathAxis::Create(
            a.GetOrigin(), a.GetFirstDirection() * (1.0 - t) + b.GetFirstDirection() * t,
            a.GetSecondDirection() * (1.0 - t) + b.GetSecondDirection() * t);
        frame = blended ? *blended : Slerp(a, b, t);
    }
    frame.SetOrigin(ZYLMathPoint::Interpolate(a.GetOrigin(), b.GetOrigin(), t));
    return frame;
}

// The frame turned about its origin by the smallest rotation that takes direction `axis`
// to the unit vector `target`.
ZYLMathAxis Aligned(const ZYLMathAxis &frame, int axis, const ZYLMathVector &target)
{
    const ZYLMathVector current = frame.GetDirection(axis);
    const double angle = current.AngleTo(target);
    if (angle == 0.0)
        return frame;
    ZYLMathVector about = current.Cross(target);
    // Opposite directions leave the rotation axis open: a half turn about a direction of the
    // frame that keeps the already aligned first direction where it is.
    if (about.IsZero(1e-12))
        about = axis == ZYLTPOffPartPoint::FirstAxis ? frame.GetThirdDirection() : frame.GetFirstDirection();
    return frame.Rotated(frame.GetOrigin(), about, angle);
}

void CheckInterpolation(Interpolation interpolation)
{
    if (interpolation < ZYLTPCustomCourseLink::LinearInterpolation
        || interpolation > ZYLTPCustomCourseLink::ConstantInterpolation)
        throw ZYLSysOutOfBoundsException(interpolation, ZYLTPCustomCourseLink::LinearInterpolation,
                                         ZYLTPCustomCourseLink::ConstantInterpolation);
}

} // namespace

ZYLTPCustomCourseLink::ZYLTPCustomCourseLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from,
                                             const ZYLTPCourse *to, std::vector<ZYLMathAxis> frames)
    : ZYLTPCourseLink(procedure, from, to), m_frames(std::move(frames)), m_storedFrom(from), m_storedTo(to)
{
}

ZYLTPCustomCourseLink::~ZYLTPCustomCourseLink() = default;

QList<ZYLTPCustomCourseLink::VectorInterpolation> ZYLTPCustomCourseLink::GetAllVectorInterpolation()
{
    return {LinearInterpolation, SphericalInterpolation, ConstantInterpolation};
}

QString ZYLTPCustomCourseLink::GetVectorInterpolationString(VectorInterpolation interpolation)
{
    switch (interpolation) {
    case LinearInterpolation:
        return tr("Linear");
    case SphericalInterpolation:
        return tr("Spherical");
    case ConstantInterpolation:
        return tr("Constant");
    }
    return {};
}

bool ZYLTPCustomCourseLink::IsTurnedRound() const
{
    // Turning a link round swaps its ends; breaking a course hands one end to another course
    // without turning anything. So the link is turned round when an end now sits where the
    // other one was stored and neither end is where it was.
    const ZYLTPCourse *from = GetFromCourse();
    const ZYLTPCourse *to = GetToCourse();
    return (from == m_storedTo || to == m_storedFrom) && from != m_storedFrom && to != m_storedTo;
}

std::vector<ZYLMathAxis> ZYLTPCustomCourseLink::ComputeFrames() const
{
    std::vector<ZYLMathAxis> frames = m_frames;
    if (IsTurnedRound())
        std::reverse(frames.begin(), frames.end());
    if (!frames.empty()) {
        frames.front() = GetStartFrame();
        frames.back() = GetEndFrame();
    }
    m_current = frames;
    return frames;
}

const std::vector<ZYLMathAxis> &ZYLTPCustomCourseLink::GetFrames() const
{
    GetNumPoints();
    return m_current;
}

void ZYLTPCustomCourseLink::StoreInPresentDirection()
{
    if (IsTurnedRound())
        ZYLFeatRecorder::SetValue(m_frames, std::vector<ZYLMathAxis>(m_frames.rbegin(), m_frames.rend()));
    ZYLFeatRecorder::SetValue(m_storedFrom, GetFromCourse());
    ZYLFeatRecorder::SetValue(m_storedTo, GetToCourse());
}

int ZYLTPCustomCourseLink::IndexOf(const ZYLTPOffPartPoint *point) const
{
    const int i = point ? GetPointIndex(point) : -1;
    if (i < 0)
        throw ZYLSysException(tr("The point is not a point of this link"));
    return i;
}

std::pair<int, int> ZYLTPCustomCourseLink::ResolveRange(const ZYLTPOffPartPoint *from,
                                                        const ZYLTPOffPartPoint *to) const
{
    const int first = IndexOf(from);
    const int last = IndexOf(to);
    if (first > last)
        throw ZYLSysException(
            tr("The start of the range (point %1) lies after its end (point %2)").arg(first).arg(last));
    return {first, last};
}

void ZYLTPCustomCourseLink::CheckInterior(int first, int last, const char *what) const
{
    if (first == 0 || last == GetNumPoints() - 1)
        throw ZYLSysException(
            tr("The first and last points of a link sit on the courses it joins and cannot be %1").arg(tr(what)));
}

void ZYLTPCustomCourseLink::TranslateRange(const ZYLTPOffPartPoint *from, const ZYLTPOffPartPoint *to,
                                           const ZYLMathVector &displacement)
{
    const auto [first, last] = ResolveRange(from, to);
    CheckInterior(first, last, QT_TR_NOOP("moved"));
    if (!IsFinite(displacement))
        throw ZYLSysException(tr("The displacement of linking points must be finite"));
    ZYLFeatRecorder::RequireTransaction("Moving linking points");
    if (displacement.IsZero())
        return;
    StoreInPresentDirection();
    std::vector<ZYLMathAxis> frames(m_frames.begin() + first, m_frames.begin() + last + 1);
    for (ZYLMathAxis &frame : frames)
        frame = frame.Translated(displacement);
    ZYLFeatRecorder::SetRange(m_frames, first, std::move(frames));
    ZYLTPModelRevision::Record();
}

void ZYLTPCustomCourseLink::AlignRange(const ZYLTPOffPartPoint *from, const ZYLTPOffPartPoint *to,
                                       ZYLTPOffPartPoint::Axis axis, const ZYLMathVector &direction)
{
    const auto [first, last] = ResolveRange(from, to);
    CheckInterior(first, last, QT_TR_NOOP("turned"));
    if (axis < ZYLTPOffPartPoint::FirstAxis || axis > ZYLTPOffPartPoint::ThirdAxis)
        throw ZYLSysOutOfBoundsException(axis, ZYLTPOffPartPoint::FirstAxis, ZYLTPOffPartPoint::ThirdAxis);
    const std::optional<ZYLMathVector> target = direction.Normalized();
    if (!target)
        throw ZYLSysException(tr("A linking point cannot be aligned to a zero direction"));
    ZYLFeatRecorder::RequireTransaction("Aligning linking points");
    // The present frames: stored ones, read in the link's present direction.
    const std::vector<ZYLMathAxis> &present = GetFrames();
    std::vector<ZYLMathAxis> frames(present.begin() + first, present.begin() + last + 1);
    bool changed = false;
    for (ZYLMathAxis &frame : frames) {
        const ZYLMathAxis aligned = Aligned(frame, axis, *target);
        changed = changed || !(aligned == frame);
        frame = aligned;
    }
    if (!changed)
        return;
    StoreInPresentDirection();
    ZYLFeatRecorder::SetRange(m_frames, first, std::move(frames));
    ZYLTPModelRevision::Record();
}

void ZYLTPCustomCourseLink::InsertPointsBefore(const ZYLTPOffPartPoint *point, int count,
                                               VectorInterpolation interpolation)
{
    const int i = IndexOf(point);
    if (i == 0)
        throw ZYLSysException(tr("No points can be inserted before the first point of a link"));
    InsertBetween(i - 1, count, interpolation);
}

void ZYLTPCustomCourseLink::InsertPointsAfter(const ZYLTPOffPartPoint *point, int count,
                                              VectorInterpolation interpolation)
{
    const int i = IndexOf(point);
    if (i == GetNumPoints() - 1)
        throw ZYLSysException(tr("No points can be inserted after the last point of a link"));
    InsertBetween(i, count, interpolation);
}

void ZYLTPCustomCourseLink::InsertBetween(int before, int count, VectorInterpolation interpolation)
{
    CheckInterpolation(interpolation);
    if (count < 0)
        throw ZYLSysOutOfBoundsException(count, 0, std::numeric_limits<int>::max());
    ZYLFeatRecorder::RequireTransaction("Inserting linking points");
    if (count == 0)
        return;
    // Taken before anything is recorded: frames and point objects must change together.
    std::vector<std::unique_ptr<ZYLTPOffPartPoint>> &objects = GetPointObjects();
    const std::vector<ZYLMathAxis> &present = GetFrames();
    const ZYLMathAxis a = present[size_t(before)];
    const ZYLMathAxis b = present[size_t(before) + 1];
    std::vector<ZYLMathAxis> frames;
    std::vector<std::unique_ptr<ZYLTPOffPartPoint>> points;
    frames.reserve(size_t(count));
    points.reserve(size_t(count));
    for (int k = 1; k <= count; ++k) {
        frames.push_back(Blend(a, b, double(k) / (count + 1), interpolation));
        points.push_back(std::make_unique<ZYLTPOffPartPoint>(frames.back(), nullptr, this));
    }
    StoreInPresentDirection();
    // Frames and point objects stay one for one: the points take their frames from the
    // stored list by position whenever the link is brought up to date.
    RecordInsertRun(m_frames, size_t(before) + 1, std::move(frames));
    RecordInsertRun(objects, size_t(before) + 1, std::move(points));
    ZYLTPModelRevision::Record();
}

void ZYLTPCustomCourseLink::InterpolateRange(const ZYLTPOffPartPoint *from, const ZYLTPOffPartPoint *to,
                                             VectorInterpolation interpolation)
{
    const auto [first, last] = ResolveRange(from, to);
    CheckInterpolation(interpolation);
    ZYLFeatRecorder::RequireTransaction("Interpolating linking points");
    if (last - first < 2)
        return;
    const std::vector<ZYLMathAxis> &present = GetFrames();
    const ZYLMathAxis a = present[size_t(first)];
    const ZYLMathAxis b = present[size_t(last)];
    std::vector<ZYLMathAxis> frames;
    frames.reserve(size_t(last - first - 1));
    for (int k = first + 1; k < last; ++k)
        frames.push_back(Blend(a, b, double(k - first) / (last - first), interpolation));
    StoreInPresentDirection();
    ZYLFeatRecorder::SetRange(m_frames, first + 1, std::move(frames));
    ZYLTPModelRevision::Record();
}

void ZYLTPCustomCourseLink::RemovePoint(const ZYLTPOffPartPoint *point)
{
    const int i = IndexOf(point);
    CheckInterior(i, i, QT_TR_NOOP("removed"));
    ZYLFeatRecorder::RequireTransaction("Removing a linking point");
    std::vector<std::unique_ptr<ZYLTPOffPartPoint>> &objects = GetPointObjects();
    StoreInPresentDirection();
    ZYLFeatRecorder::Remove(m_frames, i);
    // The removed point object lives on in the change, so undo brings back that very object.
    ZYLFeatRecorder::Remove(objects, i);
    ZYLTPModelRevision::Record();
}

// ---------------------------------------------------------------------------------------------

ZYLTPCustomCourseLink *ZYLTPRollLayupProcedure::ConvertLinkToCustom(ZYLTPCourseLink *link)
{
    if (!link)
        throw ZYLSysException(tr("No link to convert to a custom link"));
    const auto it = std::find_if(m_links.begin(), m_links.end(), [link](const auto &l) { return l.get() == link; });
    if (it == m_links.end())
        throw ZYLSysException(tr("The link does not belong to the procedure \"%1\"").arg(GetName()));
    if (auto *custom = qobject_cast<ZYLTPCustomCourseLink *>(link))
        return custom;
    // The approach and retract links go to and from the machine's home, which is the
    // procedure's own motion; only links between two courses are edited by hand.
    if (qobject_cast<ZYLTPProcedureLink *>(link))
        throw ZYLSysException(tr("The approach and retract links of a procedure cannot be made custom links"));
    ZYLFeatRecorder::RequireTransaction("Converting a link to a custom link");
    std::vector<ZYLMathAxis> frames;
    frames.reserve(size_t(link->GetNumPoints()));
    for (int i = 0; i < link->GetNumPoints(); ++i)
        frames.push_back(link->GetPoint(i)->GetAxis());
    auto *from = const_cast<ZYLTPCourse *>(link->GetFromCourse());
    auto *to = const_cast<ZYLTPCourse *>(link->GetToCourse());
    std::unique_ptr<ZYLTPCustomCourseLink> custom(new ZYLTPCustomCourseLink(this, from, to, std::move(frames)));
    custom->m_detail = link->m_detail;
    ZYLTPCustomCourseLink *raw = custom.get();
    // Same place in the creation order; the old link lives on in the change with its points.
    ZYLFeatRecorder::Replace(m_links, it - m_links.begin(), std::unique_ptr<ZYLTPCourseLink>(std::move(custom)));
    ZYLFeatRecorder::SetValue(from->m_outLink, raw);
    ZYLFeatRecorder::SetValue(to->m_inLink, raw);
    ZYLTPModelRevision::Record();
    return raw;
}
