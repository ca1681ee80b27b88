// SPDX-License-Identifier: BSD-3-Clause
// libpng undoes the row filters, interlacing and packing. It is not given the file itself, though, but
// one with the same header and with pixels that are inflated already and lie in stored blocks: libdeflate
// inflates several times as fast as the zlib inside libpng, and reading frames is mostly that.

#include "host/frames/PngReader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstring>
#include <new>
#include <optional>
#include <vector>

#include <fcntl.h>
#include <libdeflate.h>
#include <png.h>
#include <sys/stat.h>

#include "host/frames/Bytes.h"
#include "host/frames/Descriptor.h"
#include "host/frames/PngChunks.h"

namespace host {
namespace {

using ByteSpan = std::span<const std::uint8_t>;

// No deflate stream gives more than this many bytes for each of its own.
constexpr std::uint64_t kDeflateRatioMax = 1032;
constexpr std::size_t kStoredBlockMax = 0xFFFF;

// The file that libpng reads, as pieces that lie elsewhere or in `m_made`.
class StoredPng {
public:
    StoredPng(const PngParts& parts, ByteSpan filtered) {
        const std::size_t blocks = filtered.size() / kStoredBlockMax + 1;
        m_made.reserve(blocks * kBlockHead + 256); // the pieces point into it, so it must not move
        m_pieces.reserve(blocks * 3 + 16);
        m_pieces.emplace_back(kPngSignature);
        Chunk("IHDR", parts.imageHeader);
        if (!parts.header.palette.empty())
            Chunk("PLTE", parts.header.palette);
        if (!parts.transparency.empty())
            Chunk("tRNS", parts.transparency);
        static constexpr std::array<std::uint8_t, 2> kStreamHead { 0x78, 0x01 };
        Chunk("IDAT", kStreamHead);
        do {
            const ByteSpan block = filtered.first(std::min(filtered.size(), kStoredBlockMax));
            filtered = filtered.subspan(block.size());
            Block(block, filtered.empty());
        } while (!filtered.empty());
        Chunk("IDAT", kNoSum);
        Chunk("IEND", {});
    }

    // Zeros follow the end.
    void Read(std::uint8_t* to, std::size_t count) {
        while (count > 0 && m_next < m_pieces.size()) {
            ByteSpan& piece = m_pieces[m_next];
            const std::size_t part = std::min(count, piece.size());
            std::copy_n(piece.begin(), part, to);
            to += part;
            count -= part;
            piece = piece.subspan(part);
            if (piece.empty())
                ++m_next;
        }
        std::fill_n(to, count, std::uint8_t { 0 });
    }

private:
    // libpng is told to look at no check sum, for those of the file were looked at before.
    static constexpr std::array<std::uint8_t, 4> kNoSum {};
    static constexpr std::size_t kBlockHead = 8 + 5;

    void Head(const char* type, std::size_t size) {
        std::array<std::uint8_t, 8> head {};
        StoreBig32(static_cast<std::uint32_t>(size), head.data());
        std::copy_n(type, 4, head.data() + 4);
        Make(head);
    }

    void Make(ByteSpan bytes) {
        m_pieces.emplace_back(m_made.data() + m_made.size(), bytes.size());
        m_made.insert(m_made.end(), bytes.begin(), bytes.end());
    }

    void Chunk(const char* type, ByteSpan data) {
        Head(type, data.size());
        m_pieces.push_back(data);
        m_pieces.emplace_back(kNoSum);
    }

    void Block(ByteSpan data, bool last) {
        const auto size = static_cast<std::uint16_t>(data.size());
        const auto inverse = static_cast<std::uint16_t>(~size);
        const std::array<std::uint8_t, 5> head { static_cast<std::uint8_t>(last),
                                                 static_cast<std::uint8_t>(size),
                                                 static_cast<std::uint8_t>(size >> 8),
                                                 static_cast<std::uint8_t>(inverse),
                                                 static_cast<std::uint8_t>(inverse >> 8) };
        Head("IDAT", head.size() + data.size());
        Make(head);
        m_pieces.push_back(data);
        m_pieces.emplace_back(kNoSum);
    }

