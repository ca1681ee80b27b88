// SPDX-License-Identifier: BSD-3-Clause
// Text files that other programs wrote: their bytes, and tables in them.
#include "host/text/DelimitedText.h"

#include <gmock/gmock.h>

#include "host/text/TextFile.h"

namespace host {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(DelimitedText, ReadsWhatSpreadsheetsWrite) {
    using Fields = std::vector<std::string>;
    for (const auto& [text, rows] : std::vector<std::pair<std::string, std::vector<Fields>>> {
             { "a,b\r\n1,\r\n", { { "a", "b" }, { "1", "" } } },
             { "a;\"b;\"\"c\"\"\"\n\"\r\n\n\";x\"y\"",
               { { "a", "b;\"c\"" }, { "\n\n", "x\"y\"" } } },
             { "a\tb,c;d\t\"\"z\r1", { { "a", "b,c;d", "z" }, { "1" } } },
             { "\"a,;;\",b", { { "a,;;", "b" } } },
             { "", {} } }) {
        DelimitedReader reader(text, DelimitedReader::SeparatorOf(text));
        std::vector<Fields> read;
        for (DelimitedRow row; reader.Next(row);) {
            read.push_back(row.fields);
            EXPECT_EQ(row.fault, "") << text;
        }
        EXPECT_EQ(read, rows) << text;
    }
}

TEST(DelimitedText, CountsLinesAndNamesFaults) {
    const auto text = "x,\"1\n2\"\r\n" + std::string(2000, ',') + "\n,\"y\n";
    DelimitedReader reader(text, ',');
    DelimitedRow row;
    for (const auto& [line, fields, fault] :
         std::vector<std::tuple<std::size_t, std::size_t, std::string>> {
             { 1, 2, "" }, { 3, 1000, "1000 fields" }, { 4, 2, "never closed" } }) {
        ASSERT_TRUE(reader.Next(row));
        EXPECT_EQ(row.line, line);
        EXPECT_EQ(row.fields.size(), fields);
        EXPECT_THAT(row.fault, HasSubstr(fault));
    }
    EXPECT_FALSE(reader.Next(row));
}

TEST(TextFile, DecodesWhatItsMarkOrNameSays) {
    const auto cp932 = platform::TextEncoding::Find("CP932");
    for (const auto& [bytes, encoding, utf8] :
         std::vector<std::tuple<std::string, std::optional<platform::TextEncoding>, std::string>> {
             { "\xEF\xBB\xBF\xE5\xAD\x97\r\n1\r2", cp932, "字\n1\n2" },
             { "\x8E\x9A\x81\x5C\n", cp932, "字―\n" },
             { "\xFF\xFE\x57\x5B\x0A\0\x3D\xD8\0\xDE"s, std::nullopt, "字\n😀" },
             { "\xFE\xFF\x5B\x57"s, cp932, "字" } }) {
        std::string why;
        const auto file = TextFile::Decode(bytes, encoding, why);
        ASSERT_TRUE(file) << why;
        EXPECT_EQ(file->utf8, utf8);
        EXPECT_THAT(file->badLines, ElementsAre());
    }
    std::string why;
    EXPECT_FALSE(TextFile::Decode("a\n\x8E\x9A", std::nullopt, why));
    EXPECT_THAT(why, HasSubstr("line 2 is not UTF-8"));
    EXPECT_FALSE(TextFile::Decode("a\0b"s, std::nullopt, why));
    EXPECT_THAT(why, HasSubstr("zero byte"));
    // Half a character does not take the end of its line with it.
    const auto half = TextFile::Decode("a\n\x8E\nb\xFD\xFE", cp932, why);
    ASSERT_TRUE(half) << why;
    EXPECT_THAT(half->badLines, ElementsAre(2, 3));
    EXPECT_THAT(half->utf8, HasSubstr("\nb"));
}

} // namespace
} // namespace host
