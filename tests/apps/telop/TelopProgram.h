// SPDX-License-Identifier: BSD-3-Clause
// Runs the real program in a folder of its own, and makes and reads the pictures that it works on.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <sys/types.h>

#include "host/frames/Frame.h"
#include "support/TemporaryFolder.h"

namespace telop {

struct Outcome {
    int code = -1; // 128 + n when signal n ended it
    std::string out, err;
};

// A program that was started and not waited for.
class Running {
public:
    Running(pid_t process, std::filesystem::path out, std::filesystem::path err);
    // Until the program has a handler of its own for the signal.
    void AwaitHandler(int signal) const;
    // What it has open under that number.
    std::filesystem::path FileAt(int descriptor) const;
    void Send(int signal) const;
    Outcome Wait();

private:
    pid_t m_process;
    std::filesystem::path m_out, m_err;
};

class TelopProgram : public testing::Test {
protected:
    using Arguments = std::vector<std::string>;

    // Paths in arguments are relative to the test's folder. The input is that of the program.
    Outcome Run(const Arguments& arguments, std::string_view input = {});
    // "telop render" with options, and two paths.
    Outcome Render(Arguments options, const std::string& input, const std::string& output,
                   std::string_view stream = {});
    // inChild changes the new process before it becomes the program.
    Running Start(const Arguments& arguments, const std::filesystem::path& input = "/dev/null",
                  const std::function<void()>& inChild = {});

    std::filesystem::path Path(const std::string& name) const { return m_folder.Path() / name; }
    std::string Contents(const std::string& name) const;
    void Write(const std::string& name, std::string_view bytes) { m_folder.Write(name, bytes); }
    // Names of the files in a folder, hidden ones too, sorted.
    std::vector<std::string> Files(const std::string& folder) const;

    // A picture with a value of its own in every pixel.
    static host::Frame MakeFrame(int seed, host::PixelFormat format = host::kRgb24, int width = 320,
                                 int height = 120);
    void WritePicture(const std::string& name, const host::Frame& frame);
    void WriteSequence(const std::string& folder, int first, int last);
    host::Frame ReadPicture(const std::string& name);

private:
    TemporaryFolder m_folder;
    int m_runs = 0;
};

struct Difference {
    std::int64_t pixels = 0; // that differ
    host::PixelRect bounds;  // around them
};
Difference Compare(const host::Frame& a, const host::Frame& b);

} // namespace telop
