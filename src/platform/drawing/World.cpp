// SPDX-License-Identifier: BSD-3-Clause
// Making, locking and disposing of worlds, and the thread's current one.
#include "platform/drawing/World.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace platform {

struct GDevice {};

namespace {

// A world that is drawn into without end turns its recording into pixels now and then.
constexpr std::size_t kMaxCommands = 512;

thread_local CGrafPtr t_port = nullptr;
thread_local GDHandle t_device = nullptr;

GDHandle TheDevice() {
    static GDevice device;
    return &device;
}

} // namespace

void SetRect(Rect* rect, std::int16_t left, std::int16_t top, std::int16_t right,
             std::int16_t bottom) {
    *rect = { top, left, bottom, right };
}

// Pixel maps -------------------------------------------------------------------------------------

void PixMap::Fill(const Rect& rect, Pixel color) {
    const text::PixelBox box { std::max<std::int32_t>(rect.left, 0),
                               std::max<std::int32_t>(rect.top, 0),
                               std::min<std::int32_t>(rect.right, width),
                               std::min<std::int32_t>(rect.bottom, height) };
    if (box.IsEmpty())
        return;
    BoundRecording();
    if (box.Width() == width && box.Height() == height)
        own = nullptr;
    shared = nullptr;
    recording.Fill(box, color, width, height);
}

void PixMap::Text(std::int32_t x, std::int32_t y, const text::LinePtr& line, Pixel color) {
    BoundRecording();
    shared = nullptr;
    recording.Text(x, y, line, color);
}

void PixMap::BoundRecording() {
    if (recording.Count() >= kMaxCommands)
        WritablePixels();
}

const std::uint8_t* PixMap::Pixels() {
    if (own)
        return WritablePixels();
    if (!shared)
        shared = PictureOf(recording, width, height);
    return shared.get();
}

std::uint8_t* PixMap::WritablePixels() {
    if (!own) {
        own = DrawPicture(recording, width, height);
        shared = nullptr;
    } else {
        recording.Draw({ own.get(), RowBytesFor(width), width, height });
    }
    recording.Clear();
    return own.get();
}

// Worlds -----------------------------------------------------------------------------------------

OSStatus NewGWorld(GWorldPtr* world, std::int16_t depth, const Rect& bounds) {
    *world = nullptr;
    const std::int32_t width = bounds.right - bounds.left;
    const std::int32_t height = bounds.bottom - bounds.top;
    if (depth != 32 || width <= 0 || height <= 0 || width > kMaxWorldSide || height > kMaxWorldSide)
        return kParamErr;
    if (RowBytesFor(width) * height > kMaxWorldBytes)
        return kMemFullErr;
    *world = new (std::nothrow) GWorld;
    if (!*world)
        return kMemFullErr;
    (*world)->pixels.width = width;
    (*world)->pixels.height = height;
    return kNoErr;
}

void DisposeGWorld(GWorldPtr world) {
    if (world && t_port == world)
        t_port = nullptr; // a caller's mistake that must not become a dangling port
    delete world;
}

void GetGWorld(CGrafPtr* port, GDHandle* device) {
    *port = t_port;
    *device = t_device ? t_device : TheDevice();
}

void SetGWorld(CGrafPtr port, GDHandle device) {
    t_port = port;
    t_device = device;
}

CGrafPtr GetPort() {
    return t_port;
}

void SetPort(CGrafPtr port) {
    t_port = port;
}

PixMapHandle GetGWorldPixMap(GWorldPtr world) {
    return world ? &world->pixels : nullptr;
}

bool LockPixels(PixMapHandle pixels) {
    if (!pixels)
        return false;
    try {
        pixels->Pixels();
    } catch (const std::bad_alloc&) {
        return false;
    }
    ++pixels->locks;
    return true;
}

void UnlockPixels(PixMapHandle pixels) {
    if (pixels && pixels->locks > 0)
        --pixels->locks;
}

const std::uint8_t* GetPixBaseAddr(PixMapHandle pixels) {
    if (!pixels || pixels->locks == 0)
        return nullptr;
    try {
        return pixels->Pixels(); // drawn anew when something was drawn since the lock
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

std::uint8_t* GetWritablePixBaseAddr(PixMapHandle pixels) {
    if (!pixels || pixels->locks == 0)
        return nullptr;
    try {
        return pixels->WritablePixels();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

std::int32_t GetPixRowBytes(PixMapHandle pixels) {
    return pixels ? static_cast<std::int32_t>(RowBytesFor(pixels->width)) : 0;
}

} // namespace platform
