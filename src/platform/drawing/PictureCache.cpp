// SPDX-License-Identifier: BSD-3-Clause
// The cache of pictures, and what all caches of text hold together.
#include "platform/drawing/PictureCache.h"

#include <cstring>
#include <optional>

#include "platform/drawing/Recycler.h"

namespace platform {
namespace {

constexpr std::int64_t kMaxPictureBytes = 64 << 20;
constexpr std::size_t kShards = 2; // so that a picture of half the bound still fits

struct PictureKey {
    const Recording& recording;
    std::int32_t width, height;

    std::uint64_t Hash() const {
        const std::uint64_t size =
            (static_cast<std::uint64_t>(width) << 32) | static_cast<std::uint32_t>(height);
        return MixHash(recording.Hash(), size);
    }
};

Canvas CanvasOn(PixelBuffer& pixels, const PictureKey& key) {
    return { pixels.Data(), RowBytesFor(key.width), key.width, key.height };
}

void DrawAll(const PictureKey& key, PixelBuffer& pixels) {
    const Canvas canvas = CanvasOn(pixels, key);
    // Recycled memory holds other pictures; equal drawings must give equal bytes.
    if (!key.recording.CoversCanvas(key.width, key.height)) {
        std::memset(canvas.pixels, 0, static_cast<std::size_t>(canvas.rowBytes * canvas.height));
    }
    key.recording.Draw(canvas);
}

// Pixels, and the drawing that they hold.
struct Picture {
    Recording recording;
    std::int32_t width = 0, height = 0;
    std::shared_ptr<PixelBuffer> pixels;

    bool Matches(const PictureKey& key) const {
        return width == key.width && height == key.height && key.recording.SameAs(recording);
    }
    std::int64_t Bytes() const {
        return static_cast<std::int64_t>(sizeof *this) + recording.Bytes() + pixels->Capacity();
    }
};

LruCache<Picture>& Cache() {
    static auto* const cache = new LruCache<Picture>(kMaxPictureBytes, kShards);
    return *cache;
}

OnceTable g_once;

// The pictures that a thread drew last and nobody needs any more. In a text that counts on with each
// frame a digit or two change, and the rest of the picture is there already.
using PictureRecycler = Recycler<Picture, 4>;

PictureRecycler& Recycled() {
    thread_local PictureRecycler recycler;
    return recycler;
}

std::shared_ptr<const Picture> Lend(std::unique_ptr<Picture> picture) {
    return { picture.release(), [](Picture* returned) {
                std::unique_ptr<Picture> owned(returned);
                if (PictureRecycler::Alive() && owned->pixels->IsRecyclable()) {
                    Recycled().Give(std::move(owned));
                }
            } };
}

// An older picture with what differs drawn anew; null when none is alike.
std::unique_ptr<Picture> UpdateOlder(const PictureKey& key) {
    std::optional<text::PixelBox> difference;
    const auto isAlike = [&](const Picture& older) {
        if (older.width != key.width || older.height != key.height) {
            return false;
        }
        difference = key.recording.DifferenceFrom(older.recording, key.width, key.height);
        return difference.has_value();
    };
    std::unique_ptr<Picture> picture = Recycled().Take(isAlike);
    if (picture) {
        key.recording.Redraw(CanvasOn(*picture->pixels, key), *difference);
    }
    return picture;
}

// As long as there is room for one more, the older ones may still be of use for other texts.
std::unique_ptr<Picture> DrawNew(const PictureKey& key) {
    const std::int64_t bytes = RowBytesFor(key.width) * key.height;
    std::unique_ptr<Picture> picture;
    if (PictureRecycler::Alive() && Recycled().IsFull()) {
        picture =
            Recycled().Take([bytes](const Picture& older) { return older.pixels->Fits(bytes); });
    }
    if (!picture) {
        picture = std::make_unique<Picture>();
        picture->pixels = PixelBuffer::Make(bytes);
    }
    DrawAll(key, *picture->pixels);
    picture->width = key.width;
    picture->height = key.height;
    return picture;
}

std::shared_ptr<const Picture> Draw(const PictureKey& key) {
    std::unique_ptr<Picture> picture = PictureRecycler::Alive() ? UpdateOlder(key) : nullptr;
    if (!picture) {
        picture = DrawNew(key);
    }
    picture->recording = key.recording;
    return Lend(std::move(picture));
}

} // namespace

std::shared_ptr<const PixelBuffer> PictureOf(const Recording& recording, std::int32_t width,
                                             std::int32_t height) {
    const PictureKey key { recording, width, height };
    const std::uint64_t hash = key.Hash();
    std::shared_ptr<const Picture> picture = Cache().Find(hash, key);
    if (!picture) {
        picture = Draw(key);
        if (g_once.SeenBefore(hash)) { // worth keeping
            Cache().Insert(hash, picture);
        }
    }
    return { picture, picture->pixels.get() };
}

std::shared_ptr<PixelBuffer> DrawPicture(const Recording& recording, std::int32_t width,
                                         std::int32_t height) {
    auto pixels = PixelBuffer::Make(RowBytesFor(width) * height);
    DrawAll({ recording, width, height }, *pixels);
    return pixels;
}

TextCacheStats GetTextCacheStats() {
    const text::ServiceCacheCounts service = text::CountServiceCaches();
    const CacheCount pictures = Cache().Count();
    return { .bytes = service.lines.bytes + service.glyphs.bytes + pictures.bytes,
             .maxBytes = service.maxBytes + Cache().MaxBytes(),
             .pictureHits = pictures.hits,
             .pictureMisses = pictures.misses,
             .lineHits = service.lines.hits,
             .lineMisses = service.lines.misses };
}

void PurgeTextCaches() {
    text::PurgeServiceCaches();
    Cache().Clear();
    g_once.Clear();
    // What the cache let go of came to this thread.
    if (PictureRecycler::Alive()) {
        Recycled().Clear();
    }
    PixelBuffer::DropRecycled();
}

} // namespace platform
