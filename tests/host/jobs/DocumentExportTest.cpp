// SPDX-License-Identifier: BSD-3-Clause
// Runs over real frames with the real plug-in, as front ends with a window make them.
#include "host/jobs/DocumentExport.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <limits>
#include <mutex>
#include <stdexcept>
#include <thread>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "host/Plugin.h"
#include "host/frames/PngReader.h"
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

using testing::ElementsAre;
using testing::HasSubstr;

// Writes down what it hears, and cancels after so many frames.
class Notes : public RunListener {
public:
    explicit Notes(std::int64_t cancelAfter = -1) : m_cancelAfter(cancelAfter) {}

    void FrameWritten(std::int64_t frame, const std::string&) override {
        const std::lock_guard lock(m_mutex);
        written.push_back(frame);
        if (static_cast<std::int64_t>(written.size()) == m_cancelAfter)
            cancel.Cancel();
    }
    void FrameFailed(const FrameFailure& failure) override {
        const std::lock_guard lock(m_mutex);
        failed.push_back(failure);
    }
    void Warned(const std::string& what) override {
        const std::lock_guard lock(m_mutex);
        warned.push_back(what);
    }
    void Finished(const RunResult& result) override { finished = result; }

    CancelToken cancel;
    std::vector<std::int64_t> written;
    std::vector<FrameFailure> failed;
    std::vector<std::string> warned;
    std::optional<RunResult> finished;
    std::vector<platform::Report> reports;

private:
    std::mutex m_mutex;
    std::int64_t m_cancelAfter;
};

class DocumentExportTest : public testing::Test {
protected:
    DocumentExportTest() {
        std::string why;
        auto plugin = Plugin::Load(TELOP_BUNDLE, why);
        EXPECT_TRUE(plugin) << why;
        m_effect = Effect::Make(plugin, why);
        m_document.TakeFrom(*m_effect);
        m_document.input = Path("in/shot.#.png");
        m_document.settings.nOpacity = 100;
    }

    std::string Path(const std::string& name) const { return (m_folder.Path() / name).string(); }
    std::string Output(std::int64_t frame) const {
        return Path("out/shot." + std::to_string(frame) + ".png");
    }

    void MakeFrames(std::int64_t first, std::int64_t last) const {
        std::filesystem::create_directories(Path("in"));
        for (auto number = first; number <= last; ++number) {
            Frame frame;
            frame.image = Image::Make(320, 120, kRgb24);
            std::ranges::fill(frame.image->Bytes(), static_cast<std::uint8_t>(number));
            std::string why;
            EXPECT_EQ(PngWriter().Write(Path("in/shot." + std::to_string(number) + ".png"), frame,
                                        {}, Existing::kRefuse, why),
                      OutputResult::kWritten)
                << why;
        }
    }

    static std::string Bytes(const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        return { std::istreambuf_iterator<char>(in), {} };
    }
    static std::vector<std::uint8_t> Pixels(const std::string& file) {
        Frame frame;
        std::string why;
        EXPECT_TRUE(PngReader().Read(file, frame, why)) << why;
        const auto pixels = frame.image->Bytes();
        return { pixels.begin(), pixels.end() };
    }
    bool IsDrawn(std::int64_t frame) const {
        return Pixels(Output(frame)) != Pixels(Path("in/shot." + std::to_string(frame) + ".png"));
    }

    RunResult Run(Notes& notes, ExportOptions options = {}) const {
        if (options.output.empty())
            options.output = Path("out/");
        PlanProblem problem;
        const auto made = DocumentExport::Make(m_document, *m_effect, options, problem);
        if (!made)
            throw std::runtime_error(problem.text);
        const auto result = made->Run(notes, notes.cancel);
        notes.reports = made->Reports();
        return result;
    }

    TemporaryFolder m_folder;
    std::unique_ptr<Effect> m_effect;
    Document m_document;
};

