// SPDX-License-Identifier: BSD-3-Clause
// "telop cues" through the real program: files of dialogue into documents and back.
#include "TelopProgram.h"

#include "host/document/Document.h"

namespace telop {
namespace {

constexpr const char* kSubRip = "1\n00:00:00,000 --> 00:00:00,083\nOne\nmore {line}\n\n"
                                "2\n00:00:00,125 --> 00:00:00,167\nTwo\n\n";

class CuesCommand : public TelopProgram {
protected:
    host::Document Load(const std::string& name) {
        std::string why;
        auto document = host::Document::Load(Path(name), why);
        EXPECT_TRUE(document) << why;
        return document.value_or(host::Document {});
    }
};

TEST_F(CuesCommand, SubtitlesAreDrawnAndComeBack) {
    WriteSequence("cut", 1001, 1005);
    Write("a.srt", kSubRip);
    Run("cues a.srt --frames cut/ -o a.telop");
    Run("render --document a.telop out/");
    const std::string place = " --anchor bottom@title --apply ";
    Run("render --dialogue 'One\\nmore {{line}}'" + place + "1001,1002 cut/ one/");
    Run("render --dialogue Two" + place + "1004 one/ same/");
    for (const auto& name : Files("out"))
        EXPECT_EQ(Contents("out/" + name), Contents("same/" + name)) << name;
    Run("cues a.telop -o b.srt");
    EXPECT_EQ(Contents("b.srt"), kSubRip);
    Run("cues a.telop -o b.csv");
    EXPECT_EQ(Contents("b.csv"), "start,end,character,text\n1001,1002,\"\",\"One\nmore {{line}}\"\n"
                                 "1004,1004,\"\",Two\n");
    // A second file takes the place of the first one's cues, and the look stays.
    Run("render --document a.telop --size 20 --save-document small.telop");
    Run("cues b.csv --start 9 --into small.telop");
    Run("cues a.srt --name Other --start -5 --into small.telop");
    const auto document = Load("small.telop");
    ASSERT_EQ(document.tracks.size(), 2);
    EXPECT_EQ(document.tracks[0].cues, Load("a.telop").tracks[0].cues);
    EXPECT_EQ(document.tracks[1].cues[0].first, -5);
    EXPECT_EQ(document.tracks[1].settings.nFontSize, 20);
    ExpectEndings("cues small.telop -o c.srt",
                  { { "", 2, "--track says which: 'Dialogue', 'Other'" },
                    { "--track Third", 2, "no track 'Third'; it has 'Dialogue', 'Other'" },
                    { "--track Other", 1, "the cue begins before frame 1001" } });
}

TEST_F(CuesCommand, TablesBringNamesTimeCodesAndTokens) {
    Write("a.csv", "Start;Duration;Character;Text\n"
                   "10:00:00:00;5;\x94\xfc\x8d\x81;{shot}\n10:00:01:00;2;;x\n");
    Run("cues a.csv --encoding CP932 --fps 25 --timecode 10:00:00:00 --start 101 --define shot=7 "
        "--character-track Names -o a.telop");
    const auto document = Load("a.telop");
    EXPECT_EQ(document.clock.Start(), "10:00:00:00");
    EXPECT_EQ(document.defines.at("shot"), "7");
    ASSERT_EQ(document.tracks.size(), 2);
    EXPECT_EQ(document.tracks[0].cues,
              (std::vector<host::Cue> { { 101, 105, "{shot}", "美香" }, { 126, 127, "x", "" } }));
    EXPECT_EQ(document.tracks[1].name, "Names");
    EXPECT_EQ(document.tracks[1].cues, (std::vector<host::Cue> { { 101, 105, "", "美香" } }));
    Run("cues a.telop --track Names -o names.srt --start 101");
    EXPECT_EQ(Contents("names.srt"), "1\n00:00:00,000 --> 00:00:00,200\n美香\n\n");
}

TEST_F(CuesCommand, TroubleIsNamedAndTheRestIsWritten) {
    WriteSequence("cut", 1, 5);
    Write("bad.csv", "start,end,text\n5,1,a\n1,3,b\n2,4,c\nx,4,d\n");
    Write("long.csv", "start,end,text\n1,2," + std::string(256, 'x') + "\n");
    Write("none.srt", "nothing\n");
    Write("noise.bin", std::string("\0\1\2", 3));
    Write("late.csv", "start,end,text\n7,8,a\n");
    Write("there.telop", "");
    const auto bad = Run("cues bad.csv -o bad.telop", { 1, "bad.csv:2: the cue ends before" }).err;
    EXPECT_THAT(bad, testing::HasSubstr("warning: bad.csv:4: the cue starts with frame 2"));
    EXPECT_THAT(bad, testing::HasSubstr("bad.csv:5: "));
    EXPECT_EQ(Load("bad.telop").tracks[0].cues.size(), 2);
    ExpectEndings("cues",
                  { { "long.csv -o l.telop", 1, "cannot be drawn before it is mended: the cue" },
                    { "late.csv --frames cut/ -o t.telop", 0, "1 of 1 cues are on none of" },
                    { "none.srt -o n.telop", 3, "none.srt: no cue is left" },
                    { "noise.bin -o n.telop", 3, "noise.bin: line 1 has a zero byte" },
                    { "missing.srt -o n.telop", 3, "missing.srt" },
                    { "late.csv --frames no/ -o n.telop", 3, "--frames: " },
                    { "late.csv --into n.telop", 3, "n.telop" },
                    { "there.telop -o n.srt", 3, "there.telop" },
                    { "late.csv -o there.telop", 5, "there.telop exists; --overwrite" },
                    { "late.csv", 2, "-o is missing" },
                    { "late.csv -o n.txt", 2, "'n.txt' is no document's name" },
                    { "late.csv -o n.srt", 2, "from a document, and 'late.csv'" },
                    { "there.telop -o n.telop", 2, "there.telop is a document" },
                    { "there.telop -o n.srt --into n.telop", 2, "--into" },
                    { "late.csv --encoding X -o n.telop", 2, "--encoding: 'X'" },
                    { "late.csv --track X -o n.telop", 2, "--name names" } });
    EXPECT_FALSE(std::filesystem::exists(Path("n.telop")));
}

} // namespace
} // namespace telop
