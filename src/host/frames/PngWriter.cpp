// SPDX-License-Identifier: BSD-3-Clause
// Chunks around pixels that libdeflate has compressed: it takes less than half of zlib's time for
// smaller files.

#include "host/frames/PngWriter.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>

#include <libdeflate.h>

#include "host/Message.h"
#include "host/frames/Bytes.h"
#include "host/frames/PixelRows.h"
#include "host/frames/PngChunks.h"

namespace host {
namespace {

enum Filter : std::uint8_t { kFilterNone = 0, kFilterSub = 1 };

struct FreeCompressor {
    void operator()(libdeflate_compressor* it) const { libdeflate_free_compressor(it); }
};

// Filters one row: a byte for the filter, then the row. `distance` is a pixel's size in bytes.
// Differences to the left pixel help where colours change slowly or are noisy. Where nearly all
// pixels equal their left neighbour, as in flat colours, the plain values compress as well, and the
// long runs of zeros that the differences would be take the compressor twice the time.
void FilterRow(const std::uint8_t* row, std::size_t size, std::size_t distance, std::uint8_t* to) {
    std::size_t changes = 0;
    for (std::size_t i = distance; i < size; ++i)
        changes += row[i] != row[i - distance];
    if (changes < size / 16) {
        *to = kFilterNone;
        std::copy_n(row, size, to + 1);
        return;
    }
    *to = kFilterSub;
    std::copy_n(row, distance, to + 1);
    for (std::size_t i = distance; i < size; ++i)
        to[1 + i] = static_cast<std::uint8_t>(row[i] - row[i - distance]);
}

// Puts chunks one after the other into room that is known to suffice.
class ChunkList {
public:
    explicit ChunkList(std::span<std::uint8_t> room) : m_room(room) {
        std::copy(kPngSignature.begin(), kPngSignature.end(), m_room.begin());
        m_size = kPngSignature.size();
    }

    static std::size_t BytesFor(std::size_t data) { return data + 12; }

    void Add(std::string_view type, std::span<const std::uint8_t> data) {
        if (!data.empty())
            std::memcpy(m_room.data() + m_size + 8, data.data(), data.size());
        AddInPlace(type, data.size());
    }

    // Where the data of the next chunk goes, for AddInPlace.
    std::span<std::uint8_t> NextData() { return m_room.subspan(m_size + 8); }

    void AddInPlace(std::string_view type, std::size_t size) {
        std::uint8_t* chunk = m_room.data() + m_size;
        StoreBig32(static_cast<std::uint32_t>(size), chunk);
        std::copy(type.begin(), type.end(), chunk + 4);
        StoreBig32(libdeflate_crc32(0, chunk + 4, size + 4), chunk + 8 + size);
        m_size += BytesFor(size);
    }

    std::span<const std::uint8_t> Written() const { return m_room.first(m_size); }

private:
    std::span<std::uint8_t> m_room;
    std::size_t m_size = 0;
};

void AddMetadata(ChunkList& chunks, const FrameHeader& header, FrameChunk::Place place) {
    for (const FrameChunk& chunk : header.metadata)
        if (chunk.place == place)
            chunks.Add({ chunk.type.data(), chunk.type.size() }, chunk.data);
}

void AddImageHeader(ChunkList& chunks, const Image& image, const FrameHeader& header) {
    std::array<std::uint8_t, 13> data {};
    StoreBig32(std::uint32_t(image.Width()), data.data());
    StoreBig32(std::uint32_t(image.Height()), data.data() + 4);
    data[8] = static_cast<std::uint8_t>(header.bitDepth);
    data[9] = static_cast<std::uint8_t>(header.color);
    chunks.Add("IHDR", data);
}

void AddTransparentColor(ChunkList& chunks, const FrameHeader& header) {
    std::array<std::uint8_t, 6> data {};
    for (std::size_t i = 0; i < 3; ++i) {
        data[i * 2] = static_cast<std::uint8_t>(header.transparentColor[i] >> 8);
        data[i * 2 + 1] = static_cast<std::uint8_t>(header.transparentColor[i]);
    }
    chunks.Add("tRNS", std::span(data).first(ChannelsOf(header.color) * 2));
}

std::size_t MetadataBytes(const FrameHeader& header) {
    std::size_t bytes = ChunkList::BytesFor(header.palette.size());
    for (const FrameChunk& chunk : header.metadata)
        bytes += ChunkList::BytesFor(chunk.data.size());
    return bytes;
}

} // namespace

struct PngWriter::Buffers {
    Bytes row;
    Bytes filtered;
    Bytes file;
    std::unique_ptr<libdeflate_compressor, FreeCompressor> deflate;

