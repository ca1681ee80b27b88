// SPDX-License-Identifier: BSD-3-Clause
#include "host/Reference.h"

#include <deque>
#include <mutex>
#include <utility>

namespace host {

namespace {

struct Cells {
    std::mutex mutex;
    std::deque<ReferenceCell> all; // grows at its end only, so that cells stay where they are
    // Linked from the first that ended to the last: an end takes no memory.
    ReferenceCell* firstEnded = nullptr;
    ReferenceCell* lastEnded = nullptr;
    std::size_t ended = 0;
};

// Never destroyed: a reference that is used while the process ends is noticed as well.
Cells& TheCells() {
    static auto* const cells = new Cells;
    return *cells;
}

} // namespace

const char* NameOf(RefKind kind) {
    switch (kind) {
    case RefKind::kImage:
        return "image";
    case RefKind::kArchive:
        return "archive";
    case RefKind::kHandle:
        return "handle";
    case RefKind::kNone:
        break;
    }
    return "nothing";
}

ReferenceCell* MakeReference(RefKind kind, void* object) {
    auto& cells = TheCells();
    std::lock_guard lock(cells.mutex);
    ReferenceCell* cell;
    if (cells.ended > kCellsInQuarantine) {
        cell = std::exchange(cells.firstEnded, cells.firstEnded->nextEnded);
        --cells.ended;
    } else {
        cell = &cells.all.emplace_back();
    }
    cell->object.store(object, std::memory_order_relaxed);
    cell->given.store(false, std::memory_order_relaxed);
    cell->kind.store(kind, std::memory_order_release);
    return cell;
}

void EndReference(ReferenceCell* cell) noexcept {
    auto& cells = TheCells();
    std::lock_guard lock(cells.mutex);
    cell->kind.store(RefKind::kNone, std::memory_order_release);
    cell->object.store(nullptr, std::memory_order_relaxed);
    cell->nextEnded = nullptr;
    (cells.ended == 0 ? cells.firstEnded : cells.lastEnded->nextEnded) = cell;
    cells.lastEnded = cell;
    ++cells.ended;
}

void* ResolveReference(const void* reference, RefKind kind, const char* call) {
    const auto* cell = static_cast<const ReferenceCell*>(reference);
    const auto found = cell ? cell->kind.load(std::memory_order_acquire) : RefKind::kNone;
    if (cell && found == kind)
        return cell->object.load(std::memory_order_relaxed);

    if (!cell)
        Ledger::Get().RecordMisuse(call, " was given a null reference");
    else if (found == RefKind::kNone)
        Ledger::Get().RecordMisuse(call, " was given a reference whose object has ended");
    else
        Ledger::Get().RecordMisuse(call, " was given a reference of kind ", NameOf(found), ", not ",
                                   NameOf(kind));
    return nullptr;
}

} // namespace host
