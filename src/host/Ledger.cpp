// SPDX-License-Identifier: BSD-3-Clause
#include "host/Ledger.h"

#include <algorithm>

namespace host {

namespace {

constexpr std::array<const char*, kLentKinds> kKindNames {
    "image locks", "handle locks", "objects", "open archives", "handles", "archives", "images",
};

// A plug-in never makes the kinds after these.
constexpr std::size_t kBorrowedKinds = 4;

} // namespace

Ledger& Ledger::Get() {
    // Never destroyed, so that objects which outlive main can still be counted.
    static auto* const ledger = new Ledger;
    return *ledger;
}

std::int64_t Ledger::Outstanding(Lent kind) const {
    return m_counters[static_cast<std::size_t>(kind)].value.load(std::memory_order_relaxed);
}

bool Ledger::IsBalanced() const {
    return MisuseCount() == 0 &&
           std::all_of(m_counters.begin(), m_counters.begin() + kBorrowedKinds,
                       [](const Counter& counter) { return counter.value == 0; });
}

void Ledger::Keep(std::string message) {
    std::lock_guard lock(m_mutex);
    if (m_messages.size() < kMaxMessages)
        m_messages.push_back(std::move(message));
}

std::vector<std::string> Ledger::MisuseMessages() const {
    std::lock_guard lock(m_mutex);
    return m_messages;
}

void Ledger::ForgetMisuse() {
    std::lock_guard lock(m_mutex);
    m_misuses = 0;
    m_messages.clear();
}

std::string Ledger::Describe() const {
    std::string text;
    for (std::size_t kind = 0; kind < kBorrowedKinds; ++kind) {
        const auto count = Outstanding(static_cast<Lent>(kind));
        if (count != 0)
            text += std::to_string(count) + " " + kKindNames[kind] + " outstanding\n";
    }
    const auto messages = MisuseMessages();
    for (const auto& message : messages)
        text += message + "\n";
    const auto unnamed = MisuseCount() - static_cast<std::int64_t>(messages.size());
    if (unnamed > 0)
        text += "and " + std::to_string(unnamed) + " more calls against the rules\n";
    return text;
}

} // namespace host
