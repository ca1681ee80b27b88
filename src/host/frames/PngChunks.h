// SPDX-License-Identifier: BSD-3-Clause
// The parts of a PNG file: which there are, in what order they stand, and which of them an editor may
// carry over. Knows nothing of pixels. Internal to the frame files.
// Rules: Portable Network Graphics (W3C Recommendation, second edition), chapters 5, 11 and 14.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/frames/Frame.h"

namespace host {

inline constexpr std::array<std::uint8_t, 8> kPngSignature { 0x89, 'P',  'N',  'G',
                                                             '\r', '\n', 0x1A, '\n' };
inline constexpr std::size_t kPngChunkMax = 0x7FFFFFFF;

// What a file holds. The spans point into the bytes that were scanned.
struct PngParts {
    std::int32_t width = 0;
    std::int32_t height = 0;
    FrameHeader header;
    std::span<const std::uint8_t> imageHeader;         // IHDR's data
    std::span<const std::uint8_t> transparency;        // tRNS's data
    std::vector<std::span<const std::uint8_t>> pixels; // each IDAT's data
};

// Walks over the whole file, checking lengths, check sums, order and the image header. False, with
// the reason, when the file is broken or needs what is not known here; parts has then what stood
// before that. Extra bytes behind the end are ignored.
bool ScanPng(std::span<const std::uint8_t> file, PngParts& parts, std::string& reason);

// How many bytes the pixels have before compression: each row with its filter's byte, for interlaced
// pictures those of all seven passes.
std::uint64_t FilteredBytes(const PngParts& parts);

std::uint32_t Big32(const std::uint8_t* from);
void StoreBig32(std::uint32_t value, std::uint8_t* to);

} // namespace host
