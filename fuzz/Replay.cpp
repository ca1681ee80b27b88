// SPDX-License-Identifier: BSD-3-Clause
// Runs a fuzz target over files and folders of them, for builds without a fuzzer.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void Run(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    const std::string bytes { std::istreambuf_iterator<char>(in), {} };
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int count, char** arguments) {
    int files = 0;
    for (int i = 1; i < count; ++i) {
        if (!std::filesystem::is_directory(arguments[i])) {
            Run(arguments[i]);
            ++files;
            continue;
        }
        for (const auto& entry : std::filesystem::directory_iterator(arguments[i])) {
            Run(entry.path());
            ++files;
        }
    }
    std::printf("%d files\n", files);
    return files > 0 ? 0 : 1;
}
