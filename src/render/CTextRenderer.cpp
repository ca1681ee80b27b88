// SPDX-License-Identifier: BSD-3-Clause
// Measures and draws the chosen text into a picture of its own and has it blended into the image.
#include "render/CTextRenderer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string_view>

#include "platform/Drawing.h"
#include "platform/StateSavers.h"
#include "platform/TextContext.h"
#include "render/ColorRef.h"
#include "render/LineWalk.h"
#include "render/PIOffscreen.h"
#include "render/Rounding.h"
#include "render/TextChoice.h"
#include "render/TextFields.h"

namespace {

constexpr std::int16_t kWorldDepth = 32;

// What blending takes for empty. Every other shade of grey is the coverage of glyphs.
constexpr COLORREF kKeyColor = 0xFEFEFE;
constexpr COLORREF kGlyphColor = 0;

// A text cut into lines; the text outlives it.
struct Lines {
    Lines(std::string_view text, bool several) {
        if (!several) {
            at[count++] = text;
            return;
        }
        LineWalk walk(text);
        while (walk.Next(&at[count]))
            ++count;
    }

    // Every byte may be a break, and a line follows the last one. The walk asks for one line more.
    std::array<std::string_view, sizeof(_TEXTPARAM::szDialogue) + 2> at;
    std::size_t count = 0;
};

struct TextStyle {
    platform::FontNumber font;
    std::int16_t size;
};

TextStyle StyleOf(const _TEXTPARAM& param) {
    unsigned char name[256];
    CtoPascalString(name, FieldText(param.szFontName));
    // The low 16 bits of the size are the platform's text size, sign and all.
    TextStyle style { 0, static_cast<std::int16_t>(param.nFontSize) };
    platform::GetFNum(name, &style.font);
    return style;
}

// A world of its own is current, with the text style set, until the scope ends.
class TextWorld {
public:
    // Null when no world of this size can be made.
    static platform::GWorldPtr Make(std::int32_t width, std::int32_t height) {
        if (width > platform::kMaxWorldSide || height > platform::kMaxWorldSide)
            return nullptr;
        platform::Rect bounds;
        platform::SetRect(&bounds, 0, 0, static_cast<std::int16_t>(width),
                          static_cast<std::int16_t>(height));
        platform::GWorldPtr world = nullptr;
        return platform::NewGWorld(&world, kWorldDepth, bounds) == platform::kNoErr ? world
                                                                                    : nullptr;
    }

