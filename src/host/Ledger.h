// SPDX-License-Identifier: BSD-3-Clause
// What the host has lent to plug-ins and not got back, and what they did against the rules.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace host {

enum class Lent {
    kImageLock,
    kHandleLock,
    kObject,      // given to a plug-in (an image, an archive, a handle), not ended by it
    kOpenArchive, // opened through the archive table, not closed
    kHandle,      // alive, whoever made it
    kArchive,     // alive, whoever made it
    kImage,       // alive, whoever made it
};
inline constexpr std::size_t kLentKinds = 7;

// One for the process, since the callback tables know no other context. Any thread; counting costs
// one relaxed atomic addition.
class Ledger {
public:
    static Ledger& Get();

    void Lend(Lent kind) { Count(kind).fetch_add(1, std::memory_order_relaxed); }
    void Return(Lent kind, std::int64_t count = 1) {
        Count(kind).fetch_sub(count, std::memory_order_relaxed);
    }
    std::int64_t Outstanding(Lent kind) const;
    // True when nothing that a plug-in borrows or makes (the first four kinds) is outstanding and
    // nothing was misused.
    bool IsBalanced() const;

    // Takes a note of a call that breaks the contract, in words and numbers. Only the first
    // kMaxMessages are kept word for word, and none without memory for them.
    template <class... Parts>
    void RecordMisuse(const Parts&... parts) noexcept {
        m_misuses.fetch_add(1, std::memory_order_relaxed);
        try {
            Keep((std::string() + ... + TextOf(parts)));
        } catch (const std::bad_alloc&) { // it counts
        }
    }
    std::int64_t MisuseCount() const { return m_misuses.load(std::memory_order_relaxed); }
    std::vector<std::string> MisuseMessages() const;
    void ForgetMisuse();
    static constexpr std::size_t kMaxMessages = 64;

    // Lines for people: what is outstanding and what was misused; empty when balanced.
    std::string Describe() const;

private:
    // Each count has a cache line of its own: the threads of a render meet here at every frame.
    struct alignas(64) Counter {
        std::atomic<std::int64_t> value { 0 };
    };
    static std::string TextOf(std::string_view words) { return std::string(words); }
    static std::string TextOf(std::int32_t number) { return std::to_string(number); }
    void Keep(std::string message);
    std::atomic<std::int64_t>& Count(Lent kind) {
        return m_counters[static_cast<std::size_t>(kind)].value;
    }

    std::array<Counter, kLentKinds> m_counters;
    std::atomic<std::int64_t> m_misuses { 0 };
    mutable std::mutex m_mutex;
    std::vector<std::string> m_messages;
};

} // namespace host
