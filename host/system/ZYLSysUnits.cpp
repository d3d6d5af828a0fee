// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysUnits.h"

#include "ZYLSysLogging.h"

#include <array>

namespace {

constexpr std::array<const char *, 6> kKeys = {
    nullptr, "lengthUnit", "forceUnit", "timeUnit", "feedRateUnit", "angleUnit",
};

bool IsQuantity(ZYLSysValue::Magnitude magnitude)
{
    return magnitude > ZYLSysValue::None && magnitude <= ZYLSysValue::Angle;
}

} // namespace

struct ZYLSysUnits::Data {
    std::array<ZYLSysValue::Unit, 6> current{};
};

ZYLSysUnits::ZYLSysUnits()
    : ZYLSysSettings("ZYLUnits")
    , d(std::make_unique<Data>())
{
    for (int magnitude = ZYLSysValue::None; magnitude <= ZYLSysValue::Angle; ++magnitude)
        d->current[magnitude] = GetDefaultUnit(ZYLSysValue::Magnitude(magnitude));
    // Values are formatted as soon as the units exist; waiting for the event loop would show
    // the first ones in the default units.
    Restore();
}

ZYLSysUnits::~ZYLSysUnits() = default;

ZYLSysUnits *ZYLSysUnits::GetInstance()
{
    static ZYLSysUnits instance;
    return &instance;
}

ZYLSysValue::Unit ZYLSysUnits::GetCurrentUnit(ZYLSysValue::Magnitude magnitude) const
{
    return IsQuantity(magnitude) ? d->current[magnitude] : ZYLSysValue::System;
}

bool ZYLSysUnits::SetCurrentUnit(ZYLSysValue::Magnitude magnitude, ZYLSysValue::Unit unit)
{
    if (!IsQuantity(magnitude))
        return false;
    const ZYLSysValue::Unit resolved =
        unit == ZYLSysValue::System ? ZYLSysValue::GetMagnitudeSystemUnit(magnitude) : unit;
    if (ZYLSysValue::GetUnitMagnitude(resolved) != magnitude)
        return false;
    if (d->current[magnitude] == resolved)
        return true;
    d->current[magnitude] = resolved;
    UpdateSetting(kKeys[magnitude], ZYLSysValue::GetUnitCode(resolved));
    emit CurrentUnitChanged(magnitude);
    return true;
}

ZYLSysValue::Unit ZYLSysUnits::GetDefaultUnit(ZYLSysValue::Magnitude magnitude)
{
    switch (magnitude) {
    case ZYLSysValue::Length:
        return ZYLSysValue::Millimeter;
    case ZYLSysValue::Force:
        return ZYLSysValue::Newton;
    case ZYLSysValue::Time:
        return ZYLSysValue::Second;
    case ZYLSysValue::FeedRate:
        return ZYLSysValue::MillimeterPerMinute;
    case ZYLSysValue::Angle:
        return ZYLSysValue::Degree;
    case ZYLSysValue::None:
        break;
    }
    return ZYLSysValue::System;
}

void ZYLSysUnits::RevertToDefaults()
{
    for (int magnitude = ZYLSysValue::Length; magnitude <= ZYLSysValue::Angle; ++magnitude) {
        const auto quantity = ZYLSysValue::Magnitude(magnitude);
        SetCurrentUnit(quantity, GetDefaultUnit(quantity));
    }
    ZYLSysSettings::RevertToDefaults();
}

QString ZYLSysUnits::GetCode(ZYLSysValue::Magnitude magnitude) const
{
    return ZYLSysValue::GetUnitCode(GetCurrentUnit(magnitude));
}

void ZYLSysUnits::SetCode(ZYLSysValue::Magnitude magnitude, const QString &code)
{
    const ZYLSysValue::Unit unit = ZYLSysValue::GetUnitByCode(code);
    // An unknown code would resolve to the system unit; keep the current unit instead.
    if (unit == ZYLSysValue::System || !SetCurrentUnit(magnitude, unit))
        qCDebug(lcZYLSystem) << "Ignoring unit" << code << "for" << ZYLSysValue::GetMagnitudeName(magnitude);
}
