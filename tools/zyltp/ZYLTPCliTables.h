// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCliSubcommand.h"

/// The "tables" subcommand of zyltp (see GetSummary()): the detailed tables of a program as
/// CSV files, byte for byte as the studio's detailed info panel saves them with all columns
/// shown.
class ZYLTPCliTables final : public ZYLTPCliSubcommand {
public:
    QString GetName() const override { return QStringLiteral("tables"); }
    QString GetSummary() const override;
    int Run(const QStringList &arguments) override;
};
