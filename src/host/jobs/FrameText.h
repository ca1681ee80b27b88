// SPDX-License-Identifier: BSD-3-Clause
// The text that a run draws: parameters, and the tokens that each frame fills in.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <epi/epi.h>

#include "host/text/TokenText.h"

namespace host {

struct Document;

// What a frame is drawn with.
struct ResolvedText {
    _TEXTPARAM params {};
    std::array<std::array<char, 64>, 4> strings {}; // in the application's encoding
};

class FrameText {
public:
    enum class Field { kInfo, kCharacter, kDialogue, kString1, kString2, kString3, kString4 };

    // The parameters' texts as they stand, and no information strings.
    explicit FrameText(const _TEXTPARAM& params) { m_text.params = params; }
    // A document's settings, and its strings where the settings draw them. Nothing, with the reason
    // in why, when one of those has an unknown token or is too long whatever the frame is.
    static std::optional<FrameText> Of(const Document& document, std::string& why);

    // The document's strings, where the parameters draw them.
    bool SetStrings(const Document& document, std::string& why);
    // A text with tokens, UTF-8, in the place of the field's. name is what messages call it. False
    // with the reason.
    bool SetText(Field field, const std::string& name, std::string_view utf8, std::string& why);

    // Without what the tokens make of it. Changes hold for all frames.
    _TEXTPARAM& Params() { return m_text.params; }
    const _TEXTPARAM& Params() const { return m_text.params; }
    // The name of a text in the parameters that has tokens; empty when none has.
    std::string NameWithTokens() const;
    bool NeedsFile() const;

    // False, with a reason that names the text, when one is too long for this frame. Any thread.
    bool Resolve(const TokenValues& values, ResolvedText& text, std::string& why) const;

private:
    // A text that has to be filled in; field is where it goes.
    struct Part {
        std::string name;
        Field field;
        TokenText text;
    };
    static std::span<char> FieldOf(ResolvedText& text, Field field);

    ResolvedText m_text;
    std::vector<Part> m_parts;
};

} // namespace host
