// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPRollLayupProcedure.h"

#include "ZYLTPApproachTrajectory.h"
#include "ZYLTPAtomicEdit.h"
#include "ZYLTPCheck.h"
#include "ZYLTPCourse.h"
#include "ZYLTPCustomCourseLink.h"
#include "ZYLTPLinearCourseLink.h"
#include "ZYLTPMachineConfiguration.h"
#include "ZYLTPModelRevision.h"
#include "ZYLTPProcedureLink.h"
#include "ZYLTPRetractTrajectory.h"
#include "ZYLTPSafetyPlaneCourseLink.h"
#include "ZYLTPTool.h"
#include "ZYLTPTowCourse.h"

#include "ZYLFeatMakeRoom.h"
#include "ZYLFeatRecorder.h"
#include "ZYLSysException.h"

#include <QHash>

#include <algorithm>
#include <numeric>

namespace {
// Builder edits assign directly; every other edit is recorded.
template<class T>
void Assign(bool record, T &field, std::type_identity_t<T> value)
{
    if (record)
        ZYLFeatRecorder::SetValue(field, std::move(value));
    else
        field = std::move(value);
}
} // namespace

// Index and position tables, rebuilt after every change of the model.
struct ZYLTPRollLayupProcedure::Lookup {
    quint64 revision = 0;
    QHash<const ZYLTPCourse *, int> indexOf;
    std::vector<int> positionOfIndex;
    std::vector<ZYLTPCourseLink *> linksByPosition;
};

ZYLTPRollLayupProcedure::ZYLTPRollLayupProcedure(ZYLTPProgram *program, const QString &name,
                                                 const QString &description)
    : ZYLTPProcedure(program, name, description)
{
}

ZYLTPRollLayupProcedure::~ZYLTPRollLayupProcedure()
{
    // Links read their courses only when asked; dropping them first keeps teardown simple.
    m_links.clear();
    m_courses.clear();
}

const ZYLTPRollLayupProcedure::Lookup &ZYLTPRollLayupProcedure::GetLookup() const
{
    if (!m_lookup)
        m_lookup = std::make_unique<Lookup>();
    Lookup &lookup = *m_lookup;
    if (lookup.revision == ZYLTPModelRevision::Get())
        return lookup;
    lookup.indexOf.clear();
    lookup.indexOf.reserve(qsizetype(m_courses.size()));
    for (size_t i = 0; i < m_courses.size(); ++i)
        lookup.indexOf.insert(m_courses[i].get(), int(i));
    lookup.positionOfIndex.assign(m_courses.size(), -1);
    for (size_t p = 0; p < m_order.size(); ++p)
        lookup.positionOfIndex[size_t(m_order[p])] = int(p);
    lookup.linksByPosition.clear();
    if (m_approachLink)
        lookup.linksByPosition.push_back(m_approachLink);
    for (int index : m_order) {
        const ZYLTPCourseLink *out = m_courses[size_t(index)]->m_outLink;
        if (out && out != m_retractLink)
            lookup.linksByPosition.push_back(const_cast<ZYLTPCourseLink *>(out));
    }
    if (m_retractLink)
        lookup.linksByPosition.push_back(m_retractLink);
    lookup.revision = ZYLTPModelRevision::Get();
    return lookup;
}

ZYLTPCourse *ZYLTPRollLayupProcedure::GetCourseByIndex(int index) const
{
    return index >= 0 && index < GetNumCourses() ? m_courses[size_t(index)].get() : nullptr;
}

ZYLTPCourse *ZYLTPRollLayupProcedure::GetCourseByPosition(int position) const
{
    return position >= 0 && position < GetNumCourses() ? m_courses[size_t(m_order[size_t(position)])].get() : nullptr;
}

int ZYLTPRollLayupProcedure::GetCourseIndex(const ZYLTPCourse *course) const
{
    return GetLookup().indexOf.value(course, -1);
}

