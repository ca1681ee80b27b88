// SPDX-License-Identifier: BSD-3-Clause
// Opens faces through HarfBuzz, which reads outlines without a lock and bounds-checks every table.
#include "platform/text/Face.h"

#include <algorithm>
#include <hb-ot.h>
#include <hb.h>
#include <span>

namespace platform::text {
namespace {

// What a line holds in the scripts that people overlay: accents on capitals, descenders, brackets
// and the fullest kana and kanji. A family's own metrics do not always reach around them.
constexpr char32_t kOrdinaryCharacters[] =
    U"AHQgjpqyfl|()[]{}@$,;_/ÀÂÃÄÅÇÉÊÑÖÜÝŮŻŞŢĢçşąįğ日本語鬱鷹龍驚書あがぽゃをアガポリ。、「」ー｜"
    U"ЙЁЩДуфщΆΏξψφאלקךףעجغحيّ";

constexpr GlyphInk kNoInk { 16383, -32768, 0, 0 };

// Where an extent ends. Broken outlines reach anywhere.
std::int32_t EndOf(hb_position_t start, hb_position_t length) {
    constexpr std::int64_t kFar = 1 << 24;
    return static_cast<std::int32_t>(std::clamp(std::int64_t { start } + length, -kFar, kFar));
}

std::int32_t MetricOf(hb_font_t* font, hb_ot_metrics_tag_t tag) {
    hb_position_t value = 0;
    return hb_ot_metrics_get_position(font, tag, &value) ? value : 0;
}

bool HasOutlines(hb_face_t* face) {
    for (const hb_tag_t tag :
         { HB_TAG('g', 'l', 'y', 'f'), HB_TAG('C', 'F', 'F', ' '), HB_TAG('C', 'F', 'F', '2') }) {
        hb_blob_t* const table = hb_face_reference_table(face, tag);
        const bool found = hb_blob_get_length(table) > 0;
        hb_blob_destroy(table);
        if (found)
            return true;
    }
    return false;
}

template <class Object, void (*destroy)(Object*)>
struct Destroy {
    void operator()(Object* object) const { destroy(object); }
};
template <class Object, void (*destroy)(Object*)>
using Owned = std::unique_ptr<Object, Destroy<Object, destroy>>;

// The language stays unset: a face made for one language keeps its own forms, and the pixels do not
// hang on the locale.
bool ShapeOnce(hb_font_t* font, const Run& run, hb_buffer_t* buffer) {
    static_assert(sizeof(char32_t) == sizeof(std::uint32_t));
    hb_buffer_clear_contents(buffer);
    hb_buffer_add_utf32(buffer, reinterpret_cast<const std::uint32_t*>(run.text.data()),
                        static_cast<int>(run.text.size()), static_cast<unsigned>(run.start),
                        static_cast<int>(run.length));
    hb_buffer_set_direction(buffer, run.rightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer, static_cast<hb_script_t>(run.script));
    static constexpr hb_feature_t kTabular[] = {
        { HB_TAG('t', 'n', 'u', 'm'), 1, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END },
        { HB_TAG('k', 'e', 'r', 'n'), 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END },
    };
    const std::span<const hb_feature_t> features(kTabular, run.tabularDigits ? 2 : 0);
    return hb_shape_full(font, buffer, features.data(), static_cast<unsigned>(features.size()),
                         nullptr) &&
           hb_buffer_allocation_successful(buffer);
}

bool ShapeWhole(hb_font_t* font, const Run& run, hb_buffer_t* buffer) {
    errno = 0;
    return ShapeOnce(font, run, buffer) && errno != ENOMEM;
}

} // namespace

// Tables are loaded when they are first asked for, and one that found no memory then stays away for good:
// so they are asked for here.
Face::FontPointer Face::MakeFont(hb_blob_t* file, int index) {
    return WithAllMemory([&] {
        const Owned<hb_face_t, hb_face_destroy> face(
            hb_face_create(file, static_cast<unsigned>(index) & 0xFFFF));
        FontPointer font(hb_font_create(face.get()), hb_font_destroy);
        const unsigned instance = static_cast<unsigned>(index) >> 16;
        if (instance > 0)
            hb_font_set_var_named_instance(font.get(), instance - 1);
        hb_font_make_immutable(font.get());
        const Owned<hb_buffer_t, hb_buffer_destroy> buffer(hb_buffer_create());
        hb_glyph_extents_t extents {};
        hb_font_get_glyph_extents(font.get(), 1, &extents);
        if (!ShapeOnce(font.get(), { U"A", 0, 1, HB_SCRIPT_LATIN, false }, buffer.get()))
            errno = ENOMEM;
        return font;
    });
}

std::unique_ptr<Face> Face::OpenOnce(const FaceLocation& location, std::string& why) {
    static std::atomic<std::uint32_t> lastId { 0 };
    const Owned<hb_blob_t, hb_blob_destroy> file(
        hb_blob_create_from_file_or_fail(location.file.c_str()));
    if (!file) {
        why = "the file cannot be read";
        return nullptr;
    }
    std::unique_ptr<Face> opened(new Face);
    opened->m_index = location.index;
    opened->m_font = opened->m_nextShaper = MakeFont(file.get(), location.index);
    hb_face_t* const face = hb_font_get_face(opened->Font());
    const unsigned glyphs = hb_face_get_glyph_count(face);
    if (glyphs == 0 || !HasOutlines(face)) {
        why = "the file holds no outlines";
        return nullptr;
    }
    opened->m_unitsPerEm = static_cast<std::int32_t>(hb_face_get_upem(face));
    opened->m_ink = std::vector<std::atomic<std::uint64_t>>(glyphs);
    for (char32_t character = 0; character < opened->m_ascii.size(); ++character)
        opened->m_ascii[character] = opened->HasInTable(character);
    opened->ReadMetrics();
    opened->m_id = ++lastId;
    return opened;
}

std::unique_ptr<Face> Face::Open(const FaceLocation& location, std::string& why) {
    return WithAllMemory([&] {
        why.clear();
        return OpenOnce(location, why);
    });
}

hb_font_t* Face::KnownShaper(const Run& run) const {
    const std::lock_guard lock(m_mutex);
    const auto known =
        std::ranges::find_if(m_shapers, [&run](const Shaper& shaper) { return shaper.IsFor(run); });
    return known == m_shapers.end() ? nullptr : known->font.get();
}

void Face::Shape(const Run& run, hb_buffer_t* buffer) const {
    if (hb_font_t* const font = KnownShaper(run)) {
        for (int attempt = 0; attempt < 2; ++attempt)
            if (ShapeWhole(font, run, buffer))
                return;
        throw std::bad_alloc();
    }
    const std::lock_guard lock(m_mutex);
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (!m_nextShaper) {
            const Owned<hb_blob_t, hb_blob_destroy> file(
                hb_face_reference_blob(hb_font_get_face(Font())));
            m_nextShaper = MakeFont(file.get(), m_index);
        }
        m_shapers.push_back({ run.script, run.rightToLeft, run.tabularDigits, m_nextShaper });
        if (ShapeWhole(m_nextShaper.get(), run, buffer))
            return;
        m_shapers.pop_back();
        m_nextShaper = nullptr;
    }
    throw std::bad_alloc();
}

