// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCliSubcommand.h"

/// The "collisions" subcommand of zyltp (see GetSummary()): lists every laying point at
/// which the machine's collision points come closer to the ply surface than a tolerance, on
/// the side the surface normal points to, as the studio's collision inspector finds them.
/// Exit code 1 when any is found, so that scripts can test a program with it.
class ZYLTPCliCollisions final : public ZYLTPCliSubcommand {
public:
    QString GetName() const override { return QStringLiteral("collisions"); }
    QString GetSummary() const override;
    QString GetExitCodes() const override;
    int Run(const QStringList &arguments) override;
};
