// SPDX-License-Identifier: BSD-3-Clause
// Reads tables of localized strings: "key" = "value"; in UTF-8, with /* */ and // comments.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace platform {

// Keys and values in UTF-8. A key that comes twice has its last value.
using StringTable = std::map<std::string, std::string, std::less<>>;

// Called with the line (from 1) and the reason for each entry that cannot be read.
using StringTableFault = std::function<void(std::size_t line, std::string_view reason)>;

// Keys and values are quoted; a word of letters, digits and _ . - needs no quotes. In quotes a
// backslash goes before n, r, t, a quote or a backslash, and \Uxxxx is a UTF-16 unit in hexadecimal.
// Reading goes on in the line after the start of an entry that cannot be read.
StringTable ParseStringTable(std::string_view text, const StringTableFault& fault);

} // namespace platform
