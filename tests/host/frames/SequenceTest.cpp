// SPDX-License-Identifier: BSD-3-Clause
#include "host/frames/Sequence.h"

#include <gmock/gmock.h>

#include "support/TemporaryFolder.h"

namespace host {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class SequenceFiles : public ::testing::Test {
protected:
    std::string At(const std::string& name) const { return m_folder.Path() / name; }

    void Make(std::initializer_list<const char*> names) const {
        for (const char* name : names)
            m_folder.Write(name, "x");
    }

    // "number name" of each frame.
    std::vector<std::string> List(const std::string& input) const {
        std::string why;
        const auto sequence = Sequence::Open(At(input), why);
        EXPECT_TRUE(sequence) << why;
        std::vector<std::string> list;
        for (const FrameFile& frame : sequence ? sequence->Frames() : std::vector<FrameFile>())
            list.push_back(std::to_string(frame.number) + ' ' + frame.path.filename().native());
        return list;
    }

    std::string InputError(const std::string& input) const {
        std::string why;
        EXPECT_FALSE(Sequence::Open(At(input), why)) << input;
        return why;
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
    Make({ "s.0010.png", "s.0002.png", "s.10000.png", "s.3.png", "t.0001.png", "s.0004.png/x" });
    EXPECT_THAT(List("s.%04d.png"),
                ElementsAre("2 s.0002.png", "10 s.0010.png", "10000 s.10000.png"));
    EXPECT_THAT(List("s.#.png"), ElementsAre("3 s.3.png", "10000 s.10000.png"));
    EXPECT_THAT(InputError("u.%04d.png"), HasSubstr("no frame has such a name"));
    EXPECT_THAT(InputError("no/u.%04d.png"), HasSubstr("its folder cannot be read"));
    EXPECT_THAT(InputError("u.#.#.png"), HasSubstr("more than one place"));
}

TEST_F(SequenceFiles, NumbersPicturesByTheirNames) {
    Make({ "v2.0012.png", "title.png", "cut#3.png", "big99999999999999.png" });
    EXPECT_THAT(List("v2.0012.png"), ElementsAre("12 v2.0012.png"));
    EXPECT_THAT(List("cut#3.png"), ElementsAre("3 cut#3.png"));
    EXPECT_THAT(List("big99999999999999.png"), ElementsAre("1 big99999999999999.png"));
    EXPECT_THAT(InputError("gone.png"), HasSubstr("gone.png: "));
}

TEST_F(SequenceFiles, ListsFoldersInNaturalOrder) {
    Make({ "a/c10.png", "a/c9.PNG", "a/.c8.png", "a/c7.txt" });
    EXPECT_THAT(List("a"), ElementsAre("9 c9.PNG", "10 c10.png"));
    // Not all numbers are different: places count.
    Make({ "b/x2_1.png", "b/x10_1.png", "b/y.png" });
    EXPECT_THAT(List("b/"), ElementsAre("1 x2_1.png", "2 x10_1.png", "3 y.png"));
    Make({ "e/readme" });
    EXPECT_THAT(InputError("e"), HasSubstr("holds no PNG files"));
}

TEST_F(SequenceFiles, SendsFramesWhereTheOutputSays) {
    Make({ "in/s.0001.png", "in/s.0002.png", "one.0007.png", "out/keep" });
    for (const auto& [input, output, path] :
         std::vector<std::tuple<std::string, std::string, std::string>> {
             { "in/s.%04d.png", "out/t.%03d.png", "out/t.002.png" },
             { "in/s.####.png", "out", "out/s.0002.png" },
             { "in", "new/", "new/s.0002.png" },
             { "in", "new", "new/s.0002.png" },
             { "in/s.####.png", "new", "new/s.0002.png" },
             { "in", "t##.png", "t02.png" },
             { "one.0007.png", "burnt.PNG", "burnt.PNG" },
             { "one.0007.png", "out", "out/one.0007.png" },
             { "one.0007.png", "x.%d.png", "x.7.png" } })
        EXPECT_EQ(Output(input, output), path) << input << " to " << output;
}

TEST_F(SequenceFiles, RefusesOutputsThatCannotBe) {
    Make({ "in/s.0001.png", "in/s.0002.png", "one.png", "file" });
    fs::create_directory_symlink("in", At("link"));
    for (const auto& [input, output, reason] :
         std::vector<std::tuple<std::string, std::string, std::string>> {
             { "in/s.%04d.png", "out.png", "out.%04d.png" },
             { "in", "out.png", "is a sequence; name a folder" },
             { "in", "file", "is a sequence; name a folder" },
             { "in", "in", "frame 1 would be written over an input" },
             { "in/s.####.png", "link/s.%04d.png", "frame 1 would be written over an input" },
             { "one.png", "one.png", "the frame would be written over an input" },
             { "one.png", "one.jpg", "written as PNG" },
             { "in", "out.%04d.tif", "written as PNG" },
             { "in", "out.%04d.%d.png", "more than one place" } })
        EXPECT_THAT(Output(input, output), HasSubstr(reason)) << input << " to " << output;
}

} // namespace
} // namespace host
