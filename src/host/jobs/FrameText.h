// SPDX-License-Identifier: BSD-3-Clause
// One text as the effect takes it, and the tokens in it that each frame fills in.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <epi/epi.h>

#include "host/Effect.h"
#include "host/document/Track.h"
#include "host/text/TokenText.h"

namespace host {

// What a frame is drawn with.
struct ResolvedText {
    _TEXTPARAM params {};
    std::array<std::array<char, 64>, 4> strings {}; // in the thread's encoding
    // Other than 0 for a score line and a text with tokens, whose digits are to stand still. As wide as
    // the rest is aligned, for these are compared as bytes.
    std::int32_t counts = 0;
};

// As the effect's call takes it; refers to the text.
FrameInfo FrameInfoOf(const ResolvedText& text);

class FrameText {
public:
    // Of a track's settings, whose texts are in the thread's encoding, with the cue's text in the place
    // of theirs where there is a cue. strings are the four parts of a score line, UTF-8, or empty.
    // defines are filled in. Nothing, with the reason in why, when the text that is drawn has a token that is none, or is too
    // long whatever the frame is.
    static std::optional<FrameText> Of(const _TEXTPARAM& settings, const Cue* cue,
                                       std::span<const std::string> strings, const Defines& defines,
                                       std::string& why);

    bool Uses(Token token) const;

    // False, with a reason that names the text, when one is too long for this frame. Any thread.
    bool Resolve(const TokenValues& values, ResolvedText& text, std::string& why) const;

private:
    // A text that has to be filled in: of the parameters, or a part of the score line.
    struct Part {
        std::string name;
        TextKind kind;
        std::size_t string; // of kScore
        TokenText text;
    };
    static std::span<char> FieldOf(ResolvedText& text, TextKind kind, std::size_t string);
    bool SetStrings(std::span<const std::string> strings, const Defines& defines, std::string& why);
    bool SetOwnText(const Cue* cue, const Defines& defines, std::string& why);
    bool SetText(std::string name, TextKind kind, std::size_t string, std::string_view utf8,
                 const Defines& defines, std::string& why);

    ResolvedText m_text;
    std::vector<Part> m_parts;
};

} // namespace host
