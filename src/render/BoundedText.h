// SPDX-License-Identifier: BSD-3-Clause
// Puts strings one after the other into a fixed buffer and drops what does not fit.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

class BoundedText {
public:
    // Empties out, which has room for size bytes with the NUL; size is above 0.
    BoundedText(char* out, std::size_t size) : m_start(out), m_at(out), m_left(size - 1) {
        *m_at = '\0';
    }

    void Append(std::string_view text) {
        const std::size_t length = std::min(text.size(), m_left);
        m_at = std::copy_n(text.data(), length, m_at);
        m_left -= length;
        *m_at = '\0';
    }
    std::string_view Text() const { return { m_start, static_cast<std::size_t>(m_at - m_start) }; }

private:
    char* m_start;
    char* m_at;
    std::size_t m_left;
};
