// SPDX-License-Identifier: BSD-3-Clause
#include "host/frames/TestPng.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include <png.h>
#include <zlib.h>

namespace host::test {
namespace {

[[noreturn]] void OnError(png_structp, png_const_charp message) {
    // Leaks libpng's state, which in a failing test does not matter; libpng is built to be left so.
    throw std::runtime_error(message);
}

void OnWarning(png_structp, png_const_charp) {}

void OnWrite(png_structp png, png_bytep bytes, std::size_t count) {
    auto* file = static_cast<std::vector<std::uint8_t>*>(png_get_io_ptr(png));
    file->insert(file->end(), bytes, bytes + count);
}

void OnRead(png_structp png, png_bytep bytes, std::size_t count) {
    auto* rest = static_cast<std::span<const std::uint8_t>*>(png_get_io_ptr(png));
    if (count > rest->size())
        throw std::runtime_error("the file is too short");
    std::copy_n(rest->begin(), count, bytes);
    *rest = rest->subspan(count);
}

std::uint32_t Big32(std::span<const std::uint8_t> from) {
    return std::uint32_t { from[0] } << 24 | from[1] << 16 | from[2] << 8 | from[3];
}

void PutBig32(std::vector<std::uint8_t>& to, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        to.push_back(static_cast<std::uint8_t>(value >> shift));
}

int Channels(int colorType) {
    return colorType == 2 ? 3 : colorType == 4 ? 2 : colorType == 6 ? 4 : 1;
}

void WriteChunks(png_structp png, const TestPng& picture, bool afterPixels) {
    for (const TestChunk& chunk : picture.chunks)
        if (chunk.afterPixels == afterPixels)
            png_write_chunk(png, reinterpret_cast<png_const_bytep>(chunk.type.data()),
                            reinterpret_cast<png_const_bytep>(chunk.data.data()),
                            chunk.data.size());
}

} // namespace

std::string TestPng::Name() const {
    return "colour type " + std::to_string(colorType) + ", " + std::to_string(bitDepth) +
           " bits, " + std::to_string(width) + " x " + std::to_string(height) +
           (interlaced ? ", interlaced" : "") + (transparency.empty() ? "" : ", tRNS");
}

TestPng MakePicture(int colorType, int bitDepth, int width, int height) {
    TestPng picture { .width = width,
                      .height = height,
                      .colorType = colorType,
                      .bitDepth = bitDepth,
                      .palette = {},
                      .transparency = {},
                      .chunks = {},
                      .rows = {} };
    std::uint32_t state = 1;
    const auto random = [&] {
        state = state * 1664525 + 1013904223;
        return static_cast<std::uint8_t>(state >> 24);
    };
    if (colorType == 3)
        for (int i = 0; i < 3 << bitDepth; ++i)
            picture.palette.push_back(random());
    const int bits = width * Channels(colorType) * bitDepth;
    picture.rows.resize(std::size_t(height));
    for (auto& row : picture.rows) {
        row.resize(std::size_t(bits + 7) / 8);
        std::generate(row.begin(), row.end(), random);
        if (bits % 8 != 0)
            row.back() &= static_cast<std::uint8_t>(0xFF00 >> bits % 8);
    }
    return picture;
}

std::vector<std::uint8_t> Write(const TestPng& picture) {
    std::vector<std::uint8_t> file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, OnError, OnWarning);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &file, OnWrite, nullptr);
    png_set_IHDR(png, info, std::uint32_t(picture.width), std::uint32_t(picture.height),
                 picture.bitDepth, picture.colorType,
                 picture.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, 0, 0);
    if (!picture.palette.empty())
        png_set_PLTE(png, info, reinterpret_cast<png_const_colorp>(picture.palette.data()),
                     int(picture.palette.size() / 3));
    png_write_info(png, info);
    if (!picture.transparency.empty())
        png_write_chunk(png, reinterpret_cast<png_const_bytep>("tRNS"), picture.transparency.data(),
                        picture.transparency.size());
    WriteChunks(png, picture, false);
    std::vector<std::vector<std::uint8_t>> rows = picture.rows;
    std::vector<png_bytep> pointers;
    pointers.reserve(rows.size());
    for (auto& row : rows)
        pointers.push_back(row.data());
    png_set_interlace_handling(png);
    png_write_image(png, pointers.data());
    WriteChunks(png, picture, true);
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return file;
}

