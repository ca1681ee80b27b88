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

    // Another program that keeps a copy and stands still then; its process.
    pid_t KeepElsewhere(const Document& document, const std::filesystem::path& original) const {
        const auto process = fork();
        if (process == 0) {
            Autosave autosave(Folder());
            std::string why;
            if (autosave.Keep(document, original, why))
                raise(SIGSTOP);
            _exit(1);
        }
        int status = 0;
        waitpid(process, &status, WUNTRACED);
        EXPECT_TRUE(WIFSTOPPED(status));
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

TEST_F(AutosaveTest, CopiesAreFoundOldestFirstAndOnlyAfterTheirProgramsCrashed) {
    const auto first = KeepElsewhere(Numbered(1), "");
    const auto second = KeepElsewhere(Numbered(2), "/shots/shot two.telop");
    EXPECT_TRUE(LeftCopy::Find(Folder()).empty()) << "their programs live";
    Crash(second);
    Crash(first);
    for (const auto& entry : std::filesystem::directory_iterator(Folder()))
        if (entry.path().filename().string().starts_with(std::to_string(second) + "-"))
            std::filesystem::last_write_time(entry,
                                             entry.last_write_time() - std::chrono::hours(1));
    auto left = LeftCopy::Find(Folder());
    ASSERT_EQ(left.size(), 2U);
    EXPECT_EQ(left[0].Original(), "/shots/shot two.telop");
    EXPECT_EQ(left[1].Original(), "");
    EXPECT_TRUE(LeftCopy::Find(Folder()).empty()) << "somebody has them already";
    std::string why;
    const auto document = left[0].Load(why);
    ASSERT_TRUE(document) << why;
    EXPECT_TRUE(*document == Numbered(2));

    left[0].Remove();
    left.clear();
    left = LeftCopy::Find(Folder());
    ASSERT_EQ(left.size(), 1U) << "what is not removed is found again";
    left[0].Remove();
    left.clear();
    m_folder.Write("state/autosave/99999-1.lock", "/a.telop"); // without a copy: tidied up
    EXPECT_TRUE(LeftCopy::Find(Folder()).empty());
    EXPECT_EQ(Files(), 0U);
}

TEST_F(AutosaveTest, TheFolderIsTheUsersStateFolder) {
    const char* const rows[][3] { { "/s", "/h", "/s/telop/autosave" },
                                  { nullptr, "/h", "/h/.local/state/telop/autosave" },
                                  { "relative", "/h", "/h/.local/state/telop/autosave" },
                                  { nullptr, nullptr, "" } };
    for (const auto& [stateHome, userHome, folder] : rows) {
        const ScopedEnvironment state("XDG_STATE_HOME", stateHome);
        const ScopedEnvironment home("HOME", userHome);
        EXPECT_EQ(AutosaveFolder(), folder);
    }
    std::string why;
    for (const auto& [folder, reason] :
         { std::pair { "", "HOME is not set" }, std::pair { "/dev/null/x", "cannot be made" } }) {
        EXPECT_FALSE(Autosave(folder).Keep(Numbered(1), "", why));
        EXPECT_THAT(why, HasSubstr(reason));
    }
}

} // namespace
} // namespace host
