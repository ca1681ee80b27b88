// SPDX-License-Identifier: BSD-3-Clause
// PNG files: read, and what was read is written and read again. Check sums are set right first, or
// hardly an input would come further than to them.

#include <cstdlib>
#include <string>
#include <vector>

#include <libdeflate.h>

#include "host/frames/PngChunks.h"
#include "host/frames/PngReader.h"
#include "host/frames/PngWriter.h"

namespace {

void SetCheckSums(std::vector<std::uint8_t>& file) {
    for (std::size_t at = 8; file.size() >= 12 && at <= file.size() - 12;) {
        std::size_t length = 0;
        for (std::size_t i = 0; i < 4; ++i)
            length = length << 8 | file[at + i];
        if (length > file.size() - 12 - at)
            return;
        host::StoreBig32(libdeflate_crc32(0, &file[at + 4], length + 4), &file[at + 8 + length]);
        at += 12 + length;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<std::uint8_t> file(data, data + size);
    SetCheckSums(file);
    const host::PngLimits limits { .pixels = 1 << 20 };
    host::PngReader reader(limits);
    host::Frame frame;
    std::string why;
    if (!reader.Decode(file, "input", frame, why))
        return why.empty() ? (std::abort(), 0) : 0;

    const host::PixelRect all { 0, 0, frame.image->Width(), frame.image->Height() };
    const host::FrameHeader header = HeaderFor(frame, all);
    host::PngWriter writer;
    const auto written = writer.Encode(frame, header, why);
    host::Frame again;
    if (written.empty() || !reader.Decode(written, "output", again, why))
        std::abort();
    const bool same = again.header.color == header.color &&
                      again.header.bitDepth == header.bitDepth &&
                      again.header.metadata.size() == header.metadata.size();
    if (!same)
        std::abort();
    return 0;
}
