// SPDX-License-Identifier: BSD-3-Clause
// Refuses memory at a chosen allocation, whoever asks for it: this program or a library. Sanitizers have
// allocators of their own, so it is not built with them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace test {

enum class Refuse { kOne, kAllFrom };

// Of the calling thread's allocations from now on, refuses number `which` (from 0), or all from that one
// on, until its end.
class FailingMemory {
public:
    FailingMemory(int which, Refuse refuse);
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    bool HasRefused() const;
};

using Pixels = std::vector<std::uint8_t>;
// Draws into pixels of the right size. Where it cannot, it says false or throws std::bad_alloc.
using Drawing = std::function<bool(Pixels&)>;

// Refuses one allocation of a drawing after the other, and all from one on: what is drawn is right then,
// and what is drawn next. make prepares a drawing that finds nothing of its own from the one before.
void ExpectAllOrNothing(std::size_t bytes, const std::function<Drawing()>& make);

} // namespace test
