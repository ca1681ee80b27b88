// SPDX-License-Identifier: BSD-3-Clause
// One image of the host. An operation that the host's table lacks does nothing and gives 0.
#pragma once

#include <cstdint>
#include <memory>

#include "effect/PIObject.h"

class PIOffscreen : public PIObject {
public:
    // kind as for PIObject: 0 borrows the image, epiObjectImage releases it in the end.
    PIOffscreen(const EPIObjectProcs* objectProcs, const EPIOffscreenProcs* offscreenProcs,
                EPIImageRef image, std::int32_t kind = 0)
        : PIObject(objectProcs, image, kind), pOffscreenProcs(offscreenProcs) {}
    ~PIOffscreen() noexcept(false) override {
        const AtEnd unlock(m_unwinding, [this] { Unlock(); });
    }

    // Gives an image that was just created its pixels, cleared; false when the host cannot.
    bool Allocate(std::int32_t width, std::int32_t height, std::int32_t depth, double dotsPerInch);

    enum class Access { kRead = 0, kWrite = 1 };
    // Locks unless this wrapper has the image locked already. False when the host cannot, or has no
    // way to unlock it again.
    bool Lock(Access access);
    // Unlocks if this wrapper has the image locked.
    void Unlock();
    bool IsLocked() const { return m_locked != 0; }

    std::int32_t Width() const;
    std::int32_t Height() const;
    std::int32_t Depth() const; // bits in a pixel: 24, 32 or 64

    // Valid while locked. Pixel (x, y) lies at BaseAddress() + y * RowBytes() + x * (Depth() / 8).
    std::int32_t RowBytes() const;
    std::uint8_t* BaseAddress() const;
    // Where the channels lie, as the host tells it; else by the depth. An image without an alpha
    // leaves *a alone. See EPIOffscreenProcs for what is counted; the values by depth of a 64-bit
    // image are 0, 2, 4 and 6 and are used as if they, too, counted 16-bit words.
    void GetChannelIndex(long* a, long* r, long* g, long* b) const;

    // Pixel access through the host's cursor.
    void MoveTo(std::int32_t x, std::int32_t y);
    void Next();
    std::uint32_t GetPixel() const; // 8-bit channels in bits 0-7, 8-15 and 16-23
    void SetPixel(std::uint32_t packed);
    std::uint32_t GetRawPixel() const;
    void SetRawPixel(std::uint32_t raw);

    // Copies a w x h block of src; both images have one depth.
    void Copy(std::int32_t dx, std::int32_t dy, std::int32_t w, std::int32_t h,
              const PIOffscreen& src, std::int32_t sx, std::int32_t sy);
    // Scales the whole of src onto the whole of this image; false when the host has no operation
    // for it.
    bool Stretch(const PIOffscreen& src);

private:
    EPIImageRef Image() const { return static_cast<EPIImageRef>(m_object); }
    template <class Entry>
    Entry Find(Entry EPIOffscreenProcs::*entry) const;
    template <class Entry>
    Entry FindLate(Entry EPIOffscreenProcs::*entry) const;

    const EPIOffscreenProcs* pOffscreenProcs;
    std::int32_t m_locked = 0;
};

// Unlocks an image when its scope ends.
class PIOffscreenLock {
public:
    enum class Unlock {
        kIfLockedHere, // leaves a lock alone that was there before
        kAlways,       // ends that one as well
    };
    PIOffscreenLock(PIOffscreen& image, PIOffscreen::Access access, Unlock unlock)
        : m_image(image), m_unlock(unlock == Unlock::kAlways || !image.IsLocked()),
          m_locked(image.Lock(access)) {}
    PIOffscreenLock(const PIOffscreenLock&) = delete;
    PIOffscreenLock& operator=(const PIOffscreenLock&) = delete;
    ~PIOffscreenLock() noexcept(false) {
        const AtEnd unlock(m_unwinding, [this] {
            if (m_unlock)
                m_image.Unlock();
        });
    }

    bool IsLocked() const { return m_locked; }

private:
    const Unwinding m_unwinding;
    PIOffscreen& m_image;
    bool m_unlock;
    bool m_locked;
};

// Nothing passes a unique_ptr's end. What the host throws when it is to release an image that is held
// by one ends here, and the image is gone all the same.
template <>
struct std::default_delete<PIOffscreen> {
    void operator()(PIOffscreen* image) const noexcept {
        try {
            delete image;
        } catch (...) { // NOLINT(bugprone-empty-catch): see above
        }
    }
};
