// SPDX-License-Identifier: BSD-3-Clause
// The text that a run draws: settings, what the options change in them, and the tokens that each frame
// fills in.
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

namespace telop {

// The options as they were typed; what is not given keeps the settings' value.
struct TextOptions {
    // At most one of these four.
    std::optional<std::string> info = {}, character = {}, dialogue = {};
    std::optional<int> score = {};
    std::optional<std::string> strings = {};
    bool off = false;
    bool monologue = false;
    std::optional<std::string> font = {}, color = {}, box = {}, position = {};
    std::optional<int> size = {}, opacity = {};
};

// What a frame is drawn with.
struct ResolvedText {
    _TEXTPARAM params {};
    std::array<std::array<char, 64>, 4> strings {}; // in the application's encoding
};

class FrameText {
public:
    // Throws a usage error that names the option when one does not fit the others, its limit or the
    // settings.
    FrameText(const TextOptions& options, const _TEXTPARAM& settings);

    // Without what the tokens make of it.
    const _TEXTPARAM& Params() const { return m_text.params; }
    // The option whose text in the parameters has tokens; empty when none has.
    std::string OptionWithTokens() const;
    bool NeedsFile() const;

    // False, with a reason that names the option, when a text is too long for this frame. Any
    // thread.
    bool Resolve(const host::TokenValues& values, ResolvedText& text, std::string& why) const;

private:
    // A text that has to be filled in; field is where it goes.
    enum class Field { kInfo, kCharacter, kDialogue, kString1, kString2, kString3, kString4 };
    struct Part {
        std::string option;
        Field field;
        host::TokenText text;
    };
    static std::span<char> FieldOf(ResolvedText& text, Field field);

    void SetKind(const TextOptions& options);
    void SetLook(const TextOptions& options);
    void SetSuffix(const TextOptions& options);
    void SetStrings(const TextOptions& options);
    void AddText(const std::string& option, Field field, std::string_view utf8);
    void AddLine(const std::string& option, Field field, std::string_view utf8);

    ResolvedText m_text;
    std::vector<Part> m_parts;
};

} // namespace telop
