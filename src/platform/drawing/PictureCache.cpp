// SPDX-License-Identifier: BSD-3-Clause
// The cache of pictures, and what all caches of text hold together.
#include "platform/drawing/Recording.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace platform {
namespace {

constexpr std::int64_t kMaxPictureBytes = 64 << 20;
constexpr std::size_t kShards = 2; // so that a picture of half the bound still fits

constexpr std::int64_t kMaxOlderBytes = 8 << 20; // a larger one is not held on to

struct PictureKey {
    const Recording& recording;
    std::int32_t width, height;

    std::uint64_t Hash() const {
        const std::uint64_t size =
            (static_cast<std::uint64_t>(width) << 32) | static_cast<std::uint32_t>(height);
        return MixHash(recording.Hash(), size);
    }
};

// Pixels, and the drawing that they hold.
struct Picture {
    Recording recording;
    std::int32_t width = 0, height = 0;
    PixelMemory pixels;

    bool Matches(const PictureKey& key) const {
        return width == key.width && height == key.height && key.recording.SameAs(recording);
    }
    std::int64_t Bytes() const {
        return static_cast<std::int64_t>(sizeof *this) + recording.Bytes() +
               RowBytesFor(width) * height;
    }
};

LruCache<Picture>& Cache() {
    static auto* const cache = new LruCache<Picture>(kMaxPictureBytes, kShards);
    return *cache;
}

OnceTable g_once;

// The pictures that a thread drew last and nobody needs any more. In a text that counts on with each
// frame a digit or two change, and the rest of the picture is there already. Takes no memory itself, so
// that giving back never fails.
class OlderPictures {
public:
    // Null once the thread's own are gone: pictures that end later must not come to them.
    static OlderPictures* OfThread() {
        thread_local OlderPictures pictures;
        return s_alive ? &pictures : nullptr;
    }
    ~OlderPictures() { s_alive = false; }

    void Keep(std::unique_ptr<Picture> picture) {
        if (picture->Bytes() <= kMaxOlderBytes) {
            std::rotate(m_pictures.begin(), m_pictures.end() - 1, m_pictures.end());
            m_pictures.front() = std::move(picture);
        }
    }
    // One that differs from the drawing in the box alone; null when there is none.
    std::unique_ptr<Picture> Take(const PictureKey& key, text::PixelBox& box) {
        for (std::unique_ptr<Picture>& older : m_pictures) {
            if (!older || older->width != key.width || older->height != key.height)
                continue;
            if (const auto difference =
                    key.recording.DifferenceFrom(older->recording, key.width, key.height)) {
                box = *difference;
                return std::move(older);
            }
        }
        return nullptr;
    }
    void Clear() { m_pictures = {}; }

private:
    OlderPictures() = default;

    static inline thread_local bool s_alive = true;
    std::array<std::unique_ptr<Picture>, 4> m_pictures; // the last one first
};

std::shared_ptr<const Picture> Lend(std::unique_ptr<Picture> picture) {
    return { picture.release(), [](Picture* returned) {
                std::unique_ptr<Picture> owned(returned);
                if (OlderPictures* const older = OlderPictures::OfThread())
                    older->Keep(std::move(owned));
            } };
}

std::shared_ptr<const Picture> Draw(const PictureKey& key) {
    text::PixelBox difference {};
    OlderPictures* const olderPictures = OlderPictures::OfThread();
    std::unique_ptr<Picture> picture =
        olderPictures ? olderPictures->Take(key, difference) : nullptr;
    if (picture) {
        if (!difference.IsEmpty()) {
            key.recording.Redraw(
                { picture->pixels.get(), RowBytesFor(key.width), key.width, key.height },
                difference);
        }
    } else {
        picture = std::make_unique<Picture>();
        picture->pixels = DrawPicture(key.recording, key.width, key.height);
        picture->width = key.width;
        picture->height = key.height;
    }
    picture->recording = key.recording;
    return Lend(std::move(picture));
}

} // namespace

std::shared_ptr<const std::uint8_t> PictureOf(const Recording& recording, std::int32_t width,
                                              std::int32_t height) {
    const PictureKey key { recording, width, height };
    const std::uint64_t hash = key.Hash();
    std::shared_ptr<const Picture> picture = Cache().Find(hash, key);
    if (!picture) {
        picture = Draw(key);
        if (g_once.SeenBefore(hash)) // worth keeping
            Cache().Insert(hash, picture);
    }
    return { picture, picture->pixels.get() };
}

PixelMemory DrawPicture(const Recording& recording, std::int32_t width, std::int32_t height) {
    const std::int64_t bytes = RowBytesFor(width) * height;
    PixelMemory pixels = MakePixels(bytes);
    if (!recording.CoversCanvas(width, height)) // equal drawings must give equal bytes
        std::memset(pixels.get(), 0, static_cast<std::size_t>(bytes));
    recording.Draw({ pixels.get(), RowBytesFor(width), width, height });
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
    if (OlderPictures* const older = OlderPictures::OfThread())
        older->Clear();
}

} // namespace platform
