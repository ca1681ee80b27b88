// SPDX-License-Identifier: BSD-3-Clause
// The bytes of a text file that another program wrote, as text.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/TextEncoding.h"

namespace host {

struct TextFile {
    static constexpr std::size_t kMaxBadLines = 1000;

    std::string utf8;                  // without a byte order mark; lines end with LF
    std::vector<std::size_t> badLines; // from 1; where U+FFFD stands for bytes that are no text

    // A byte order mark says what UTF-8 and UTF-16 are; all else is in the encoding or, where none is
    // named, must be UTF-8. Nothing, with the reason and the line in why, when it is not, or when
    // there is a zero byte. The thread's text context stays as it is, and hears of nothing.
    static std::optional<TextFile> Decode(std::string_view bytes,
                                          std::optional<platform::TextEncoding> encoding,
                                          std::string& why);
};

} // namespace host
