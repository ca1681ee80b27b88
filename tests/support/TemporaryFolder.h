// SPDX-License-Identifier: BSD-3-Clause
// A folder of a test's own, removed with all that is in it when the test ends.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "telop-test-XXXXXX";
        if (!mkdtemp(pattern.data()))
            throw std::system_error(errno, std::generic_category(), pattern);
        m_path = pattern;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::filesystem::path& Path() const { return m_path; }

    // Makes the file and the folders above it.
    std::filesystem::path Write(const std::filesystem::path& name, std::string_view bytes) const {
        std::filesystem::path path = m_path / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

private:
    std::filesystem::path m_path;
};
