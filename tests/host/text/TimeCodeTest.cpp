// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/TimeCode.h"

#include <array>
#include <limits>

#include <gmock/gmock.h>

namespace host {
namespace {

using testing::HasSubstr;
constexpr auto kLeast = std::numeric_limits<std::int64_t>::min();
constexpr auto kGreatest = std::numeric_limits<std::int64_t>::max();

FrameRate Rate(std::string_view text) {
    std::string why;
    const auto rate = FrameRate::Parse(text, why);
    EXPECT_TRUE(rate) << why;
    return rate.value_or(FrameRate());
}

// The digits of a running counter.
void Put(std::string& text, std::size_t at, int number) {
    text[at] = static_cast<char>('0' + number / 10);
    text[at + 1] = static_cast<char>('0' + number % 10);
}

// Counts through a day as the standard says it: number after number, those left out passed over.
void CountADay(FrameRate rate, int dropped, int step) {
    std::string why;
    const auto code = TimeCode::Make(rate, dropped > 0, why);
    ASSERT_TRUE(code) << why;
    std::string text = dropped > 0 ? "00:00:00;00" : "00:00:00:00";
    std::int64_t frame = 0;
    for (int minute = 0; minute < 24 * 60; ++minute)
        for (int second = 0; second < 60; ++second)
            for (int number = 0; number < rate.Base(); ++number) {
                if (second == 0 && number < dropped && minute % 10 != 0)
                    continue;
                if (frame++ % step != 0)
                    continue;
                Put(text, 0, minute / 60);
                Put(text, 3, minute % 60);
                Put(text, 6, second);
                Put(text, 9, number);
                ASSERT_EQ(code->Format(frame - 1), text) << frame - 1;
                ASSERT_EQ(code->Parse(text, why), frame - 1) << text;
            }
    ASSERT_EQ(code->FramesPerDay(), frame);
    for (const std::int64_t near : { std::int64_t { 0 }, std::int64_t { 17983 }, frame - 1 }) {
        EXPECT_EQ(code->Format(near - frame), code->Format(near));
        EXPECT_EQ(code->Format(near + frame * 1'000'000'000), code->Format(near));
    }
    EXPECT_EQ(code->Format(kLeast), code->Format(kLeast + frame * 3));
    EXPECT_EQ(code->Format(kGreatest), code->Format(kGreatest - frame * 3));
}

TEST(TimeCode, CountsEachFrameOfADay) {
    for (const char* rate : { "24", "25", "30", "48", "50", "60", "23.976", "29.97", "59.94" })
        CountADay(Rate(rate), 0, 89);
    CountADay(Rate("29.97"), 2, 1);
    CountADay(Rate("59.94"), 4, 3);
}

TEST(TimeCode, SaysWhatIsWrong) {
    std::string why;
    const auto drop = TimeCode::Make(Rate("29.97"), true, why);
    for (const auto& [code, text, reason] :
         std::vector<std::tuple<TimeCode, const char*, const char*>> {
             { TimeCode(), "00:00:00:24", "24 is above 23" },
             { TimeCode(), "24:00:00:00", "24 is above 23" },
             { TimeCode(), "00:60:00:00", "60 is above 59" },
             { TimeCode(), "00:00:00;00", "drop-frame" },
             { TimeCode(), "00:00:00", "no time code" },
             { TimeCode(), "00:00:00:000", "no time code" },
             { TimeCode(), "00:00:00:00x", "no time code" },
             { TimeCode(), "-1:00:00:00", "no time code" },
             { *drop, "00:01:00;01", "leaves out" },
             { *drop, "00:01:00:01", "leaves out" } }) {
        EXPECT_FALSE(code.Parse(text, why)) << text;
        EXPECT_THAT(why, HasSubstr(reason)) << text;
    }
    EXPECT_EQ(drop->Parse("0:10:0:0", why), 17982);
    EXPECT_FALSE(TimeCode::Make(Rate("23.976"), true, why));
    EXPECT_FALSE(TimeCode::Make(Rate("60"), true, why));
    EXPECT_FALSE(FrameRate::Parse("12", why));
    EXPECT_THAT(why, HasSubstr("'12' is no frame rate; there are 24, 25"));
}

TEST(FrameRate, BringsFramesBackFromTheirMilliseconds) {
    for (const char* name : { "24", "25", "30", "48", "50", "60", "23.976", "29.97", "59.94" }) {
        const auto rate = Rate(name);
        EXPECT_EQ(rate.Name(), name);
        for (std::int64_t frame = -100'000; frame < 10'000'000; frame += 997)
            ASSERT_EQ(rate.FrameAt(rate.MillisecondsAt(frame)), frame) << name;
        EXPECT_EQ(rate.MillisecondsAt(kGreatest), kGreatest);
        EXPECT_EQ(rate.MillisecondsAt(kLeast), kLeast);
        EXPECT_LT(rate.FrameAt(kLeast), rate.FrameAt(0));
    }
    // Halfway between two frames.
    EXPECT_EQ(Rate("25").FrameAt(59), 1);
    EXPECT_EQ(Rate("25").FrameAt(60), 2);
    EXPECT_EQ(Rate("25").FrameAt(-60), -1);
    EXPECT_EQ(Rate("30000/1001").MillisecondsAt(30000), 1'001'000);
    EXPECT_EQ(Rate("23.98").SecondsAt(24, 9), "1.001000000");
}

} // namespace
} // namespace host
