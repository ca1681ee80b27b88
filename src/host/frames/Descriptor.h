// SPDX-License-Identifier: BSD-3-Clause
// An open file that is closed on every way out.
#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include <unistd.h>

#include "host/Message.h"

namespace host {

class Descriptor {
public:
    explicit Descriptor(int value = -1) : m_value(value) {}
    Descriptor(Descriptor&& other) noexcept : m_value(std::exchange(other.m_value, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_value, other.m_value);
        return *this;
    }
    ~Descriptor() {
        if (m_value >= 0)
            ::close(m_value);
    }

    int Get() const { return m_value; }
    // 0 or an errno: closing is where some file systems report that the disk is full.
    int Close() { return ::close(std::exchange(m_value, -1)) == 0 ? 0 : errno; }

private:
    int m_value;
};

// All of the bytes; 0, or the errno that stopped it.
inline int WriteAll(int descriptor, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t wrote = ::write(descriptor, bytes.data(), bytes.size());
        if (wrote < 0 && errno != EINTR)
            return errno;
        if (wrote > 0)
            bytes = bytes.subspan(std::size_t(wrote));
    }
    return 0;
}

} // namespace host
