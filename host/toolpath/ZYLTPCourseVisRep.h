// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLTPVisualizationOptions.h"

#include "ZYLVisRep.h"

#include <QList>

class ZYLTPCourse;

/// The representation of a course, built once from the course as it is and the options
/// given (see `ZYLTPVisualizationOptions` for what each option means). Its primitives, in
/// this order, each only when its options ask for it and it has something to draw:
/// 1. the tow fill, by `GetShortTowDisplay()`: the tows that are not short as triangles
///    (course band attributes; while `ZYLTPProcessColoring` has steering radii for the
///    course, one primitive per colour of the radius instead), then the short tow pieces as
///    triangles (short tow attributes);
/// 2. the tow edges as polylines (one per edge line that runs on unbroken), by
///    `GetTowEdgeDisplay()`;
/// 3. the tow ends as segments, by `GetTowHeadProfileDisplay()`;
/// 4. the laying trajectory: a polyline through the tow points (first to last tow point);
/// 5. roll-in and roll-out: two segments, roll-in point to first tow point and last tow point
///    to roll-out point;
/// 6. approach and retract: two segments along the course's approach and retract motion;
/// 7. with tip points on: the tips of every point of the course as dots, then one segment
///    primitive per vector bit of `GetLayingVectorsToDisplay()` (laying direction, side
///    direction, tool axis) along each point's tool frame.
///
/// The tow fill and the tow edges run through the first and last point of each tow
/// trajectory and, between them, only through the points needed to stay within 0.01 mm of
/// the band through every point: a smooth course of a million points needs far fewer
/// vertices. Tows, fill, edges and ends exist for tow courses only. A null course gives an empty
/// representation. `out` receives the display options of each primitive, in order.
class ZYLTOOLPATH_EXPORT ZYLTPCourseVisRep : public ZYLVisRep {
    Q_OBJECT

public:
    ZYLTPCourseVisRep(const ZYLTPCourse *course, int index, const ZYLTPVisualizationOptions &options,
                      QList<ZYLVisOptions> &out);
    ~ZYLTPCourseVisRep() override;

    /// Returns the course shown (not owned).
    const ZYLTPCourse *GetCourse() const;
    /// Returns the index the course was given at construction.
    int GetCourseIndex() const;
    /// Returns the options the representation was built with, so that it can be built again
    /// alike (after the steering radius colouring has changed).
    const ZYLTPVisualizationOptions &GetVisualizationOptions() const;

private:
    struct Data;
    std::unique_ptr<Data> d;
};
