// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLTPVisualizationOptions.h"

#include "ZYLVisRep.h"

#include <QList>

class ZYLTPBreakRange;

/// The representation of a break range: the stretch of its course's centre line between the
/// range's start and end (arc lengths from the roll-in point, clamped to the course) as a
/// polyline, then a tick across the course band at each end as segments, both with the
/// break range attributes (thick and drawn as a secondary highlight by default). The ticks
/// span the course's tow lanes, or one tow width for a course without tows.
///
/// A null range, or a range without a course, gives an empty representation. `out`
/// receives the display options of each primitive, in order.
class ZYLTOOLPATH_EXPORT ZYLTPBreakRangeVisRep : public ZYLVisRep {
    Q_OBJECT

public:
    ZYLTPBreakRangeVisRep(const ZYLTPBreakRange *range, const ZYLTPVisualizationOptions &options,
                          QList<ZYLVisOptions> &out);
    ~ZYLTPBreakRangeVisRep() override;

    /// Returns the break range shown (not owned).
    const ZYLTPBreakRange *GetBreakRange() const;

private:
    struct Data;
    std::unique_ptr<Data> d;
};
