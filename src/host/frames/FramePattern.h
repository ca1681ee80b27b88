// SPDX-License-Identifier: BSD-3-Clause
// File names with a place for the frame's number: "shot.%04d.png" and "shot.####.png".
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace host {

class FramePattern {
public:
    // Whether the text is meant as a pattern: a '#', or a '%' with digits and a 'd', in its last
    // component.
    static bool LooksLikeOne(std::string_view path);
    // The place for the number is in the last component of the path and there is one of it; "%%" is a
    // percent sign in names that use %d. Nothing, and `why` says what is wrong, otherwise.
    static std::optional<FramePattern> Parse(std::string_view path, std::string& why);

    // The path of a frame; numbers that are wider than the place are written in full.
    std::string PathOf(std::int64_t frame) const;
    // The number in a file name without folders, if PathOf would make this name of it.
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
