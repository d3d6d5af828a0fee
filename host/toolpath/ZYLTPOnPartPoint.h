// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPPoint.h"

class ZYLTPCourse;
class ZYLTPOnPartTrajectory;

/// A laying point: a view of entry `GetIndex()` of its course's point arrays. Views are
/// created by the course on first request (`ZYLTPCourse::GetPoint`) and cached with the
/// arrays, so a pointer stays the same until the model replaces the course's point data
/// (reversing, breaking); undo of such an edit gives back the very same views.
///
/// The tool frame (`GetAxis(true)`) is the untilted frame turned by the tilts of the point's
/// on-part trajectory: first by the side tilt about the laying direction, then by the
/// forward tilt about the untilted side direction (radians). A positive forward tilt leans
/// the tool axis towards the laying direction; a positive side tilt towards minus the side
/// direction. Tilts are constant along a trajectory, so the tool frame changes in steps at
/// trajectory boundaries.
class ZYLTOOLPATH_EXPORT ZYLTPOnPartPoint : public ZYLTPPoint {
    Q_OBJECT
public:
    ~ZYLTPOnPartPoint() override;

    ZYLMathPoint GetTipPoint() const override;
    ZYLMathAxis GetAxis(bool toolFrame = true) const override;
    const ZYLTPTrajectory *GetTrajectory() const override;
    /// Returns the on-part trajectory covering the point (never null).
    const ZYLTPOnPartTrajectory *GetOnPartTrajectory() const;
    /// Returns the course and the point's index in the course's point list.
    const ZYLTPCourse *GetCourse() const { return m_course; }
    int GetIndex() const { return m_index; }

protected:
    friend class ZYLTPCourse;
    ZYLTPOnPartPoint(const ZYLTPCourse *course, int index) : m_course(course), m_index(index) {}

private:
    const ZYLTPCourse *m_course;
    int m_index;
};
