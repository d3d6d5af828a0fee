// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatChange.h"

#include <QtGlobal>

#include <algorithm>
#include <vector>

/// The move of one element of a list to another index, made by `ZYLFeatRecorder::Move`.
/// The element at `from` ends at `to` and the elements between shift by one; undo moves it
/// back. Rotating in place never allocates, so neither direction can fail.
template<class E>
class ZYLFeatMoveChange final : public ZYLFeatChange {
public:
    ZYLFeatMoveChange(std::vector<E> &list, qsizetype from, qsizetype to)
        : m_list(&list), m_from(from), m_to(to)
    {
    }

    void Undo() override { Shift(m_to, m_from); }
    void Redo() override { Shift(m_from, m_to); }

private:
    void Shift(qsizetype from, qsizetype to)
    {
        const auto begin = m_list->begin();
        if (from < to)
            std::rotate(begin + from, begin + from + 1, begin + to + 1);
        else if (to < from)
            std::rotate(begin + to, begin + from, begin + from + 1);
    }

    std::vector<E> *m_list;
    qsizetype m_from;
    qsizetype m_to;
};
