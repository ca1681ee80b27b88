// SPDX-License-Identifier: BSD-3-Clause
// Lays out one line: FriBidi orders it, the catalogue finds faces, HarfBuzz shapes it.
#include "platform/text/Layout.h"

#include <algorithm>
#include <fribidi.h>
#include <hb.h>
#include <span>

#include "platform/TextContext.h"
#include "platform/Utf8.h"
namespace platform::text {
namespace {

// Characters of one direction, face and script, shaped together.
struct FaceRun {
    std::size_t start, length;
    const Face* face;
    hb_script_t script;
    FriBidiLevel level;
    bool tabularDigits;
    std::size_t firstGlyph = 0, glyphCount = 0;
    std::int32_t size = 0;
};

// Font units.
struct ShapedGlyph {
    std::uint32_t glyph;
    std::uint32_t cluster; // index of its first character
    std::int32_t advance, x, y;
};

// What a thread lays out with; kept, so that lines allocate nothing but their result.
struct Workspace {
    std::u32string text;
    std::vector<const Face*> faces;
    std::vector<hb_script_t> scripts;
    std::vector<FriBidiLevel> levels;
    std::vector<FaceRun> runs;
    std::vector<ShapedGlyph> glyphs; // of the runs, one after the other
    hb_buffer_t* buffer = hb_buffer_create();

    Workspace() {
        if (!hb_buffer_allocation_successful(buffer)) // it is an empty one for all
            throw std::bad_alloc();
    }
    ~Workspace() { hb_buffer_destroy(buffer); }
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    std::span<const ShapedGlyph> GlyphsOf(const FaceRun& run) const {
        return std::span(glyphs).subspan(run.firstGlyph, run.glyphCount);
    }
};

hb_unicode_funcs_t* Unicode() {
    static hb_unicode_funcs_t* const functions = hb_unicode_funcs_get_default();
    return functions;
}

// Controls and line breaks draw nothing.
bool IsControl(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

bool MayRunRightToLeft(char32_t c) {
    return (c >= 0x0590 && c < 0x0900) || c == 0x200F || c == 0x202B || c == 0x202E ||
           c == 0x2067 || (c >= 0xFB1D && c < 0xFE00) || (c >= 0xFE70 && c < 0xFF00) ||
           (c >= 0x10800 && c < 0x11000) || (c >= 0x1E800 && c < 0x1F000);
}

// Characters that belong to the one before them and take its face: marks, joiners, selectors.
bool ContinuesCluster(char32_t c) {
    if (c < 0x0300)
        return c == 0x00AD;
    if ((c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) ||
        (c >= 0x2060 && c <= 0x206F) || c == 0xFEFF || (c >= 0xFE00 && c <= 0xFE0F) ||
        (c >= 0xE0000 && c <= 0xE01EF))
        return true;
    switch (hb_unicode_general_category(Unicode(), c)) {
    case HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK:
        return true;
    default:
        return false;
    }
}

// What shaping hides in any face.
bool NeedsNoGlyph(char32_t c) {
    return c == 0x00AD || (c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2060 && c <= 0x206F) || c == 0xFEFF || (c >= 0xFE00 && c <= 0xFE0F) ||
           (c >= 0xE0000 && c <= 0xE01EF);
}

void ReadCharacters(std::u32string& text, std::string_view utf8) {
    text.clear();
    while (!utf8.empty()) {
        const std::size_t length = std::max<std::size_t>(Utf8SequenceLength(utf8), 1);
        const char32_t c = Utf8Value(utf8.substr(0, length));
        if (!IsControl(c))
            text += c;
        utf8.remove_prefix(length);
    }
}

// "U+0041", with at least four digits.
std::string NameOf(char32_t c) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string name = "U+";
    for (int shift = c > 0xFFFFF ? 20 : c > 0xFFFF ? 16 : 12; shift >= 0; shift -= 4)
        name += kDigits[(c >> shift) & 15];
    return name;
}

// Faces ------------------------------------------------------------------------------------------

class FaceChooser {
public:
    FaceChooser(Family& family, const FontFallbacks& fallbacks)
        : m_family(family), m_main(FontCatalog::Get().FaceOf(family)),
          m_named(FontCatalog::Get().FacesOf(fallbacks)) {}

