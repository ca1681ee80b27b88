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

TEST(TextField, FillsAFieldWithBytesOfTheApplicationsEncoding) {
    // reason: empty when it fits the eight bytes
    using Row = std::tuple<const char*, std::string, std::string, const char*>;
    for (const auto& [encoding, text, bytes, reason] : {
             Row { "UTF-8", "abc", "abc", "" },
             Row { "UTF-8", "話話a", "話話a", "" },
             Row { "UTF-8", "話話ab", "", "limit is 7" },
             Row { "CP932", "話話話a",
                   "\x98\x62\x98\x62\x98\x62"
                   "a",
                   "" },
             Row { "CP932", "話話話話", "", "CP932" },
             Row { "CP932", "한글", "", "CP932 lacks" },
             Row { "CP932", std::string("a\0b", 3), "", "zero byte" },
         }) {
        const In in(encoding);
        std::array<char, 8> field;
        field.fill('#');
        std::string why;
        ASSERT_EQ(SetField(field, "--info", text, why), !*reason) << text << why;
        EXPECT_EQ(FieldBytes(field), *reason ? "########" : bytes) << "refused, it stays as it is";
        if (*reason)
            EXPECT_THAT(why, testing::AllOf(HasSubstr("--info"), HasSubstr(reason)));
        else
            EXPECT_EQ(std::count(field.begin(), field.end(), '\0'), 8 - std::ssize(bytes));
    }
}

TEST(TextField, EscapesWhatIsNoText) {
    using Row = std::tuple<const char*, const char*, const char*>;
    for (const auto& [encoding, bytes, escaped] : {
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
        const In in(encoding);
        EXPECT_EQ(EscapeBytes(bytes), escaped) << encoding;
    }
}

TEST(TextField, AnyBytesComeBackFromTheirEscapedForm) {
    std::mt19937 random(5);
    for (const auto* encoding : { "UTF-8", "CP932", "EUC-JP", "GBK", "Big5", "EUC-KR" }) {
        const In in(encoding);
        for (int round = 0; round < 300; ++round) {
            std::string bytes(random() % 24, ' '), why;
            std::generate(bytes.begin(), bytes.end(),
                          [&] { return static_cast<char>(random() % 255 + 1); });
            const auto escaped = EscapeBytes(bytes);
            const auto back = UnescapeBytes(escaped, why);
            ASSERT_TRUE(back) << encoding << ' ' << escaped << ' ' << why;
            EXPECT_EQ(*back, bytes) << encoding << ' ' << escaped;
        }
    }
}

TEST(TextField, NamesAnUnknownEscapeAndMakesLineBreaksCarriageReturns) {
    for (const auto* text : { "a\\n", "\\", "\\x1", "\\xG0", "\\x-1", "\\X41" }) {
        std::string why;
        EXPECT_FALSE(UnescapeBytes(text, why)) << text;
        EXPECT_THAT(why, HasSubstr("is no escape")) << text;
    }
    EXPECT_EQ(WithCarriageReturns("a\nb\r\nc\rd\n\ne\r\n"), "a\rb\rc\rd\r\re\r");
}

} // namespace
} // namespace host
