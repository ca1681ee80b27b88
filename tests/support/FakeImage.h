// SPDX-License-Identifier: BSD-3-Clause
// An image of a host that exists for the tests: its memory has marked bytes around it and between its
// rows, it has an address only while it is locked, and what a host may refuse or get wrong can be asked
// of it.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "render/PIOffscreen.h"
#include "render/PixelRow.h"

class FakeImage {
public:
    static constexpr int kMargin = 64; // marked bytes before and after the rows
    static constexpr std::uint8_t kMark = 0xA5;

    // The pixels are 0; a row is followed by padding marked bytes.
    FakeImage(int width, int height, int depth, int padding = 5);
    FakeImage(const FakeImage&) = delete;
    FakeImage& operator=(const FakeImage&) = delete;

    EPIImageRef Ref() { return reinterpret_cast<EPIImageRef>(this); }
    const EPIOffscreenProcs* Procs() const { return &procs; }

    std::uint32_t Channel(int x, int y, int place) const;
    std::vector<std::uint32_t> Pixel(int x, int y) const; // all its channels
    void SetPixel(int x, int y, const std::vector<std::uint32_t>& channels);

    bool MarksAreWhole() const;
    std::uint8_t* Base() { return memory.data() + kMargin; }

    const int width, height, depth, rowBytes;
    std::vector<std::uint8_t> memory; // the margins too
    EPIOffscreenProcs procs;          // of this image alone
    render::ChannelOrder order;       // what the host tells; alpha below 0 is left alone
    int locks = 0;                    // outstanding
    int writableLocks = 0, readableLocks = 0;
    std::function<bool()> isInTrouble = [] { return false; }; // asked by each call; true: it fails
    int toldRowBytes;
    int copies = 0, stretches = 0;
    int cursor = 0; // pixels from the top left
};