int ZYLTPRollLayupProcedure::GetCoursePosition(const ZYLTPCourse *course) const
{
    const int index = GetCourseIndex(course);
    return index < 0 ? -1 : GetLookup().positionOfIndex[size_t(index)];
}

QList<int> ZYLTPRollLayupProcedure::GetLayingOrder() const
{
    return QList<int>(m_order.begin(), m_order.end());
}

void ZYLTPRollLayupProcedure::CheckCourse(const ZYLTPCourse *course) const
{
    if (GetCourseIndex(course) < 0)
        throw ZYLSysException(tr("The course does not belong to the procedure \"%1\"").arg(GetName()));
}

void ZYLTPRollLayupProcedure::SetLayingOrder(const QList<int> &order)
{
    const int n = GetNumCourses();
    std::vector<int> seen(size_t(n), 0);
    bool permutation = order.size() == n;
    for (int index : order) {
        if (!permutation || index < 0 || index >= n || seen[size_t(index)]++)
            permutation = false;
    }
    if (!permutation)
        throw ZYLSysException(tr("The laying order must list each of the %1 course indexes once").arg(n));
    ZYLFeatRecorder::RequireTransaction("Setting the laying order");
    if (std::equal(m_order.begin(), m_order.end(), order.begin(), order.end()))
        return;
    std::vector<int> position(static_cast<size_t>(n));
    for (int p = 0; p < n; ++p)
        position[size_t(order[p])] = p;
    const auto positionOf = [&](const ZYLTPCourse *c) { return position[size_t(GetCourseIndex(c))]; };
    for (int i = GetNumLinks() - 1; i >= 0; --i) {
        const ZYLTPCourseLink *link = m_links[size_t(i)].get();
        const ZYLTPCourse *from = link->GetFromCourse();
        const ZYLTPCourse *to = link->GetToCourse();
        const bool kept = from && to ? positionOf(to) == positionOf(from) + 1
                                     : (from ? positionOf(from) == n - 1 : positionOf(to) == 0);
        if (!kept)
            DetachLink(i);
    }
    ZYLFeatRecorder::SetValue(m_order, std::vector<int>(order.begin(), order.end()));
    ZYLTPModelRevision::Record();
}

void ZYLTPRollLayupProcedure::RemoveCourse(const ZYLTPCourse *course)
{
    CheckCourse(course);
    ZYLFeatRecorder::RequireTransaction("Removing a course");
    const ZYLTPCourseLink *in = course->m_inLink;
    const ZYLTPCourseLink *out = course->m_outLink;
    const ZYLTPCourse *previous = in ? in->GetFromCourse() : nullptr;
    const ZYLTPCourse *next = out ? out->GetToCourse() : nullptr;
    const bool rejoin = in && out && (previous || next);
    // The new link follows the strategy of the removed course link (the incoming one first).
    const ZYLTPCourseLink::OffPartMotionStrategy strategy =
        previous ? in->GetStrategy() : (out && next ? out->GetStrategy() : m_defaultStrategy);
    for (const ZYLTPCourseLink *link : {in, out}) {
        if (!link)
            continue;
        const auto it = std::find_if(m_links.begin(), m_links.end(), [link](const auto &l) { return l.get() == link; });
        DetachLink(int(it - m_links.begin()));
    }
    const int index = GetCourseIndex(course);
    std::vector<int> order;
    order.reserve(m_order.size() - 1);
    for (int i : m_order) {
        if (i != index)
            order.push_back(i > index ? i - 1 : i);
    }
    ZYLFeatRecorder::Remove(m_courses, index);
    ZYLFeatRecorder::SetValue(m_order, std::move(order));
    ZYLTPModelRevision::Record();
    if (rejoin)
        AttachLink(MakeLink(previous, next, strategy), true);
    ZYLTPModelRevision::Record();
}

