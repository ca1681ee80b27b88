// SPDX-License-Identifier: BSD-3-Clause
// A block of bytes that grows without clearing and keeps its room for the next frame.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace host {

class Bytes {
public:
    // At least `size` bytes, whose contents are unspecified; throws std::bad_alloc.
    std::span<std::uint8_t> Room(std::size_t size) {
        if (size > m_size) {
            m_data.reset(); // first, so that old and new are never held together
            m_size = 0;
            m_data = std::make_unique_for_overwrite<std::uint8_t[]>(size);
            m_size = size;
        }
        return { m_data.get(), size };
    }

private:
    std::unique_ptr<std::uint8_t[]> m_data;
    std::size_t m_size = 0;
};

} // namespace host
