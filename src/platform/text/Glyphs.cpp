// SPDX-License-Identifier: BSD-3-Clause
// Takes outlines from HarfBuzz and rasterises them with FreeType, which here sees nothing but
// outlines: no faces, no hints, no state that threads would share.
#include "platform/text/Glyphs.h"

#include <algorithm>
#include <cmath>
#include <ft2build.h>
#include <hb.h>
#include <optional>

#include FT_FREETYPE_H
#include FT_OUTLINE_H

namespace platform::text {
namespace {

constexpr std::int64_t kMaxCacheBytes = 32 << 20;
constexpr std::size_t kShards = 16;
// What a thread finds without a lock: the characters of a few lines of ordinary size.
constexpr std::size_t kRecentGlyphs = 512;
constexpr std::int64_t kMaxRecentBytes = 4 << 10;
// A larger bitmap is not made at all; the glyph comes as spans, clipped to what is seen.
constexpr std::int64_t kMaxBitmapBytes = 256 << 10;
// Rows are whole vectors of eight, so that blending needs no odd ends.
constexpr std::int64_t kStrideUnit = 8;

struct GlyphKey {
    std::uint32_t face;
    std::uint32_t glyph;
    std::int32_t size;
    std::uint32_t phase; // quarters of x in the low two bits, of y above

    bool operator==(const GlyphKey&) const = default;
    std::uint64_t Hash() const {
        return MixHash(MixHash(face, (std::uint64_t { glyph } << 32) | phase),
                       static_cast<std::uint64_t>(size));
    }
};

// left and top lead from the origin's pixel to the bitmap's first one, both to the right and down.
struct GlyphBitmap {
    GlyphKey key;
    std::int64_t left = 0, top = 0;
    std::int64_t stride = 0, width = 0, height = 0;
    std::vector<std::uint8_t> pixels;

    PixelBox Box() const { return { left, top, left + width, top + height }; }
    bool Matches(const GlyphKey& other) const { return key == other; }
    std::int64_t Bytes() const {
        return static_cast<std::int64_t>(sizeof *this + pixels.capacity());
    }
};

LruCache<GlyphBitmap>& Cache() {
    static auto* const cache = new LruCache<GlyphBitmap>(kMaxCacheBytes, kShards);
    return *cache;
}

using RecentGlyphs = RecentValues<GlyphBitmap, kRecentGlyphs>;
RecentGlyphs& Recent() {
    thread_local RecentGlyphs recent(Cache(), kMaxRecentBytes);
    return recent;
}

// A broken outline draws what can be drawn of it, in every frame the same.
void Check(FT_Error error) {
    if (error == FT_Err_Out_Of_Memory)
        throw std::bad_alloc();
}

FT_Library Library() {
    static const FT_Library library = [] {
        FT_Library made = nullptr;
        Check(FT_Init_FreeType(&made));
        return made;
    }();
    return library;
}

// An outline in 26.6 pixels, y up.
class Outline {
public:
    // scale is 26.6 pixels a font unit; (x, y) is added to each point.
    Outline(double scale, std::int32_t x, std::int32_t y) : m_scale(scale), m_x(x), m_y(y) {}

    // HarfBuzz calls these, which lets no exception pass: a failed allocation shows as those of its own.
    void Move(float x, float y) noexcept {
        Close();
        Add(x, y, FT_CURVE_TAG_ON);
    }
    void Add(float x, float y, char tag) noexcept try {
        m_points.push_back({ Scale(x) + m_x, Scale(y) + m_y });
        m_tags.push_back(tag);
    } catch (const std::bad_alloc&) {
        errno = ENOMEM;
    }
    void Close() noexcept try {
        if (!m_points.empty() && Index(m_points.size() - 1) != LastContour())
            m_contours.push_back(Index(m_points.size() - 1));
    } catch (const std::bad_alloc&) {
        errno = ENOMEM;
    }

