// SPDX-License-Identifier: BSD-3-Clause
// Files of subtitles and tables, into frames and back.
#include "host/cues/CueFile.h"

#include <array>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

#include "host/cues/CueWriter.h"

namespace host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Lines = std::vector<std::string>;

// A cue in one line, for the tables below.
std::string Line(const TimedCue& cue) {
    return std::to_string(cue.first) + "-" + std::to_string(cue.last) + " " + cue.character + "|" +
           cue.text;
}

CueOptions At24From1001() {
    return { .timing = { .startFrame = 1001 } };
}

// Cues and problems, the latter as "line! why" when something is lost, else "line? why".
struct Result {
    Lines cues, problems;
};
Result Read(std::string_view name, std::string_view bytes, const CueOptions& options) {
    std::string why;
    const auto file = ReadCues(bytes, name, options, why);
    EXPECT_TRUE(file) << name << ": " << why;
    Result result;
    for (const auto& cue : file ? file->cues : std::vector<TimedCue>())
        result.cues.push_back(Line(cue));
    for (const auto& problem : file ? file->problems : std::vector<CueProblem>())
        result.problems.push_back(std::to_string(problem.line) + (problem.lost ? "! " : "? ") +
                                  problem.text);
    return result;
}

TEST(CueFile, ReadsEachKind) {
    struct Row {
        const char* name;
        std::string bytes;
        Lines cues;
    };
    for (const auto& row : {
             Row {
                 "a.srt",
                 "1\r\n00:00:00,000 --> 00:00:01,000\r\n<i>Yes</i>, a < b {x}\r\n{\\an8}no\r\n\r\n"
                 "2\n0:00:01.000 --> 00:00:02,042  X1:5\n42\n3\n00:00:03,000 --> 00:00:04,000\nC",
                 { "1001-1024 |Yes, a < b {{x}}\nno", "1025-1049 |42", "1073-1096 |C" } },
             Row { "a.vtt",
                   "WEBVTT - title\nLanguage: ja\n\nNOTE\nwords --\n\nSTYLE\n::cue {}\n\n"
                   "intro\n00:01.000 --> 00:00:02.000 line:0\n<v.loud Mary &amp; "
                   "Jo>Hi&nbsp;<b>you</b>\n"
                   "a < b &x; &#x5B57;<00:01.500>\n\n00:03.000 --> 00:04.000\n- 1",
                   { "1025-1048 Mary & Jo|Hi\xC2\xA0you\na < b &x; 字", "1073-1096 |- 1" } },
             Row { "a.ass",
                   "[Script Info]\nTitle: x\n[Events]\nFormat: Start, End, Layer, Name, Text\n"
                   "Comment: 0:00:00.00,0:00:01.00,0,,no\n"
                   "Dialogue: 0:00:01.00,0:00:02.50,0,Mary,{\\i1}One,\\Ntwo\\hthree{\\i0} {four\n"
                   "Dialogue: 0:00:00.00,0:00:01.00,0,,{\\p1}m 0 0 l 1 1{\\p0}\n"
                   "Dialogue: 0:00:00.00,0:00:01.00,0,,{\\pos(1,2)\\p0}Zero\n",
                   { "1001-1024 |Zero", "1025-1060 Mary|One,\ntwo three {{four" } },
             Row { "old.txt",
                   "[Events]\nDialogue: 0,0:00:00.00,0:00:01.00,Default,Jo,0,0,0,,a, b\n",
                   { "1001-1024 Jo|a, b" } },
             Row { "a.csv",
                   "Text,Notes,START,End ,Character\n\"a, \"\"b\"\"\nc\",,1001,1010,Mary\n,,,,\n"
                   "{frame},x,-5,-5,\nt,,00:00:01:00,00:00:02:00,\nu,,00:00:03.5,00:00:04,",
                   { "-5--5 |{frame}", "1001-1010 Mary|a, \"b\"\nc", "1025-1048 |t",
                     "1085-1096 |u" } },
             Row { "list",
                   "start;duration;text\n1001;48;a\n00:00:02,000;0:01.5;b\n0:0:4:0;0:0:1:12;c\n",
                   { "1001-1048 |a", "1049-1084 |b", "1097-1132 |c" } },
             Row { "x.tsv",
                   "start\tend\tduration\ttext\n1\t2\t2\ta\n3\t4\t\tb",
                   { "1-2 |a", "3-4 |b" } },
         }) {
        const auto [cues, problems] = Read(row.name, row.bytes, At24From1001());
        EXPECT_EQ(cues, row.cues) << row.name;
        EXPECT_THAT(problems, ElementsAre()) << row.name;
    }
}

