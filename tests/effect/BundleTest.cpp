// SPDX-License-Identifier: BSD-3-Clause
// The texts of the real bundle: complete in each language, and short enough.
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "platform/StringTable.h"
#include "platform/TextContext.h"

namespace {

namespace fs = std::filesystem;

platform::StringTable Texts(const char* language) {
    const fs::path path = fs::path(TELOP_BUNDLE) / "Contents/Resources" /
                          (std::string(language) + ".lproj") / "Localizable.strings";
    std::ifstream file(path, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    return platform::ParseStringTable(text, [&](std::size_t line, std::string_view reason) {
        ADD_FAILURE() << path << ":" << line << ": " << reason;
    });
}

TEST(Bundle, HasEveryTextInEachLanguageAndShortOnesFitTheirBuffers) {
    const std::pair<std::size_t, std::vector<std::string>> limits[] = {
        { 31, { "OFFCHARACTER", "MONOLOGUE" } },
        { 63, { "CATEGORY", "FILTER", "PARAM_APPLY", "DEFAULTFONT", "NEWITEM" } },
        { 99, { "FILTER_TEXT", "INFOCLEAR", "INFOEDIT", "INFOLOCK" } },
        { 999, { "ATTENSION_ADDITEM", "QUESTION_HISTORY_CLEAR", "QUESTION_RESET" } }
    };
    const platform::StringTable languages[] = { Texts("en"), Texts("ja") };
    for (const auto& [key, text] : languages[0])
        EXPECT_EQ(languages[1].count(key), 1u) << key;
    EXPECT_EQ(languages[1].size(), languages[0].size());
    for (const char* encoding : { "UTF-8", "CP932", "EUC-JP" }) {
        platform::TextContext context(*platform::TextEncoding::Find(encoding));
        const platform::TextScope scope(context);
        for (const auto& texts : languages)
            for (const auto& [limit, keys] : limits)
                for (const auto& key : keys) {
                    const auto text = platform::EncodeText(texts.at("IDS_" + key));
                    EXPECT_TRUE(text.complete && !text.bytes.empty()) << encoding << " " << key;
                    EXPECT_LE(text.bytes.size(), limit) << encoding << " " << key;
                }
    }
}

} // namespace
