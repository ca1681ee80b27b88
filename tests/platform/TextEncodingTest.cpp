// SPDX-License-Identifier: BSD-3-Clause
// Where characters begin and end in every kind of encoding, and what conversion makes of odd bytes.
#include "platform/TextEncoding.h"

#include <gmock/gmock.h>
#include <random>

#include "platform/TextContext.h"
#include "support/Converts.h"

namespace {

using namespace platform;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

constexpr const char* kEncodings[] = { "UTF-8", "CP932", "EUC-JP", "EUC-KR", "GBK", "Big5" };

// What is in an encoding, for a scope.
struct In {
    explicit In(const char* name) : context(*TextEncoding::Find(name)) {}
    TextContext context;
    TextScope scope { context };
};

std::vector<int> ByteTypes(const std::string& text) {
    std::vector<int> types;
    for (std::size_t i = 0; i < text.size(); ++i)
        types.push_back(CharacterByteType(text.c_str(), i, kSystemScript));
    return types;
}

// What a walk from the start of the text says of each byte.
std::vector<int> WalkedTypes(const std::string& text) {
    std::vector<int> types;
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t length = CharacterLength(rest);
        for (std::size_t i = 0; i < length; ++i) {
            types.push_back(length == 1       ? kSingleByte
                            : i == 0          ? kFirstByte
                            : i + 1 == length ? kLastByte
                                              : kMiddleByte);
        }
        rest.remove_prefix(length);
    }
    return types;
}

TEST(TextEncoding, NamesAreFoundByTheirUsualSpellings) {
    const std::pair<const char*, const char*> rows[] {
        { "utf8", "UTF-8" },    { "Shift_JIS", "CP932" }, { "Windows-31J", "CP932" },
        { "euc_jp", "EUC-JP" }, { "EUCKR", "EUC-KR" },    { "BIG-5", "Big5" },
    };
    for (const auto& [asked, name] : rows) {
        const auto encoding = TextEncoding::Find(asked);
        ASSERT_TRUE(encoding) << asked;
        EXPECT_EQ(encoding->Name(), name);
    }
    // The last two are no supersets of ASCII, in which nothing of a record could be read.
    for (const char* name : { "no-such-encoding", "", "UTF-8//IGNORE", "UTF-16", "ISO-2022-JP" })
        EXPECT_FALSE(TextEncoding::Find(name)) << name;
}

TEST(TextEncoding, BytesKnowTheirPlaceInACharacter) {
    struct Row {
        const char* encoding;
        std::string text;
        std::vector<int> types;
    };
    const Row rows[] = {
        { "UTF-8", "a\xE3\x81\x82\xF0\x9F\x98\x80", { 0, -1, 2, 1, -1, 2, 2, 1 } },
        { "UTF-8", "\xE3\x81\r\x82\xC0\x80\xED\xA0\x80", { 0, 0, 0, 0, 0, 0, 0, 0, 0 } },
        { "CP932", "a\x82\xA0\x83\x5C\xB1", { 0, -1, 1, -1, 1, 0 } },
        { "CP932", "\x81\r\n\x81", { -1, 1, 0, 0 } }, // a CR as trail; a lead at the end
        { "CP932", { "\x82\0", 2 }, { 0, 0 } },
        { "CP932", "\x81\x81\x81\x41\x41", { -1, 1, -1, 1, 0 } },
        { "EUC-JP", "\xA4\xA2\x8E\xB1\x8F\xB0\xA1z", { -1, 1, -1, 1, -1, 2, 1, 0 } },
        { "EUC-JP", "\x8F\x41\x8F\xB0", { -1, 1, 0, 0 } },
        { "GBK", "\xC4\xE3\x81\x40", { -1, 1, -1, 1 } },
        { "EUC-KR", "\xB0\xA1\x81\x40", { -1, 1, 0, 0 } },
        { "Big5", "\xA4\x40\xA4\xA4", { -1, 1, -1, 1 } },
    };
    for (const Row& row : rows) {
        const In in(row.encoding);
        EXPECT_EQ(ByteTypes(row.text), row.types)
            << row.encoding << " " << testing::PrintToString(row.text);
        EXPECT_EQ(WalkedTypes(row.text), row.types) << row.encoding;
        for (std::size_t size = 0; size <= row.text.size() + 4; ++size) {
            std::size_t kept = std::min(size, row.text.size()); // of whole characters
            while (kept < row.types.size() && row.types[kept] > 0)
                --kept;
            EXPECT_EQ(CutToWholeCharacters(row.text, size).size(), kept) << row.encoding << size;
        }
    }
    EXPECT_EQ(CharacterLength(""), 0u);
}