TEST(CueFile, NamesWhatIsWrongByItsLine) {
    const std::string head = "start,end,character,text\n";
    for (const auto& [name, bytes, kept, problem] :
         std::vector<std::tuple<const char*, std::string, std::size_t, const char*>> {
             { "a.srt", "1\n00:00:01,000 --> 00:00:01,000\nx\n", 0,
               "2! the cue is shorter than a" },
             { "a.srt", "1\n00:00:02,000 --> 00:00:01,000\nx\n", 0, "2! the cue ends before it" },
             { "a.srt", "1\n00:61:02,000 --> 01:00:01,000\nx\n", 0, "2! the times are not" },
             { "a.srt", "00:00:00,000 --> 00:00:01,000\nx\n\nlost\n", 1, "4! the line belongs to" },
             { "a.srt", "00:00:00,000 --> 00:00:01,000\n<b>\n", 0, "1! the cue has no text" },
             { "a.srt", "\n", 0, "0! there are no cues" },
             { "a.vtt", "00:00.000 --> 00:01.000\nx\n", 1, "1? the file does not start" },
             { "a.vtt", "WEBVTT\n\n00:00.000 --> 00:01.000\n<v A>x\n<v B>y", 1,
               "3? there are sev" },
             { "a.ass", "[Events]\nFormat: Layer, Text\n", 0, "2! the Format line names no" },
             { "a.ass", "[Events]\nDialogue: 0,0:00:00.00,0:00:01.00,x\n", 0,
               "2! the line has few" },
             { "a.ass", "[Events]\nDialogue: 0,zero,one,,,0,0,0,,x\n", 0, "2! the times are not" },
             { "a.csv", "start,end,txet\n1,2,x\n", 0, "1! there is no column 'text', 'txet' is" },
             { "a.csv", "start,text\n1,x\n", 0, "1! there is no column 'end'" },
             { "a.csv", head + "10,9,,x\n", 0, "2! the cue ends before it starts" },
             { "a.csv", head + "10,,,x\n", 0, "2! the row has no end" },
             { "a.csv", head + "1,9.5,,x\n", 0, "2! '9.5' is no frame number, time code" },
             { "a.csv", head + "1,00:00:01:24,,x\n", 0, "2! '00:00:01:24' is no time code at 24" },
             { "a.csv", head + "1,00:00:01;02,,x\n", 0, "2! drop-frame time code is for 29.97" },
             { "a.csv", head + "99999999999,99999999999,,x\n", 0, "2! '99999999999' is no frame" },
             { "a.csv", head + "1,900000:00:00,,x\n", 0, "2! the cue lies beyond the frames" },
             { "a.csv", head + "1,2,,\"x\n", 0, "2! the row has a quote that is never closed" },
             { "a.csv", "start,end,duration,text\n1,2,3,x\n", 0, "2! the end and the duration" },
             { "a.csv", head + "1,2,,{fram}\n", 1, "2? text: '{fram}' is no token, {frame} is" },
             { "a.csv", head + "1,2,," + std::string(256, 'x'), 1, "2? text: 256 bytes in CP932" },
             { "a.csv", head + "1,2," + std::string(64, 'x') + ",y", 1, "2? character: 64 bytes" },
             { "a.csv", head + "1,2,,\xE2\x82\xAC\n", 1, "2? text: CP932 lacks characters" },
             { "a.csv", head + "1,9,A,x\n3,4,B,y\n", 2,
               "3? the cue starts with frame 3, and that of line 2 ends with frame 9" },
             { "a.csv", head + "5,9,A,x\n1,5,A,y\n", 2, "2? the cue starts with frame 5" } }) {
        auto options = At24From1001();
        options.documentEncoding = *platform::TextEncoding::Find("CP932");
        const auto [cues, problems] = Read(name, bytes, options);
        EXPECT_EQ(cues.size(), kept) << bytes;
        EXPECT_THAT(problems, ElementsAre(HasSubstr(problem))) << bytes;
    }
    // What fits to the byte, and characters each with a track of their own.
    auto options = At24From1001();
    options.trackPerCharacter = true;
    options.encoding = options.documentEncoding = *platform::TextEncoding::Find("CP932");
    const auto fits = Read("a.csv",
                           head + "1,9," + std::string(63, 'x') + "," + std::string(255, 'y') +
                               "\n3,4,\x8E\x9A,\x95\\\n10,11,\x8E\x9A,z\n",
                           options);
    EXPECT_THAT(fits.problems, ElementsAre());
    EXPECT_THAT(fits.cues, ElementsAre(HasSubstr("xx|yy"), "3-4 字|表", "10-11 字|z"));
    std::string why;
    EXPECT_FALSE(ReadCues("some words", "a.txt", {}, why));
    EXPECT_FALSE(ReadCues(std::string(CueFile::kMaxBytes + 1, '\n'), "a.srt", {}, why));
}

