// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatChange.h"

#include <utility>

/// The change of a field that holds a counted reference on shared geometry (a
/// `ZYLGeoGeometry`), made by `ZYLFeatRecorder::SetReference`. The field's owner holds one
/// reference on what the field points to; the change holds one on the pointer it keeps (the
/// old geometry while applied), so replaced geometry lives on until the change leaves the
/// history. References move with the pointers when undo and redo swap them.
template<class T>
class ZYLFeatReferenceChange final : public ZYLFeatChange {
public:
    /// Creates the undone change that makes `field` point to `newValue` (may be null).
    ZYLFeatReferenceChange(const T *&field, const T *newValue) : m_field(&field), m_held(newValue)
    {
        if (m_held)
            m_held->AddReference();
    }
    ~ZYLFeatReferenceChange() override
    {
        if (m_held)
            m_held->RemoveReference();
    }

    void Undo() override { std::swap(*m_field, m_held); }
    void Redo() override { std::swap(*m_field, m_held); }

private:
    const T **m_field;
    const T *m_held;
};
