// SPDX-License-Identifier: BSD-3-Clause
// The text service over the font libraries: lines are cached by all that the context wants of them.
#include "platform/text/TextService.h"

#include <algorithm>
#include <atomic>
#include <span>

#include "platform/TextContext.h"
#include "platform/text/Glyphs.h"
#include "platform/text/Layout.h"

namespace platform::text {
namespace {

// A line is read again within its frame or in the next one; more than the processor's own cache holds
// would make a text that changes all the time slower, not faster.
constexpr std::int64_t kMaxLineBytes = 1 << 20;
constexpr std::size_t kLineShards = 8;
// A frame measures its few lines and then draws them; meanwhile the thread finds them without a lock.
constexpr std::size_t kRecentLines = 16;
constexpr std::int64_t kMaxRecentBytes = 16 << 10;

// All that a line depends on but its bytes.
struct LineStyle {
    FontNumber font;
    std::int32_t size;
    std::uint32_t encoding, fallbacks; // serials
    bool tabularDigits;
    std::string ideographs; // their language

    bool operator==(const LineStyle&) const = default;
};

struct LineKey {
    LineStyle style;
    std::string_view bytes;

    std::uint64_t Hash() const {
        const std::uint64_t word = (static_cast<std::uint64_t>(style.encoding) << 32) |
                                   (static_cast<std::uint64_t>(style.size) << 16) |
                                   static_cast<std::uint16_t>(style.font);
        const std::uint64_t digits = style.tabularDigits ? 1 : 0;
        const std::uint64_t more = MixHash((digits << 32) | style.fallbacks, word);
        return HashBytes(HashBytes(more, style.ideographs), bytes);
    }
};

class CachedLine final : public Line {
public:
    CachedLine(const LineKey& key, GlyphLine line, std::vector<Report> met)
        : Line(line.widthPx,
               static_cast<std::int64_t>(sizeof *this + key.bytes.size() +
                                         line.glyphs.capacity() * sizeof(PlacedGlyph) +
                                         (met.size() + line.tall.size()) * kReportBytes)),
          m_style(key.style), m_bytes(key.bytes), m_glyphs(std::move(line.glyphs)),
          m_tall(std::move(line.tall)), m_met(std::move(met)) {}

    bool Matches(const LineKey& key) const { return m_style == key.style && m_bytes == key.bytes; }
    // Whoever draws the line hears of what could not be honoured in it, laid out just now or long ago.
    void TellWhatWasMet(TextContext& context) const {
        for (const Report& report : m_met)
            context.Tell(report);
    }
    FontNumber Font() const { return m_style.font; }
    const std::vector<PlacedGlyph>& Glyphs() const { return m_glyphs; }
    const std::vector<TallCharacter>& Tall() const { return m_tall; }

private:
    static constexpr std::size_t kReportBytes = 256; // with its words

