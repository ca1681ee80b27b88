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
    ASSERT_EQ(Run({ "render", "--character", "太郎", "--off", "--at", "-3,7", "--box", "none",
                    "--save-settings", "a.telop" })
                  .code,
              0);
    auto const json = Run({ "settings", "a.telop" });
    EXPECT_EQ(json.code, 0) << json.err;
    EXPECT_THAT(json.out, AllOf(HasSubstr("\"kind\": \"character\""), HasSubstr("太郎"),
                                HasSubstr("\"off\": true"), HasSubstr("\"box\": false")));
    Write("a.json", json.out);
    ASSERT_EQ(Run({ "settings", "--from", "a.json", "-o", "b.telop" }).code, 0);
    EXPECT_EQ(Contents("a.telop"), Contents("b.telop"));
}

TEST_F(OtherCommands, SettingsTakeOnlyTheKeysThatAreGiven) {
    ASSERT_EQ(Run({ "settings", "-o", "a.telop" }).code, 0);
    ASSERT_EQ(
        Run({ "settings", "--from", "-", "-o", "b.telop", "a.telop" }, R"({"size": 99})").code, 0);
    auto const size = std::string("\0\0\0\x63", 4);
    EXPECT_EQ(Contents("b.telop").substr(72, 4), size) << "integers are big-endian in archives";
    auto changed = Contents("a.telop");
    changed.replace(72, 4, size);
    EXPECT_EQ(Contents("b.telop"), changed);
}

TEST_F(OtherCommands, SettingsKeepTextsOfAnotherEncoding) {
    ASSERT_EQ(Run({ "settings", "--encoding", "CP932", "--from", "-", "-o", "a.telop" },
                  R"({"kind": "info", "info": "話"})")
                  .code,
              0);
    EXPECT_EQ(Contents("a.telop").substr(92, 3), std::string("\x98\x62\0", 3));
    EXPECT_THAT(Run({ "settings", "a.telop" }).out, HasSubstr("\\\\x98b"));
    EXPECT_THAT(Run({ "settings", "--encoding", "cp932", "a.telop" }).out, HasSubstr("話"));
}

TEST_F(OtherCommands, SettingsNameWhatIsWrong) {
    Write("short.telop", "x");
    Write("there.telop", "x");
    struct Row {
        Arguments arguments;
        const char* input;
        int code;
        const char* message;
    };
    for (auto const& row : {
             Row { { "settings", "short.telop" }, "", 3, "short.telop" },
             Row { { "settings", "not.telop" }, "", 3, "not.telop" },
             Row { { "settings", "--from", "not.json" }, "", 3, "not.json" },
             Row { { "settings", "--from", "-" }, "{\"sise\": 3}", 3, "sise: no such setting" },
             Row { { "settings", "--from", "-" }, "{", 3, "not readable as JSON" },
             Row { { "settings", "-o", "there.telop" }, "", 5, "there.telop exists" },
             Row { { "settings", "-o", "no/such.telop" }, "", 5, "no/such.telop" },
         }) {
        auto const outcome = Run(row.arguments, row.input);
        EXPECT_EQ(outcome.code, row.code) << outcome.err;
        EXPECT_THAT(outcome.err, HasSubstr(row.message));
    }
    EXPECT_EQ(Contents("there.telop"), "x");
}

TEST_F(OtherCommands, FontsListsFamiliesAndDrawsThem) {
    auto const all = Run({ "fonts" });
    EXPECT_EQ(all.code, 0);
    EXPECT_THAT(all.out, HasSubstr("DejaVu Sans\n"));
    auto const some = Run({ "fonts", "dejavu sans MONO", "--files" });
    EXPECT_THAT(some.out, AllOf(HasSubstr("DejaVu Sans Mono"), HasSubstr("/")));
    EXPECT_THAT(some.out, testing::Not(HasSubstr("Noto")));
    EXPECT_EQ(Run({ "fonts", "no such family" }).code, 3);

    ASSERT_EQ(Run({ "fonts", "dejavu", "--sample", "s.png" }).code, 0);
    auto const sample = ReadPicture("s.png");
    auto const row = sample.image->Row(16 + 16);
    EXPECT_TRUE(std::any_of(row.begin(), row.end(), [](int value) { return value < 100; }));
    EXPECT_EQ(Run({ "fonts", "dejavu", "--sample", "s.png" }).code, 5);
    EXPECT_EQ(Run({ "fonts", "--text", "x" }).code, 2);
    EXPECT_EQ(Run({ "fonts", "--sample", "s.jpg" }).code, 2);
    EXPECT_EQ(Run({ "fonts", "dejavu", "--sample", "t.png", "--text", std::string(70, 'x') }).code,
              2);
}

TEST_F(OtherCommands, DescribeShowsWhatThePluginSays) {
    auto const outcome = Run({ "describe" });
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_THAT(outcome.out,
                AllOf(HasSubstr("org.telop.effect.text-overlay"), HasSubstr("480 bytes"),
                      HasSubstr("5140 bytes"), HasSubstr("TEXT, 2, 1"), HasSubstr("EntryPoint"),
                      HasSubstr("kind 4, 0 to 1, default 0")));
    EXPECT_EQ(Run({ "describe", "." }).code, 3);
}

TEST_F(OtherCommands, DoctorFindsNothingOrNamesWhatIsWrong) {
    auto const healthy = Run({ "doctor" });
    EXPECT_EQ(healthy.code, 0) << healthy.out;
    EXPECT_THAT(healthy.out, AllOf(HasSubstr("TextOverlay.so"), HasSubstr("UTF-8"),
                                   HasSubstr("'カット日本語' is drawn"), HasSubstr("MS Gothic")));
    auto const ill = Run({ "doctor", "--plugin", "No.bundle" });
    EXPECT_EQ(ill.code, 1);
    EXPECT_THAT(ill.out, AllOf(HasSubstr("! "), HasSubstr("No.bundle")));
}

TEST_F(OtherCommands, AnInstalledProgramTakesNoBundleFromABuildAboveIt) {
    Write("CMakeCache.txt", "");
    std::filesystem::create_directories(Path("TextOverlay.bundle"));
    std::filesystem::create_directories(Path("opt/bin"));
    std::filesystem::copy(TELOP_PROGRAM, Path("opt/bin/telop"));
    auto const installed = Path("opt/bin/telop");
    auto const outcome = Start({}, "/dev/null", [&] {
                             unsetenv("TELOP_PLUGIN_PATH");
                             execl(installed.c_str(), "telop", "doctor", nullptr);
                         }).Wait();
    EXPECT_THAT(outcome.out, HasSubstr("not in"));
    EXPECT_THAT(outcome.out, testing::Not(HasSubstr((Path("TextOverlay.bundle")).string())));
}

TEST_F(OtherCommands, HelpAndVersionAreNoErrors) {
    EXPECT_THAT(Run({ "--version" }).out, HasSubstr("telop 0."));
    for (auto const* command : { "render", "settings", "lists", "fonts", "describe", "doctor" }) {
        auto const help = Run({ command, "--help" });
        EXPECT_EQ(help.code, 0);
        EXPECT_THAT(help.out, HasSubstr(std::string("telop ") + command));
        EXPECT_THAT(Run({ "--help" }).out, HasSubstr(command));
    }
}

} // namespace
} // namespace telop
