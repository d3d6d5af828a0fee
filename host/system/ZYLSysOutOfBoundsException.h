// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLSysException.h"
#include "ZYLSysValue.h"
#include "ZYLSystemExport.h"

/// Thrown for a value outside its allowed range.
///
/// The message names the value and the range, with brackets that show whether each end is
/// included: "Value 12 mm is out of range [0 mm, 10 mm]", "Value 0 is out of range (0, 10]".
/// When a magnitude is given, the numbers are shown in the user's current display unit of that
/// magnitude (the stored numbers stay in system units); without one they are plain numbers.
/// An infinite end is shown as "∞".
class ZYLSYSTEM_EXPORT ZYLSysOutOfBoundsException : public ZYLSysException {
public:
    ZYLSysOutOfBoundsException(double value, double minimum, double maximum,
                               bool includeMinimum = true, bool includeMaximum = true,
                               ZYLSysValue::Magnitude magnitude = ZYLSysValue::None);
    ~ZYLSysOutOfBoundsException() override;

    /// Returns the refused value (system unit).
    double GetValue() const { return m_value; }
    /// Returns the lower end of the range (system unit).
    double GetMinimum() const { return m_minimum; }
    /// Returns the upper end of the range (system unit).
    double GetMaximum() const { return m_maximum; }
    /// Returns whether the lower end belongs to the range.
    bool IsMinimumIncluded() const { return m_includeMinimum; }
    /// Returns whether the upper end belongs to the range.
    bool IsMaximumIncluded() const { return m_includeMaximum; }
    /// Returns the magnitude the numbers are expressed in (None for plain numbers).
    ZYLSysValue::Magnitude GetMagnitude() const { return m_magnitude; }

    /// Returns the message text for the given range, as the constructor builds it.
    static QString FormatMessage(double value, double minimum, double maximum, bool includeMinimum,
                                 bool includeMaximum, ZYLSysValue::Magnitude magnitude);

private:
    double m_value;
    double m_minimum;
    double m_maximum;
    bool m_includeMinimum;
    bool m_includeMaximum;
    ZYLSysValue::Magnitude m_magnitude;
};
