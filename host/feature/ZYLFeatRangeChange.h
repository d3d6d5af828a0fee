// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatChange.h"

#include <QtGlobal>

#include <algorithm>
#include <vector>

/// The change of a contiguous run of elements of an array, made by
/// `ZYLFeatRecorder::SetRange`. It keeps the other values of the run only (the old ones
/// while applied), so an edit of a thousand tilts in an array of a million points costs a
/// thousand values, and undo and redo swap the run in place without allocating.
template<class T>
class ZYLFeatRangeChange final : public ZYLFeatChange {
public:
    /// Creates the undone change that writes `values` into `array` from index `first`.
    /// The caller has checked that the run lies inside the array.
    ZYLFeatRangeChange(std::vector<T> &array, qsizetype first, std::vector<T> values)
        : m_array(&array), m_first(first), m_other(std::move(values))
    {
    }

    void Undo() override { Swap(); }
    void Redo() override { Swap(); }

private:
    void Swap()
    {
        std::swap_ranges(m_other.begin(), m_other.end(), m_array->begin() + m_first);
    }

    std::vector<T> *m_array;
    qsizetype m_first;
    std::vector<T> m_other;
};
