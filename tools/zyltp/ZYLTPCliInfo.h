// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCliSubcommand.h"

/// The "info" subcommand of zyltp (see GetSummary()).
class ZYLTPCliInfo final : public ZYLTPCliSubcommand {
public:
    QString GetName() const override { return QStringLiteral("info"); }
    QString GetSummary() const override;
    int Run(const QStringList &arguments) override;
};