    const Face* Main() const { return m_main; }

    // Writes the face of each character of the cluster, which may be changed to hold a replacement.
    void Choose(char32_t* cluster, std::size_t length, const Face** faces) {
        const Face* const whole = ForCluster({ cluster, length });
        const Face* base = whole ? whole : ForCharacter(cluster[0]);
        if (!base)
            base = Replace(cluster[0]);
        for (std::size_t i = 0; i < length; ++i) {
            faces[i] = base;
            if (i > 0 && !whole && !NeedsNoGlyph(cluster[i]) && !base->Has(cluster[i])) {
                const Face* const own = ForCharacter(cluster[i]);
                faces[i] = own ? own : Replace(cluster[i]);
            }
        }
    }

private:
    static bool HasAll(const Face& face, std::u32string_view cluster) {
        if (!face.Has(cluster[0]) && !NeedsNoGlyph(cluster[0]))
            return false;
        char32_t base = cluster[0];
        for (const char32_t c : cluster.substr(1)) {
            hb_codepoint_t composed = 0;
            if (hb_unicode_compose(Unicode(), base, c, &composed) && face.Has(composed))
                base = composed;
            else if (!NeedsNoGlyph(c) && !face.Has(c))
                return false;
        }
        return true;
    }

    // The main face, those that were named, then the one that served the characters before, so that
    // words keep to one.
    const Face* ForCluster(std::u32string_view cluster) {
        if (HasAll(*m_main, cluster))
            return m_main;
        for (const Face* const face : m_named)
            if (HasAll(*face, cluster))
                return face;
        if (m_last && HasAll(*m_last, cluster))
            return m_last;
        return Remember(FontCatalog::Get().FallbackFor(m_family, cluster));
    }

    const Face* ForCharacter(char32_t c) { return ForCluster({ &c, 1 }); }

    const Face* Remember(const Face* face) {
        m_last = face ? face : m_last;
        return face;
    }

    // Nothing has the character: the replacement character stands in, or the main face's own glyph
    // for what it lacks.
    const Face* Replace(char32_t& c) {
        TextContext::Current().Tell({ ReportKind::kGlyphMissing, NameOf(c), "a replacement glyph",
                                      "no installed font has it" });
        c = kReplacementCharacter;
        const Face* const face = ForCharacter(c);
        return face ? face : m_main;
    }

