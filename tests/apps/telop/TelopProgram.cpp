// SPDX-License-Identifier: BSD-3-Clause
#include "TelopProgram.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <iterator>
#include <sstream>

#include <fcntl.h>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/frames/PngReader.h"
#include "host/frames/PngWriter.h"

namespace telop {

namespace {

std::string ReadFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return { std::istreambuf_iterator<char>(stream), {} };
}

void Redirect(const std::filesystem::path& file, int flags, int descriptor) {
    const int opened = open(file.c_str(), flags, 0644);
    if (opened < 0 || dup2(opened, descriptor) < 0)
        _exit(127);
}

} // namespace

void Running::AwaitHandler(int signal) const {
    for (std::uint64_t caught = 0; (caught >> (signal - 1) & 1) == 0; sched_yield()) {
        std::ifstream status("/proc/" + std::to_string(process) + "/status");
        for (std::string word; status >> word && word != "SigCgt:";) {
        }
        ASSERT_TRUE(status >> std::hex >> caught) << "it has ended";
    }
}

Outcome Running::Wait() {
    int status = 0;
    waitpid(process, &status, 0);
    return { WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), ReadFile(out),
             ReadFile(err) };
}

Running TelopProgram::Start(const std::string& line, const std::filesystem::path& input,
                            const std::function<void()>& inChild) {
    const auto base = Path(".run" + std::to_string(++m_runs));
    const auto out = base.string() + ".out";
    const auto err = base.string() + ".err";
    std::vector<std::string> words { TELOP_PROGRAM };
    std::istringstream typed(line);
    for (std::string word; typed >> std::quoted(word, '\'', '\0');)
        words.push_back(word);
    std::vector<char*> argv;
    for (auto& word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    const auto process = fork();
    if (process == 0) {
        if (chdir(Path("").c_str()) != 0)
            _exit(127);
        Redirect(input, O_RDONLY, STDIN_FILENO);
        Redirect(out, O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
        Redirect(err, O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
        setenv("TELOP_PLUGIN_PATH", TELOP_BUNDLE, 1);
        setenv("LC_ALL", "C.UTF-8", 1);
        unsetenv("LANGUAGE");
        unsetenv("TELOP_TEXT_ENCODING");
        if (inChild)
            inChild();
        execv(TELOP_PROGRAM, argv.data());
        _exit(127);
    }
    return { process, out, err };
}

Outcome TelopProgram::Run(const std::string& line, const Expected& expected) {
    Write(".input", expected.input);
    const auto outcome = Start(line, Path(".input")).Wait();
    EXPECT_EQ(outcome.code, expected.code) << line << ": " << outcome.err;
    EXPECT_THAT(outcome.err, testing::HasSubstr(expected.says)) << line;
    return outcome;
}

void TelopProgram::ExpectEndings(const std::string& first, const std::vector<Ending>& rows) {
    for (const auto& row : rows)
        Run(first + ' ' + row.line, { row.code, row.message, row.input });
}

std::string TelopProgram::Contents(const std::string& name) const {
    return ReadFile(Path(name));
}

std::vector<std::string> TelopProgram::Files(const std::string& folder) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(Path(folder)))
        names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
}

host::Frame TelopProgram::MakeFrame(int seed, host::PixelFormat format, int width, int height) {
    host::Frame frame;
    frame.image = host::Image::Make(width, height, format);
    frame.header.color = format.alpha < 0 ? host::ColorKind::kRgb : host::ColorKind::kRgba;
    frame.header.bitDepth = format.BytesPerChannel() * 8;
    for (int y = 0; y < height; ++y) {
        const auto row = frame.image->Row(y);
        for (std::size_t i = 0; i < row.size(); ++i)
            row[i] = static_cast<std::uint8_t>(seed * 37 + y * 5 + static_cast<int>(i) * 3);
    }
    return frame;
}

void TelopProgram::WritePicture(const std::string& name, const host::Frame& frame) {
    std::filesystem::create_directories(Path(name).parent_path());
    std::string why;
    ASSERT_EQ(host::PngWriter().Write(Path(name), frame, {}, host::Existing::kRefuse, why),
              host::OutputResult::kWritten)
        << why;
}

void TelopProgram::WriteSequence(const std::string& folder, int first, int last) {
    for (int number = first; number <= last; ++number)
        WritePicture(folder + "/shot." + std::to_string(number) + ".png", MakeFrame(number));
}

host::Frame TelopProgram::ReadPicture(const std::string& name) {
    host::Frame frame;
    std::string why;
    EXPECT_TRUE(host::PngReader().Read(Path(name), frame, why)) << why;
    return frame;
}

Difference Compare(const host::Frame& a, const host::Frame& b) {
    Difference difference { 0, { a.image->Width(), a.image->Height(), 0, 0 } };
    EXPECT_EQ(a.image->Format(), b.image->Format());
    EXPECT_EQ(a.image->Bytes().size(), b.image->Bytes().size());
    const auto bytes = static_cast<std::size_t>(a.image->Format().BytesPerPixel());
    auto& bounds = difference.bounds;
    for (std::int32_t y = 0; y < a.image->Height(); ++y)
        for (std::int32_t x = 0; x < a.image->Width(); ++x) {
            const auto at = static_cast<std::size_t>(x) * bytes;
            if (std::ranges::equal(a.image->Row(y).subspan(at, bytes),
                                   b.image->Row(y).subspan(at, bytes)))
                continue;
            ++difference.pixels;
            bounds = { std::min(bounds.left, x), std::min(bounds.top, y),
                       std::max(bounds.right, x + 1), std::max(bounds.bottom, y + 1) };
        }
    return difference;
}

} // namespace telop
