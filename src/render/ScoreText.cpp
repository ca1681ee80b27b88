// SPDX-License-Identifier: BSD-3-Clause
// The identification line of a frame, composed from the host's four information strings.
#include <algorithm>
#include <cstdint>
#include <limits>
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

std::size_t CountDigits(std::string_view text) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsDigit) -
                                    text.begin());
}

// A number too large for 32 bits gives the largest one, whatever the machine's long is.
long NumberOf(std::string_view digits) {
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    std::int64_t number = 0;
    for (const char digit : digits)
        number = std::min(number * 10 + (digit - '0'), kLargest);
    return static_cast<long>(number);
}

// The text with its leading number printed with at least width digits. It is the digits themselves
// that are printed, so that a number of any length keeps them all; an empty text counts as 0.
void AppendPadded(BoundedText& out, std::string_view text, std::size_t width) {
    if (!text.empty() && !IsDigit(text[0]))
        return out.Append(text);
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    const std::size_t digits = CountDigits(text);
    out.AppendFill(width - std::min(digits, width), '0');
    out.Append(text);
}

} // namespace

bool CTextRenderer::SplitNumberAndString(const char* text, long* number, char* rest) {
    const std::string_view whole = FieldText(text, kOutSize - 1);
    *number = 0;
    if (!whole.empty() && !IsDigit(whole[0]))
        return false; // rest stays as it is: callers then use the text itself.
    const std::size_t digits = CountDigits(whole);
    *number = NumberOf(whole.substr(0, digits));
    BoundedText(rest, kOutSize).Append(whole.substr(digits));
    return true;
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
