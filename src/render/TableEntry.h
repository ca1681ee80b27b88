// SPDX-License-Identifier: BSD-3-Clause
// Looks into the host's tables of calls, which open with their own size: one of an older host ends
// earlier.
#pragma once

#include <cstddef>

namespace render {

// Null when there is no table, or it ends before the entry, or holds null there.
template <class Table, class Entry>
Entry FindEntry(const Table* table, Entry Table::*entry) {
    if (!table)
        return nullptr;
    const auto offset = reinterpret_cast<const std::byte*>(&(table->*entry)) -
                        reinterpret_cast<const std::byte*>(table);
    const auto end = static_cast<std::size_t>(offset) + sizeof(Entry);
    return end <= table->nSize ? table->*entry : nullptr;
}

} // namespace render
