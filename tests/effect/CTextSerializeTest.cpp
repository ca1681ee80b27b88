// SPDX-License-Identifier: BSD-3-Clause
#include <cstring>

#include <gmock/gmock.h>

#include "support/CountingHost.h"

namespace {

// Every byte counts, also those behind the NUL of a string.
_TEXTPARAM Sample() {
    _TEXTPARAM param;
    std::uint8_t next = 1;
    for (std::size_t i = 0; i < sizeof param; ++i, next = static_cast<std::uint8_t>(next * 5 + 3))
        reinterpret_cast<std::uint8_t*>(&param)[i] = next;
    return param;
}

// The archive's format, written down from where its integers lie.
std::vector<std::uint8_t> ArchiveOf(const _TEXTPARAM& param) {
    const auto* raw = reinterpret_cast<const std::uint8_t*>(&param);
    std::vector<std::uint8_t> bytes(raw, raw + sizeof param);
    for (const std::size_t at : { 0, 4, 72, 76, 80, 84, 88, 476 }) {
        std::uint32_t value;
        std::memcpy(&value, raw + at, sizeof value);
        for (std::size_t i = 0; i < 4; ++i)
            bytes[at + i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
    }
    return bytes;
}

bool SameBytes(const _TEXTPARAM& a, const _TEXTPARAM& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST(CTextSerialize, WritesBigEndianAndKeepsTheLiveParameters) {
    for (const bool scribbles : { false, true }) {
        CountingHost host(8, 8, 32);
        host.Param() = Sample();
        host.scribbles = scribbles;
        EXPECT_EQ(host.Call(epiSerialize), 0);
        EXPECT_EQ(host.archive, ArchiveOf(Sample()));
        EXPECT_TRUE(SameBytes(host.Param(), Sample())) << "scribbles " << scribbles;
    }
}

TEST(CTextSerialize, LoadsWhatItSavedAsFarAsTheArchiveReaches) {
    const _TEXTPARAM sample = Sample();
    for (const std::size_t size : { 0, 4, 8, 76, 92, 476, 480 }) {
        CountingHost host(8, 8, 32);
        host.Param().nFontSize = 12;
        host.Param().dwFlags = TEXT_INFO;
        _TEXTPARAM expected = host.Param();
        std::memcpy(&expected, &sample, size);
        host.archive = ArchiveOf(sample);
        host.archive.resize(size);
        host.loading = true;
        EXPECT_EQ(host.Call(epiSerialize), 0);
        EXPECT_TRUE(SameBytes(host.Param(), expected)) << size << " bytes";
    }
}

} // namespace
