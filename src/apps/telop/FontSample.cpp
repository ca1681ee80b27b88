// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/FontSample.h"

#include <algorithm>

#include "apps/telop/CommandError.h"
#include "host/text/TextField.h"

namespace telop {

namespace {

constexpr std::int32_t kWidth = 1280;
constexpr std::int32_t kMargin = 16;
constexpr std::int32_t kTextColumn = 400;
constexpr std::int32_t kNameSize = 16;
constexpr std::size_t kMaxNameBytes = 36; // what fits beside the text

// A line of a family's own ascent and descent rarely needs more.
std::int32_t RowHeight(int sizePx) {
    return std::max(sizePx * 7 / 4, kNameSize * 2);
}

void SetText(std::span<char> field, std::string_view name, std::string_view text) {
    std::string why;
    if (!host::SetField(field, name, text, why))
        throw CommandError(ExitCode::kUsage, why);
}

void Draw(const host::Effect& effect, host::Image& image, const _TEXTPARAM& params) {
    std::string why;
    if (!effect.RenderWith(params, image, {}, why))
        throw CommandError(ExitCode::kBadInput, why);
}

_TEXTPARAM BlackText(std::int32_t x, std::int32_t y, int sizePx) {
    _TEXTPARAM params {};
    params.dwFlags = TEXT_INFO;
    params.nOpacity = 100;
    params.ptPos = { x, y };
    params.nFontSize = sizePx;
    return params;
}

} // namespace

host::Frame DrawFontSample(const host::Effect& effect, std::span<const std::string> families,
                           const SampleStyle& style) {
    auto const rowHeight = RowHeight(style.sizePx);
    auto const rows = static_cast<std::int32_t>(families.size());
    host::Frame frame;
    frame.image = host::Image::Make(kWidth, rows * rowHeight + 2 * kMargin, host::kRgb24);
    if (!frame.image)
        throw CommandError(ExitCode::kUsage, "the sample would be too large; filter the families");
    for (std::int32_t y = 0; y < frame.image->Height(); ++y)
        std::ranges::fill(frame.image->Row(y), std::uint8_t { 255 });
    for (std::int32_t row = 0; row < rows; ++row) {
        auto const top = kMargin + row * rowHeight;
        auto name = BlackText(kMargin, top + (style.sizePx - kNameSize) / 2, kNameSize);
        SetText(name.szInfoText, "name", families[row].substr(0, kMaxNameBytes));
        Draw(effect, *frame.image, name);
        auto text = BlackText(kTextColumn, top, style.sizePx);
        SetText(text.szFontName, "family", families[row]);
        SetText(text.szInfoText, "--text", style.text);
        Draw(effect, *frame.image, text);
    }
    return frame;
}

} // namespace telop
