// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <algorithm>
#include <cstddef>

/// Makes sure `list` can take `extra` more elements without allocating, growing its
/// capacity geometrically. Edits allocate up front with it so that, once a change is
/// applied, keeping it cannot fail; growing by exactly what is needed would instead copy
/// the whole list on every edit.
template<class List>
void ZYLFeatMakeRoom(List &list, std::size_t extra = 1)
{
    const std::size_t needed = list.size() + extra;
    if (needed > list.capacity())
        list.reserve(std::max(needed, 2 * list.capacity()));
}
