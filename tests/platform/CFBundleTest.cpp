// SPDX-License-Identifier: BSD-3-Clause
#include <array>
#include <atomic>
#include <memory>
#include <thread>

#include <gmock/gmock.h>

#include "platform/CoreFoundation.h"
#include "platform/Languages.h"
#include "platform/TextContext.h"
#include "support/ScopedEnvironment.h"
#include "support/TemporaryFolder.h"

namespace platform {
namespace {

// LANGUAGE, LC_ALL, LC_MESSAGES and LANG.
using Locale = std::array<const char*, 4>;

class WithLocale {
public:
    explicit WithLocale(const Locale& locale)
        : m_language("LANGUAGE", locale[0]), m_all("LC_ALL", locale[1]),
          m_messages("LC_MESSAGES", locale[2]), m_lang("LANG", locale[3]) {}

private:
    ScopedEnvironment m_language, m_all, m_messages, m_lang;
};

TEST(Languages, FollowTheEnvironmentInItsOrder) {
    const std::pair<Locale, std::vector<std::string>> rows[] {
        { { nullptr, nullptr, nullptr, nullptr }, { "en" } },
        { { nullptr, nullptr, nullptr, "ja_JP.UTF-8" }, { "ja_JP", "ja", "en" } },
        { { nullptr, nullptr, "fr", "ja_JP" }, { "fr", "en" } },
        { { nullptr, "C", "fr", "ja_JP" }, { "en" } },
        { { "", "", "", "de_AT@euro" }, { "de_AT", "de", "en" } },
        { { "ja:fr_CA:", nullptr, nullptr, "en_GB.UTF-8" },
          { "ja", "fr_CA", "fr", "en_GB", "en" } },
        { { ":../x:ja", nullptr, nullptr, "POSIX" }, { "ja", "en" } },
    };
    for (const auto& [locale, languages] : rows) {
        const WithLocale scope(locale);
        EXPECT_EQ(UserLanguages(), languages);
        EXPECT_EQ(LanguagesOf(LocalesOf(languages)), languages);
        EXPECT_LE(LocalesOf(languages).size(), 20U) << "what follows from others";
    }
}

class BundleTest : public testing::Test {
protected:
    BundleTest() {
        m_folder.Write("X.bundle/Contents/Info.json",
                       R"({ "identifier": "org.example.x", "name": "X", "version": "1.2" })");
        m_folder.Write("X.bundle/Contents/Resources/en.lproj/Localizable.strings",
                       "a = \"A in English\"; b = \"B in English\";");
        m_folder.Write("X.bundle/Contents/Resources/ja.lproj/Localizable.strings",
                       "a = \"A in Japanese\"\nb = \"B in Japanese\";");
        m_folder.Write("X.bundle/Contents/Resources/all.txt", "");
        m_folder.Write("X.bundle/Contents/Resources/ja.lproj/page.txt", "");
        m_folder.Write("X.bundle/Contents/Resources/Forms/en.lproj/page.txt", "");
    }

    std::filesystem::path Path() const { return m_folder.Path() / "X.bundle"; }

    TemporaryFolder m_folder;
    TextContext m_met;
    TextScope m_scope { m_met };
};

std::string Localized(CFBundleRef bundle, const char* key, const char* value) {
    const StringHolder string(CFBundleCopyLocalizedString(bundle, key, value, nullptr));
    return string ? std::string(CFStringGetUTF8(string.get())) : "(null)";
}

TEST_F(BundleTest, TextsAndResourcesFallBackFromLanguageToEnglish) {
    const BundleHolder bundle(CFBundleCreate(Path()));
    ASSERT_TRUE(bundle);
    EXPECT_EQ(CFBundleGetIdentifier(bundle.get()), "org.example.x");
    EXPECT_EQ(CFBundleGetVersion(bundle.get()), "1.2");
    const WithLocale locale({ nullptr, nullptr, nullptr, "ja_JP" });
    EXPECT_EQ(Localized(bundle.get(), "b", "b"), "B in Japanese");
    EXPECT_EQ(Localized(bundle.get(), "a", "a"), "A in English"); // its Japanese line is broken
    EXPECT_EQ(Localized(bundle.get(), "c", "c"), "c");
    EXPECT_EQ(Localized(bundle.get(), "c", nullptr), "(null)");
    const auto reports = m_met.Reports();
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_THAT(Describe(reports[0]), testing::EndsWith("Localizable.strings:1': ';' is missing"));

    const auto find = [&](const char* name, const char* folder) {
        return CFBundleCopyResourceURL(bundle.get(), name, "txt", folder)
            .lexically_relative(Path() / "Contents/Resources")
            .string();
    };
    EXPECT_EQ(find("all", ""), "all.txt");
    EXPECT_EQ(find("page", ""), "ja.lproj/page.txt");
    EXPECT_EQ(find("page", "Forms"), "Forms/en.lproj/page.txt");
    EXPECT_EQ(CFBundleCopyResourceURL(bundle.get(), "none", "txt", ""), "");
}

TEST_F(BundleTest, WhatIsNoBundleIsRefusedWithTheReason) {
    const std::pair<const char*, const char*> rows[] {
        { "{", "it is no JSON" },
        { "[]", "no JSON object" },
        { R"({ "identifier": 3 })", "\"identifier\" is no string" },
        { R"({ "identifier": "i", "name": "n" })", "\"version\" is no" },
        { nullptr, "No such file" },
    };
    for (const auto& [info, reason] : rows) {
        TextContext met;
        const TextScope scope(met);
        if (info)
            m_folder.Write("X.bundle/Contents/Info.json", info);
        else
            std::filesystem::remove(Path() / "Contents/Info.json");
        EXPECT_EQ(CFBundleCreate(Path()), nullptr) << reason;
        ASSERT_EQ(met.Reports().size(), 1u) << reason;
        EXPECT_THAT(Describe(met.Reports()[0]),
                    testing::AllOf(testing::HasSubstr("Info.json"), testing::HasSubstr(reason)));
    }
}

TEST_F(BundleTest, ThreadsReadTextsInTheLanguageOfTheirContext) {
    const BundleHolder bundle(CFBundleCreate(Path()));
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&, isJapanese = i % 2 == 0] {
            TextContext own(TextEncoding::Utf8(), {}, isJapanese ? "ja_JP.UTF-8" : "fr:en");
            const TextScope ownScope(own);
            for (int round = 0; round < 100; ++round) {
                const TextContext under; // takes the language over
                TextContext frame(under, {});
                const TextScope scope(frame);
                wrong += Localized(bundle.get(), "b", "b") !=
                         (isJapanese ? "B in Japanese" : "B in English");
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace platform
