// SPDX-License-Identifier: BSD-3-Clause
// Relocatable memory, lent to plug-ins under lock. It moves at every chance it has, so that a
// pointer which is kept too long is found out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>

#include <epi/epi.h>

#include "host/Reference.h"

namespace host {

// Any number of threads may lock at once; all see one address until the last of them unlocks. Then
// the bytes go to a new address, unless there is no memory for it, and the old ones are overwritten with
// kPoison before they are freed.
class Handle : public Referenced<Handle, EPIHandleRef, RefKind::kHandle> {
public:
    static constexpr std::uint8_t kPoison = 0xA5;

    explicit Handle(std::size_t size); // zeroed
    explicit Handle(std::span<const std::uint8_t> bytes);
    // The memory ends also when it is still locked, with a note in the ledger.
    ~Handle();

    std::size_t Size() const { return m_size; }
    std::int32_t Locks() const;
    void* Lock();
    void Unlock() noexcept;

private:
    void Move();

    std::size_t m_size;
    mutable std::mutex m_mutex;
    std::unique_ptr<std::uint8_t[]> m_bytes;
    std::int32_t m_locks = 0;
};

// Pins a handle's memory, seen as one T, for as long as this lives. T is a plain record that fits.
template <class T>
class Pinned {
public:
    explicit Pinned(Handle& handle) : m_handle(&handle), m_record(static_cast<T*>(handle.Lock())) {}
    Pinned(const Pinned&) = delete;
    Pinned& operator=(const Pinned&) = delete;
    ~Pinned() { m_handle->Unlock(); }

    T& operator*() const { return *m_record; }
    T* operator->() const { return m_record; }

private:
    Handle* m_handle;
    T* m_record;
};

} // namespace host