void ZYLTPRollLayupProcedure::ReverseLayingOrder()
{
    ZYLFeatRecorder::RequireTransaction("Reversing the laying order");
    ZYLFeatRecorder::SetValue(m_order, std::vector<int>(m_order.rbegin(), m_order.rend()));
    for (const auto &link : m_links)
        SetLinkEnds(link.get(), link->GetToCourse(), link->GetFromCourse());
    for (const auto &course : m_courses) {
        const ZYLTPCourseLink *in = course->m_inLink;
        ZYLFeatRecorder::SetValue(course->m_inLink, course->m_outLink);
        ZYLFeatRecorder::SetValue(course->m_outLink, in);
    }
    ZYLTPProcedureLink *approach = m_approachLink;
    ZYLFeatRecorder::SetValue(m_approachLink, m_retractLink);
    ZYLFeatRecorder::SetValue(m_retractLink, approach);
    ZYLTPModelRevision::Record();
}

void ZYLTPRollLayupProcedure::ReverseOddCourses()
{
    ZYLTPAtomicEdit(QT_TR_NOOP("Reversing courses"), [this] {
        for (size_t p = 1; p < m_order.size(); p += 2)
            m_courses[size_t(m_order[p])]->Reverse(true);
    });
}

void ZYLTPRollLayupProcedure::ReverseAllCourses()
{
    ZYLTPAtomicEdit(QT_TR_NOOP("Reversing courses"), [this] {
        for (const auto &course : m_courses)
            course->Reverse(true);
    });
}

void ZYLTPRollLayupProcedure::BreakAllCourses(double length)
{
    ZYLTPCheck::Range(length, 0.0, ZYLTPCheck::Infinity, false, false, ZYLSysValue::Length);
    ZYLFeatRecorder::RequireTransaction(QT_TR_NOOP("Making break ranges"));
    // Every course is planned before the first change, so that a length one course cannot
    // take changes nothing at all.
    std::vector<std::pair<ZYLTPCourse *, std::vector<std::pair<double, double>>>> plans;
    double smallest = 0.0;
    bool refused = false;
    for (const auto &course : m_courses) {
        double courseSmallest = 0.0;
        std::vector<std::pair<double, double>> ranges = course->PlanBreakRanges(length, courseSmallest);
        smallest = std::max(smallest, courseSmallest);
        if (course->GetLength() <= length)
            continue;
        refused = refused || ranges.empty();
        plans.emplace_back(course.get(), std::move(ranges));
    }
    if (refused)
        throw ZYLSysOutOfBoundsException(length, smallest, ZYLTPCheck::Infinity, true, false, ZYLSysValue::Length);
    ZYLTPAtomicEdit(QT_TR_NOOP("Making break ranges"), [&plans] {
        for (const auto &[course, ranges] : plans)
            course->SetBreakRanges(ranges);
    });
}

void ZYLTPRollLayupProcedure::InsertCourseAfter(const ZYLTPCourse *course, std::unique_ptr<ZYLTPCourse> piece)
{
    // The piece takes index + 1: later indexes shift by one, in the laying order too, where
    // the piece is laid right after the course.
    const int index = GetCourseIndex(course);
    std::vector<int> order;
    order.reserve(m_order.size() + 1);
    for (int i : m_order) {
        order.push_back(i > index ? i + 1 : i);
        if (i == index)
            order.push_back(index + 1);
    }
    ZYLFeatMakeRoom(m_courses);
    ZYLFeatRecorder::Insert(m_courses, index + 1, std::move(piece));
    ZYLFeatRecorder::SetValue(m_order, std::move(order));
    ZYLTPModelRevision::Record();
}

void ZYLTPRollLayupProcedure::RelinkBrokenCourse(ZYLTPCourse *course, ZYLTPCourse *piece)
{
    const ZYLTPCourseLink *out = course->m_outLink;
    if (!out)
        return;
    const auto it = std::find_if(m_links.begin(), m_links.end(), [out](const auto &l) { return l.get() == out; });
    ZYLTPCourseLink *link = it->get();
    ZYLFeatRecorder::SetValue(course->m_outLink, nullptr);
    ZYLFeatRecorder::SetValue(piece->m_outLink, out);
    SetLinkEnds(link, piece, link->GetToCourse());
    AttachLink(MakeLink(course, piece, m_defaultStrategy), true);
    ZYLTPModelRevision::Record();
}

