// SPDX-License-Identifier: BSD-3-Clause
#include "host/frames/TestPng.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <random>
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

} // namespace

TestPng MakePicture(int colorType, int bitDepth, int width, int height) {
    TestPng picture;
    picture.width = width;
    picture.height = height;
    picture.colorType = colorType;
    picture.bitDepth = bitDepth;
    const auto random = [state = std::minstd_rand()]() mutable {
        return static_cast<std::uint8_t>(state() >> 16);
    };
    if (colorType == PNG_COLOR_TYPE_PALETTE)
        std::generate_n(std::back_inserter(picture.palette), 3 << bitDepth, random);
    const int channels = colorType == 2 ? 3 : colorType == 4 ? 2 : colorType == 6 ? 4 : 1;
    const int bits = width * channels * bitDepth;
    picture.rows.resize(std::size_t(height));
    for (auto& row : picture.rows) {
        std::generate_n(std::back_inserter(row), (bits + 7) / 8, random);
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
    std::vector<std::vector<std::uint8_t>> rows = picture.rows;
    std::vector<png_bytep> pointers;
    for (auto& row : rows)
        pointers.push_back(row.data());
    png_set_rows(png, info, pointers.data());
    png_write_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
    png_destroy_write_struct(&png, &info);

    const auto& alpha = picture.transparency;
    if (!alpha.empty())
        file = WithChunkBefore(file, "IDAT", { "tRNS", { alpha.begin(), alpha.end() } });
    for (const TestChunk& chunk : picture.chunks)
        file = WithChunkBefore(file, chunk.afterPixels ? "IEND" : "IDAT", chunk);
    return file;
}

TestPng Read(std::span<const std::uint8_t> file, bool expanded) {
    std::FILE* const in = fmemopen(const_cast<std::uint8_t*>(file.data()), file.size(), "rb");
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, OnError, OnWarning);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, in);
    const int swapped = std::endian::native == std::endian::little ? PNG_TRANSFORM_SWAP_ENDIAN : 0;
    png_read_png(png, info,
                 expanded ? PNG_TRANSFORM_EXPAND | PNG_TRANSFORM_GRAY_TO_RGB | swapped
                          : PNG_TRANSFORM_IDENTITY,
                 nullptr);
    TestPng picture;
    picture.width = int(png_get_image_width(png, info));
    picture.height = int(png_get_image_height(png, info));
    picture.colorType = png_get_color_type(png, info);
    picture.bitDepth = png_get_bit_depth(png, info);
    for (int y = 0; y < picture.height; ++y) {
        const png_bytep row = png_get_rows(png, info)[y];
        picture.rows.emplace_back(row, row + png_get_rowbytes(png, info));
    }
    png_destroy_read_struct(&png, &info, nullptr);
    std::fclose(in);

    bool afterPixels = false;
    for (std::size_t at = 8; at < file.size();) {
        const auto chunk = file.subspan(at, 12 + png_get_uint_32(&file[at]));
        at += chunk.size();
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

std::vector<std::uint8_t> WithChunkBefore(std::span<const std::uint8_t> file,
                                          const std::string& before, const TestChunk& chunk) {
    const auto type = std::ranges::search(file, before);
    if (type.empty())
        throw std::runtime_error("there is no chunk " + before);
    const auto at = type.begin() - file.begin() - 4;
    std::vector<std::uint8_t> added(12 + chunk.data.size());
    png_save_uint_32(added.data(), std::uint32_t(chunk.data.size()));
    std::ranges::copy(chunk.type + chunk.data, added.begin() + 4);
    Resum(added, 0);
    std::vector<std::uint8_t> bytes(file.begin(), file.end());
    bytes.insert(bytes.begin() + at, added.begin(), added.end());
    return bytes;
}

void Resum(std::vector<std::uint8_t>& file, std::size_t chunk) {
    const std::uint32_t size = png_get_uint_32(&file[chunk]);
    png_save_uint_32(&file[chunk + 8 + size], std::uint32_t(crc32(0, &file[chunk + 4], size + 4)));
}

} // namespace host::test
