// SPDX-License-Identifier: BSD-3-Clause
// Records drawing steps and carries them out.
#include "platform/drawing/Recording.h"

#include <algorithm>
#include <cstring>

#include "platform/drawing/Blend.h"
#include "platform/drawing/Coloring.h"
#include "platform/drawing/CoveragePlane.h"

namespace platform {
namespace {

// Blends coverage of one colour into a canvas, clipped to it.
class CanvasTarget final : public text::CoverageTarget {
public:
    CanvasTarget(const Canvas& canvas, Pixel color) : m_canvas(canvas), m_color(color) {}

    text::PixelBox Clip() const override { return { 0, 0, m_canvas.width, m_canvas.height }; }

    void PaintBitmap(std::int64_t x, std::int64_t y, const text::CoverageBitmap& bitmap) override {
        // The empty columns that fill up the stride may fall into the padding of the rows: whole
        // vectors are faster than the glyph's own width.
        const std::int64_t left = std::max<std::int64_t>(x, 0);
        const std::int64_t right = std::min(x + bitmap.stride, m_canvas.rowBytes / 4);
        const std::int64_t top = std::max<std::int64_t>(y, 0);
        const std::int64_t bottom = std::min<std::int64_t>(y + bitmap.height, m_canvas.height);
        if (left < right && top < bottom) {
            Blend({ At(left, top), m_canvas.rowBytes,
                    bitmap.pixels + (top - y) * bitmap.stride + (left - x), bitmap.stride,
                    right - left, bottom - top },
                  m_color);
        }
    }

    void PaintSpan(std::int64_t x, std::int64_t y, std::int64_t length,
                   std::uint8_t coverage) override {
        std::int64_t left = std::max<std::int64_t>(x, 0);
        const std::int64_t right = std::min<std::int64_t>(x + length, m_canvas.width);
        if (y < 0 || y >= m_canvas.height || left >= right) {
            return;
        }
        if (coverage == 255) {
            FillPixels(At(left, y), right - left, m_color);
            return;
        }
        std::array<std::uint8_t, 256> row;
        row.fill(coverage);
        for (; left < right; left += row.size()) {
            const std::int64_t count = std::min<std::int64_t>(right - left, row.size());
            Blend({ At(left, y), 0, row.data(), 0, count, 1 }, m_color);
        }
    }

private:
    std::uint8_t* At(std::int64_t x, std::int64_t y) const {
        return m_canvas.pixels + y * m_canvas.rowBytes + x * 4;
    }

    const Canvas& m_canvas;
    Pixel m_color;
};

bool IsWhole(const Command& command, std::int32_t width, std::int32_t height) {
    return command.kind == Command::kFill && command.left == 0 && command.top == 0 &&
           command.right == width && command.bottom == height;
}

} // namespace

void Recording::Fill(const text::PixelBox& box, Pixel color, std::int32_t width,
                     std::int32_t height) {
    const Command command { Command::kFill,
                            color,
                            static_cast<std::int32_t>(box.left),
                            static_cast<std::int32_t>(box.top),
                            static_cast<std::int32_t>(box.right),
                            static_cast<std::int32_t>(box.bottom),
                            0 };
    if (IsWhole(command, width, height)) {
        Clear();
    }
    m_commands.push_back(command);
}

void Recording::Text(std::int32_t x, std::int32_t y, text::LinePtr line, Pixel color) {
    m_lines.reserve(m_lines.size() + 1); // so that the two lists never part by an exception
    m_commands.push_back({ Command::kText, color, x, y, 0, 0, line->Id() });
    m_lines.push_back(std::move(line));
}

void Recording::Clear() {
    m_commands.clear();
    m_lines.clear();
}

std::uint64_t Recording::Hash() const {
    const auto* const bytes = reinterpret_cast<const char*>(m_commands.data());
    return HashBytes(0, { bytes, m_commands.size() * sizeof(Command) });
}

bool Recording::SameAs(const std::vector<Command>& commands) const {
    return commands.size() == m_commands.size() &&
           (commands.empty() || std::memcmp(commands.data(), m_commands.data(),
                                            commands.size() * sizeof(Command)) == 0);
}

bool Recording::CoversCanvas(std::int32_t width, std::int32_t height) const {
    return !m_commands.empty() && IsWhole(m_commands.front(), width, height);
}

// Text of one colour over a ground of one colour, which is what most pictures are.
bool Recording::IsFlat(std::int32_t width, std::int32_t height) const {
    const auto like = [this](const Command& command) {
        return command.kind == Command::kText && command.color == m_commands.back().color;
    };
    return m_commands.size() > 1 && CoversCanvas(width, height) &&
           std::all_of(m_commands.begin() + 1, m_commands.end(), like);
}

void Recording::DrawFlat(const Canvas& canvas) const {
    CoveragePlane plane(canvas.width, canvas.height, canvas.rowBytes / 4);
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        const Command& command = m_commands[i + 1];
        text::PaintLine(*m_lines[i], command.left, command.top, plane);
    }
    ColorPixels(canvas.pixels, plane.Bytes(), plane.Count(),
                { m_commands.front().color, m_commands.back().color });
}

void Recording::Draw(const Canvas& canvas) const {
    if (IsFlat(canvas.width, canvas.height)) {
        DrawFlat(canvas);
        return;
    }
    auto line = m_lines.begin();
    for (const Command& command : m_commands) {
        if (command.kind == Command::kText) {
            DrawLine(canvas, **line++, command.left, command.top, command.color);
        } else {
            DrawFill(canvas, { command.left, command.top, command.right, command.bottom },
                     command.color);
        }
    }
}

void DrawFill(const Canvas& canvas, const text::PixelBox& box, Pixel color) {
    if (box.left == 0 && box.right == canvas.width) {
        FillPixels(canvas.pixels + box.top * canvas.rowBytes,
                   (box.bottom - box.top) * (canvas.rowBytes / 4), color);
        return;
    }
    for (std::int64_t row = box.top; row < box.bottom; ++row) {
        FillPixels(canvas.pixels + row * canvas.rowBytes + box.left * 4, box.right - box.left,
                   color);
    }
}

void DrawLine(const Canvas& canvas, const text::Line& line, std::int64_t x, std::int64_t y,
              Pixel color) {
    CanvasTarget target(canvas, color);
    text::PaintLine(line, x, y, target);
}

} // namespace platform
