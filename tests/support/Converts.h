// SPDX-License-Identifier: BSD-3-Clause
// Whether this machine has the tables of an encoding. The C library of a cross compiler comes without
// them; characters begin and end there all the same.
#pragma once

#include <cstdint>
#include <iconv.h>

inline bool Converts(const char* encoding) {
    const iconv_t handle = iconv_open("UTF-8", encoding);
    if (reinterpret_cast<std::intptr_t>(handle) == -1)
        return false;
    iconv_close(handle);
    return true;
}