    Family& m_family;
    const Face* m_main;
    std::vector<const Face*> m_named;
    const Face* m_last = nullptr;
};

void ChooseFaces(Workspace& work, FaceChooser& chooser) {
    work.faces.resize(work.text.size());
    for (std::size_t start = 0; start < work.text.size();) {
        std::size_t end = start + 1;
        while (end < work.text.size() && ContinuesCluster(work.text[end]))
            ++end;
        chooser.Choose(&work.text[start], end - start, &work.faces[start]);
        start = end;
    }
}

// Runs -------------------------------------------------------------------------------------------

bool IsReal(hb_script_t script) {
    return script != HB_SCRIPT_COMMON && script != HB_SCRIPT_INHERITED;
}

// Kana and ideographs are mixed in every Japanese word; one run takes both.
hb_script_t ScriptOf(char32_t c) {
    if (c < 0x80) {
        const bool letter = (c | 0x20) >= 'a' && (c | 0x20) <= 'z';
        return letter ? HB_SCRIPT_LATIN : HB_SCRIPT_COMMON;
    }
    const hb_script_t script = hb_unicode_script(Unicode(), c);
    const bool kana = script == HB_SCRIPT_HIRAGANA || script == HB_SCRIPT_KATAKANA;
    return kana ? HB_SCRIPT_HAN : script;
}

// What has no script of its own takes the one before it, at the start the one after it.
void FindScripts(Workspace& work) {
    work.scripts.resize(work.text.size());
    std::size_t firstReal = work.text.size();
    for (std::size_t i = 0; i < work.text.size(); ++i) {
        work.scripts[i] = ScriptOf(work.text[i]);
        if (IsReal(work.scripts[i]))
            firstReal = std::min(firstReal, i);
        else if (i > 0)
            work.scripts[i] = work.scripts[i - 1];
    }
    const hb_script_t first =
        firstReal < work.text.size() ? work.scripts[firstReal] : HB_SCRIPT_COMMON;
    std::fill_n(work.scripts.begin(), firstReal, first);
}

// Embedding levels; all 0 for text without right-to-left characters.
void FindLevels(Workspace& work) {
    const std::size_t length = work.text.size();
    work.levels.assign(length, 0);
    if (std::none_of(work.text.begin(), work.text.end(), MayRunRightToLeft))
        return;
    const std::vector<FriBidiChar> text(work.text.begin(), work.text.end());
    std::vector<FriBidiCharType> types(length);
    std::vector<FriBidiBracketType> brackets(length);
    const auto count = static_cast<FriBidiStrIndex>(length);
    fribidi_get_bidi_types(text.data(), count, types.data());
    fribidi_get_bracket_types(text.data(), count, types.data(), brackets.data());
    WithAllMemory([&] {
        FriBidiParType base = FRIBIDI_PAR_ON; // the first strong character decides
        return fribidi_get_par_embedding_levels_ex(types.data(), brackets.data(), count, &base,
                                                   work.levels.data());
    });
}

// With tabular digits those are runs of their own, to which the rest is not kerned.
void FindRuns(Workspace& work, bool tabularDigits) {
    work.runs.clear();
    bool isDigit = false;
    for (std::size_t i = 0; i < work.text.size(); ++i) {
        const char32_t c = work.text[i];
        isDigit = tabularDigits && (ContinuesCluster(c) ? isDigit : c >= '0' && c <= '9');
        const bool same = !work.runs.empty() && work.runs.back().face == work.faces[i] &&
                          work.runs.back().script == work.scripts[i] &&
                          work.runs.back().level == work.levels[i] &&
                          work.runs.back().tabularDigits == isDigit;
        if (same)
            ++work.runs.back().length;
        else
            work.runs.push_back({ .start = i,
                                  .length = 1,
                                  .face = work.faces[i],
                                  .script = work.scripts[i],
                                  .level = work.levels[i],
                                  .tabularDigits = isDigit });
    }
}

// Rule L2 of the Unicode Bidirectional Algorithm (UAX #9), on whole runs: from the highest level
// down to 1, each row of runs of that level or above turns round.
void OrderRuns(std::vector<FaceRun>& runs) {
    FriBidiLevel highest = 0;
    for (const FaceRun& run : runs)
        highest = std::max(highest, run.level);
    for (FriBidiLevel level = highest; level > 0; --level) {
        const auto reaches = [level](const FaceRun& run) { return run.level >= level; };
        for (auto first = runs.begin(); first != runs.end();) {
            first = std::find_if(first, runs.end(), reaches);
            const auto last = std::find_if_not(first, runs.end(), reaches);
            std::reverse(first, last);
            first = last;
        }
    }
}

// Shaping ----------------------------------------------------------------------------------------

void ShapeRuns(Workspace& work) {
    work.glyphs.clear();
    for (FaceRun& run : work.runs) {
        run.face->Shape({ work.text, run.start, run.length, run.script, (run.level & 1) != 0,
                          run.tabularDigits },
                        work.buffer);
        unsigned count = 0;
        const hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(work.buffer, &count);
        const hb_glyph_position_t* const places =
            hb_buffer_get_glyph_positions(work.buffer, &count);
        run.firstGlyph = work.glyphs.size();
        run.glyphCount = count;
        for (unsigned i = 0; i < count; ++i)
            work.glyphs.push_back({ infos[i].codepoint, infos[i].cluster, places[i].x_advance,
                                    places[i].x_offset, places[i].y_offset });
    }
}

// Placing ----------------------------------------------------------------------------------------

bool HasInk(const GlyphInk& ink) {
    return ink.left <= ink.right;
}

std::int32_t ToQuarter(std::int64_t pixels26_6) {
    // Far outside every world, and two of them still add up.
    constexpr std::int64_t kLimit = std::int64_t { 1 } << 28;
    const std::int64_t clamped = std::clamp(pixels26_6, -kLimit, kLimit);
    return static_cast<std::int32_t>((clamped + kQuarterPixel / 2) & ~(kQuarterPixel - 1));
}

// Most glyphs have no offset.
std::int64_t ToOffset(std::int32_t units, std::int32_t size, std::int32_t perEm) {
    return units == 0 ? 0 : ToPixels26_6(units, size, perEm);
}

// The rows of a line, which the next one's begin below.
struct LineRoom {
    std::int32_t ascent, descent; // whole pixels

