// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathUIExport.h"

/// True once the tool path module is loaded and the host has run its initialisation
/// callbacks. While the module loads it holds the result of registering that callback with
/// `ZYLSysRegisterInit`; the callback sets it to true. The module never clears it.
///
/// Declared with C linkage so that a host that loads the module at run time finds it by its
/// plain name (`QLibrary::resolve("_ZYLToolPathUILoaded")`).
extern "C" ZYLTOOLPATHUI_EXPORT bool _ZYLToolPathUILoaded;
