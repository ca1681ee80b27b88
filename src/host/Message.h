// SPDX-License-Identifier: BSD-3-Clause
// What messages are made of.
#pragma once

#include <string>
#include <string_view>

namespace host {

// Each byte as "\xHH".
void AppendEscaped(std::string& text, std::string_view bytes);

// Text from outside, such as a file's name, as it may stand in a line on a terminal or in a log:
// control characters, line ends too, and bytes that are no UTF-8 are "\xHH".
std::string Printable(std::string_view text);

// The same for a whole message, whose own line ends stay.
std::string PrintableLines(std::string_view message);

// What the system says of an errno; unlike strerror, for any thread.
std::string ErrorText(int error);

} // namespace host
