// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPProcessRules.h"

#include "ZYLTPCheck.h"

void ZYLTPProcessRules::Check(const ZYLTPProcessRules &rules)
{
    using ZYLTPCheck::Range;
    Range(rules.towWidth, 0.0, MaxTowWidth, false, true, ZYLSysValue::Length);
    Range(rules.minSteeringRadius, 0.0, MaxSteeringRadius, false, true, ZYLSysValue::Length);
    for (double length : {rules.minCutLength, rules.minAddLength, rules.minCourseLength})
        Range(length, 0.0, MaxLength, true, true, ZYLSysValue::Length);
}
