// SPDX-License-Identifier: BSD-3-Clause
// Calls into the host's image table, each only where the table has it.
#include "render/PIOffscreen.h"

#include <array>
#include <limits>

#include "render/TableEntry.h"

namespace {

// A value that no host gives, to see what it left alone.
constexpr std::int32_t kUntold = std::numeric_limits<std::int32_t>::min();

std::array<std::int32_t, 4> IndicesByDepth(std::int32_t depth) {
    if (depth == 64)
        return { 0, 2, 4, 6 };
    if (depth == 24)
        return { kUntold, 0, 1, 2 };
    return { 0, 1, 2, 3 };
}

void Tell(long* out, std::int32_t index) {
    if (index != kUntold)
        *out = index;
}

} // namespace

template <class Entry>
Entry PIOffscreen::Find(Entry EPIOffscreenProcs::*entry) const {
    return m_object ? render::FindEntry(pOffscreenProcs, entry) : nullptr;
}

// The two entries that came later exist together or not at all.
template <class Entry>
Entry PIOffscreen::FindLate(Entry EPIOffscreenProcs::*entry) const {
    if (!pOffscreenProcs || pOffscreenProcs->nSize < EPI_OFFSCREEN_FULL_SIZE)
        return nullptr;
    return Find(entry);
}

bool PIOffscreen::Allocate(std::int32_t width, std::int32_t height, std::int32_t depth,
                           double dotsPerInch) {
    const auto allocate = Find(&EPIOffscreenProcs::Allocate);
    return allocate && allocate(Image(), width, height, depth, dotsPerInch) != 0;
}

bool PIOffscreen::Lock(Access access) {
    if (m_locked == 0 && Find(&EPIOffscreenProcs::Unlock)) {
        if (const auto lock = Find(&EPIOffscreenProcs::Lock))
            m_locked = lock(Image(), static_cast<std::int32_t>(access)) != 0 ? 1 : 0;
    }
    return m_locked != 0;
}

void PIOffscreen::Unlock() {
    if (m_locked == 0)
        return;
    m_locked = 0;
    if (const auto unlock = Find(&EPIOffscreenProcs::Unlock))
        unlock(Image());
}

std::int32_t PIOffscreen::Width() const {
    const auto width = Find(&EPIOffscreenProcs::Width);
    return width ? width(Image()) : 0;
}

std::int32_t PIOffscreen::Height() const {
    const auto height = Find(&EPIOffscreenProcs::Height);
    return height ? height(Image()) : 0;
}

std::int32_t PIOffscreen::Depth() const {
    const auto depth = Find(&EPIOffscreenProcs::Depth);
    return depth ? depth(Image()) : 0;
}

std::int32_t PIOffscreen::RowBytes() const {
    const auto rowBytes = Find(&EPIOffscreenProcs::RowBytes);
    return rowBytes ? rowBytes(Image()) : 0;
}

std::uint8_t* PIOffscreen::BaseAddress() const {
    const auto baseAddress = Find(&EPIOffscreenProcs::BaseAddress);
    return baseAddress ? static_cast<std::uint8_t*>(baseAddress(Image())) : nullptr;
}

void PIOffscreen::GetChannelIndex(long* a, long* r, long* g, long* b) const {
    std::array<std::int32_t, 4> index { kUntold, kUntold, kUntold, kUntold };
    if (const auto indices = FindLate(&EPIOffscreenProcs::ChannelIndices))
        indices(Image(), &index[0], &index[1], &index[2], &index[3]);
    else
        index = IndicesByDepth(Depth());
    Tell(a, index[0]);
    Tell(r, index[1]);
    Tell(g, index[2]);
    Tell(b, index[3]);
}

void PIOffscreen::MoveTo(std::int32_t x, std::int32_t y) {
    if (const auto moveTo = Find(&EPIOffscreenProcs::MoveTo))
        moveTo(Image(), x, y);
}

void PIOffscreen::Next() {
    if (const auto next = Find(&EPIOffscreenProcs::Next))
        next(Image());
}

std::uint32_t PIOffscreen::GetPixel() const {
    const auto getPixel = Find(&EPIOffscreenProcs::GetPixel);
    return getPixel ? getPixel(Image()) : 0;
}

void PIOffscreen::SetPixel(std::uint32_t packed) {
    if (const auto setPixel = Find(&EPIOffscreenProcs::SetPixel))
        setPixel(Image(), packed);
}

std::uint32_t PIOffscreen::GetRawPixel() const {
    const auto getRawPixel = Find(&EPIOffscreenProcs::GetRawPixel);
    return getRawPixel ? getRawPixel(Image()) : 0;
}

void PIOffscreen::SetRawPixel(std::uint32_t raw) {
    if (const auto setRawPixel = Find(&EPIOffscreenProcs::SetRawPixel))
        setRawPixel(Image(), raw);
}

void PIOffscreen::Copy(std::int32_t dx, std::int32_t dy, std::int32_t w, std::int32_t h,
                       const PIOffscreen& src, std::int32_t sx, std::int32_t sy) {
    const auto copy = Find(&EPIOffscreenProcs::Copy);
    if (copy && src.m_object)
        copy(Image(), dx, dy, w, h, src.Image(), sx, sy);
}

bool PIOffscreen::Stretch(const PIOffscreen& src) {
    const auto stretch = FindLate(&EPIOffscreenProcs::Stretch);
    if (!stretch || !src.m_object)
        return false;
    stretch(Image(), 0, 0, Width(), Height(), src.Image(), 0, 0, src.Width(), src.Height());
    return true;
}
