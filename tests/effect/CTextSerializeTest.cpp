// SPDX-License-Identifier: BSD-3-Clause
#include <cstring>

#include <gmock/gmock.h>

#include "support/CountingHost.h"

namespace {

// Every byte of the strings counts, also those behind the NUL.
_TEXTPARAM Sample() {
    _TEXTPARAM param;
    std::uint8_t next = 1;
    for (std::size_t i = 0; i < sizeof param; ++i, next = static_cast<std::uint8_t>(next * 5 + 3))
        reinterpret_cast<std::uint8_t*>(&param)[i] = next;
    param.ptPos = { -2, 0x01020304 };
    std::strcpy(param.szFontName, "Sans");
    param.nFontSize = 36;
    param.crText = 0x00FEDCBA;
    param.crBack = 0x00112233;
    param.nOpacity = 99;
    param.nScoreFormat = 3;
    param.dwFlags = 0x00050008;
    return param;
}

void AppendBigEndian(std::vector<std::uint8_t>& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
}

template <std::size_t size>
void AppendField(std::vector<std::uint8_t>& bytes, const char (&field)[size]) {
    bytes.insert(bytes.end(), field, field + size);
}

// The archive's format, written down from its fields.
std::vector<std::uint8_t> ArchiveOf(const _TEXTPARAM& param) {
    std::vector<std::uint8_t> bytes;
    AppendBigEndian(bytes, static_cast<std::uint32_t>(param.ptPos.x));
    AppendBigEndian(bytes, static_cast<std::uint32_t>(param.ptPos.y));
    AppendField(bytes, param.szFontName);
    AppendBigEndian(bytes, static_cast<std::uint32_t>(param.nFontSize));
    AppendBigEndian(bytes, param.crText);
    AppendBigEndian(bytes, param.crBack);
    AppendBigEndian(bytes, static_cast<std::uint32_t>(param.nOpacity));
    AppendBigEndian(bytes, static_cast<std::uint32_t>(param.nScoreFormat));
    AppendField(bytes, param.szInfoText);
    AppendField(bytes, param.szCharacter);
    AppendField(bytes, param.szDialogue);
    AppendBigEndian(bytes, param.dwFlags);
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

TEST(CTextSerialize, LoadsWhatItSaved) {
    CountingHost host(8, 8, 32);
    host.archive = ArchiveOf(Sample());
    host.loading = true;
    EXPECT_EQ(host.Call(epiSerialize), 0);
    EXPECT_TRUE(SameBytes(host.Param(), Sample()));
}

TEST(CTextSerialize, AShortArchiveChangesOnlyWhatItReaches) {
    const std::vector<std::uint8_t> whole = ArchiveOf(Sample());
    for (const std::size_t size : { 0, 4, 8, 76, 92, 476 }) {
        CountingHost host(8, 8, 32);
        host.Param().nFontSize = 12;
        host.Param().dwFlags = TEXT_INFO;
        _TEXTPARAM expected = host.Param();
        const _TEXTPARAM sample = Sample();
        std::memcpy(&expected, &sample, size);
        host.archive.assign(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        host.loading = true;
        EXPECT_EQ(host.Call(epiSerialize), 0);
        EXPECT_TRUE(SameBytes(host.Param(), expected)) << size << " bytes";
    }
}

TEST(CTextSerialize, AThrowingReadKeepsTheParameters) {
    CountingHost host(8, 8, 32);
    host.Param() = Sample();
    host.loading = true;
    host.MakeTrouble(2, CountingHost::Trouble::kThrow); // after lock and is-loading
    EXPECT_THROW(host.Call(epiSerialize), HostFailure);
    EXPECT_TRUE(SameBytes(host.Param(), Sample()));
}

} // namespace
