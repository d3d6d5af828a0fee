// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLSysSettings.h"
#include "ZYLSysValue.h"
#include "ZYLSystemExport.h"

#include <memory>

/// The user's display units, one per magnitude, persisted in the settings group "ZYLUnits"
/// under the keys lengthUnit, forceUnit, timeUnit, feedRateUnit and angleUnit, as unit codes
/// ("mm", "in", "N", "lbf", "s", "mm/min", "in/min", "rad", "deg"). A stored code that is
/// unknown or of another magnitude keeps the default. Defaults: mm, N, s, mm/min, degree.
///
/// `ZYLSysValue`'s static unit functions go through this singleton; widgets that show values
/// connect to `CurrentUnitChanged` to follow a change while they are open.
class ZYLSYSTEM_EXPORT ZYLSysUnits : public ZYLSysSettings {
    Q_OBJECT
    Q_PROPERTY(QString lengthUnit READ GetLengthUnit WRITE SetLengthUnit)
    Q_PROPERTY(QString forceUnit READ GetForceUnit WRITE SetForceUnit)
    Q_PROPERTY(QString timeUnit READ GetTimeUnit WRITE SetTimeUnit)
    Q_PROPERTY(QString feedRateUnit READ GetFeedRateUnit WRITE SetFeedRateUnit)
    Q_PROPERTY(QString angleUnit READ GetAngleUnit WRITE SetAngleUnit)
public:
    /// Returns the one instance; the first call reads the persisted units.
    static ZYLSysUnits *GetInstance();
    ~ZYLSysUnits() override;

    /// Returns the display unit of a magnitude (System for None).
    ZYLSysValue::Unit GetCurrentUnit(ZYLSysValue::Magnitude magnitude) const;
    /// Sets and persists the display unit (System: the system unit); emits
    /// `CurrentUnitChanged` when it changes. Returns false, changing nothing, for a unit of
    /// another magnitude or for None.
    bool SetCurrentUnit(ZYLSysValue::Magnitude magnitude, ZYLSysValue::Unit unit);
    /// Returns the default display unit of a magnitude.
    static ZYLSysValue::Unit GetDefaultUnit(ZYLSysValue::Magnitude magnitude);

    /// Sets the default units, then removes the persisted ones.
    void RevertToDefaults() override;

signals:
    /// Emitted when the display unit of a magnitude (a `ZYLSysValue::Magnitude` value) changed.
    void CurrentUnitChanged(int magnitude);

private:
    ZYLSysUnits();

    QString GetCode(ZYLSysValue::Magnitude magnitude) const;
    void SetCode(ZYLSysValue::Magnitude magnitude, const QString &code);
    QString GetLengthUnit() const { return GetCode(ZYLSysValue::Length); }
    void SetLengthUnit(const QString &code) { SetCode(ZYLSysValue::Length, code); }
    QString GetForceUnit() const { return GetCode(ZYLSysValue::Force); }
    void SetForceUnit(const QString &code) { SetCode(ZYLSysValue::Force, code); }
    QString GetTimeUnit() const { return GetCode(ZYLSysValue::Time); }
    void SetTimeUnit(const QString &code) { SetCode(ZYLSysValue::Time, code); }
    QString GetFeedRateUnit() const { return GetCode(ZYLSysValue::FeedRate); }
    void SetFeedRateUnit(const QString &code) { SetCode(ZYLSysValue::FeedRate, code); }
    QString GetAngleUnit() const { return GetCode(ZYLSysValue::Angle); }
    void SetAngleUnit(const QString &code) { SetCode(ZYLSysValue::Angle, code); }

    struct Data;
    std::unique_ptr<Data> d;
};
