// SPDX-License-Identifier: BSD-3-Clause
// What was drawn into a world, as a list that can be compared, and the way from there to pixels.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/drawing/Pixels.h"
#include "platform/text/TextService.h"

namespace platform {

// Rows of pixels to draw into.
struct Canvas {
    std::uint8_t* pixels;
    std::int64_t rowBytes;
    std::int32_t width, height;

    std::uint8_t* At(std::int64_t x, std::int64_t y) const { return pixels + y * rowBytes + x * 4; }
};

// One step of a drawing, of plain words so that lists are hashed as bytes.
struct Command {
    enum Kind : std::uint32_t { kFill, kText };

    std::uint32_t kind;
    Pixel color;
    std::int32_t left, top;     // of the rectangle; for text, the pen
    std::int32_t right, bottom; // 0 for text
    std::uint64_t line;         // the text's line, 0 for fills

    bool operator==(const Command&) const = default;
};
static_assert(sizeof(Command) == 32);

class Recording {
public:
    // The rectangle must be clipped to the canvas. One over the whole canvas forgets what it hides.
    void Fill(const text::PixelBox& box, Pixel color, std::int32_t width, std::int32_t height);
    void Text(std::int32_t x, std::int32_t y, text::LinePtr line, Pixel color);
    void Clear();

    std::size_t Count() const { return m_commands.size(); }
    std::int64_t Bytes() const; // that its lists and the lines in them take
    std::uint64_t Hash() const;
    bool SameAs(const Recording& other) const;

    // True when the first step fills the whole canvas, so that no older byte shows through.
    bool CoversCanvas(std::int32_t width, std::int32_t height) const;
    // Onto what the canvas holds. Throws std::bad_alloc; the canvas is then as it was.
    void Draw(const Canvas& canvas) const;

    // Where this and another drawing on canvases of that size may differ, clipped to them, when both
    // are text of one colour over the same ground, on the same pens. Nothing when they have less in
    // common than that, or when it is more than half of the canvas, which is drawn sooner as a whole.
    std::optional<text::PixelBox> DifferenceFrom(const Recording& other, std::int32_t width,
                                                 std::int32_t height) const;
    // Onto a canvas that holds another drawing, from which this one differs in the box alone; both as
    // above. Throws std::bad_alloc; the canvas is then as it was.
    void Redraw(const Canvas& canvas, const text::PixelBox& box) const;

private:
    bool IsFlat(std::int32_t width, std::int32_t height) const;
    template <class Visit>
    void ForEachStep(const Visit& visit) const;

    std::vector<Command> m_commands;
    std::vector<text::LinePtr> m_lines; // of the text commands, in order
};

// The pixels of the recording on a canvas of that size: an older picture of the same drawing when
// there is one, else a new one. Shared, so only for reading. Throws std::bad_alloc.
std::shared_ptr<const std::uint8_t> PictureOf(const Recording& recording, std::int32_t width,
                                              std::int32_t height);
// The same as pixels of the caller's own.
PixelMemory DrawPicture(const Recording& recording, std::int32_t width, std::int32_t height);

} // namespace platform
