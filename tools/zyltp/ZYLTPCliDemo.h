// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCliSubcommand.h"

/// The "demo" subcommand of zyltp (see GetSummary()).
class ZYLTPCliDemo final : public ZYLTPCliSubcommand {
public:
    QString GetName() const override { return QStringLiteral("demo"); }
    QString GetSummary() const override;
    int Run(const QStringList &arguments) override;
};
