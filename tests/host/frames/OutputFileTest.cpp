// SPDX-License-Identifier: BSD-3-Clause
#include "host/frames/OutputFile.h"

#include <csignal>
#include <fstream>
#include <iterator>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "host/frames/Descriptor.h"
#include "support/TemporaryFolder.h"

namespace {
std::vector<off_t> s_flushed; // the sizes of the files that were flushed
} // namespace

// Takes the place of the system's call in this program.
extern "C" int fsync(int file) {
    struct stat status {};
    s_flushed.push_back(fstat(file, &status) == 0 ? status.st_size : -1);
    return 0;
}

namespace host {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

class OutputFileTest : public ::testing::Test {
protected:
    OutputResult Put(const fs::path& file, std::string_view text, Existing existing,
                     Flush flush = Flush::kNow) {
        return WriteWhole(folder.Path() / file,
                          { reinterpret_cast<const std::uint8_t*>(text.data()), text.size() },
                          existing, why, flush);
    }
    std::string Content(const fs::path& file) const {
        std::ifstream in(folder.Path() / file, std::ios::binary);
        return { std::istreambuf_iterator<char>(in), {} };
    }
    std::ptrdiff_t Files() const {
        return std::distance(fs::directory_iterator(folder.Path()), {});
    }

    const TemporaryFolder folder;
    std::string why;
};

TEST_F(OutputFileTest, KeepsPermissionsAndLinks) {
    const fs::path file = folder.Write("real/a", "old");
    fs::permissions(file, fs::perms(06604)); // what runs with its owner's rights is not written to
    fs::create_symlink("real/a", folder.Path() / "link");
    EXPECT_EQ(Put("link", "new", Existing::kOverwrite), OutputResult::kWritten);
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "link"));
    EXPECT_EQ(Content("real/a"), "new");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0604));
}

TEST_F(OutputFileTest, FlushesAWholeFileBeforeItGetsItsNameOrLeavesThatToTheRun) {
    s_flushed.clear();
    Put("a", "four", Existing::kRefuse);
    Put("b", "later", Existing::kRefuse, Flush::kLater);
    EXPECT_THAT(s_flushed, testing::ElementsAre(4));
}

TEST_F(OutputFileTest, RemovesOnlyLeftoversThatNobodyHolds) {
    folder.Write(".telop-1.part", "of a run that was killed");
    folder.Write("telop-1.part", "the user's own");
    const auto held = folder.Write(".telop-2.part", "of a run that goes on");
    const Descriptor holder(open(held.c_str(), O_WRONLY));
    ASSERT_EQ(flock(holder.Get(), LOCK_EX), 0);
    RemoveLeftovers(folder.Path());
    EXPECT_FALSE(fs::exists(folder.Path() / ".telop-1.part"));
    EXPECT_TRUE(fs::exists(held));
    EXPECT_EQ(Files(), 2);
}

TEST_F(OutputFileTest, LeavesNothingBehindWhenItFails) {
    EXPECT_EQ(Put("no/b", "x", Existing::kRefuse), OutputResult::kFailed);
    EXPECT_THAT(why, HasSubstr("No such file or directory"));
    EXPECT_EQ(Put(folder.Path(), "x", Existing::kOverwrite), OutputResult::kFailed);
    EXPECT_THAT(why, HasSubstr("Is a directory"));

    // A file that may not grow stands for a disk that fills up while it is written.
    folder.Write("a", "whole");
    rlimit before {};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small { 100, before.rlim_max };
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_EQ(Put("a", std::string(1000, 'x'), Existing::kOverwrite), OutputResult::kFailed);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_THAT(why, HasSubstr("a: cannot be written: File too large"));
    EXPECT_EQ(Content("a"), "whole");
    EXPECT_EQ(Files(), 1);
}

} // namespace
} // namespace host