TestPng Read(std::span<const std::uint8_t> file) {
    std::span<const std::uint8_t> rest = file;
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, OnError, OnWarning);
    png_infop info = png_create_info_struct(png);
    png_set_read_fn(png, &rest, OnRead);
    png_read_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
    TestPng picture { .width = int(png_get_image_width(png, info)),
                      .height = int(png_get_image_height(png, info)),
                      .colorType = png_get_color_type(png, info),
                      .bitDepth = png_get_bit_depth(png, info),
                      .palette = {},
                      .transparency = {},
                      .chunks = {},
                      .rows = {} };
    for (int y = 0; y < picture.height; ++y) {
        const png_bytep row = png_get_rows(png, info)[y];
        picture.rows.emplace_back(row, row + png_get_rowbytes(png, info));
    }
    png_destroy_read_struct(&png, &info, nullptr);

    bool afterPixels = false;
    const std::vector<std::size_t> offsets = ChunkOffsets(file);
    for (std::size_t i = 0; i + 1 < offsets.size(); ++i) {
        const auto chunk = file.subspan(offsets[i], offsets[i + 1] - offsets[i]);
        const std::string type(chunk.begin() + 4, chunk.begin() + 8);
        const auto data = chunk.subspan(8, chunk.size() - 12);
        afterPixels = afterPixels || type == "IDAT";
        if (type == "tRNS")
            picture.transparency.assign(data.begin(), data.end());
        else if (type == "PLTE")
            picture.palette.assign(data.begin(), data.end());
        else if (type[0] >= 'a')
            picture.chunks.push_back({ type, { data.begin(), data.end() }, afterPixels });
    }
    return picture;
}

std::vector<std::size_t> ChunkOffsets(std::span<const std::uint8_t> file) {
    std::vector<std::size_t> offsets;
    std::size_t at = 8;
    for (; at < file.size(); at += 12 + Big32(file.subspan(at)))
        offsets.push_back(at);
    offsets.push_back(at);
    return offsets;
}

std::vector<std::uint8_t> WithChunkBefore(std::span<const std::uint8_t> file,
                                          const std::string& before, const TestChunk& chunk) {
    std::vector<std::uint8_t> bytes(file.begin(), file.end());
    for (const std::size_t at : ChunkOffsets(file)) {
        if (std::memcmp(&file[at + 4], before.data(), 4) != 0)
            continue;
        std::vector<std::uint8_t> added(12 + chunk.data.size());
        std::vector<std::uint8_t> size;
        PutBig32(size, std::uint32_t(chunk.data.size()));
        std::ranges::copy(size, added.begin());
        std::ranges::copy(chunk.type, added.begin() + 4);
        std::ranges::copy(chunk.data, added.begin() + 8);
        bytes.insert(bytes.begin() + std::ptrdiff_t(at), added.begin(), added.end());
        Resum(bytes, at);
        return bytes;
    }
    throw std::runtime_error("there is no chunk " + before);
}

void Resum(std::vector<std::uint8_t>& file, std::size_t chunk) {
    const std::uint32_t size = Big32(std::span(file).subspan(chunk));
    std::vector<std::uint8_t> sum;
    PutBig32(sum, std::uint32_t(crc32(0, &file[chunk + 4], size + 4)));
    std::copy(sum.begin(), sum.end(), file.begin() + std::ptrdiff_t(chunk + 8 + size));
}

} // namespace host::test
