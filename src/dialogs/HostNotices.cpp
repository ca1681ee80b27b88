// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/HostNotices.h"

#include <cstddef>

namespace dialogs {

namespace {

// Null when there is no table, or it ends before the entry.
template <class Table, class Entry>
Entry Find(const Table* table, Entry Table::*entry) {
    if (!table)
        return nullptr;
    const auto offset = reinterpret_cast<const std::byte*>(&(table->*entry)) -
                        reinterpret_cast<const std::byte*>(table);
    const auto end = static_cast<std::size_t>(offset) + sizeof(Entry);
    return end <= table->nSize ? table->*entry : nullptr;
}

} // namespace

void ParametersChanged(const _EPIRECORD& record) {
    if (const auto changed = Find(record.pParamProcs, &EPIParamProcs::ParametersChanged))
        changed(record.hFixedParam);
}

void OptionConfirmed(const _EPIRECORD& record) {
    if (const auto option = Find(record.pParamProcs, &EPIParamProcs::Option))
        option(1.0, 0);
}

void EditorOpened(const _EPIRECORD& record) {
    const auto call = Find(record.pHostProcs, &EPIHostProcs::Call);
    if (call && call(1) == 0)
        call(0);
}

void ModalOpens(const _EPIRECORD& record, EPIWindowRef window) {
    if (const auto opens = Find(record.pWindowProcs, &EPIWindowProcs::ModalOpens))
        opens(window);
}

void ModalEnds(const _EPIRECORD& record, EPIWindowRef window) {
    if (const auto ends = Find(record.pWindowProcs, &EPIWindowProcs::ModalEnds))
        ends(window);
}

} // namespace dialogs
