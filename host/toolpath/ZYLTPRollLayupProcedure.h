// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCourseLink.h"
#include "ZYLTPProcedure.h"

#include "ZYLMathAxis.h"

#include <QCoreApplication>
#include <QList>

#include <memory>
#include <vector>

class ZYLTPCourse;
class ZYLTPCustomCourseLink;
class ZYLTPMachineConfiguration;
class ZYLTPProcedureLink;

/// A roll layup procedure: courses laid one after another, joined by links.
///
/// Courses are kept in a stored list (a course's index, from 0) and, separately, in a laying
/// order (`GetLayingOrder()`: entry p is the index of the course laid p-th).
///
/// Links. `GetNumLinks()`/`GetLinkByIndex(i)` list every link, the approach and retract
/// links included, in creation order (never null for a valid index); `GetLinkByPosition(p)`
/// lists them in laying order: the approach link first, then the link leaving the course
/// at laying position 0, 1, ..., the retract link last. A course has at most one incoming and
/// one outgoing link. Linked courses form chains, and the laying order always keeps each
/// chain contiguous: `LinkCourses(a, b)` moves b's chain right after a's chain; the chain
/// holding the approach link is laid first and the one holding the retract link last (a
/// chain holding both is laid first). `SetLayingOrder` removes the links the new order
/// breaks (a course link whose courses are no longer consecutive, an approach link whose
/// course is no longer first, a retract link whose course is no longer last).
/// `ReverseLayingOrder` reverses the order and turns every link round (the approach link
/// becomes the retract link and the other way round). `RemoveCourse` removes the course's
/// links and joins its neighbours in the chain with a new link of the removed incoming
/// link's strategy. A null strategy means the procedure's default (`GetDefaultStrategy`,
/// Linear unless set).
///
/// Parameters (all recorded, ranges in each setter): the default feed rates given to courses
/// (laying, adding, cutting, > 0 mm/min), the rapid feed rate of off-part motion (> 0
/// mm/min), the rapid approach and retract distances (>= 0 mm), the home frame of the
/// machine, the safety clearance of safety plane links (>= 0 mm) and the add/cut distance
/// (>= 0 mm; see `ZYLTPCourse`).
///
/// Estimates (s) and lengths (mm) are computed: laying time = sum of the courses' on-part
/// times; linking time = sum of the times of the links between courses; approach time = the
/// approach link's time plus the courses' approach trajectories' times; retract time alike;
/// total = their sum. Off-part motion runs at the rapid feed rate.
class ZYLTOOLPATH_EXPORT ZYLTPRollLayupProcedure : public ZYLTPProcedure {
    Q_OBJECT
public:
    ~ZYLTPRollLayupProcedure() override;

    // Courses
    int GetNumCourses() const { return int(m_courses.size()); }
    ZYLTPCourse *GetCourseByIndex(int index) const;
    ZYLTPCourse *GetCourseByPosition(int position) const;
    /// Return -1 for a course of another procedure or null.
    int GetCourseIndex(const ZYLTPCourse *course) const;
    int GetCoursePosition(const ZYLTPCourse *course) const;
    QList<int> GetLayingOrder() const;
    /// Stores a new order; throws `ZYLSysException` for a list that is not a permutation of
    /// the course indexes. Removes the links it breaks (see the class comment).
    void SetLayingOrder(const QList<int> &order);
    /// Removes the course (see the class comment); throws for a course of another procedure.
    void RemoveCourse(const ZYLTPCourse *course);
    void ReverseLayingOrder();
    /// Reverses the courses at odd laying positions (1, 3, 5, ...), so that consecutive
    /// courses run in opposite directions when they all ran alike; links are kept (see
    /// `ZYLTPCourse::Reverse`). Recorded as one edit: nothing changes if any part fails.
    void ReverseOddCourses();
    /// Reverses every course; links are kept. Recorded as one edit.
    void ReverseAllCourses();
    /// Makes break ranges (it does not break): every course longer than `length` (> 0 mm)
    /// gets, in place of its break ranges, n - 1 ranges centred at the points dividing its
    /// tow stretch (first to last tow point) into n equal pieces, so that breaking at all of
    /// them leaves no course longer than `length`. Each piece gets a roll-in and a roll-out
    /// and is cut at a tow point (within half a point spacing of the division point), so n
    /// is the smallest count from ceil(L / length) up with roll-in + roll-out + S / n + h <=
    /// `length` (L the course length, S the tow stretch, h the largest spacing of its tow
    /// points). Each range is min(50 mm, a tenth of a piece) wide, centred on its point.
    /// Courses not longer than `length` keep their ranges.
    /// Throws `ZYLSysOutOfBoundsException`, changing nothing, for a length <= 0, and for a
    /// length that a course longer than it cannot be broken down to that way (pieces must
    /// stay longer than h, so that each keeps two tow points): its range then starts at the
    /// smallest length every course allows.
    void BreakAllCourses(double length);

