// SPDX-License-Identifier: BSD-3-Clause
// Runs the real program in a folder of its own, and makes and reads the pictures that it works on.
#pragma once

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include "host/frames/Frame.h"
#include "support/TemporaryFolder.h"

namespace telop {

struct Outcome {
    int code = -1; // 128 + n when signal n ended it
    std::string out, err;
};

// How a program is to end that gets this input.
struct Expected {
    int code = 0;
    std::string says = {}; // in what it writes to standard error
    std::string input = {};
};

// A program that was started and not waited for.
struct Running {
    // Until the program has a handler of its own for the signal.
    void AwaitHandler(int signal) const;
    void Send(int signal) const { kill(process, signal); }
    Outcome Wait();

    pid_t process;
    std::filesystem::path out, err;
};

class TelopProgram : public testing::Test {
protected:
    // What is typed behind the program's name: words between blanks, and in single quotes any text.
    // Paths are relative to the test's folder.
    Outcome Run(const std::string& line, const Expected& expected = {});
    struct Ending {
        std::string line;
        int code;
        const char* message;
        std::string input = {};
    };
    // Runs the program with the first words and those of each row.
    void ExpectEndings(const std::string& first, const std::vector<Ending>& rows);
    // inChild changes the new process before it becomes the program.
    Running Start(const std::string& line, const std::filesystem::path& input = "/dev/null",
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
