// SPDX-License-Identifier: BSD-3-Clause
// Calls of the font libraries, which go on with less when an allocation fails and have no result that
// says so.
#pragma once

#include <cerrno>
#include <new>

namespace platform::text {

// What a call gives that got all the memory it asked for. The C library's allocator leaves its mark in
// errno; it does so also where it then found memory in another place, so the call is made once more before
// std::bad_alloc is thrown.
template <class Call>
auto WithAllMemory(const Call& call) {
    for (int attempt = 0; attempt < 2; ++attempt) {
        errno = 0;
        auto result = call();
        if (errno != ENOMEM) {
            return result;
        }
    }
    throw std::bad_alloc();
}

} // namespace platform::text