void ZYLTPRollLayupProcedure::SetLinkEnds(ZYLTPCourseLink *link, const ZYLTPCourse *from, const ZYLTPCourse *to)
{
    ZYLFeatRecorder::SetValue(link->m_from, from);
    ZYLFeatRecorder::SetValue(link->m_to, to);
}

// ---------------------------------------------------------------------------------------------

ZYLTPCourseLink *ZYLTPRollLayupProcedure::GetLinkByIndex(int index) const
{
    return index >= 0 && index < GetNumLinks() ? m_links[size_t(index)].get() : nullptr;
}

ZYLTPCourseLink *ZYLTPRollLayupProcedure::GetLinkByPosition(int position) const
{
    const auto &links = GetLookup().linksByPosition;
    return position >= 0 && size_t(position) < links.size() ? links[size_t(position)] : nullptr;
}

QList<const ZYLTPCourse *> ZYLTPRollLayupProcedure::GetCoursesUnlinkedAtApproach() const
{
    QList<const ZYLTPCourse *> courses;
    for (int index : m_order) {
        if (!m_courses[size_t(index)]->m_inLink)
            courses << m_courses[size_t(index)].get();
    }
    return courses;
}

QList<const ZYLTPCourse *> ZYLTPRollLayupProcedure::GetCoursesUnlinkedAtRetract() const
{
    QList<const ZYLTPCourse *> courses;
    for (int index : m_order) {
        if (!m_courses[size_t(index)]->m_outLink)
            courses << m_courses[size_t(index)].get();
    }
    return courses;
}

bool ZYLTPRollLayupProcedure::IsLinkedInChain(const ZYLTPCourse *a, const ZYLTPCourse *b) const
{
    if (!a || !b || GetCourseIndex(a) < 0 || GetCourseIndex(b) < 0)
        return false;
    if (a == b)
        return true;
    // A chain is a path: b is in a's chain when it lies downstream or upstream of a.
    for (const ZYLTPCourse *c = a; c && c->m_outLink;) {
        c = c->m_outLink->GetToCourse();
        if (c == b)
            return true;
    }
    for (const ZYLTPCourse *c = a; c && c->m_inLink;) {
        c = c->m_inLink->GetFromCourse();
        if (c == b)
            return true;
    }
    return false;
}

void ZYLTPRollLayupProcedure::CheckNewLink(const ZYLTPCourse *from, const ZYLTPCourse *to) const
{
    if (!from && !to)
        throw ZYLSysException(tr("A link needs a course at one end at least"));
    if (from)
        CheckCourse(from);
    if (to)
        CheckCourse(to);
    if (from == to)
        throw ZYLSysException(tr("A course cannot be linked to itself"));
    if (from && from->m_outLink)
        throw ZYLSysException(tr("The course already has a link leaving it"));
    if (to && to->m_inLink)
        throw ZYLSysException(tr("The course already has a link leading to it"));
    if (!from && m_approachLink)
        throw ZYLSysException(tr("The procedure already has an approach link"));
    if (!to && m_retractLink)
        throw ZYLSysException(tr("The procedure already has a retract link"));
    if (from && to && IsLinkedInChain(from, to))
        throw ZYLSysException(tr("The link would close a cycle of courses"));
}

std::unique_ptr<ZYLTPCourseLink> ZYLTPRollLayupProcedure::MakeLink(const ZYLTPCourse *from, const ZYLTPCourse *to,
                                                                   ZYLTPCourseLink::OffPartMotionStrategy strategy)
{
    if (!from || !to)
        return std::unique_ptr<ZYLTPCourseLink>(new ZYLTPProcedureLink(this, from, to));
    switch (strategy) {
    case ZYLTPCourseLink::SafetyPlane:
        return std::unique_ptr<ZYLTPCourseLink>(new ZYLTPSafetyPlaneCourseLink(this, from, to));
    case ZYLTPCourseLink::Custom: {
        // A new custom link starts from the straight motion, which the user then edits.
        ZYLTPLinearCourseLink straight(this, from, to);
        return std::unique_ptr<ZYLTPCourseLink>(new ZYLTPCustomCourseLink(this, from, to, straight.ComputeFrames()));
    }
    case ZYLTPCourseLink::Linear:
        break;
    }
    return std::unique_ptr<ZYLTPCourseLink>(new ZYLTPLinearCourseLink(this, from, to));
}

