// SPDX-License-Identifier: BSD-3-Clause
// PNG files for tests, made and looked into by libpng alone: what the code under test reads and writes
// is held against it. Throws std::runtime_error with libpng's words.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace host::test {

struct TestChunk {
    std::string type;
    std::string data;
    bool afterPixels = false;
    bool operator==(const TestChunk&) const = default;
};

// Rows packed as PNG has them, without filter bytes.
struct TestPng {
    int width = 0;
    int height = 0;
    int colorType = 0;
    int bitDepth = 8;
    bool interlaced = false;
    std::vector<std::uint8_t> palette;      // written if any
    std::vector<std::uint8_t> transparency; // the data of tRNS, written if any
    std::vector<TestChunk> chunks; // in order; before the pixels they stand behind the palette
    std::vector<std::vector<std::uint8_t>> rows;
};

// A picture full of different values; a palette picture gets a palette.
TestPng MakePicture(int colorType, int bitDepth, int width = 13, int height = 11);

std::vector<std::uint8_t> Write(const TestPng& picture);
// The file's chunks other than IHDR, PLTE, tRNS, IDAT and IEND are listed. Expanded, the rows are RGB
// with or without alpha, of 8 or 16 bits in the machine's order.
TestPng Read(std::span<const std::uint8_t> file, bool expanded = false);

// The file with one more chunk before the first one of that type.
std::vector<std::uint8_t> WithChunkBefore(std::span<const std::uint8_t> file,
                                          const std::string& before, const TestChunk& chunk);
// Sets the check sum of the chunk at the offset right.
void Resum(std::vector<std::uint8_t>& file, std::size_t chunk);

} // namespace host::test
