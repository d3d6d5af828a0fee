// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPProcessColoring.h"

#include "ZYLTPProcessCheck.h"

#include <QMutex>
#include <QMutexLocker>

#include <algorithm>
#include <cmath>

namespace {

QMutex s_mutex;
std::shared_ptr<const ZYLTPProcessCheck> s_check;

} // namespace

void ZYLTPProcessColoring::SetCheck(std::shared_ptr<const ZYLTPProcessCheck> check)
{
    QMutexLocker lock(&s_mutex);
    s_check = std::move(check);
}

std::shared_ptr<const ZYLTPProcessCheck> ZYLTPProcessColoring::GetCheck()
{
    QMutexLocker lock(&s_mutex);
    return s_check;
}

QColor ZYLTPProcessColoring::GetBinColor(int bin)
{
    if (bin <= 0)
        return GetColor(1.0);
    // The middle of the bin's range of ratios.
    return GetColor(1.0 - (bin - 0.5) / (NumBins - 1));
}

QColor ZYLTPProcessColoring::GetColor(double ratio)
{
    // Hue from green (straight) through yellow (twice the limit) to red (the limit).
    const double t = std::clamp(ratio, 0.0, 1.0);
    return QColor::fromHsvF(float((1.0 - t) / 3.0), 0.85f, ratio >= 1.0 ? 0.8f : 0.95f);
}
