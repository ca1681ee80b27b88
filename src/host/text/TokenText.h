// SPDX-License-Identifier: BSD-3-Clause
// A text with places that each frame fills in, such as "{frame:04}". Parsed once, resolved for each
// frame.
//
//   {frame}         the frame's number
//   {frame-1000}    the number less 1000; {frame+1} the number plus 1
//   {frame:04}      at least 4 digits, filled up with zeros; {frame:4} with spaces
//   {frame+1:03}    both
//   {first} {last}  the numbers of the shot's first and last frame; {count} how many frames it has; with
//                   offset and width as {frame}
//   {tc}            the frame's time code
//   {seconds}       whole seconds from the shot's zero to the frame; {seconds:.2} with two decimals
//   {file}          the picture's name without folder and extension
//   {name}          the name of the shot's folder
//   {date} {time}   of the run, the same for all its frames
//   {shot}          what somebody defined as shot
//   {{  }}          a brace
#pragma once

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/text/TimeCode.h"

namespace host {

enum class Token {
    kFrame,
    kFirst,
    kLast,
    kCount,
    kSeconds,
    kTimeCode,
    kFile,
    kName,
    kDate,
    kTime,
};

// Tokens that somebody defined, and their values, which are UTF-8 in which braces are only braces.
using Defines = std::map<std::string, std::string, std::less<>>;

// What all frames of a run have in common.
struct RunValues {
    // Of the shot, whichever of its frames are drawn, so that a part of them looks as it does in the
    // whole.
    std::int64_t first = 0;
    std::int64_t last = 0;
    std::int64_t count = 0;
    std::string name {}; // of the shot's folder, without those above it
    std::string date {}; // "2026-03-31"
    std::string time {}; // "23:59:59"
    TimeCode timeCode {};
    std::int64_t zeroFrame = 0; // the frame that is at 0 seconds and has the start's time code
    std::int64_t startCode = 0; // that time code, as TimeCode::Parse gives it
    Defines defines {};         // for those who parse and resolve at once

    // Of the frames with these numbers, which are ascending, in this folder; empty is the current one.
    // The first of them is at 0 seconds.
    void SetShot(std::span<const std::int64_t> numbers, const std::filesystem::path& shotFolder);
    void SetClock(const ShotClock& clock);
    // Date and time of day at that moment, in the process's time zone.
    void SetDate(std::time_t moment);
};

struct TokenValues {
    std::int64_t frame = 0;
    std::string file;
    std::shared_ptr<const RunValues> run {}; // null: RunValues as they are made
};

class TokenText {
public:
    // Nothing, with the reason in why, when a token is unknown or a brace stands alone. What is
    // defined is filled in at once.
    static std::optional<TokenText> Parse(std::string_view utf8, std::string& why,
                                          const Defines& defines = {});
    // The text in which a plain one, braces and all, stands for itself.
    static std::string Literal(std::string_view utf8);
    // Whether a token may be defined under that name: letters, digits, '_' and '-', no digit or '-' in
    // front, and none that has a meaning already. False with the reason in why.
    static bool IsDefinable(std::string_view name, std::string& why);

    std::string Resolve(const TokenValues& values) const;
    // What no frame's text is shorter than: numbers of their least width, no names.
    std::string Shortest() const;
    // Whether it has a token, so that runs or frames can differ in it.
    bool HasTokens() const;
    bool Uses(Token token) const;

private:
    struct Piece {
        std::optional<Token> token {}; // nothing: text as it stands
        std::string text {};
        std::int64_t offset = 0; // of numbers
        int width = 0;           // of numbers: least number of characters, the sign included
        char fill = ' ';
        int decimals = 0; // of seconds

        bool IsNumber() const;
    };
    static std::optional<Piece> ParseToken(std::string_view token);
    static void AppendNumber(std::string& text, const Piece& piece, std::int64_t number);

    std::vector<Piece> m_pieces;
};

} // namespace host
