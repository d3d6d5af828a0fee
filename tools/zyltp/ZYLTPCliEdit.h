// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLTPCliSubcommand.h"

/// The "edit" subcommand of zyltp (see GetSummary()): applies whole-program edits to every
/// roll layup procedure of a program file, in the order given on the command line, each as
/// one transaction, and writes the result to another file. Nothing is written when any edit
/// is refused.
class ZYLTPCliEdit final : public ZYLTPCliSubcommand {
public:
    QString GetName() const override { return QStringLiteral("edit"); }
    QString GetSummary() const override;
    QString GetExitCodes() const override;
    int Run(const QStringList &arguments) override;
};