    std::span<const std::uint8_t> FilterRows(const Image& image, ColorKind kind);
};

std::span<const std::uint8_t> PngWriter::Buffers::FilterRows(const Image& image, ColorKind kind) {
    const std::size_t size = PackedRowBytes(image, kind);
    const std::size_t distance = size / std::size_t(image.Width());
    const std::span<std::uint8_t> packed = row.Room(size);
    const std::span<std::uint8_t> all = filtered.Room((size + 1) * std::size_t(image.Height()));
    for (std::int32_t y = 0; y < image.Height(); ++y) {
        PackRow(image, y, kind, packed.data());
        FilterRow(packed.data(), size, distance, all.data() + std::size_t(y) * (size + 1));
    }
    return all;
}

PngWriter::PngWriter(int level)
    : m_level(std::clamp(level, 0, kPngLevelMax)), m_buffers(std::make_unique<Buffers>()) {}

PngWriter::~PngWriter() = default;

std::span<const std::uint8_t> PngWriter::Encode(const Frame& frame, const FrameHeader& header,
                                                std::string& why) try {
    if (!m_buffers->deflate)
        m_buffers->deflate.reset(libdeflate_alloc_compressor(m_level));
    if (!m_buffers->deflate)
        throw std::bad_alloc();
    const auto filtered = m_buffers->FilterRows(*frame.image, header.color);
    const std::size_t most =
        libdeflate_zlib_compress_bound(m_buffers->deflate.get(), filtered.size());
    constexpr std::size_t kOthers = 256; // signature, IHDR, tRNS and IEND
    ChunkList chunks(m_buffers->file.Room(kOthers + MetadataBytes(header) + most));

    AddImageHeader(chunks, *frame.image, header);
    AddMetadata(chunks, header, FrameChunk::Place::kBeforePalette);
    if (!header.palette.empty())
        chunks.Add("PLTE", header.palette);
    if (header.hasTransparentColor)
        AddTransparentColor(chunks, header);
    AddMetadata(chunks, header, FrameChunk::Place::kBeforePixels);
    const std::size_t size = libdeflate_zlib_compress(
        m_buffers->deflate.get(), filtered.data(), filtered.size(), chunks.NextData().data(), most);
    if (size == 0 || size > kPngChunkMax) {
        why = "is too large for a PNG file";
        return {};
    }
    chunks.AddInPlace("IDAT", size);
    AddMetadata(chunks, header, FrameChunk::Place::kAfterPixels);
    chunks.Add("IEND", {});
    return chunks.Written();
} catch (const std::bad_alloc&) {
    why = "there is no memory to write it";
    return {};
}

OutputResult PngWriter::Write(const std::filesystem::path& file, const Frame& frame,
                              const PixelRect& touched, Existing existing, std::string& why) {
    const std::span<const std::uint8_t> bytes = Encode(frame, HeaderFor(frame, touched), why);
    if (bytes.empty()) {
        why = Printable(file.native()) + ": " + why;
        return OutputResult::kFailed;
    }
    return WriteWhole(file, bytes, existing, why, Flush::kLater);
}

} // namespace host
