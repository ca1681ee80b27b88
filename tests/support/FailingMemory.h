// SPDX-License-Identifier: BSD-3-Clause
// Refuses memory at a chosen allocation, whoever asks for it: this program or a library. Sanitizers have
// allocators of their own, so it is not built with them.
#pragma once

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

} // namespace test
