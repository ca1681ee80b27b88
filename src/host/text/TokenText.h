// SPDX-License-Identifier: BSD-3-Clause
// A text with places that each frame fills in, such as "{frame:04}". Parsed once, resolved for each
// frame.
//
//   {frame}         the frame's number
//   {frame-1000}    the number less 1000; {frame+1} the number plus 1
//   {frame:04}      at least 4 digits, filled up with zeros; {frame:4} with spaces
//   {frame+1:03}    both
//   {file}          the picture's name without folder and extension
//   {{  }}          a brace
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

struct TokenValues {
    std::int64_t frame = 0;
    std::string file;
};

class TokenText {
public:
    // Nothing, with the reason in why, when a token is unknown or a brace stands alone.
    static std::optional<TokenText> Parse(std::string_view utf8, std::string& why);

    std::string Resolve(const TokenValues& values) const;
    // What no frame's text is shorter than: numbers of their least width, no file name.
    std::string Shortest() const;
    // Whether frames can differ in it.
    bool HasTokens() const;
    bool NeedsFile() const;

private:
    enum class Kind { kLiteral, kFrame, kFile };
    struct Piece {
        Kind kind = Kind::kLiteral;
        std::string text;        // kLiteral
        std::int64_t offset = 0; // kFrame
        int width = 0;           // kFrame: least number of characters, the sign included
        char fill = ' ';
    };
    static std::optional<Piece> ParseToken(std::string_view token);

    std::vector<Piece> m_pieces;
};

} // namespace host
