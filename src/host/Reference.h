// SPDX-License-Identifier: BSD-3-Clause
// The references that the host hands out. A reference is the address of a cell that says what it
// stands for, so that one which is used after its object ended is noticed instead of followed.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "host/Ledger.h"

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

// An object that has a reference, of the type that records take, from its beginning to its end.
template <class Object, class Reference, RefKind kind>
class Referenced {
public:
    Referenced(const Referenced&) = delete;
    Referenced& operator=(const Referenced&) = delete;

    Reference Ref() const { return reinterpret_cast<Reference>(m_cell); }
    // Null, with a note in the ledger, for a reference that is no living object's.
    static Object* FromRef(Reference ref, const char* call) {
        return static_cast<Object*>(ResolveReference(ref, kind, call));
    }
    // Hands the object to a plug-in, which ends it through a table of the host.
    static Reference Give(std::unique_ptr<Object> object) {
        object->m_cell->given = true;
        Ledger::Get().Lend(Lent::kObject);
        // The plug-in has it until then, which the linter cannot see.
        return object.release()->Ref(); // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
    }
    bool IsGiven() const { return m_cell->given; }

protected:
    Referenced() : m_cell(MakeReference(kind, static_cast<Object*>(this))) {}
    ~Referenced() {
        if (IsGiven())
            Ledger::Get().Return(Lent::kObject);
        EndReference(m_cell);
    }

private:
    ReferenceCell* m_cell;
};

} // namespace host
