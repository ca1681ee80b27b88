// SPDX-License-Identifier: BSD-3-Clause
// The fixed text fields of the boundary's records: what fits in them, and their bytes as text that
// can be edited and read back without a loss.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace host {

// Up to the NUL, or the whole field when it has none.
std::string_view FieldBytes(std::span<const char> field);

// Fills the field and clears its rest. False, with a reason that names the text, the limit and the
// length in why, when bytes do not fit before a NUL or hold one; the field is left alone then.
bool SetFieldBytes(std::span<char> field, std::string_view name, std::string_view bytes,
                   std::string& why);
// The same from UTF-8. Characters that the application's encoding lacks are refused too.
bool SetField(std::span<char> field, std::string_view name, std::string_view utf8,
              std::string& why);

// "'...' has characters that CP932 lacks".
std::string LackReason(std::string_view utf8);

// UTF-8 of bytes in the application's encoding, in which "\xHH" stands for a byte that is no text
// or a control character, and "\\" for a backslash.
std::string EscapeBytes(std::string_view bytes);
// The bytes again. Nothing, with the reason in why, when there is another escape or a character that
// the application's encoding lacks.
std::optional<std::string> UnescapeBytes(std::string_view utf8, std::string& why);

// LF and CR LF become CR, which ends a line of the dialogue.
std::string WithCarriageReturns(std::string_view text);

} // namespace host