    // By the glyph's outline, which may reach farther than what it covers; y is its origin's.
    bool Holds(const GlyphInk& ink, std::int32_t size, std::int32_t perEm, std::int64_t y) const {
        const std::int64_t unit = std::int64_t { size } * 64;
        return ink.top * unit <= (std::int64_t { ascent } * 64 - y) * perEm &&
               -ink.bottom * unit <= (std::int64_t { descent } * 64 + y) * perEm;
    }
    bool Holds(const PlacedGlyph& glyph) const {
        return Holds(glyph.face->InkOf(glyph.glyph), glyph.size, glyph.face->UnitsPerEm(), glyph.y);
    }
    bool Holds(const Rows& rows) const { return rows.top >= -ascent && rows.bottom <= descent; }
};

// Places glyphs from run to run and knows how far the ink reaches.
class LineBuilder {
public:
    LineBuilder(const LineRoom& room, std::size_t glyphs) : m_room(room) {
        m_line.glyphs.reserve(glyphs);
    }

    void Add(const FaceRun& run, std::span<const ShapedGlyph> glyphs) {
        const std::int32_t perEm = run.face->UnitsPerEm();
        for (const ShapedGlyph& glyph : glyphs) {
            if (HasInk(run.face->InkOf(glyph.glyph))) {
                const std::int64_t x = m_pen + ToOffset(glyph.x, run.size, perEm);
                const std::int64_t y = ToOffset(glyph.y, run.size, perEm);
                m_line.glyphs.push_back(
                    { run.face, glyph.glyph, run.size, ToQuarter(x), ToQuarter(y) });
            }
            m_pen += ToPixels26_6(glyph.advance, run.size, perEm);
        }
    }

    GlyphLine Finish() {
        m_inkRight = std::max<std::int64_t>(m_pen, 0);
        for (const PlacedGlyph& glyph : m_line.glyphs)
            IncludeInk(glyph);
        const std::int32_t shift = ToQuarter(-m_inkLeft + 7);
        for (PlacedGlyph& glyph : m_line.glyphs)
            glyph.x += shift;
        m_line.widthPx = WholePixelsUp(m_inkRight + shift);
        return std::move(m_line);
    }

