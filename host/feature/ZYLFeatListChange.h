// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatChange.h"

#include <QtGlobal>

#include <vector>

/// The insertion or removal of one element of a list, made by `ZYLFeatRecorder::Insert`
/// and `ZYLFeatRecorder::Remove`. The element that is not in the list (the inserted one
/// while undone, the removed one while applied) is held by the change, so an object moved
/// out of a list of `std::unique_ptr` stays alive at the same address and comes back to the
/// same index.
template<class E>
class ZYLFeatListChange final : public ZYLFeatChange {
public:
    enum class Kind { Insert, Remove };

    /// Creates the undone insertion of `element` at `index`.
    ZYLFeatListChange(std::vector<E> &list, qsizetype index, E element)
        : m_list(&list), m_index(index), m_held(std::move(element)), m_kind(Kind::Insert)
    {
    }
    /// Creates the undone removal of the element at `index`.
    ZYLFeatListChange(std::vector<E> &list, qsizetype index)
        : m_list(&list), m_index(index), m_kind(Kind::Remove)
    {
    }

    void Undo() override { m_kind == Kind::Insert ? TakeOut() : PutIn(); }
    void Redo() override { m_kind == Kind::Insert ? PutIn() : TakeOut(); }

private:
    void PutIn()
    {
        // insert() moves from m_held only once it has the room, so a failed allocation
        // leaves both the list and the held element as they were.
        m_list->insert(m_list->begin() + m_index, std::move(m_held));
        m_held = E();
    }
    void TakeOut()
    {
        m_held = std::move((*m_list)[size_t(m_index)]);
        m_list->erase(m_list->begin() + m_index);
    }

    std::vector<E> *m_list;
    qsizetype m_index;
    E m_held{};
    Kind m_kind;
};
