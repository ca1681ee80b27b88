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

OutputResult Put(const fs::path& file, std::string_view text, Existing existing, std::string& why) {
    return WriteWhole(file, { reinterpret_cast<const std::uint8_t*>(text.data()), text.size() },
                      existing, why);
}

std::string Content(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return { std::istreambuf_iterator<char>(in), {} };
}

std::ptrdiff_t FilesIn(const fs::path& folder) {
    return std::distance(fs::directory_iterator(folder), {});
}

TEST(OutputFile, TreatsExistingFilesAsAsked) {
    const TemporaryFolder folder;
    const fs::path file = folder.Path() / "a";
    std::string why;
    EXPECT_EQ(Put(file, "one", Existing::kRefuse, why), OutputResult::kWritten);
    EXPECT_EQ(Put(file, "two", Existing::kSkip, why), OutputResult::kSkipped);
    EXPECT_EQ(Put(file, "two", Existing::kRefuse, why), OutputResult::kFailed);
    EXPECT_EQ(Content(file), "one");
    EXPECT_EQ(Put(file, "two", Existing::kOverwrite, why), OutputResult::kWritten);
    EXPECT_EQ(Content(file), "two");
    EXPECT_EQ(FilesIn(folder.Path()), 1);
}

TEST(OutputFile, KeepsPermissionsAndLinks) {
    const TemporaryFolder folder;
    const fs::path file = folder.Write("real/a", "old");
    const fs::path link = folder.Path() / "link";
    fs::permissions(file, fs::perms(06604)); // what runs with its owner's rights is not written to
    fs::create_symlink("real/a", link);
    std::string why;
    EXPECT_EQ(Put(link, "new", Existing::kOverwrite, why), OutputResult::kWritten);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(Content(file), "new");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0604));
}

TEST(OutputFile, FlushesAWholeFileBeforeItGetsItsNameOrLeavesThatToTheRun) {
    const TemporaryFolder folder;
    std::string why;
    s_flushed.clear();
    Put(folder.Path() / "a", "four", Existing::kRefuse, why);
    EXPECT_THAT(s_flushed, testing::ElementsAre(4));
    WriteWhole(folder.Path() / "b", {}, Existing::kRefuse, why, Flush::kLater);
    EXPECT_EQ(s_flushed.size(), 1U);
}

TEST(OutputFile, RemovesOnlyLeftoversThatNobodyHolds) {
    const TemporaryFolder folder;
    folder.Write(".telop-1.part", "of a run that was killed");
    folder.Write("telop-1.part", "the user's own");
    const auto held = folder.Write(".telop-2.part", "of a run that goes on");
    const Descriptor holder(open(held.c_str(), O_WRONLY));
    ASSERT_EQ(flock(holder.Get(), LOCK_EX), 0);
    RemoveLeftovers(folder.Path());
    EXPECT_FALSE(fs::exists(folder.Path() / ".telop-1.part"));
    EXPECT_TRUE(fs::exists(held));
    EXPECT_EQ(FilesIn(folder.Path()), 2);
}

TEST(OutputFile, WritesDevicesStraight) {
    std::string why;
    EXPECT_EQ(Put("/dev/null", "x", Existing::kRefuse, why), OutputResult::kWritten);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(Put("/dev/full", "x", Existing::kOverwrite, why), OutputResult::kFailed);
    EXPECT_THAT(why, HasSubstr("/dev/full: cannot be written: No space left"));
}

TEST(OutputFile, LeavesNothingBehindWhenItFails) {
    const TemporaryFolder folder;
    const fs::path file = folder.Write("a", "whole");
    std::string why;
    EXPECT_EQ(Put(folder.Path() / "no" / "b", "x", Existing::kRefuse, why), OutputResult::kFailed);
    EXPECT_THAT(why, HasSubstr("No such file or directory"));
    EXPECT_EQ(Put(folder.Path(), "x", Existing::kOverwrite, why), OutputResult::kFailed);
    EXPECT_THAT(why, HasSubstr("Is a directory"));

    // A file that may not grow stands for a disk that fills up while it is written.
    rlimit before {};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small { 100, before.rlim_max };
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_EQ(Put(file, std::string(1000, 'x'), Existing::kOverwrite, why), OutputResult::kFailed);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_THAT(why, HasSubstr("a: cannot be written: File too large"));
    EXPECT_EQ(Content(file), "whole");
    EXPECT_EQ(FilesIn(folder.Path()), 1);
}

} // namespace
} // namespace host