    std::vector<std::uint8_t> m_made;
    std::vector<ByteSpan> m_pieces;
    std::size_t m_next = 0;
};

PixelFormat FormatFor(const PngParts& parts) {
    if (parts.header.bitDepth == 16)
        return kRgba64;
    const bool alpha = parts.header.color == ColorKind::kGreyAlpha ||
                       parts.header.color == ColorKind::kRgba || !parts.transparency.empty();
    return alpha ? kRgba32 : kRgb24;
}

// A file that cannot hold what its header says is refused before it takes memory.
std::uint64_t MemoryFor(const PngParts& parts, std::uint64_t fileBytes) {
    const std::uint64_t filtered = FilteredBytes(parts);
    if (filtered / kDeflateRatioMax > fileBytes)
        return 0;
    const auto pixels = std::uint64_t(parts.width) * std::uint64_t(parts.height);
    const FrameHeader& header = parts.header;
    const std::uint64_t bytes = header.bitDepth == 16 ? 2 : 1;
    const bool alpha = header.color != ColorKind::kRgb && header.color != ColorKind::kGrey;
    const std::uint64_t image = bytes == 2 || alpha ? 4 : 3;
    const std::uint64_t written = alpha ? 4 : 3; // grey may become RGB
    return pixels * bytes * (image + 2 * written) + filtered + 2 * fileBytes;
}

// Whether chunk follows chunk in the file as far as IEND.
bool ReachesEnd(int file, std::uint64_t size) {
    std::array<std::uint8_t, 8> head {};
    for (std::uint64_t at = kPngSignature.size(); at + head.size() + 4 <= size;) {
        if (::pread(file, head.data(), head.size(), off_t(at)) != ssize_t(head.size()))
            return false;
        at += head.size() + Big32(head.data()) + 4;
        if (std::memcmp(head.data() + 4, "IEND", 4) == 0)
            return at <= size;
    }
    return false;
}

// One libpng reader. Errors leave libpng by a long jump, so between Rows' setjmp and libpng there
// must never be an object with a destructor.
class RowReader {
public:
    explicit RowReader(StoredPng& source)
        : m_png(png_create_read_struct(PNG_LIBPNG_VER_STRING, this, OnError, OnWarning)),
          m_info(m_png ? png_create_info_struct(m_png) : nullptr) {
        if (m_png)
            png_set_read_fn(m_png, &source, OnRead);
    }
    RowReader(const RowReader&) = delete;
    RowReader& operator=(const RowReader&) = delete;
    ~RowReader() { png_destroy_read_struct(&m_png, &m_info, nullptr); }

    // False: see Message.
    bool Rows(std::uint8_t** rows, std::size_t rowBytes, std::int32_t side) {
        if (!m_info) {
            Say("libpng found no memory");
            return false;
        }
        if (setjmp(png_jmpbuf(m_png)))
            return false;
        Prepare(side);
        png_read_info(m_png, m_info);
        Transform();
        png_read_update_info(m_png, m_info);
        if (png_get_rowbytes(m_png, m_info) != rowBytes)
            png_error(m_png, "its rows have an unexpected length");
        png_read_image(m_png, rows);
        return true;
    }

    const char* Message() const { return m_message.data(); }

private:
    static void OnError(png_structp png, png_const_charp message) {
        auto* self = static_cast<RowReader*>(png_get_error_ptr(png));
        self->Say(message);
        png_longjmp(png, 1);
    }

    void Say(const char* message) { std::strncpy(m_message.data(), message, m_message.size() - 1); }

    static void OnWarning(png_structp, png_const_charp) {}

    static void OnRead(png_structp png, png_bytep to, std::size_t count) {
        static_cast<StoredPng*>(png_get_io_ptr(png))->Read(to, count);
    }

