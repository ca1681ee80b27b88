// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/InfoStrings.h"

#include <gmock/gmock.h>

#include "platform/TextEncoding.h"

namespace studio {

namespace {

constexpr std::int64_t kFrame = 12;

class InfoStringsTest : public testing::Test {
protected:
    InfoStringsTest() { platform::SetApplicationTextEncoding("UTF-8"); }
    ~InfoStringsTest() override { platform::SetApplicationTextEncoding("UTF-8"); }

    const host::TokenValues m_values { kFrame, "shot.0012" };
};

TEST_F(InfoStringsTest, SaysWhatIsWrongWithAText) {
    struct Row {
        std::string text;
        const char* trouble; // a part of it
    };
    for (auto const& row : {
             Row { "", "" },
             Row { "{frame:04} {file} {{", "" },
             Row { "{fram}", "Unknown token" },
             Row { "{", "Unknown token" },
             Row { std::string(63, 'x'), "" },
             Row { std::string(64, 'x'), "64 bytes, and 63 fit" },
             Row { std::string(60, 'x') + "{frame:04}", "64 bytes" },
             Row { "two\nlines", "one line" },
         }) {
        auto const trouble = TroubleWith(row.text, m_values).toStdString();
        EXPECT_THAT(trouble, testing::HasSubstr(row.trouble)) << row.text;
        EXPECT_EQ(trouble.empty(), *row.trouble == 0) << row.text;
    }
}

TEST_F(InfoStringsTest, ResolvesInTheApplicationsEncoding) {
    InfoStrings strings;
    strings.texts = { "道", "{frame+1:03}", "{wrong", "{file}" };
    EXPECT_THAT(Resolve(strings, m_values), testing::ElementsAre("道", "013", "", "shot.0012"));
    ASSERT_TRUE(platform::SetApplicationTextEncoding("CP932"));
    EXPECT_EQ(Resolve(strings, m_values)[0], "\x93\xB9");
    strings.texts[0] = "ñ";
    EXPECT_FALSE(TroubleWith(strings.texts[0], m_values).isEmpty());
    strings.present = false;
    EXPECT_THAT(Resolve(strings, m_values), testing::Each(""));
}

} // namespace

} // namespace studio
