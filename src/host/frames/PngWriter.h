// SPDX-License-Identifier: BSD-3-Clause
// Writes frames as PNG files of the kind that they were read from.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

#include "host/frames/Frame.h"
#include "host/frames/OutputFile.h"

namespace host {

inline constexpr int kPngLevelDefault = 1; // a row of a drawn frame gains little from more search
inline constexpr int kPngLevelMax = 9;

// Keeps its buffers from frame to frame: one for each thread, used by one thread at a time.
class PngWriter {
public:
    // Level 0 stores, 1 is fastest, 9 smallest; others are clamped.
    explicit PngWriter(int level = kPngLevelDefault);
    ~PngWriter();

    // Encodes with HeaderFor(frame, touched), beside the file and then in its place; FlushFolder puts
    // it on the disk. kFailed: `why` names the file and the reason, and nothing is left behind.
    OutputResult Write(const std::filesystem::path& file, const Frame& frame,
                       const PixelRect& touched, Existing existing, std::string& why);
    // The whole file in memory, empty with `why` set when it failed; good until the next call.
    std::span<const std::uint8_t> Encode(const Frame& frame, const FrameHeader& header,
                                         std::string& why);

private:
    struct Buffers;
    int m_level;
    std::unique_ptr<Buffers> m_buffers;
};

} // namespace host
