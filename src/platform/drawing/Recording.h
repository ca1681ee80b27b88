// SPDX-License-Identifier: BSD-3-Clause
// What was drawn into a world, as a list that can be compared, and the way from there to pixels.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/drawing/Pixels.h"
#include "platform/text/TextService.h"

namespace platform {

// Rows of pixels to draw into. What lies in a row after its last pixel may be written too.
struct Canvas {
    std::uint8_t* pixels;
    std::int64_t rowBytes;
    std::int32_t width, height;
};

// One step of a drawing, of plain words so that lists are compared and hashed as bytes.
struct Command {
    enum Kind : std::uint32_t { kFill, kText };

    std::uint32_t kind;
    Pixel color;
    std::int32_t left, top;     // of the rectangle; for text, the pen
    std::int32_t right, bottom; // 0 for text
    std::uint64_t line;         // the text's line, 0 for fills
};
static_assert(sizeof(Command) == 32);

class Recording {
public:
    // The rectangle must be clipped to the canvas. One over the whole canvas forgets what it hides.
    void Fill(const text::PixelBox& box, Pixel color, std::int32_t width, std::int32_t height);
    void Text(std::int32_t x, std::int32_t y, text::LinePtr line, Pixel color);
    void Clear();

    std::size_t Count() const { return m_commands.size(); }
    std::uint64_t Hash() const;
    bool SameAs(const std::vector<Command>& commands) const;
    const std::vector<Command>& Commands() const { return m_commands; }

    // True when the first step fills the whole canvas, so that no older byte shows through.
    bool CoversCanvas(std::int32_t width, std::int32_t height) const;
    void Draw(const Canvas& canvas) const;

private:
    bool IsFlat(std::int32_t width, std::int32_t height) const;
    void DrawFlat(const Canvas& canvas) const;

    std::vector<Command> m_commands;
    std::vector<text::LinePtr> m_lines; // of the text commands, in order
};

// The steps themselves.
void DrawFill(const Canvas& canvas, const text::PixelBox& box, Pixel color);
void DrawLine(const Canvas& canvas, const text::Line& line, std::int64_t x, std::int64_t y,
              Pixel color);

} // namespace platform