    LineStyle m_style;
    std::string m_bytes;
    std::vector<PlacedGlyph> m_glyphs;
    std::vector<TallCharacter> m_tall;
    std::vector<Report> m_met;
};

LruCache<CachedLine>& Lines() {
    static auto* const lines = new LruCache<CachedLine>(kMaxLineBytes, kLineShards);
    return *lines;
}

OnceTable g_once;

std::shared_ptr<const CachedLine> MakeLine(const LineKey& key) {
    TextContext met;
    const TextScope scope(met);
    FontCatalog& catalog = FontCatalog::Get();
    Family* const family = catalog.ByNumber(key.style.font);
    GlyphLine line;
    if (family && catalog.FaceOf(*family)) {
        line = LayOutGlyphs(*family, key.style.size, DecodeText(key.bytes));
    } else if (!key.bytes.empty()) {
        met.Tell({ ReportKind::kTextNotDrawn, "", "",
                   family ? "no installed font can be read" : "no font is installed" });
    }
    return std::make_shared<CachedLine>(key, std::move(line), met.Reports());
}

// A number that was not given counts as 0 before it becomes part of a key: it may be given later.
FontNumber Given(FontNumber font) {
    return FontCatalog::Get().IsGiven(font) ? font : 0;
}

} // namespace

std::uint64_t Line::NextId() {
    static std::atomic<std::uint64_t> last { 0 };
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

FontMetrics MetricsOf(FontNumber font, std::int32_t size) {
    FontCatalog& catalog = FontCatalog::Get();
    Family* const family = catalog.ByNumber(font);
    const Face* const face = family ? catalog.FaceOf(*family) : nullptr;
    if (!face)
        return {};
    const auto pixels = [&](std::int32_t units) {
        return ToPixelsUp(units, size, face->UnitsPerEm());
    };
    return { pixels(face->Ascent()), pixels(face->Descent()), pixels(face->MaxAdvance()),
             pixels(face->LineGap()) };
}

LinePtr LayOutLine(FontNumber font, std::int32_t size, std::string_view bytes) {
    TextContext& context = TextContext::Current();
    const LineKey key { { Given(font), size, context.Encoding().Serial(),
                          context.Fallbacks().serial, context.HasTabularDigits(),
                          context.IdeographLanguage() },
                        bytes };
    const std::uint64_t hash = key.Hash();
    thread_local RecentValues<CachedLine, kRecentLines> recent(Lines(), kMaxRecentBytes);
    if (const auto* const line = recent.Find(hash, key)) {
        (*line)->TellWhatWasMet(context);
        return *line;
    }
    std::shared_ptr<const CachedLine> line = Lines().Find(hash, key);
    if (!line) {
        line = MakeLine(key);
        if (g_once.SeenBefore(hash)) // worth keeping, also for other threads
            Lines().Insert(hash, line);
    }
    recent.Keep(hash, line);
    line->TellWhatWasMet(context);
    return line;
}

void TellCut(const Line& line, std::int64_t y, std::int64_t height) {
    const auto& cached = static_cast<const CachedLine&>(line);
    for (const TallCharacter& character : cached.Tall()) {
        const bool top = y + character.rows.top < 0;
        const bool bottom = y + character.rows.bottom > height;
        if (!top && !bottom)
            continue;
        const Family* const family = FontCatalog::Get().ByNumber(cached.Font());
        TextContext::Current().Tell({ ReportKind::kInkCut, character.name, "",
                                      std::string(!bottom ? "its top is"
                                                  : !top  ? "its bottom is"
                                                          : "its top and bottom are") +
                                          " cut off, for a line of '" +
                                          (family ? family->name : "") + "' has no room for it" });
    }
}

void PaintLine(const Line& line, std::int64_t x, std::int64_t y, CoverageTarget& target) {
    PaintGlyphs(static_cast<const CachedLine&>(line).Glyphs(), x, y, target);
}

PixelBox InkOf(const Line& line) {
    return InkOfGlyphs(static_cast<const CachedLine&>(line).Glyphs());
}

// A counter that goes on by one changes a glyph or two: what the lines have in common at either end
// is left out.
PixelBox DifferenceOf(const Line& a, const Line& b) {
    std::span<const PlacedGlyph> glyphsA(static_cast<const CachedLine&>(a).Glyphs());
    std::span<const PlacedGlyph> glyphsB(static_cast<const CachedLine&>(b).Glyphs());
    const auto heads = std::ranges::mismatch(glyphsA, glyphsB);
    glyphsA = { heads.in1, glyphsA.end() };
    glyphsB = { heads.in2, glyphsB.end() };
    const auto tails = std::ranges::mismatch(glyphsA.rbegin(), glyphsA.rend(), //
                                             glyphsB.rbegin(), glyphsB.rend());
    glyphsA = { glyphsA.begin(), tails.in1.base() };
    glyphsB = { glyphsB.begin(), tails.in2.base() };
    return Union(InkOfGlyphs(glyphsA), InkOfGlyphs(glyphsB));
}

ServiceCacheCounts CountServiceCaches() {
    return { Lines().Count(), CountGlyphs(), Lines().MaxBytes() + MaxGlyphBytes() };
}

void PurgeServiceCaches() {
    Lines().Clear();
    g_once.Clear();
    PurgeGlyphs();
}

} // namespace platform::text
