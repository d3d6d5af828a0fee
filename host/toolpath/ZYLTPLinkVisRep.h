// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLTPVisualizationOptions.h"

#include "ZYLVisRep.h"

#include <QList>

class ZYLTPCourseLink;

/// The representation of a course link, built once from the link as it is and the options
/// given. Its primitives, in this order, each only when asked for and not empty:
/// 1. with linking trajectories on: the motion as a polyline through the link's points (link
///    line attributes);
/// 2. with linking points on: the points as dots (linking point attributes), then one segment
///    primitive per vector bit of `GetLinkingVectorsToDisplay()`;
/// 3. the vectors of `GetLinkEndPointsVectorsToDisplay()` at the first and last point, as
///    arrows, one segment primitive per vector bit.
///
/// A null link gives an empty representation. `out` receives the display options of each
/// primitive, in order.
class ZYLTOOLPATH_EXPORT ZYLTPLinkVisRep : public ZYLVisRep {
    Q_OBJECT

public:
    ZYLTPLinkVisRep(const ZYLTPCourseLink *link, const ZYLTPVisualizationOptions &options, QList<ZYLVisOptions> &out);
    ~ZYLTPLinkVisRep() override;

    /// Returns the link shown (not owned).
    const ZYLTPCourseLink *GetCourseLink() const;

private:
    struct Data;
    std::unique_ptr<Data> d;
};
