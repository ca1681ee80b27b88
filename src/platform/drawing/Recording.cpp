// SPDX-License-Identifier: BSD-3-Clause
// Records drawing steps and carries them out.
#include "platform/drawing/Recording.h"

#include <algorithm>
#include <bit>
#include <span>

#include "platform/drawing/Coloring.h"
#include "platform/drawing/CoveragePlane.h"

namespace platform {
namespace {

bool IsWhole(const Command& command, std::int32_t width, std::int32_t height) {
    return command.kind == Command::kFill && command.left == 0 && command.top == 0 &&
           command.right == width && command.bottom == height;
}

void DrawFill(const Canvas& canvas, const Command& fill) {
    for (std::int64_t row = fill.top; row < fill.bottom; ++row) {
        std::fill_n(reinterpret_cast<std::uint32_t*>(canvas.At(fill.left, row)),
                    fill.right - fill.left, std::bit_cast<std::uint32_t>(fill.color));
    }
}

void PaintTexts(std::span<const Command> texts, std::span<const text::LinePtr> lines,
                CoveragePlane& plane) {
    for (std::size_t i = 0; i < texts.size(); ++i)
        text::PaintLine(*lines[i], texts[i].left, texts[i].top, plane);
}

text::PixelBox InkOfTexts(std::span<const Command> texts, std::span<const text::LinePtr> lines) {
    text::PixelBox ink {};
    for (std::size_t i = 0; i < texts.size(); ++i)
        ink = Union(ink, Shifted(text::InkOf(*lines[i]), texts[i].left, texts[i].top));
    return ink;
}

void Blend(const Canvas& canvas, const CoveragePlane& plane, Pixel color) {
    const text::PixelBox box = plane.Clip();
    for (std::int64_t y = box.top; y < box.bottom; ++y)
        BlendPixels(canvas.At(box.left, y), plane.Row(y), box.Width(), color);
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
    if (IsWhole(command, width, height))
        Clear();
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
    for (const text::LinePtr& line : m_lines)
        bytes += line->Bytes();
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
        Redraw(canvas, { 0, 0, canvas.width, canvas.height });
        return;
    }
    const text::PixelBox whole { 0, 0, canvas.width, canvas.height };
    std::vector<CoveragePlane> planes; // of the texts of each step
    std::span lines(m_lines);
    ForEachStep([&](std::span<const Command> step) {
        if (step.front().kind == Command::kText) {
            const auto stepsLines = lines.first(step.size());
            planes.emplace_back(Intersection(InkOfTexts(step, stepsLines), whole));
            PaintTexts(step, stepsLines, planes.back());
            lines = lines.subspan(step.size());
        }
    });
    // All memory is there: from here on nothing fails.
    auto plane = planes.begin();
    ForEachStep([&](std::span<const Command> step) {
        if (step.front().kind == Command::kText)
            Blend(canvas, *plane++, step.front().color);
        else
            DrawFill(canvas, step.front());
    });
}

// A step is one fill, or all texts of one colour that follow each other: they gather in one plane, so that
// glyphs that overlap add up as they do over a ground of one colour.
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

std::optional<text::PixelBox> Recording::DifferenceFrom(const Recording& other, std::int32_t width,
                                                        std::int32_t height) const {
    const auto sameButForTheLine = [](Command a, const Command& b) {
        a.line = b.line;
        return a == b;
    };
    if (!IsFlat(width, height) ||
        !std::equal(m_commands.begin(), m_commands.end(), other.m_commands.begin(),
                    other.m_commands.end(), sameButForTheLine))
        return std::nullopt;
    const text::PixelBox canvas { 0, 0, width, height };
    text::PixelBox box {};
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        if (m_lines[i] == other.m_lines[i])
            continue;
        const Command& text = m_commands[i + 1];
        const text::PixelBox seenFromPen = DifferenceOf(*m_lines[i], *other.m_lines[i]);
        box = Union(box, Intersection(Shifted(seenFromPen, text.left, text.top), canvas));
        if (box.Width() * box.Height() * 2 > canvas.Width() * canvas.Height())
            return std::nullopt;
    }
    return box;
}

void Recording::Redraw(const Canvas& canvas, const text::PixelBox& changed) const {
    const std::int64_t width =
        std::min<std::int64_t>(std::max(changed.Width(), kColorVector), canvas.width);
    const std::int64_t left = std::min(changed.left, canvas.width - width);
    const text::PixelBox box { left, changed.top, left + width, changed.bottom };
    CoveragePlane plane(box);
    PaintTexts(std::span(m_commands).subspan(1), m_lines, plane);
    ColorPixels({ canvas.At(box.left, box.top), canvas.rowBytes, plane.Row(box.top), box.Width(),
                  box.Width(), box.Height() },
                { m_commands.front().color, m_commands.back().color });
}

} // namespace platform
