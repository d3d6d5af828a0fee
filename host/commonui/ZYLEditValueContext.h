// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLCommonUIExport.h"

/// Marks a stretch of code in which a widget changes its own controls programmatically.
///
/// A scope object: while at least one context exists, `IsInEditContext()` returns true, so
/// the widget's slots can tell their own changes from the user's and return at once.
/// Contexts nest; the flag clears when the last one is destroyed. Like every widget
/// operation, it is meant for the GUI thread only.
class ZYLCOMMONUI_EXPORT ZYLEditValueContext {
public:
    ZYLEditValueContext();
    ~ZYLEditValueContext();
    ZYLEditValueContext(const ZYLEditValueContext &) = delete;
    ZYLEditValueContext &operator=(const ZYLEditValueContext &) = delete;

    /// Returns whether any context currently exists.
    static bool IsInEditContext();
};
