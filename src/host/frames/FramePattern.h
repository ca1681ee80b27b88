// SPDX-License-Identifier: BSD-3-Clause
// File names with a place for the frame's number: "shot.%04d.png" and "shot.####.png".
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

// A frame's number where a name has it: digits, with their sign.
struct NumberPlace {
    std::size_t at = 0;
    std::size_t length = 0;
    std::int64_t number = 0;
};
// The places in a file name without folder and extension, from the last to the first. A minus is a
// sign at the name's start and behind a dot or an underscore, where no hyphen would stand. Numbers
// beyond kFrameMin and kFrameMax are none.
std::vector<NumberPlace> NumbersIn(std::string_view stem);

class FramePattern {
public:
    // Whether the text is meant as a pattern: a '#', or a '%' with digits and a 'd', in its last
    // component.
    static bool LooksLikeOne(std::string_view path);
    // The place for the number is in the last component of the path and there is one of it; "%%" is a
    // percent sign in names that use %d. Nothing, and `why` says what is wrong, otherwise.
    static std::optional<FramePattern> Parse(std::string_view path, std::string& why);
    // The pattern of a numbered picture, "shot.####.png" of "shot.0012.png", with as many places as
    // its last number has digits. Nothing for a name without a number, or where no pattern can stand
    // for the rest of it.
    static std::optional<std::string> Of(std::string_view path);

    // The path of a frame; numbers that are wider than the place are written in full, and a minus
    // stands before it.
    std::string PathOf(std::int64_t frame) const;
    // The number in a file name without folders, if PathOf would make this name of it. A minus may
    // take one of the places too, as it does for printf.
    std::optional<std::int64_t> NumberIn(std::string_view fileName) const;
    // With its trailing slash; empty for the current folder.
    const std::string& Folder() const { return m_folder; }
    std::size_t Digits() const { return m_digits; }

private:
    std::string m_folder;
    std::string m_before;
    std::string m_after;
    std::size_t m_digits = 1;
};

} // namespace host