// Each of the long texts takes minutes when a step looks at all that follows.
TEST(CueFile, StopsAtItsLimitsAndReadsHostileTextOnce) {
    std::string many = "start,end,text\n";
    for (std::size_t i = 0; i < CueFile::kMaxCues + 5; ++i)
        many += "7,7,x\n";
    std::string why;
    const auto file = ReadCues(many, "a.csv", {}, why);
    ASSERT_TRUE(file) << why;
    EXPECT_EQ(file->cues.size(), CueFile::kMaxCues);
    EXPECT_EQ(file->problems.size(), CueFile::kMaxProblems);
    EXPECT_EQ(file->moreProblems, CueFile::kMaxCues - CueFile::kMaxProblems);
    const std::string srt = "00:00:00,000 --> 00:00:01,000\n", vtt = "WEBVTT\n\n" + srt;
    const std::string ass = "[Events]\nDialogue: 0,0:00:00.00,0:00:01.00,,,0,0,0,,";
    for (const auto& [name, start, piece] :
         std::vector<std::array<std::string, 3>> { { "a.srt", srt, "<b " },
                                                   { "a.srt", srt, "{\\" },
                                                   { "a.vtt", vtt, "<a" },
                                                   { "a.vtt", vtt, "&#" },
                                                   { "a.ass", ass, "{\\p" },
                                                   { "a.csv", "start,end,text\n1,2,", "{" },
                                                   { "a.csv", "start,end,text\n1,2,", "\"\"" } }) {
        std::string bytes = start;
        while (bytes.size() < 300'000)
            bytes += piece;
        EXPECT_THAT(Read(name, bytes, {}).problems, ElementsAre(testing::_)) << piece;
    }
}

TEST(CueWriter, BringsCuesBack) {
    std::string why;
    for (const char* name : { "24", "59.94" }) {
        const CueOptions options { .timing = { TimeCode(*FrameRate::Parse(name, why)), -100, 0 } };
        const std::vector<TimedCue> cues { { -100, -100, "a {{x}}\n\xC2\xA0\nb", {}, 2 },
                                           { -99, 5, "42", {}, 8 },
                                           { 360'000, 8'640'000, "\"c,\" --> ;", {}, 12 } };
        std::vector<CueProblem> problems;
        const auto srt = WriteSubRip(cues, options.timing, problems);
        EXPECT_TRUE(problems.empty());
        EXPECT_EQ(ReadCues(srt, "a.srt", options, why)->cues, cues) << srt;
        auto tokens = cues;
        tokens[0] = { -100, -100, "{frame}\n\nb", "Ma,ry", 2 };
        tokens[1].line = 5;
        tokens[2].line = 6;
        EXPECT_EQ(ReadCues(WriteCueTable(tokens), "a.csv", {}, why)->cues, tokens);
    }
    std::vector<CueProblem> problems;
    const std::vector<TimedCue> early { { 1, 5, "x", {}, 3 }, { 6, 12, "{tc}\n\ny", {}, 4 } };
    const auto srt = WriteSubRip(early, { .startFrame = 7 }, problems);
    EXPECT_EQ(srt, "1\n00:00:00,000 --> 00:00:00,250\n{tc}\n\xC2\xA0\ny\n\n");
    ASSERT_EQ(problems.size(), 3U);
    EXPECT_TRUE(problems[0].lost && problems[0].line == 3);
    EXPECT_THAT(problems[1].text, HasSubstr("before frame 7"));
    EXPECT_THAT(problems[2].text, HasSubstr("tokens"));
}

} // namespace
} // namespace host
