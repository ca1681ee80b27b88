// SPDX-License-Identifier: BSD-3-Clause
// Reads PNG files of every colour type and depth into frames.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "host/frames/Frame.h"

namespace host {

// What a file may ask for before it is refused, so that a false header cannot take all memory.
struct PngLimits {
    std::int32_t side = 32767;
    std::int64_t pixels = std::int64_t { 1 } << 28;
    std::int64_t fileBytes = std::int64_t { 1 } << 31;
};

// What a file tells of itself without its pixels.
struct PngOutline {
    std::int32_t width = 0;
    std::int32_t height = 0;
    // Bytes that reading it, drawing and writing it again takes: the picture, the file, and the rows as
    // they are filtered on either side.
    std::uint64_t memory = 0;
    // Its chunks follow one another as far as the last one, as in a file that was written to its end.
    bool isWhole = false;
};
// Nothing when it cannot be read or does not begin as a PNG file.
std::optional<PngOutline> LookAtPng(const std::filesystem::path& file);

// Keeps its buffers from frame to frame: one for each thread, used by one thread at a time.
class PngReader {
public:
    explicit PngReader(const PngLimits& limits = {});
    ~PngReader();

    // False: `why` names the file and the reason, and the frame's contents are unspecified but safe
    // to read into again.
    bool Read(const std::filesystem::path& file, Frame& frame, std::string& why);
    // The same from memory; `name` is what messages call it.
    bool Decode(std::span<const std::uint8_t> bytes, std::string_view name, Frame& frame,
                std::string& why);

private:
    struct Buffers;
    PngLimits m_limits;
    std::unique_ptr<Buffers> m_buffers;
};

} // namespace host
