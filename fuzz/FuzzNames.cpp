// SPDX-License-Identifier: BSD-3-Clause
// What people type to choose frames: ranges and file name patterns. What was understood must come back
// from its own printed form.

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/frames/FramePattern.h"
#include "host/frames/FrameRanges.h"

namespace {

void Require(bool condition) {
    if (!condition)
        std::abort();
}

constexpr std::array<std::int64_t, 9> kFrames { host::kFrameMin, -1001,          -1, 0, 1, 7, 1001,
                                                123456789,       host::kFrameMax };

void TryRanges(std::string_view text) {
    std::string why;
    const auto ranges = host::FrameRanges::Parse(text, why);
    Require(ranges || !why.empty());
    if (!ranges)
        return;
    const auto again = host::FrameRanges::Parse(ranges->ToString(), why);
    Require(again && again->Among(kFrames) == ranges->Among(kFrames));
    Require(ranges->Missing(kFrames, 3).size() <= 3);
}

void TryPattern(std::string_view text) {
    std::string why;
    const auto pattern = host::FramePattern::Parse(text, why);
    Require(pattern || !why.empty());
    if (!pattern)
        return;
    for (const std::int64_t frame : kFrames) {
        const std::string path = pattern->PathOf(frame);
        Require(path.starts_with(pattern->Folder()));
        Require(pattern->NumberIn(path.substr(pattern->Folder().size())) == frame);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    TryRanges(text);
    TryPattern(text);
    return 0;
}
