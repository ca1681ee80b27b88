// SPDX-License-Identifier: BSD-3-Clause
// One opened font face: its characters, metrics and outlines in font units. Immutable once opened
// but for what it remembers of its glyphs, so that any number of threads may read it at once.
#pragma once

#include <atomic>
#include <bitset>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

struct hb_blob_t; // HarfBuzz's
struct hb_buffer_t;
struct hb_font_t;

namespace platform::text {

// The font libraries go on with less when an allocation fails and have no result that says so.
//
// What a call gives that got all the memory it asked for. The C library's allocator leaves its mark in
// errno; it does so also where it then found memory in another place, so the call is made once more before
// std::bad_alloc is thrown.
template <class Call>
auto WithAllMemory(const Call& call) {
    for (int attempt = 0; attempt < 2; ++attempt) {
        errno = 0;
        auto result = call();
        if (errno != ENOMEM)
            return result;
    }
    throw std::bad_alloc();
}

// Where a face lies. index counts faces within a collection in its low 16 bits and, above them,
// named instances of a variable font from 1.
struct FaceLocation {
    std::string file;
    int index = 0;

    bool operator<(const FaceLocation& other) const {
        return std::tie(file, index) < std::tie(other.file, other.index);
    }
};

// What a glyph covers from its origin, in font units, y up; left > right for one without ink.
struct GlyphInk {
    std::int32_t left, right, bottom, top;
};

// Characters of one script and direction, in the text that they stand in.
struct Run {
    std::u32string_view text;
    std::size_t start, length;
    std::uint32_t script; // HarfBuzz's tag
    bool rightToLeft;
    bool tabularDigits = false; // of digits: they are to have one width
};

// What needs memory throws std::bad_alloc, and then leaves nothing half done.
class Face {
public:
    // Null, with the reason in why, for a file that holds no usable outlines.
    static std::unique_ptr<Face> Open(const FaceLocation& location, std::string& why);

    std::uint32_t Id() const { return m_id; }
    hb_font_t* Font() const { return m_font.get(); } // its scale is UnitsPerEm
    // The glyphs of the run, in the order of the eye. What is in the buffer goes.
    void Shape(const Run& run, hb_buffer_t* buffer) const;
    std::int32_t UnitsPerEm() const { return m_unitsPerEm; }
    bool Has(char32_t character) const {
        return character < m_ascii.size() ? m_ascii[character] : HasInTable(character);
    }

    // Font units; both grow away from the baseline. Hold the ink of ordinary glyphs.
    std::int32_t Ascent() const { return m_ascent; }
    std::int32_t Descent() const { return m_descent; }
    std::int32_t LineGap() const { return m_lineGap; }
    std::int32_t MaxAdvance() const { return m_maxAdvance; }

    GlyphInk InkOf(std::uint32_t glyph) const {
        const std::uint64_t packed =
            glyph < m_ink.size() ? m_ink[glyph].load(std::memory_order_relaxed) : 0;
        return packed ? UnpackInk(packed) : ReadInk(glyph);
    }

private:
    using FontPointer = std::shared_ptr<hb_font_t>;

    Face() = default;
    static FontPointer MakeFont(hb_blob_t* file, int index);
    static std::unique_ptr<Face> OpenOnce(const FaceLocation& location, std::string& why);
    hb_font_t* KnownShaper(const Run& run) const;
    bool HasInTable(char32_t character) const;
    GlyphInk ReadInk(std::uint32_t glyph) const;
    static std::uint64_t PackInk(const GlyphInk& ink);
    static GlyphInk UnpackInk(std::uint64_t packed) {
        const auto from = [packed](int bit) {
            return static_cast<std::int32_t>((packed >> bit) & 0xFFFF) - 32768;
        };
        return { static_cast<std::int32_t>((packed >> 48) & 0x7FFF) - 16384, from(32), from(16),
                 from(0) };
    }
    void ReadMetrics();
    void IncludeInk(char32_t character);

    // HarfBuzz keeps with a font how it shapes a script with some features, for good, and what a failed allocation left of
    // that too. So the first run of a script must succeed before others may use the font for it.
    struct Shaper {
        std::uint32_t script;
        bool rightToLeft, tabularDigits;
        FontPointer font;

        bool IsFor(const Run& run) const {
            return script == run.script && rightToLeft == run.rightToLeft &&
                   tabularDigits == run.tabularDigits;
        }
    };

    std::uint32_t m_id = 0;
    int m_index = 0; // in its file
    FontPointer m_font;
    mutable std::mutex m_mutex; // guards what follows
    mutable std::vector<Shaper> m_shapers;
    mutable FontPointer m_nextShaper; // for further scripts; null when it is spoiled

    std::int32_t m_unitsPerEm = 0;
    std::int32_t m_ascent = 0, m_descent = 0, m_lineGap = 0, m_maxAdvance = 0;
    std::bitset<128> m_ascii; // which of these characters it has
    // Per glyph: what PackInk makes of it, or 0 while it was not asked for.
    mutable std::vector<std::atomic<std::uint64_t>> m_ink;
};

// Font units to 26.6 pixels at size pixels an em, down and up.
inline std::int64_t ToPixels26_6Down(std::int64_t units, std::int32_t size, std::int32_t perEm) {
    const std::int64_t product = units * size * 64;
    return product / perEm - (product % perEm < 0);
}
inline std::int64_t ToPixels26_6Up(std::int64_t units, std::int32_t size, std::int32_t perEm) {
    return -ToPixels26_6Down(-units, size, perEm);
}
inline std::int64_t ToPixels26_6(std::int64_t units, std::int32_t size, std::int32_t perEm) {
    const std::int64_t divisor = std::int64_t { perEm } * 2;
    const std::int64_t doubled = units * size * 128 + perEm;
    return doubled / divisor - (doubled % divisor < 0);
}
inline std::int64_t WholePixelsUp(std::int64_t pixels26_6) {
    return (pixels26_6 + 63) >> 6;
}
// Font units to whole pixels, up.
inline std::int32_t ToPixelsUp(std::int64_t units, std::int32_t size, std::int32_t perEm) {
    return static_cast<std::int32_t>(WholePixelsUp(ToPixels26_6Up(units, size, perEm)));
}

} // namespace platform::text
