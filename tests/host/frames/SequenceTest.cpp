// SPDX-License-Identifier: BSD-3-Clause
// Which frames a name, a set of numbers and a folder stand for.
#include "host/frames/Sequence.h"

#include <gmock/gmock.h>

#include "support/TemporaryFolder.h"

namespace host {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(FramePattern, MakesNamesAndFindsTheirNumbers) {
    using Row = std::tuple<std::string, std::int64_t, std::string>;
    for (const auto& [text, frame, path] :
         std::vector<Row> { { "shot.%04d.png", 7, "shot.0007.png" },
                            { "shot.####.png", 7, "shot.0007.png" },
                            { "shot.%4d.png", 7, "shot.0007.png" },
                            { "a/b#c/%d", 12, "a/b#c/12" },
                            { "/x/cut#.png", 123, "/x/cut123.png" },
                            { "##.png", 12345, "12345.png" },
                            { "%02d", 0, "00" },
                            { "s.####.png", -5, "s.-0005.png" },
                            { "s-%d.png", -12345, "s--12345.png" },
                            { "100%%.%03d%%.png", 5, "100%.005%.png" },
                            { "50% #.png", 5, "50% 5.png" },
                            { "\xE3\x82\xAB\xE3\x83\x83\xE3\x83\x88_###.png", 42,
                              "\xE3\x82\xAB\xE3\x83\x83\xE3\x83\x88_042.png" } }) {
        std::string why;
        EXPECT_TRUE(FramePattern::LooksLikeOne(text));
        const auto pattern = FramePattern::Parse(text, why);
        ASSERT_TRUE(pattern) << why;
        EXPECT_EQ(pattern->PathOf(frame), path);
        EXPECT_EQ(pattern->NumberIn(path.substr(pattern->Folder().size())), frame) << text;
    }
}

TEST(FramePattern, KnowsOnlyNamesThatItWouldMake) {
    std::string why;
    const auto pattern = FramePattern::Parse("s.####.png", why);
    ASSERT_TRUE(pattern);
    for (const std::string name :
         { "s.007.png", "s.00007.png", "s..png", "s.00a7.png", "s.-07.png", "s.-00007.png",
           "s.-0000.png", "s.--007.png", "s.0007.pngx", "xs.0007.png", "s.0007", "s.9999999999.png",
           "s.99999999999999999999.png", "s.png", "" })
        EXPECT_FALSE(pattern->NumberIn(name)) << name;
    EXPECT_EQ(pattern->NumberIn("s.10007.png"), 10007);
    EXPECT_EQ(pattern->NumberIn("s.-007.png"), -7); // as printf writes it
    // Before and after may not share characters of the name.
    EXPECT_FALSE(FramePattern::Parse("aa#aa", why)->NumberIn("aaa"));
}

TEST(FramePattern, IsThatOfANumberedName) {
    for (const auto& [file, pattern] : std::vector<std::pair<std::string, std::string>> {
             { "a/shot.0012.png", "a/shot.####.png" },
             { "c012_0003.png", "c012_####.png" },
             { "12.png", "##.png" },
             { "shot.-0005.png", "shot.####.png" },
             { "a.1/shot-0005.png", "a.1/shot-####.png" },
             { "100%_01.png", "100%_##.png" },
             { "take 2/title.png", "" },
             { "50%d_1.png", "" },
             { "#1.png", "" } })
        EXPECT_EQ(FramePattern::Of(file).value_or(""), pattern) << file;
}

TEST(FramePattern, SaysWhatIsWrong) {
    for (const auto& [text, reason] : std::vector<std::pair<std::string, std::string>> {
             { "a#b/shot.png", "has no place for the frame's number" },
             { "%%d.png", "has no place for the frame's number" },
             { "%d-%d.png", "more than one place" },
             { "#%d.png", "has a %d and a #" },
             { "%d%.png", "neither %d" },
             { "%99999999999999999999999d.png", "more than 18 digits" } }) {
        std::string why;
        EXPECT_FALSE(FramePattern::Parse(text, why)) << text;
        EXPECT_THAT(why, HasSubstr(reason)) << text;
        EXPECT_THAT(why, HasSubstr(text));
    }
    EXPECT_FALSE(FramePattern::LooksLikeOne("a#b/50%.png"));
}

FrameRanges Ranges(std::string_view text) {
    std::string why;
    auto ranges = FrameRanges::Parse(text, why);
    EXPECT_TRUE(ranges) << why;
    return ranges.value_or(FrameRanges());
}

TEST(FrameRanges, TakesTheFramesOfEachPart) {
    const std::vector<std::int64_t> existing { -10, -5, -1, 0, 1, 2, 3, 8, 9, 10, 11, 12 };
    using Row = std::tuple<std::string, std::vector<std::int64_t>, std::string>;
    for (const auto& [text, frames, printed] :
         std::vector<Row> { { "9", { 9 }, "9" },
                            { "0-3", { 0, 1, 2, 3 }, "0-3" },
                            { "1-11:2", { 1, 3, 9, 11 }, "1-11:2" },
                            { " 2 - 9 : 1 , 012 ", { 2, 3, 8, 9, 12 }, "2-9,12" },
                            { "10-", { 10, 11, 12 }, "10-" },
                            { "1-:4", { 1, 9 }, "1-:4" },
                            { "-5", { -5 }, "-5" },
                            { "-5-1", { -5, -1, 0, 1 }, "-5-1" },
                            { "-10--5,-1", { -10, -5, -1 }, "-10--5,-1" },
                            { " -10 - -1 : 5", { -10, -5 }, "-10--1:5" },
                            { "-1..1", { -1, 0, 1 }, "-1-1" },
                            { "..-5", { -10, -5 }, "..-5" },
                            { "10..", { 10, 11, 12 }, "10-" },
                            { "..", existing, ".." },
                            { "5-7", {}, "5-7" },
                            { "12,12,11-12", { 11, 12 }, "12,12,11-12" },
                            { "0-2147483647:2147483647", { 0 }, "0-:2147483647" } }) {
        const FrameRanges ranges = Ranges(text);
        EXPECT_EQ(ranges.Among(existing), frames) << text;
        EXPECT_EQ(ranges.ToString(), printed) << text;
        EXPECT_EQ(Ranges(printed).Among(existing), frames) << text;
    }
    EXPECT_EQ(FrameRanges::All().Among(existing), existing);
}

TEST(FrameRanges, SaysWhatIsWrong) {
    for (const auto& [text, reason] : std::vector<std::pair<std::string, std::string>> {
             { "", "no frames are given" },
             { "1,,2", "nothing stands between two commas" },
             { "3,10-5 ", "'10-5': ends before it starts" },
             { "-1--5", "ends before it starts" },
             { "-", "'-' is not a frame number" },
             { "a", "'a': 'a' is not a frame number" },
             { "1-2-3", "'1-2-3': '2-3' is not a frame number" },
             { "- 5", "'- 5' is not a frame number" },
             { "1...5", "'.5' is not a frame number" },
             { "+1", "'+1' is not a frame number" },
             { "1-9:0", "'1-9:0': the step is 0" },
             { "1-9:-2", "the step is -2" },
             { "..9:2", "without a first frame there is none to count the steps from" },
             { "1-9:", "the step '' is not a frame number" },
             { "2147483648", "above the greatest frame number, 2147483647" },
             { "-2147483648", "below the least frame number, -2147483647" },
             { "99999999999999999999", "above the greatest frame number" } }) {
        std::string why;
        EXPECT_FALSE(FrameRanges::Parse(text, why)) << text;
        EXPECT_THAT(why, HasSubstr(reason)) << text;
    }
}

TEST(FrameRanges, ListsWhatIsMissingWithoutWalkingAbsurdRanges) {
    const std::vector<std::int64_t> existing { 1, 2, 4 };
    EXPECT_THAT(Ranges("1-6").Missing(existing, 9), ElementsAre(3, 5, 6));
    EXPECT_THAT(Ranges("1-6,5-7:2").Missing(existing, 9), ElementsAre(3, 5, 6, 7));
    EXPECT_THAT(Ranges("1-2147483646").Missing(existing, 2), ElementsAre(3, 5));
    EXPECT_THAT(Ranges("1-,..9,1-4:3").Missing(existing, 9), ElementsAre());
    EXPECT_THAT(Ranges("-1-1").Missing(existing, 9), ElementsAre(-1, 0));
}

class SequenceFiles : public ::testing::Test {
protected:
    std::string At(const std::string& name) const { return m_folder.Path() / name; }

