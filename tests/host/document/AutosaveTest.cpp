// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/Autosave.h"

#include <csignal>

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/ScopedEnvironment.h"
#include "support/TemporaryFolder.h"

namespace host {
namespace {

using testing::HasSubstr;

class AutosaveTest : public testing::Test {
protected:
    std::filesystem::path Folder() const { return m_folder.Path() / "state/autosave"; }

    static Document Numbered(std::int64_t frame) {
        Document document;
        document.currentFrame = frame;
        document.input = "/shots/a.png";
        return document;
    }

    // Another program that keeps a copy and waits; its process.
    pid_t KeepElsewhere(const Document& document, const std::filesystem::path& original) const {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        auto const process = fork();
        if (process == 0) {
            Autosave autosave(Folder());
            std::string why;
            char const kept = autosave.Keep(document, original, why) ? 1 : 0;
            if (write(ready[1], &kept, 1) != 1)
                _exit(1);
            for (;;)
                pause();
        }
        char kept = 0;
        EXPECT_EQ(read(ready[0], &kept, 1), 1);
        EXPECT_EQ(kept, 1);
        close(ready[0]);
        close(ready[1]);
        return process;
    }

    static void Crash(pid_t process) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }

    std::size_t Files() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(Folder()), {}));
    }

    TemporaryFolder m_folder;
};

TEST_F(AutosaveTest, ACopyIsFoundOnlyAfterItsProgramCrashed) {
    auto const process = KeepElsewhere(Numbered(7), "/shots/shot one.telop");
    EXPECT_TRUE(LeftCopy::Find(Folder()).empty()) << "its program lives";
    Crash(process);
    auto left = LeftCopy::Find(Folder());
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(left[0].Original(), "/shots/shot one.telop");
    EXPECT_TRUE(LeftCopy::Find(Folder()).empty()) << "somebody has it already";
    std::string why;
    auto const document = left[0].Load(why);
    ASSERT_TRUE(document) << why;
    EXPECT_TRUE(*document == Numbered(7));

    left.clear();
    left = LeftCopy::Find(Folder());
    ASSERT_EQ(left.size(), 1U) << "what is not removed is found again";
    left[0].Remove();
    left.clear();
    EXPECT_EQ(Files(), 0U);
}

TEST_F(AutosaveTest, EveryCopyIsOfItsOwnDocumentAndTheOldestComesFirst) {
    auto const first = KeepElsewhere(Numbered(1), "");
    auto const second = KeepElsewhere(Numbered(2), "/b.telop");
    Crash(second);
    Crash(first);
    for (auto const& entry : std::filesystem::directory_iterator(Folder())) {
        if (entry.path().filename().string().starts_with(std::to_string(second) + "-"))
            std::filesystem::last_write_time(entry.path(),
                                             std::filesystem::file_time_type::clock::now() -
                                                 std::chrono::hours(1));
    }
    auto const left = LeftCopy::Find(Folder());
    ASSERT_EQ(left.size(), 2U);
    EXPECT_EQ(left[0].Original(), "/b.telop");
    EXPECT_EQ(left[1].Original(), "");
    std::string why;
    EXPECT_EQ(left[0].Load(why)->currentFrame, 2);
}

TEST_F(AutosaveTest, ACleanEndLeavesNothing) {
    std::string why;
    {
        Autosave autosave(Folder());
        Autosave other(Folder());
        EXPECT_TRUE(autosave.Keep(Numbered(1), "", why)) << why;
        EXPECT_TRUE(other.Keep(Numbered(2), "", why)) << why;
        EXPECT_EQ(Files(), 4U) << "two copies and their locks";
        EXPECT_TRUE(autosave.Keep(Numbered(3), "/a.telop", why)) << why;
        EXPECT_EQ(Files(), 4U);
        autosave.Forget();
        EXPECT_EQ(Files(), 2U);
        EXPECT_TRUE(LeftCopy::Find(Folder()).empty());
    }
    EXPECT_EQ(Files(), 0U);
}

TEST_F(AutosaveTest, ALockWithoutACopyIsTidiedUp) {
    m_folder.Write("state/autosave/99999-1.lock", "/a.telop");
    EXPECT_TRUE(LeftCopy::Find(Folder()).empty());
    EXPECT_EQ(Files(), 0U);
}

TEST_F(AutosaveTest, TheFolderIsTheUsersStateFolder) {
    struct Row {
        const char* state;
        const char* home;
        const char* folder;
    };
    for (auto const& row : {
             Row { "/s", "/h", "/s/telop/autosave" },
             Row { nullptr, "/h", "/h/.local/state/telop/autosave" },
             Row { "relative", "/h", "/h/.local/state/telop/autosave" },
             Row { nullptr, nullptr, "" },
         }) {
        ScopedEnvironment const state("XDG_STATE_HOME", row.state);
        ScopedEnvironment const home("HOME", row.home);
        EXPECT_EQ(AutosaveFolder(), row.folder);
    }
    std::string why;
    EXPECT_FALSE(Autosave("").Keep(Numbered(1), "", why));
    EXPECT_THAT(why, HasSubstr("HOME is not set"));
    m_folder.Write("file", "");
    EXPECT_FALSE(Autosave(m_folder.Path() / "file/x").Keep(Numbered(1), "", why));
    EXPECT_THAT(why, HasSubstr("the folder cannot be made"));
}

} // namespace
} // namespace host
