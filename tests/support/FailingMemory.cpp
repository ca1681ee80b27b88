// SPDX-License-Identifier: BSD-3-Clause
// Stands in front of the C library's allocator, as its documentation allows programs to.
#include "support/FailingMemory.h"

#include <cerrno>
#include <cstddef>
#include <gtest/gtest.h>
#include <new>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {

thread_local bool t_armed = false;
thread_local bool t_refused = false;
thread_local int t_left = 0; // allocations that still succeed
thread_local test::Refuse t_refuse = test::Refuse::kOne;

bool Refused() {
    if (!t_armed || t_left-- > 0)
        return false;
    t_armed = t_refuse == test::Refuse::kAllFrom;
    t_left = 0;
    t_refused = true;
    errno = ENOMEM;
    return true;
}

} // namespace

namespace test {

FailingMemory::FailingMemory(int which, Refuse refuse) {
    t_left = which;
    t_refuse = refuse;
    t_refused = false;
    t_armed = true;
}

FailingMemory::~FailingMemory() {
    t_armed = false;
}

bool FailingMemory::HasRefused() const {
    return t_refused;
}

void ExpectAllOrNothing(std::size_t bytes, const std::function<Drawing()>& make) {
    Pixels right(bytes);
    ASSERT_TRUE(make()(right));
    for (const Refuse refuse : { Refuse::kOne, Refuse::kAllFrom }) {
        bool refused = true;
        for (int which = 0; refused; ++which) {
            Pixels pixels(bytes);
            const Drawing draw = make();
            bool drawn = false;
            try {
                const FailingMemory failing(which, refuse);
                drawn = draw(pixels);
            } catch (const std::bad_alloc&) { // nothing is drawn
            }
            refused = t_refused;
            EXPECT_TRUE(drawn ? pixels == right : refused) << "without allocation " << which;
            EXPECT_TRUE(draw(pixels) && pixels == right) << "after allocation " << which;
            EXPECT_TRUE(refused || which > 0);
        }
    }
}

} // namespace test

extern "C" {

void* malloc(std::size_t size) {
    return Refused() ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    return Refused() ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) {
    return Refused() ? nullptr : __libc_realloc(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return Refused() ? nullptr : __libc_memalign(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
    *memory = Refused() ? nullptr : __libc_memalign(alignment, size);
    return *memory ? 0 : ENOMEM;
}

} // extern "C"