    void Prepare(std::int32_t side) {
        png_set_user_limits(m_png, std::uint32_t(side), std::uint32_t(side));
        png_set_crc_action(m_png, PNG_CRC_QUIET_USE, PNG_CRC_QUIET_USE);
        png_set_option(m_png, PNG_IGNORE_ADLER32, PNG_OPTION_ON);
        png_set_compression_buffer_size(m_png, std::size_t { 1 } << 16);
    }

    // Everything becomes RGB with or without alpha, 8 or 16 bits in the machine's order.
    void Transform() {
        const int kind = png_get_color_type(m_png, m_info);
        const int depth = png_get_bit_depth(m_png, m_info);
        const bool key = png_get_valid(m_png, m_info, PNG_INFO_tRNS) != 0;
        if (kind == PNG_COLOR_TYPE_PALETTE)
            png_set_palette_to_rgb(m_png);
        if (kind == PNG_COLOR_TYPE_GRAY && depth < 8)
            png_set_expand_gray_1_2_4_to_8(m_png);
        if (key)
            png_set_tRNS_to_alpha(m_png);
        if ((kind & PNG_COLOR_MASK_COLOR) == 0)
            png_set_gray_to_rgb(m_png);
        if (depth == 16 && !key && (kind & PNG_COLOR_MASK_ALPHA) == 0)
            png_set_add_alpha(m_png, 0xFFFF, PNG_FILLER_AFTER);
        if (depth == 16 && std::endian::native == std::endian::little)
            png_set_swap(m_png);
        png_set_interlace_handling(m_png);
    }

