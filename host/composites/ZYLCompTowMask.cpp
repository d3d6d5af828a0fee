// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCompTowMask.h"

#include "ZYLSysException.h"
#include "ZYLSysOutOfBoundsException.h"

#include <QStringList>

#include <algorithm>
#include <bit>

void ZYLCompTowMask::CheckTow(int tow)
{
    if (tow < 0 || tow >= MaxTows)
        throw ZYLSysOutOfBoundsException(tow, 0, MaxTows - 1);
}

bool ZYLCompTowMask::IsEnabled(int tow) const
{
    CheckTow(tow);
    return (m_raw >> tow) & 1u;
}

void ZYLCompTowMask::Enable(int tow)
{
    CheckTow(tow);
    m_raw |= quint64(1) << tow;
}

void ZYLCompTowMask::Disable(int tow)
{
    CheckTow(tow);
    m_raw &= ~(quint64(1) << tow);
}

int ZYLCompTowMask::GetNumTows() const
{
    return MaxTows;
}

int ZYLCompTowMask::GetLastTow() const
{
    return m_raw == 0 ? -1 : 63 - std::countl_zero(m_raw);
}

QString ZYLCompTowMask::GetString() const
{
    QStringList parts;
    int tow = 0;
    while (tow < MaxTows) {
        if (!((m_raw >> tow) & 1u)) {
            ++tow;
            continue;
        }
        int last = tow;
        while (last + 1 < MaxTows && ((m_raw >> (last + 1)) & 1u))
            ++last;
        if (last - tow >= 2) {
            parts << QStringLiteral("%1-%2").arg(tow + 1).arg(last + 1);
        } else {
            for (int t = tow; t <= last; ++t)
                parts << QString::number(t + 1);
        }
        tow = last + 1;
    }
    return parts.join(QLatin1Char(','));
}

namespace {
// Reads one tow number (1-based) of the text form; returns its 0-based index.
int ParseTowNumber(const QString &text, const QString &whole)
{
    bool ok = false;
    const int number = text.toInt(&ok);
    // toInt accepts a sign; tow numbers are plain digits.
    const bool digitsOnly = !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); });
    if (!ok || !digitsOnly)
        throw ZYLSysException(ZYLCompTowMask::tr("Invalid tow list \"%1\": \"%2\" is not a tow number").arg(whole, text));
    if (number < 1 || number > ZYLCompTowMask::MaxTows)
        throw ZYLSysException(ZYLCompTowMask::tr("Invalid tow list \"%1\": tow %2 is outside 1 to %3")
                                  .arg(whole)
                                  .arg(number)
                                  .arg(ZYLCompTowMask::MaxTows));
    return number - 1;
}
} // namespace

ZYLCompTowMask ZYLCompTowMask::FromString(const QString &text)
{
    QString compact = text;
    compact.remove(QLatin1Char(' '));
    compact.remove(QLatin1Char('\t'));
    ZYLCompTowMask mask;
    if (compact.isEmpty())
        return mask;
    const QStringList items = compact.split(QLatin1Char(','));
    for (const QString &item : items) {
        if (item.isEmpty())
            throw ZYLSysException(tr("Invalid tow list \"%1\": empty entry").arg(text));
        const qsizetype dash = item.indexOf(QLatin1Char('-'));
        if (dash < 0) {
            mask.Enable(ParseTowNumber(item, text));
            continue;
        }
        const int first = ParseTowNumber(item.left(dash), text);
        const int last = ParseTowNumber(item.mid(dash + 1), text);
        if (last < first)
            throw ZYLSysException(tr("Invalid tow list \"%1\": range \"%2\" runs backwards").arg(text, item));
        for (int tow = first; tow <= last; ++tow)
            mask.Enable(tow);
    }
    return mask;
}

void ZYLCompTowMask::SetString(const QString &text)
{
    // Parsed into a temporary first so that a fault leaves this mask as it was.
    *this = FromString(text);
}
