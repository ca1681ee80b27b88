// SPDX-License-Identifier: BSD-3-Clause
// What a run over real frames does beside drawing them. Its pictures, messages and ends are asked of the
// program and of the window.
#include "host/jobs/DocumentExport.h"

#include <cerrno>
#include <limits>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "host/Plugin.h"
#include "host/jobs/Memory.h"
#include "support/TemporaryFolder.h"

namespace {
int s_flushError = 0;
int s_flushes = 0;
} // namespace

// Takes the place of the system's call in this program.
extern "C" int syncfs(int) noexcept {
    ++s_flushes;
    errno = s_flushError;
    return s_flushError == 0 ? 0 : -1;
}

namespace host {
namespace {

using testing::HasSubstr;

class DocumentExportTest : public testing::Test {
protected:
    DocumentExportTest() {
        std::string why;
        m_effect = Effect::Make(Plugin::Load(TELOP_BUNDLE, why), why);
        m_document.TakeFrom(*m_effect);
        m_document.input = Path("shot.#.png");
        for (const int number : { 1, 2 }) {
            const Frame frame { Image::Make(32, 12, kRgb24), {} };
            PngWriter().Write(Path("shot." + std::to_string(number) + ".png"), frame, {},
                              Existing::kRefuse, why);
        }
    }

    std::string Path(const std::string& name) const { return (m_folder.Path() / name).string(); }

    TemporaryFolder m_folder;
    std::unique_ptr<Effect> m_effect;
    Document m_document;
};

TEST_F(DocumentExportTest, FramesAreFlushedOnceAtTheEnd) {
    for (const auto& [error, said] : { std::pair { 0, "" }, std::pair { EIO, "Input/output" } }) {
        PlanProblem problem;
        const auto made = DocumentExport::Make(
            m_document, *m_effect, { .output = Path("out/"), .existing = Existing::kOverwrite },
            problem);
        ASSERT_TRUE(made) << problem.text;
        s_flushes = 0;
        s_flushError = error;
        RunListener nobody;
        const auto result = made->Run(nobody, CancelToken());
        EXPECT_EQ(result.written, 2);
        EXPECT_EQ(s_flushes, 1);
        EXPECT_THAT(result.writeError, HasSubstr(said));
        EXPECT_THAT(result.writeError, HasSubstr(error ? Path("out") : ""));
        EXPECT_EQ(result.writeError.empty(), error == 0);
    }
    s_flushError = 0;
}

TEST_F(DocumentExportTest, AStreamIsRefusedBeforehand) {
    ASSERT_EQ(mkfifo(Path("pipe.png").c_str(), 0600), 0);
    PlanProblem problem;
    m_document.input = Path("shot.1.png");
    EXPECT_FALSE(
        DocumentExport::Make(m_document, *m_effect, { .output = Path("pipe.png") }, problem));
    EXPECT_THAT(problem.text, HasSubstr("not streams"));
}

TEST(FreeMemory, IsTheLeastThatTheMachineOrAGroupLeaves) {
    using File = std::pair<const char*, const char*>;
    const File machine { "proc/meminfo", "MemTotal: 9 kB\nMemAvailable: 4000 kB\n" };
    const File second { "proc/self/cgroup", "0::/a/b\n" };
    const File first { "proc/self/cgroup", "7:cpu,memory:/a\n0::/x\n" };
    using Row = std::pair<std::vector<File>, std::uint64_t>;
    for (const auto& [files, free] : std::vector<Row> {
             { {}, std::numeric_limits<std::uint64_t>::max() },
             { { machine }, 4096000 },
             { { machine, second, { "sys/fs/cgroup/a/b/memory.max", "max\n" } }, 4096000 },
             { { machine,
                 second,
                 { "sys/fs/cgroup/a/memory.max", "2000000\n" },
                 { "sys/fs/cgroup/a/memory.current", "1500000\n" },
                 { "sys/fs/cgroup/a/memory.stat", "anon 1\ninactive_file 100000\n" } },
               600000 },
             { { machine,
                 second,
                 { "sys/fs/cgroup/memory.max", "1000\n" },
                 { "sys/fs/cgroup/memory.current", "3000\n" } },
               0 },
             { { machine,
                 first,
                 { "sys/fs/cgroup/memory/memory.limit_in_bytes", "700\n" },
                 { "sys/fs/cgroup/memory/memory.usage_in_bytes", "300\n" },
                 { "sys/fs/cgroup/memory/memory.stat", "total_inactive_file 50\n" } },
               450 },
         }) {
        const TemporaryFolder root;
        for (const auto& [name, contents] : files)
            root.Write(name, contents);
        EXPECT_EQ(FreeMemory(root.Path()), free);
    }
}

} // namespace
} // namespace host