    // Empty for a glyph without ink or with more points than an outline can number.
    std::optional<FT_Outline> View() {
        if (m_points.empty() || m_points.size() > 0x7FFF)
            return std::nullopt;
        FT_Outline outline {};
        outline.n_points = Index(m_points.size());
        outline.n_contours = Index(m_contours.size());
        outline.points = m_points.data();
        outline.tags = m_tags.data();
        outline.contours = m_contours.data();
        return outline;
    }

private:
    static short Index(std::size_t index) { return static_cast<short>(index & 0x7FFF); }
    short LastContour() const { return m_contours.empty() ? short { -1 } : m_contours.back(); }
    // Bounded far outside any world, where FreeType's arithmetic still holds.
    FT_Pos Scale(float units) const {
        constexpr double kLimit = 1 << 23;
        return std::lround(std::clamp(units * m_scale, -kLimit, kLimit));
    }

    double m_scale;
    std::int32_t m_x, m_y;
    std::vector<FT_Vector> m_points;
    std::vector<char> m_tags;
    std::vector<short> m_contours;
};

Outline& AsOutline(void* data) {
    return *static_cast<Outline*>(data);
}

hb_draw_funcs_t* MakeDrawFunctions() {
    hb_draw_funcs_t* const functions = hb_draw_funcs_create();
    using State = hb_draw_state_t;
    hb_draw_funcs_set_move_to_func(
        functions,
        [](hb_draw_funcs_t*, void* data, State*, float x, float y, void*) {
            AsOutline(data).Move(x, y);
        },
        nullptr, nullptr);
    hb_draw_funcs_set_line_to_func(
        functions,
        [](hb_draw_funcs_t*, void* data, State*, float x, float y, void*) {
            AsOutline(data).Add(x, y, FT_CURVE_TAG_ON);
        },
        nullptr, nullptr);
    hb_draw_funcs_set_quadratic_to_func(
        functions,
        [](hb_draw_funcs_t*, void* data, State*, float cx, float cy, float x, float y, void*) {
            AsOutline(data).Add(cx, cy, FT_CURVE_TAG_CONIC);
            AsOutline(data).Add(x, y, FT_CURVE_TAG_ON);
        },
        nullptr, nullptr);
    hb_draw_funcs_set_cubic_to_func(
        functions,
        [](hb_draw_funcs_t*, void* data, State*, float c1x, float c1y, float c2x, float c2y,
           float x, float y, void*) {
            AsOutline(data).Add(c1x, c1y, FT_CURVE_TAG_CUBIC);
            AsOutline(data).Add(c2x, c2y, FT_CURVE_TAG_CUBIC);
            AsOutline(data).Add(x, y, FT_CURVE_TAG_ON);
        },
        nullptr, nullptr);
    hb_draw_funcs_make_immutable(functions);
    return functions;
}

Outline OutlineOf(const Face& face, std::uint32_t glyph, std::int32_t size, std::uint32_t phase) {
    static hb_draw_funcs_t* const functions = WithAllMemory(MakeDrawFunctions);
    return WithAllMemory([&] {
        Outline outline(size * 64.0 / face.UnitsPerEm(), static_cast<std::int32_t>(phase & 3) * 16,
                        -static_cast<std::int32_t>(phase >> 2) * 16);
#if HB_VERSION_ATLEAST(7, 0, 0)
        hb_font_draw_glyph(face.Font(), glyph, functions, &outline);
#else
        hb_font_get_glyph_shape(face.Font(), glyph, functions, &outline);
#endif
        outline.Close();
        return outline;
    });
}

// Whole pixels around the outline, y down.
PixelBox BoxOf(FT_Outline& outline) {
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    return { box.xMin >> 6, -WholePixelsUp(box.yMax), WholePixelsUp(box.xMax), -(box.yMin >> 6) };
}

std::shared_ptr<const GlyphBitmap> Rasterise(const GlyphKey& key, FT_Outline& outline,
                                             const PixelBox& box) {
    auto bitmap = std::make_shared<GlyphBitmap>();
    bitmap->key = key;
    bitmap->left = box.left;
    bitmap->top = box.top;
    bitmap->width = box.right - box.left;
    bitmap->height = box.bottom - box.top;
    bitmap->stride = (bitmap->width + kStrideUnit - 1) / kStrideUnit * kStrideUnit;
    bitmap->pixels.resize(static_cast<std::size_t>(bitmap->stride * bitmap->height));
    FT_Outline_Translate(&outline, -box.left * 64, box.bottom * 64);
    FT_Bitmap target {};
    target.rows = static_cast<unsigned>(bitmap->height);
    target.width = static_cast<unsigned>(bitmap->width);
    target.pitch = static_cast<int>(bitmap->stride);
    target.buffer = bitmap->pixels.data();
    target.num_grays = 256;
    target.pixel_mode = FT_PIXEL_MODE_GRAY;
    Check(FT_Outline_Get_Bitmap(Library(), &outline, &target));
    return bitmap;
}

struct SpanPainter {
    CoverageTarget* target;
    PixelBox clip;
};

// FreeType's rows count upwards; the outline was moved so that the clip's bottom left corner is 0.
void PaintSpans(int y, int count, const FT_Span* spans, void* user) {
    const SpanPainter& painter = *static_cast<SpanPainter*>(user);
    for (const FT_Span* span = spans; span != spans + count; ++span) {
        painter.target->PaintSpan(painter.clip.left + span->x, painter.clip.bottom - 1 - y,
                                  span->len, span->coverage);
    }
}

void RasteriseInto(FT_Outline& outline, std::int64_t x, std::int64_t y, CoverageTarget& target) {
    SpanPainter painter { &target, target.Clip() };
    const PixelBox& clip = painter.clip;
    FT_Outline_Translate(&outline, (x - clip.left) * 64, (clip.bottom - y) * 64);
    FT_Raster_Params params {};
    params.flags = FT_RASTER_FLAG_AA | FT_RASTER_FLAG_DIRECT | FT_RASTER_FLAG_CLIP;
    params.gray_spans = PaintSpans;
    params.user = &painter;
    params.clip_box = { 0, 0, clip.right - clip.left, clip.bottom - clip.top };
    Check(FT_Outline_Render(Library(), &outline, &params));
}

// A glyph whose origin lies at a 26.6 position, y down: the pixel of the origin, and what is cached
// for where in that pixel it lies.
struct Origin {
    Origin(const PlacedGlyph& glyph, std::int64_t x26, std::int64_t y26)
        : key { glyph.face->Id(), glyph.glyph, glyph.size, Quarters(x26) | (Quarters(y26) << 2) },
          hash(key.Hash()), x(x26 >> 6), y(y26 >> 6) {}

