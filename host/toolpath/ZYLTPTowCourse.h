// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCourse.h"

#include "ZYLCompTowMask.h"

#include <QList>

class ZYLTPTowPoint;

/// A course of tows: its tow trajectories say which tows are laid where. Every point of its
/// point list is a `ZYLTPTowPoint`.
///
/// Material: `GetTowLengths()` gives, for each tow index from 0 to the highest tow used, the
/// length laid with that tow (the sum of the lengths of the tow trajectories whose mask has
/// it); `GetMaterialUsage()` is their sum; `GetUsedMask()` the union of the tow masks.
class ZYLTOOLPATH_EXPORT ZYLTPTowCourse : public ZYLTPCourse {
    Q_OBJECT
public:
    ~ZYLTPTowCourse() override;

    ZYLCompTowMask GetUsedMask() const;
    QList<double> GetTowLengths() const;
    double GetMaterialUsage() const;

    /// Sets the forced mask and forced rates (up to 64 fractions in [0, 1] by tow index,
    /// missing entries 1.0; see `ZYLTPTowTrajectory`) on the tow trajectories over the
    /// half-open range [start, end) (null end: to the end of the course). Throws
    /// `ZYLSysOutOfBoundsException` for a bad rate and `ZYLSysException` for a bad range,
    /// changing nothing.
    void SetPinchState(const ZYLTPTowPoint *start, const ZYLTPTowPoint *end, const ZYLCompTowMask &forced,
                       const QList<double> &forcedRates);

private:
    friend class ZYLTPProgramBuilder;
    ZYLTPTowCourse(ZYLTPRollLayupProcedure *procedure, const ZYLTPMachineConfiguration *configuration);
};
