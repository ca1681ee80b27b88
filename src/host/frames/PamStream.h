// SPDX-License-Identifier: BSD-3-Clause
// Streams of uncompressed pictures, one after the other on a pipe: PAM (P7) in and out, and binary
// PGM (P5) and PPM (P6) in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/frames/Bytes.h"
#include "host/frames/Frame.h"

namespace host {

enum class StreamResult : std::uint8_t { kFrame, kEnd, kFailed };

// Reads frames of 8 or 16 bits per channel (greatest value 255 or 65535). The descriptor stays the
// caller's and must not be read by anyone else meanwhile.
class PamReader {
public:
    explicit PamReader(int descriptor, std::string name = "the input stream");

    // kEnd: the stream ended before another frame began. kFailed: `why` names the stream, the
    // frame's place in it, from 1, and the reason; there is nothing more to read. The room, when
    // given, is asked before memory is taken.
    StreamResult Next(Frame& frame, std::string& why, const Room& room = {});

private:
    struct Header;
    bool Refill();
    int PeekByte();
    int GetByte();
    bool GetBytes(std::uint8_t* to, std::size_t count);
    std::string GetLine();
    std::string GetWord();
    bool ReadPamHeader(Header& header, std::string& reason);
    bool ReadPlainHeader(Header& header, std::string& reason);
    bool ReadHeader(Header& header, std::string& reason);
    bool ReadPixels(const Header& header, Frame& frame, const Room& room, std::string& reason);
    std::string CutOff(std::string_view where) const;

    int m_descriptor;
    std::string m_name;
    std::int64_t m_framesRead = 0;
    int m_error = 0;                    // errno of the read that failed
    std::vector<std::uint8_t> m_buffer; // read ahead: from m_begin to m_end
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    std::vector<std::uint8_t> m_row;
};

// Writes each frame as PAM. The descriptor stays the caller's. A reader that went away is an
// error, not a signal.
class PamWriter {
public:
    explicit PamWriter(int descriptor, std::string name = "the output stream");

    // Grey frames stay grey until one has been coloured; from then on all are RGB, because a
    // consumer expects one kind of picture. False: `why` names the stream and the reason.
    bool Write(const Frame& frame, const PixelRect& touched, std::string& why);

private:
    int m_descriptor;
    std::string m_name;
    bool m_colored = false;
    Bytes m_buffer;
};

} // namespace host