TEST_F(DocumentExportTest, StringsAreFilledInForEachFrameAndOnlyWhenTheyArePresent) {
    MakeFrames(1, 2);
    const auto pictures = [&] {
        Notes notes;
        EXPECT_EQ(Run(notes, { .existing = Existing::kOverwrite }).written, 2);
        return std::pair(Pixels(Output(1)), Pixels(Output(2)));
    };
    m_document.strings = { "", "", "", "{frame}" };
    const auto numbered = pictures();
    m_document.strings[3] = "1";
    const auto literal = pictures();
    EXPECT_EQ(numbered.first, literal.first);
    EXPECT_NE(numbered.second, literal.second);
    m_document.stringsPresent = false;
    const auto absent = pictures();
    EXPECT_NE(absent.first, literal.first);
    m_document.stringsPresent = true;
    m_document.strings = {};
    EXPECT_EQ(pictures(), absent);
}

TEST_F(DocumentExportTest, CancellingOnAThreadLeavesOnlyWholeFrames) {
    MakeFrames(1, 60);
    for (const int jobs : { 1, 4 }) {
        std::filesystem::remove_all(Path("out"));
        Notes notes(5);
        RunResult result;
        std::thread([&] { result = Run(notes, { .jobs = jobs }); }).join();
        EXPECT_TRUE(result.cancelled);
        EXPECT_FALSE(result.isStuck);
        EXPECT_GE(result.written, 5);
        EXPECT_LT(result.written, 60);
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(Path("out")), {}),
                  result.written);
        for (const auto frame : notes.written)
            EXPECT_TRUE(IsDrawn(frame)) << frame;
    }
}

TEST_F(DocumentExportTest, FramesThatFailAreListedWithTheirReasons) {
    MakeFrames(98, 101);
    m_folder.Write("in/shot.99.png", "this is no PNG");
    m_document.strings[3] = std::string(61, 'x') + "{frame}"; // fits while the number has 2 digits
    Notes notes;
    const auto result = Run(notes, { .jobs = 1 });
    EXPECT_THAT(notes.written, ElementsAre(98));
    EXPECT_EQ(result.failed, 3);
    EXPECT_EQ(result.unreadable, 1);
    ASSERT_EQ(notes.failed.size(), 3U);
    ASSERT_EQ(result.failures.size(), 3U);
    EXPECT_EQ(result.failures[0].frame, 99);
    EXPECT_THAT(result.failures[0].what, HasSubstr(Path("in/shot.99.png")));
    EXPECT_EQ(result.failures[1].frame, 100);
    EXPECT_THAT(result.failures[1].what, HasSubstr("information string 4: the text has 64 bytes"));
}

TEST_F(DocumentExportTest, AFrameThatIsThereIsKeptOnlyWhenItIsWhole) {
    MakeFrames(1, 5);
    Notes first;
    EXPECT_EQ(Run(first).written, 5);
    const auto whole = Bytes(Output(1));
    m_folder.Write("out/shot.2.png", "");
    m_folder.Write("out/shot.3.png", std::string_view(whole).substr(0, whole.size() - 1));
    m_folder.Write("out/shot.4.png", "a text");
    Frame small { Image::Make(2, 2, kRgb24), {} };
    std::string why;
    PngWriter().Write(Output(5), small, {}, Existing::kOverwrite, why);

    Notes second;
    const auto result = Run(second, { .existing = Existing::kSkip, .jobs = 1 });
    EXPECT_EQ(Bytes(Output(1)), whole);
    EXPECT_EQ(result.skipped, 1);
    EXPECT_THAT(second.written, ElementsAre(2, 3, 4, 5));
    EXPECT_THAT(second.warned,
                ElementsAre(HasSubstr("shot.2.png: is no PNG file"),
                            HasSubstr("shot.3.png: is cut off"), HasSubstr("shot.4.png: is no PNG"),
                            HasSubstr("shot.5.png: has another size than its input")));
    for (std::int64_t frame = 1; frame <= 5; ++frame)
        EXPECT_TRUE(IsDrawn(frame)) << frame;
}

TEST_F(DocumentExportTest, FramesAreFlushedOnceAtTheEndAndLeftoversAreGone) {
    MakeFrames(1, 3);
    m_folder.Write("out/.telop-1.part", "of a run that was killed");
    s_flushes = 0;
    Notes notes;
    EXPECT_EQ(Run(notes).writeError, "");
    EXPECT_EQ(s_flushes, 1);
    EXPECT_FALSE(std::filesystem::exists(Path("out/.telop-1.part")));
    s_flushError = EIO;
    const auto failed = Run(notes, { .existing = Existing::kOverwrite });
    s_flushError = 0;
    EXPECT_THAT(failed.writeError, HasSubstr("put on the disk: Input/output error"));
    EXPECT_THAT(failed.writeError, HasSubstr(Path("out")));
}