TEST(TextEncoding, LookingBackAgreesWithWalking) {
    const std::string interesting =
        "A\r\n\x40\x80\x81\x82\x8E\x8F\xA1\xB0\xC2\xE0\xE3\xED\xF0\xF4\xFE\xFF";
    std::minstd_rand random(1);
    for (const char* encoding : kEncodings) {
        const In in(encoding);
        for (int round = 0; round < 3000; ++round) {
            std::string text(random() % 24, ' ');
            for (char& c : text)
                c = interesting[random() % interesting.size()];
            ASSERT_EQ(ByteTypes(text), WalkedTypes(text))
                << encoding << " " << testing::PrintToString(text);
        }
    }
}

TEST(TextEncoding, RunsLongerThanTheLookBackStayInStep) {
    const In in("EUC-KR");
    const std::string text(1 << 20, '\xB0');
    for (const std::size_t offset : { text.size() - 2, text.size() / 2 }) {
        EXPECT_EQ(CharacterByteType(text.c_str(), offset, kSystemScript), kFirstByte);
        EXPECT_EQ(CharacterByteType(text.c_str(), offset + 1, kSystemScript), kLastByte);
    }
}

TEST(TextEncoding, MalformedUtf8IsReplacedAndToldOnce) {
    const In in("UTF-8");
    for (int round = 0; round < 3; ++round)
        EXPECT_EQ(DecodeText("a\xFFz\xE3\x81"), "a\uFFFDz"); // the cut-off end becomes nothing
    ASSERT_THAT(in.context.Reports(), SizeIs(1));
    EXPECT_EQ(in.context.Reports()[0].asked, "FF");
    EXPECT_EQ(DecodeText("\xE0\x80\xED\xA0\xF4\x90\xC1"),
              "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD");
    for (const char* cut : { "\xC3", "\xE0\xA0", "\xED\x9F", "\xF0\x9F\x98", "\xF4\x8F" })
        EXPECT_EQ(DecodeText(cut), "") << testing::PrintToString(cut);
}

TEST(TextEncoding, TextGoesToUtf8AndBack) {
    struct Row {
        const char *encoding, *converter;
        std::string bytes, utf8;
    };
    const Row rows[] = {
        { "CP932", "CP932", "\x83\x65\x5C\x87\x40", "テ\\①" }, // the backslash stays one
        { "EUC-JP", "EUC-JP-MS", "\xA5\xC6\xAD\xA1\x8E\xB1", "テ①ｱ" },
        { "EUC-KR", "EUC-KR", "\xC7\xD1", "한" },
        { "GBK", "GBK", "\xC4\xE3", "你" },
        { "Big5", "BIG5", "\xA7\x41", "你" },
        // か waits for a mark that would make another character of it.
        { "EUC-JISX0213", "EUC-JISX0213", "\xA4\xAB", "か" },
    };
    for (const Row& row : rows) {
        if (Converts(row.converter)) {
            const In in(row.encoding);
            EXPECT_EQ(DecodeText(row.bytes), row.utf8) << row.encoding;
            EXPECT_EQ(EncodeText(row.utf8).bytes, row.bytes) << row.encoding;
            EXPECT_TRUE(EncodeText(row.utf8).complete);
            EXPECT_EQ(DecodeText(row.bytes + row.bytes.substr(0, 1)), row.utf8) << "cut off";
            EXPECT_THAT(in.context.Reports(), SizeIs(0));
        }
    }
}

TEST(TextEncoding, WhatAnEncodingLacksBecomesAQuestionMark) {
    const In in("CP932");
    if (Converts("CP932")) {
        const EncodedText encoded = EncodeText("a\xF0\x9F\x98\x80z");
        EXPECT_EQ(encoded.bytes, "a?z");
        EXPECT_FALSE(encoded.complete);
        EXPECT_EQ(DecodeText("\x81\x01z"), "\uFFFDz");
    }
    EXPECT_EQ(EncodeText("\xFF").bytes, "?");
}

} // namespace
