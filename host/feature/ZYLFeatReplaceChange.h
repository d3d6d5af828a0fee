// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatChange.h"

#include <QtGlobal>

#include <utility>
#include <vector>

/// The replacement of one element of a list by another, made by `ZYLFeatRecorder::Replace`.
/// The element that is not in the list is held by the change (the replaced one while
/// applied), so a replaced object stays alive at the same address until the change leaves
/// the history.
template<class E>
class ZYLFeatReplaceChange final : public ZYLFeatChange {
public:
    /// Creates the undone replacement of the element at `index` by `element`.
    ZYLFeatReplaceChange(std::vector<E> &list, qsizetype index, E element)
        : m_list(&list), m_index(index), m_held(std::move(element))
    {
    }

    void Undo() override { Swap(); }
    void Redo() override { Swap(); }

private:
    void Swap()
    {
        using std::swap;
        swap((*m_list)[size_t(m_index)], m_held);
    }

    std::vector<E> *m_list;
    qsizetype m_index;
    E m_held;
};
