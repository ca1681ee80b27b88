// SPDX-License-Identifier: BSD-3-Clause
// The texts of the real bundle: complete in each language, found by the module, short enough.
#include <gmock/gmock.h>

#include "platform/StringTable.h"
#include "platform/TextContext.h"
#include "support/LoadedBundle.h"
#include "support/ScopedEnvironment.h"

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
    const std::pair<const char*, std::size_t> limits[] = { { "IDS_CATEGORY", 63 },
                                                           { "IDS_FILTER", 63 },
                                                           { "IDS_PARAM_APPLY", 63 },
                                                           { "IDS_DEFAULTFONT", 63 },
                                                           { "IDS_OFFCHARACTER", 31 },
                                                           { "IDS_MONOLOGUE", 31 },
                                                           { "IDS_NEWITEM", 63 },
                                                           { "IDS_FILTER_TEXT", 99 },
                                                           { "IDS_ATTENSION_ADDITEM", 999 },
                                                           { "IDS_INFOCLEAR", 99 },
                                                           { "IDS_INFOEDIT", 99 },
                                                           { "IDS_INFOLOCK", 99 },
                                                           { "IDS_QUESTION_HISTORY_CLEAR", 999 },
                                                           { "IDS_QUESTION_RESET", 999 } };
    const platform::StringTable languages[] = { Texts("en"), Texts("ja") };
    for (const auto& [key, text] : languages[0])
        EXPECT_EQ(languages[1].count(key), 1u) << key;
    EXPECT_EQ(languages[1].size(), languages[0].size());
    for (const char* encoding : { "UTF-8", "CP932", "EUC-JP" }) {
        platform::TextContext context(*platform::TextEncoding::Find(encoding));
        const platform::TextScope scope(context);
        for (const auto& texts : languages) {
            for (const auto& [key, limit] : limits) {
                const platform::EncodedText text = platform::EncodeText(texts.at(key));
                EXPECT_TRUE(text.complete && !text.bytes.empty()) << encoding << " " << key;
                EXPECT_LE(text.bytes.size(), limit) << encoding << " " << key;
            }
        }
    }
}

TEST(Bundle, SpeaksTheUsersLanguageWhereverItLies) {
    platform::TextContext met;
    const platform::TextScope scope(met);
    LoadedBundle bundle(TELOP_BUNDLE, TELOP_MODULE);
    const ScopedEnvironment noList("LANGUAGE", nullptr);
    for (const auto& [locale, name] :
         { std::pair { "ja_JP.UTF-8", "テキストオーバーレイ" }, std::pair { "C", "Text Overlay" },
           std::pair { "fr_FR.UTF-8", "Text Overlay" } }) {
        const ScopedEnvironment all("LC_ALL", locale);
        EPIPluginInfo info {};
        _EPIRECORD record {};
        record.pPluginInfo = &info;
        EXPECT_EQ(bundle.Call(epiInit, &record), 0);
        EXPECT_STREQ(info.szName, name) << locale;
    }
    EXPECT_THAT(met.Reports(), testing::IsEmpty());
}

} // namespace
