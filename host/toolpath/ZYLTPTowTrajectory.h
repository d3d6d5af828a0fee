// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPOnPartTrajectory.h"

#include "ZYLCompTowMask.h"

#include <QList>

/// An on-part trajectory along which a set of tows is laid: the tow mask (tows laid), the
/// forced mask (tows whose feed is forced on) and the forced feed rates.
///
/// Forced rates are indexed by tow index: `GetForcedRates()` always returns 64 fractions in
/// [0, 1], entry t for tow t (1.0, full rate, by default), whatever the masks hold, so that
/// `GetForcedRates()[t]` is tow t's ratio for every tow the mask may list.
class ZYLTOOLPATH_EXPORT ZYLTPTowTrajectory : public ZYLTPOnPartTrajectory {
    Q_OBJECT
public:
    ~ZYLTPTowTrajectory() override;

    const ZYLCompTowMask &GetTowMask() const { return m_towMask; }
    const ZYLCompTowMask &GetForcedMask() const { return m_forcedMask; }
    /// Returns the 64 forced rates, entry t for tow t.
    QList<double> GetForcedRates() const;

    bool HasSameValues(const ZYLTPOnPartTrajectory &other) const override;
    std::unique_ptr<ZYLTPOnPartTrajectory> Clone(int first, int count) const override;

    /// Creates a tow trajectory. `forcedRates` holds up to 64 entries by tow index (missing
    /// ones are 1.0); values are the caller's to check.
    ZYLTPTowTrajectory(const ZYLTPCourse *course, int first, int count, const Values &values,
                       const ZYLCompTowMask &towMask, const ZYLCompTowMask &forcedMask,
                       const QList<double> &forcedRates);

    /// Returns `rates` padded with 1.0 to 64 entries; throws `ZYLSysOutOfBoundsException`
    /// for more than 64 entries or an entry outside [0, 1].
    static QList<double> NormalizedRates(const QList<double> &rates);

private:
    friend class ZYLTPCourse;
    friend class ZYLTPTowCourse;
    ZYLCompTowMask m_towMask;
    ZYLCompTowMask m_forcedMask;
    // Empty while every rate is 1.0, which keeps plain trajectories small.
    QList<double> m_forcedRates;
};
