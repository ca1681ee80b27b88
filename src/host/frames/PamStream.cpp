// SPDX-License-Identifier: BSD-3-Clause
// The three headers, and moving bytes through a descriptor in large pieces.

#include "host/frames/PamStream.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <ctime>
#include <new>
#include <optional>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "host/frames/Descriptor.h"
#include "host/frames/PixelRows.h"

namespace host {

struct PamReader::Header {
    std::int64_t width = 0;
    std::int64_t height = 0;
    std::int64_t depth = 0;
    std::int64_t greatest = 0;
    std::string tupleType;

    ColorKind Kind() const {
        static constexpr std::array kKinds { ColorKind::kGrey, ColorKind::kGreyAlpha,
                                             ColorKind::kRgb, ColorKind::kRgba };
        return kKinds[std::size_t(depth) - 1];
    }
};

namespace {

constexpr std::size_t kBufferSize = std::size_t { 1 } << 20;
constexpr std::size_t kWordMax = 256; // of a line or number in a header
constexpr int kHeaderLinesMax = 256;
constexpr std::int64_t kSideMax = 32767;
constexpr std::int64_t kPixelsMax = std::int64_t { 1 } << 28;

// With as much room as one read takes, a pipe hands over 16 times as much at once as by itself.
void WidenPipe(int descriptor) {
    if (::fcntl(descriptor, F_SETPIPE_SZ, int { kBufferSize }) < 0)
        errno = 0; // it is no pipe, or may not be wider: then it is only slower
}

bool IsSpace(int c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool ParseNumber(std::string_view text, std::int64_t& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && !text.empty();
}

std::pair<std::string_view, std::string_view> SplitLine(std::string_view line) {
    const auto word = [&] {
        while (!line.empty() && IsSpace(line.front()))
            line.remove_prefix(1);
        while (!line.empty() && IsSpace(line.back()))
            line.remove_suffix(1);
        const auto end = std::find_if(line.begin(), line.end(), IsSpace);
        return line.substr(0, std::size_t(end - line.begin()));
    };
    const std::string_view key = word();
    line.remove_prefix(key.size());
    word(); // what is left is the value without its margins
    return { key, line };
}

std::string_view TupleType(ColorKind kind) {
    switch (kind) {
    case ColorKind::kGrey:
        return "GRAYSCALE";
    case ColorKind::kGreyAlpha:
        return "GRAYSCALE_ALPHA";
    case ColorKind::kRgba:
        return "RGB_ALPHA";
    default:
        return "RGB";
    }
}

std::string PamHeader(const Image& image, ColorKind kind) {
    return "P7\nWIDTH " + std::to_string(image.Width()) + "\nHEIGHT " +
           std::to_string(image.Height()) + "\nDEPTH " + std::to_string(ChannelsOf(kind)) +
           "\nMAXVAL " + (image.Format().depth == 64 ? "65535" : "255") + "\nTUPLTYPE " +
           std::string(TupleType(kind)) + "\nENDHDR\n";
}

// While it lives, writing to a pipe that nobody reads is an error of this thread and no signal.
class NoBrokenPipeSignal {
public:
    NoBrokenPipeSignal() {
        sigset_t pending;
        sigemptyset(&m_pipe);
        sigaddset(&m_pipe, SIGPIPE);
        sigpending(&pending);
        m_wasPending = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &m_pipe, &m_before);
    }
    NoBrokenPipeSignal(const NoBrokenPipeSignal&) = delete;
    NoBrokenPipeSignal& operator=(const NoBrokenPipeSignal&) = delete;
    ~NoBrokenPipeSignal() {
        const timespec atOnce {};
        while (!m_wasPending && sigtimedwait(&m_pipe, nullptr, &atOnce) == -1 && errno == EINTR) {
        }
        pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }

private:
    sigset_t m_pipe {};
    sigset_t m_before {};
    bool m_wasPending = false;
};

} // namespace

PamReader::PamReader(int descriptor, std::string name)
    : m_descriptor(descriptor), m_name(std::move(name)), m_buffer(kBufferSize) {
    WidenPipe(descriptor);
}

// False at the end and on errors; the latter leave m_error.
bool PamReader::Refill() {
    ssize_t got = 0;
    do
        got = ::read(m_descriptor, m_buffer.data(), m_buffer.size());
    while (got < 0 && errno == EINTR);
    m_error = got < 0 ? errno : 0;
    m_begin = 0;
    m_end = got > 0 ? std::size_t(got) : 0;
    return got > 0;
}

// -1 when there is none.
int PamReader::PeekByte() {
    return m_begin < m_end || Refill() ? m_buffer[m_begin] : -1;
}

int PamReader::GetByte() {
    const int byte = PeekByte();
    m_begin += byte >= 0;
    return byte;
}

bool PamReader::GetBytes(std::uint8_t* to, std::size_t count) {
    while (count > 0) {
        if (m_begin == m_end && !Refill())
            return false;
        const std::size_t part = std::min(count, m_end - m_begin);
        std::copy_n(&m_buffer[m_begin], part, to);
        m_begin += part;
        to += part;
        count -= part;
    }
    return true;
}

// Without its end; too long a line comes in pieces, which mean nothing to the header.
std::string PamReader::GetLine() {
    std::string line;
    for (int c = GetByte(); c >= 0 && c != '\n' && line.size() < kWordMax; c = GetByte())
        line += static_cast<char>(c);
    return line;
}

// The next word, passing over white space and comments; takes the one white space behind it, too.
std::string PamReader::GetWord() {
    std::string word;
    for (int c = GetByte(); c >= 0 && word.size() < kWordMax; c = GetByte()) {
        if (c == '#')
            while (c >= 0 && c != '\n')
                c = GetByte();
        if (!IsSpace(c))
            word += static_cast<char>(c);
        else if (!word.empty())
            break;
    }
    return word;
}

std::string PamReader::CutOff(std::string_view where) const {
    return m_error != 0 ? "cannot be read: " + ErrorText(m_error) : "cut off " + std::string(where);
}

bool PamReader::ReadPamHeader(Header& header, std::string& reason) {
    for (int lines = 0; lines < kHeaderLinesMax; ++lines) {
        if (PeekByte() < 0) {
            reason = CutOff("in its header");
            return false;
        }
        const std::string line = GetLine();
        const auto [key, value] = SplitLine(line);
        if (key == "ENDHDR")
            return true;
        std::int64_t* const number = key == "WIDTH"    ? &header.width
                                     : key == "HEIGHT" ? &header.height
                                     : key == "DEPTH"  ? &header.depth
                                     : key == "MAXVAL" ? &header.greatest
                                                       : nullptr;
        if (key == "TUPLTYPE")
            header.tupleType = value;
        else if (number ? !ParseNumber(value, *number) : !key.empty() && key[0] != '#') {
            reason = "'" + Printable(line) + "' is no line of a PAM header";
            return false;
        }
    }
    reason = "its header has no end";
    return false;
}

bool PamReader::ReadPlainHeader(Header& header, std::string& reason) {
    for (std::int64_t* number : { &header.width, &header.height, &header.greatest }) {
        const std::string word = GetWord();
        if (word.empty())
            reason = CutOff("in its header");
        else if (!ParseNumber(word, *number))
            reason = "'" + Printable(word) + "' is no number in its header";
        else
            continue;
        return false;
    }
    return true;
}

bool PamReader::ReadHeader(Header& header, std::string& reason) {
    const int magic = GetByte();
    const int kind = GetByte();
    if (magic != 'P' || (kind != '7' && kind != '6' && kind != '5')) {
        reason = kind < 0 ? CutOff("in its header") : "begins with no PAM, PPM or PGM header";
        return false;
    }
    header.depth = kind == '7' ? 0 : kind == '6' ? 3 : 1;
    if (kind == '7' ? !ReadPamHeader(header, reason) : !ReadPlainHeader(header, reason))
        return false;

    if (header.width < 1 || header.height < 1 || header.width > kSideMax ||
        header.height > kSideMax || header.width * header.height > kPixelsMax)
        reason = "has an impossible size, " + std::to_string(header.width) + " x " +
                 std::to_string(header.height);
    else if (header.greatest != 255 && header.greatest != 65535)
        reason = "its greatest value is " + std::to_string(header.greatest) +
                 ", where 255 and 65535 are known";
    else if (header.depth < 1 || header.depth > 4)
        reason =
            "has " + std::to_string(header.depth) + " values in a pixel, where 1 to 4 are known";
    else if (!header.tupleType.empty() && header.tupleType != TupleType(header.Kind()))
        reason = "its pixels are " + Printable(header.tupleType) + ", but have " +
                 std::to_string(header.depth) + " values";
    return reason.empty();
}

bool PamReader::ReadPixels(const Header& header, Frame& frame, const Room& room,
                           std::string& reason) {
    const ColorKind kind = header.Kind();
    const PixelFormat format = header.greatest == 65535 ? kRgba64
                               : header.depth % 2 == 0  ? kRgba32
                                                        : kRgb24;
    // The picture, and its rows on their way out: as a stream, or filtered and compressed.
    const auto image = std::uint64_t(header.width * header.height * format.BytesPerPixel());
    if (room && !room(3 * image, reason))
        return false;
    if (!PrepareImage(frame, std::int32_t(header.width), std::int32_t(header.height), format)) {
        reason = "there is no memory for it";
        return false;
    }
    m_row.resize(PackedRowBytes(*frame.image, kind));
    for (std::int32_t y = 0; y < frame.image->Height(); ++y) {
        if (!GetBytes(m_row.data(), m_row.size())) {
            reason =
                CutOff("in row " + std::to_string(y + 1) + " of " + std::to_string(header.height));
            return false;
        }
        UnpackRow(m_row.data(), kind, *frame.image, y);
    }
    frame.header = {};
    frame.header.color = kind;
    frame.header.bitDepth = header.greatest == 65535 ? 16 : 8;
    return true;
}

StreamResult PamReader::Next(Frame& frame, std::string& why, const Room& room) {
    std::string reason;
    Header header;
    if (PeekByte() < 0) {
        if (m_error == 0)
            return StreamResult::kEnd;
        reason = CutOff("");
    } else if (ReadHeader(header, reason) && ReadPixels(header, frame, room, reason)) {
        ++m_framesRead;
        return StreamResult::kFrame;
    }
    why = m_name + ": frame " + std::to_string(m_framesRead + 1) + ": " + reason;
    return StreamResult::kFailed;
}

PamWriter::PamWriter(int descriptor, std::string name)
    : m_descriptor(descriptor), m_name(std::move(name)) {
    WidenPipe(descriptor);
}

bool PamWriter::Write(const Frame& frame, const PixelRect& touched, std::string& why) try {
    const Image& image = *frame.image;
    FrameHeader header = HeaderFor(frame, touched);
    const bool alpha = header.hasTransparentColor || ChannelsOf(header.color) % 2 == 0;
    m_colored = m_colored || ChannelsOf(header.color) > 2;
    const ColorKind kind = m_colored ? (alpha ? ColorKind::kRgba : ColorKind::kRgb)
                                     : (alpha ? ColorKind::kGreyAlpha : ColorKind::kGrey);
    const std::string text = PamHeader(image, kind);
    const std::size_t rowBytes = PackedRowBytes(image, kind);
    const auto all = m_buffer.Room(text.size() + rowBytes * std::size_t(image.Height()));
    std::uint8_t* row = std::copy(text.begin(), text.end(), all.data());
    for (std::int32_t y = 0; y < image.Height(); ++y, row += rowBytes)
        PackRow(image, y, kind, row);

    const NoBrokenPipeSignal guard;
    const int error = WriteAll(m_descriptor, all);
    if (error != 0)
        why = m_name + ": " +
              (error == EPIPE ? "its reader has gone away"
                              : "cannot be written: " + ErrorText(error));
    return error == 0;
} catch (const std::bad_alloc&) {
    why = m_name + ": there is no memory to write a frame";
    return false;
}

} // namespace host