    GlyphKey key;
    std::uint64_t hash;
    std::int64_t x, y;

private:
    static std::uint32_t Quarters(std::int64_t position) {
        return static_cast<std::uint32_t>((position >> 4) & 3);
    }
};

// The glyph's bitmap, from the cache when it is there; null when it was painted as spans or has no
// ink.
std::shared_ptr<const GlyphBitmap> BitmapOf(const Face& face, const Origin& origin,
                                            CoverageTarget& target) {
    const GlyphKey& key = origin.key;
    if (auto cached = Cache().Find(origin.hash, key))
        return cached;
    Outline outline = OutlineOf(face, key.glyph, key.size, key.phase);
    std::optional<FT_Outline> view = outline.View();
    if (!view)
        return nullptr;
    const PixelBox box = BoxOf(*view);
    if (box.Width() * box.Height() > kMaxBitmapBytes) {
        if (!Intersection(Shifted(box, origin.x, origin.y), target.Clip()).IsEmpty())
            RasteriseInto(*view, origin.x, origin.y, target);
        return nullptr;
    }
    auto bitmap = Rasterise(key, *view, box);
    Cache().Insert(origin.hash, bitmap);
    return bitmap;
}

void PaintBitmap(const GlyphBitmap& bitmap, const Origin& origin, CoverageTarget& target) {
    target.PaintBitmap(origin.x + bitmap.left, origin.y + bitmap.top,
                       { bitmap.pixels.data(), bitmap.stride, bitmap.width, bitmap.height });
}

void PaintGlyph(const Face& face, const Origin& origin, RecentGlyphs& recent,
                CoverageTarget& target) {
    if (const auto* const bitmap = recent.Find(origin.hash, origin.key)) {
        PaintBitmap(**bitmap, origin, target);
    } else if (const auto found = BitmapOf(face, origin, target)) {
        recent.Keep(origin.hash, found);
        PaintBitmap(*found, origin, target);
    }
}

// As seen from the pixel that origin counts from.
PixelBox InkOfGlyph(const Face& face, const Origin& origin, RecentGlyphs& recent) {
    if (const auto* const bitmap = recent.Find(origin.hash, origin.key))
        return Shifted((*bitmap)->Box(), origin.x, origin.y);
    const GlyphKey& key = origin.key;
    if (const auto bitmap = Cache().Find(origin.hash, key))
        return Shifted(bitmap->Box(), origin.x, origin.y);
    Outline outline = OutlineOf(face, key.glyph, key.size, key.phase);
    std::optional<FT_Outline> view = outline.View();
    return view ? Shifted(BoxOf(*view), origin.x, origin.y) : PixelBox {};
}

// Notes the rows that get coverage.
class RowFinder final : public CoverageTarget {
public:
    explicit RowFinder(const PixelBox& clip) : m_clip(clip) {}

