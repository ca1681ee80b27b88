// SPDX-License-Identifier: BSD-3-Clause
// The references that the host hands out. A reference is the address of a cell that says what it
// stands for, so that one which is used after its object ended is noticed instead of followed.
#pragma once

#include <atomic>
#include <cstdint>

namespace host {

enum class RefKind : std::uint32_t { kNone = 0, kImage = 1, kArchive = 2, kHandle = 3 };
const char* NameOf(RefKind kind);

struct ReferenceCell {
    std::atomic<void*> object { nullptr };
    std::atomic<RefKind> kind { RefKind::kNone };
    // The object belongs to a plug-in, which ends it through a callback.
    std::atomic<bool> given { false };
    ReferenceCell* nextEnded = nullptr;
};

// Cells are never given back to the system, and one that has ended is reused only after
// kCellsInQuarantine others have ended. Any thread.
ReferenceCell* MakeReference(RefKind kind, void* object);
void EndReference(ReferenceCell* cell) noexcept;
inline constexpr std::size_t kCellsInQuarantine = 1024;

// The object behind a reference. Null, with a note in the ledger that names the call, for a null
// reference, one of another kind, or one whose object has ended.
void* ResolveReference(const void* reference, RefKind kind, const char* call);

} // namespace host
