// SPDX-License-Identifier: BSD-3-Clause
#include "host/Handle.h"

#include <algorithm>
#include <new>
#include <utility>

#include "host/Ledger.h"

namespace host {

namespace {

// Never empty, so that the address of an empty handle is not null either.
std::unique_ptr<std::uint8_t[]> Allocate(std::size_t size) {
    return std::make_unique<std::uint8_t[]>(std::max<std::size_t>(size, 1));
}

} // namespace

Handle::Handle(std::size_t size) : m_size(size), m_bytes(Allocate(size)) {
    Ledger::Get().Lend(Lent::kHandle);
}

Handle::Handle(std::span<const std::uint8_t> bytes) : Handle(bytes.size()) {
    std::copy(bytes.begin(), bytes.end(), m_bytes.get());
}

Handle::~Handle() {
    auto& ledger = Ledger::Get();
    ledger.Return(Lent::kHandle);
    if (m_locks == 0)
        return;
    ledger.Return(Lent::kHandleLock, m_locks);
    ledger.RecordMisuse("a handle ended with ", m_locks, " locks");
}

std::int32_t Handle::Locks() const {
    std::lock_guard lock(m_mutex);
    return m_locks;
}

void* Handle::Lock() {
    std::lock_guard lock(m_mutex);
    ++m_locks;
    Ledger::Get().Lend(Lent::kHandleLock);
    return m_bytes.get();
}

void Handle::Unlock() noexcept {
    std::lock_guard lock(m_mutex);
    if (m_locks == 0) {
        Ledger::Get().RecordMisuse("a handle was unlocked that is not locked");
        return;
    }
    Ledger::Get().Return(Lent::kHandleLock);
    if (--m_locks == 0)
        Move();
}

void Handle::Move() {
    // The new place is taken while the old one is still held, so it has another address.
    std::unique_ptr<std::uint8_t[]> moved(new (std::nothrow)
                                              std::uint8_t[std::max<std::size_t>(m_size, 1)]);
    if (!moved)
        return;
    std::copy_n(m_bytes.get(), m_size, moved.get());
    std::fill_n(m_bytes.get(), m_size, kPoison);
    m_bytes = std::move(moved);
}

} // namespace host
