// SPDX-License-Identifier: BSD-3-Clause
#include "preview/ScaledCopy.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <vector>

#include "platform/StateSavers.h"

namespace {

using Halves4 = std::uint16_t __attribute__((vector_size(8)));
using Sums4 = std::int32_t __attribute__((vector_size(16)));
using Words4 = std::uint32_t __attribute__((vector_size(16)));
using Floats4 = float __attribute__((vector_size(16)));

// So many bytes add up within 16 bits.
constexpr std::int32_t kMaxRows = 257;

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
    // Of the pixels of the image that they stand for.
    std::size_t Bytes() const {
        return m_spans.empty() ? 0 : 4 * static_cast<std::size_t>(m_spans.back().end - Start());
    }
    std::int32_t Start() const { return m_spans.front().start; }
    // Each pixel stands for one.
    bool IsOneToOne() const {
        return std::all_of(m_spans.begin(), m_spans.end(),
                           [](const Span& span) { return span.end - span.start == 1; });
    }
    // They lie side by side in the image as well, and none twice.
    bool IsShift() const {
        return IsOneToOne() && !m_spans.empty() &&
               m_spans.back().start - m_spans.front().start + 1 ==
                   static_cast<std::int32_t>(m_spans.size());
    }

private:
    std::int32_t m_first;
    std::vector<Span> m_spans;
};

class Scaler {
public:
    Scaler(const WorldPixels& world, const tagRECT& to, const render::LockedPixels& image,
           const tagRECT& from)
        : m_world(world), m_image(image),
          m_columns(to.left, to.right, from.left, from.right, world.width),
          m_rows(to.top, to.bottom, from.top, from.bottom, world.height),
          m_places { image.order.red, image.order.green, image.order.blue },
          m_single(m_columns.IsOneToOne()), m_shift(m_columns.IsShift()),
          m_sums(m_columns.Spans().size()), m_rowSums(m_columns.Bytes()) {}

    void Draw() {
        std::uint8_t* out = m_world.base + m_rows.First() * m_world.rowBytes +
                            std::ptrdiff_t { 4 } * m_columns.First();
        for (const Axis::Span& rows : m_rows.Spans()) {
            if (m_single && rows.end - rows.start == 1)
                CopyRow(m_image.Row(rows.start), out);
            else
                AverageRows(rows, out);
            out += m_world.rowBytes;
        }
    }

private:
    void CopyRow(const std::uint8_t* row, std::uint8_t* out) const {
        const std::vector<Axis::Span>& spans = m_columns.Spans();
        std::size_t i = 0;
        if (m_shift) {
            const std::uint8_t* const from = row + std::ptrdiff_t { 4 } * m_columns.Start();
            for (; i + 4 <= spans.size(); i += 4)
                CopyFour(from + i * 4, out + i * 4);
        }
        for (; i < spans.size(); ++i) {
            const std::uint8_t* pixel = row + std::ptrdiff_t { 4 } * spans[i].start;
            out[i * 4] = 0;
            for (std::size_t channel = 0; channel < 3; ++channel)
                out[i * 4 + channel + 1] = pixel[m_places[channel]];
        }
    }

    // Pixels that lie side by side.
    void CopyFour(const std::uint8_t* pixels, std::uint8_t* out) const {
        Words4 words;
        std::memcpy(&words, pixels, sizeof words);
        Words4 drawn {};
        for (std::size_t channel = 0; channel < 3; ++channel)
            drawn |= ((words >> ShiftOf(m_places[channel])) & 0xFFU)
                     << ShiftOf(static_cast<std::int32_t>(channel) + 1);
        std::memcpy(out, &drawn, sizeof drawn);
    }

    // Of the byte at a place of a pixel, in the pixel as a word.
    static std::uint32_t ShiftOf(std::int32_t place) {
        const auto at = static_cast<std::uint32_t>(place);
        return 8 * (std::endian::native == std::endian::little ? at : 3 - at);
    }

    // Down first, which is one addition after the other through all of a row, then across.
    void AverageRows(const Axis::Span& rows, std::uint8_t* out) {
        if (m_columns.Spans().empty())
            return;
        std::fill(m_sums.begin(), m_sums.end(), Sums4 {});
        for (std::int32_t y = rows.start; y < rows.end; y += kMaxRows) {
            AddRows({ y, std::min(rows.end, y + kMaxRows) });
            AddColumns();
        }
        WriteMeans(rows.end - rows.start, out);
    }

    void AddRows(const Axis::Span& rows) {
        std::fill(m_rowSums.begin(), m_rowSums.end(), 0);
        for (std::int32_t y = rows.start; y < rows.end; ++y) {
            const std::uint8_t* const bytes =
                m_image.Row(y) + std::ptrdiff_t { 4 } * m_columns.Start();
            for (std::size_t i = 0; i < m_rowSums.size(); ++i)
                m_rowSums[i] = static_cast<std::uint16_t>(m_rowSums[i] + bytes[i]);
        }
    }

    void AddColumns() {
        std::size_t i = 0;
        for (const Axis::Span& span : m_columns.Spans()) {
            const std::uint16_t* pixel =
                m_rowSums.data() + std::ptrdiff_t { 4 } * (span.start - m_columns.Start());
            Sums4 sum = m_sums[i];
            for (std::int32_t x = span.start; x < span.end; ++x, pixel += 4) {
                Halves4 halves;
                std::memcpy(&halves, pixel, sizeof halves);
                sum += __builtin_convertvector(halves, Sums4);
            }
            m_sums[i++] = sum;
        }
    }

    void WriteMeans(std::int32_t rows, std::uint8_t* out) const {
        std::size_t i = 0;
        for (const Axis::Span& span : m_columns.Spans()) {
            const float share = 1.0F / static_cast<float>((span.end - span.start) * rows);
            const Sums4 mean = __builtin_convertvector(
                __builtin_convertvector(m_sums[i++], Floats4) * share + 0.5F, Sums4);
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
    bool m_single, m_shift;               // what the columns are
    // Of the row in hand: a pixel each, and a byte of the image each.
    std::vector<Sums4> m_sums;
    std::vector<std::uint16_t> m_rowSums;
};

bool IsEmpty(const tagRECT& box) {
    return box.left >= box.right || box.top >= box.bottom;
}

bool IsPlace(std::int32_t place) {
    return place >= 0 && place < 4;
}

} // namespace

bool CopyScaled(const WorldPixels& world, const tagRECT& to, const render::LockedPixels& image,
                const tagRECT& from) {
    const render::ChannelOrder& order = image.order;
    if (IsEmpty(to) || IsEmpty(from) || image.depth != 32 || !IsPlace(order.red) ||
        !IsPlace(order.green) || !IsPlace(order.blue))
        return false;
    Scaler(world, to, image, from).Draw();
    return true;
}

bool CopyScaled(const SizedWorld& to, const tagRECT& place, PIOffscreen& image,
                const tagRECT& from) {
    const platform::PixMapHandle pixMap = platform::GetGWorldPixMap(to.world);
    const XPixMapLocker locker(pixMap);
    const render::LockedPixels pixels(image, PIOffscreen::Access::kRead);
    if (!locker.IsLocked() || !pixels)
        return false;
    std::uint8_t* const base = platform::GetWritablePixBaseAddr(pixMap);
    if (!base)
        return false;
    return CopyScaled({ base, platform::GetPixRowBytes(pixMap), to.width, to.height }, place,
                      pixels,
                      { from.left, from.top, std::min(from.right, pixels.width),
                        std::min(from.bottom, pixels.height) });
}
