// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCompositesExport.h"

#include <QCoreApplication>
#include <QMetaType>
#include <QString>
#include <QtGlobal>

/// The set of tows of a fibre placement head that take part in an operation: up to 64
/// tows, numbered by index from 0, stored as the bits of one `quint64` (bit i = tow i).
///
/// Text form (`GetString`, `SetString`): the enabled tows numbered from 1, ascending, comma
/// separated, with runs of three or more consecutive tows written "a-b": tows 0-7, 9 and
/// 11-15 read "1-8,10,12-16"; two consecutive tows are listed one by one ("3,4"); the empty
/// mask is the empty text. `SetString` also accepts spaces anywhere, ranges of one tow
/// ("2-2"), unordered and repeated numbers and ranges of two ("3-4").
class ZYLCOMPOSITES_EXPORT ZYLCompTowMask {
    Q_DECLARE_TR_FUNCTIONS(ZYLCompTowMask)
public:
    /// The number of tows a mask can hold.
    static constexpr int MaxTows = 64;

    constexpr ZYLCompTowMask() = default;
    constexpr explicit ZYLCompTowMask(quint64 raw) : m_raw(raw) {}

    constexpr quint64 GetRawValue() const { return m_raw; }
    constexpr void SetRawValue(quint64 raw) { m_raw = raw; }

    /// Returns whether tow `tow` is enabled. Throws `ZYLSysOutOfBoundsException` for a tow
    /// index outside [0, 63].
    bool IsEnabled(int tow) const;
    /// Enables (disables) tow `tow`. Throws `ZYLSysOutOfBoundsException` for a tow index
    /// outside [0, 63] and changes nothing.
    void Enable(int tow);
    void Disable(int tow);
    /// Returns the number of tows the mask can hold, `MaxTows`, whichever are enabled: tow
    /// indexes from 0 to `GetNumTows() - 1` are valid. (The number of enabled tows is not
    /// kept; count them with `IsEnabled`.)
    int GetNumTows() const;
    /// Returns whether no tow is enabled.
    constexpr bool IsAllDisabled() const { return m_raw == 0; }
    /// Returns the highest enabled tow index, or -1 for the empty mask.
    int GetLastTow() const;

    /// Returns the text form described above.
    QString GetString() const;
    /// Reads the text form. Throws `ZYLSysException` naming the fault for malformed text
    /// ("3-1", "0", "65", "a", "1,,2", "1-", "-3") and leaves the mask unchanged.
    void SetString(const QString &text);
    /// Returns the mask of a text form; throws as `SetString`.
    static ZYLCompTowMask FromString(const QString &text);

    constexpr ZYLCompTowMask operator&(const ZYLCompTowMask &o) const { return ZYLCompTowMask(m_raw & o.m_raw); }
    constexpr ZYLCompTowMask operator|(const ZYLCompTowMask &o) const { return ZYLCompTowMask(m_raw | o.m_raw); }
    constexpr bool operator==(const ZYLCompTowMask &) const = default;

private:
    static void CheckTow(int tow);
    quint64 m_raw = 0;
};

Q_DECLARE_METATYPE(ZYLCompTowMask)
