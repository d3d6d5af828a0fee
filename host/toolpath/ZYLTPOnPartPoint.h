// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPPoint.h"

#include <QList>

#include <utility>

class ZYLGeoSurface;

class ZYLTPCourse;
struct ZYLTPCoursePoints;
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
///
/// A view of point data the model has replaced is no longer among the course's points
/// (`ZYLTPCourse::GetPointIndex` gives -1, `GetTrajectory` null); it still answers its tip
/// and untilted frame from the replaced data.
class ZYLTOOLPATH_EXPORT ZYLTPOnPartPoint : public ZYLTPPoint {
    Q_OBJECT
public:
    ~ZYLTPOnPartPoint() override;

    ZYLMathPoint GetTipPoint() const override;
    ZYLMathAxis GetAxis(bool toolFrame = true) const override;
    const ZYLTPTrajectory *GetTrajectory() const override;
    /// Returns the on-part trajectory covering the point (never null).
    const ZYLTPOnPartTrajectory *GetOnPartTrajectory() const;
    /// Returns whether the machine collides with `surface` at this point: whether any of
    /// `collisionPoints` (spheres: centre in the tool frame, radius, mm) comes closer than
    /// `tolerance` to the surface, or lies beyond it, on the side the head works from (the
    /// side the surface normal points to when `direction` is true, the other side else).
    /// Throws `ZYLSysException` for a null surface.
    bool DetectCollision(const ZYLGeoSurface *surface, bool direction, double tolerance,
                         const QList<std::pair<ZYLMathPoint, double>> &collisionPoints) const;
    /// Returns the course and the point's index in the course's point list.
    const ZYLTPCourse *GetCourse() const { return m_course; }
    int GetIndex() const { return m_index; }

protected:
    friend class ZYLTPCourse;
    ZYLTPOnPartPoint(const ZYLTPCourse *course, const ZYLTPCoursePoints *data, int index)
        : m_course(course), m_data(data), m_index(index)
    {
    }

private:
    const ZYLTPCourse *m_course;
    // The point data the view belongs to: a view of replaced point data (kept alive by the
    // edit that replaced it) keeps reading its own arrays.
    const ZYLTPCoursePoints *m_data;
    int m_index;
};