    // Links
    int GetNumLinks() const { return int(m_links.size()); }
    ZYLTPCourseLink *GetLinkByIndex(int index) const;
    ZYLTPCourseLink *GetLinkByPosition(int position) const;
    ZYLTPProcedureLink *GetApproachLink() const { return m_approachLink; }
    ZYLTPProcedureLink *GetRetractLink() const { return m_retractLink; }
    /// Courses without an incoming (outgoing) link, in laying order.
    QList<const ZYLTPCourse *> GetCoursesUnlinkedAtApproach() const;
    QList<const ZYLTPCourse *> GetCoursesUnlinkedAtRetract() const;
    /// Returns whether both courses belong to one chain of links.
    bool IsLinkedInChain(const ZYLTPCourse *a, const ZYLTPCourse *b) const;
    /// Links `from` to `to` (null from: approach link, null to: retract link) with a
    /// strategy (null: the default) and returns the new link. Throws `ZYLSysException`, with
    /// nothing changed, for: both null, a course of another procedure, a link from a course
    /// to itself, a second outgoing link of from or incoming link of to, a second approach or
    /// retract link, a cycle.
    ZYLTPCourseLink *LinkCourses(const ZYLTPCourse *from, const ZYLTPCourse *to,
                                 const ZYLTPCourseLink::OffPartMotionStrategy *strategy);
    /// Removes a link of the procedure; throws `ZYLSysException` for any other.
    void RemoveLink(const ZYLTPCourseLink *link);
    /// Removes every link, the approach and retract links included.
    void RemoveAllLinks();
    /// Replaces `link`, a link of this procedure, by a custom link with the same courses and
    /// the same points and returns it (a custom link is returned as it is). Throws
    /// `ZYLSysException` for a null link or a link of another procedure.
    ZYLTPCustomCourseLink *ConvertLinkToCustom(ZYLTPCourseLink *link);
    /// The strategy of links made with a null strategy (Linear by default); throws
    /// `ZYLSysOutOfBoundsException` for a value that is not a strategy.
    ZYLTPCourseLink::OffPartMotionStrategy GetDefaultStrategy() const { return m_defaultStrategy; }
    void SetDefaultStrategy(ZYLTPCourseLink::OffPartMotionStrategy strategy);

