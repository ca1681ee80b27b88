// SPDX-License-Identifier: BSD-3-Clause
#include "preview/ScaledCopy.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace {

using Bytes4 = std::uint8_t __attribute__((vector_size(4)));
using Sums4 = std::int32_t __attribute__((vector_size(16)));
using Floats4 = float __attribute__((vector_size(16)));

// One axis of the scaling: the pixels to draw, and for each where it begins and ends in the image.
class Axis {
public:
    // The stretch [to, toEnd) stands for [from, fromEnd); only what lies in [0, limit) is drawn.
    Axis(std::int32_t to, std::int32_t toEnd, std::int32_t from, std::int32_t fromEnd,
         std::int32_t limit)
        : m_first(std::max(to, 0)) {
        const std::int64_t pixels = std::int64_t { toEnd } - to;
        const std::int64_t size = std::int64_t { fromEnd } - from;
        const std::int64_t end = std::int64_t { std::min(toEnd, limit) } - to;
        for (std::int64_t i = std::int64_t { m_first } - to; i < end; ++i) {
            const auto first = static_cast<std::int32_t>(from + i * size / pixels);
            const auto behind = static_cast<std::int32_t>(from + (i + 1) * size / pixels);
            m_spans.push_back({ first, std::max(first + 1, behind) });
        }
    }

    struct Span {
        std::int32_t start, end;
    };
    std::int32_t First() const { return m_first; }
    const std::vector<Span>& Spans() const { return m_spans; }
    bool IsOneToOne() const {
        return std::all_of(m_spans.begin(), m_spans.end(),
                           [](const Span& span) { return span.end - span.start == 1; });
    }

private:
    std::int32_t m_first;
    std::vector<Span> m_spans;
};

class Scaler {
public:
    Scaler(const WorldPixels& world, const PixelBox& to, const render::LockedPixels& image,
           const PixelBox& from)
        : m_world(world), m_image(image),
          m_columns(to.left, to.right, from.left, from.right, world.width),
          m_rows(to.top, to.bottom, from.top, from.bottom, world.height),
          m_places { image.order.red, image.order.green, image.order.blue },
          m_sums(m_columns.Spans().size()) {}

    void Draw() {
        const bool single = m_columns.IsOneToOne();
        std::uint8_t* out = m_world.base + m_rows.First() * m_world.rowBytes +
                            std::ptrdiff_t { 4 } * m_columns.First();
        for (const Axis::Span& rows : m_rows.Spans()) {
            if (single && rows.end - rows.start == 1)
                CopyRow(m_image.Row(rows.start), out);
            else
                AverageRows(rows, out);
            out += m_world.rowBytes;
        }
    }

private:
    void CopyRow(const std::uint8_t* row, std::uint8_t* out) const {
        for (const Axis::Span& span : m_columns.Spans()) {
            const std::uint8_t* pixel = row + std::ptrdiff_t { 4 } * span.start;
            out[0] = 0;
            for (std::size_t channel = 0; channel < 3; ++channel)
                out[channel + 1] = pixel[m_places[channel]];
            out += 4;
        }
    }

    void AverageRows(const Axis::Span& rows, std::uint8_t* out) {
        std::fill(m_sums.begin(), m_sums.end(), Sums4 {});
        for (std::int32_t y = rows.start; y < rows.end; ++y)
            AddRow(m_image.Row(y));
        WriteMeans(rows.end - rows.start, out);
    }

    void AddRow(const std::uint8_t* row) {
        std::size_t i = 0;
        for (const Axis::Span& span : m_columns.Spans()) {
            Sums4 sum = m_sums[i];
            for (std::int32_t x = span.start; x < span.end; ++x) {
                Bytes4 pixel;
                std::memcpy(&pixel, row + std::ptrdiff_t { 4 } * x, sizeof pixel);
                sum += __builtin_convertvector(pixel, Sums4);
            }
            m_sums[i++] = sum;
        }
    }

    void WriteMeans(std::int32_t rows, std::uint8_t* out) const {
        std::size_t i = 0;
        for (const Axis::Span& span : m_columns.Spans()) {
            const float share = 1.0F / static_cast<float>((span.end - span.start) * rows);
            const Floats4 mean = __builtin_convertvector(m_sums[i++], Floats4) * share + 0.5F;
            out[0] = 0;
            for (std::size_t channel = 0; channel < 3; ++channel)
                out[channel + 1] = static_cast<std::uint8_t>(mean[m_places[channel]]);
            out += 4;
        }
    }

    WorldPixels m_world;
    const render::LockedPixels& m_image;
    Axis m_columns, m_rows;
    std::array<std::int32_t, 3> m_places; // of red, green and blue in a pixel
    std::vector<Sums4> m_sums;            // of the row in hand, a pixel each
};

bool IsEmpty(const PixelBox& box) {
    return box.left >= box.right || box.top >= box.bottom;
}

bool IsPlace(std::int32_t place) {
    return place >= 0 && place < 4;
}

} // namespace

void CopyScaled(const WorldPixels& world, const PixelBox& to, const render::LockedPixels& image,
                const PixelBox& from) {
    const render::ChannelOrder& order = image.order;
    if (IsEmpty(to) || IsEmpty(from) || image.depth != 32 || !IsPlace(order.red) ||
        !IsPlace(order.green) || !IsPlace(order.blue))
        return;
    Scaler(world, to, image, from).Draw();
}
