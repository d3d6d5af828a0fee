// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisSelectionFilter.h"

#include <functional>

/// A selection filter made of a predicate and the multiple-selection flag: with `multiple`
/// true a click adds the picked object to the selection, with false it replaces the selection.
/// A null predicate accepts every object.
class ZYLVISUALIZATION_EXPORT ZYLVisFunctionFilter : public ZYLVisSelectionFilter {
public:
    ZYLVisFunctionFilter(bool multiple, std::function<bool(const ZYLVisObject *)> predicate);
    ~ZYLVisFunctionFilter() override;

    bool IsSelectable(const ZYLVisObject *object) const override;
    bool IsMultiple() const override { return m_multiple; }

private:
    bool m_multiple;
    std::function<bool(const ZYLVisObject *)> m_predicate;
};
