// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/TextField.h"

#include <algorithm>
#include <array>
#include <random>

#include <gmock/gmock.h>

#include "platform/TextContext.h"

namespace host {
namespace {

using testing::HasSubstr;

struct In {
    explicit In(const char* name) : context(*platform::TextEncoding::Find(name)) {}
    platform::TextContext context;
    platform::TextScope scope { context };
};

TEST(TextField, FillsAFieldAndClearsItsRest) {
    std::array<char, 8> field;
    field.fill('#');
    std::string why;
    ASSERT_TRUE(SetField(field, "--info", "abc", why)) << why;
    EXPECT_EQ(std::string(field.data(), field.size()), std::string("abc\0\0\0\0\0", 8));
    EXPECT_EQ(FieldBytes(field), "abc");
    EXPECT_EQ(FieldBytes(std::span(field).first(3)), "abc") << "without an end";
}

TEST(TextField, CountsBytesOfTheApplicationsEncoding) {
    struct Row {
        const char* encoding;
        std::size_t characters;
        bool fits;
    };
    for (auto const& row : { Row { "UTF-8", 21, true }, Row { "UTF-8", 22, false },
                             Row { "CP932", 31, true }, Row { "CP932", 32, false } }) {
        In const in(row.encoding);
        std::string text, why;
        for (std::size_t i = 0; i < row.characters; ++i)
            text += "話";
        std::array<char, 64> field {};
        EXPECT_EQ(SetField(field, "--info", text, why), row.fits)
            << row.encoding << ' ' << row.characters << ' ' << why;
        if (!row.fits) {
            EXPECT_EQ(FieldBytes(field), "") << "a refused text leaves the field alone";
            EXPECT_THAT(why, HasSubstr("--info"));
            EXPECT_THAT(why, HasSubstr("limit is 63"));
            EXPECT_THAT(why, HasSubstr(row.encoding));
        }
    }
}

TEST(TextField, RefusesWhatTheEncodingLacksAndZeroBytes) {
    In const in("CP932");
    std::array<char, 64> field {};
    std::string why;
    EXPECT_FALSE(SetField(field, "--info", "한글", why));
    EXPECT_THAT(why, HasSubstr("CP932 lacks"));
    EXPECT_FALSE(SetField(field, "--info", std::string("a\0b", 3), why));
    EXPECT_THAT(why, HasSubstr("zero byte"));
}

TEST(TextField, EscapesWhatIsNoText) {
    struct Row {
        const char* encoding;
        const char* bytes;
        const char* escaped;
    };
    for (auto const& row : {
             Row { "UTF-8", "caf\xC3\xA9", "café" },
             Row { "UTF-8",
                   "a\xFF"
                   "b",
                   "a\\xFFb" },
             Row { "UTF-8", "\xE8\xA9", "\\xE8\\xA9" }, Row { "UTF-8", "C:\\x", "C:\\\\x" },
             Row { "UTF-8", "a\nb\x7F", "a\\x0Ab\\x7F" }, Row { "CP932", "\x98\x62", "話" },
             Row { "CP932", "\x98", "\\x98" },
             Row { "CP932", "\x83\x5C", "ソ" }, // its second byte is that of a backslash
         }) {
        In const in(row.encoding);
        EXPECT_EQ(EscapeBytes(row.bytes), row.escaped) << row.encoding;
    }
}

TEST(TextField, AnyBytesComeBackFromTheirEscapedForm) {
    std::mt19937 random(5);
    for (auto const* encoding : { "UTF-8", "CP932", "EUC-JP", "GBK", "Big5", "EUC-KR" }) {
        In const in(encoding);
        for (int round = 0; round < 300; ++round) {
            std::string bytes(random() % 24, ' '), why;
            std::generate(bytes.begin(), bytes.end(),
                          [&] { return static_cast<char>(random() % 255 + 1); });
            auto const escaped = EscapeBytes(bytes);
            auto const back = UnescapeBytes(escaped, why);
            ASSERT_TRUE(back) << encoding << ' ' << escaped << ' ' << why;
            EXPECT_EQ(*back, bytes) << encoding << ' ' << escaped;
        }
    }
}

TEST(TextField, NamesAnUnknownEscape) {
    for (auto const* text : { "a\\n", "\\", "\\x1", "\\xG0", "\\x-1", "\\X41" }) {
        std::string why;
        EXPECT_FALSE(UnescapeBytes(text, why)) << text;
        EXPECT_THAT(why, HasSubstr("is no escape")) << text;
    }
}

TEST(TextField, LineBreaksBecomeCarriageReturns) {
    EXPECT_EQ(WithCarriageReturns("a\nb\r\nc\rd\n\ne\r\n"), "a\rb\rc\rd\r\re\r");
}

} // namespace
} // namespace host
