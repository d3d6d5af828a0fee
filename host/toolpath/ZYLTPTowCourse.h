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
///
/// Width in tows: `GetNumTows()` is the number of tows side by side across the course, tow 0
/// on the side of minus the side direction (see `ZYLTPCourse::GetPointFrame`) and the tip
/// point in the middle of the band. It is a property of the machine: when the course's head
/// knows how many tows it feeds (`ZYLTPMachineHead::GetNumTows`), that is the width, whichever
/// tows the course uses, and no course may use a tow beyond it (the program builder refuses
/// one). A course whose head does not know its count takes the width it was given (a saved
/// course's "tows"), or the width its masks span (highest tow used + 1), until an edit that
/// depends on it fixes it. Reversing mirrors tow t to tow `GetNumTows() - 1 - t` and keeps the
/// width, so that a course whose lowest tows are unused turns back onto the same tows;
/// breaking gives both pieces the width of the course.
class ZYLTOOLPATH_EXPORT ZYLTPTowCourse : public ZYLTPCourse {
    Q_OBJECT
public:
    ~ZYLTPTowCourse() override;

    ZYLCompTowMask GetUsedMask() const;
    /// Returns the width of the course in tows (at least 1; see the class comment).
    int GetNumTows() const;
    QList<double> GetTowLengths() const;
    double GetMaterialUsage() const;

    /// Sets the forced mask and forced rates (up to 64 fractions in [0, 1] by tow index,
    /// missing entries 1.0; see `ZYLTPTowTrajectory`) on the tow trajectories over the
    /// half-open range [start, end) (null end: to the end of the course). Throws
    /// `ZYLSysOutOfBoundsException` for a bad rate and `ZYLSysException` for a bad range or a
    /// forced tow beyond `GetNumTows()`, changing nothing.
    void SetPinchState(const ZYLTPTowPoint *start, const ZYLTPTowPoint *end, const ZYLCompTowMask &forced,
                       const QList<double> &forcedRates);

private:
    friend class ZYLTPProgramBuilder;
    friend class ZYLTPCourse;
    ZYLTPTowCourse(ZYLTPRollLayupProcedure *procedure, const ZYLTPMachineConfiguration *configuration);
    // The width in tows when the head does not know its count; 0 while it follows the masks.
    int m_numTows = 0;
};
