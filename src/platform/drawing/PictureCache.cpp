// SPDX-License-Identifier: BSD-3-Clause
// The cache of pictures, and what all caches of text hold together.
#include "platform/drawing/PictureCache.h"

#include <cstring>

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

struct Picture {
    std::vector<Command> commands;
    std::int32_t width, height;
    std::shared_ptr<const PixelBuffer> pixels;

    bool Matches(const PictureKey& key) const {
        return width == key.width && height == key.height && key.recording.SameAs(commands);
    }
    std::int64_t Bytes() const {
        return static_cast<std::int64_t>(sizeof *this + commands.capacity() * sizeof(Command)) +
               pixels->Capacity();
    }
};

LruCache<Picture>& Cache() {
    static auto* const cache = new LruCache<Picture>(kMaxPictureBytes, kShards);
    return *cache;
}

OnceTable g_once;

} // namespace

std::shared_ptr<PixelBuffer> DrawPicture(const Recording& recording, std::int32_t width,
                                         std::int32_t height) {
    const std::int64_t rowBytes = RowBytesFor(width);
    const std::int64_t bytes = rowBytes * height;
    std::shared_ptr<PixelBuffer> buffer = PixelBuffer::Make(bytes);
    // Recycled memory holds other pictures; equal drawings must give equal bytes.
    if (!recording.CoversCanvas(width, height)) {
        std::memset(buffer->Data(), 0, static_cast<std::size_t>(bytes));
    }
    recording.Draw({ buffer->Data(), rowBytes, width, height });
    return buffer;
}

std::shared_ptr<const PixelBuffer> PictureOf(const Recording& recording, std::int32_t width,
                                             std::int32_t height) {
    const PictureKey key { recording, width, height };
    const std::uint64_t hash = key.Hash();
    if (const auto picture = Cache().Find(hash, key)) {
        return picture->pixels;
    }
    std::shared_ptr<const PixelBuffer> pixels = DrawPicture(recording, width, height);
    if (g_once.SeenBefore(hash)) { // worth keeping
        Cache().Insert(hash, std::make_shared<Picture>(
                                 Picture { recording.Commands(), width, height, pixels }));
    }
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
}

} // namespace platform
