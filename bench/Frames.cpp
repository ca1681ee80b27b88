// SPDX-License-Identifier: BSD-3-Clause
#include "Frames.h"

#include <array>
#include <cstring>
#include <map>
#include <memory>
#include <stdexcept>
#include <tuple>

namespace bench {

namespace {

// A channel of 0 to 255 as the format stores it.
void Store(std::span<std::uint8_t> row, int channel, int depth, int value) {
    if (depth == 64) {
        const auto wide = static_cast<std::uint16_t>(value * 257);
        std::memcpy(&row[static_cast<std::size_t>(channel) * 2], &wide, sizeof wide);
    } else {
        row[static_cast<std::size_t>(channel)] = static_cast<std::uint8_t>(value);
    }
}

} // namespace

void PaintBackground(host::Image& image) {
    const host::PixelFormat& format = image.Format();
    for (int y = 0; y < image.Height(); ++y) {
        const auto row = image.Row(y);
        for (int x = 0; x < image.Width(); ++x) {
            const int pixel = x * format.Channels();
            Store(row, pixel + format.red, format.depth, 40 + 120 * x / image.Width());
            Store(row, pixel + format.green, format.depth, 70 + 80 * y / image.Height());
            Store(row, pixel + format.blue, format.depth, 150 - 90 * x / image.Width());
            Store(row, pixel + format.alpha, format.depth, 255);
        }
    }
}

host::Image& ThreadFrame(FrameSize size, int depth) {
    thread_local std::map<std::tuple<int, int, int>, std::unique_ptr<host::Image>> frames;
    auto& frame = frames[{ size.width, size.height, depth }];
    if (!frame) {
        frame = host::Image::Make(size.width, size.height, depth == 64 ? kFrame16 : kFrame8);
        if (!frame)
            throw std::runtime_error("no memory for a frame");
        PaintBackground(*frame);
    }
    return *frame;
}

} // namespace bench
