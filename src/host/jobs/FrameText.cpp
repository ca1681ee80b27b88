// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/FrameText.h"

#include <algorithm>
#include <utility>

#include "host/document/Document.h"
#include "host/text/TextField.h"

namespace host {

std::optional<FrameText> FrameText::Of(const Document& document, std::string& why) {
    FrameText text(document.settings);
    return text.SetStrings(document, why) ? std::optional(std::move(text)) : std::nullopt;
}

bool FrameText::SetStrings(const Document& document, std::string& why) {
    // Only the score line draws them, and one that is not drawn may be anything.
    if (!document.stringsPresent || !(Params().dwFlags & TEXT_SCORE))
        return true;
    for (std::size_t i = 0; i < document.strings.size(); ++i) {
        const auto field = static_cast<Field>(static_cast<std::size_t>(Field::kString1) + i);
        if (!SetText(field, "information string " + std::to_string(i + 1), document.strings[i],
                     why))
            return false;
    }
    return true;
}

bool FrameText::SetText(Field field, const std::string& name, std::string_view utf8,
                        std::string& why) {
    auto parsed = TokenText::Parse(utf8, why);
    if (!parsed) {
        why = name + ": " + why;
        return false;
    }
    // What is too long whatever the frame is found now and not a thousand times later.
    if (!SetField(FieldOf(m_text, field), name, parsed->Shortest(), why))
        return false;
    std::erase_if(m_parts, [field](const Part& part) { return part.field == field; });
    if (parsed->HasTokens())
        m_parts.push_back({ name, field, *std::move(parsed) });
    return true;
}

std::span<char> FrameText::FieldOf(ResolvedText& text, Field field) {
    switch (field) {
    case Field::kInfo:
        return text.params.szInfoText;
    case Field::kCharacter:
        return text.params.szCharacter;
    case Field::kDialogue:
        return text.params.szDialogue;
    default:
        return text
            .strings[static_cast<std::size_t>(field) - static_cast<std::size_t>(Field::kString1)];
    }
}

std::string FrameText::NameWithTokens() const {
    for (const auto& part : m_parts)
        if (part.field < Field::kString1)
            return part.name;
    return {};
}

bool FrameText::NeedsFile() const {
    return std::any_of(m_parts.begin(), m_parts.end(),
                       [](const Part& part) { return part.text.NeedsFile(); });
}

bool FrameText::Resolve(const TokenValues& values, ResolvedText& text, std::string& why) const {
    text = m_text;
    return std::all_of(m_parts.begin(), m_parts.end(), [&](const Part& part) {
        return SetField(FieldOf(text, part.field), part.name, part.text.Resolve(values), why);
    });
}

} // namespace host