bool Face::HasInTable(char32_t character) const {
    hb_codepoint_t glyph = 0;
    return hb_font_get_nominal_glyph(Font(), character, &glyph) && glyph != 0;
}

// The larger of the two pairs of line metrics, of the ink itself and of the ideographic em box,
// which characters of a Japanese fallback fill whatever the family is.
void Face::ReadMetrics() {
    hb_font_extents_t line {};
    hb_font_get_h_extents(Font(), &line);
    const std::int32_t typoAscent = MetricOf(Font(), HB_OT_METRICS_TAG_HORIZONTAL_ASCENDER);
    const std::int32_t typoDescent = -MetricOf(Font(), HB_OT_METRICS_TAG_HORIZONTAL_DESCENDER);
    // A family whose metrics are far off is measured by its ink alone.
    const auto sane = [this](std::int32_t units) { return units < 2 * m_unitsPerEm ? units : 0; };
    m_ascent = std::max({ sane(line.ascender), sane(typoAscent), m_unitsPerEm * 88 / 100 });
    m_descent = std::max({ sane(-line.descender), sane(typoDescent), m_unitsPerEm * 12 / 100 });
    m_lineGap = std::clamp(line.line_gap, 0, m_unitsPerEm);
    m_maxAdvance = m_unitsPerEm;
    for (const char32_t character : kOrdinaryCharacters)
        IncludeInk(character);
}

void Face::IncludeInk(char32_t character) {
    hb_codepoint_t glyph = 0;
    hb_glyph_extents_t extents {};
    if (!hb_font_get_nominal_glyph(Font(), character, &glyph))
        return;
    m_maxAdvance = std::max(m_maxAdvance, hb_font_get_glyph_h_advance(Font(), glyph));
    if (hb_font_get_glyph_extents(Font(), glyph, &extents)) {
        const std::int32_t most = 8 * m_unitsPerEm; // what reaches farther is no letter's
        m_ascent = std::max(m_ascent, std::min(extents.y_bearing, most));
        m_descent = std::max(m_descent, std::min(-EndOf(extents.y_bearing, extents.height), most));
    }
}

// left clamped to 15 bits and the others to 16, with the top bit as the mark of an answer.
std::uint64_t Face::PackInk(const GlyphInk& ink) {
    constexpr std::uint64_t kAsked = std::uint64_t { 1 } << 63;
    const auto packed = [](std::int32_t units, std::int32_t limit, int bit) {
        const std::int32_t clamped = std::clamp(units, -limit, limit - 1);
        return static_cast<std::uint64_t>(clamped + limit) << bit;
    };
    return kAsked | packed(ink.left, 16384, 48) | packed(ink.right, 32768, 32) |
           packed(ink.bottom, 32768, 16) | packed(ink.top, 32768, 0);
}

GlyphInk Face::ReadInk(std::uint32_t glyph) const {
    if (glyph >= m_ink.size())
        return kNoInk;
    const GlyphInk ink = WithAllMemory([this, glyph] {
        hb_glyph_extents_t extents {};
        return hb_font_get_glyph_extents(Font(), glyph, &extents) && extents.width != 0
                   ? GlyphInk { extents.x_bearing, EndOf(extents.x_bearing, extents.width),
                                EndOf(extents.y_bearing, extents.height), extents.y_bearing }
                   : kNoInk;
    });
    m_ink[glyph].store(PackInk(ink), std::memory_order_relaxed);
    return ink;
}

} // namespace platform::text
