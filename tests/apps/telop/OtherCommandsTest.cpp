// SPDX-License-Identifier: BSD-3-Clause
// The commands beside render, through the real program.
#include <unistd.h>

#include "TelopProgram.h"

namespace telop {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class OtherCommands : public TelopProgram {};

TEST_F(OtherCommands, SettingsGoToJsonAndBack) {
    Run("render --character 太郎 --off --at -3,7 --box none --color '#010203' --save-settings "
        "a.telop");
    const auto json = Run("settings a.telop");
    EXPECT_THAT(json.out, AllOf(HasSubstr("\"kind\": \"character\""), HasSubstr("太郎"),
                                HasSubstr("\"off\": true"), HasSubstr("\"box\": false"),
                                HasSubstr("\"color\": \"#010203\""), HasSubstr("-3")));
    Write("a.json", json.out);
    Run("settings --from a.json -o b.telop");
    EXPECT_EQ(Contents("a.telop"), Contents("b.telop"));

    // Keys that are not given stay as they were; integers are big-endian in archives.
    Run("settings --from - -o c.telop a.telop", { .input = R"({"size": 99})" });
    auto changed = Contents("a.telop");
    changed.replace(72, 4, std::string("\0\0\0\x63", 4));
    EXPECT_EQ(Contents("c.telop"), changed);
}

TEST_F(OtherCommands, SettingsKeepTextsOfAnotherEncoding) {
    Run("settings --encoding CP932 --from - -o a.telop",
        { .input = R"({"kind": "info", "info": "話"})" });
    EXPECT_EQ(Contents("a.telop").substr(92, 3), std::string("\x98\x62\0", 3));
    EXPECT_THAT(Run("settings a.telop").out, HasSubstr("\\\\x98b"));
    EXPECT_THAT(Run("settings --encoding cp932 a.telop").out, HasSubstr("話"));
}

TEST_F(OtherCommands, SettingsNameWhatIsWrong) {
    Write("short.telop", "x");
    ExpectEndings("settings", {
                                  { "short.telop", 3, "short.telop" },
                                  { "--from not.json", 3, "not.json" },
                                  { "--from -", 3, "sise: no such setting", "{\"sise\": 3}" },
                                  { "-o short.telop", 5, "short.telop exists" },
                                  { "-o no/such.telop", 5, "no/such.telop" },
                              });
    EXPECT_EQ(Contents("short.telop"), "x");
}

TEST_F(OtherCommands, FontsListsFamiliesAndDrawsThem) {
    const auto all = Run("fonts");
    EXPECT_THAT(all.out, HasSubstr("DejaVu Sans\n"));
    const auto some = Run("fonts 'dejavu sans MONO' --files");
    EXPECT_THAT(some.out, AllOf(HasSubstr("DejaVu Sans Mono"), HasSubstr("/")));
    EXPECT_THAT(some.out, testing::Not(HasSubstr("Noto")));

    Run("fonts dejavu --sample s.png");
    const auto sample = ReadPicture("s.png");
    const auto row = sample.image->Row(16 + 16);
    EXPECT_TRUE(std::any_of(row.begin(), row.end(), [](int value) { return value < 100; }));
    ExpectEndings("fonts",
                  {
                      { "'no such family'", 3, "no such family" },
                      { "dejavu --sample s.png", 5, "s.png" },
                      { "--text x", 2, "--text" },
                      { "--sample s.jpg", 2, "s.jpg" },
                      { "dejavu --sample t.png --text " + std::string(70, 'x'), 2, "--text" },
                  });
}

TEST_F(OtherCommands, DescribeShowsWhatThePluginSays) {
    const auto outcome = Start("describe", "/dev/null", [] { setenv("LANGUAGE", "ja", 1); }).Wait();
    EXPECT_THAT(outcome.out,
                AllOf(HasSubstr("テキストオーバーレイ"), HasSubstr("480 bytes"),
                      HasSubstr("5140 bytes"), HasSubstr("TEXT, 2, 1"), HasSubstr("EntryPoint"),
                      HasSubstr("kind 4, 0 to 1, default 0")));
    Run("describe .", { .code = 3 });
}

TEST_F(OtherCommands, DoctorFindsNothingOrNamesWhatIsWrong) {
    const auto healthy = Run("doctor");
    EXPECT_THAT(healthy.out, AllOf(HasSubstr("TextOverlay.so"), HasSubstr("UTF-8"),
                                   HasSubstr("'カット日本語' is drawn"), HasSubstr("MS Gothic")));
    const auto ill = Run("doctor --plugin No.bundle", { .code = 1 });
    EXPECT_THAT(ill.out, AllOf(HasSubstr("! "), HasSubstr("No.bundle")));
}

TEST_F(OtherCommands, AnInstalledProgramTakesNoBundleFromABuildAboveIt) {
    Write("CMakeCache.txt", "");
    std::filesystem::create_directories(Path("TextOverlay.bundle"));
    std::filesystem::create_directories(Path("opt/bin"));
    std::filesystem::copy(TELOP_PROGRAM, Path("opt/bin/telop"));
    const auto installed = Path("opt/bin/telop");
    const auto outcome = Start("", "/dev/null", [&] {
                             unsetenv("TELOP_PLUGIN_PATH");
                             execl(installed.c_str(), "telop", "doctor", nullptr);
                         }).Wait();
    EXPECT_THAT(outcome.out, HasSubstr("not in"));
    EXPECT_THAT(outcome.out, testing::Not(HasSubstr((Path("TextOverlay.bundle")).string())));
}

TEST_F(OtherCommands, HelpAndVersionAreNoErrors) {
    EXPECT_THAT(Run("--version").out, HasSubstr("telop 0."));
    for (const auto* command : { "render", "settings", "lists", "fonts", "describe", "doctor" }) {
        EXPECT_THAT(Run(std::string(command) + " --help").out,
                    HasSubstr(std::string("telop ") + command));
        EXPECT_THAT(Run("--help").out, HasSubstr(command));
    }
}

} // namespace
} // namespace telop
