// SPDX-License-Identifier: BSD-3-Clause
// The texts that every renderer draws, with a counter in each, so that a text can change from frame
// to frame.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

enum class Content { kUnchanged, kChanging };

struct TextCase {
    const char* name;   // in the names of the measurements
    const char* family; // font family
    const char* text;   // UTF-8; lines end with LF; the digits of the counter stand where '#' does
    bool box;           // white on a black box, else white alone
    int opacity;        // per cent
    const char* encoding; // of the effect's bytes
    int sizePx = 36;
};

// Where every text's top left lies in the frame.
inline constexpr int kLeft = 54;
inline constexpr int kTop = 41;

// What an unchanged text counts: the score line is then C-005-0012.
inline constexpr std::uint32_t kStillCounter = 5'0012;

// Read-only; ends with the program.
std::span<const TextCase> Cases();

// The bytes of one text, whose counter is written in place.
class CountedText {
public:
    // text is in any encoding in which '#' is only itself.
    explicit CountedText(std::string_view text);

    // True when the bytes have changed. Digits that find no place are left out, the highest first.
    bool Set(std::uint32_t counter);
    const std::string& Bytes() const { return m_bytes; }

private:
    std::string m_bytes;
    std::vector<std::size_t> m_digits; // where they lie, lowest first
    std::uint32_t m_counter;
};

} // namespace bench
