// SPDX-License-Identifier: BSD-3-Clause
// The identification line of a frame, composed from the host's four information strings.
#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

#include "render/BoundedText.h"
#include "render/CTextRenderer.h"
#include "render/PascalString.h"

namespace {

constexpr std::size_t kInfoSize = sizeof(_EPIRECORD::szInfo1);
constexpr std::size_t kOutSize = 256;

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

// The text with its leading number printed with at least width digits, up to 4; an empty text counts as 0.
// SplitNumberAndString gives the largest number for one of ten and more digits that is larger still,
// but a frame must not show a number that is not its own: here the digits themselves are printed.
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

bool CTextRenderer::SplitNumberAndString(const char* text, long* number, char* rest) {
    const auto parts = Split(FieldText(text, kOutSize - 1));
    *number = parts ? NumberOf(parts->digits) : 0;
    if (parts) // else rest stays as it is: callers then use the text itself
        BoundedText(rest, kOutSize).Append(parts->rest);
    return parts.has_value();
}

void CTextRenderer::GetScoreInfoText(char* out, long format, const char* info1, const char* info2,
                                     const char* info3, const char* info4) {
    BoundedText line(out, kOutSize);
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
