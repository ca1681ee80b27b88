// SPDX-License-Identifier: BSD-3-Clause
#include "host/frames/OutputFile.h"

#include <csignal>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>
#include <sys/resource.h>

#include "support/TemporaryFolder.h"

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
    fs::permissions(file, fs::perms(0604));
    fs::create_symlink("real/a", link);
    std::string why;
    EXPECT_EQ(Put(link, "new", Existing::kOverwrite, why), OutputResult::kWritten);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(Content(file), "new");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0604));
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