ZYLTPCourseLink *ZYLTPRollLayupProcedure::AttachLink(std::unique_ptr<ZYLTPCourseLink> link, bool record)
{
    ZYLTPCourseLink *raw = link.get();
    auto *from = const_cast<ZYLTPCourse *>(raw->GetFromCourse());
    auto *to = const_cast<ZYLTPCourse *>(raw->GetToCourse());
    ZYLFeatMakeRoom(m_links);
    if (record)
        ZYLFeatRecorder::Insert(m_links, qsizetype(m_links.size()), std::move(link));
    else
        m_links.push_back(std::move(link));
    if (from)
        Assign(record, from->m_outLink, raw);
    else
        Assign(record, m_approachLink, static_cast<ZYLTPProcedureLink *>(raw));
    if (to)
        Assign(record, to->m_inLink, raw);
    else
        Assign(record, m_retractLink, static_cast<ZYLTPProcedureLink *>(raw));
    return raw;
}

void ZYLTPRollLayupProcedure::DetachLink(int index)
{
    ZYLTPCourseLink *link = m_links[size_t(index)].get();
    if (auto *from = const_cast<ZYLTPCourse *>(link->GetFromCourse()))
        ZYLFeatRecorder::SetValue(from->m_outLink, nullptr);
    else
        ZYLFeatRecorder::SetValue(m_approachLink, nullptr);
    if (auto *to = const_cast<ZYLTPCourse *>(link->GetToCourse()))
        ZYLFeatRecorder::SetValue(to->m_inLink, nullptr);
    else
        ZYLFeatRecorder::SetValue(m_retractLink, nullptr);
    ZYLFeatRecorder::Remove(m_links, index);
}

std::vector<int> ZYLTPRollLayupProcedure::ChainOrderAfterLink(const ZYLTPCourse *from, const ZYLTPCourse *to) const
{
    // Cut the laying order into its chains (runs of linked courses), move the chains the new
    // link joins, and lay them out again.
    std::vector<std::vector<int>> chains;
    const ZYLTPCourse *previous = nullptr;
    for (int index : m_order) {
        const ZYLTPCourse *course = m_courses[size_t(index)].get();
        const bool continues = previous && previous->m_outLink && previous->m_outLink->GetToCourse() == course;
        if (!continues)
            chains.emplace_back();
        chains.back().push_back(index);
        previous = course;
    }
    const auto chainOf = [&](const ZYLTPCourse *course) {
        const int index = GetCourseIndex(course);
        return int(std::find_if(chains.begin(), chains.end(),
                                [index](const std::vector<int> &c) {
                                    return std::find(c.begin(), c.end(), index) != c.end();
                                })
                   - chains.begin());
    };
    std::vector<int> merged;
    int place = 0;
    bool hasApproach = !from;
    bool hasRetract = !to;
    const auto take = [&](int chain) {
        const std::vector<int> &c = chains[size_t(chain)];
        merged.insert(merged.end(), c.begin(), c.end());
        hasApproach = hasApproach || (m_approachLink && m_courses[size_t(c.front())]->m_inLink == m_approachLink);
        hasRetract = hasRetract || (m_retractLink && m_courses[size_t(c.back())]->m_outLink == m_retractLink);
    };
    const int fromChain = from ? chainOf(from) : -1;
    const int toChain = to ? chainOf(to) : -1;
    if (fromChain >= 0)
        take(fromChain);
    if (toChain >= 0)
        take(toChain);
    place = fromChain >= 0 ? fromChain : toChain;
    // Remove the joined chains (later one first) and put the merged chain back.
    for (int chain : {std::max(fromChain, toChain), std::min(fromChain, toChain)}) {
        if (chain >= 0) {
            chains.erase(chains.begin() + chain);
            if (chain < place)
                --place;
        }
    }
    if (hasApproach)
        place = 0;
    else if (hasRetract)
        place = int(chains.size());
    chains.insert(chains.begin() + place, merged);
    std::vector<int> order;
    order.reserve(m_order.size());
    for (const std::vector<int> &c : chains)
        order.insert(order.end(), c.begin(), c.end());
    return order;
}

