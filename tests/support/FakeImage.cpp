// SPDX-License-Identifier: BSD-3-Clause
// The callback table of the tests' image.
#include "support/FakeImage.h"

#include <algorithm>
#include <cstring>

namespace {

FakeImage& Of(EPIImageRef image) {
    return *reinterpret_cast<FakeImage*>(image);
}

std::int32_t Tell(EPIImageRef image, int number) {
    return Of(image).isInTrouble() ? 0 : number;
}

std::uint8_t* Cursor(FakeImage& image) {
    return image.Base() + image.cursor / image.width * image.rowBytes +
           image.cursor % image.width * (image.depth / 8);
}

EPIOffscreenProcs Callbacks() {
    EPIOffscreenProcs procs {};
    procs.nSize = sizeof procs;
    procs.Lock = [](EPIImageRef image, std::int32_t writable) -> std::int32_t {
        if (Of(image).isInTrouble())
            return 0;
        ++(writable == 1 ? Of(image).writableLocks : Of(image).readableLocks);
        return ++Of(image).locks;
    };
    procs.Unlock = [](EPIImageRef image) {
        --Of(image).locks;
        Of(image).isInTrouble();
    };
    procs.Width = [](EPIImageRef image) { return Tell(image, Of(image).width); };
    procs.Height = [](EPIImageRef image) { return Tell(image, Of(image).height); };
    procs.Depth = [](EPIImageRef image) { return Tell(image, Of(image).depth); };
    procs.GetPixel = [](EPIImageRef image) -> std::uint32_t {
        const std::uint8_t* at = Cursor(Of(image));
        return at[1] | at[2] << 8 | at[3] << 16 | std::uint32_t { at[0] } << 24;
    };
    procs.GetRawPixel = [](EPIImageRef image) -> std::uint32_t {
        std::uint32_t raw = 0;
        std::memcpy(&raw, Cursor(Of(image)), sizeof raw);
        return raw;
    };
    procs.SetPixel = [](EPIImageRef image, std::uint32_t packed) {
        std::uint8_t* at = Cursor(Of(image));
        for (const int shift : { 24, 0, 8, 16 })
            *at++ = static_cast<std::uint8_t>(packed >> shift);
    };
    procs.SetRawPixel = [](EPIImageRef image, std::uint32_t raw) {
        std::memcpy(Cursor(Of(image)), &raw, sizeof raw);
    };
    procs.MoveTo = [](EPIImageRef image, std::int32_t x, std::int32_t y) {
        Of(image).cursor = y * Of(image).width + x;
    };
    procs.Next = [](EPIImageRef image) { ++Of(image).cursor; };
    procs.Copy = [](EPIImageRef dst, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                    EPIImageRef src, std::int32_t, std::int32_t) {
        ++Of(dst).copies;
        Of(dst).memory = Of(src).memory;
    };
    procs.RowBytes = [](EPIImageRef image) {
        return Tell(image, Of(image).locks > 0 ? Of(image).toldRowBytes : 0);
    };
    procs.BaseAddress = [](EPIImageRef image) -> void* {
        return Of(image).isInTrouble() || Of(image).locks == 0 ? nullptr : Of(image).Base();
    };
    procs.ChannelIndices = [](EPIImageRef image, std::int32_t* a, std::int32_t* r, std::int32_t* g,
                              std::int32_t* b) {
        if (Of(image).isInTrouble())
            return;
        const render::ChannelOrder& order = Of(image).order;
        if (order.alpha >= 0)
            *a = order.alpha;
        *r = order.red;
        *g = order.green;
        *b = order.blue;
    };
    procs.Stretch = [](EPIImageRef dst, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                       EPIImageRef, std::int32_t, std::int32_t, std::int32_t,
                       std::int32_t) { ++Of(dst).stretches; };
    return procs;
}

} // namespace

FakeImage::FakeImage(int width, int height, int depth, int padding)
    : width(width), height(height), depth(depth), rowBytes(width * depth / 8 + padding),
      memory(static_cast<std::size_t>(2 * kMargin + height * rowBytes), kMark), procs(Callbacks()),
      order(depth == 24 ? render::ChannelOrder { -1, 0, 1, 2 }
                        : render::ChannelOrder { 0, 1, 2, 3 }),
      toldRowBytes(rowBytes) {
    for (int y = 0; y < height; ++y)
        std::fill_n(Base() + y * rowBytes, width * depth / 8, std::uint8_t { 0 });
}

std::uint32_t FakeImage::Channel(int x, int y, int place) const {
    const std::uint8_t* row = memory.data() + kMargin + y * rowBytes;
    if (depth != 64)
        return row[x * (depth / 8) + place];
    std::uint16_t value;
    std::memcpy(&value, row + 8 * x + 2 * place, sizeof value);
    return value;
}

std::vector<std::uint32_t> FakeImage::Pixel(int x, int y) const {
    std::vector<std::uint32_t> channels;
    for (int place = 0; place < (depth == 24 ? 3 : 4); ++place)
        channels.push_back(Channel(x, y, place));
    return channels;
}

void FakeImage::SetPixel(int x, int y, const std::vector<std::uint32_t>& channels) {
    std::uint8_t* at = Base() + y * rowBytes + x * depth / 8;
    for (const std::uint32_t channel : channels) {
        const auto wide = static_cast<std::uint16_t>(channel);
        if (depth == 64)
            std::memcpy(at, &wide, sizeof wide);
        else
            *at = static_cast<std::uint8_t>(channel);
        at += depth == 64 ? 2 : 1;
    }
}

bool FakeImage::MarksAreWhole() const {
    const int used = width * depth / 8;
    for (int i = 0; i < static_cast<int>(memory.size()); ++i) {
        const int at = i - kMargin;
        const bool pixel = at >= 0 && at < height * rowBytes && at % rowBytes < used;
        if (!pixel && memory[static_cast<std::size_t>(i)] != kMark)
            return false;
    }
    return true;
}
