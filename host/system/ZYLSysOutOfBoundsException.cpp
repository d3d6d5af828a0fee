// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysOutOfBoundsException.h"

#include <QCoreApplication>

#include <cmath>

namespace {

QString FormatBound(double value, ZYLSysValue::Magnitude magnitude)
{
    // Infinite ends come from open ranges ("at least 0"); "inf" would read like a typo.
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("\u221E") : QStringLiteral("-\u221E");
    // Fixed notation would spell out all 300 digits of a value such as 1e300.
    if (std::fabs(value) >= 1e15) {
        const ZYLSysValue::Unit unit = ZYLSysValue::GetMagnitudeCurrentUnit(magnitude);
        return QString::number(ZYLSysValue::ConvertFromSystemUnit(value, unit), 'g', 6)
               + ZYLSysValue::GetUnitDisplaySuffix(unit);
    }
    const ZYLSysValue quantity(magnitude, value);
    return quantity.ToString(ZYLSysValue::GetMagnitudeCurrentUnit(magnitude), true);
}

} // namespace

ZYLSysOutOfBoundsException::ZYLSysOutOfBoundsException(double value, double minimum, double maximum,
                                                       bool includeMinimum, bool includeMaximum,
                                                       ZYLSysValue::Magnitude magnitude)
    : ZYLSysException(FormatMessage(value, minimum, maximum, includeMinimum, includeMaximum, magnitude))
    , m_value(value)
    , m_minimum(minimum)
    , m_maximum(maximum)
    , m_includeMinimum(includeMinimum)
    , m_includeMaximum(includeMaximum)
    , m_magnitude(magnitude)
{
}

ZYLSysOutOfBoundsException::~ZYLSysOutOfBoundsException() = default;

QString ZYLSysOutOfBoundsException::FormatMessage(double value, double minimum, double maximum,
                                                  bool includeMinimum, bool includeMaximum,
                                                  ZYLSysValue::Magnitude magnitude)
{
    const QString range = QStringLiteral("%1%2, %3%4")
                              .arg(includeMinimum ? QLatin1Char('[') : QLatin1Char('('))
                              .arg(FormatBound(minimum, magnitude), FormatBound(maximum, magnitude))
                              .arg(includeMaximum ? QLatin1Char(']') : QLatin1Char(')'));
    return QCoreApplication::translate("ZYLSysOutOfBoundsException", "Value %1 is out of range %2")
        .arg(FormatBound(value, magnitude), range);
}