    TextWorld(platform::GWorldPtr world, const TextStyle& style)
        : m_release(world), m_current(world) {
        platform::TextFont(style.font);
        platform::TextSize(style.size);
        platform::TextFace(0);
        platform::TextMode(platform::kSrcCopy);
    }

private:
    struct Current {
        explicit Current(platform::GWorldPtr world) { platform::SetGWorld(world, nullptr); }
        XSaveGWorld saved;
    };
    XReleaseGWorld m_release;
    Current m_current;
    XSaveText m_text;
};

struct TextBox {
    std::int32_t width;
    std::int32_t height;
    std::int16_t ascent;
    std::int32_t lineHeight;
};

std::int32_t WidthOf(const Lines& lines) {
    if (lines.count == 1) {
        unsigned char string[256];
        CtoPascalString(string, lines.at[0]);
        return platform::StringWidth(string);
    }
    std::int32_t width = 0;
    for (std::size_t i = 0; i < lines.count; ++i)
        width = std::max(width, platform::TextWidth(lines.at[i].data(), 0,
                                                    static_cast<std::int32_t>(lines.at[i].size())));
    return width;
}

std::optional<TextBox> Measure(const Lines& lines, const TextStyle& style) {
    const platform::GWorldPtr world = TextWorld::Make(256, 256);
    if (!world) {
        platform::TextContext::Current().TellNotDrawn("there is no memory to measure it in");
        return std::nullopt;
    }
    const TextWorld current(world, style);
    platform::FontInfo font;
    platform::GetFontInfo(&font);
    // Lines follow each other without the leading.
    const std::int32_t lineHeight = font.ascent + font.descent;
    return TextBox { WidthOf(lines), lineHeight * static_cast<std::int32_t>(lines.count),
                     font.ascent, lineHeight };
}

void SetDrawingColors(const _TEXTPARAM& param) {
    const bool box = (param.dwFlags & TEXT_BOX) != 0;
    platform::RGBColor fore;
    platform::RGBColor back;
    COLORREFtoRGB(fore, box ? param.crText : kGlyphColor);
    COLORREFtoRGB(back, box ? param.crBack : kKeyColor);
    platform::RGBForeColor(fore);
    platform::RGBBackColor(back);
}

// Into the current world, which has the size of box.
void DrawLines(const Lines& lines, const TextBox& box, const _TEXTPARAM& param) {
    const XSaveColor colors;
    SetDrawingColors(param);
    platform::Rect whole;
    platform::SetRect(&whole, 0, 0, static_cast<std::int16_t>(box.width),
                      static_cast<std::int16_t>(box.height));
    platform::EraseRect(whole);
    std::int32_t baseline = box.ascent;
    for (std::size_t i = 0; i < lines.count; ++i, baseline += box.lineHeight) {
        unsigned char string[256];
        CtoPascalString(string, lines.at[i]);
        platform::MoveTo(0, static_cast<std::int16_t>(baseline));
        platform::DrawString(string);
    }
}

// A text without an extent fits any picture: it draws nothing, as it should.
void TellTooLarge(const TextBox& box, const TextStyle& style, const char* why) {
    if (box.width <= 0 || box.height <= 0)
        return;
    char reason[160]; // there may be no memory for more
    std::snprintf(reason, sizeof reason, "at %d points it takes %d x %d pixels, more than %s",
                  style.size, box.width, box.height, why);
    platform::TextContext::Current().TellNotDrawn(reason);
}

// False, and told to the text context, when there can be no picture as large as that.
bool DrawAndBlend(PIOffscreen* image, const Lines& lines, const TextBox& box,
                  const TextStyle& style, _TEXTPARAM* param, const tagPOINT& position) {
    const platform::GWorldPtr world = TextWorld::Make(box.width, box.height);
    if (!world) {
        TellTooLarge(box, style, "a picture can have");
        return false;
    }
    const TextWorld current(world, style);
    DrawLines(lines, box, *param);
    const platform::PixMapHandle pixels = platform::GetGWorldPixMap(world);
    const XPixMapLocker locker(pixels);
    if (!locker.IsLocked()) {
        TellTooLarge(box, style, "there is memory for");
        return false;
    }
    _RTEXTIMAGE_INFO info { box.width, box.height, platform::GetPixRowBytes(pixels),
                            platform::GetPixBaseAddr(pixels),
                            kTextImageXrgb32 | kTextImageTopDown };
    CTextRenderer::CopyTextStringImage(image, &info, param, position.x, position.y);
    return true;
}

std::int32_t ScaledPosition(std::int32_t value, double scale, std::int32_t origin) {
    // Scaling 0 by infinity gives no number, and counts as 0.
    const double scaled = value * scale;
    // 2^52 is far outside every image and leaves room for the origin.
    constexpr double kFar = 4503599627370496.0;
    const auto whole =
        std::isnan(scaled) ? 0 : static_cast<std::int64_t>(std::clamp(scaled, -kFar, kFar));
    return SaturateToInt32(whole - origin);
}

// Top left of the text in image coordinates. Without a scale the frame's own position stands, and
// the origin, which belongs to the scaled frame, is not subtracted either.
tagPOINT PositionOf(const _TEXTPARAM& param, double scale, const tagPOINT& origin) {
    if (!(scale > 0.0))
        return param.ptPos;
    return { ScaledPosition(param.ptPos.x, scale, origin.x),
             ScaledPosition(param.ptPos.y, scale, origin.y) };
}

tagRECT CoveredBy(const TextBox& box, const tagPOINT& position) {
    const std::int64_t x = position.x;
    const std::int64_t y = position.y;
    return { position.x, position.y, SaturateToInt32(x + box.width),
             SaturateToInt32(y + box.height) };
}

} // namespace

long CTextRenderer::DoText(PIOffscreen* image, _TEXTPARAM* param, tagRECT* covered,
                           const char* info1, const char* info2, const char* info3,
                           const char* info4, double scale, tagPOINT* origin) {
    if (covered)
        *covered = {};
    if (FilledText(*param) == 0)
        return 0;
    const tagPOINT position = PositionOf(*param, scale, *origin);
    const TextStyle style = StyleOf(*param);
    // By its flag alone, although the question above was for a filled one: an empty text of higher
    // priority hides a filled one, as it always did in frames.
    const std::uint32_t choice = FlaggedText(*param);
    char buffer[kTextBufferSize];
    const Lines lines(ComposeText(choice, *param, { info1, info2, info3, info4 }, buffer),
                      choice == TEXT_DIALOGUE);
    const std::optional<TextBox> box = Measure(lines, style);
    if (box && DrawAndBlend(image, lines, *box, style, param, position) && covered)
        *covered = CoveredBy(*box, position);
    return 0;
}

void CTextRenderer::GetTextInfoText(_TEXTPARAM* param, char* out, long size, const char* info1,
                                    const char* info2, const char* info3, const char* info4) {
    if (size > 0)
        std::fill_n(out, size, '\0');
    const std::uint32_t choice = FilledText(*param);
    if (choice == 0)
        return;
    char buffer[kTextBufferSize];
    BoundedText(out, kTextBufferSize)
        .Append(ComposeText(choice, *param, { info1, info2, info3, info4 }, buffer));
}
