// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCliSubcommand.h"

/// The "check" subcommand of zyltp (see GetSummary()).
class ZYLTPCliCheck final : public ZYLTPCliSubcommand {
public:
    QString GetName() const override { return QStringLiteral("check"); }
    QString GetSummary() const override;
    int Run(const QStringList &arguments) override;
};
