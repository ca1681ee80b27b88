// SPDX-License-Identifier: BSD-3-Clause
// Records drawing steps and carries them out.
#include "platform/drawing/Recording.h"

#include <algorithm>
#include <deque>
#include <span>

#include "platform/drawing/Blend.h"
#include "platform/drawing/Coloring.h"
#include "platform/drawing/CoveragePlane.h"

namespace platform {
namespace {

bool IsWhole(const Command& command, std::int32_t width, std::int32_t height) {
    return command.kind == Command::kFill && command.left == 0 && command.top == 0 &&
           command.right == width && command.bottom == height;
}

std::size_t PixelsIn(const text::PixelBox& box) {
    return static_cast<std::size_t>(box.Width() * box.Height());
}

void DrawFill(const Canvas& canvas, const Command& fill) {
    if (fill.left == 0 && fill.right == canvas.width) {
        FillPixels(canvas.At(0, fill.top), (fill.bottom - fill.top) * (canvas.rowBytes / 4),
                   fill.color);
        return;
    }
    for (std::int64_t row = fill.top; row < fill.bottom; ++row) {
        FillPixels(canvas.At(fill.left, row), fill.right - fill.left, fill.color);
    }
}

void PaintTexts(std::span<const Command> texts, std::span<const text::LinePtr> lines,
                CoveragePlane& plane) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
        text::PaintLine(*lines[i], texts[i].left, texts[i].top, plane);
    }
}

text::PixelBox InkOfTexts(std::span<const Command> texts, std::span<const text::LinePtr> lines) {
    text::PixelBox ink {};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        ink = Union(ink, Shifted(text::InkOf(*lines[i]), texts[i].left, texts[i].top));
    }
    return ink;
}

// Texts of one colour on any ground. They gather in one plane, so that glyphs that overlap add up as they
// do over a ground of one colour.
class BlendedTexts {
public:
    BlendedTexts(std::span<const Command> texts, std::span<const text::LinePtr> lines,
                 const text::PixelBox& canvas)
        : m_color(texts.front().color), m_box(Intersection(InkOfTexts(texts, lines), canvas)),
          m_coverage(PixelsIn(m_box)), m_plane(m_box, m_coverage.data()) {
        PaintTexts(texts, lines, m_plane);
    }

    void Blend(const Canvas& canvas) const {
        for (std::int64_t y = m_box.top; y < m_box.bottom; ++y) {
            BlendPixels(canvas.At(m_box.left, y), m_plane.Row(y), m_box.Width(), m_color);
        }
    }

private:
    Pixel m_color;
    text::PixelBox m_box;
    std::vector<std::uint8_t> m_coverage;
    CoveragePlane m_plane;
};

// Odd ends of rows cost more than some pixels that are drawn again as they are.
text::PixelBox WidenToVectors(const text::PixelBox& box, std::int64_t rowPixels) {
    constexpr std::int64_t kVector = 32;
    const std::int64_t vectors = (box.Width() + kVector - 1) / kVector * kVector;
    const std::int64_t width = std::min(vectors, rowPixels);
    const std::int64_t left = std::min(box.left, rowPixels - width);
    return { left, box.top, left + width, box.bottom };
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

bool Recording::SameAs(const Recording& other) const {
    return m_commands == other.m_commands;
}

std::int64_t Recording::Bytes() const {
    std::int64_t bytes = static_cast<std::int64_t>(m_commands.capacity() * sizeof(Command) +
                                                   m_lines.capacity() * sizeof(text::LinePtr));
    for (const text::LinePtr& line : m_lines) {
        bytes += line->Bytes();
    }
    return bytes;
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

void Recording::Draw(const Canvas& canvas) const {
    if (IsFlat(canvas.width, canvas.height)) {
        // The coverage lies in the last quarter of the picture's own memory: less to go through the
        // processor's cache.
        const text::PixelBox whole { 0, 0, canvas.rowBytes / 4, canvas.height };
        DrawFlat(canvas, whole, canvas.pixels + 3 * PixelsIn(whole));
        return;
    }
    const text::PixelBox whole { 0, 0, canvas.width, canvas.height };
    std::deque<BlendedTexts> texts; // they stay where they are
    std::span lines(m_lines);
    ForEachStep([&](std::span<const Command> step) {
        if (step.front().kind == Command::kText) {
            texts.emplace_back(step, lines.first(step.size()), whole);
            lines = lines.subspan(step.size());
        }
    });
    // All memory is there: from here on nothing fails.
    auto text = texts.begin();
    ForEachStep([&](std::span<const Command> step) {
        if (step.front().kind == Command::kText) {
            text++->Blend(canvas);
        } else {
            DrawFill(canvas, step.front());
        }
    });
}

// A step is one fill, or all texts of one colour that follow each other.
template <class Visit>
void Recording::ForEachStep(const Visit& visit) const {
    for (auto first = m_commands.begin(); first != m_commands.end();) {
        const auto last = std::find_if_not(first + 1, m_commands.end(), [first](const Command& c) {
            return first->kind == Command::kText && c.kind == Command::kText &&
                   c.color == first->color;
        });
        visit(std::span<const Command>(first, last));
        first = last;
    }
}

void Recording::DrawFlat(const Canvas& canvas, const text::PixelBox& box,
                         std::uint8_t* coverage) const {
    CoveragePlane plane(box, coverage);
    PaintTexts(std::span(m_commands).subspan(1), m_lines, plane);
    const TwoColors colors { m_commands.front().color, m_commands.back().color };
    ColorPixels({ canvas.At(box.left, box.top), canvas.rowBytes, plane.Row(box.top), box.Width(),
                  box.Width(), box.Height() },
                colors);
}

std::optional<text::PixelBox> Recording::DifferenceFrom(const Recording& other, std::int32_t width,
                                                        std::int32_t height) const {
    const auto sameButForTheLine = [](Command a, const Command& b) {
        a.line = b.line;
        return a == b;
    };
    if (!IsFlat(width, height) ||
        !std::equal(m_commands.begin(), m_commands.end(), other.m_commands.begin(),
                    other.m_commands.end(), sameButForTheLine)) {
        return std::nullopt;
    }
    const text::PixelBox canvas { 0, 0, width, height };
    text::PixelBox box {};
    for (std::size_t k = 0; k < m_lines.size(); ++k) {
        // The outermost lines come first: where all have changed, they tell so at once.
        const std::size_t i = k % 2 == 0 ? k / 2 : m_lines.size() - 1 - k / 2;
        if (m_lines[i] == other.m_lines[i]) {
            continue;
        }
        const Command& text = m_commands[i + 1];
        const text::PixelBox seenFromPen = DifferenceOf(*m_lines[i], *other.m_lines[i]);
        box = Union(box, Intersection(Shifted(seenFromPen, text.left, text.top), canvas));
        if (box.Width() * box.Height() * 2 > canvas.Width() * canvas.Height()) {
            return std::nullopt;
        }
    }
    return box;
}

void Recording::Redraw(const Canvas& canvas, const text::PixelBox& box) const {
    if (!box.IsEmpty()) {
        const text::PixelBox wide = WidenToVectors(box, canvas.rowBytes / 4);
        std::vector<std::uint8_t> coverage(PixelsIn(wide));
        DrawFlat(canvas, wide, coverage.data());
    }
}

} // namespace platform
