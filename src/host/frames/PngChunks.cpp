// SPDX-License-Identifier: BSD-3-Clause
// A chunk is: 4 bytes of length, 4 letters of type, the data, 4 bytes of check sum over type and data.
// The case of the letters tells what to do with an unknown one.

#include "host/frames/PngChunks.h"

#include <algorithm>

#include <libdeflate.h>

namespace host {
namespace {

constexpr std::size_t kFrameOfChunk = 12; // length, type and check sum

std::uint16_t Big16(const std::uint8_t* from) {
    return static_cast<std::uint16_t>(from[0] << 8 | from[1]);
}

bool IsLower(char letter) {
    return letter >= 'a' && letter <= 'z';
}

bool IsLetter(char letter) {
    return IsLower(letter) || (letter >= 'A' && letter <= 'Z');
}

// Unknown chunks say in their last letter whether they stay true when pixels change; of the known
// ones that do not say so, these do, because text on a frame changes nothing that they tell.
bool SurvivesDrawing(std::string_view type) {
    static constexpr std::array<std::string_view, 15> kKnown { "cHRM", "gAMA", "iCCP", "sBIT",
                                                               "sRGB", "cICP", "mDCV", "mDCv",
                                                               "cLLI", "cLLi", "bKGD", "hIST",
                                                               "sPLT", "tIME", "pCAL" };
    return IsLower(type[3]) || std::find(kKnown.begin(), kKnown.end(), type) != kKnown.end();
}

bool DepthFits(ColorKind kind, int depth) {
    switch (kind) {
    case ColorKind::kGrey:
        return depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 16;
    case ColorKind::kPalette:
        return depth == 1 || depth == 2 || depth == 4 || depth == 8;
    case ColorKind::kRgb:
    case ColorKind::kGreyAlpha:
    case ColorKind::kRgba:
        return depth == 8 || depth == 16;
    }
    return false;
}

class Scanner {
public:
    Scanner(std::span<const std::uint8_t> file, PngParts& parts, std::string& reason)
        : m_file(file), m_parts(parts), m_reason(reason) {}

    bool Run() {
        if (m_file.size() < kPngSignature.size() ||
            !std::equal(kPngSignature.begin(), kPngSignature.end(), m_file.begin()))
            return Fail(m_file.empty() ? "is empty" : "is not a PNG file");
        m_file = m_file.subspan(kPngSignature.size());
        while (!m_ended)
            if (!NextChunk() || !Take())
                return false;
        if (m_parts.pixels.empty())
            return Fail("has no pixels");
        if (m_parts.header.color == ColorKind::kPalette && m_parts.header.palette.empty())
            return Fail("has no palette");
        return true;
    }

private:
    bool Fail(std::string reason) {
        m_reason = std::move(reason);
        return false;
    }

    bool FailChunk(std::string_view what) {
        return Fail("chunk " + std::string(m_type) + ' ' + std::string(what));
    }

    bool NextChunk() {
        if (m_file.size() < kFrameOfChunk)
            return Fail("is cut off" +
                        (m_type.empty() ? "" : " after chunk " + std::string(m_type)));
        const std::uint32_t length = Big32(m_file.data());
        m_type = { reinterpret_cast<const char*>(m_file.data() + 4), 4 };
        if (!std::all_of(m_type.begin(), m_type.end(), IsLetter)) {
            m_type = {};
            return Fail("is damaged: where a chunk should begin there is none");
        }
        if (length > m_file.size() - kFrameOfChunk)
            return Fail("is cut off in chunk " + std::string(m_type));
        m_data = m_file.subspan(8, length);
        if (libdeflate_crc32(0, m_file.data() + 4, length + std::size_t { 4 }) !=
            Big32(m_data.data() + length))
            return Fail("is damaged: the check sum of chunk " + std::string(m_type) + " is wrong");
        m_file = m_file.subspan(kFrameOfChunk + length);
        return true;
    }

    bool Take() {
        if (m_parts.imageHeader.empty() != (m_type == "IHDR"))
            return m_type == "IHDR" ? FailChunk("stands twice")
                                    : Fail("begins without an IHDR chunk");
        if (m_type == "IHDR")
            return TakeImageHeader();
        if (m_type == "PLTE")
            return TakePalette();
        if (m_type == "tRNS")
            return TakeTransparency();
        if (m_type == "IDAT")
            return TakePixels();
        if (m_type == "IEND") {
            m_ended = true;
            return true;
        }
        return TakeOther();
    }

    bool TakeImageHeader() {
        if (m_data.size() != 13)
            return FailChunk("has the wrong length");
        const std::uint32_t width = Big32(&m_data[0]);
        const std::uint32_t height = Big32(&m_data[4]);
        if (width == 0 || height == 0 || width > kPngChunkMax || height > kPngChunkMax)
            return FailChunk("gives the picture an impossible size");
        FrameHeader& header = m_parts.header;
        header.bitDepth = m_data[8];
        header.color = static_cast<ColorKind>(m_data[9]);
        header.interlaced = m_data[12] == 1;
        if (!DepthFits(header.color, header.bitDepth))
            return FailChunk("has an unknown colour type (" + std::to_string(m_data[9]) + " with " +
                             std::to_string(m_data[8]) + " bits)");
        if (m_data[10] != 0 || m_data[11] != 0 || m_data[12] > 1)
            return FailChunk("asks for an unknown compression, filter or interlace method");
        m_parts.width = static_cast<std::int32_t>(width);
        m_parts.height = static_cast<std::int32_t>(height);
        m_parts.imageHeader = m_data;
        return true;
    }

