// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCourseLink.h"

/// A straight link: it lifts along the tool axis by the rapid retract distance, moves
/// straight to the rapid approach distance above the next course's start (along its tool
/// axis), and goes down to it. Distances >= 0 mm; new links take the procedure's.
///
/// Clearance. Over a curved part (a dome, a ridge) the straight traverse between two lifted
/// ends may pass closer to the part than intended, or through it. When the program has a ply
/// surface, the link therefore lifts both ends further, by the same extra height along their
/// tool axes, until the whole traverse keeps clear of the surface: at a point a fraction s of
/// the way across, by at least (1 - s) · rapid retract + s · rapid approach, measured on the
/// side of the surface the head works on (the side the start's tool axis points to). The
/// traverse is checked at 17 evenly spaced places, which include its points at every detail.
/// The extra height (`GetClearanceLift()`) is kept with the ends and distances it was found
/// for, so recomputing an unchanged link after an edit elsewhere asks the surface nothing. The
/// number of points does not change.
class ZYLTOOLPATH_EXPORT ZYLTPLinearCourseLink : public ZYLTPCourseLink {
    Q_OBJECT
public:
    ~ZYLTPLinearCourseLink() override;
    OffPartMotionStrategy GetStrategy() const override { return Linear; }

    double GetRapidApproach() const { return m_rapidApproach; }
    double GetRapidRetract() const { return m_rapidRetract; }
    /// Set the distances (>= 0 mm); record; throw `ZYLSysOutOfBoundsException` below 0.
    void SetRapidApproach(double distance);
    void SetRapidRetract(double distance);
private:
    friend class ZYLTPRollLayupProcedure;
    friend class ZYLTPProgramBuilder;
    ZYLTPLinearCourseLink(ZYLTPRollLayupProcedure *procedure, const ZYLTPCourse *from, const ZYLTPCourse *to);
    std::vector<ZYLMathAxis> ComputeFrames() const override;
    double m_rapidApproach;
    double m_rapidRetract;
};
