// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLVisRepSet.h"

ZYLVisRepSet::ZYLVisRepSet(const QList<ZYLVisRep *> &reps, QObject *parent) : ZYLVisRep(parent)
{
    AddChildren(reps);
}

ZYLVisRepSet::~ZYLVisRepSet() = default;
