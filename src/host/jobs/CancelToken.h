// SPDX-License-Identifier: BSD-3-Clause
// A wish to stop a run, made by one side and looked at by the other.
#pragma once

#include <atomic>

namespace host {

// Cancel may be called on any thread and in a signal handler.
class CancelToken {
public:
    void Cancel() noexcept { m_cancelled.store(true, std::memory_order_relaxed); }
    bool IsCancelled() const noexcept { return m_cancelled.load(std::memory_order_relaxed); }

private:
    std::atomic<bool> m_cancelled { false };
    static_assert(std::atomic<bool>::is_always_lock_free,
                  "a signal handler may not wait for a lock");
};

} // namespace host
