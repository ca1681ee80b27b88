// SPDX-License-Identifier: BSD-3-Clause
// An open file that is closed on every way out, and what the system says about errors. Internal to
// the frame files.
#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <system_error>

#include <unistd.h>

namespace host {

class Descriptor {
public:
    explicit Descriptor(int value) : m_value(value) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (m_value >= 0)
            ::close(m_value);
    }

    int Get() const { return m_value; }
    // Closing is where some file systems report that the disk is full.
    bool Close() {
        const int value = m_value;
        m_value = -1;
        return ::close(value) == 0;
    }

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

// Unlike strerror, for any thread.
inline std::string ErrorText(int error) {
    return std::generic_category().message(error);
}

} // namespace host