    std::array<char, 160> m_message {};
    png_structp m_png;
    png_infop m_info;
};

struct FreeDecompressor {
    void operator()(libdeflate_decompressor* it) const { libdeflate_free_decompressor(it); }
};

} // namespace

std::optional<PngOutline> LookAtPng(const std::filesystem::path& file) {
    const Descriptor in(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (in.Get() < 0 || ::fstat(in.Get(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    std::array<std::uint8_t, 33> start {}; // signature and IHDR
    PngParts parts;
    std::string unfinished;
    const ssize_t got = ::pread(in.Get(), start.data(), start.size(), 0);
    ScanPng(std::span(start).first(std::size_t(std::max<ssize_t>(got, 0))), parts, unfinished);
    if (parts.width == 0)
        return {};
    const auto size = std::uint64_t(status.st_size);
    return PngOutline { parts.width, parts.height, MemoryFor(parts, size),
                        ReachesEnd(in.Get(), size) };
}

struct PngReader::Buffers {
    Bytes file;
    Bytes compressed;
    Bytes filtered;
    std::vector<std::uint8_t*> rows;
    std::unique_ptr<libdeflate_decompressor, FreeDecompressor> inflate {
        libdeflate_alloc_decompressor()
    };

    // Nothing, and the errno in `error`, when it cannot be read; more than `most` bytes are EFBIG.
    std::optional<ByteSpan> ReadFile(const std::filesystem::path& path, std::int64_t most,
                                     int& error);
    std::optional<ByteSpan> Inflate(const PngParts& parts, std::string& reason);
    bool ReadRows(const PngParts& parts, ByteSpan pixels, Image& image, std::string& reason);
};

std::optional<ByteSpan> PngReader::Buffers::ReadFile(const std::filesystem::path& path,
                                                     std::int64_t most, int& error) {
    // Opening a pipe that nobody writes to would wait without O_NONBLOCK; files do not mind it.
    const Descriptor in(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    error = 0;
    if (in.Get() < 0 || ::fstat(in.Get(), &status) != 0)
        error = errno;
    else if (S_ISDIR(status.st_mode))
        error = EISDIR;
    else if (!S_ISREG(status.st_mode))
        error = ESPIPE; // a picture is a file; what comes from pipes has a format of its own
    else if (status.st_size > most)
        error = EFBIG;
    if (error != 0)
        return {};

    const std::span<std::uint8_t> room = file.Room(std::size_t(status.st_size));
    std::size_t have = 0;
    while (have < room.size()) {
        const ssize_t got = ::read(in.Get(), room.data() + have, room.size() - have);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0) {
            error = errno;
            return {};
        }
        if (got == 0)
            break; // it has become shorter meanwhile
        have += std::size_t(got);
    }
    return room.first(have);
}

std::optional<ByteSpan> PngReader::Buffers::Inflate(const PngParts& parts, std::string& reason) {
    std::size_t size = 0;
    for (const ByteSpan& part : parts.pixels)
        size += part.size();
    const std::uint64_t expected = FilteredBytes(parts);
    if (expected / kDeflateRatioMax > size) {
        reason = "holds fewer pixels than its header says";
        return {};
    }

    ByteSpan stream = parts.pixels.front();
    if (parts.pixels.size() > 1) {
        const std::span<std::uint8_t> joined = compressed.Room(size);
        auto to = joined.begin();
        for (const ByteSpan& part : parts.pixels)
            to = std::copy(part.begin(), part.end(), to);
        stream = joined;
    }
    const std::span<std::uint8_t> room = filtered.Room(expected);
    std::size_t got = 0;
    if (!inflate)
        throw std::bad_alloc();
    switch (libdeflate_zlib_decompress(inflate.get(), stream.data(), stream.size(), room.data(),
                                       room.size(), &got)) {
    case LIBDEFLATE_SUCCESS:
        if (got == room.size())
            return room;
        reason = "holds fewer pixels than its header says";
        return {};
    case LIBDEFLATE_INSUFFICIENT_SPACE:
        reason = "holds more pixels than its header says";
        return {};
    default:
        reason = "is damaged: its compressed pixels cannot be read";
        return {};
    }
}

bool PngReader::Buffers::ReadRows(const PngParts& parts, ByteSpan pixels, Image& image,
                                  std::string& reason) {
    rows.resize(std::size_t(image.Height()));
    for (std::int32_t y = 0; y < image.Height(); ++y)
        rows[std::size_t(y)] = image.Row(y).data();
    StoredPng stored(parts, pixels);
    RowReader reader(stored);
    if (reader.Rows(rows.data(), image.Row(0).size(), std::max(parts.width, parts.height)))
        return true;
    reason = std::string("is damaged: ") + reader.Message();
    return false;
}

PngReader::PngReader(const PngLimits& limits)
    : m_limits(limits), m_buffers(std::make_unique<Buffers>()) {}

PngReader::~PngReader() = default;

bool PngReader::Read(const std::filesystem::path& file, Frame& frame, std::string& why) {
    int error = 0;
    const auto bytes = m_buffers->ReadFile(file, m_limits.fileBytes, error);
    if (bytes)
        return Decode(*bytes, Printable(file.native()), frame, why);
    why = Printable(file.native()) + ": " +
          (error == EFBIG    ? "is larger than a frame may be"
           : error == ESPIPE ? "is not a file"
                             : "cannot be read: " + ErrorText(error));
    return false;
}

bool PngReader::Decode(std::span<const std::uint8_t> bytes, std::string_view name, Frame& frame,
                       std::string& why) try {
    const auto fail = [&](const std::string& reason) {
        why = std::string(name) + ": " + reason;
        return false;
    };
    PngParts parts;
    std::string reason;
    if (!ScanPng(bytes, parts, reason))
        return fail(reason);
    if (parts.width > m_limits.side || parts.height > m_limits.side ||
        std::int64_t { parts.width } * parts.height > m_limits.pixels)
        return fail("is too large: " + std::to_string(parts.width) + " x " +
                    std::to_string(parts.height) + " pixels");
    const auto pixels = m_buffers->Inflate(parts, reason);
    if (!pixels)
        return fail(reason);
    if (!PrepareImage(frame, parts.width, parts.height, FormatFor(parts)))
        return fail("there is no memory for it");
    if (!m_buffers->ReadRows(parts, *pixels, *frame.image, reason))
        return fail(reason);
    frame.header = std::move(parts.header);
    return true;
} catch (const std::bad_alloc&) {
    why = std::string(name) + ": there is no memory for it";
    return false;
}

} // namespace host
