// SPDX-License-Identifier: BSD-3-Clause
#include "platform/ui/support/Allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> s_allocations { 0 };

} // namespace

namespace test {

std::size_t AllocationsSoFar() {
    return s_allocations;
}

} // namespace test

// A sanitizer has its own, and sees to it that they go together; nothing is counted then.
#ifndef __SANITIZE_ADDRESS__

void* operator new(std::size_t size) {
    ++s_allocations;
    if (void* const memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

#endif