    // Parameters. Each setter records its change and throws `ZYLSysOutOfBoundsException`,
    // changing nothing, for a value outside the range given.
    /// Default feed rates given to new courses (the "Reset" values): > 0 mm/min.
    double GetLayingFeedrate() const { return m_layingFeedRate; }
    void SetLayingFeedrate(double feedRate);
    double GetAddingFeedrate() const { return m_addingFeedRate; }
    void SetAddingFeedrate(double feedRate);
    double GetCuttingFeedrate() const { return m_cuttingFeedRate; }
    void SetCuttingFeedrate(double feedRate);
    /// Feed rate of all off-part motion: > 0 mm/min.
    double GetRapidFeedRate() const { return m_rapidFeedRate; }
    void SetRapidFeedRate(double feedRate);
    /// Rapid approach and retract distances of the procedure's links, and the defaults of new
    /// linear links: >= 0 mm.
    double GetRapidApproach() const { return m_rapidApproach; }
    void SetRapidApproach(double distance);
    double GetRapidRetract() const { return m_rapidRetract; }
    void SetRapidRetract(double distance);
    /// Height of the safety plane above the part's bounding box: >= 0 mm.
    double GetSafetyClearance() const { return m_safetyClearance; }
    void SetSafetyClearance(double distance);
    /// Distance after a tow add and before a tow cut run at the add and cut feed rates: >= 0 mm.
    double GetAddCutDistance() const { return m_addCutDistance; }
    void SetAddCutDistance(double distance);
    /// Home (park) frame of the machine, where the approach link starts and the retract link
    /// ends; any frame.
    const ZYLMathAxis &GetHomeFrame() const { return m_homeFrame; }
    void SetHomeFrame(const ZYLMathAxis &frame);
    /// Returns the machine configurations of the procedure.
    int GetNumMachineConfigurations() const { return int(m_configurations.size()); }
    const ZYLTPMachineConfiguration *GetMachineConfiguration(int i) const;

    // Estimates
    double GetLayingTimeEstimate() const;
    double GetLinkingTimeEstimate() const;
    double GetApproachTimeEstimate() const;
    double GetRetractTimeEstimate() const;
    double GetTotalTimeEstimate() const override;
    double GetOverallCourseLength() const;
    double GetTotalMaterialLength() const;
    /// One length per tow index, up to the highest tow used by any course (mm).
    QList<double> GetTowLengths() const;
    QList<const ZYLTPResource *> GetTools() const override;

private:
    friend class ZYLTPProgramBuilder;
    friend class ZYLTPCourse;
    ZYLTPRollLayupProcedure(ZYLTPProgram *program, const QString &name, const QString &description);
    // Breaking a course: puts the new piece right after `course` in the stored list and the
    // laying order, then hands the link leaving `course` to it and joins the two.
    void InsertCourseAfter(const ZYLTPCourse *course, std::unique_ptr<ZYLTPCourse> piece);
    void RelinkBrokenCourse(ZYLTPCourse *course, ZYLTPCourse *piece);
    struct Lookup;
    const Lookup &GetLookup() const;
    void CheckCourse(const ZYLTPCourse *course) const;
    void CheckNewLink(const ZYLTPCourse *from, const ZYLTPCourse *to) const;
    std::unique_ptr<ZYLTPCourseLink> MakeLink(const ZYLTPCourse *from, const ZYLTPCourse *to,
                                              ZYLTPCourseLink::OffPartMotionStrategy strategy);
    // Adds a link without touching the laying order (the builder checks adjacency).
    ZYLTPCourseLink *AttachLink(std::unique_ptr<ZYLTPCourseLink> link, bool record);
    void DetachLink(int index);
    std::vector<int> ChainOrderAfterLink(const ZYLTPCourse *from, const ZYLTPCourse *to) const;
    void SetLinkEnds(ZYLTPCourseLink *link, const ZYLTPCourse *from, const ZYLTPCourse *to);
    double SumOffPartTime(bool approach) const;

    std::vector<std::unique_ptr<ZYLTPCourse>> m_courses;
    std::vector<int> m_order;
    std::vector<std::unique_ptr<ZYLTPCourseLink>> m_links;
    std::vector<std::unique_ptr<ZYLTPMachineConfiguration>> m_configurations;
    ZYLTPProcedureLink *m_approachLink = nullptr;
    ZYLTPProcedureLink *m_retractLink = nullptr;
    ZYLTPCourseLink::OffPartMotionStrategy m_defaultStrategy = ZYLTPCourseLink::Linear;
    double m_layingFeedRate = 6000.0;
    double m_addingFeedRate = 3000.0;
    double m_cuttingFeedRate = 3000.0;
    double m_rapidFeedRate = 20000.0;
    double m_rapidApproach = 50.0;
    double m_rapidRetract = 50.0;
    double m_safetyClearance = 100.0;
    double m_addCutDistance = 10.0;
    ZYLMathAxis m_homeFrame;
    mutable std::unique_ptr<Lookup> m_lookup;
};
