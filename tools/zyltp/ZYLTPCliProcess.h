// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCliSubcommand.h"

/// The "process" subcommand of zyltp (see GetSummary()): checks the tow courses against the
/// program's process rules (steering radius, tow add and cut lengths, course length; any of
/// the limits may be overridden), prints the violations and a summary, and can write them
/// to a CSV file. Exit code 1 when any rule is broken, as for collisions.
class ZYLTPCliProcess final : public ZYLTPCliSubcommand {
public:
    QString GetName() const override { return QStringLiteral("process"); }
    QString GetSummary() const override;
    QString GetExitCodes() const override;
    int Run(const QStringList &arguments) override;
};