    void Make(std::initializer_list<const char*> names) const {
        for (const char* name : names)
            m_folder.Write(name, "x");
    }

    // "number name" of each frame, or why there are none.
    std::vector<std::string> List(const std::string& input) const {
        std::vector<std::string> list(1);
        const auto sequence = Sequence::Open(At(input), list[0]);
        if (sequence)
            list.clear();
        for (const FrameFile& frame : sequence ? sequence->Frames() : std::vector<FrameFile>())
            list.push_back(std::to_string(frame.number) + ' ' + frame.path.filename().native());
        return list;
    }

    // Where the last frame goes, or why it does not.
    std::string Output(const std::string& input, const std::string& output) const {
        std::string why;
        const auto sequence = Sequence::Open(At(input), why);
        const auto out = SequenceOutput::Open(*sequence, At(output), why);
        return out ? fs::relative(out->PathOf(sequence->Frames().back()), m_folder.Path()).string()
                   : why;
    }

    TemporaryFolder m_folder;
};

TEST_F(SequenceFiles, ListsWhatThePatternMatches) {
    Make({ "s.0010.png", "s.0002.png", "s.10000.png", "s.3.png", "t.0001.png", "s.0004.png/x",
           "s.-0005.png" });
    EXPECT_THAT(List("s.%04d.png"), ElementsAre("-5 s.-0005.png", "2 s.0002.png", "10 s.0010.png",
                                                "10000 s.10000.png"));
    EXPECT_THAT(List("s.#.png"), ElementsAre("3 s.3.png", "10000 s.10000.png"));
    EXPECT_THAT(List("u.%04d.png"), ElementsAre(HasSubstr("no frame has such a name")));
    EXPECT_THAT(List("no/u.%04d.png"), ElementsAre(HasSubstr("its folder cannot be read")));
    EXPECT_THAT(List("u.#.#.png"), ElementsAre(HasSubstr("more than one place")));
    Make({ "s.-005.png" });
    EXPECT_THAT(List("s.####.png"), ElementsAre(AllOf(HasSubstr("s.-005.png and "),
                                                      HasSubstr("s.-0005.png are both frame -5"))));
}

TEST_F(SequenceFiles, NumbersPicturesByTheirNames) {
    Make({ "v2.0012.png", "title.png", "cut#3.png", "big99999999999999.png" });
    EXPECT_THAT(List("v2.0012.png"), ElementsAre("12 v2.0012.png"));
    EXPECT_THAT(List("cut#3.png"), ElementsAre("3 cut#3.png"));
    EXPECT_THAT(List("big99999999999999.png"), ElementsAre("1 big99999999999999.png"));
    EXPECT_THAT(List("gone.png"), ElementsAre(HasSubstr("gone.png: ")));
}

TEST_F(SequenceFiles, NumbersTheFramesOfAFolderByTheirNames) {
    Make({ "a/c10.png", "a/c9.PNG", "a/.c8.png", "a/c7.txt" });
    EXPECT_THAT(List("a"), ElementsAre("9 c9.PNG", "10 c10.png"));
    Make({ "b/x2_1.png", "b/x10_1.png" });
    EXPECT_THAT(List("b/"), ElementsAre("2 x2_1.png", "10 x10_1.png"));
    Make({ "c/s.-0002.png", "c/s.-0010.png", "c/s.0000.png", "d/s-0007.png" });
    EXPECT_THAT(List("c"), ElementsAre("-10 s.-0010.png", "-2 s.-0002.png", "0 s.0000.png"));
    EXPECT_THAT(List("d"), ElementsAre("7 s-0007.png"));
    Make({ "e/readme" });
    EXPECT_THAT(List("e"), ElementsAre(HasSubstr("holds no PNG files")));
}

TEST_F(SequenceFiles, RefusesAFolderInWhichItIsNotClearWhatAFramesNumberIs) {
    using Names = std::vector<std::string>;
    using Row = std::tuple<std::string, Names, std::string, Names>;
    for (const auto& [folder, names, reason, wanted] : std::vector<Row> {
             { "a",
               { "reference.png", "shot.1001.png", "shot.1002.png" },
               "reference.png has no number",
               { "shot.####.png" } },
             { "b",
               { "ref.1.png", "shot.99.png", "shot.100.png" },
               "more than one sequence, shot.##.png and ref.#.png",
               { "shot.##.png", "ref.#.png" } },
             { "c",
               { "v1.0001.png", "v1.0002.png", "v2.0001.png", "a.png", "b.png" },
               "v1.####.png and v2.####.png, and a.png and b.png have no number",
               { "v1.####.png", "v2.####.png" } },
             { "d", { "s.1.png", "s.01.png" }, "s.01.png and s.1.png are both", { "s.#.png" } },
             { "e", { "title.png", "end.png" }, "; name one picture, or number them", {} },
             { "f", { "big99999999999999.png" }, "has no number", {} } }) {
        for (const auto& name : names)
            m_folder.Write(folder + "/" + name, "x");
        std::string why;
        std::vector<std::string> choices;
        EXPECT_FALSE(Sequence::Open(At(folder), why, &choices)) << folder;
        EXPECT_THAT(why, HasSubstr(reason)) << folder;
        ASSERT_EQ(choices.size(), wanted.size()) << folder;
        for (std::size_t i = 0; i < choices.size(); ++i)
            EXPECT_EQ(choices[i], At(folder + "/" + wanted[i]));
        EXPECT_EQ(choices.empty(), why.find("as " + At(folder)) == std::string::npos) << why;
    }
}

TEST_F(SequenceFiles, SendsFramesWhereTheOutputSaysOrSaysWhyNot) {
    Make({ "in/s.0001.png", "in/s.0002.png", "one.0007.png", "out/keep", "file" });
    fs::create_directory_symlink("in", At("link"));
    for (const auto& [input, output, path] :
         std::vector<std::tuple<std::string, std::string, testing::Matcher<std::string>>> {
             { "in/s.%04d.png", "out/t.%03d.png", "out/t.002.png" },
             { "in/s.####.png", "out", "out/s.0002.png" },
             { "in", "new/", "new/s.0002.png" },
             { "in", "new", "new/s.0002.png" },
             { "in/s.####.png", "new", "new/s.0002.png" },
             { "in", "t##.png", "t02.png" },
             { "one.0007.png", "burnt.PNG", "burnt.PNG" },
             { "one.0007.png", "out", "out/one.0007.png" },
             { "one.0007.png", "x.%d.png", "x.7.png" },
             { "in/s.%04d.png", "out.png", HasSubstr("out.%04d.png") },
             { "in", "out.png", HasSubstr("is a sequence; name a folder") },
             { "in", "file", HasSubstr("is a sequence; name a folder") },
             { "in", "in", HasSubstr("frame 1 would be written over an input") },
             { "in/s.####.png", "link/s.%04d.png", HasSubstr("frame 1 would be written over") },
             { "one.0007.png", "one.0007.png", HasSubstr("the frame would be written over") },
             { "one.0007.png", "one.jpg", HasSubstr("written as PNG") },
             { "in", "out.%04d.tif", HasSubstr("written as PNG") },
             { "in", "out.%04d.%d.png", HasSubstr("more than one place") } })
        EXPECT_THAT(Output(input, output), path) << input << " to " << output;
}

} // namespace
} // namespace host