TEST_F(DocumentExportTest, EachRunHearsAllThatItsFramesMeet) {
    MakeFrames(1, 3);
    std::strcpy(m_document.settings.szFontName, "No Such Family");
    for (int round = 0; round < 2; ++round) {
        Notes notes;
        EXPECT_EQ(Run(notes, { .existing = Existing::kOverwrite }).written, 3);
        ASSERT_EQ(notes.reports.size(), 1U) << round;
        EXPECT_EQ(notes.reports[0].asked, "No Such Family");
    }
}

TEST_F(DocumentExportTest, FramesWhoseTextCannotBeDrawnFail) {
    MakeFrames(1, 3);
    std::string why;
    m_document.settings.nFontSize = 30000;
    m_document.strings = { "", "", "12", "" };
    m_document.textOn = *FrameRanges::Parse("2-", why);
    Notes notes;
    const auto result = Run(notes);
    EXPECT_THAT(notes.written, ElementsAre(1));
    EXPECT_EQ(result.failed, 2);
    ASSERT_FALSE(result.failures.empty());
    EXPECT_THAT(result.failures[0].what, HasSubstr(": the text is not drawn: at 30000 points"));
}

TEST_F(DocumentExportTest, UnderStrictFontsAFrameAnswersForWhatItMetItself) {
    FrameText text(m_document.settings);
    text.Params().dwFlags = TEXT_INFO;
    std::string why;
    ASSERT_TRUE(text.SetText(FrameText::Field::kInfo, "info", "{file}", why)) << why;
    platform::TextContext run;
    const FrameRenderer renderer(*m_effect, text, run, FrameRanges::All(), {}, FontPolicy::kStrict);
    const auto render = [&](const char* file) {
        Frame frame;
        frame.image = Image::Make(320, 120, kRgb24);
        PixelRect touched;
        return renderer.Render(frame, { .file = file }, touched, why);
    };
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(render("plain"), RenderResult::kDone) << why;
        EXPECT_EQ(render("\U0010FFFD"), RenderResult::kFontViolated);
        EXPECT_THAT(why, HasSubstr("U+10FFFD"));
    }
    EXPECT_EQ(run.Reports().size(), 1U);
}

TEST_F(DocumentExportTest, APlaceThatCannotBeWrittenEndsTheRun) {
    MakeFrames(1, 3);
    m_folder.Write("out", "a file");
    Notes notes;
    const auto result = Run(notes, { .output = Path("out/deep/shot.##.png") });
    EXPECT_THAT(result.writeError, HasSubstr(Path("out/deep")));
    EXPECT_TRUE(notes.written.empty());
    EXPECT_TRUE(notes.finished);
}

TEST_F(DocumentExportTest, AStreamIsRefusedBeforehand) {
    MakeFrames(1, 1);
    ASSERT_EQ(mkfifo(Path("pipe.png").c_str(), 0600), 0);
    PlanProblem problem;
    m_document.input = Path("in/shot.1.png");
    EXPECT_FALSE(
        DocumentExport::Make(m_document, *m_effect, { .output = Path("pipe.png") }, problem));
    EXPECT_EQ(problem.kind, PlanProblem::Kind::kOutput);
    EXPECT_THAT(problem.text, HasSubstr("not streams"));
}

TEST(FreeMemory, IsTheLeastThatTheMachineOrAGroupLeaves) {
    using File = std::pair<const char*, const char*>;
    const File machine { "proc/meminfo", "MemTotal: 9 kB\nMemAvailable: 4000 kB\n" };
    const File second { "proc/self/cgroup", "0::/a/b\n" };
    const File first { "proc/self/cgroup", "7:cpu,memory:/a\n0::/x\n" };
    struct Row {
        std::vector<File> files;
        std::uint64_t free;
    };
    for (const auto& row : std::vector<Row> {
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
        for (const auto& [name, contents] : row.files)
            root.Write(name, contents);
        EXPECT_EQ(FreeMemory(root.Path()), row.free);
    }
}

} // namespace
} // namespace host