    // Once finished: no glyph can reach out of the room.
    bool IsInRoom() const { return m_isInRoom; }

private:
    // Ink that stays within what is known is found to do so by products alone: a division for each
    // end of each glyph would be a good part of the layout.
    void IncludeInk(const PlacedGlyph& glyph) {
        constexpr std::int64_t kFar = std::int64_t { 1 } << 40; // beyond the ink of any glyph
        const GlyphInk ink = glyph.face->InkOf(glyph.glyph);
        const std::int32_t perEm = glyph.face->UnitsPerEm();
        const std::int64_t unit = std::int64_t { glyph.size } * 64;
        if (ink.left * unit < (m_inkLeft - glyph.x) * perEm)
            m_inkLeft = glyph.x + ToPixels26_6Down(ink.left, glyph.size, perEm);
        if (ink.right * unit > std::min(m_inkRight - glyph.x, kFar) * perEm)
            m_inkRight = glyph.x + ToPixels26_6Up(ink.right, glyph.size, perEm);
        m_isInRoom = m_isInRoom && m_room.Holds(ink, glyph.size, perEm, glyph.y);
    }

    LineRoom m_room;
    GlyphLine m_line;
    std::int64_t m_pen = 0; // 26.6
    std::int64_t m_inkLeft = 0, m_inkRight = 0;
    bool m_isInRoom = true;
};

// What does not fit ------------------------------------------------------------------------------

struct TallGlyph {
    const FaceRun* run;
    std::uint32_t cluster;
    Rows rows;
};

// The glyphs that leave coverage above or below the room.
std::vector<TallGlyph> FindTall(const Workspace& work, const GlyphLine& line,
                                const LineRoom& room) {
    std::vector<TallGlyph> tall;
    auto placed = line.glyphs.begin();
    for (const FaceRun& run : work.runs) {
        for (const ShapedGlyph& glyph : work.GlyphsOf(run)) {
            if (!HasInk(run.face->InkOf(glyph.glyph)))
                continue;
            const PlacedGlyph& here = *placed++;
            if (room.Holds(here))
                continue;
            if (const Rows rows = RowsOfGlyph(here); !room.Holds(rows))
                tall.push_back({ &run, glyph.cluster, rows });
        }
    }
    return tall;
}

// At most size; with an ink that is beyond all measure a quarter of it, which can still be read.
std::int32_t SizeThatFits(const Face& face, const ShapedGlyph& glyph, const LineRoom& room,
                          std::int32_t size) {
    const GlyphInk ink = face.InkOf(glyph.glyph);
    const std::int32_t perEm = face.UnitsPerEm(), least = std::max(size / 4, 1);
    const auto bound = [perEm, size](std::int64_t units, std::int64_t pixels) {
        return units > 0 ? std::min<std::int64_t>(pixels * perEm / units, size) : size;
    };
    auto fits = static_cast<std::int32_t>(
        std::min(bound(std::int64_t { ink.top } + glyph.y, room.ascent),
                 bound(-(std::int64_t { ink.bottom } + glyph.y), room.descent)));
    // Origins are rounded, which may cost another point or two.
    const auto holds = [&](std::int32_t at) {
        return room.Holds(ink, at, perEm, ToQuarter(ToOffset(glyph.y, at, perEm)));
    };
    while (fits > least && !holds(fits))
        --fits;
    return std::max(fits, least);
}

bool ShowsInk(const Workspace& work, const FaceRun& run) {
    return std::ranges::any_of(work.GlyphsOf(run), [&run](const ShapedGlyph& glyph) {
        return HasInk(run.face->InkOf(glyph.glyph));
    });
}

// The largest size at which all of the face in these runs fits.
std::int32_t SizeThatFits(const Workspace& work, std::span<const FaceRun> runs, const Face& face,
                          const LineRoom& room, std::int32_t size) {
    for (const FaceRun& run : runs)
        for (const ShapedGlyph& glyph : work.GlyphsOf(run))
            if (run.face == &face && HasInk(face.InkOf(glyph.glyph)))
                size = SizeThatFits(face, glyph, room, size);
    return size;
}

// What comes from one face with nothing but spaces between keeps one size, so that the words of a phrase
// look alike. False when nothing becomes smaller.
bool ShrinkFallbacks(Workspace& work, const std::vector<TallGlyph>& tall, const Face* main,
                     const LineRoom& room) {
    bool isSmaller = false;
    for (auto first = work.runs.begin(); first != work.runs.end();) {
        const Face* const face = first->face;
        const auto last = std::find_if(first, work.runs.end(), [&](const FaceRun& run) {
            return run.face != face && ShowsInk(work, run);
        });
        const std::span<FaceRun> phrase(first, last);
        first = last;
        if (face == main || std::ranges::none_of(tall, [&](const TallGlyph& glyph) {
                return glyph.run->face == face && glyph.run >= &phrase.front() &&
                       glyph.run <= &phrase.back();
            }))
            continue;
        const std::int32_t size = SizeThatFits(work, phrase, *face, room, phrase.front().size);
        isSmaller = isSmaller || size < phrase.front().size;
        for (FaceRun& run : phrase)
            if (run.face == face)
                run.size = size;
    }
    return isSmaller;
}

// The characters that were shaped into one: up to the next cluster of their run.
std::string CharactersOf(const Workspace& work, const TallGlyph& tall) {
    std::size_t end = tall.run->start + tall.run->length;
    for (const ShapedGlyph& glyph : work.GlyphsOf(*tall.run))
        if (glyph.cluster > tall.cluster)
            end = std::min<std::size_t>(end, glyph.cluster);
    std::string name;
    for (std::size_t i = tall.cluster; i < end; ++i)
        name += (name.empty() ? "" : " ") + NameOf(work.text[i]);
    return name;
}

// A character may have several glyphs.
void AddTall(std::vector<TallCharacter>& all, TallCharacter character) {
    const auto known = std::ranges::find(all, character.name, &TallCharacter::name);
    if (known == all.end()) {
        all.push_back(std::move(character));
    } else {
        known->rows.top = std::min(known->rows.top, character.rows.top);
        known->rows.bottom = std::max(known->rows.bottom, character.rows.bottom);
    }
}

GlyphLine Place(const Workspace& work, const LineRoom& room, bool& isInRoom) {
    LineBuilder builder(room, work.glyphs.size());
    for (const FaceRun& run : work.runs)
        builder.Add(run, work.GlyphsOf(run));
    GlyphLine line = builder.Finish();
    isInRoom = builder.IsInRoom();
    return line;
}

GlyphLine PlaceInRoom(Workspace& work, const Face* main, std::int32_t size) {
    const auto pixels = [&](std::int32_t units) {
        return ToPixelsUp(units, size, main->UnitsPerEm());
    };
    const LineRoom room { pixels(main->Ascent()), pixels(main->Descent()) };
    for (FaceRun& run : work.runs)
        run.size = size;
    bool isInRoom = false;
    GlyphLine line = Place(work, room, isInRoom);
    if (isInRoom)
        return line;
    std::vector<TallGlyph> tall = FindTall(work, line, room);
    if (ShrinkFallbacks(work, tall, main, room)) {
        line = Place(work, room, isInRoom);
        tall = FindTall(work, line, room);
    }
    for (const TallGlyph& glyph : tall)
        AddTall(line.tall, { CharactersOf(work, glyph), glyph.rows });
    return line;
}

// Called once for each line: where the compiler sees into it, it asks for the address at each use.
[[gnu::noinline]] Workspace& ThreadsWorkspace() {
    thread_local Workspace work;
    return work;
}

} // namespace

GlyphLine LayOutGlyphs(Family& family, std::int32_t size, std::string_view utf8) {
    Workspace& work = ThreadsWorkspace();
    const TextContext& context = TextContext::Current();
    FaceChooser chooser(family, context.Fallbacks());
    ReadCharacters(work.text, utf8);
    if (!chooser.Main() || work.text.empty())
        return {};
    ChooseFaces(work, chooser);
    FindScripts(work);
    FindLevels(work);
    FindRuns(work, context.HasTabularDigits());
    OrderRuns(work.runs);
    ShapeRuns(work);
    return PlaceInRoom(work, chooser.Main(), size);
}

} // namespace platform::text
