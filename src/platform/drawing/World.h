// SPDX-License-Identifier: BSD-3-Clause
// A world: its size, the state of its port, what was drawn, and its pixels once they are locked.
#pragma once

#include "platform/drawing/Recording.h"

namespace platform {

// What LockPixels and its companions see of a world. Drawing is recorded. Once somebody wants to write
// pixels the world has its own, onto which the recording is drawn, until the next erase of the whole
// world.
struct PixMap {
    std::int32_t width = 0, height = 0;
    std::int32_t locks = 0;
    Recording recording;                        // with own, what was drawn since
    std::shared_ptr<const std::uint8_t> shared; // without own, a picture of the recording
    PixelMemory own;

    void Fill(const Rect& rect, Pixel color);
    void Text(std::int32_t x, std::int32_t y, const text::LinePtr& line, Pixel color);
    // The pixels as they stand. Throws std::bad_alloc.
    const std::uint8_t* Pixels();
    std::uint8_t* WritablePixels();

private:
    void BoundRecording();
};

struct PortState {
    RGBColor fore { 0, 0, 0 };
    RGBColor back { 65535, 65535, 65535 };
    FontNumber font = 0;
    std::int16_t size = 0, face = 0, mode = kSrcOr;
    std::int32_t penX = 0, penY = 0;
};

struct GWorld {
    PixMap pixels;
    PortState state;
};

} // namespace platform
