// SPDX-License-Identifier: BSD-3-Clause
// Fills rows of pixels; makes and recycles their memory.
#include "platform/drawing/Pixels.h"

#include <algorithm>
#include <new>

#include "platform/drawing/Recycler.h"

namespace platform {
namespace {

constexpr std::int64_t kMaxRecycledBytes = 8 << 20;
using BufferRecycler = Recycler<PixelBuffer, 2>;

BufferRecycler& Recycled() {
    thread_local BufferRecycler recycler;
    return recycler;
}

} // namespace

void FillPixels(std::uint8_t* pixels, std::int64_t count, Pixel color) {
    std::fill_n(reinterpret_cast<std::uint32_t*>(pixels), count,
                std::bit_cast<std::uint32_t>(color));
}

PixelBuffer::PixelBuffer(std::int64_t bytes)
    : m_data(static_cast<std::uint8_t*>(
          ::operator new (static_cast<std::size_t>(bytes), std::align_val_t { kPixelAlignment }))),
      m_capacity(bytes) {}

void PixelBuffer::Free::operator()(std::uint8_t* data) const {
    ::operator delete (data, std::align_val_t { kPixelAlignment });
}

bool PixelBuffer::IsRecyclable() const {
    return m_capacity <= kMaxRecycledBytes;
}

std::shared_ptr<PixelBuffer> PixelBuffer::Make(std::int64_t bytes) {
    const auto fits = [bytes](const PixelBuffer& buffer) { return buffer.Fits(bytes); };
    std::unique_ptr<PixelBuffer> buffer = BufferRecycler::Alive() ? Recycled().Take(fits) : nullptr;
    if (!buffer) {
        // With room for the next, slightly longer text.
        buffer = std::make_unique<PixelBuffer>(std::max<std::int64_t>(bytes + bytes / 8, 4096));
    }
    return { buffer.release(), [](PixelBuffer* returned) {
                std::unique_ptr<PixelBuffer> owned(returned);
                if (BufferRecycler::Alive() && owned->IsRecyclable()) {
                    Recycled().Give(std::move(owned));
                }
            } };
}

void PixelBuffer::DropRecycled() {
    if (BufferRecycler::Alive()) {
        Recycled().Clear();
    }
}

} // namespace platform
