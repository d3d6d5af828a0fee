// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisualizationExport.h"

class ZYLVisObject;

/// Decides which objects the user may pick (hover and click) and how a click changes the
/// selection. Installed with ZYLVisEnvironment::SetSelectionFilter, which takes ownership.
/// Programmatic selection calls do not consult it.
class ZYLVISUALIZATION_EXPORT ZYLVisSelectionFilter {
public:
    virtual ~ZYLVisSelectionFilter();

    /// Returns whether the user may pick the object (it must also be visible and selectable).
    virtual bool IsSelectable(const ZYLVisObject *object) const = 0;
    /// Returns whether a click adds the picked object to the selection (true) or replaces the
    /// selection with it (false). The default replaces.
    virtual bool IsMultiple() const;
};
