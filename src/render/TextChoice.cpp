// SPDX-License-Identifier: BSD-3-Clause
// Chooses and composes the one text that is shown; the score is the identification line of a frame,
// composed from the host's four information strings.
#include "render/TextChoice.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "render/CTextRenderer.h"
#include "render/LocalizedString.h"
#include "render/TextFields.h"

namespace {

constexpr std::uint32_t kByPriority[] = { TEXT_SCORE, TEXT_INFO, TEXT_CHARACTER, TEXT_DIALOGUE };

bool IsFilled(std::uint32_t choice, const _TEXTPARAM& param) {
    switch (choice) {
    case TEXT_INFO:
        return param.szInfoText[0] != '\0';
    case TEXT_CHARACTER:
        return param.szCharacter[0] != '\0';
    case TEXT_DIALOGUE:
        return param.szDialogue[0] != '\0';
    default:
        return true;
    }
}

void AppendLocalized(BoundedText& text, const char* key) {
    char suffix[32];
    if (CopyLocalizedString(key, suffix, sizeof suffix))
        text.Append(FieldText(suffix));
}

std::string_view ComposeCharacter(const _TEXTPARAM& param, char (&buffer)[kTextBufferSize]) {
    BoundedText text(buffer, sizeof buffer);
    text.Append(FieldText(param.szCharacter));
    if (param.dwFlags & TEXT_OFFCHARACTER)
        AppendLocalized(text, "IDS_OFFCHARACTER");
    else if (param.dwFlags & TEXT_MONOLOGUE)
        AppendLocalized(text, "IDS_MONOLOGUE");
    return text.Text();
}

constexpr std::size_t kInfoSize = sizeof(_EPIRECORD::szInfo1);

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// A text that starts with a number, or is empty, in two parts.
struct NumberAndRest {
    std::string_view digits, rest;
};
std::optional<NumberAndRest> Split(std::string_view text) {
    const auto end = std::find_if_not(text.begin(), text.end(), IsDigit);
    if (end == text.begin() && !text.empty())
        return std::nullopt;
    const auto count = static_cast<std::size_t>(end - text.begin());
    return NumberAndRest { text.substr(0, count), text.substr(count) };
}

// A number too large for 32 bits gives the largest one, whatever the machine's long is.
long NumberOf(std::string_view digits) {
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    std::int64_t number = 0;
    for (const char digit : digits)
        number = std::min(number * 10 + (digit - '0'), kLargest);
    return static_cast<long>(number);
}

// The text with its leading number printed with at least width digits (4 at most); an empty text
// counts as 0. Of ten and more digits SplitNumberAndString may give the largest number instead, but a
// frame must not show a number that is not its own: here the digits themselves are printed.
void AppendPadded(BoundedText& out, std::string_view text, std::size_t width) {
    const auto parts = Split(text);
    if (!parts)
        return out.Append(text);
    const std::size_t start = parts->digits.find_first_not_of('0');
    const auto digits = start != parts->digits.npos ? parts->digits.substr(start) : "";
    out.Append(std::string_view("0000").substr(0, width - std::min(digits.size(), width)));
    out.Append(digits);
    out.Append(parts->rest);
}

} // namespace

std::uint32_t FlaggedText(const _TEXTPARAM& param) {
    for (const std::uint32_t choice : kByPriority)
        if (param.dwFlags & choice)
            return choice;
    return 0;
}

std::uint32_t FilledText(const _TEXTPARAM& param) {
    for (const std::uint32_t choice : kByPriority)
        if ((param.dwFlags & choice) && IsFilled(choice, param))
            return choice;
    return 0;
}

std::string_view ComposeText(std::uint32_t choice, const _TEXTPARAM& param,
                             const char* const (&infos)[4], char (&buffer)[kTextBufferSize]) {
    switch (choice) {
    case TEXT_SCORE:
        CTextRenderer::GetScoreInfoText(buffer, param.nScoreFormat, infos[0], infos[1], infos[2],
                                        infos[3]);
        return FieldText(buffer);
    case TEXT_INFO:
        return FieldText(param.szInfoText);
    case TEXT_CHARACTER:
        return ComposeCharacter(param, buffer);
    case TEXT_DIALOGUE:
        return FieldText(param.szDialogue);
    default:
        return {};
    }
}

bool CTextRenderer::SplitNumberAndString(const char* text, long* number, char* rest) {
    const auto parts = Split(FieldText(text, kTextBufferSize - 1));
    *number = parts ? NumberOf(parts->digits) : 0;
    if (parts) // else rest stays as it is: callers then use the text itself
        BoundedText(rest, kTextBufferSize).Append(parts->rest);
    return parts.has_value();
}

void CTextRenderer::GetScoreInfoText(char* out, long format, const char* info1, const char* info2,
                                     const char* info3, const char* info4) {
    BoundedText line(out, kTextBufferSize);
    if (format < 0 || format > 3)
        return;
    if (format == 0)
        line.Append("C-");
    if (format == 3) {
        line.Append(FieldText(info1, kInfoSize));
        line.Append("-");
    }
    if (format >= 2) {
        AppendPadded(line, FieldText(info2, kInfoSize), 3);
        line.Append("-");
    }
    AppendPadded(line, FieldText(info3, kInfoSize), 3);
    line.Append("-");
    AppendPadded(line, FieldText(info4, kInfoSize), 4);
}