    bool TakePalette() {
        FrameHeader& header = m_parts.header;
        if (!header.palette.empty())
            return FailChunk("stands twice");
        if (!m_parts.pixels.empty())
            return FailChunk("comes after the pixels");
        if (m_data.empty() || m_data.size() % 3 != 0 || m_data.size() > std::size_t { 256 } * 3)
            return FailChunk("has the wrong length");
        // Grey pictures have no use for one; files that hold one all the same are read without.
        if (header.color == ColorKind::kGrey || header.color == ColorKind::kGreyAlpha)
            return true;
        header.palette.assign(m_data.begin(), m_data.end());
        for (FrameChunk& chunk : header.metadata)
            chunk.place = FrameChunk::Place::kBeforePalette;
        return true;
    }

    bool TakeTransparency() {
        FrameHeader& header = m_parts.header;
        if (!m_parts.transparency.empty())
            return FailChunk("stands twice");
        if (!m_parts.pixels.empty())
            return FailChunk("comes after the pixels");
        if (header.color == ColorKind::kGreyAlpha || header.color == ColorKind::kRgba)
            return FailChunk("does not belong into a picture with alpha");
        if (header.color == ColorKind::kPalette) {
            if (m_data.empty() || m_data.size() > header.palette.size() / 3)
                return FailChunk("does not fit the palette");
        } else {
            if (m_data.size() != ChannelsOf(header.color) * 2)
                return FailChunk("has the wrong length");
            header.hasTransparentColor = true;
            for (std::size_t i = 0; i < m_data.size() / 2; ++i)
                header.transparentColor[i] = Big16(&m_data[i * 2]);
        }
        m_parts.transparency = m_data;
        return true;
    }

    bool TakePixels() {
        if (!m_parts.pixels.empty() && m_previous != "IDAT")
            return FailChunk("stands apart from the other pixels");
        m_parts.pixels.push_back(m_data);
        m_previous = m_type;
        return true;
    }

    bool TakeOther() {
        m_previous = m_type;
        if (m_type == "acTL")
            return Fail("is an animated PNG; give its frames as single pictures");
        if (!IsLower(m_type[0]))
            return Fail("needs the unknown chunk " + std::string(m_type));
        if (!SurvivesDrawing(m_type))
            return true;
        FrameChunk chunk;
        std::copy(m_type.begin(), m_type.end(), chunk.type.begin());
        chunk.place = m_parts.pixels.empty() ? FrameChunk::Place::kBeforePixels
                                             : FrameChunk::Place::kAfterPixels;
        chunk.data.assign(m_data.begin(), m_data.end());
        m_parts.header.metadata.push_back(std::move(chunk));
        return true;
    }

    std::span<const std::uint8_t> m_file;
    PngParts& m_parts;
    std::string& m_reason;
    std::string_view m_type;
    std::string_view m_previous;
    std::span<const std::uint8_t> m_data;
    bool m_ended = false;
};

std::uint64_t PassBytes(std::uint64_t width, std::uint64_t height, std::uint64_t bitsPerPixel) {
    return width == 0 ? 0 : height * (1 + (width * bitsPerPixel + 7) / 8);
}

} // namespace

bool ScanPng(std::span<const std::uint8_t> file, PngParts& parts, std::string& reason) {
    parts = {};
    return Scanner(file, parts, reason).Run();
}

std::uint64_t FilteredBytes(const PngParts& parts) {
    const auto width = std::uint64_t(parts.width);
    const auto height = std::uint64_t(parts.height);
    const std::uint64_t bits =
        ChannelsOf(parts.header.color) * std::uint64_t(parts.header.bitDepth);
    if (!parts.header.interlaced)
        return PassBytes(width, height, bits);

    struct Pass {
        std::uint64_t x, y, dx, dy;
    };
    static constexpr std::array<Pass, 7> kPasses { { { 0, 0, 8, 8 },
                                                     { 4, 0, 8, 8 },
                                                     { 0, 4, 4, 8 },
                                                     { 2, 0, 4, 4 },
                                                     { 0, 2, 2, 4 },
                                                     { 1, 0, 2, 2 },
                                                     { 0, 1, 1, 2 } } };
    std::uint64_t bytes = 0;
    for (const Pass& pass : kPasses)
        bytes += PassBytes((width + pass.dx - 1 - pass.x) / pass.dx,
                           (height + pass.dy - 1 - pass.y) / pass.dy, bits);
    return bytes;
}

std::uint32_t Big32(const std::uint8_t* from) {
    return std::uint32_t { from[0] } << 24 | std::uint32_t { from[1] } << 16 |
           std::uint32_t { from[2] } << 8 | from[3];
}

void StoreBig32(std::uint32_t value, std::uint8_t* to) {
    for (int i = 0; i < 4; ++i)
        to[i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
}

} // namespace host