    PixelBox Clip() const override { return m_clip; }
    void PaintBitmap(std::int64_t /*x*/, std::int64_t y, const CoverageBitmap& bitmap) override {
        for (std::int64_t row = 0; row < bitmap.height; ++row) {
            const std::uint8_t* const pixels = bitmap.pixels + row * bitmap.stride;
            if (std::any_of(pixels, pixels + bitmap.width, [](std::uint8_t c) { return c != 0; }))
                Include(y + row);
        }
    }
    void PaintSpan(std::int64_t /*x*/, std::int64_t y, std::int64_t /*length*/,
                   std::uint8_t coverage) override {
        if (coverage != 0)
            Include(y);
    }
    Rows Found() const { return m_found; }

private:
    void Include(std::int64_t row) {
        const bool first = m_found.top == m_found.bottom;
        m_found = { first ? row : std::min(m_found.top, row),
                    first ? row + 1 : std::max(m_found.bottom, row + 1) };
    }

    PixelBox m_clip;
    Rows m_found { 0, 0 };
};

} // namespace

void PaintGlyphs(std::span<const PlacedGlyph> glyphs, std::int64_t x, std::int64_t y,
                 CoverageTarget& target) {
    RecentGlyphs& recent = Recent();
    for (const PlacedGlyph& glyph : glyphs) {
        const Origin origin(glyph, x * 64 + glyph.x, y * 64 - glyph.y);
        PaintGlyph(*glyph.face, origin, recent, target);
    }
}

PixelBox InkOfGlyphs(std::span<const PlacedGlyph> glyphs) {
    RecentGlyphs& recent = Recent();
    PixelBox ink {};
    for (const PlacedGlyph& glyph : glyphs) {
        const Origin origin(glyph, glyph.x, -std::int64_t { glyph.y });
        ink = Union(ink, InkOfGlyph(*glyph.face, origin, recent));
    }
    return ink;
}

Rows RowsOfGlyph(const PlacedGlyph& glyph) {
    RowFinder finder(InkOfGlyphs({ &glyph, 1 }));
    PaintGlyphs({ &glyph, 1 }, 0, 0, finder);
    return finder.Found();
}

CacheCount CountGlyphs() {
    return Cache().Count();
}

std::int64_t MaxGlyphBytes() {
    return Cache().MaxBytes();
}

void PurgeGlyphs() {
    Cache().Clear();
}

} // namespace platform::text