ZYLTPCourseLink *ZYLTPRollLayupProcedure::LinkCourses(const ZYLTPCourse *from, const ZYLTPCourse *to,
                                                      const ZYLTPCourseLink::OffPartMotionStrategy *strategy)
{
    CheckNewLink(from, to);
    const ZYLTPCourseLink::OffPartMotionStrategy chosen = strategy ? *strategy : m_defaultStrategy;
    if (chosen < ZYLTPCourseLink::Linear || chosen > ZYLTPCourseLink::Custom)
        throw ZYLSysOutOfBoundsException(chosen, ZYLTPCourseLink::Linear, ZYLTPCourseLink::Custom);
    ZYLFeatRecorder::RequireTransaction("Linking courses");
    std::vector<int> order = ChainOrderAfterLink(from, to);
    ZYLTPCourseLink *link = AttachLink(MakeLink(from, to, chosen), true);
    ZYLFeatRecorder::SetValue(m_order, std::move(order));
    ZYLTPModelRevision::Record();
    return link;
}

void ZYLTPRollLayupProcedure::RemoveLink(const ZYLTPCourseLink *link)
{
    const auto it = std::find_if(m_links.begin(), m_links.end(), [link](const auto &l) { return l.get() == link; });
    if (!link || it == m_links.end())
        throw ZYLSysException(tr("The link does not belong to the procedure \"%1\"").arg(GetName()));
    DetachLink(int(it - m_links.begin()));
    ZYLTPModelRevision::Record();
}

void ZYLTPRollLayupProcedure::RemoveAllLinks()
{
    ZYLFeatRecorder::RequireTransaction("Removing links");
    if (m_links.empty())
        return;
    for (int i = GetNumLinks() - 1; i >= 0; --i)
        DetachLink(i);
    ZYLTPModelRevision::Record();
}

void ZYLTPRollLayupProcedure::SetDefaultStrategy(ZYLTPCourseLink::OffPartMotionStrategy strategy)
{
    if (strategy < ZYLTPCourseLink::Linear || strategy > ZYLTPCourseLink::Custom)
        throw ZYLSysOutOfBoundsException(strategy, ZYLTPCourseLink::Linear, ZYLTPCourseLink::Custom);
    ZYLFeatRecorder::SetValue(m_defaultStrategy, strategy);
}

// ---------------------------------------------------------------------------------------------

namespace {
// One checked and recorded parameter edit.
template<class Check>
void SetParameter(double &field, double value, Check check)
{
    check(value);
    // Setting the value a field has records nothing, so that a no-op leaves no undo entry.
    if (field == value)
        return;
    ZYLFeatRecorder::SetValue(field, value);
    ZYLTPModelRevision::Record();
}
} // namespace

