// SPDX-License-Identifier: BSD-3-Clause
// The state of the current port, and drawing and measuring with it.
#include <algorithm>
#include <limits>

#include "platform/Drawing.h"
#include "platform/drawing/World.h"

namespace platform {
namespace {

constexpr std::int16_t kDefaultSize = 12;

PortState* CurrentState() {
    GWorld* const port = GetPort();
    return port ? &port->state : nullptr;
}

// The em in pixels; 0 or less means that nothing is drawn.
std::int32_t SizeOf(const PortState& state) {
    return state.size == 0 ? kDefaultSize : state.size;
}

// The line of the current port's font; null when nothing is to be drawn.
text::LinePtr LineOf(const PortState* state, std::string_view bytes) {
    if (!state || SizeOf(*state) < 0 || bytes.empty())
        return nullptr;
    return text::LayOutLine(state->font, SizeOf(*state), bytes);
}

std::int32_t Saturate(std::int64_t value) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

void DrawBytes(std::string_view bytes) {
    PortState* const state = CurrentState();
    if (const text::LinePtr line = LineOf(state, bytes)) {
        text::TellCut(*line, state->penY, GetPort()->pixels.height);
        GetPort()->pixels.Text(state->penX, state->penY, line, ToPixel(state->fore));
        state->penX = Saturate(state->penX + line->WidthPx());
    }
}

std::int32_t WidthOf(std::string_view bytes) {
    const text::LinePtr line = LineOf(CurrentState(), bytes);
    return line ? Saturate(line->WidthPx()) : 0;
}

std::string_view BytesOf(const std::uint8_t* text) {
    return { reinterpret_cast<const char*>(text) + 1, text[0] };
}

std::string_view BytesOf(const char* text, std::int32_t offset, std::int32_t length) {
    if (offset < 0 || length <= 0)
        return {};
    return { text + offset, static_cast<std::size_t>(length) };
}

std::int16_t ToShort(std::int32_t value) {
    return static_cast<std::int16_t>(
        std::min<std::int32_t>(value, std::numeric_limits<std::int16_t>::max()));
}

void FillInPort(const Rect& rect, Pixel color) {
    if (GWorld* const port = GetPort())
        port->pixels.Fill(rect, color);
}

} // namespace

// State ------------------------------------------------------------------------------------------

void RGBForeColor(const RGBColor& color) {
    if (PortState* const state = CurrentState())
        state->fore = color;
}

void RGBBackColor(const RGBColor& color) {
    if (PortState* const state = CurrentState())
        state->back = color;
}

void GetForeColor(RGBColor* color) {
    const PortState* const state = CurrentState();
    *color = state ? state->fore : RGBColor { 0, 0, 0 };
}

void GetBackColor(RGBColor* color) {
    const PortState* const state = CurrentState();
    *color = state ? state->back : RGBColor { 0, 0, 0 };
}

void TextFont(FontNumber font) {
    if (PortState* const state = CurrentState())
        state->font = font;
}

void TextSize(std::int16_t points) {
    if (PortState* const state = CurrentState())
        state->size = points;
}

void TextFace(std::int16_t face) {
    if (PortState* const state = CurrentState())
        state->face = face;
}

void TextMode(std::int16_t mode) {
    if (PortState* const state = CurrentState())
        state->mode = mode;
}

FontNumber GetPortTextFont(CGrafPtr port) {
    return port ? port->state.font : FontNumber { 0 };
}

std::int16_t GetPortTextSize(CGrafPtr port) {
    return port ? port->state.size : std::int16_t { 0 };
}

std::int16_t GetPortTextFace(CGrafPtr port) {
    return port ? port->state.face : std::int16_t { 0 };
}

std::int16_t GetPortTextMode(CGrafPtr port) {
    return port ? port->state.mode : std::int16_t { 0 };
}

void MoveTo(std::int16_t x, std::int16_t y) {
    if (PortState* const state = CurrentState()) {
        state->penX = x;
        state->penY = y;
    }
}

// Rectangles -------------------------------------------------------------------------------------

void EraseRect(const Rect& rect) {
    RGBColor back;
    GetBackColor(&back);
    FillInPort(rect, ToPixel(back));
}

void PaintRect(const Rect& rect) {
    RGBColor fore;
    GetForeColor(&fore);
    FillInPort(rect, ToPixel(fore));
}

void FrameRect(const Rect& rect) {
    if (rect.left >= rect.right || rect.top >= rect.bottom)
        return;
    // One pixel less than a side that lies inside the rectangle cannot overflow.
    const auto next = [](std::int16_t edge) { return static_cast<std::int16_t>(edge + 1); };
    const auto before = [](std::int16_t edge) { return static_cast<std::int16_t>(edge - 1); };
    PaintRect({ rect.top, rect.left, next(rect.top), rect.right });
    PaintRect({ before(rect.bottom), rect.left, rect.bottom, rect.right });
    PaintRect({ rect.top, rect.left, rect.bottom, next(rect.left) });
    PaintRect({ rect.top, before(rect.right), rect.bottom, rect.right });
}

// Text -------------------------------------------------------------------------------------------

void GetFontInfo(FontInfo* info) {
    const PortState* const state = CurrentState();
    if (!state || SizeOf(*state) < 0) {
        *info = {};
        return;
    }
    const text::FontMetrics metrics = text::MetricsOf(state->font, SizeOf(*state));
    *info = { ToShort(metrics.ascent), ToShort(metrics.descent), ToShort(metrics.maxAdvance),
              ToShort(metrics.leading) };
}

void DrawString(const std::uint8_t* text) {
    DrawBytes(BytesOf(text));
}

void DrawText(const char* text, std::int32_t offset, std::int32_t length) {
    DrawBytes(BytesOf(text, offset, length));
}

std::int32_t StringWidth(const std::uint8_t* text) {
    return WidthOf(BytesOf(text));
}

std::int32_t TextWidth(const char* text, std::int32_t offset, std::int32_t length) {
    return WidthOf(BytesOf(text, offset, length));
}

} // namespace platform
