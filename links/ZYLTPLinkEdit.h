// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <functional>

class QString;

/// Runs a group of model edits of the link panels as one: a transaction nested in the
/// command's, kept when the edits return and rolled back when one of them throws (the
/// exception then goes on to the caller), so that a failure half way changes nothing.
class ZYLTPLinkEdit {
public:
    ZYLTPLinkEdit() = delete;

    /// Runs `edits` in a nested transaction named `name` of the current feature
    /// environment's container; without a container the edits run as they are.
    static void Run(const QString &name, const std::function<void()> &edits);
};