void ZYLTPRollLayupProcedure::SetLayingFeedrate(double v) { SetParameter(m_layingFeedRate, v, ZYLTPCheck::FeedRate); }
void ZYLTPRollLayupProcedure::SetAddingFeedrate(double v) { SetParameter(m_addingFeedRate, v, ZYLTPCheck::FeedRate); }
void ZYLTPRollLayupProcedure::SetCuttingFeedrate(double v) { SetParameter(m_cuttingFeedRate, v, ZYLTPCheck::FeedRate); }
void ZYLTPRollLayupProcedure::SetRapidFeedRate(double v) { SetParameter(m_rapidFeedRate, v, ZYLTPCheck::FeedRate); }
void ZYLTPRollLayupProcedure::SetRapidApproach(double v) { SetParameter(m_rapidApproach, v, ZYLTPCheck::Length); }
void ZYLTPRollLayupProcedure::SetRapidRetract(double v) { SetParameter(m_rapidRetract, v, ZYLTPCheck::Length); }
void ZYLTPRollLayupProcedure::SetSafetyClearance(double v) { SetParameter(m_safetyClearance, v, ZYLTPCheck::Length); }
void ZYLTPRollLayupProcedure::SetAddCutDistance(double v) { SetParameter(m_addCutDistance, v, ZYLTPCheck::Length); }

void ZYLTPRollLayupProcedure::SetHomeFrame(const ZYLMathAxis &frame)
{
    if (frame == m_homeFrame)
        return;
    ZYLFeatRecorder::SetValue(m_homeFrame, frame);
    ZYLTPModelRevision::Record();
}

const ZYLTPMachineConfiguration *ZYLTPRollLayupProcedure::GetMachineConfiguration(int i) const
{
    return i >= 0 && i < GetNumMachineConfigurations() ? m_configurations[size_t(i)].get() : nullptr;
}

// ---------------------------------------------------------------------------------------------

double ZYLTPRollLayupProcedure::GetLayingTimeEstimate() const
{
    double time = 0.0;
    for (const auto &course : m_courses)
        time += course->GetOnPartTimeEstimate();
    return time;
}

double ZYLTPRollLayupProcedure::GetLinkingTimeEstimate() const
{
    double time = 0.0;
    for (const auto &link : m_links) {
        if (link->GetFromCourse() && link->GetToCourse())
            time += link->GetTimeEstimate();
    }
    return time;
}

double ZYLTPRollLayupProcedure::SumOffPartTime(bool approach) const
{
    const ZYLTPCourseLink *link = approach ? m_approachLink : m_retractLink;
    double time = link ? link->GetTimeEstimate() : 0.0;
    for (const auto &course : m_courses) {
        time += approach ? course->GetApproachTrajectory()->GetTimeEstimate()
                         : course->GetRetractTrajectory()->GetTimeEstimate();
    }
    return time;
}

double ZYLTPRollLayupProcedure::GetApproachTimeEstimate() const
{
    return SumOffPartTime(true);
}

double ZYLTPRollLayupProcedure::GetRetractTimeEstimate() const
{
    return SumOffPartTime(false);
}

double ZYLTPRollLayupProcedure::GetTotalTimeEstimate() const
{
    return GetLayingTimeEstimate() + GetLinkingTimeEstimate() + GetApproachTimeEstimate() + GetRetractTimeEstimate();
}

double ZYLTPRollLayupProcedure::GetOverallCourseLength() const
{
    double length = 0.0;
    for (const auto &course : m_courses)
        length += course->GetLength();
    return length;
}

QList<double> ZYLTPRollLayupProcedure::GetTowLengths() const
{
    QList<double> total;
    for (const auto &course : m_courses) {
        auto *tow = qobject_cast<const ZYLTPTowCourse *>(course.get());
        if (!tow)
            continue;
        const QList<double> lengths = tow->GetTowLengths();
        if (lengths.size() > total.size())
            total.resize(lengths.size(), 0.0);
        for (qsizetype t = 0; t < lengths.size(); ++t)
            total[t] += lengths[t];
    }
    return total;
}

double ZYLTPRollLayupProcedure::GetTotalMaterialLength() const
{
    const QList<double> lengths = GetTowLengths();
    return std::accumulate(lengths.begin(), lengths.end(), 0.0);
}

QList<const ZYLTPResource *> ZYLTPRollLayupProcedure::GetTools() const
{
    QList<const ZYLTPResource *> tools;
    for (const auto &configuration : m_configurations) {
        if (!tools.contains(configuration->GetTool()))
            tools << configuration->GetTool();
    }
    return tools;
}
